#include "Navigation/Localisation/IntersectionFinder.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Support/Points.hpp"

using namespace KorvaniNavigation;
using KorvaniPlatform::radians;
using KorvaniTest::fromOrigin;

namespace {

// Whether a place `along` metres from the start of a segment of `length` metres to the east, and
// `aside` metres to its north, counts as between its ends.
bool isBetween(double length, double along, double aside) {
  return IntersectionFinder::coordinateIsBetweenCoordinates(
      fromOrigin(aside, along), fromOrigin(0, 0), fromOrigin(0, length));
}

bool overlap(CLLocationCoordinate2D a, CLLocationCoordinate2D b, CLLocationCoordinate2D c,
             CLLocationCoordinate2D d) {
  return IntersectionFinder::checkIfLineBetweenCoordinate(a, b, c, d);
}

MKMapPoint foot(MKMapPoint point, MKMapPoint start, MKMapPoint end) {
  return IntersectionFinder::findIntersectionPointForPointOnLine(point, start, end);
}

}  // namespace

TEST(FootOfPerpendicular, LiesStraightBelowOnALevelLine) {
  const MKMapPoint result = foot({3, 7}, {0, 2}, {10, 2});
  EXPECT_EQ(result.x, 3);
  EXPECT_EQ(result.y, 2);
}

TEST(FootOfPerpendicular, LiesStraightAsideOnAnUprightLine) {
  const MKMapPoint result = foot({3, 7}, {5, -1}, {5, 9});
  EXPECT_EQ(result.x, 5);
  EXPECT_EQ(result.y, 7);
}

TEST(FootOfPerpendicular, LiesHalfWayOnADiagonal) {
  const MKMapPoint result = foot({0, 4}, {0, 0}, {4, 4});
  EXPECT_EQ(result.x, 2);
  EXPECT_EQ(result.y, 2);
}

TEST(FootOfPerpendicular, DoesNotDependOnTheLinesDirection) {
  const MKMapPoint result = foot({3, 7}, {10, 2}, {0, 2});
  EXPECT_EQ(result.x, 3);
  EXPECT_EQ(result.y, 2);
}

TEST(FootOfPerpendicular, IsNotClampedToTheSegment) {
  EXPECT_EQ(foot({-20, 7}, {0, 2}, {10, 2}).x, -20);
  EXPECT_EQ(foot({30, 7}, {0, 2}, {10, 2}).x, 30);
}

TEST(FootOfPerpendicular, OfAPointOnTheLineIsThePoint) {
  const MKMapPoint result = foot({6, 3}, {0, 0}, {2, 1});
  EXPECT_DOUBLE_EQ(result.x, 6);
  EXPECT_DOUBLE_EQ(result.y, 3);
}

TEST(FootOfPerpendicular, OnADegenerateLineIsNotANumber) {
  const MKMapPoint result = foot({3, 7}, {5, 5}, {5, 5});
  EXPECT_TRUE(std::isnan(result.x));
  EXPECT_TRUE(std::isnan(result.y));
}

TEST(FootOfPerpendicular, OnADegenerateLineCountsAsNotOnTheSegment) {
  const CLLocationCoordinate2D end = fromOrigin(0, 0);
  const MKMapPoint line = MKMapPointForCoordinate(end);
  const MKMapPoint result = foot(MKMapPointForCoordinate(fromOrigin(5, 5)), line, line);
  EXPECT_FALSE(IntersectionFinder::coordinateIsBetweenCoordinates(MKCoordinateForMapPoint(result),
                                                                  end, fromOrigin(0, 9)));
}

TEST(BetweenTest, APointExactlyOnA100MetreSegmentIsBetween) { EXPECT_TRUE(isBetween(100, 50, 0)); }

TEST(BetweenTest, BothEndsOfASegmentAreBetween) {
  EXPECT_TRUE(isBetween(100, 0, 0));
  EXPECT_TRUE(isBetween(100, 100, 0));
}

TEST(BetweenTest, TwoMetresAsideOfTheMiddleStillCounts) { EXPECT_TRUE(isBetween(100, 50, 2)); }

TEST(BetweenTest, ThreeMetresAsideOfTheMiddleDoesNot) { EXPECT_FALSE(isBetween(100, 50, 3)); }

TEST(BetweenTest, ToleranceIsCappedAtHalfAMetreOnAKilometre) {
  EXPECT_TRUE(isBetween(1000, 500, 15));   // 0.45 m longer
  EXPECT_FALSE(isBetween(1000, 500, 18));  // 0.65 m longer, under a thousandth of the length
}

TEST(BetweenTest, BeyondAnEndIsNotBetween) {
  EXPECT_TRUE(isBetween(100, 100.04, 0));  // there and back: 0.08 m longer
  EXPECT_FALSE(isBetween(100, 100.06, 0));
  EXPECT_FALSE(isBetween(100, -0.06, 0));
}

TEST(BetweenTest, NothingLiesOnASegmentOfZeroLengthNotEvenItsEnd) {
  EXPECT_FALSE(isBetween(0, 0, 0));
  EXPECT_FALSE(isBetween(0, 1, 0));
}

TEST(SameLineTest, SegmentsWithTheSameEndsInReverseOrderOverlap) {
  const auto a = fromOrigin(0, 0), b = fromOrigin(7, 30);
  EXPECT_TRUE(overlap(a, b, b, a));
  EXPECT_TRUE(overlap(a, b, a, b));
}

TEST(SameLineTest, BothDiagonalsOfOneBoxCountAsTheSame) {
  EXPECT_TRUE(overlap({48, 11}, {48.001, 11.001}, {48, 11.001}, {48.001, 11}));
}

TEST(SameLineTest, BoxesThatDifferByLessThanFourMillionthsOfADegreeAreTheSame) {
  // Short segments whose bearings differ by far more than 4 degrees.
  EXPECT_TRUE(overlap({10, 10}, {10.00001, 10}, {10, 10}, {10.00001, 10.0000039}));
  EXPECT_FALSE(overlap({10, 10}, {10.00001, 10}, {10, 10}, {10.00001, 10.0000041}));
}

TEST(SameLineTest, BothCornersOfTheBoxesMustAgree) {
  EXPECT_FALSE(overlap({10, 10}, {10.001, 10}, {10, 10}, {10, 10.001}));
  EXPECT_FALSE(overlap({10, 10}, {10.001, 10.001}, {10.0005, 10}, {10.001, 10.001}));
}

TEST(SameLineTest, CollinearSegmentsThatTouchAtOneEndOverlap) {
  const auto a = fromOrigin(0, 0), b = fromOrigin(0, 20), c = fromOrigin(0, 50);
  EXPECT_TRUE(overlap(a, b, b, c));
  EXPECT_TRUE(overlap(c, b, b, a));
}

TEST(SameLineTest, CollinearSegmentsThatOverlapPartlyOverlap) {
  EXPECT_TRUE(overlap(fromOrigin(0, 0), fromOrigin(0, 30), fromOrigin(0, 20), fromOrigin(0, 50)));
}

TEST(SameLineTest, ASegmentInsideAnotherOverlapsItFromBothSides) {
  const auto a = fromOrigin(0, 0), b = fromOrigin(0, 50);
  const auto c = fromOrigin(0, 20), d = fromOrigin(0, 30);
  EXPECT_TRUE(overlap(a, b, c, d));
  EXPECT_TRUE(overlap(c, d, a, b));
}

TEST(SameLineTest, CollinearSegmentsWithAGapDoNotOverlap) {
  EXPECT_FALSE(overlap(fromOrigin(0, 0), fromOrigin(0, 20), fromOrigin(0, 25), fromOrigin(0, 50)));
}

TEST(SameLineTest, ParallelSegmentsSideBySideDoNotOverlap) {
  EXPECT_FALSE(overlap(fromOrigin(0, 0), fromOrigin(0, 50), fromOrigin(5, 0), fromOrigin(5, 50)));
}

TEST(SameLineTest, SegmentsThatCrossAtMoreThanFourDegreesDoNotOverlap) {
  EXPECT_FALSE(overlap({0, 0}, {0, 0.001}, {0, 0}, {0.001 * std::tan(radians(4.1)), 0.001}));
}

TEST(SameLineTest, BearingsMayDifferByUpToFourDegrees) {
  // A short segment turned about the middle of a long one: all of it lies on the long one.
  const auto turned = [](double degrees) {
    const double aside = 0.00001 * std::tan(radians(degrees));
    return overlap({0, 0}, {0, 0.001}, {-aside, 0.00049}, {aside, 0.00051});
  };
  EXPECT_TRUE(turned(3.99));
  EXPECT_FALSE(turned(4.01));
}

TEST(SameLineTest, OneEndOnTheOtherSegmentIsNotEnough) {
  // c-d comes in at 3 degrees and ends on a-b; it begins more than 2 m beside it.
  const CLLocationCoordinate2D a{0, 0}, b{0, 0.001};
  const CLLocationCoordinate2D c{-0.0004 * std::tan(radians(3)), 0.0001}, d{0, 0.0005};
  EXPECT_TRUE(IntersectionFinder::coordinateIsBetweenCoordinates(d, a, b));
  EXPECT_FALSE(overlap(a, b, c, d));
  EXPECT_FALSE(overlap(a, b, d, c));
}

TEST(SameLineTest, SegmentsThatFanOutOverlapAsLongAsTheShorterOnesEndLiesOnTheLonger) {
  // Both start at (0, 0), the shorter one is half as long as the longer one's 111 m. A detour of
  // 0.02 m leads over its end when they are 1 degree apart, one of 0.15 m when they are 3 apart.
  const auto fan = [](double degrees) {
    return overlap({0, 0}, {0, 0.001}, {0, 0}, {0.0005 * std::tan(radians(degrees)), 0.0005});
  };
  EXPECT_TRUE(fan(1));
  EXPECT_FALSE(fan(3));
}

TEST(SameLineTest, DirectionIsThatOfTheBoxesSouthWestToNorthEastDiagonal) {
  // One falls and one rises: the segments' own bearings are 6 degrees apart, those of the boxes'
  // diagonals are equal, and c and d lie on a-b.
  const double slope = std::tan(radians(3));
  const CLLocationCoordinate2D a{0.001 * slope, 0}, b{0, 0.001};
  const CLLocationCoordinate2D c{0.00049 * slope, 0.00049};
  const CLLocationCoordinate2D d{0.00051 * slope, 0.00051};
  EXPECT_TRUE(overlap(a, b, c, d));
}

TEST(SameLineTest, AFallingSegmentAndItsOwnStretchOverlap) {
  EXPECT_TRUE(
      overlap(fromOrigin(50, 0), fromOrigin(0, 50), fromOrigin(40, 10), fromOrigin(20, 30)));
}

TEST(SameLineTest, UprightSegmentsThatLeanToDifferentSidesRunTheSameWay) {
  // Their own bearings are 1 and 359 degrees; both diagonals lean to the east.
  const double lean = std::tan(radians(1));
  EXPECT_TRUE(
      overlap({0, 0}, {0.001, 0.001 * lean}, {0.0004, 0.0006 * lean}, {0.0006, 0.0004 * lean}));
}

TEST(IntersectionFinder, KeepsNoObstacleDetectorUntilOneIsSet) {
  IntersectionFinder finder(nullptr, {});
  EXPECT_EQ(finder.obstacleDetector(), nullptr);
  const auto detector = std::make_shared<ObstacleDetector>(
      std::vector<std::shared_ptr<KRVNavObstacle>>{}, std::weak_ptr<ConfigDependents>{});
  finder.setObstacleDetector(detector);
  EXPECT_EQ(finder.obstacleDetector(), detector);
}

TEST(IntersectionFinder, WithoutABundleHasNone) {
  EXPECT_EQ(IntersectionFinder(nullptr, {}).configDependents(), nullptr);
}
