// Searches of the older finder that are told to give up.

#include <atomic>
#include <chrono>
#include <thread>

#include "KRVNavDijkstraFixture.hpp"

namespace KorvaniTest {
namespace {

class KRVNavDijkstraInterruptionTest : public LegacySearchTest {};

TEST_F(KRVNavDijkstraInterruptionTest, AnInterruptedFinderFindsNothingUntilRestart) {
  edge("A", "B", 1);
  finder.interrupt();
  EXPECT_TRUE(finder.interrupted());
  EXPECT_EQ(find("A", {0}, "B"), "");
  EXPECT_EQ(find("A", {0}, "A"), "");
  EXPECT_TRUE(finder.interrupted());
  EXPECT_EQ(finder.destination(), nullptr);
  finder.restart();
  EXPECT_FALSE(finder.interrupted());
  EXPECT_EQ(find("A", {0}, "B"), "AB");
}

TEST_F(KRVNavDijkstraInterruptionTest, TheFlagIsWritable) {
  edge("A", "B", 1);
  finder.setInterrupted(true);
  EXPECT_EQ(find("A", {0}, "B"), "");
  finder.setInterrupted(false);
  EXPECT_EQ(find("A", {0}, "B"), "AB");
}

TEST_F(KRVNavDijkstraInterruptionTest, AnInterruptedSearchStillForgetsWhatWasFoundBefore) {
  edge("A", "B", 1);
  find("A", {0}, "B");
  finder.interrupt();
  find("C", {2}, "D");
  EXPECT_EQ(finder.destination(), nullptr);
  EXPECT_EQ(entry("B"), kUnreachedMark);
  EXPECT_EQ(entry("C"), Number(2.0));
}

TEST_F(KRVNavDijkstraInterruptionTest, InterruptAndRestartLeaveWhatWasFound) {
  edge("A", "B", 1);
  find("A", {0}, "B");
  finder.interrupt();
  finder.restart();
  EXPECT_EQ(destination(), "B");
  EXPECT_EQ(entry("B"), Number(1.0));
}

// Nodes in a row, walked from one end to the other, one after the other.
class Corridor {
 public:
  explicit Corridor(std::int64_t length) {
    const auto region = std::make_shared<KRVNavRegion>(0);
    graph_->add(region);
    for (std::int64_t i = 0; i < length; ++i) {
      nodes_.push_back(at(kOrigin, 0, i));
      region->addNode(nodes_.back());
      if (i > 0) join(nodes_[nodes_.size() - 2], nodes_.back());
    }
  }

  std::vector<PointPtr> walk(KRVNavDijkstra& finder) const {
    return finder.findPathInGraph(graph_, {nodes_.front()}, {0}, {nodes_.back()}, false);
  }

  const std::vector<PointPtr>& nodes() const { return nodes_; }

 private:
  void join(const PointPtr& from, const PointPtr& to) {
    graph_->addEdge(std::make_shared<KRVNavEdge>(from, to, 1, 1, true), *from, *to);
  }

  std::shared_ptr<KRVNavGraph> graph_ = std::make_shared<KRVNavGraph>();
  std::vector<PointPtr> nodes_;
};

// The corridor is so long that its end is not reached while the other thread looks once.
TEST_F(KRVNavDijkstraInterruptionTest, ASearchGivesUpInTheMidstWhenAnotherThreadInterrupts) {
  const Corridor corridor(20000);
  std::thread other([&] {
    const auto hasBegun = [&] {
      const auto distances = finder.distancesFromSource();
      const Number* second = distances.find(1);
      return second && !(*second == kUnreachedMark);
    };
    while (!hasBegun()) std::this_thread::yield();
    finder.interrupt();
  });
  EXPECT_TRUE(corridor.walk(finder).empty());
  other.join();
  EXPECT_TRUE(finder.interrupted());
  EXPECT_EQ(finder.destination(), nullptr);
  EXPECT_EQ(*finder.distancesFromSource().find(1), Number(1.0));
  EXPECT_EQ(*finder.distancesFromSource().find(19999), kUnreachedMark);
}

// Interrupts after ever other parts of the time that a search takes when it is left alone.
TEST_F(KRVNavDijkstraInterruptionTest, OfManyInterruptionsAtAnyMomentNoneLeavesHalfAWay) {
  using Watch = std::chrono::steady_clock;
  const Corridor corridor(40);
  const auto begin = Watch::now();
  ASSERT_EQ(corridor.walk(finder), corridor.nodes());
  const auto whole = Watch::now() - begin;
  constexpr int kRounds = 300;
  for (int round = 0; round < kRounds; ++round) {
    finder.restart();
    std::atomic<bool> searching{false};
    std::thread other([&] {
      while (!searching.load()) std::this_thread::yield();
      const auto until = Watch::now() + whole * round / kRounds;
      while (Watch::now() < until) std::this_thread::yield();
      finder.interrupt();
    });
    searching.store(true);
    const auto way = corridor.walk(finder);
    other.join();
    EXPECT_EQ(finder.destination(), way.empty() ? nullptr : corridor.nodes().back());
    ASSERT_TRUE(way.empty() || way == corridor.nodes());
  }
}

}  // namespace
}  // namespace KorvaniTest
