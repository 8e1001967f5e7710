#include "Navigation/Localisation/PositionMapper.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>

#include "MapperFixture.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Support/Points.hpp"
#include "Support/TextBuilding.hpp"

// The place of the graph that a position is mapped to.

namespace KorvaniTest {
namespace {

class PositionMapperTest : public MapperFixture {
 protected:
  std::shared_ptr<Intersection> map(const PointPtr& position) {
    open();
    return mapper.intersect(*position);
  }
};

using PositionMapperDeathTest = PositionMapperTest;

TEST_F(PositionMapperTest, FindsNothingWithoutAGraph) {
  EXPECT_EQ(mapper.intersect(*at(kOrigin)), nullptr);
  EXPECT_EQ(mapper.obstacleDetector(), nullptr);
}

TEST_F(PositionMapperTest, FindsNothingInAGraphWithoutRegions) {
  provide(std::make_shared<KRVNavGraph>());
  EXPECT_EQ(mapper.intersect(*at(kOrigin)), nullptr);
}

TEST_F(PositionMapperTest, FindsNothingInARegionWhoseNodesAreAllBehindWalls) {
  const auto a = building.node(2, -5);
  const auto b = building.node(2, 5);
  building.join(a, b);
  building.wall(1, -20, 1, 20);
  EXPECT_EQ(map(building.position(0, 0)), nullptr);
}

TEST_F(PositionMapperTest, PutsAPositionOnAnEdgeOntoThatEdge) {
  const auto a = building.node(0, -5);
  const auto b = building.node(1, 5);
  building.join(a, b);
  const auto place = map(building.position(0.5, 0));
  ASSERT_TRUE(isOnEdge(place, a, b) || isOnEdge(place, b, a));
  EXPECT_NEAR(place->distance(), 0, kFootPrecision);
  EXPECT_NEAR(metresBetween(place->node()->coordinate(), building.place(0.5, 0)), 0,
              kFootPrecision);
}

TEST_F(PositionMapperTest, PutsAPositionWhoseFootLiesBeyondEveryEdgeOntoTheNearestNode) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 10);
  const auto c = building.node(-10, 0);
  building.join(a, b);
  building.join(a, c);
  const auto position = building.position(2, -1);
  const auto place = map(position);
  ASSERT_TRUE(isNode(place, a));
  EXPECT_EQ(place->distance(), metresBetween(a->coordinate(), position->coordinate()));
  EXPECT_EQ(place->delta(), degreesBetween(a->coordinate(), position->coordinate()));
}

TEST_F(PositionMapperTest, DescribesAPlaceOnAnEdgeWhole) {
  const auto a = building.node(0, 0, 2);
  const auto b = building.node(0, 40, 2);
  building.join(a, b);
  const auto position = building.position(3, 4, 2);
  const auto place = map(position);
  ASSERT_TRUE(isOnEdge(place, a, b));
  const auto foot = place->node();
  EXPECT_EQ(foot->level(), 2);
  EXPECT_EQ(foot->identifier(), -1);
  EXPECT_NEAR(metresBetween(foot->coordinate(), building.place(0, 4)), 0, kFootPrecision);
  EXPECT_EQ(place->distance(), metresBetween(foot->coordinate(), position->coordinate()));
  EXPECT_EQ(place->delta(), degreesBetween(foot->coordinate(), position->coordinate()));
  EXPECT_NEAR(asEdge(place)->distanceEnclosingNodeOne(), 4, kFootPrecision);
  EXPECT_NEAR(asEdge(place)->distanceEnclosingNodeTwo(), 36, kFootPrecision);
}

TEST_F(PositionMapperTest, PutsAPositionAtANodeOntoTheNode) {
  const auto a = building.node(0, 0);
  const auto b = building.node(3, 10);
  building.join(a, b);
  EXPECT_TRUE(isNode(map(at(a->coordinate())), a));
}

TEST_F(PositionMapperTest, KeepsTheFirstOfTwoEdgesAtTheSameDistance) {
  const auto a = building.node(0, 0);
  const auto first = building.node(1, 40);
  const auto second = building.node(1, 40);
  building.join(a, second);
  building.join(a, first);
  EXPECT_TRUE(isOnEdge(map(building.position(2, 3)), a, second));
}

TEST_F(PositionMapperTest, TriesTheEdgesOfEveryCandidate) {
  const auto lonely = building.node(3, 0);
  const auto b = building.node(-1, 4);
  const auto c = building.node(-1, -20);
  building.join(b, c);
  EXPECT_TRUE(isOnEdge(map(building.position(0, 0)), b, c));
  EXPECT_LT(metresBetween(lonely->coordinate(), kOrigin), metresBetween(b->coordinate(), kOrigin));
}

TEST_F(PositionMapperTest, PrefersTheNearerOfTwoEdges) {
  const auto a = building.node(0, 0);
  const auto north = building.node(40, 0);
  const auto east = building.node(0, 40);
  building.join(a, north);
  building.join(a, east);
  EXPECT_TRUE(isOnEdge(map(building.position(1, 3)), a, east));
  EXPECT_TRUE(isOnEdge(map(building.position(3, 1)), a, north));
}

TEST_F(PositionMapperTest, LooksAtNoEdgeOfNodesOutOfReach) {
  // The long edge passes within a metre, but both its ends lie far outside the reach of 2.5 m.
  const auto near = building.node(1, 0);
  const auto a = building.node(-0.5, -30);
  const auto b = building.node(-0.5, 30);
  building.join(a, b);
  EXPECT_TRUE(isNode(map(building.position(0, 0)), near));
}

TEST_F(PositionMapperTest, LeavesOutEdgesToOtherLevels) {
  const auto a = building.node(0, 0, 0);
  const auto above = building.node(0, 10, 1);
  building.join(a, above);
  EXPECT_TRUE(isNode(map(building.position(1, 4)), a));
}

TEST_F(PositionMapperTest, LeavesOutAFootBehindAWall) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 40);
  building.join(a, b);
  const auto position = building.position(3, 4);
  EXPECT_TRUE(isOnEdge(map(position), a, b));
  building.wall(1, 3.5, 1, 4.5);
  EXPECT_TRUE(isNode(map(position), a));
}

TEST_F(PositionMapperTest, LeavesOutAnEdgeThatIsAMuchShorterWayThanItsEndsAreApart) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 10);
  building.join(a, b, 3.0);
  // 5 m to the near node, 6.7 m to the far one, of which the edge saves 3 m: that is 3.7 m more.
  EXPECT_TRUE(isNode(map(building.position(3, 4)), a));
}

TEST_F(PositionMapperTest, TakesAnEdgeOnlyWhenTheWayRoundIsLessThanOneFifthLonger) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 40);
  // A position and a length of the edge that make the way round longer by exactly one fifth.
  PointPtr position;
  double length = 0;
  bool isExact = false;
  for (int millimetres = 0; !isExact && millimetres < 1000; ++millimetres) {
    position = building.position(3, 4 + millimetres * 0.001);
    const double toA = metresBetween(a->coordinate(), position->coordinate());
    const double toB = metresBetween(b->coordinate(), position->coordinate());
    length = toA + toB - toA * 1.2;
    isExact = toA * 1.2 == toA + toB - length;
  }
  ASSERT_TRUE(isExact);
  building.join(a, b, length);
  EXPECT_TRUE(isNode(map(position), a));
  building.join(a, b, std::nextafter(length, 100));
  EXPECT_TRUE(isOnEdge(map(position), a, b));
}

TEST_F(PositionMapperTest, MeasuresDetoursByTheEdgeFromTheNearNode) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 10);
  building.joinOneWay(a, b);
  building.joinOneWay(b, a, 1.0);
  EXPECT_TRUE(isOnEdge(map(building.position(3, 4)), a, b));
}

TEST_F(PositionMapperTest, LeavesOutNeighboursToWhichTheProvidedGraphHasNoEdge) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 10);
  building.join(a, b);
  open();
  // Another graph is provided, and the finder still knows the former one's region.
  const auto regions = regionFinder()->regions();
  provide(std::make_shared<KRVNavGraph>());
  regionFinder()->setRegions(regions);
  EXPECT_TRUE(isNode(mapper.intersect(*building.position(3, 4)), a));
}

TEST_F(PositionMapperTest, FindsNoIntersectionAmongCandidatesWithoutAGraph) {
  building.node(0, 0);
  const auto position = building.position(1, 0);
  const auto candidates = closest(position);
  ASSERT_EQ(candidates.size(), 1U);
  EXPECT_EQ(mapper.findIntersection(building.region(0), *position, candidates, nullptr), nullptr);
}

TEST_F(PositionMapperTest, HoldsTheWallsOfThePositionsRegionAfterwards) {
  building.node(0, 0, 0);
  building.node(0, 0, 1);
  const auto ground = building.wall(5, 5, 6, 6, 0);
  const auto upper = building.wall(7, 7, 8, 8, 1);
  map(building.position(1, 1, 0));
  EXPECT_EQ(mapper.obstacleDetector()->obstacles(), (std::vector{ground}));
  map(building.position(1, 1, 1));
  EXPECT_EQ(mapper.obstacleDetector()->obstacles(), (std::vector{upper}));
}

TEST_F(PositionMapperTest, SeesWallsThatTheRegionGotSinceTheLastPosition) {
  const auto near = building.node(0, 2);
  const auto far = building.node(0, -3);
  const auto position = building.position(0, 0);
  EXPECT_TRUE(isNode(map(position), near));
  building.wall(-1, 1, 1, 1);
  EXPECT_TRUE(isNode(mapper.intersect(*position), far));
}

TEST_F(PositionMapperTest, StandsPositionsThatAreNotNumbers) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 10);
  building.join(a, b);
  building.wall(1, -20, 1, 20);
  open();
  EXPECT_EQ(mapper.intersect(*at(kNotANumber, kNotANumber)), nullptr);
  for (const double hostile : {std::numeric_limits<double>::infinity(), 1e308, -1e308}) {
    for (const auto& position : {at(hostile, hostile), at(48, hostile), at(hostile, 11)}) {
      const auto place = mapper.intersect(*position);
      EXPECT_TRUE(!place || place->node());
    }
  }
}

TEST_F(PositionMapperTest, StandsNeighboursWhoseCoordinatesAreNotNumbers) {
  const auto a = building.node(0, 0);
  const auto broken = building.node({kNotANumber, 11});
  building.join(a, broken, 5.0);
  EXPECT_TRUE(isNode(map(building.position(1, 0)), a));
}

TEST_F(PositionMapperDeathTest, NeedsItsConfiguration) {
  PositionMapper orphan({}, true);
  EXPECT_DEATH(orphan.intersect(*at(kOrigin)), "fatal error: .*configuration");
  EXPECT_DEATH(orphan.useWallsOf(building.region(0)), "fatal error: .*configuration");
}

TEST_F(PositionMapperDeathTest, DoesNotStandAnEdgeWithoutEnd) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 10);
  building.joinOneWay(a, b)->setEnd(nullptr);
  open();
  EXPECT_DEATH(mapper.intersect(*building.position(1, 0)), "fatal error: .*end");
}

// The foot on one edge.

TEST_F(PositionMapperTest, TakesTheWallsOfTheRegionForAFootBetweenTheNodes) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 10);
  const auto wall = building.wall(50, 50, 60, 60);
  const auto& region = building.region(0);
  EXPECT_FALSE(mapper.findIntersectionPointOnEdge(region, *a, *b, *building.position(1, 11)));
  EXPECT_EQ(mapper.obstacleDetector(), nullptr);
  EXPECT_TRUE(mapper.findIntersectionPointOnEdge(region, *a, *b, *building.position(1, 9)));
  ASSERT_NE(mapper.obstacleDetector(), nullptr);
  EXPECT_EQ(mapper.obstacleDetector()->obstacles(), (std::vector{wall}));
}

TEST_F(PositionMapperTest, TakesAFootAHairBeyondTheEndOfTheEdge) {
  // The way over a place 4 mm beyond is 8 mm longer; a thousandth of 10 m is allowed.
  const auto a = building.node(0, 0);
  const auto b = building.node(1, 10);
  const auto foot = [&](double east) {
    return mapper.findIntersectionPointOnEdge(building.region(0), *a, *b,
                                              *building.position(east / 10, east));
  };
  EXPECT_TRUE(foot(10.004));
  EXPECT_FALSE(foot(10.006));
}

TEST_F(PositionMapperTest, FindsNoFootOnAnEdgeWithoutLength) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 0);
  EXPECT_FALSE(
      mapper.findIntersectionPointOnEdge(building.region(0), *a, *b, *building.position(0, 1)));
}

TEST_F(PositionMapperTest, FindsNoFootBehindAWallThatTouchesItsEnd) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 10);
  // The wall ends right at the position.
  const auto position = building.position(2, 5);
  building.wall(2, 5, 2, 8);
  EXPECT_FALSE(mapper.findIntersectionPointOnEdge(building.region(0), *a, *b, *position));
}

// On the route that is being followed.

class PositionMapperOnARoute : public FacadeFixture {
 protected:
  /// A way from A over B to C, and an edge from A to C that no route takes.
  PositionMapperOnARoute()
      : building(R"(
    A---------B
    |         |
    |         |
    |         |
    D         C)") {
    building.connect("A", "C", {.distance = 500});
    provide(building.graph());
    task = guide(building.point("A"), {building.point("C")});
  }

  std::shared_ptr<Intersection> map(double column, double row, bool onOriginalGraph) {
    PositionMapper mapper(bundle(), onOriginalGraph);
    return mapper.intersect(*building.position(0, column, row));
  }

  using Identifiers = std::set<std::int64_t>;

  /// Identifiers of the nodes around a place on an edge.
  static Identifiers around(const std::shared_ptr<Intersection>& place) {
    const auto edge = asEdge(place);
    if (!edge) return {};
    return {edge->enclosingNodeOne()->identifier(), edge->enclosingNodeTwo()->identifier()};
  }

  Identifiers identifiers(const char* one, const char* two) const {
    return {building.point(one)->identifier(), building.point(two)->identifier()};
  }

  TextBuilding building;
  std::shared_ptr<RoutingTask> task;
};

TEST_F(PositionMapperOnARoute, NeverUsesAnEdgeThatTheRouteDoesNotTake) {
  EXPECT_EQ(around(map(5, 1.5, true)), identifiers("A", "D"));
  EXPECT_EQ(around(map(5, 1.5, false)), identifiers("A", "B"));
}

TEST_F(PositionMapperOnARoute, MapsOntoTheRoutesOwnNodes) {
  const auto place = map(6, 1, false);
  const auto edge = asEdge(place);
  ASSERT_NE(edge, nullptr);
  const auto routeGraph = task->graphForRoute();
  ASSERT_NE(routeGraph, building.graph());
  EXPECT_EQ(edge->enclosingNodeOne()->region()->graph(), routeGraph);
  EXPECT_EQ(edge->enclosingNodeTwo()->region()->graph(), routeGraph);
}

TEST_F(PositionMapperOnARoute, UsesTheRoutesEdgesInWalkingDirectionOnly) {
  // Nearest to B, from which the route leads on to C and not back to A.
  EXPECT_EQ(around(map(12, 1, true)), identifiers("A", "B"));
  EXPECT_EQ(around(map(12, 1, false)), identifiers("B", "C"));
}

TEST_F(PositionMapperOnARoute, UsesEdgesOfTheRouteThatTheBuildingDoesNotHave) {
  // The route starts in the middle of an edge, at a point that is no node of the building.
  task = guide(building.position(0, 8, 0.2), {building.point("C")});
  EXPECT_EQ(around(map(11, 1, false)), (Identifiers{-2, building.point("B")->identifier()}));
  EXPECT_EQ(around(map(11, 1, true)), identifiers("A", "B"));
}

TEST_F(PositionMapperOnARoute, MapsOntoTheProvidedGraphWhileNoRouteIsActive) {
  navigation().removeTask(task);
  EXPECT_EQ(around(map(5, 1.5, false)), identifiers("A", "D"));
}

TEST_F(PositionMapperOnARoute, MapsOntoTheProvidedGraphBeforeTheFirstRoute) {
  task = navigation().routingTask(building.point("A"), {building.point("C")}, {});
  EXPECT_EQ(around(map(5, 1.5, false)), identifiers("A", "D"));
}

}  // namespace
}  // namespace KorvaniTest
