#include "Drawing/WallFloor.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace KorvaniTest {
namespace {

using KorvaniTools::floorWithin;
using KorvaniTools::SceneLine;
using KorvaniTools::ScenePoint;

/// Square metres within an outline.
double areaOf(const SceneLine& outline) {
  double twice = 0;
  for (std::size_t i = 0; i + 1 < outline.size(); ++i) {
    twice += outline[i].x * outline[i + 1].y - outline[i + 1].x * outline[i].y;
  }
  return std::abs(twice) / 2;
}

TEST(WallFloor, FillsWhatAClosedWallEncloses) {
  const auto floor = floorWithin({{{0, 0}, {20, 0}, {20, 10}, {0, 10}, {0, 0}}});
  ASSERT_EQ(floor.size(), 1U);
  EXPECT_NEAR(areaOf(floor[0]), 200, 2);
}

TEST(WallFloor, DoorsDoNotLetTheFloorOut) {
  const auto floor = floorWithin({{{9, 0}, {0, 0}, {0, 10}, {9, 10}},
                                  {{11, 10}, {20, 10}, {20, 0}, {11, 0}},
                                  {{10, 3}, {10, 7}}});
  ASSERT_EQ(floor.size(), 1U);
  EXPECT_NEAR(areaOf(floor[0]), 200, 10);
}

TEST(WallFloor, WiderGapsDo) {
  EXPECT_TRUE(floorWithin({{{0, 10}, {0, 0}, {20, 0}, {20, 10}}, {{3, 10}, {15, 10}}}).empty());
}

TEST(WallFloor, SeparateBuildingsHaveFloorsOfTheirOwn) {
  EXPECT_EQ(floorWithin({{{0, 0}, {5, 0}, {5, 5}, {0, 5}, {0, 0}},
                         {{50, 0}, {55, 0}, {55, 5}, {50, 5}, {50, 0}}})
                .size(),
            2U);
}

TEST(WallFloor, ACourtyardIsEnclosed) {
  const auto floor = floorWithin({{{0, 0}, {30, 0}, {30, 30}, {0, 30}, {0, 0}},
                                  {{10, 10}, {20, 10}, {20, 20}, {10, 20}, {10, 10}}});
  ASSERT_EQ(floor.size(), 1U);
  EXPECT_NEAR(areaOf(floor[0]), 900, 2);
}

TEST(WallFloor, WallsByThemselvesEncloseNothing) {
  EXPECT_TRUE(floorWithin({}).empty());
  EXPECT_TRUE(
      floorWithin({{{0, 0}, {40, 0}}, {{0, 10}, {40, 10}}, {{3, 3}, {3, 3}}, {{7, 7}}}).empty());
}

TEST(WallFloor, BearsWallsAsLongAsTheEarth) {
  const auto floor = floorWithin({{{0, 0}, {4e7, 0}, {4e7, 2e7}, {0, 2e7}, {0, 0}}});
  ASSERT_EQ(floor.size(), 1U);
  EXPECT_NEAR(areaOf(floor[0]) / 8e14, 1, 1e-6);
}

}  // namespace
}  // namespace KorvaniTest
