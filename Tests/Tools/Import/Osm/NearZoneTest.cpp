#include "Import/Osm/NearZone.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace KorvaniTest {
namespace {

using KorvaniTools::NearZone;

constexpr double kMetre = 1.0 / 111195;

TEST(NearZone, HoldsNothingAtFirst) {
  EXPECT_TRUE(NearZone().empty());
  EXPECT_FALSE(NearZone().near({48, 11}, 100));
}

TEST(NearZone, TellsDistancesInAllDirections) {
  for (const double latitude : {-48.0, 0.0, 48.0, 70.0}) {
    NearZone zone;
    zone.add({latitude, 11});
    const double east = kMetre / std::cos(latitude * 3.14159265358979 / 180);
    for (const double sign : {-1.0, 1.0}) {
      EXPECT_TRUE(zone.near({latitude + sign * 99 * kMetre, 11}, 100)) << latitude;
      EXPECT_FALSE(zone.near({latitude + sign * 101 * kMetre, 11}, 100)) << latitude;
      EXPECT_TRUE(zone.near({latitude, 11 + sign * 99 * east}, 100)) << latitude;
      EXPECT_FALSE(zone.near({latitude, 11 + sign * 101 * east}, 100)) << latitude;
    }
    EXPECT_FALSE(zone.near({latitude + 30 * kMetre, 11}, 25)) << latitude;
  }
}

TEST(NearZone, HoldsLinesBetweenTheirEnds) {
  NearZone zone;
  zone.addLine({48, 11}, {48 + 1000 * kMetre, 11});
  EXPECT_TRUE(zone.near({48 + 500 * kMetre, 11 + 120 * kMetre}, 100));
  EXPECT_FALSE(zone.near({48 + 1200 * kMetre, 11}, 100));
}

TEST(NearZone, HoldsOfEndlessLinesTheEnds) {
  NearZone zone;
  zone.addLine({-80, -179}, {80, 179});
  EXPECT_TRUE(zone.near({80, 179}, 1));
  EXPECT_FALSE(zone.near({0, 0}, 100));
}

TEST(NearZone, KnowsItsRectangle) {
  NearZone zone;
  zone.addLine({48, 11}, {48.001, 11.002});
  zone.add({48, 11});
  EXPECT_EQ(zone.rectangle().southWest.latitude, 48);
  EXPECT_EQ(zone.rectangle().northEast.longitude, 11.002);
}

}  // namespace
}  // namespace KorvaniTest
