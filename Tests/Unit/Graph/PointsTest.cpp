#include "Support/Points.hpp"

#include <gtest/gtest.h>

namespace KorvaniTest {
namespace {

TEST(Points, WithAndWithoutIdentifier) {
  EXPECT_EQ(at(48, 11)->identifier(), -1);
  EXPECT_EQ(at(48, 11)->level(), 0);
  EXPECT_EQ(at(48, 11, 2)->level(), 2);
  EXPECT_EQ(at(48, 11, 2, 9)->identifier(), 9);
}

TEST(Points, MovedByMetresAreThatFarAway) {
  const auto distance = [](CLLocationCoordinate2D end) {
    return KorvaniPlatform::greatCircleDistance(kOrigin, end);
  };
  EXPECT_NEAR(distance(metresNorth(kOrigin, 25)), 25, 1e-6);
  EXPECT_NEAR(distance(metresNorth(kOrigin, -25)), 25, 1e-6);
  EXPECT_NEAR(distance(metresEast(kOrigin, 25)), 25, 1e-6);
  EXPECT_NEAR(distance(moved(kOrigin, 3, -4)), 5, 1e-5);
}

TEST(Points, NorthAndEastAreUpAndRight) {
  EXPECT_GT(metresNorth(kOrigin, 1).latitude, kOrigin.latitude);
  EXPECT_GT(metresEast(kOrigin, 1).longitude, kOrigin.longitude);
  EXPECT_EQ(fromOrigin(0, 0), kOrigin);
}

}  // namespace
}  // namespace KorvaniTest
