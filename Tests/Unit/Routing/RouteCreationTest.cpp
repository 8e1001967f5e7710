#include "Navigation/Routing/RouteCreation.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "Common/KorvaniCommonHelpers.hpp"
#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Support/Points.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::createRoute;
using KorvaniNavigation::Edges;
using KorvaniNavigation::KRVNavEdge;
using KorvaniNavigation::Route;
using KorvaniNavigation::RouteEdge;
using KorvaniNavigation::Step;

/// The route along plain edges of 10 m over these points, however far they are apart.
Route routeOver(const std::vector<PointPtr>& points) {
  Edges edges;
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {
    edges.emplace_back(points[i], points[i + 1], 10.0);
  }
  return createRoute(edges);
}

double bearing(const PointPtr& from, const PointPtr& to) {
  return KorvaniCommon::initialBearing(from->coordinate(), to->coordinate());
}

/// How many steps become of two edges: 100 m at the first bearing and 50 m at the second.
std::size_t stepsOfTurn(double firstBearing, double secondBearing) {
  const auto walk = [](CLLocationCoordinate2D from, double metres, double degrees) {
    const double radians = KorvaniPlatform::radians(degrees);
    return at(moved(from, metres * std::cos(radians), metres * std::sin(radians)));
  };
  const auto a = at(0, 0);
  const auto b = walk(a->coordinate(), 100, firstBearing);
  const auto c = walk(b->coordinate(), 50, secondBearing);
  return routeOver({a, b, c}).steps().size();
}

TEST(CreateRoute, HeadsFromTheLocationOfEachStartToThatOfTheEnd) {
  const auto a = pointFromOrigin(0, 0);
  const auto b = pointFromOrigin(3, 10);
  const auto c = pointFromOrigin(9, 12);
  const auto besideC = pointFromOrigin(9.5, 12);
  const auto d = pointFromOrigin(30, -4);
  d->setLocation(pointFromOrigin(31, -3)->location());
  const auto headingBetween = [](const PointPtr& from, const PointPtr& to) {
    return KorvaniCommon::initialBearing(from->location().coordinate(),
                                         to->location().coordinate());
  };
  const Route route = createRoute(
      {RouteEdge(a, b, 10), RouteEdge(b, c, 7), RouteEdge(besideC, d, 25), RouteEdge(d, a, 30)});
  ASSERT_EQ(route.steps().size(), 4U);
  for (const Step& step : route.steps()) {
    EXPECT_EQ(step.heading(), headingBetween(step.start(), step.end()));
  }
}

TEST(CreateRoute, MakesAStepOfEveryEdge) {
  const auto a = pointFromOrigin(0, 0);
  const auto b = pointFromOrigin(0, 10);
  const auto c = pointFromOrigin(8, 10, 1);
  const RouteEdge first(KRVNavEdge(a, b, 12.5, 1.5, false, "ramp"));
  const RouteEdge second(KRVNavEdge(b, c, 9.0, 2.0, true));
  const Route route = createRoute({first, second});
  ASSERT_EQ(route.steps().size(), 2U);
  const Step& ramp = route.steps()[0];
  EXPECT_EQ(ramp.start(), a);
  EXPECT_EQ(ramp.end(), b);
  EXPECT_EQ(ramp.distance(), 12.5);
  EXPECT_EQ(ramp.timeMultiplicator(), 1.5);
  EXPECT_FALSE(ramp.barrierFree());
  EXPECT_EQ(ramp.neighborType(), "ramp");
  EXPECT_FALSE(ramp.levelChange());
  EXPECT_EQ(ramp.heading(), bearing(a, b));
  EXPECT_EQ(route.steps()[1].neighborType(), "");
  EXPECT_TRUE(route.steps()[1].levelChange());
  EXPECT_TRUE(route.steps()[1].barrierFree());
}

TEST(CreateRoute, CountsPointsLengthAndTime) {
  const auto a = pointFromOrigin(0, 0);
  const auto b = pointFromOrigin(0, 10);
  const auto c = pointFromOrigin(10, 10);
  const Route route = createRoute(
      {RouteEdge(KRVNavEdge(a, b, 12.0, 1.0, true)), RouteEdge(KRVNavEdge(b, c, 9.0, 2.0, true))});
  EXPECT_EQ(route.points(), (std::vector<PointPtr>{a, b, c}));
  EXPECT_EQ(route.totalDistance(), 21.0);
  EXPECT_EQ(route.travelTime(), (12.0 + 18.0) / 1.5);
  EXPECT_TRUE(route.directions().empty());
}

TEST(CreateRoute, MakesAnEmptyRouteOfNoEdges) {
  const Route route = createRoute({});
  EXPECT_TRUE(route.steps().empty());
  EXPECT_TRUE(route.points().empty());
  EXPECT_EQ(route.totalDistance(), 0);
}

TEST(CreateRoute, MergesAnEdgeThatRunsBackBehindTheStart) {
  const auto a = pointFromOrigin(0, 0);
  const auto b = pointFromOrigin(0, 10);
  const auto behind = pointFromOrigin(0, -4);
  const Route route = routeOver({a, b, behind});
  ASSERT_EQ(route.steps().size(), 1U);
  const Step& step = route.steps()[0];
  EXPECT_EQ(step.start(), a);
  EXPECT_EQ(step.end(), behind);
  EXPECT_EQ(step.distance(), a->distanceFrom(*behind));
  EXPECT_EQ(step.heading(), bearing(a, behind));
  EXPECT_EQ(route.points(), (std::vector<PointPtr>{a, behind}));
  EXPECT_EQ(route.totalDistance(), a->distanceFrom(*behind));
}

TEST(CreateRoute, KeepsTwoEdgesInTheSameDirectionApart) {
  EXPECT_EQ(routeOver({pointFromOrigin(0, 0), pointFromOrigin(0, 10), pointFromOrigin(0, 20)})
                .steps()
                .size(),
            2U);
  EXPECT_EQ(routeOver({pointFromOrigin(0, 0), pointFromOrigin(7, 10), pointFromOrigin(14, 20)})
                .steps()
                .size(),
            2U);
}

TEST(CreateRoute, KeepsCornersApart) {
  EXPECT_EQ(routeOver({pointFromOrigin(0, 0), pointFromOrigin(0, 10), pointFromOrigin(10, 10)})
                .steps()
                .size(),
            2U);
}

TEST(CreateRoute, GivesAMergedStepTheLaterEdgesProperties) {
  const auto a = pointFromOrigin(0, 0);
  const auto b = pointFromOrigin(0, 10);
  const auto c = pointFromOrigin(0, 4);
  const Route route = createRoute({RouteEdge(KRVNavEdge(a, b, 10.0, 1.5, true, "ramp")),
                                   RouteEdge(KRVNavEdge(b, c, 6.0, 3.0, false, "stairs"))});
  ASSERT_EQ(route.steps().size(), 1U);
  EXPECT_EQ(route.steps()[0].timeMultiplicator(), 3.0);
  EXPECT_FALSE(route.steps()[0].barrierFree());
  EXPECT_EQ(route.steps()[0].neighborType(), "stairs");
  EXPECT_EQ(route.steps()[0].heading(), bearing(a, c));
  EXPECT_EQ(route.travelTime(), a->distanceFrom(*c) * 3.0 / 1.5);
}

TEST(CreateRoute, MergesReversalsWithinOneDegree) {
  for (const double heading : {30.0, 90.0, 123.0, 211.0, 270.0, 330.0}) {
    EXPECT_EQ(stepsOfTurn(heading, heading + 180), 1U) << heading;
    EXPECT_EQ(stepsOfTurn(heading, heading + 180.99), 1U) << heading;
    EXPECT_EQ(stepsOfTurn(heading, heading + 179.01), 1U) << heading;
    EXPECT_EQ(stepsOfTurn(heading, heading + 181.01), 2U) << heading;
    EXPECT_EQ(stepsOfTurn(heading, heading + 178.99), 2U) << heading;
  }
}

TEST(CreateRoute, DoesNotMergeAReversalFromNorthToSouth) {
  EXPECT_EQ(routeOver({at(48, 11), at(48.001, 11), at(48.0004, 11)}).steps().size(), 2U);
  EXPECT_EQ(routeOver({at(48, 11), at(48.001, 11), at(47.999, 11)}).steps().size(), 2U);
}

TEST(CreateRoute, MergesAReversalFromSouthToNorth) {
  EXPECT_EQ(routeOver({at(48, 11), at(47.999, 11), at(47.9996, 11)}).steps().size(), 1U);
}

TEST(CreateRoute, DoesNotMergeReversalsFromOneSideOfTheMeridianToTheOther) {
  EXPECT_EQ(stepsOfTurn(0.3, 179.9), 2U);
  EXPECT_EQ(stepsOfTurn(359.7, 180.1), 2U);
}

TEST(CreateRoute, MergesReversalsThatStayOnOneSideOfTheMeridian) {
  EXPECT_EQ(stepsOfTurn(0.3, 180.3), 1U);
  EXPECT_EQ(stepsOfTurn(359.7, 179.7), 1U);
}

TEST(CreateRoute, NeverMergesAfterAStepThatChangesTheLevel) {
  EXPECT_EQ(
      routeOver({pointFromOrigin(0, 0, 0), pointFromOrigin(0, 10, 1), pointFromOrigin(0, 4, 1)})
          .steps()
          .size(),
      2U);
  EXPECT_EQ(
      routeOver({pointFromOrigin(0, 0, 0), pointFromOrigin(0, 10, 1), pointFromOrigin(0, 4, 0)})
          .steps()
          .size(),
      2U);
}

TEST(CreateRoute, MergesAnEdgeThatChangesTheLevelIntoOneThatDoesNot) {
  const auto a = pointFromOrigin(0, 0, 0);
  const auto above = pointFromOrigin(0, 4, 1);
  const Route route = routeOver({a, pointFromOrigin(0, 10, 0), above, pointFromOrigin(0, 9, 1)});
  ASSERT_EQ(route.steps().size(), 2U);
  EXPECT_EQ(route.steps()[0].start(), a);
  EXPECT_EQ(route.steps()[0].end(), above);
  EXPECT_TRUE(route.steps()[0].levelChange());
}

TEST(CreateRoute, ComparesTheNextEdgeWithTheMergedStep) {
  // East, back west beyond the start, and east again: each runs back on what is left of the former.
  const auto a = pointFromOrigin(0, 0);
  const auto end = pointFromOrigin(0, 20);
  const Route back = routeOver({a, pointFromOrigin(0, 10), pointFromOrigin(0, -5), end});
  ASSERT_EQ(back.steps().size(), 1U);
  EXPECT_EQ(back.steps()[0].start(), a);
  EXPECT_EQ(back.steps()[0].end(), end);
  // East and a little back is still east: the third edge runs on in that direction.
  EXPECT_EQ(routeOver({a, pointFromOrigin(0, 10), pointFromOrigin(0, 5), end}).steps().size(), 2U);
}

TEST(CreateRoute, MergesAWayThereAndBackIntoAStepOnTheSpot) {
  const auto a = pointFromOrigin(0, 0);
  const Route route = routeOver({a, pointFromOrigin(0, 10), a});
  ASSERT_EQ(route.steps().size(), 1U);
  EXPECT_EQ(route.steps()[0].start(), a);
  EXPECT_EQ(route.steps()[0].end(), a);
  EXPECT_EQ(route.steps()[0].distance(), a->distanceFrom(*a));
}

TEST(CreateRoute, StandsCoordinatesThatAreNotNumbers) {
  const double nan = std::nan("");
  EXPECT_EQ(routeOver({pointFromOrigin(0, 0), at(nan, nan), pointFromOrigin(0, 5)}).steps().size(),
            2U);
}

}  // namespace
}  // namespace KorvaniTest
