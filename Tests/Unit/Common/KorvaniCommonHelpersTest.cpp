#include "Common/KorvaniCommonHelpers.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "Common/EarthRadius.hpp"

namespace {

using KorvaniCommon::initialBearing;
using KorvaniPlatform::CLLocationCoordinate2D;

constexpr double kTolerance = 1e-9;  // degrees

const CLLocationCoordinate2D kOrigin{0.0, 0.0};
const CLLocationCoordinate2D kNorth{1.0, 0.0};
const CLLocationCoordinate2D kEast{0.0, 1.0};
const CLLocationCoordinate2D kSouth{-1.0, 0.0};
const CLLocationCoordinate2D kWest{0.0, -1.0};

/// Turn between the line from the origin to `first` and the line from the origin to `second`.
double turn(CLLocationCoordinate2D first, CLLocationCoordinate2D second) {
  return KorvaniCommon::KorvaniCommonHelpers::clockwiseAngleBetweenLines(kOrigin, first, kOrigin,
                                                                         second);
}

class RandomCoordinates {
 public:
  CLLocationCoordinate2D next() { return {latitude_(random_), longitude_(random_)}; }

 private:
  std::mt19937 random_{20240501};
  std::uniform_real_distribution<double> latitude_{-89.0, 89.0};
  std::uniform_real_distribution<double> longitude_{-180.0, 180.0};
};

TEST(EarthRadius, IsTheMeanRadiusOfThePlatform) {
  EXPECT_EQ(KorvaniCommon::kKRV_EARTH_RADIUS, 6371008.8);
  EXPECT_EQ(KorvaniCommon::kKRV_EARTH_RADIUS, KorvaniPlatform::kEarthRadius);
}

TEST(InitialBearing, OfTheFourCompassPoints) {
  EXPECT_EQ(initialBearing(kOrigin, kNorth), 0.0);
  EXPECT_NEAR(initialBearing(kOrigin, kEast), 90.0, kTolerance);
  EXPECT_NEAR(initialBearing(kOrigin, kSouth), 180.0, kTolerance);
  EXPECT_NEAR(initialBearing(kOrigin, kWest), 270.0, kTolerance);
}

TEST(InitialBearing, OfTwoEqualCoordinatesIsZero) {
  EXPECT_EQ(initialBearing(kOrigin, kOrigin), 0.0);
  RandomCoordinates coordinates;
  for (int i = 0; i < 1000; ++i) {
    const CLLocationCoordinate2D here = coordinates.next();
    ASSERT_EQ(initialBearing(here, here), 0.0) << here.latitude << ", " << here.longitude;
  }
}

TEST(InitialBearing, NorthIsNeverNegativeZero) {
  const CLLocationCoordinate2D target{1.0, -0.0};
  EXPECT_FALSE(std::signbit(initialBearing(kOrigin, target)));
  EXPECT_FALSE(std::signbit(initialBearing(kOrigin, {0.0, -0.0})));
}

TEST(InitialBearing, DueSouthIsAHalfTurnWhateverTheSignOfTheZeroBetweenTheMeridians) {
  EXPECT_NEAR(initialBearing(kOrigin, {-1.0, -0.0}), 180.0, kTolerance);
  EXPECT_NEAR(initialBearing({0.0, -0.0}, kSouth), 180.0, kTolerance);
}

TEST(InitialBearing, ThatRoundsToAFullTurnIsZero) {
  // So little west of north that adding a full turn rounds to the full turn itself.
  EXPECT_EQ(initialBearing(kOrigin, {1.0, -1e-17}), 0.0);
  EXPECT_EQ(initialBearing(kOrigin, {1.0, -1e-300}), 0.0);
}

TEST(InitialBearing, JustWestOfNorthStaysBelowAFullTurn) {
  const double bearing = initialBearing(kOrigin, {1.0, -1e-12});
  EXPECT_GT(bearing, 359.9);
  EXPECT_LT(bearing, 360.0);
}

TEST(InitialBearing, LiesInZeroToBelow360ForAnyTwoCoordinates) {
  RandomCoordinates coordinates;
  for (int i = 0; i < 20000; ++i) {
    const CLLocationCoordinate2D from = coordinates.next();
    const CLLocationCoordinate2D to = coordinates.next();
    const double bearing = initialBearing(from, to);
    ASSERT_TRUE(bearing >= 0.0 && bearing < 360.0)
        << bearing << " from " << from.latitude << ", " << from.longitude << " to " << to.latitude
        << ", " << to.longitude;
  }
}

TEST(InitialBearing, NarrowsWithTheLatitude) {
  // As far east as north in degrees is less far in metres at 60 degrees: half as far.
  const double bearing = initialBearing({60.0, 10.0}, {60.001, 10.001});
  EXPECT_NEAR(bearing, KorvaniPlatform::degrees(std::atan(0.5)), 1e-3);
}

TEST(InitialBearing, MatchesAHandComputedGreatCircle) {
  // From (0, 0) the bearing to (45, 90) is 45: tan = sin(90) cos(45) / sin(45).
  EXPECT_NEAR(initialBearing(kOrigin, {45.0, 90.0}), 45.0, kTolerance);
  // From 45 N to the same latitude a quarter turn on: tan = 1 / sin(45).
  EXPECT_NEAR(initialBearing({45.0, 0.0}, {45.0, 90.0}),
              KorvaniPlatform::degrees(std::atan(std::sqrt(2.0))), kTolerance);
}

TEST(InitialBearing, CrossesTheAntimeridianTheShortWay) {
  EXPECT_NEAR(initialBearing({0.0, 179.9}, {0.0, -179.9}), 90.0, kTolerance);
  EXPECT_NEAR(initialBearing({0.0, -179.9}, {0.0, 179.9}), 270.0, kTolerance);
}

TEST(ClockwiseAngleBetweenLines, ARightTurnIsPositive) {
  EXPECT_NEAR(turn(kNorth, kEast), 90.0, kTolerance);
  EXPECT_NEAR(turn(kWest, kNorth), 90.0, kTolerance);
}

TEST(ClockwiseAngleBetweenLines, ALeftTurnIsNegative) {
  EXPECT_NEAR(turn(kEast, kNorth), -90.0, kTolerance);
  EXPECT_NEAR(turn(kNorth, kWest), -90.0, kTolerance);
}

TEST(ClockwiseAngleBetweenLines, GoingOnStraightIsZero) {
  EXPECT_EQ(turn(kEast, kEast), 0.0);
  EXPECT_NEAR(turn(kEast, {0.0, 2.0}), 0.0, kTolerance);
}

TEST(ClockwiseAngleBetweenLines, AReversalIsPlus180EitherWay) {
  EXPECT_EQ(turn(kNorth, kSouth), 180.0);
  EXPECT_EQ(turn(kSouth, kNorth), 180.0);
}

TEST(ClockwiseAngleBetweenLines, TakesTheShortWayThroughNorth) {
  const CLLocationCoordinate2D northWest{1.0, -1.0};
  const CLLocationCoordinate2D northEast{1.0, 1.0};
  const double westOfNorth = 360.0 - initialBearing(kOrigin, northWest);
  const double eastOfNorth = initialBearing(kOrigin, northEast);
  EXPECT_NEAR(turn(northWest, northEast), westOfNorth + eastOfNorth, kTolerance);
  EXPECT_NEAR(turn(northEast, northWest), -westOfNorth - eastOfNorth, kTolerance);
}

TEST(ClockwiseAngleBetweenLines, GrowsFromZeroToHalfATurnOnTheRightAndStartsAgainOnTheLeft) {
  for (int degree = 0; degree < 360; ++degree) {
    const double angle = KorvaniPlatform::radians(degree);
    const CLLocationCoordinate2D target{1e-3 * std::cos(angle), 1e-3 * std::sin(angle)};
    const double expected = degree <= 180 ? degree : degree - 360;
    const double turned = turn(kNorth, target);
    // Within rounding a reversal may come out on either end of the range.
    EXPECT_NEAR(degree == 180 ? std::abs(turned) : turned, expected, 1e-6) << degree;
  }
}

TEST(ClockwiseAngleBetweenLines, LinesNeedNotMeet) {
  const double angle = KorvaniCommon::KorvaniCommonHelpers::clockwiseAngleBetweenLines(
      {0.0, 0.0}, {0.001, 0.0}, {0.0, 0.5}, {0.0, 0.501});
  EXPECT_NEAR(angle, 90.0, kTolerance);
}

TEST(ClockwiseAngleBetweenLines, ALineOfNoLengthPointsNorth) {
  EXPECT_NEAR(turn(kOrigin, kEast), 90.0, kTolerance);
  EXPECT_NEAR(turn(kEast, kOrigin), -90.0, kTolerance);
}

TEST(ClockwiseAngleBetweenLines, LiesAboveMinus180AndUpTo180ForAnyLines) {
  RandomCoordinates coordinates;
  for (int i = 0; i < 20000; ++i) {
    const CLLocationCoordinate2D a = coordinates.next();
    const CLLocationCoordinate2D b = coordinates.next();
    const CLLocationCoordinate2D c = coordinates.next();
    const CLLocationCoordinate2D d = coordinates.next();
    const double angle =
        KorvaniCommon::KorvaniCommonHelpers::clockwiseAngleBetweenLines(a, b, c, d);
    ASSERT_GT(angle, -180.0);
    ASSERT_LE(angle, 180.0);
    const double sum = initialBearing(a, b) + angle - initialBearing(c, d);
    ASSERT_NEAR(std::remainder(sum, 360.0), 0.0, kTolerance);
  }
}

TEST(ClockwiseAngleBetweenLines, SwappingTheLinesChangesTheSign) {
  RandomCoordinates coordinates;
  for (int i = 0; i < 1000; ++i) {
    const CLLocationCoordinate2D a = coordinates.next();
    const CLLocationCoordinate2D b = coordinates.next();
    ASSERT_EQ(turn(a, b), -turn(b, a));
  }
}

}  // namespace
