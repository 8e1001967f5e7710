#include "Navigation/Routing/RouteWrapping.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "Navigation/Localisation/EdgeIntersection.hpp"
#include "Navigation/Localisation/PositionMapper.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Navigation/Path Finding/Arrays/CompiledGraph.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/PlacedBuilding.hpp"

namespace KorvaniTest {
namespace {

using namespace KorvaniNavigation;
using Edges = KorvaniNavigation::Edges;
using Points = KorvaniNavigation::Points;

constexpr double kNoDistance = std::numeric_limits<double>::max();

double metresBetween(const PointPtr& a, const PointPtr& b) {
  return KorvaniPlatform::greatCircleDistance(a->coordinate(), b->coordinate());
}

class RouteWrapping : public FacadeFixture {
 protected:
  WrappingInput input() { return {person, destinations, levelHeight, mapper}; }

  NearestDestination nearestTo(const PointPtr& reference) {
    return nearestDestinationPointResultFromReferencePoint(*reference, input());
  }

  /// Provides the building and holds the walls of level 0, as a search does.
  void open() {
    provide(building.graph());
    mapper.useWallsOf(building.region(0));
  }

  Edges endOf(const PointPtr& viaNode) {
    open();
    Edges edges;
    wrapRouteEdgesWithEnd(viaNode, edges, input());
    return edges;
  }

  /// The whole way around a path's edges.
  Edges wrap(Edges edges, const std::shared_ptr<Intersection>& start, const PointPtr& target) {
    open();
    createWrappedNonBarrierIntersectionRoute(edges, *start, target, input());
    return edges;
  }

  static std::shared_ptr<Intersection> onNode(const PointPtr& node) {
    return std::make_shared<SingleNodeIntersection>(node, 1.0, 0.0);
  }
  static std::shared_ptr<Intersection> onEdge(const PointPtr& foot, const PointPtr& one,
                                              const PointPtr& two) {
    return std::make_shared<EdgeIntersection>(0.0, 1.0, foot, one, two);
  }

  static void expectPlain(const RouteEdge& edge, const PointPtr& start, const PointPtr& end,
                          double distance) {
    EXPECT_EQ(edge.start, start);
    EXPECT_EQ(edge.end, end);
    EXPECT_EQ(edge.distance, distance);
    EXPECT_EQ(edge.multiplicator, 1.0);
    EXPECT_TRUE(edge.isBarrierFree);
    EXPECT_EQ(edge.type, std::nullopt);
  }

  PlacedBuilding building;
  PointPtr person = building.position(0, 0);
  Points destinations;
  double levelHeight = 3.0;
  PositionMapper mapper{bundle(), true};
};

using RouteWrappingDeathTest = RouteWrapping;

// The edges of a path.

TEST_F(RouteWrapping, EdgesForAreTheGraphsEdgesBetweenSuccessiveNodes) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 5);
  const auto c = building.node(5, 5);
  const RouteEdge ab(*building.joinOneWay(a, b));
  const RouteEdge bc(*building.joinOneWay(b, c));
  building.joinOneWay(a, c);
  EXPECT_EQ(edgesFor({a, b, c}, *building.graph()), (Edges{ab, bc}));
}

TEST_F(RouteWrapping, EdgesForSkipsNodesThatNoEdgeJoins) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 5);
  const auto c = building.node(5, 5);
  const auto d = building.node(5, 9);
  const RouteEdge ab(*building.joinOneWay(a, b));
  const RouteEdge cd(*building.joinOneWay(c, d));
  building.joinOneWay(c, b);
  EXPECT_EQ(edgesFor({a, b, c, d}, *building.graph()), (Edges{ab, cd}));
}

TEST_F(RouteWrapping, EdgesForAreTheSameOnceTheGraphIsCompiled) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 5);
  const auto c = building.node(5, 5);
  const RouteEdge ab(*building.joinOneWay(a, b));
  const RouteEdge ac(*building.joinOneWay(a, c));
  const RouteEdge ca(*building.joinOneWay(c, a));
  const auto compiled = CompiledGraph::of(*building.graph());
  ASSERT_TRUE(compiled->structure().isFiledByEnds());
  EXPECT_EQ(edgesFor({a, c, a, b, c}, *building.graph()), (Edges{ac, ca, ab}));
  const auto foreign = at(b->coordinate(), 0, b->identifier());
  EXPECT_EQ(edgesFor({a, foreign}, *building.graph()), Edges{ab});
}

TEST_F(RouteWrapping, EdgesForTakesNoticeOfWhatHasChangedSinceTheGraphWasCompiled) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 5);
  const auto ab = building.joinOneWay(a, b);
  CompiledGraph::of(*building.graph());
  ab->setDistance(7);
  EXPECT_EQ(edgesFor({a, b}, *building.graph()), Edges{RouteEdge(*ab)});
  const auto c = building.node(5, 5);
  const RouteEdge bc(*building.joinOneWay(b, c));
  EXPECT_EQ(edgesFor({a, b, c}, *building.graph()), (Edges{RouteEdge(*ab), bc}));
}

TEST_F(RouteWrapping, EdgesForAreFiledUnderTheNumbersOfNodesWhereverTheyLead) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 5);
  const auto c = building.node(5, 5);
  const auto ab = building.joinOneWay(a, b);
  ab->setEnd(c);
  const auto compiled = CompiledGraph::of(*building.graph());
  EXPECT_FALSE(compiled->structure().isFiledByEnds());
  EXPECT_EQ(edgesFor({a, b}, *building.graph()), Edges{RouteEdge(*ab)});
  EXPECT_TRUE(edgesFor({a, c}, *building.graph()).empty());
}

TEST_F(RouteWrappingDeathTest, EdgesForNeedsEdgesWithBothEnds) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 5);
  building.joinOneWay(a, b)->setStart(nullptr);
  EXPECT_DEATH(edgesFor({a, b}, *building.graph()), "an edge of a way lacks an end");
}

TEST_F(RouteWrapping, EdgesForFewerThanTwoNodesAreNone) {
  EXPECT_TRUE(edgesFor({}, *building.graph()).empty());
  EXPECT_TRUE(edgesFor({building.node(0, 0)}, *building.graph()).empty());
}

TEST_F(RouteWrapping, APathWithAMissingEdgeGivesAShorterRouteAndNoError) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 5);
  const auto c = building.node(5, 5);
  const RouteEdge ab(*building.joinOneWay(a, b));
  destinations = {at(c->coordinate())};
  const Edges edges = wrap(edgesFor({a, b, c}, *building.graph()), onNode(a), c);
  EXPECT_EQ(edges, Edges{ab});
}

// The destination nearest to a point.

TEST_F(RouteWrapping, NearestIsTheNearestDestinationOfTheLevel) {
  const auto near = building.position(0, 5);
  destinations = {building.position(0, 20), near, building.position(0, -6)};
  const auto nearest = nearestTo(person);
  EXPECT_EQ(nearest.point, near);
  EXPECT_EQ(nearest.distance, person->distanceFrom(*near));
}

TEST_F(RouteWrapping, NearestIsTheFirstOfEqualDestinations) {
  const auto first = building.position(0, 5);
  destinations = {first, building.position(0, 5)};
  EXPECT_EQ(nearestTo(person).point, first);
  const auto above = building.position(0, 5, 1);
  destinations = {above, building.position(0, 5, 1)};
  EXPECT_EQ(nearestTo(person).point, above);
}

TEST_F(RouteWrapping, NearestIsOnAnotherLevelOnlyWhenTheLevelHasNoDestination) {
  const auto above = building.position(0, 1, 1);
  const auto far = building.position(500, 0, 0);
  destinations = {above, far};
  EXPECT_EQ(nearestTo(person).point, far);
  EXPECT_EQ(nearestTo(person).distance, person->distanceFrom(*far));
  destinations = {far, above};
  EXPECT_EQ(nearestTo(person).point, far);
  destinations = {above};
  EXPECT_EQ(nearestTo(person).point, above);
}

TEST_F(RouteWrapping, NearestOnOtherLevelsIsScoredByDistanceTimesLevelHeight) {
  const auto near = building.position(0, 4, 9);
  levelHeight = 2.5;
  destinations = {building.position(0, 5, 1), near, building.position(0, -6, 2)};
  const auto nearest = nearestTo(person);
  EXPECT_EQ(nearest.point, near);
  EXPECT_EQ(nearest.distance, metresBetween(person, near) * 2.5);
}

TEST_F(RouteWrapping, NearestOnOtherLevelsIsTheFirstWhereLevelsHaveNoHeight) {
  const auto first = building.position(0, 50, 1);
  levelHeight = 0;
  destinations = {first, building.position(0, 5, 1)};
  EXPECT_EQ(nearestTo(person).point, first);
  EXPECT_EQ(nearestTo(person).distance, 0);
}

TEST_F(RouteWrapping, NearestOfNoDestinationsIsNone) {
  EXPECT_EQ(nearestTo(person).point, nullptr);
  EXPECT_EQ(nearestTo(person).distance, kNoDistance);
}

TEST_F(RouteWrapping, NearestStandsDestinationsThatAreNotNumbers) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const auto good = building.position(0, 50);
  destinations = {at(nan, nan), good, at(48, nan, 1)};
  EXPECT_EQ(nearestTo(person).point, good);
  destinations = {at(nan, nan)};
  EXPECT_EQ(nearestTo(person).point, nullptr);
}

// The way from the path to the destination.

TEST_F(RouteWrapping, EndLeadsToTheDestinationsFootOnAnEdgeOfTheNode) {
  const auto via = building.node(0, 0);
  building.join(via, building.node(0, 40));
  destinations = {building.position(2, 6)};
  const Edges edges = endOf(via);
  ASSERT_EQ(edges.size(), 1U);
  const auto foot = edges[0].end;
  expectPlain(edges[0], via, foot, via->distanceFrom(*foot));
  EXPECT_EQ(foot->level(), 0);
  EXPECT_NEAR(metresBetween(foot, building.position(0, 6)), 0, 0.005);
}

TEST_F(RouteWrapping, EndIsNothingWhereTheNodeIsNearest) {
  const auto via = building.node(0, 0);
  building.join(via, building.node(0, 40));
  destinations = {building.position(2, -1)};
  EXPECT_TRUE(endOf(via).empty());
}

TEST_F(RouteWrapping, EndLeadsStraightToADestinationThatSeesNothingOfTheNode) {
  const auto via = building.node(0, 0);
  building.join(via, building.node(0, 40));
  building.wall(1, -50, 1, 50);
  const auto destination = building.position(2, 6);
  destinations = {destination};
  const Edges edges = endOf(via);
  ASSERT_EQ(edges.size(), 1U);
  const auto end = edges[0].end;
  expectPlain(edges[0], via, end, via->distanceFrom(*destination));
  EXPECT_NE(end, destination);
  EXPECT_EQ(end->coordinate(), destination->coordinate());
  EXPECT_EQ(end->identifier(), -1);
}

TEST_F(RouteWrapping, EndStaysOnTheNodesLevelAndTakesTheScoreAsItsLength) {
  const auto via = building.node(0, 0, 0);
  building.wall(1, -50, 1, 50, 0);
  building.region(1);
  const auto above = building.position(2, 0, 1);
  destinations = {above};
  const Edges edges = endOf(via);
  ASSERT_EQ(edges.size(), 1U);
  EXPECT_EQ(edges[0].end->level(), 0);
  EXPECT_EQ(edges[0].end->coordinate(), above->coordinate());
  EXPECT_EQ(edges[0].distance, metresBetween(via, above) * levelHeight);
}

TEST_F(RouteWrapping, EndLeadsToTheDestinationNearestToTheNode) {
  const auto via = building.node(0, 100);
  building.join(via, building.node(40, 100));
  destinations = {building.position(0, 1), building.position(5, 101)};
  const Edges edges = endOf(via);
  ASSERT_EQ(edges.size(), 1U);
  EXPECT_NEAR(metresBetween(edges[0].end, building.position(5, 100)), 0, 0.005);
}

TEST_F(RouteWrapping, EndIsNothingWithoutDestinations) {
  EXPECT_TRUE(endOf(building.node(0, 0)).empty());
}

TEST_F(RouteWrapping, EndComesBehindWhatIsThere) {
  const auto a = building.node(0, -10);
  const auto via = building.node(0, 0);
  Edges edges{RouteEdge(*building.joinOneWay(a, via))};
  building.join(via, building.node(0, 40));
  destinations = {building.position(2, 6)};
  open();
  wrapRouteEdgesWithEnd(via, edges, input());
  ASSERT_EQ(edges.size(), 2U);
  EXPECT_EQ(edges[0].end, via);
  EXPECT_EQ(edges[1].start, via);
}

// The whole way.

/// A corridor from A to B, and the person beside it.
class RouteWrappingOfAWay : public RouteWrapping {
 protected:
  RouteWrappingOfAWay() {
    building.join(a, b);
    person = building.position(2, 10);
  }

  PointPtr a = building.node(0, 0);
  PointPtr b = building.node(0, 40);
};

using RouteWrappingOfAWayDeathTest = RouteWrappingOfAWay;

TEST_F(RouteWrappingOfAWay, StartsAtTheNodeOfAPersonOnANode) {
  const RouteEdge ab(*building.joinOneWay(a, b));
  destinations = {building.position(0, 41)};
  EXPECT_EQ(wrap({ab}, onNode(a), b), Edges{ab});
}

TEST_F(RouteWrappingOfAWay, StartsAtTheFootOfAPersonOnAnEdge) {
  const RouteEdge ab(*building.joinOneWay(a, b));
  const auto foot = building.position(-10, 0);
  destinations = {building.position(0, 41)};
  const Edges edges = wrap({ab}, onEdge(foot, a, building.node(-20, 0)), b);
  ASSERT_EQ(edges.size(), 2U);
  expectPlain(edges[0], foot, a, foot->distanceFrom(*a));
  EXPECT_EQ(edges[1], ab);
}

TEST_F(RouteWrappingOfAWay, EndsAtTheFootOfTheDestination) {
  const RouteEdge ab(*building.joinOneWay(a, b));
  building.join(b, building.node(40, 40));
  destinations = {building.position(7, 42)};
  const Edges edges = wrap({ab}, onNode(a), b);
  ASSERT_EQ(edges.size(), 2U);
  EXPECT_EQ(edges[0], ab);
  EXPECT_EQ(edges[1].start, b);
  EXPECT_NEAR(metresBetween(edges[1].end, building.position(7, 40)), 0, 0.005);
}

TEST_F(RouteWrappingOfAWay, IsOneDirectEdgeToTheNearestDestinationWithoutPathAndTarget) {
  const auto near = building.position(-30, 0);
  destinations = {building.position(90, 0), near};
  building.wall(-1, -50, -1, 50);  // walls do not matter then
  const Edges edges = wrap({}, onEdge(building.position(0, 10), a, b), nullptr);
  ASSERT_EQ(edges.size(), 1U);
  expectPlain(edges[0], person, near, person->distanceFrom(*near));
}

TEST_F(RouteWrappingOfAWay, IsADirectEdgeOnTheSpotWithoutPathTargetAndDestination) {
  const Edges edges = wrap({}, onNode(a), nullptr);
  ASSERT_EQ(edges.size(), 1U);
  expectPlain(edges[0], person, person, person->distanceFrom(*person));
}

TEST_F(RouteWrappingOfAWay, IsADirectEdgeWithoutPathWhereNoWallIsInBetween) {
  const auto destination = building.position(3, 30);
  destinations = {destination};
  const Edges edges = wrap({}, onEdge(building.position(0, 10), a, b), b);
  ASSERT_EQ(edges.size(), 1U);
  expectPlain(edges[0], person, destination, person->distanceFrom(*destination));
}

TEST_F(RouteWrappingOfAWay, LeadsDirectlyToTheDestinationNearestToTheTarget) {
  const auto nearTarget = building.position(0, 45);
  destinations = {building.position(2, 11), nearTarget};
  const Edges edges = wrap({}, onNode(a), b);
  ASSERT_EQ(edges.size(), 1U);
  EXPECT_EQ(edges[0].end, nearTarget);
}

TEST_F(RouteWrappingOfAWay, IsADirectEdgeOnTheSpotWithoutPathAndDestination) {
  const Edges edges = wrap({}, onEdge(building.position(0, 10), a, b), b);
  ASSERT_EQ(edges.size(), 1U);
  expectPlain(edges[0], person, person, person->distanceFrom(*person));
}

TEST_F(RouteWrappingOfAWay, GoesOverTheTargetWithoutPathWhereAWallIsInBetween) {
  building.join(b, building.node(40, 40));
  building.wall(1, 20, 60, 20);
  destinations = {building.position(5, 38)};
  const auto foot = building.position(0, 10);
  const Edges edges = wrap({}, onEdge(foot, a, b), b);
  ASSERT_EQ(edges.size(), 2U);
  expectPlain(edges[0], foot, b, foot->distanceFrom(*b));
  EXPECT_EQ(edges[1].start, b);
  EXPECT_NEAR(metresBetween(edges[1].end, building.position(5, 40)), 0, 0.005);
}

TEST_F(RouteWrappingOfAWay, OfAPathOfOneNodeBehindAWallIsTheSpliceAndTheEnd) {
  building.join(b, building.node(40, 40));
  building.wall(1, 20, 60, 20);
  destinations = {building.position(5, 38)};
  const auto foot = building.position(0, 10);
  const Edges none = edgesFor({b}, *building.graph());
  EXPECT_TRUE(none.empty());
  EXPECT_EQ(wrap(none, onEdge(foot, a, b), b).size(), 2U);
}

TEST_F(RouteWrappingOfAWay, IsTheEndAloneForAPersonOnTheTargetBehindAWall) {
  building.join(b, building.node(40, 40));
  building.wall(1, 20, 60, 20);
  destinations = {building.position(5, 38)};
  const Edges edges = wrap({}, onNode(b), b);
  ASSERT_EQ(edges.size(), 1U);
  EXPECT_EQ(edges[0].start, b);
}

TEST_F(RouteWrappingOfAWay, TestsTheDirectEdgeAgainstTheWallsThatAreHeld) {
  building.wall(1, 20, 60, 20, 1);
  const auto destination = building.position(5, 38);
  destinations = {destination};
  EXPECT_EQ(wrap({}, onNode(a), b).front().end, destination);
  mapper.useWallsOf(building.region(1));
  Edges edges;
  createWrappedNonBarrierIntersectionRoute(edges, *onNode(a), b, input());
  for (const auto& edge : edges) EXPECT_NE(edge.end, destination);
}

TEST_F(RouteWrappingOfAWayDeathTest, NeedsATargetForAPath) {
  destinations = {building.position(5, 38)};
  EXPECT_DEATH(wrap({RouteEdge(*building.joinOneWay(a, b))}, onNode(a), nullptr),
               "fatal error: .*destination");
}

TEST_F(RouteWrappingOfAWayDeathTest, NeedsWallsToTestADirectEdgeAgainst) {
  destinations = {building.position(5, 38)};
  Edges edges;
  EXPECT_DEATH(createWrappedNonBarrierIntersectionRoute(edges, *onNode(a), b, input()),
               "fatal error: .*walls");
}

}  // namespace
}  // namespace KorvaniTest
