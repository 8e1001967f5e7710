#include "Common/GeoPolygonChecker.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace {

using KorvaniCommon::GeoPolygonChecker;
using KorvaniPlatform::CLLocationCoordinate2D;
using Corners = std::vector<CLLocationCoordinate2D>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

const CLLocationCoordinate2D kNorthEast{48.2, 11.6};
const CLLocationCoordinate2D kSouthWest{48.1, 11.5};
const Corners kRectangle{kNorthEast, kSouthWest};

bool inRectangle(double latitude, double longitude) {
  return GeoPolygonChecker::isCoordinate({latitude, longitude}, kRectangle);
}

TEST(GeoPolygonChecker, ContainsACoordinateBetweenTheCorners) {
  EXPECT_TRUE(inRectangle(48.15, 11.55));
}

TEST(GeoPolygonChecker, ContainsNothingBeyondAnySide) {
  EXPECT_FALSE(inRectangle(48.3, 11.55));
  EXPECT_FALSE(inRectangle(48.0, 11.55));
  EXPECT_FALSE(inRectangle(48.15, 11.7));
  EXPECT_FALSE(inRectangle(48.15, 11.4));
}

TEST(GeoPolygonChecker, ContainsItsFourCorners) {
  EXPECT_TRUE(inRectangle(48.2, 11.6));
  EXPECT_TRUE(inRectangle(48.1, 11.5));
  EXPECT_TRUE(inRectangle(48.2, 11.5));
  EXPECT_TRUE(inRectangle(48.1, 11.6));
}

TEST(GeoPolygonChecker, ContainsItsFourSides) {
  EXPECT_TRUE(inRectangle(48.2, 11.55));
  EXPECT_TRUE(inRectangle(48.1, 11.55));
  EXPECT_TRUE(inRectangle(48.15, 11.6));
  EXPECT_TRUE(inRectangle(48.15, 11.5));
}

TEST(GeoPolygonChecker, EndsExactlyAtItsSides) {
  EXPECT_FALSE(inRectangle(std::nextafter(48.2, 90.0), 11.55));
  EXPECT_FALSE(inRectangle(std::nextafter(48.1, 0.0), 11.55));
  EXPECT_FALSE(inRectangle(48.15, std::nextafter(11.6, 90.0)));
  EXPECT_FALSE(inRectangle(48.15, std::nextafter(11.5, 0.0)));
}

TEST(GeoPolygonChecker, TakesAnyTwoOppositeCornersInEitherOrder) {
  const CLLocationCoordinate2D inside{48.15, 11.55};
  EXPECT_TRUE(GeoPolygonChecker::isCoordinate(inside, {kSouthWest, kNorthEast}));
  EXPECT_TRUE(GeoPolygonChecker::isCoordinate(inside, {{48.2, 11.5}, {48.1, 11.6}}));
  EXPECT_TRUE(GeoPolygonChecker::isCoordinate(inside, {{48.1, 11.6}, {48.2, 11.5}}));
}

TEST(GeoPolygonChecker, SpansMinimaAndMaximaOfAllCoordinatesOfTheList) {
  const Corners triangle{{0.0, 0.0}, {2.0, 1.0}, {1.0, 3.0}};
  EXPECT_TRUE(GeoPolygonChecker::isCoordinate({2.0, 3.0}, triangle));  // outside the triangle
  EXPECT_TRUE(GeoPolygonChecker::isCoordinate({0.0, 3.0}, triangle));
  EXPECT_FALSE(GeoPolygonChecker::isCoordinate({2.1, 1.0}, triangle));
  EXPECT_FALSE(GeoPolygonChecker::isCoordinate({1.0, 3.1}, triangle));
}

TEST(GeoPolygonChecker, AnEmptyListContainsNothing) {
  EXPECT_FALSE(GeoPolygonChecker::isCoordinate({0.0, 0.0}, Corners{}));
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_FALSE(GeoPolygonChecker::isCoordinate({infinity, infinity}, Corners{}));
  EXPECT_FALSE(GeoPolygonChecker::isCoordinate({-infinity, -infinity}, Corners{}));
}

TEST(GeoPolygonChecker, ASingleCoordinateContainsItselfAlone) {
  EXPECT_TRUE(GeoPolygonChecker::isCoordinate(kNorthEast, Corners{kNorthEast}));
  EXPECT_FALSE(GeoPolygonChecker::isCoordinate(kSouthWest, Corners{kNorthEast}));
}

TEST(GeoPolygonChecker, ALineOfOneLatitudeContainsItsOwnCoordinates) {
  const Corners line{{48.0, 11.0}, {48.0, 12.0}};
  EXPECT_TRUE(GeoPolygonChecker::isCoordinate({48.0, 11.5}, line));
  EXPECT_FALSE(GeoPolygonChecker::isCoordinate({48.0000001, 11.5}, line));
}

TEST(GeoPolygonChecker, WorksAcrossTheEquatorAndTheZeroMeridian) {
  const Corners around{{-1.0, -2.0}, {1.0, 2.0}};
  EXPECT_TRUE(GeoPolygonChecker::isCoordinate({0.0, 0.0}, around));
  EXPECT_TRUE(GeoPolygonChecker::isCoordinate({-1.0, -2.0}, around));
  EXPECT_FALSE(GeoPolygonChecker::isCoordinate({-1.5, 0.0}, around));
}

TEST(GeoPolygonChecker, DoesNotReachAcrossTheAntimeridian) {
  const Corners corners{{0.0, 179.0}, {1.0, -179.0}};
  EXPECT_FALSE(GeoPolygonChecker::isCoordinate({0.5, 180.0}, corners));
  EXPECT_TRUE(GeoPolygonChecker::isCoordinate({0.5, 0.0}, corners));
}

TEST(GeoPolygonChecker, ACoordinateThatIsNotANumberLiesNowhere) {
  EXPECT_FALSE(inRectangle(kNaN, 11.55));
  EXPECT_FALSE(inRectangle(48.15, kNaN));
}

TEST(GeoPolygonChecker, CornersThatAreNotNumbersAddNothingWhereverTheyStand) {
  const CLLocationCoordinate2D nowhere{kNaN, kNaN};
  const CLLocationCoordinate2D inside{48.15, 11.55};
  EXPECT_TRUE(GeoPolygonChecker::isCoordinate(inside, {nowhere, kNorthEast, kSouthWest}));
  EXPECT_TRUE(GeoPolygonChecker::isCoordinate(inside, {kNorthEast, kSouthWest, nowhere}));
  EXPECT_FALSE(GeoPolygonChecker::isCoordinate(inside, {nowhere, nowhere}));
}

TEST(GeoPolygonChecker, TakesAnArrayOfTwoCornersAsWell) {
  const std::array corners{kNorthEast, kSouthWest};
  EXPECT_TRUE(GeoPolygonChecker::isCoordinate({48.15, 11.55}, corners));
  EXPECT_FALSE(GeoPolygonChecker::isCoordinate({48.15, 11.65}, corners));
}

}  // namespace
