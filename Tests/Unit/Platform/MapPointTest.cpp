#include "Platform/MapPoint.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace KorvaniPlatform {
namespace {

constexpr double kWorld = 268435456;
constexpr double kEdge = 85.05112877980659;

MKMapPoint projectStepByStep(CLLocationCoordinate2D coordinate) {
  double x = coordinate.longitude + 180;
  x = x / 360;
  x = x * kWorld;
  const double sine = std::sin(coordinate.latitude * std::numbers::pi / 180);
  const double quotient = (1 + sine) / (1 - sine);
  double y = std::log(quotient);
  y = y / (4 * std::numbers::pi);
  y = 0.5 - y;
  y = y * kWorld;
  return {x, y};
}

CLLocationCoordinate2D unprojectStepByStep(MKMapPoint point) {
  double longitude = point.x / kWorld;
  longitude = longitude * 360;
  longitude = longitude - 180;
  double k = point.y / kWorld;
  k = 0.5 - k;
  k = k * (4 * std::numbers::pi);
  const double latitude = std::atan(std::sinh(k / 2)) * 180 / std::numbers::pi;
  return {latitude, longitude};
}

void expectThereAndBack(CLLocationCoordinate2D coordinate) {
  const CLLocationCoordinate2D back = MKCoordinateForMapPoint(MKMapPointForCoordinate(coordinate));
  EXPECT_NEAR(back.latitude, coordinate.latitude, 1e-9);
  EXPECT_NEAR(back.longitude, coordinate.longitude, 1e-9);
}

TEST(MapPlane, WorldIsASquareOfTwoToThe28Units) { EXPECT_EQ(kMKMapWorldSize, std::exp2(28)); }

TEST(MapPlane, EdgeIsTheLatitudeWhereTheWorldIsSquare) {
  EXPECT_NEAR(kMKMapMaximumLatitude, degrees(std::atan(std::sinh(std::numbers::pi))), 1e-12);
}

TEST(MapPlane, ProjectionIsTheFormulaBitForBit) {
  std::mt19937 random(11);
  std::uniform_real_distribution<double> latitude(-kEdge, kEdge);
  std::uniform_real_distribution<double> longitude(-180, 180);
  for (int round = 0; round < 20000; ++round) {
    const CLLocationCoordinate2D coordinate{latitude(random), longitude(random)};
    ASSERT_EQ(MKMapPointForCoordinate(coordinate), projectStepByStep(coordinate));
  }
}

TEST(MapPlane, InverseIsTheFormulaBitForBit) {
  std::mt19937 random(12);
  std::uniform_real_distribution<double> unit(0, kWorld);
  for (int round = 0; round < 20000; ++round) {
    const MKMapPoint point{unit(random), unit(random)};
    ASSERT_EQ(MKCoordinateForMapPoint(point), unprojectStepByStep(point));
  }
}

TEST(MapPlane, KnownPlacesLieWhereTheyAreKnownToLie) {
  const MKMapPoint hall = MKMapPointForCoordinate({48.1372, 11.5756});
  EXPECT_NEAR(hall.x, 142849120.95687112, 1e-6);
  EXPECT_NEAR(hall.y, 93158939.83714345, 1e-6);
  const CLLocationCoordinate2D sea = MKCoordinateForMapPoint({1e8, 1.2e8});
  EXPECT_NEAR(sea.latitude, 18.724949948084575, 1e-9);
  EXPECT_NEAR(sea.longitude, -45.889549255371094, 1e-9);
}

TEST(MapPlane, MiddleOfTheWorldIsZeroNorthZeroEast) {
  EXPECT_EQ(MKMapPointForCoordinate({0, 0}), (MKMapPoint{kWorld / 2, kWorld / 2}));
  EXPECT_EQ(MKCoordinateForMapPoint({kWorld / 2, kWorld / 2}), (CLLocationCoordinate2D{0, 0}));
}

TEST(MapPlane, GrowsToTheEastAndToTheSouth) {
  const MKMapPoint here = MKMapPointForCoordinate({48, 11});
  EXPECT_GT(MKMapPointForCoordinate({48, 11.001}).x, here.x);
  EXPECT_EQ(MKMapPointForCoordinate({48, 11.001}).y, here.y);
  EXPECT_GT(MKMapPointForCoordinate({47.999, 11}).y, here.y);
  EXPECT_EQ(MKMapPointForCoordinate({47.999, 11}).x, here.x);
}

TEST(MapPlane, CornersOfTheWorldAreItsEdges) {
  const MKMapPoint northWest = MKMapPointForCoordinate({kEdge, -180});
  EXPECT_EQ(northWest.x, 0);
  EXPECT_NEAR(northWest.y, 0, 1e-5);
  const MKMapPoint southEast = MKMapPointForCoordinate({-kEdge, 180});
  EXPECT_EQ(southEast.x, kWorld);
  EXPECT_NEAR(southEast.y, kWorld, 1e-5);
}

TEST(MapPlane, LatitudesBeyondTheEdgeAreBroughtToIt) {
  for (const double latitude : {85.0511287798066, 89.0, 90.0, 1e9}) {
    EXPECT_EQ(MKMapPointForCoordinate({latitude, 11}), MKMapPointForCoordinate({kEdge, 11}));
    EXPECT_EQ(MKMapPointForCoordinate({-latitude, 11}), MKMapPointForCoordinate({-kEdge, 11}));
  }
  EXPECT_NE(MKMapPointForCoordinate({85.05, 11}), MKMapPointForCoordinate({kEdge, 11}));
}

TEST(MapPlane, LongitudesAreTakenAsTheyAre) {
  EXPECT_EQ(MKMapPointForCoordinate({0, 540}).x, 2 * kWorld);
  EXPECT_EQ(MKCoordinateForMapPoint({2 * kWorld, kWorld / 2}).longitude, 540);
}

TEST(MapPlane, NotANumberStaysNotANumber) {
  const double notANumber = std::numeric_limits<double>::quiet_NaN();
  EXPECT_TRUE(std::isnan(MKMapPointForCoordinate({notANumber, 0}).y));
  EXPECT_TRUE(std::isnan(MKMapPointForCoordinate({0, notANumber}).x));
}

TEST(MapPlane, CoordinatesComeBackFromTheirProjection) {
  std::mt19937 random(13);
  std::uniform_real_distribution<double> latitude(-85, 85);
  std::uniform_real_distribution<double> longitude(-180, 180);
  for (int round = 0; round < 20000; ++round) {
    expectThereAndBack({latitude(random), longitude(random)});
  }
  expectThereAndBack({0, 0});
  expectThereAndBack({kEdge, 180});
  expectThereAndBack({-kEdge, -180});
}

TEST(MapPlane, PointsComeBackFromTheirCoordinates) {
  std::mt19937 random(14);
  std::uniform_real_distribution<double> unit(1, kWorld - 1);
  for (int round = 0; round < 20000; ++round) {
    const MKMapPoint point{unit(random), unit(random)};
    const MKMapPoint back = MKMapPointForCoordinate(MKCoordinateForMapPoint(point));
    EXPECT_NEAR(back.x, point.x, 1e-6);
    EXPECT_NEAR(back.y, point.y, 1e-5);
  }
}

TEST(MapPlane, MetresBetweenPointsAreThoseBetweenTheirCoordinates) {
  const MKMapPoint a = MKMapPointForCoordinate({48.1372, 11.5756});
  const MKMapPoint b = MKMapPointForCoordinate({48.1374, 11.5751});
  EXPECT_EQ(MKMetersBetweenMapPoints(a, b),
            greatCircleDistance(MKCoordinateForMapPoint(a), MKCoordinateForMapPoint(b)));
  EXPECT_NEAR(MKMetersBetweenMapPoints(a, b),
              greatCircleDistance({48.1372, 11.5756}, {48.1374, 11.5751}), 1e-6);
  EXPECT_EQ(MKMetersBetweenMapPoints(a, a), 0);
}

}  // namespace
}  // namespace KorvaniPlatform
