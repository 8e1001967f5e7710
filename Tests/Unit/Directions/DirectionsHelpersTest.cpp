#include "Navigation/Directions/DirectionsHelpers.hpp"

#include <gtest/gtest.h>

#include <chrono>

#include "Common/EarthRadius.hpp"
#include "Support/Points.hpp"

using KorvaniNavigation::CLLocation;
using KorvaniNavigation::CLLocationCoordinate2D;
using KorvaniNavigation::DirectionsHelpers;

namespace {

double bearing(CLLocationCoordinate2D from, CLLocationCoordinate2D to) {
  return DirectionsHelpers::bearingToLocation(CLLocation(to), CLLocation(from));
}

CLLocation withAllFields(CLLocationCoordinate2D coordinate) {
  const KorvaniPlatform::Date then{std::chrono::hours(1000)};
  return CLLocation(coordinate, 3.5, 7.25, 9.75, then);
}

void expectSameFieldsBesideCoordinate(const CLLocation& a, const CLLocation& b) {
  EXPECT_EQ(a.altitude(), b.altitude());
  EXPECT_EQ(a.horizontalAccuracy(), b.horizontalAccuracy());
  EXPECT_EQ(a.verticalAccuracy(), b.verticalAccuracy());
  EXPECT_EQ(a.timestamp(), b.timestamp());
}

}  // namespace

TEST(DirectionsHelpers, BearingBetweenIdenticalLocationsIsZero) {
  EXPECT_EQ(bearing({48.1, 11.5}, {48.1, 11.5}), 0);
}

TEST(DirectionsHelpers, BearingDueWestIs270) { EXPECT_EQ(bearing({0, 1}, {0, 0}), 270); }

TEST(DirectionsHelpers, BearingOfTheOtherMainDirections) {
  EXPECT_EQ(bearing({10, 20}, {11, 20}), 0);
  EXPECT_EQ(bearing({0, 0}, {0, 1}), 90);
  EXPECT_EQ(bearing({11, 20}, {10, 20}), 180);
}

TEST(DirectionsHelpers, BearingOfALongWayIsThatOfItsBeginning) {
  // A quarter of a turn to the east: the great circle begins north of east, with the tangent of
  // its bearing one over the sine of the latitude.
  EXPECT_NEAR(bearing({50, 0}, {50, 90}), 52.5462804428949, 1e-9);
}

TEST(DirectionsHelpers, BearingIgnoresAltitude) {
  const CLLocation from = withAllFields({48, 11});
  EXPECT_EQ(DirectionsHelpers::bearingToLocation(CLLocation({48.001, 11.001}), from),
            bearing({48, 11}, {48.001, 11.001}));
}

TEST(DirectionsHelpers, BearingThatRoundsToAFullTurnIsNorth) {
  EXPECT_EQ(bearing({0, 0}, {1, -1e-18}), 0);
}

TEST(DirectionsHelpers, DistanceZeroReturnsTheSamePlaceWithAllOtherFields) {
  const CLLocation from = withAllFields({48.1, 11.5});
  const CLLocation reached = DirectionsHelpers::location(from, 77, 0);
  EXPECT_NEAR(reached.coordinate().latitude, 48.1, 1e-12);
  EXPECT_NEAR(reached.coordinate().longitude, 11.5, 1e-12);
  expectSameFieldsBesideCoordinate(reached, from);
}

TEST(DirectionsHelpers, ReachedLocationKeepsAltitudeAccuraciesAndTimestamp) {
  const CLLocation from = withAllFields({48.1, 11.5});
  expectSameFieldsBesideCoordinate(DirectionsHelpers::location(from, 200, 1234), from);
}

TEST(DirectionsHelpers, ReachedLocationLiesAtTheDistanceAlongTheBearing) {
  const CLLocation from({48.1, 11.5});
  const CLLocation reached = DirectionsHelpers::location(from, 33, 250);
  EXPECT_NEAR(from.distanceFromLocation(reached), 250, 1e-6);
  EXPECT_NEAR(DirectionsHelpers::bearingToLocation(reached, from), 33, 1e-6);
}

TEST(DirectionsHelpers, AQuarterOfTheCircumferenceNorthReachesThePole) {
  const double quarter = KorvaniCommon::kKRV_EARTH_RADIUS * 1.5707963267948966;
  const auto reached = DirectionsHelpers::location(CLLocation({0, 11}), 0, quarter);
  EXPECT_NEAR(reached.coordinate().latitude, 90, 1e-6);
}

TEST(DirectionsHelpers, LongitudeBeyondTheAntimeridianIsNotNormalised) {
  const auto reached = DirectionsHelpers::location(CLLocation({0, 179.999}), 90, 1000);
  EXPECT_NEAR(reached.coordinate().longitude, 179.999 + KorvaniTest::degreesOf(1000), 1e-9);
  EXPECT_GT(reached.coordinate().longitude, 180);
}
