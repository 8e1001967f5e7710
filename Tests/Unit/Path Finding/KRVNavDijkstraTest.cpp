#include "Navigation/Path Finding/KRVNavDijkstra.hpp"

#include "KRVNavDijkstraFixture.hpp"

namespace KorvaniTest {
namespace {

class KRVNavDijkstraTest : public LegacySearchTest {};

TEST_F(KRVNavDijkstraTest, NewOneHasNothing) {
  EXPECT_FALSE(finder.lookForBarrierFreeRoute());
  EXPECT_FALSE(finder.interrupted());
  EXPECT_EQ(finder.destination(), nullptr);
  EXPECT_TRUE(finder.distancesFromSource().empty());
}

TEST_F(KRVNavDijkstraTest, FindsTheCheapestWayFromStartToDestination) {
  edge("A", "B", 1);
  edge("B", "D", 5);
  edge("A", "C", 2);
  edge("C", "D", 3);
  EXPECT_EQ(find("A", {0}, "D"), "ACD");
  EXPECT_EQ(destination(), "D");
  EXPECT_EQ(entry("D"), Number(5.0));
}

TEST_F(KRVNavDijkstraTest, SearchesThroughTheProtocol) {
  edge("A", "B", 1);
  KorvaniNavigation::KRVNavPathFinder& protocol = finder;
  protocol.interrupt();
  protocol.restart();
  const auto way = protocol.findPathInGraph(building.graph(), points("A"), {0}, points("B"), false);
  EXPECT_EQ(building.names(way), "AB");
}

TEST_F(KRVNavDijkstraTest, EdgesCostTheirLengthTimesTheirMultiplicator) {
  edge("A", "D", 10, 2);
  edge("A", "B", 9);
  edge("B", "D", 10);
  EXPECT_EQ(find("A", {0}, "D"), "ABD");
  edge("A", "D", 10, 1.5);
  EXPECT_EQ(find("A", {0}, "D"), "AD");
  EXPECT_EQ(entry("D"), Number(15.0));
}

TEST_F(KRVNavDijkstraTest, EdgesLeadOneWayOnly) {
  edge("A", "B", 1);
  EXPECT_EQ(find("B", {0}, "A"), "");
}

TEST_F(KRVNavDijkstraTest, AStartThatIsADestinationIsAWayOfOnePoint) {
  edge("A", "B", 1);
  EXPECT_EQ(find("A", {3}, "A"), "A");
  EXPECT_EQ(destination(), "A");
  EXPECT_EQ(entry("B"), kUnreachedMark);
}

TEST_F(KRVNavDijkstraTest, AStartThatIsADestinationLosesAgainstANearerOne) {
  edge("A", "B", 2);
  EXPECT_EQ(find("AC", {1, 7}, "BC"), "AB");
  EXPECT_EQ(find("AC", {1, 2}, "BC"), "C");
}

TEST_F(KRVNavDijkstraTest, AnUnreachableDestinationIsNotFound) {
  edge("A", "B", 1);
  edge("C", "D", 1);
  EXPECT_EQ(find("A", {0}, "CD"), "");
  EXPECT_EQ(finder.destination(), nullptr);
  EXPECT_EQ(entry("B"), Number(1.0));
  EXPECT_EQ(entry("D"), kUnreachedMark);
}

TEST_F(KRVNavDijkstraTest, ADestinationThatTheGraphDoesNotKnowIsNotFound) {
  edge("A", "B", 1);
  const auto way =
      finder.findPathInGraph(building.graph(), points("A"), {0}, {at(kOrigin, 0, 99)}, false);
  EXPECT_TRUE(way.empty());
  EXPECT_EQ(finder.destination(), nullptr);
}

TEST_F(KRVNavDijkstraTest, OfTwoDestinationsTheOneOfSmallerTotalCostIsReached) {
  edge("A", "B", 4, 2);
  edge("A", "C", 5);
  edge("C", "D", 2);
  EXPECT_EQ(find("A", {0}, "BD"), "ACD");
  EXPECT_EQ(find("A", {0}, "BC"), "AC");
  edge("E", "B", 1);
  EXPECT_EQ(find("AE", {0, 5.5}, "BD"), "EB");
}

TEST_F(KRVNavDijkstraTest, OfTwoDestinationsAtEqualCostTheOneListedFirstInTheGraphIsReached) {
  edge("A", "D", 4);
  edge("A", "C", 4);
  EXPECT_EQ(find("A", {0}, "DC"), "AC");
  EXPECT_EQ(find("A", {0}, "CD"), "AC");
}

TEST_F(KRVNavDijkstraTest, TheGraphsOrderAndNotTheIdentifiersOrderDecidesAboutEqualCosts) {
  const auto far = at(kOrigin, 0, 1000);
  const auto later = at(kOrigin, 0, 7);
  const auto graph = std::make_shared<KRVNavGraph>();
  const auto region = std::make_shared<KRVNavRegion>(0);
  graph->add(region);
  for (const auto& node : {far, later}) region->addNode(node);
  EXPECT_EQ(finder.findPathInGraph(graph, {later, far}, {2, 2}, {later, far}, false),
            std::vector{far});
}

TEST_F(KRVNavDijkstraTest, OfTwoWaysAtEqualCostTheOneFoundFirstStays) {
  edge("A", "C", 2);
  edge("A", "B", 2);
  edge("C", "D", 2);
  edge("B", "D", 2);
  EXPECT_EQ(find("A", {0}, "D"), "ABD");
}

TEST_F(KRVNavDijkstraTest, ADestinationIsNeverPassedThrough) {
  edge("A", "B", 1);
  edge("B", "C", 1);
  EXPECT_EQ(find("A", {0}, "BC"), "AB");
  EXPECT_EQ(entry("C"), kUnreachedMark);
}

TEST_F(KRVNavDijkstraTest, StartDistancesCount) {
  edge("A", "D", 1);
  edge("B", "C", 4);
  edge("C", "D", 4);
  EXPECT_EQ(find("AB", {10, 0.5}, "D"), "BCD");
  EXPECT_EQ(entry("D"), Number(8.5));
}

TEST_F(KRVNavDijkstraTest, AStartMayBeReachedFromAnotherOne) {
  edge("A", "B", 1);
  edge("B", "C", 1);
  EXPECT_EQ(find("AB", {0, 7}, "C"), "ABC");
}

TEST_F(KRVNavDijkstraTest, AStartListedTwiceCountsWithItsLaterDistance) {
  edge("A", "C", 1);
  edge("B", "C", 3);
  EXPECT_EQ(find("ABA", {0, 0, 9}, "C"), "BC");
  EXPECT_EQ(find("ABA", {9, 0, 0}, "C"), "AC");
}

TEST_F(KRVNavDijkstraTest, WithoutStartOrDestinationNothingIsFound) {
  edge("A", "B", 1);
  EXPECT_EQ(find("", {}, "B"), "");
  EXPECT_EQ(find("A", {0}, ""), "");
  EXPECT_EQ(entry("B"), Number(1.0));
}

TEST_F(KRVNavDijkstraTest, BarriersNeverMatter) {
  edge("A", "B", 1, 1, false);
  edge("A", "C", 1);
  edge("C", "B", 1);
  for (const bool property : {false, true}) {
    finder.setLookForBarrierFreeRoute(property);
    EXPECT_EQ(find("A", {0}, "B", false), "AB");
    EXPECT_EQ(find("A", {0}, "B", true), "AB");
    EXPECT_EQ(finder.lookForBarrierFreeRoute(), property);
  }
}

TEST_F(KRVNavDijkstraTest, DistancesListAllNodesInTheGraphsOrderWithMarksForTheUnreached) {
  edge("B", "E", 2.5);
  edge("E", "A", 3);
  find("B", {0.25}, "F");
  const auto distances = finder.distancesFromSource();
  EXPECT_EQ(distances.keys(), ids("ABCDEF"));
  EXPECT_EQ(entry("B"), Number::real(0.25));
  EXPECT_EQ(entry("E"), Number::real(2.75));
  EXPECT_EQ(entry("A"), Number::real(5.75));
  for (const auto* name : {"C", "D", "F"}) EXPECT_EQ(entry(name), Number::integer(-1));
}

TEST_F(KRVNavDijkstraTest, DistancesBeginAnewWithEachSearch) {
  edge("A", "B", 1);
  find("A", {0}, "F");
  find("C", {4}, "F");
  EXPECT_EQ(entry("A"), kUnreachedMark);
  EXPECT_EQ(entry("B"), kUnreachedMark);
  EXPECT_EQ(entry("C"), Number(4.0));
}

TEST_F(KRVNavDijkstraTest, AStartReplacesTheIntegerMarkByANumberOfDoublePrecision) {
  find("A", {-1}, "F");
  EXPECT_EQ(entry("A")->kind(), Number::Kind::real);
  EXPECT_EQ(entry("B")->kind(), Number::Kind::integer);
}

TEST_F(KRVNavDijkstraTest, ASearchBeginsByForgettingTheReachedDestination) {
  edge("A", "B", 1);
  find("A", {0}, "B");
  EXPECT_EQ(destination(), "B");
  EXPECT_EQ(find("A", {0}, "F"), "");
  EXPECT_EQ(finder.destination(), nullptr);
}

TEST_F(KRVNavDijkstraTest, TheDestinationIsTheGraphsOwnPoint) {
  edge("A", "B", 1);
  const auto twin = at(0, 0, 5, id("B"));
  const auto way = finder.findPathInGraph(building.graph(), points("A"), {0}, {twin}, false);
  EXPECT_EQ(way, points("AB"));
  EXPECT_EQ(finder.destination(), building.point("B"));
}

TEST_F(KRVNavDijkstraTest, TheWayBeginsAtTheGraphsOwnPoint) {
  edge("A", "B", 1);
  const auto twin = at(0, 0, 5, id("A"));
  const auto way = finder.findPathInGraph(building.graph(), {twin}, {0}, points("B"), false);
  EXPECT_EQ(way, points("AB"));
}

TEST_F(KRVNavDijkstraTest, DoesNotKeepTheDestinationAlive) {
  auto graph = std::make_shared<KRVNavGraph>();
  auto region = std::make_shared<KRVNavRegion>(0);
  graph->add(region);
  region->addNode(at(kOrigin, 0, 1));
  finder.findPathInGraph(graph, {at(kOrigin, 0, 1)}, {0}, {at(kOrigin, 0, 1)}, false);
  EXPECT_EQ(finder.destination(), graph->nodeWithIdentifier(1));
  graph.reset();
  region.reset();
  EXPECT_EQ(finder.destination(), nullptr);
}

TEST_F(KRVNavDijkstraTest, PropertiesAreWritable) {
  finder.setDestination(building.point("D"));
  EXPECT_EQ(destination(), "D");
  finder.setDestination(nullptr);
  EXPECT_EQ(finder.destination(), nullptr);
  setEntries("AB", {1.5, -1});
  EXPECT_EQ(entry("A"), Number(1.5));
  EXPECT_EQ(entry("B"), kUnreachedMark);
  EXPECT_EQ(entry("C"), std::nullopt);
}

TEST_F(KRVNavDijkstraTest, ADestinationIsToldByItsIdentifierWhereverItLies) {
  const PointPtr b = building.point("B");
  EXPECT_TRUE(finder.isCloseToDestination(*b, points("ABC")));
  EXPECT_TRUE(finder.isCloseToDestination(*b, {at(0, 0, 5, b->identifier())}));
  EXPECT_FALSE(finder.isCloseToDestination(*b, points("AC")));
  EXPECT_FALSE(finder.isCloseToDestination(*b, {at(b->coordinate(), 0, 99)}));
  EXPECT_FALSE(finder.isCloseToDestination(*b, {}));
}

TEST_F(KRVNavDijkstraTest, ADestinationIsNotToldByItsIdentifierNumber) {
  const auto point = at(0, 0, 0, 7);
  point->setIdentifierNumber(70);
  EXPECT_TRUE(finder.isCloseToDestination(*point, {at(0, 0, 0, 7)}));
  EXPECT_FALSE(finder.isCloseToDestination(*point, {at(0, 0, 0, 70)}));
}

TEST_F(KRVNavDijkstraTest, PointsWithoutIdentifierAreNotToldApart) {
  EXPECT_TRUE(finder.isCloseToDestination(*at(0, 0), {at(5, 5)}));
}

TEST_F(KRVNavDijkstraTest, TheNodeOfSmallestDistanceIsTheNearest) {
  setEntries("ABCD", {5.0, 2.0, 3.0, 2.5});
  EXPECT_EQ(nearest("ABCD"), "B");
  EXPECT_EQ(nearest("ACD"), "D");
  EXPECT_EQ(nearest("A"), "A");
}

TEST_F(KRVNavDijkstraTest, OfNodesAtEqualDistanceTheFirstOfTheListIsTheNearest) {
  setEntries("ABC", {2.0, 2.0, 2});
  EXPECT_EQ(nearest("ABC"), "A");
  EXPECT_EQ(nearest("CBA"), "C");
}

TEST_F(KRVNavDijkstraTest, NodesThatAreNotReachedAreNeverTheNearest) {
  setEntries("ABC", {-1, 7.0, -1});
  EXPECT_EQ(nearest("ABC"), "B");
  EXPECT_EQ(nearest("AC"), "");
  EXPECT_EQ(nearest("D"), "");
  EXPECT_EQ(nearest(""), "");
}

TEST_F(KRVNavDijkstraTest, ADistanceOfExactlyMinusOneCountsAsNotReached) {
  setEntries("ABC", {-1.0, 7.0, -1.0f});
  EXPECT_EQ(nearest("ABC"), "B");
  setEntries("AB", {-1.5, 7.0});
  EXPECT_EQ(nearest("AB"), "A");
  edge("A", "B", 1);
  EXPECT_EQ(find("A", {-1}, "B"), "");
  EXPECT_EQ(find("A", {-2}, "B"), "");
  EXPECT_EQ(find("A", {-3}, "B"), "AB");
}

TEST_F(KRVNavDijkstraTest, ATraceGoesFromTheFirstPointWithoutPredecessorToTheTarget) {
  KRVNavDijkstra::Predecessors before;
  before.set(id("D"), building.point("B"));
  before.set(id("B"), building.point("C"));
  before.set(id("F"), building.point("A"));
  EXPECT_EQ(building.names(finder.tracePredecessors(before, building.point("D"))), "CBD");
  EXPECT_EQ(building.names(finder.tracePredecessors(before, building.point("E"))), "E");
  EXPECT_EQ(building.names(finder.tracePredecessors({}, building.point("D"))), "D");
}

TEST_F(KRVNavDijkstraTest, TracesAlongIdentifierNumbers) {
  KRVNavDijkstra::Predecessors before;
  before.set(70, building.point("A"));
  const auto target = at(0, 0, 0, 7);
  target->setIdentifierNumber(70);
  EXPECT_EQ(finder.tracePredecessors(before, target), (std::vector{building.point("A"), target}));
}

TEST_F(KRVNavDijkstraTest, VisitedNodesAreRelaxedTooWhichOnlyNegativeCostsShow) {
  edge("A", "C", 1);
  edge("A", "B", 2);
  edge("B", "C", -3);
  edge("C", "D", 9);
  // C was visited before B shortened the way to it: D keeps its distance, the way goes through B.
  EXPECT_EQ(find("A", {0}, "D"), "ABCD");
  EXPECT_EQ(entry("C"), Number(-1.0));
  EXPECT_EQ(entry("D"), Number(10.0));
}

TEST_F(KRVNavDijkstraTest, EdgesOfNoLengthAreWalkedButNotInCircles) {
  edge("A", "B", 0);
  edge("B", "A", 0);
  edge("B", "B", 0);
  edge("B", "C", 0);
  EXPECT_EQ(find("A", {0}, "C"), "ABC");
  EXPECT_EQ(entry("C"), Number(0.0));
}

}  // namespace
}  // namespace KorvaniTest
