// Labels that are asked for when the search is over: they are those of the search as it was made,
// and making them can be interrupted like the search itself.

#include <atomic>
#include <chrono>
#include <limits>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "Navigation/Path Finding/Arrays/CompiledGraph.hpp"
#include "SearchFixture.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::CompiledGraph;

class DijkstraImprovedLabelsTest : public SearchTest {
 protected:
  void chain(const std::string& names) {
    for (std::size_t i = 0; i + 1 < names.size(); ++i) {
      edge(std::string(1, names[i]), std::string(1, names[i + 1]), 1);
    }
  }

  std::string bestPath() const {
    const auto path = finder.bestPath();
    return path ? building.names(path->nodes) : "";
  }

  void giveIdentifierOf(const std::string& other, const std::string& name) {
    building.point(name)->setIdentifier(building.point(other)->identifier());
  }

  /// The form of the graph that the finder has searched. The graph has another one by now, so that
  /// only the finder keeps it: for as long as it has not made the labels of that search.
  std::weak_ptr<const CompiledGraph> formOfTheSearch(const std::shared_ptr<KRVNavEdge>& someEdge) {
    std::weak_ptr<const CompiledGraph> form = CompiledGraph::of(*building.graph());
    someEdge->setDistance(someEdge->distance());
    static_cast<void>(CompiledGraph::of(*building.graph()));
    return form;
  }
};

TEST_F(DijkstraImprovedLabelsTest, StayWhenAPointOnTheWayGetsTheIdentifierOfTheDestination) {
  chain("ABCDE");
  ASSERT_EQ(find("A", {0}, "E"), "ABCDE");
  giveIdentifierOf("E", "B");
  EXPECT_EQ(way("D"), "ABCD");
  EXPECT_EQ(bestPath(), "ABCDE");
}

TEST_F(DijkstraImprovedLabelsTest, EndAtTheDestinationEvenWhenWhatItEqualledHasAnotherIdentifier) {
  chain("ABCDE");
  const auto equal = at(kOrigin, 0, building.point("C")->identifier());
  finder.findPathInGraph(building.graph(), points("A"), {0}, {equal}, false);
  equal->setIdentifier(99);
  EXPECT_EQ(way("C"), "ABC");
  EXPECT_EQ(way("D"), "");
}

TEST_F(DijkstraImprovedLabelsTest, AreSpreadByEveryPointThatWasOneOfItsOwn) {
  chain("AB");
  chain("ACE");
  find("A", {0}, "F");
  giveIdentifierOf("B", "C");
  EXPECT_EQ(way("E"), "ACE");
}

TEST_F(DijkstraImprovedLabelsTest, LookAtBarriersAsTheSearchDid) {
  edge("A", "B", 1, 1, false);
  ASSERT_EQ(find("A", {0}, "B"), "AB");
  finder.setLookForBarrierFreeRoute(true);
  EXPECT_EQ(way("B"), "AB");
}

TEST_F(DijkstraImprovedLabelsTest, OfASearchForAPointOfTheSameNegativeIdentifierReachNothing) {
  const auto unnumbered = at(kOrigin, 0, -5);
  building.region(0)->addNode(unnumbered);
  const auto& a = building.point("A");
  building.graph()->addEdge(std::make_shared<KRVNavEdge>(a, unnumbered, 1, 1, true), *a,
                            *unnumbered);
  const auto search = [&](const PointPtr& destination) {
    finder.restart();
    return finder.findPathInGraph(building.graph(), {a}, {0}, {destination}, false).size();
  };
  EXPECT_EQ(search(unnumbered), 2U);
  ASSERT_TRUE(CompiledGraph::of(*building.graph())->isOrdinary());
  EXPECT_EQ(search(at(kOrigin, 0, -5)), 0U);
}

// More often than it takes to prepare something: the answer stays.
TEST_F(DijkstraImprovedLabelsTest, OfAStartThatIsInfinitelyFarLeadOnAllTheSame) {
  chain("ABD");
  for (int i = 0; i < 12; ++i) {
    finder.restart();
    EXPECT_EQ(find("A", {std::numeric_limits<double>::infinity()}, "D"), "ABD");
  }
}

TEST_F(DijkstraImprovedLabelsTest, AnInterruptedWaveAfterTheSearchForgetsTheBestPathOnly) {
  chain("ABC");
  ASSERT_EQ(find("A", {0}, "C"), "ABC");
  finder.interrupt();
  wave();
  EXPECT_EQ(bestPath(), "");
  EXPECT_EQ(waiting(), "");
  finder.setInterrupted(false);
  EXPECT_EQ(way("C"), "ABC");
  EXPECT_EQ(bestPath(), "");
}

TEST_F(DijkstraImprovedLabelsTest, AreNotMadeForASearchThatWasInterruptedBefore) {
  chain("ABC");
  ASSERT_EQ(find("A", {0}, "C"), "ABC");
  const auto form = formOfTheSearch(building.edge("A", "B"));
  finder.interrupt();
  EXPECT_EQ(find("D", {7}, "F"), "ABC");
  EXPECT_EQ(destination(), "C");
  EXPECT_FALSE(form.expired());
  EXPECT_EQ(waiting(), "D");
  EXPECT_TRUE(form.expired());
  EXPECT_EQ(way("B"), "AB");
  EXPECT_EQ(cost("D"), 7);
  EXPECT_EQ(bestPath(), "ABC");
}

TEST_F(DijkstraImprovedLabelsTest, AreGoneOnFromOnceTheInterruptionIsTakenBack) {
  chain("ABC");
  chain("DE");
  ASSERT_EQ(find("A", {0}, "C"), "ABC");
  finder.interrupt();
  EXPECT_EQ(find("D", {7}, "E"), "ABC");
  finder.setInterrupted(false);
  EXPECT_EQ(find("", {}, "F"), "ABC");
  EXPECT_EQ(way("E"), "DE");
  EXPECT_EQ(cost("E"), 8);
}

/// A chain that is long enough to be interrupted on.
class LongChainLabelsTest : public DijkstraImprovedLabelsTest {
 protected:
  LongChainLabelsTest() {
    constexpr std::int64_t kLength = 20000;
    for (std::int64_t i = 0; i < kLength; ++i) add(at(kOrigin, 0, 1000 + i));
  }

  void add(const PointPtr& point) {
    building.region(0)->addNode(point);
    const PointPtr before = std::exchange(last, point);
    someEdge = std::make_shared<KRVNavEdge>(before, point, 1, 1, true);
    building.graph()->addEdge(someEdge, *before, *point);
  }

  std::string search(const std::string& start) {
    return building.names(
        finder.findPathInGraph(building.graph(), points(start), {0}, points("B"), false));
  }

  /// Does `work`, and interrupts it after ever other parts of the time that it takes when it is
  /// left alone, until `judge` has seen what it waits for. `ready` comes before each of them.
  template <class Ready, class Work, class Judge>
  bool interruptUntil(const Ready& ready, const Work& work, const Judge& judge) {
    using Watch = std::chrono::steady_clock;
    ready();
    const auto begin = Watch::now();
    work();
    const auto whole = Watch::now() - begin;
    constexpr int kRounds = 200;
    for (int round = 0; round < kRounds; ++round) {
      ready();
      std::atomic<bool> working{false};
      std::thread other([&] {
        while (!working.load()) std::this_thread::yield();
        // 71 and the number of rounds have no common factor: every part has its turn.
        const auto until = Watch::now() + whole * (round * 71 % kRounds) / kRounds;
        while (Watch::now() < until) std::this_thread::yield();
        finder.interrupt();
      });
      working.store(true);
      work();
      other.join();
      if (judge()) return true;
    }
    return false;
  }

  PointPtr last = building.point("A");
  std::shared_ptr<KRVNavEdge> someEdge;
};

// Only a search in arrays leaves no points for the next wave when it is interrupted in the midst.
TEST_F(LongChainLabelsTest, AfterAnInterruptedSearchThereAreNoneButOfTheStart) {
  const auto isInterruptedInArrays = [&] {
    return finder.nodesToCheck().empty() && !finder.pathTo(*last);
  };
  EXPECT_TRUE(
      interruptUntil([&] { finder.restart(); }, [&] { search("A"); }, isInterruptedInArrays));
  EXPECT_EQ(way("A"), "A");
  EXPECT_EQ(finder.pathTo(*someEdge->start()), std::nullopt);
}

TEST_F(LongChainLabelsTest, ThoseUnderWayAreDroppedWhenTheSearchThatGoesOnFromThemIsInterrupted) {
  edge("A", "B", 1);
  std::weak_ptr<const CompiledGraph> form;
  std::string found;
  const auto searchOnce = [&] {
    finder.restart();
    ASSERT_EQ(search("A"), "AB");
    form = formOfTheSearch(someEdge);
  };
  const auto isDropped = [&] { return found.empty() && !form.expired(); };
  EXPECT_TRUE(interruptUntil(
      searchOnce, [&] { found = search("F"); }, isDropped));
  EXPECT_EQ(finder.destination(), nullptr);
  EXPECT_EQ(bestPath(), "");
  EXPECT_EQ(waiting(), "");
  EXPECT_EQ(way("B"), "AB");
  EXPECT_EQ(cost("F"), 0);
  EXPECT_TRUE(finder.pathTo(*last));
}

}  // namespace
}  // namespace KorvaniTest
