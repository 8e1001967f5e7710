// Searches that are told to give up.

#include <atomic>
#include <chrono>
#include <set>
#include <string>
#include <thread>

#include "SearchFixture.hpp"

namespace KorvaniTest {
namespace {

class DijkstraImprovedInterruptionTest : public SearchTest {};

TEST_F(DijkstraImprovedInterruptionTest, InterruptSetsTheFlagAndNothingElse) {
  edge("A", "B", 1);
  find("A", {0}, "B");
  finder.interrupt();
  EXPECT_TRUE(finder.interrupted());
  EXPECT_EQ(destination(), "B");
  EXPECT_EQ(building.names(finder.bestPath()->nodes), "AB");
  EXPECT_EQ(way("B"), "AB");
}

TEST_F(DijkstraImprovedInterruptionTest, AnInterruptedFinderFindsNothingUntilRestart) {
  edge("A", "B", 1);
  finder.interrupt();
  EXPECT_EQ(find("A", {0}, "B"), "");
  EXPECT_EQ(find("A", {0}, "B"), "");
  EXPECT_TRUE(finder.interrupted());
  EXPECT_EQ(finder.destination(), nullptr);
  finder.restart();
  EXPECT_EQ(find("A", {0}, "B"), "AB");
}

TEST_F(DijkstraImprovedInterruptionTest, AnInterruptedWaveRelaxesNothing) {
  edge("A", "B", 1);
  prepare("A", {0}, "F");
  finder.interrupt();
  wave();
  EXPECT_EQ(way("B"), "");
}

TEST_F(DijkstraImprovedInterruptionTest, AnInterruptedWaveForgetsTheBestPathAndLeavesNoPoints) {
  edge("A", "B", 1);
  edge("A", "C", 1);
  prepare("A", {0}, "B");
  wave();
  ASSERT_TRUE(finder.bestPath().has_value());
  ASSERT_EQ(waiting(), "BC");
  finder.interrupt();
  wave();
  EXPECT_FALSE(finder.bestPath().has_value());
  EXPECT_EQ(waiting(), "");
  EXPECT_EQ(cost("B"), 1);
}

// A circle that pays for walking it never stops improving; only an interruption ends the search.
TEST_F(DijkstraImprovedInterruptionTest, AnEndlessSearchEndsEmptyWhenAnotherThreadInterrupts) {
  edge("A", "B", 1);
  edge("A", "D", 1);
  edge("B", "C", -1);
  edge("C", "B", 0.5);
  std::thread other([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
    finder.interrupt();
  });
  EXPECT_EQ(find("A", {0}, "D"), "");
  other.join();
  EXPECT_TRUE(finder.interrupted());
  EXPECT_EQ(finder.destination(), nullptr);
  EXPECT_FALSE(finder.bestPath().has_value());
  EXPECT_EQ(waiting(), "");
}

// Runs `search` again and again, interrupted after ever other parts of the time that it takes when
// it is left alone, until `judge` says that it has seen enough.
template <class Search, class Judge>
void interruptAtManyMoments(DijkstraImproved& finder, Search search, Judge judge) {
  using Watch = std::chrono::steady_clock;
  const auto begin = Watch::now();
  search();
  const auto whole = Watch::now() - begin;
  constexpr int kRounds = 300;
  bool enough = false;
  for (int round = 0; round < kRounds && !enough; ++round) {
    finder.restart();
    std::atomic<bool> searching{false};
    std::thread other([&] {
      while (!searching.load()) std::this_thread::yield();
      // 7 and the number of rounds have no common factor: every part has its turn.
      const auto until = Watch::now() + whole * (round * 7 % kRounds) / kRounds;
      while (Watch::now() < until) std::this_thread::yield();
      finder.interrupt();
    });
    searching.store(true);
    const auto way = search();
    other.join();
    enough = judge(way);
  }
}

// The wave after which a search is interrupted has the first way to F, not the cheapest one. The
// many starts make the moment between two waves a long one.
TEST_F(DijkstraImprovedInterruptionTest, OfManyInterruptionsAtAnyMomentNoneGivesAWrongWay) {
  edge("A", "F", 100);
  edge("A", "B", 1);
  edge("B", "F", 1);
  const std::string starts = "A" + std::string(20000, 'F');
  const std::vector<double> distances = [&] {
    std::vector<double> result(starts.size(), 1000);
    result[0] = 0;
    return result;
  }();
  std::set<std::string> ways;
  interruptAtManyMoments(
      finder, [&] { return find(starts, distances, "F"); },
      [&](const std::string& way) {
        ways.insert(way);
        return false;
      });
  ways.erase("");
  ways.erase("ABF");
  EXPECT_TRUE(ways.empty()) << *ways.begin();
}

// One wave over the many edges of one point. An interruption that comes before the wave is lost.
TEST_F(DijkstraImprovedInterruptionTest, AnInterruptionEndsAWaveInTheMidst) {
  constexpr std::int64_t kNeighbours = 20000;
  const auto region = building.region(0);
  const auto hub = building.point("A");
  std::vector<PointPtr> neighbours;
  for (std::int64_t i = 0; i < kNeighbours; ++i) {
    neighbours.push_back(at(kOrigin, 0, 1000 + i));
    region->addNode(neighbours.back());
    building.graph()->addEdge(std::make_shared<KRVNavEdge>(hub, neighbours.back(), 1, 1, true),
                              *hub, *neighbours.back());
  }
  bool partly = false;
  interruptAtManyMoments(
      finder,
      [&] {
        prepare("A", {0}, "F");
        wave();
        return std::string();
      },
      [&](const std::string&) {
        partly = finder.pathTo(*neighbours.front()) && !finder.pathTo(*neighbours.back());
        return partly;
      });
  EXPECT_TRUE(partly);
}

}  // namespace
}  // namespace KorvaniTest
