#include "Drawing/SheetPlans.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Tools/BuildingText.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::makeScene;
using KorvaniTools::Scene;
using KorvaniTools::SceneLevel;
using KorvaniTools::SheetPlan;
using KorvaniTools::sheetPlans;

std::vector<const SceneLevel*> levelsOf(const Scene& scene) {
  std::vector<const SceneLevel*> levels;
  for (const SceneLevel& level : scene.levels) levels.push_back(&level);
  return levels;
}

std::string roomOf(int level) {
  return featureOf("room", "\"level\":" + std::to_string(level), "Polygon",
                   "[[[11,48],[11.001,48],[11.001,48.0005],[11,48.0005],[11,48]]]");
}

/// A house of 75 by 55 m with two levels; nodes out to that longitude.
Scene houseWithPathsTo(double longitude) {
  return makeScene(parsed({roomOf(0), roomOf(1), nodeAt(1, 0, 11.0005, 48.0002),
                           nodeAt(2, 0, longitude, 48.0002), edgeOf(1, 2)}));
}

TEST(SheetPlans, LevelsOfAHouseLieOnTopOfEachOther) {
  const Scene scene = houseWithPathsTo(11.0015);
  const auto plans = sheetPlans(scene, levelsOf(scene), false);
  ASSERT_EQ(plans.size(), 2U);
  EXPECT_EQ(plans[0].scale, plans[1].scale);
  EXPECT_EQ(plans[0].window.width, scene.frame.width());
  EXPECT_EQ(plans[1].window.width, scene.frame.width());
  EXPECT_FALSE(plans[0].detail || plans[1].detail);
}

TEST(SheetPlans, OnACampusEachLevelHasAScaleAndItsRoomsAreEnlarged) {
  const Scene scene = houseWithPathsTo(11.02);  // 1.5 km away
  const auto plans = sheetPlans(scene, levelsOf(scene), false);
  ASSERT_EQ(plans.size(), 3U);
  EXPECT_EQ(plans[0].level->level, 0);
  EXPECT_GT(plans[0].window.width, 1400);
  EXPECT_LT(plans[0].scale, 2);
  EXPECT_EQ(plans[1].level->level, 0);
  EXPECT_TRUE(plans[1].detail);
  EXPECT_LT(plans[1].window.width, 100);
  EXPECT_GT(plans[1].scale, 5);
  EXPECT_EQ(plans[2].level->level, 1);
  EXPECT_FALSE(plans[2].detail);
  EXPECT_GT(plans[2].scale, 5);
}

TEST(SheetPlans, ASingleLevelFillsItsPlan) {
  const Scene scene = houseWithPathsTo(11.0015);
  const auto plans = sheetPlans(scene, {&scene.levels[1]}, true);
  ASSERT_EQ(plans.size(), 1U);
  EXPECT_LT(plans[0].window.width, scene.frame.width());
}

TEST(SheetPlans, WithoutRoomsACampusGrowsBeyondAPage) {
  const Scene scene = makeScene(parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11.02, 48)}));
  const auto plans = sheetPlans(scene, levelsOf(scene), false);
  ASSERT_EQ(plans.size(), 1U);
  EXPECT_GT(plans[0].width(), 4000);
}

TEST(SheetPlans, NoLevelsHaveNone) {
  EXPECT_TRUE(sheetPlans(makeScene(KorvaniTools::Building{}), {}, false).empty());
}

}  // namespace
}  // namespace KorvaniTest
