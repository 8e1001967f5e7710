#include "Navigation/Obstacles/PlaneEstimate.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <random>

using KorvaniNavigation::CLLocationCoordinate2D;
using KorvaniNavigation::MKMapPoint;
using KorvaniNavigation::PlaneEstimate;
using KorvaniPlatform::MKCoordinateForMapPoint;
using KorvaniPlatform::MKMapPointForCoordinate;

namespace {

constexpr double kWorld = KorvaniPlatform::kMKMapWorldSize;

// Around a place, so many units to each side; a unit is 15 cm at the equator and less elsewhere.
PlaneEstimate estimateAround(MKMapPoint place, double units) {
  return PlaneEstimate({place.x - units, place.y - units}, {place.x + units, place.y + units});
}

PlaneEstimate estimateAround(CLLocationCoordinate2D place, double units) {
  return estimateAround(MKMapPointForCoordinate(place), units);
}

}  // namespace

TEST(PlaneEstimate, WithoutARectangleCoversNothing) {
  EXPECT_FALSE(PlaneEstimate().covers({0, 0}));
  EXPECT_FALSE(PlaneEstimate().covers({48, 11}));
}

TEST(PlaneEstimate, CoversWhatLiesInTheRectangle) {
  const PlaneEstimate estimate({1.4e8, 9e7}, {1.4e8 + 2000, 9e7 + 1000});
  EXPECT_TRUE(estimate.covers(MKCoordinateForMapPoint({1.4e8 + 1, 9e7 + 1})));
  EXPECT_TRUE(estimate.covers(MKCoordinateForMapPoint({1.4e8 + 1999, 9e7 + 999})));
  EXPECT_FALSE(estimate.covers(MKCoordinateForMapPoint({1.4e8 - 1, 9e7 + 500})));
  EXPECT_FALSE(estimate.covers(MKCoordinateForMapPoint({1.4e8 + 2001, 9e7 + 500})));
  EXPECT_FALSE(estimate.covers(MKCoordinateForMapPoint({1.4e8 + 500, 9e7 - 1})));
  EXPECT_FALSE(estimate.covers(MKCoordinateForMapPoint({1.4e8 + 500, 9e7 + 1001})));
}

TEST(PlaneEstimate, NeverCoversWhatIsNotANumber) {
  constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
  constexpr double kFar = std::numeric_limits<double>::infinity();
  const PlaneEstimate estimate = estimateAround(CLLocationCoordinate2D{48, 11}, 1000);
  for (const double wrong : {kUnknown, kFar, -kFar}) {
    EXPECT_FALSE(estimate.covers({wrong, 11}));
    EXPECT_FALSE(estimate.covers({48, wrong}));
    EXPECT_FALSE(estimateAround(MKMapPoint{wrong, 0}, 1000).covers({48, 11}));
    EXPECT_FALSE(estimateAround(MKMapPoint{0, wrong}, 1000).covers({48, 11}));
    EXPECT_FALSE(estimateAround(CLLocationCoordinate2D{48, 11}, wrong).covers({48, 11}));
  }
}

TEST(PlaneEstimate, CoversNothingBeyondTheMapOfTheWorld) {
  EXPECT_FALSE(estimateAround(CLLocationCoordinate2D{85.05, 11}, 100000).covers({85.06, 11}));
  EXPECT_FALSE(estimateAround(CLLocationCoordinate2D{-85.05, 11}, 100000).covers({-85.06, 11}));
  EXPECT_FALSE(estimateAround(CLLocationCoordinate2D{48, 1000}, 1000).covers({48, 1000}));
  EXPECT_TRUE(estimateAround(CLLocationCoordinate2D{48, 180}, 1000).covers({48, 180.0001}));
}

// At the corners, where it is wrong most, and between.
TEST(PlaneEstimate, IsWithinItsErrorOfTheProjectedPlace) {
  std::mt19937_64 chance(7);
  const auto part = [&](int i) {
    if (i < 10) return i % 2 == 0 ? 0.999999 : -0.999999;
    return static_cast<double>(chance() >> 11) * 0x1p-52 - 1;
  };
  std::size_t covered = 0;
  for (const double units : {1.0, 100.0, 3000.0, 1e5, 1e6, 1e7, kWorld / 4}) {
    for (double latitude = -85; latitude <= 85; latitude += 4.25) {
      const MKMapPoint middle = MKMapPointForCoordinate({latitude, latitude * 2.1});
      const PlaneEstimate estimate = estimateAround(middle, units);
      for (int i = 0; i < 200; ++i) {
        const CLLocationCoordinate2D place =
            MKCoordinateForMapPoint({middle.x + part(i) * units, middle.y + part(i / 2) * units});
        if (!estimate.covers(place)) continue;
        ++covered;
        const MKMapPoint exact = MKMapPointForCoordinate(place);
        EXPECT_LE(std::abs(estimate.at(place).x - exact.x), estimate.error());
        EXPECT_LE(std::abs(estimate.at(place).y - exact.y), estimate.error());
      }
    }
  }
  EXPECT_GT(covered, 40000u);
}

TEST(PlaneEstimate, OfABuildingIsWrongByLessThanAMicrometre) {
  for (const double latitude : {-60.0, -33.0, 0.0, 21.0, 48.0, 60.0}) {
    EXPECT_LT(estimateAround(CLLocationCoordinate2D{latitude, 11}, 3000).error(), 3e-6);
    EXPECT_LT(estimateAround(CLLocationCoordinate2D{latitude, 11}, 20000).error(), 3e-5);
  }
}
