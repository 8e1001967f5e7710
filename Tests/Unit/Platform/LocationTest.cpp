#include "Platform/Location.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include "Platform/ManualClock.hpp"

namespace KorvaniPlatform {
namespace {

constexpr double kNoCoordinate = std::numeric_limits<double>::quiet_NaN();

// The haversine formula taken apart, one rounding a line, in the order in which it is written.
double haversineStepByStep(CLLocationCoordinate2D a, CLLocationCoordinate2D b) {
  const auto inRadians = [](double angle) {
    const double product = angle * std::numbers::pi;
    return product / 180;
  };
  const double latitudeA = inRadians(a.latitude);
  const double latitudeB = inRadians(b.latitude);
  const double longitudeA = inRadians(a.longitude);
  const double longitudeB = inRadians(b.longitude);
  const double northwards = latitudeB - latitudeA;
  const double eastwards = longitudeB - longitudeA;
  const double s1 = std::sin(northwards / 2);
  const double s2 = std::sin(eastwards / 2);
  const double first = s1 * s1;
  double second = std::cos(latitudeA) * std::cos(latitudeB);
  second = second * s2;
  second = second * s2;
  const double h = first + second;
  const double angle = std::asin(std::min(1.0, std::sqrt(h)));
  const double diameter = 2 * 6371008.8;
  return diameter * angle;
}

void expectSymmetricDistance(CLLocationCoordinate2D a, CLLocationCoordinate2D b, double metres) {
  SCOPED_TRACE(testing::Message() << a.latitude << ", " << a.longitude << " to " << b.latitude
                                  << ", " << b.longitude);
  EXPECT_NEAR(greatCircleDistance(a, b), metres, 1e-9 * std::max(metres, 1.0));
  EXPECT_EQ(greatCircleDistance(b, a), greatCircleDistance(a, b));
}

TEST(CLLocationCoordinate2D, IsZeroNorthZeroEastByDefault) {
  constexpr CLLocationCoordinate2D origin;
  EXPECT_EQ(origin.latitude, 0);
  EXPECT_EQ(origin.longitude, 0);
}

TEST(CLLocationCoordinate2D, EqualityIsExact) {
  const CLLocationCoordinate2D door{48.1372, 11.5756};
  EXPECT_EQ(door, (CLLocationCoordinate2D{48.1372, 11.5756}));
  EXPECT_NE(door, (CLLocationCoordinate2D{std::nextafter(48.1372, 49.0), 11.5756}));
  EXPECT_NE(door, (CLLocationCoordinate2D{48.1372, std::nextafter(11.5756, 12.0)}));
  EXPECT_NE((CLLocationCoordinate2D{kNoCoordinate, 0}), (CLLocationCoordinate2D{kNoCoordinate, 0}));
}

TEST(Angles, RadiansAreTheAngleTimesPiDividedBy180) {
  for (const double angle : {0.0, 1.0, 11.5756, 48.1372, -33.9, 90.0, 180.0, 359.999}) {
    const double product = angle * std::numbers::pi;
    EXPECT_EQ(radians(angle), product / 180);
  }
  EXPECT_EQ(radians(180), std::numbers::pi);
}

TEST(Angles, DegreesAreTheAngleTimes180DividedByPi) {
  for (const double angle : {0.0, 0.1, 0.84, -0.59, 1.5707963267948966, 3.0}) {
    const double product = angle * 180;
    EXPECT_EQ(degrees(angle), product / std::numbers::pi);
  }
  EXPECT_EQ(degrees(std::numbers::pi), 180);
}

TEST(GreatCircleDistance, IsTheHaversineFormulaBitForBit) {
  std::mt19937 random(20240511);
  std::uniform_real_distribution<double> latitude(-90, 90);
  std::uniform_real_distribution<double> longitude(-180, 180);
  std::uniform_real_distribution<double> nearby(-0.001, 0.001);
  for (int round = 0; round < 20000; ++round) {
    const CLLocationCoordinate2D a{latitude(random), longitude(random)};
    const CLLocationCoordinate2D far{latitude(random), longitude(random)};
    const CLLocationCoordinate2D near{a.latitude + nearby(random), a.longitude + nearby(random)};
    ASSERT_EQ(greatCircleDistance(a, far), haversineStepByStep(a, far));
    ASSERT_EQ(greatCircleDistance(a, near), haversineStepByStep(a, near));
  }
}

TEST(GreatCircleDistance, OfKnownPairsIsKnown) {
  expectSymmetricDistance({48.1372, 11.5756}, {48.1373, 11.5756}, 11.119508024173095);
  expectSymmetricDistance({48.1372, 11.5756}, {48.1372, 11.5757}, 7.420594352352228);
  expectSymmetricDistance({52.5, 13.4}, {-33.9, 151.2}, 16097262.595325636);
  expectSymmetricDistance({0, 0}, {1, 0}, 111195.0802335329);
}

TEST(GreatCircleDistance, OfOneDegreeOfMeridianIsTheRadiusTimesItsAngle) {
  EXPECT_NEAR(greatCircleDistance({48, 11}, {49, 11}), kEarthRadius * std::numbers::pi / 180, 1e-6);
}

TEST(GreatCircleDistance, OfACoordinateToItselfIsZero) {
  for (const double latitude : {-90.0, -33.9, 0.0, 48.1372, 90.0}) {
    EXPECT_EQ(greatCircleDistance({latitude, 11.5756}, {latitude, 11.5756}), 0);
  }
}

TEST(GreatCircleDistance, OfOppositePlacesIsHalfTheGirth) {
  const double half = std::numbers::pi * kEarthRadius;
  expectSymmetricDistance({90, 0}, {-90, 0}, half);
  expectSymmetricDistance({0, 0}, {0, 180}, half);
  expectSymmetricDistance({0, -90}, {0, 90}, half);
  // Here rounding alone may bring h beyond 1.
  std::mt19937 random(7);
  std::uniform_real_distribution<double> latitude(-90, 90);
  for (int round = 0; round < 5000; ++round) {
    const double north = latitude(random);
    EXPECT_NEAR(greatCircleDistance({north, 17}, {-north, -163}), half, 1);
  }
}

TEST(GreatCircleDistance, CrossesTheDateLineTheShortWay) {
  expectSymmetricDistance({10, 179.5}, {10, -179.5}, 109505.73519924942);
}

TEST(GreatCircleDistance, OfAPlaceThatIsNotANumberIsNotANumber) {
  EXPECT_TRUE(std::isnan(greatCircleDistance({kNoCoordinate, 0}, {0, 0})));
  EXPECT_TRUE(std::isnan(greatCircleDistance({0, 0}, {0, kNoCoordinate})));
}

class CLLocationTest : public testing::Test {
 protected:
  void SetUp() override { setClock(time_); }
  void TearDown() override { setClock(nullptr); }

  const std::shared_ptr<ManualClock> time_ =
      std::make_shared<ManualClock>(Duration::zero(), Date{std::chrono::hours(24 * 365)});
};

TEST_F(CLLocationTest, OfACoordinateAloneIsAtAltitudeZeroMeasuredNow) {
  time_->advance(std::chrono::seconds(3));
  const CLLocation location(CLLocationCoordinate2D{48.1372, 11.5756});
  EXPECT_EQ(location.coordinate(), (CLLocationCoordinate2D{48.1372, 11.5756}));
  EXPECT_EQ(location.altitude(), 0);
  EXPECT_EQ(location.horizontalAccuracy(), 0);
  EXPECT_EQ(location.verticalAccuracy(), 0);
  EXPECT_EQ(location.timestamp(), time_->date());
}

TEST_F(CLLocationTest, IsZeroNorthZeroEastByDefault) {
  const CLLocation location;
  EXPECT_EQ(location.coordinate(), (CLLocationCoordinate2D{0, 0}));
  EXPECT_EQ(location.timestamp(), time_->date());
}

TEST_F(CLLocationTest, KeepsEverythingItIsGiven) {
  const Date measured{std::chrono::seconds(1234)};
  const CLLocation location({-1.5, 170}, 3, 4.5, -1, measured);
  EXPECT_EQ(location.coordinate(), (CLLocationCoordinate2D{-1.5, 170}));
  EXPECT_EQ(location.altitude(), 3);
  EXPECT_EQ(location.horizontalAccuracy(), 4.5);
  EXPECT_EQ(location.verticalAccuracy(), -1);
  EXPECT_EQ(location.timestamp(), measured);
}

TEST_F(CLLocationTest, DistanceIsTheGreatCircleDistanceOfTheCoordinates) {
  const CLLocationCoordinate2D here{48.1372, 11.5756};
  const CLLocationCoordinate2D there{48.1374, 11.5751};
  EXPECT_EQ(CLLocation(here).distanceFromLocation(CLLocation(there)),
            greatCircleDistance(here, there));
}

TEST_F(CLLocationTest, AltitudeNeverEntersTheDistance) {
  const Date now = time_->date();
  const CLLocation ground({48, 11}, 0, 0, 0, now);
  const CLLocation roof({48, 11}, 100, 0, 0, now);
  EXPECT_EQ(ground.distanceFromLocation(roof), 0);
}

}  // namespace
}  // namespace KorvaniPlatform
