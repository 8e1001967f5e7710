#include "Navigation/Routing/RouteProgress.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Common/KorvaniCommonHelpers.hpp"
#include "Navigation/Routing/Route.hpp"
#include "Support/FacadeFixture.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::liesOnStep;
using KorvaniNavigation::Step;
using KorvaniNavigation::trimRoute;

class RouteProgressTest : public FacadeFixture {
 protected:
  /// Whether a place lies on a step of that length to the east.
  static bool isOn(double length, double along, double aside, std::int64_t level = 0) {
    return liesOnStep(*pointFromOrigin(aside, along, level),
                      Step(pointFromOrigin(0, 0), pointFromOrigin(0, length), length));
  }

  /// A route over these points, with plain steps of 10 m.
  static Route routeOver(const std::vector<PointPtr>& points) {
    std::vector<Step> steps;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
      steps.emplace_back(points[i], points[i + 1], 10.0);
    }
    return Route(steps);
  }

  const PointPtr a = pointFromOrigin(0, 0);
  const PointPtr b = pointFromOrigin(0, 10);
  const PointPtr c = pointFromOrigin(10, 10);
  const PointPtr d = pointFromOrigin(10, 30);
};

TEST_F(RouteProgressTest, APlaceBetweenTheEndsLiesOnAStep) {
  EXPECT_TRUE(isOn(10, 5, 0));
  EXPECT_TRUE(isOn(10, 0.01, 0));
  EXPECT_TRUE(isOn(10, 9.99, 0));
}

TEST_F(RouteProgressTest, TheEndsLieOnAStep) {
  EXPECT_TRUE(isOn(10, 0, 0));
  EXPECT_TRUE(isOn(10, 10, 0));
}

TEST_F(RouteProgressTest, APlaceAsideLiesOnAStepWhileTheDetourIsBelowAThousandth) {
  // In the middle of 10 m: 22 cm aside make 9.7 mm more, 23 cm make 10.6 mm.
  EXPECT_TRUE(isOn(10, 5, 0.22));
  EXPECT_FALSE(isOn(10, 5, 0.23));
}

TEST_F(RouteProgressTest, APlaceAsideLiesOnALongStepWhileTheDetourIsBelowHalfAMetre) {
  // In the middle of 2000 m: 22 m aside make 0.48 m more, 23 m make 0.53 m.
  EXPECT_TRUE(isOn(2000, 1000, 22));
  EXPECT_FALSE(isOn(2000, 1000, 23));
}

TEST_F(RouteProgressTest, APlaceBeyondTheEndsDoesNotLieOnAStep) {
  EXPECT_FALSE(isOn(10, 11, 0));
  EXPECT_FALSE(isOn(10, -1, 0));
  EXPECT_TRUE(isOn(10, 10.004, 0));
}

TEST_F(RouteProgressTest, LevelsDoNotMatterForAPlaceBetweenTheEnds) {
  EXPECT_TRUE(isOn(10, 5, 0, 7));
}

TEST_F(RouteProgressTest, APlaceWithinHalfAMetreOfAnEndLiesOnTheStepWhereLevelsHaveNoHeight) {
  config().setLevelHeight(0);
  EXPECT_TRUE(isOn(10, 10.49, 0));
  EXPECT_TRUE(isOn(10, 10, 0.49));
  EXPECT_TRUE(isOn(10, -0.49, 0));
  EXPECT_FALSE(isOn(10, 10.51, 0));
  EXPECT_FALSE(isOn(10, -0.51, 0));
}

TEST_F(RouteProgressTest, NearnessToAnEndCarriesTheLevelHeight) {
  EXPECT_FALSE(isOn(10, 10.49, 0));
  config().setLevelHeight(0.3);
  EXPECT_TRUE(isOn(10, 10.39, 0));   // 0.492 m with the height
  EXPECT_FALSE(isOn(10, 10.41, 0));  // 0.508 m
}

TEST_F(RouteProgressTest, NothingLiesOnAStepWithoutLengthUnlessItIsNearItsEnds) {
  const Step onTheSpot(a, a, 3.0);
  EXPECT_FALSE(liesOnStep(*a, onTheSpot));
  config().setLevelHeight(0);
  EXPECT_TRUE(liesOnStep(*a, onTheSpot));
  EXPECT_TRUE(liesOnStep(*pointFromOrigin(0.4, 0), onTheSpot));
}

TEST_F(RouteProgressTest, PlacesThatAreNotNumbersLieOnNoStep) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(liesOnStep(*at(nan, nan), Step(a, b, 10)));
  EXPECT_FALSE(liesOnStep(*at(48, nan), Step(a, b, 10)));
  EXPECT_FALSE(liesOnStep(*a, Step(at(nan, nan), b, 10)));
}

// Trimming.

TEST_F(RouteProgressTest, TrimmingLetsTheRouteStartAtThePlace) {
  Route route({Step(a, b, 10.0, false, 2.5, "ramp"), Step(b, c, 10.0)});
  const auto here = pointFromOrigin(0, 4);
  EXPECT_TRUE(trimRoute(route, here));
  ASSERT_EQ(route.steps().size(), 2U);
  const Step& first = route.steps()[0];
  EXPECT_EQ(first.start(), here);
  EXPECT_EQ(first.end(), b);
  EXPECT_EQ(first.distance(), b->distanceFrom(*here));
  EXPECT_EQ(first.timeMultiplicator(), 2.5);
  EXPECT_FALSE(first.barrierFree());
  EXPECT_EQ(first.neighborType(), "ramp");
  EXPECT_FALSE(first.levelChange());
  EXPECT_EQ(first.heading(), KorvaniCommon::initialBearing(here->coordinate(), b->coordinate()));
  EXPECT_EQ(route.steps()[1].start(), b);
  EXPECT_EQ(route.steps()[1].end(), c);
  EXPECT_EQ(route.steps()[1].distance(), 10.0);
}

TEST_F(RouteProgressTest, TrimmingDropsTheStepsBeforeThePlace) {
  Route route = routeOver({a, b, c, d});
  EXPECT_TRUE(trimRoute(route, pointFromOrigin(10, 20)));
  ASSERT_EQ(route.steps().size(), 1U);
  EXPECT_EQ(route.steps()[0].end(), d);
}

TEST_F(RouteProgressTest, TrimmingKeepsPointsAndTotalsOfTheWholeRoute) {
  Route route = routeOver({a, b, c, d});
  const Route whole = route;
  trimRoute(route, pointFromOrigin(10, 20));
  EXPECT_EQ(route.points(), whole.points());
  EXPECT_EQ(route.totalDistance(), whole.totalDistance());
  EXPECT_EQ(route.travelTime(), whole.travelTime());
  EXPECT_EQ(route.remainingDistance(), route.steps()[0].distance());
}

TEST_F(RouteProgressTest, TrimmingLeavesNoStepWhenThePlaceIsOnNone) {
  Route route = routeOver({a, b, c, d});
  EXPECT_FALSE(trimRoute(route, pointFromOrigin(-5, 5)));
  EXPECT_TRUE(route.steps().empty());
  EXPECT_EQ(route.points().size(), 4U);
}

TEST_F(RouteProgressTest, TrimmingLeavesNoStepWhenThePlaceIsBeyondTheLastOne) {
  Route route = routeOver({a, b, c, d});
  EXPECT_FALSE(trimRoute(route, pointFromOrigin(10, 31)));
}

TEST_F(RouteProgressTest, TrimmingARouteWithoutStepsFindsNothing) {
  Route route;
  EXPECT_FALSE(trimRoute(route, a));
}

TEST_F(RouteProgressTest, TrimmingTakesTheFirstStepThatPassesThePlace) {
  Route route = routeOver({a, b, c, b, a});
  EXPECT_TRUE(trimRoute(route, pointFromOrigin(0, 3)));
  ASSERT_EQ(route.steps().size(), 4U);
  EXPECT_EQ(route.steps()[0].end(), b);
}

TEST_F(RouteProgressTest, TrimmingKeepsAStepWhoseEndIsLessThanHalfAMetreAway) {
  config().setLevelHeight(0);
  Route route = routeOver({a, b, c});
  const auto here = pointFromOrigin(0, 10.3);
  EXPECT_TRUE(trimRoute(route, here));
  ASSERT_EQ(route.steps().size(), 2U);
  EXPECT_EQ(route.steps()[0].start(), here);
  EXPECT_EQ(route.steps()[0].end(), b);
  EXPECT_NEAR(route.steps()[0].distance(), 0.3, 1e-4);
}

TEST_F(RouteProgressTest, TrimmingRedecidesWhetherTheFirstStepChangesTheLevel) {
  const auto above = pointFromOrigin(0, 10, 1);
  Route up = routeOver({a, above});
  EXPECT_TRUE(trimRoute(up, pointFromOrigin(0, 5, 1)));
  EXPECT_FALSE(up.steps()[0].levelChange());
  Route level = routeOver({a, b});
  EXPECT_TRUE(trimRoute(level, pointFromOrigin(0, 5, 1)));
  EXPECT_TRUE(level.steps()[0].levelChange());
}

TEST_F(RouteProgressTest, TrimmingStandsPlacesThatAreNotNumbers) {
  Route route = routeOver({a, b, c});
  EXPECT_FALSE(trimRoute(route, at(std::nan(""), 11)));
}

}  // namespace
}  // namespace KorvaniTest
