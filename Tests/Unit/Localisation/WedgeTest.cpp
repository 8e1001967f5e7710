#include "Navigation/Localisation/Wedge.hpp"

#include <gtest/gtest.h>

#include <limits>

using KorvaniNavigation::Wedge;

namespace {

constexpr double kEndless = std::numeric_limits<double>::infinity();

// From the origin, between the directions of (9, 1) and (8, 2).
Wedge eastward(double length = kEndless) { return {{0, 0}, {0.9, 0.1}, {0.8, 0.2}, length}; }

}  // namespace

TEST(Wedge, ReachesPointsBetweenItsSides) {
  EXPECT_TRUE(eastward().reaches({85, 15}));
  EXPECT_TRUE(eastward().reaches({90, 10}));
  EXPECT_TRUE(eastward().reaches({80, 20}));
  EXPECT_FALSE(eastward().reaches({91, 9}));
  EXPECT_FALSE(eastward().reaches({79, 21}));
  EXPECT_FALSE(eastward().reaches({-85, -15}));
}

TEST(Wedge, WithoutWidthReachesPointsInItsDirection) {
  const Wedge ray({1, 1}, {0.5, 0.5}, {0.5, 0.5}, kEndless);
  EXPECT_TRUE(ray.reaches({1e6, 1e6}));
  EXPECT_FALSE(ray.reaches({1e6, 1e6 + 1}));
  EXPECT_FALSE(ray.reaches({0, 0}));
}

TEST(Wedge, ReachesIntoARectangleThatItPassesThrough) {
  EXPECT_TRUE(eastward().reachesInto({80, 10}, {90, 20}));
  EXPECT_TRUE(eastward().reachesInto({84, -50}, {86, 50}));
  EXPECT_TRUE(eastward().reachesInto({90, 0}, {100, 10}));
  EXPECT_TRUE(eastward().reachesInto({-5, -5}, {5, 5}));
  EXPECT_FALSE(eastward().reachesInto({91, 0}, {100, 9}));
  EXPECT_FALSE(eastward().reachesInto({70, 21}, {79, 30}));
  EXPECT_FALSE(eastward().reachesInto({-90, -20}, {-80, -10}));
}

TEST(Wedge, ReachesIntoNoRectangleBeyondItsLength) {
  EXPECT_TRUE(eastward(91).reachesInto({80, 10}, {90, 20}));
  EXPECT_FALSE(eastward(89).reachesInto({80, 10}, {90, 20}));
  EXPECT_FALSE(eastward().upTo(89).reachesInto({80, 10}, {90, 20}));
  EXPECT_FALSE(eastward(89).upTo(100).reachesInto({80, 10}, {90, 20}));
}
