#include "Navigation/Routing/RouteOptimisation.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

#include "Common/KorvaniCommonHelpers.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/PlacedBuilding.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::cutCorners;
using KorvaniNavigation::KRVNavEdge;
using KorvaniNavigation::KRVNavObstacle;
using KorvaniNavigation::ObstacleDetector;
using KorvaniNavigation::RouteEdge;

using Edges = KorvaniNavigation::Edges;

RouteEdge edge(const PointPtr& from, const PointPtr& to) {
  return RouteEdge(from, to,
                   KorvaniPlatform::greatCircleDistance(from->coordinate(), to->coordinate()));
}

/// The edges of a way over these points.
Edges way(const std::vector<PointPtr>& points) {
  Edges edges;
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {
    edges.push_back(edge(points[i], points[i + 1]));
  }
  return edges;
}

std::vector<PointPtr> pointsOf(const Edges& edges) {
  std::vector<PointPtr> points;
  for (const auto& each : edges) points.push_back(each.start);
  if (!edges.empty()) points.push_back(edges.back().end);
  return points;
}

ObstacleDetector detectorOf(std::vector<std::shared_ptr<KRVNavObstacle>> obstacles = {}) {
  return ObstacleDetector(std::move(obstacles), {});
}

ObstacleDetector wall(double fromNorth, double fromEast, double toNorth, double toEast) {
  return detectorOf({std::make_shared<KRVNavObstacle>(std::vector<CLLocationCoordinate2D>{
      fromOrigin(fromNorth, fromEast), fromOrigin(toNorth, toEast)})});
}

/// Walls that nobody may look at: an obstacle without coordinates ends the process.
ObstacleDetector forbidden() {
  return detectorOf({std::make_shared<KRVNavObstacle>(std::vector<CLLocationCoordinate2D>{})});
}

/// Whether the corner of the way over three points is cut, where no wall is in the way.
bool isCut(const PointPtr& a, const PointPtr& b, const PointPtr& c) {
  return cutCorners(way({a, b, c}), detectorOf()).size() == 1;
}

TEST(CutCorners, ReturnsASingleEdgeAsItIs) {
  const Edges single = way({pointFromOrigin(0, 0), pointFromOrigin(0, 5)});
  EXPECT_EQ(cutCorners(single, forbidden()), single);
}

TEST(CutCorners, ReturnsNothingForNothing) { EXPECT_TRUE(cutCorners({}, forbidden()).empty()); }

TEST(CutCorners, MakesOneEdgeOfARightAngleFifteenMetresAcross) {
  const auto a = pointFromOrigin(0, 0);
  const auto b = pointFromOrigin(9, 0);
  const auto c = pointFromOrigin(9, 12);
  const RouteEdge first(KRVNavEdge(a, b, 9.0, 2.0, false, "ramp"));
  const RouteEdge second(KRVNavEdge(b, c, 12.0, 3.0, true, "stairs"));
  const Edges cut = cutCorners({first, second}, detectorOf());
  ASSERT_EQ(cut.size(), 1U);
  EXPECT_EQ(cut[0].start, a);
  EXPECT_EQ(cut[0].end, c);
  EXPECT_EQ(cut[0].distance,
            KorvaniPlatform::greatCircleDistance(a->coordinate(), c->coordinate()));
  EXPECT_NEAR(cut[0].distance, 15, 1e-4);
  EXPECT_EQ(cut[0].multiplicator, 2.0);
  EXPECT_FALSE(cut[0].isBarrierFree);
  EXPECT_EQ(cut[0].type, "ramp");
}

TEST(CutCorners, KeepsTheEarlierEdgesLackOfAType) {
  const RouteEdge first(pointFromOrigin(0, 0), pointFromOrigin(5, 0), 5.0);
  const RouteEdge second(KRVNavEdge(first.end, pointFromOrigin(5, 5), 5.0, 1.0, true, "stairs"));
  const Edges cut = cutCorners({first, second}, detectorOf());
  ASSERT_EQ(cut.size(), 1U);
  EXPECT_EQ(cut[0].type, std::nullopt);
}

TEST(CutCorners, ChangesNeitherItsInputNorTheInputsEdges) {
  const Edges input = way({pointFromOrigin(0, 0), pointFromOrigin(9, 0), pointFromOrigin(9, 12)});
  const Edges copy = input;
  const auto end = input[0].end;
  cutCorners(input, detectorOf());
  EXPECT_EQ(input, copy);
  EXPECT_EQ(input[0].end, end);
}

TEST(CutCorners, KeepsCornersMoreThanTwentyMetresAcross) {
  EXPECT_FALSE(isCut(pointFromOrigin(0, 0), pointFromOrigin(12.3, 0),
                     pointFromOrigin(12.3, 16.4)));  // 20.5 m
  EXPECT_TRUE(isCut(pointFromOrigin(0, 0), pointFromOrigin(11.7, 0),
                    pointFromOrigin(11.7, 15.6)));  // 19.5 m
}

TEST(CutCorners, CutsCornersExactlyTwentyMetresAcross) {
  const auto corner = at(degreesOf(10), degreesOf(10));
  EXPECT_TRUE(isCut(at(0, 0), corner, at(exactlyNorthOfNull(20))));
  EXPECT_FALSE(isCut(at(0, 0), corner, at(exactlyNorthOfNull(std::nextafter(20, 21)))));
}

/// A place, some 5 m on, to which a way from (0, 0) due north turns right by exactly that many
/// degrees at `corner`.
CLLocationCoordinate2D exactTurn(CLLocationCoordinate2D corner, double degrees) {
  for (int millimetres = 0; millimetres < 200; ++millimetres) {
    const double latitude = corner.latitude + degreesOf(5 + millimetres * 0.001);
    const auto turn = [&](double longitude) {
      return KorvaniCommon::KorvaniCommonHelpers::clockwiseAngleBetweenLines({0, 0}, corner, corner,
                                                                             {latitude, longitude});
    };
    double low = 0;
    double high = degreesOf(10);
    while (std::nextafter(low, high) < high) {
      const double middle = low + (high - low) / 2;
      (turn(middle) < degrees ? low : high) = middle;
    }
    if (turn(high) == degrees) return {latitude, high};
  }
  throw std::invalid_argument("no place makes a turn of exactly that many degrees");
}

TEST(CutCorners, CutsTurnsOfExactlyTwentyDegrees) {
  const CLLocationCoordinate2D corner{degreesOf(5), 0};
  EXPECT_TRUE(isCut(at(0, 0), at(corner), at(exactTurn(corner, 20))));
  EXPECT_FALSE(isCut(at(0, 0), at(corner), at(exactTurn(corner, std::nextafter(20, 0)))));
}

TEST(CutCorners, KeepsTurnsOfLessThanTwentyDegreesToEitherSide) {
  const auto turn = [](double degrees) {
    const double radians = KorvaniPlatform::radians(degrees);
    return isCut(pointFromOrigin(0, 0), pointFromOrigin(5, 0),
                 pointFromOrigin(5 + 5 * std::cos(radians), 5 * std::sin(radians)));
  };
  EXPECT_FALSE(turn(0));
  EXPECT_FALSE(turn(19.9));
  EXPECT_FALSE(turn(-19.9));
  EXPECT_TRUE(turn(20.1));
  EXPECT_TRUE(turn(-20.1));
  EXPECT_TRUE(turn(170));
  EXPECT_TRUE(turn(-170));
}

TEST(CutCorners, KeepsACornerAroundAWall) {
  const Edges around = way({pointFromOrigin(0, 0), pointFromOrigin(5, 0), pointFromOrigin(5, 5)});
  EXPECT_EQ(cutCorners(around, wall(4, 1, 1, 4)), around);
  EXPECT_EQ(cutCorners(around, wall(6, 0, 6, 5)).size(), 1U);
}

TEST(CutCorners, KeepsCornersBetweenLevels) {
  EXPECT_FALSE(isCut(pointFromOrigin(0, 0, 0), pointFromOrigin(5, 0, 0), pointFromOrigin(5, 5, 1)));
  EXPECT_FALSE(isCut(pointFromOrigin(0, 0, 1), pointFromOrigin(5, 0, 0), pointFromOrigin(5, 5, 0)));
}

TEST(CutCorners, AsksForTheLevelsOfTheOuterEndsOnly) {
  EXPECT_TRUE(isCut(pointFromOrigin(0, 0, 0), pointFromOrigin(5, 0, 1), pointFromOrigin(5, 5, 0)));
}

TEST(CutCorners, ReturnsTheEdgesInWalkingOrder) {
  // Straight on, then a bend that is cut, then straight on for long.
  const auto points =
      std::vector<PointPtr>{pointFromOrigin(0, 0),  pointFromOrigin(30, 0), pointFromOrigin(60, 0),
                            pointFromOrigin(65, 0), pointFromOrigin(65, 5), pointFromOrigin(65, 40),
                            pointFromOrigin(65, 80)};
  const Edges input = way(points);
  const Edges output = cutCorners(input, detectorOf());
  EXPECT_EQ(pointsOf(output), (std::vector<PointPtr>{points[0], points[1], points[2], points[4],
                                                     points[5], points[6]}));
  EXPECT_EQ(output.front(), input.front());
  EXPECT_EQ(output.back(), input.back());
}

TEST(CutCorners, CollapsesABendOfShortEdgesIntoOneLine) {
  const auto points =
      std::vector<PointPtr>{pointFromOrigin(0, 0), pointFromOrigin(3, 0), pointFromOrigin(5.6, 1.5),
                            pointFromOrigin(7.1, 4.1), pointFromOrigin(7.1, 7.1)};
  Edges input = way(points);
  input.front().multiplicator = 4.0;
  const Edges output = cutCorners(input, detectorOf());
  EXPECT_EQ(pointsOf(output), (std::vector<PointPtr>{points.front(), points.back()}));
  EXPECT_EQ(output[0].multiplicator, 4.0);
}

TEST(CutCorners, StopsCollapsingWhereTheLineWouldGetTooLong) {
  // Steps of a staircase on the ground, 7 m each: two of them are 9.9 m across, three 15.7 m,
  // four 19.8 m and five 25.2 m.
  const auto points = std::vector<PointPtr>{pointFromOrigin(0, 0),   pointFromOrigin(7, 0),
                                            pointFromOrigin(7, 7),   pointFromOrigin(14, 7),
                                            pointFromOrigin(14, 14), pointFromOrigin(21, 14)};
  const Edges output = cutCorners(way(points), detectorOf());
  EXPECT_EQ(pointsOf(output), (std::vector<PointPtr>{points[0], points[1], points[5]}));
}

TEST(CutCorners, WorksFromTheLastEdgeToTheFirst) {
  // Either corner could be cut, and after it the other one no more.
  const auto points = std::vector<PointPtr>{pointFromOrigin(0, 0), pointFromOrigin(14, 0),
                                            pointFromOrigin(14, 14), pointFromOrigin(28, 14)};
  EXPECT_EQ(pointsOf(cutCorners(way(points), detectorOf())),
            (std::vector<PointPtr>{points[0], points[1], points[3]}));
}

TEST(CutCorners, CutsTheCornerBetweenAnEdgeAndALineThatItMade) {
  // The last corner is cut first; the first one is then one between an edge and a slanting line.
  const auto points = std::vector<PointPtr>{pointFromOrigin(0, 0), pointFromOrigin(13, 0),
                                            pointFromOrigin(13, 13), pointFromOrigin(0, 13)};
  EXPECT_EQ(pointsOf(cutCorners(way(points), detectorOf())),
            (std::vector<PointPtr>{points[0], points[3]}));
}

TEST(CutCorners, GoesOnFromTheEdgeBeforeOneThatItKept) {
  // The last corner stays because of the wall; the first one is cut all the same.
  const auto points = std::vector<PointPtr>{pointFromOrigin(0, 0), pointFromOrigin(5, 0),
                                            pointFromOrigin(5, 5), pointFromOrigin(10, 5)};
  EXPECT_EQ(pointsOf(cutCorners(way(points), wall(8, 2.9, 7, 3.1))),
            (std::vector<PointPtr>{points[0], points[2], points[3]}));
}

TEST(CutCorners, CollapsesAWayThereAndBackIntoNothing) {
  const auto a = pointFromOrigin(0, 0);
  const Edges output = cutCorners(way({a, pointFromOrigin(0, 5), a}), detectorOf());
  ASSERT_EQ(output.size(), 1U);
  EXPECT_EQ(output[0].distance, 0);
}

TEST(CutCorners, LooksForWallsOnlyWhenAllOtherTestsHavePassed) {
  EXPECT_EQ(cutCorners(
                way({pointFromOrigin(0, 0, 0), pointFromOrigin(5, 0, 0), pointFromOrigin(5, 5, 1)}),
                forbidden())
                .size(),
            2U);
  EXPECT_EQ(cutCorners(way({pointFromOrigin(0, 0), pointFromOrigin(20, 0), pointFromOrigin(20, 5)}),
                       forbidden())
                .size(),
            2U);
  EXPECT_EQ(cutCorners(way({pointFromOrigin(0, 0), pointFromOrigin(5, 0), pointFromOrigin(10, 1)}),
                       forbidden())
                .size(),
            2U);
}

TEST(CutCornersDeathTest, LooksForWallsBeforeItCuts) {
  const Edges corner = way({pointFromOrigin(0, 0), pointFromOrigin(5, 0), pointFromOrigin(5, 5)});
  EXPECT_DEATH(cutCorners(corner, forbidden()), "fatal error: .*obstacle");
}

TEST(CutCorners, StandsCoordinatesThatAreNotNumbers) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_LE(
      cutCorners(way({pointFromOrigin(0, 0), at(nan, nan), pointFromOrigin(5, 5)}), detectorOf())
          .size(),
      2U);
  EXPECT_LE(
      cutCorners(way({pointFromOrigin(0, 0), at(1e308, -1e308), at(nan, 11)}), wall(0, 1, 2, 3))
          .size(),
      2U);
}

// In a whole route.

class RouteOptimisationTest : public FacadeFixture {
 protected:
  RouteOptimisationTest() {
    const std::vector<PointPtr> corners{building.node(0, 0), building.node(9, 0),
                                        building.node(9, 12)};
    building.join(corners[0], corners[1]);
    building.join(corners[1], corners[2]);
    provide(building.graph());
  }

  /// The route from one end to the other.
  std::vector<KorvaniNavigation::Step> stepsOfARoute() {
    guide(building.position(0, 0), {building.position(9, 12)});
    const auto route = lastRoute();
    return route ? route->steps() : std::vector<KorvaniNavigation::Step>();
  }

  PlacedBuilding building;
};

TEST_F(RouteOptimisationTest, LeavesTheWayAsItIsWhileItIsOff) {
  ASSERT_FALSE(config().activateRouteOptimisation());
  const auto steps = stepsOfARoute();
  ASSERT_EQ(steps.size(), 2U);
  EXPECT_NEAR(steps[0].distance(), 9, 1e-4);
  EXPECT_NEAR(steps[1].distance(), 12, 1e-4);
}

TEST_F(RouteOptimisationTest, CutsTheCornerOnceItIsOn) {
  config().setActivateRouteOptimisation(true);
  const auto steps = stepsOfARoute();
  ASSERT_EQ(steps.size(), 1U);
  EXPECT_NEAR(steps[0].distance(), 15, 1e-4);
}

TEST_F(RouteOptimisationTest, KeepsTheCornerAroundAWallOfTheStartsRegion) {
  config().setActivateRouteOptimisation(true);
  building.wall(8, 1, 1, 8);
  EXPECT_EQ(stepsOfARoute().size(), 2U);
}

}  // namespace
}  // namespace KorvaniTest
