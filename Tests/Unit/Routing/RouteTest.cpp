#include "Navigation/Routing/Route.hpp"

#include <gtest/gtest.h>

#include <vector>

#include "Support/Points.hpp"

using namespace KorvaniNavigation;
using KorvaniTest::at;
using KorvaniTest::PointPtr;

namespace {

using Points = std::vector<PointPtr>;

// 30 m at half speed, then 15 m at normal speed.
std::vector<Step> slowThenNormal(const Points& points) {
  return {Step(points[0], points[1], 30, true, 2.0), Step(points[1], points[2], 15)};
}

Points threePoints() { return {at(48, 11), at(48.001, 11), at(48.001, 11.001)}; }

}  // namespace

TEST(Route, OfASingleStepPassesItsStartAndItsEnd) {
  const auto start = at(48, 11);
  const auto end = at(48.001, 11);
  EXPECT_EQ(Route({Step(start, end, 5)}).points(), (Points{start, end}));
}

TEST(Route, ListsAPointBetweenTwoStepsOnce) {
  const Points points = threePoints();
  EXPECT_EQ(Route(slowThenNormal(points)).points(), points);
}

TEST(Route, ProcessingNoStepsGivesZerosAndNoPoints) {
  const Route::Totals totals = Route::processSteps({});
  EXPECT_EQ(totals.totalDistance, 0);
  EXPECT_EQ(totals.travelTime, 0);
  EXPECT_TRUE(totals.points.empty());
}

TEST(Route, TravelTimeWeighsEachStepByItsMultiplicator) {
  const Route::Totals totals = Route::processSteps(slowThenNormal(threePoints()));
  EXPECT_EQ(totals.totalDistance, 45);
  EXPECT_EQ(totals.travelTime, 50);
}

TEST(Route, IsMadeWithTheTotalsOfItsSteps) {
  const Route route(slowThenNormal(threePoints()));
  EXPECT_EQ(route.steps().size(), 2U);
  EXPECT_EQ(route.totalDistance(), 45);
  EXPECT_EQ(route.travelTime(), 50);
  EXPECT_TRUE(route.directions().empty());
}

TEST(Route, WalkingSpeedIsOneAndAHalfMetresASecond) { EXPECT_EQ(Route::kWalkingSpeed, 1.5); }

TEST(Route, WithoutStepsIsValidAndEmpty) {
  for (const Route& route : {Route(), Route(std::vector<Step>{})}) {
    EXPECT_TRUE(route.steps().empty());
    EXPECT_TRUE(route.points().empty());
    EXPECT_EQ(route.totalDistance(), 0);
    EXPECT_EQ(route.travelTime(), 0);
    EXPECT_TRUE(route.directions().empty());
    EXPECT_EQ(route.remainingDistance(), 0);
    EXPECT_EQ(route.remainingTravelTime(), 0);
  }
}

TEST(Route, EndOfAStepThatTheNextDoesNotStartAtIsLeftOut) {
  const auto a = at(0, 0), b = at(0, 1), c = at(0, 2), d = at(0, 3);
  EXPECT_EQ(Route({Step(a, b, 1), Step(c, d, 1)}).points(), (Points{a, c, d}));
}

TEST(Route, ReplacingStepsLeavesPointsAndTotalsAsComputed) {
  const Points points = threePoints();
  Route route(slowThenNormal(points));
  route.setSteps({Step(points[1], points[2], 6)});
  EXPECT_EQ(route.points(), points);
  EXPECT_EQ(route.totalDistance(), 45);
  EXPECT_EQ(route.travelTime(), 50);
  EXPECT_EQ(route.steps().size(), 1U);
}

TEST(Route, RemainingDistanceAndTimeFollowTheStepsAsTheyAreNow) {
  const Points points = threePoints();
  Route route(slowThenNormal(points));
  EXPECT_EQ(route.remainingDistance(), 45);
  EXPECT_EQ(route.remainingTravelTime(), 50);
  route.setSteps({Step(points[1], points[2], 6, true, 0.5)});
  EXPECT_EQ(route.remainingDistance(), 6);
  EXPECT_EQ(route.remainingTravelTime(), 2);
}

TEST(Route, HandsOutTheInstructionsThatWereSet) {
  Route route(slowThenNormal(threePoints()));
  route.setDirections({Directions()});
  EXPECT_EQ(route.directions().size(), 1U);
}

TEST(Route, CopiesDoNotShareTheirSteps) {
  const Points points = threePoints();
  Route route(slowThenNormal(points));
  const Route copy = route;
  route.setSteps({});
  EXPECT_EQ(copy.steps().size(), 2U);
}
