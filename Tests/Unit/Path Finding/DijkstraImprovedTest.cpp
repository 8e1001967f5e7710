#include "Navigation/Path Finding/DijkstraImproved/DijkstraImproved.hpp"

#include <cmath>

#include "Platform/ManualClock.hpp"
#include "SearchFixture.hpp"

namespace KorvaniTest {
namespace {

class DijkstraImprovedTest : public SearchTest {};
using DijkstraImprovedDeathTest = DijkstraImprovedTest;

TEST_F(DijkstraImprovedTest, NewOneHasNothing) {
  EXPECT_FALSE(finder.lookForBarrierFreeRoute());
  EXPECT_FALSE(finder.interrupted());
  EXPECT_EQ(finder.destination(), nullptr);
  EXPECT_EQ(finder.bestPath(), std::nullopt);
  EXPECT_FALSE(finder.benchmark().has_value());
  EXPECT_TRUE(finder.nodesToCheck().empty());
  EXPECT_TRUE(finder.destinationNodes().empty());
  EXPECT_TRUE(finder.configDependents().expired());
}

TEST_F(DijkstraImprovedTest, FindsTheCheapestWayFromStartToDestination) {
  edge("A", "B", 1);
  edge("B", "D", 5);
  edge("A", "C", 2);
  edge("C", "D", 3);
  EXPECT_EQ(find("A", {0}, "D"), "ACD");
  EXPECT_EQ(destination(), "D");
  EXPECT_EQ(finder.bestPath()->distance, 5);
}

TEST_F(DijkstraImprovedTest, SearchesThroughTheProtocol) {
  edge("A", "B", 1);
  KorvaniNavigation::KRVNavPathFinder& protocol = finder;
  protocol.interrupt();
  protocol.restart();
  const auto way = protocol.findPathInGraph(building.graph(), points("A"), {0}, points("B"), false);
  EXPECT_EQ(building.names(way), "AB");
}

TEST_F(DijkstraImprovedTest, EdgesCostTheirLengthTimesTheirMultiplicator) {
  edge("A", "D", 10, 2);
  edge("A", "B", 9);
  edge("B", "D", 10);
  EXPECT_EQ(find("A", {0}, "D"), "ABD");
  finder.restart();
  edge("A", "D", 10, 1.5);
  EXPECT_EQ(find("A", {0}, "D"), "AD");
  EXPECT_EQ(cost("D"), 15);
}

TEST_F(DijkstraImprovedTest, ManyEdgesBeatOneThatCostsMore) {
  edge("A", "E", 10);
  edge("A", "B", 1);
  edge("B", "C", 1);
  edge("C", "D", 1);
  edge("D", "E", 1);
  EXPECT_EQ(find("A", {0}, "E"), "ABCDE");
}

TEST_F(DijkstraImprovedTest, EdgesLeadOneWayOnly) {
  edge("A", "B", 1);
  EXPECT_EQ(find("B", {0}, "A"), "");
}

TEST_F(DijkstraImprovedTest, AStartThatIsADestinationIsNoWay) {
  edge("A", "B", 1);
  EXPECT_EQ(find("A", {0}, "A"), "");
  EXPECT_EQ(finder.destination(), nullptr);
  EXPECT_EQ(finder.bestPath(), std::nullopt);
}

TEST_F(DijkstraImprovedTest, AStartThatIsADestinationIsNotExpanded) {
  edge("A", "B", 1);
  EXPECT_EQ(find("A", {0}, "AB"), "");
}

TEST_F(DijkstraImprovedTest, AStartThatIsADestinationLeavesTheOtherStartsTheirWays) {
  edge("A", "B", 1);
  edge("C", "B", 50);
  EXPECT_EQ(find("AC", {0, 0}, "AB"), "CB");
}

TEST_F(DijkstraImprovedTest, AStartThatIsADestinationIsReachedByAnEdgeOnlyBelowItsOwnDistance) {
  edge("C", "A", 4);
  EXPECT_EQ(find("AC", {4, 0}, "A"), "");
  finder.restart();
  EXPECT_EQ(find("AC", {5, 0}, "A"), "CA");
}

TEST_F(DijkstraImprovedTest, ADestinationIsNeverPassedThrough) {
  edge("A", "B", 5);
  edge("B", "C", -3);
  EXPECT_EQ(find("A", {0}, "BC"), "AB");
  EXPECT_EQ(way("C"), "");
}

TEST_F(DijkstraImprovedTest, TheNearestOfTheDestinationsIsReached) {
  edge("A", "B", 5);
  edge("A", "C", 1);
  edge("C", "D", 1);
  EXPECT_EQ(find("A", {0}, "BD"), "ACD");
  EXPECT_EQ(destination(), "D");
}

TEST_F(DijkstraImprovedTest, OfTwoDestinationsAtEqualCostTheFirstStoredStays) {
  edge("A", "C", 4);
  edge("A", "B", 4);
  EXPECT_EQ(find("A", {0}, "BC"), "AC");
  finder.restart();
  EXPECT_EQ(find("A", {0}, "CB"), "AC");
}

TEST_F(DijkstraImprovedTest, OfTwoDestinationsAtEqualCostTheOneOfTheEarlierWaveStays) {
  edge("A", "B", 1);
  edge("B", "C", 3);
  edge("A", "D", 4);
  EXPECT_EQ(find("A", {0}, "CD"), "AD");
}

TEST_F(DijkstraImprovedTest, OfTwoWaysAtEqualCostTheEarlierStays) {
  edge("A", "C", 2);
  edge("A", "B", 2);
  edge("B", "D", 2);
  edge("C", "D", 2);
  EXPECT_EQ(find("A", {0}, "D"), "ACD");
}

TEST_F(DijkstraImprovedTest, EdgesOfNoLengthAreWalkedButNotInCircles) {
  edge("A", "B", 0);
  edge("B", "A", 0);
  edge("B", "B", 0);
  edge("B", "C", 0);
  EXPECT_EQ(find("A", {0}, "C"), "ABC");
  EXPECT_EQ(cost("C"), 0);
}

TEST_F(DijkstraImprovedTest, BarriersDoNotMatterByDefault) {
  edge("A", "B", 1, 1, false);
  edge("A", "C", 1);
  edge("C", "B", 1);
  EXPECT_EQ(find("A", {0}, "B"), "AB");
}

TEST_F(DijkstraImprovedTest, BarrierFreeArgumentHasNoEffect) {
  edge("A", "B", 1, 1, false);
  EXPECT_EQ(find("A", {0}, "B", true), "AB");
  EXPECT_FALSE(finder.lookForBarrierFreeRoute());
}

TEST_F(DijkstraImprovedTest, BarrierFreePropertyKeepsOffOtherEdges) {
  edge("A", "B", 1, 1, false);
  edge("A", "C", 1);
  edge("C", "B", 5);
  finder.setLookForBarrierFreeRoute(true);
  EXPECT_EQ(find("A", {0}, "B", false), "ACB");
  EXPECT_TRUE(finder.lookForBarrierFreeRoute());
}

TEST_F(DijkstraImprovedTest, BarrierFreePropertyKeepsOffTheLastEdgeToADestinationToo) {
  edge("A", "B", 1);
  edge("B", "C", 1, 1, false);
  finder.setLookForBarrierFreeRoute(true);
  EXPECT_EQ(find("A", {0}, "C"), "");
}

TEST_F(DijkstraImprovedTest, StartDistancesCount) {
  edge("A", "D", 1);
  edge("B", "C", 4);
  edge("C", "D", 4);
  EXPECT_EQ(find("AB", {10, 0.5}, "D"), "BCD");
  EXPECT_EQ(finder.bestPath()->distance, 8.5);
}

TEST_F(DijkstraImprovedTest, AStartMayBeReachedFromAnotherOne) {
  edge("A", "B", 1);
  edge("B", "C", 1);
  EXPECT_EQ(find("AB", {0, 7}, "C"), "ABC");
}

TEST_F(DijkstraImprovedTest, AStartListedTwiceCountsWithItsLaterDistance) {
  edge("A", "C", 1);
  edge("B", "C", 3);
  EXPECT_EQ(find("ABA", {0, 0, 9}, "C"), "BC");
  finder.restart();
  EXPECT_EQ(find("ABA", {9, 0, 0}, "C"), "AC");
}

TEST_F(DijkstraImprovedTest, MoreDistancesThanStartsDoNotMatter) {
  edge("A", "B", 1);
  EXPECT_EQ(find("A", {2, 5, 9}, "B"), "AB");
  EXPECT_EQ(cost("B"), 3);
}

TEST_F(DijkstraImprovedTest, WithoutStartNothingIsFound) {
  edge("A", "B", 1);
  EXPECT_EQ(find("", {}, "B"), "");
  EXPECT_EQ(finder.destination(), nullptr);
}

TEST_F(DijkstraImprovedTest, WithoutDestinationNothingIsFound) {
  edge("A", "B", 1);
  EXPECT_EQ(find("A", {0}, ""), "");
  EXPECT_EQ(way("B"), "AB");
}

TEST_F(DijkstraImprovedTest, AnUnreachableDestinationIsNotFound) {
  edge("A", "B", 1);
  EXPECT_EQ(find("A", {0}, "C"), "");
  EXPECT_EQ(finder.destination(), nullptr);
}

TEST_F(DijkstraImprovedTest, TheGraphIsNotUsed) {
  edge("A", "B", 1);
  const auto way = finder.findPathInGraph(nullptr, points("A"), {0}, points("B"), false);
  EXPECT_EQ(building.names(way), "AB");
}

TEST_F(DijkstraImprovedTest, CostsThatAreNoNumbersEndNoSearch) {
  edge("A", "B", std::nan(""));
  edge("B", "A", 1);
  edge("A", "C", 2);
  edge("C", "B", 1);
  EXPECT_EQ(find("A", {0}, "C"), "AC");
}

TEST_F(DijkstraImprovedTest, IsDestinationGoesByPointEquality) {
  const auto twin = at(0, 0, 5, building.point("B")->identifier());
  const auto unnamed = at(0, 0);
  EXPECT_FALSE(finder.isDestination(*twin));
  finder.findPathInGraph(building.graph(), {}, {}, {building.point("B"), unnamed}, false);
  EXPECT_TRUE(finder.isDestination(*twin));
  EXPECT_TRUE(finder.isDestination(*building.point("B")));
  EXPECT_TRUE(finder.isDestination(*unnamed));
  EXPECT_FALSE(finder.isDestination(*at(0, 0)));
  EXPECT_FALSE(finder.isDestination(*building.point("A")));
}

TEST_F(DijkstraImprovedTest, AnEqualPointIsAsGoodADestinationAsTheObjectItself) {
  const auto twin = at(0, 0, 0, building.point("B")->identifier());
  building.graph()->addEdge(std::make_shared<KRVNavEdge>(building.point("A"), twin, 1, 1, true),
                            *building.point("A"), *twin);
  const auto way = finder.findPathInGraph(building.graph(), points("A"), {0}, points("B"), false);
  EXPECT_EQ(way, (std::vector<PointPtr>{building.point("A"), twin}));
  EXPECT_EQ(finder.destination(), twin);
}

TEST_F(DijkstraImprovedTest, TheStopWatchRunsFromTheBeginningOfTheSearch) {
  const auto clock = std::make_shared<KorvaniPlatform::ManualClock>();
  KorvaniPlatform::setClock(clock);
  find("A", {0}, "B");
  clock->advance(std::chrono::milliseconds(1500));
  KorvaniPlatform::setClock(nullptr);
  ASSERT_TRUE(finder.benchmark().has_value());
  EXPECT_DOUBLE_EQ(finder.benchmark()->stop(), 1.5);
}

TEST_F(DijkstraImprovedDeathTest, PlainInitialiserMustNotBeUsed) {
  EXPECT_DEATH(DijkstraImproved(), "Should not use");
}

TEST_F(DijkstraImprovedDeathTest, FewerDistancesThanStartsAreAProgrammingError) {
  EXPECT_DEATH(find("AB", {1}, "C"), "Start point without distance");
}

TEST_F(DijkstraImprovedDeathTest, AnEdgeWithoutEndNodeIsAProgrammingError) {
  const auto& a = building.point("A");
  building.graph()->addEdge(std::make_shared<KRVNavEdge>(a, nullptr, 1, 1, true), *a,
                            *building.point("B"));
  EXPECT_DEATH(find("A", {0}, "C"), "an edge of the graph has no end node");
}

}  // namespace
}  // namespace KorvaniTest
