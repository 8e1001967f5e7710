#include "FloorPlan/PlanLevels.hpp"

#include <gtest/gtest.h>

#include "Drawing.hpp"

namespace KorvaniTest {
namespace {

using namespace KorvaniTools;
using Levels = std::vector<std::int64_t>;

Levels mapped(const PlanLevelSet& sources) {
  FloorPlan plan;
  PlanWall wall;
  wall.levels = sources;
  plan.walls.push_back(wall);
  std::vector<std::string> remarks;
  const PlanLevels levels(plan, remarks);
  Levels result;
  for (const auto& [source, level] : levels.all()) result.push_back(level);
  return result;
}

TEST(PlanLevels, WholeLevelsKeepTheirNumbersAndGaps) {
  EXPECT_EQ(mapped({-3, -1, 0, 2, 7}), (Levels{-3, -1, 0, 2, 7}));
}

TEST(PlanLevels, AFractionMovesWhatLiesAboveItUp) {
  EXPECT_EQ(mapped({0, 0.5, 1, 2}), (Levels{0, 1, 2, 3}));
}

TEST(PlanLevels, AFractionBelowZeroMovesWhatLiesBelowItDown) {
  EXPECT_EQ(mapped({-2, -1, -0.5, 0, 1}), (Levels{-3, -2, -1, 0, 1}));
}

TEST(PlanLevels, SeveralFractionsBetweenTwoLevelsStayDistinctAndInOrder) {
  EXPECT_EQ(mapped({0, 0.08, 0.25, 0.5, 1, 1.5, 2}), (Levels{0, 1, 2, 3, 4, 5, 6}));
}

TEST(PlanLevels, GapsBeyondAFractionStay) {
  EXPECT_EQ(mapped({0, 0.5, 1, 3}), (Levels{0, 1, 2, 4}));
}

TEST(PlanLevels, MinusZeroIsZero) { EXPECT_EQ(mapped({-0.0, 0.0, 1}), (Levels{0, 1})); }

TEST(PlanLevels, LevelsThatNoFileCanHoldAreLeftOutWithARemark) {
  Drawing drawing;
  drawing.area("sky", box(0, 0, 5, 5), {1e9});
  drawing.area("floor", box(0, 0, 5, 5), {0});
  const Made made = drawing.make();
  EXPECT_EQ(made.building.rooms.size(), 1U);
  EXPECT_TRUE(made.remarked("1000000000"));
}

TEST(PlanLevels, NamesOfUsedLevelsAndTheirNumbersInTheSourceAreKept) {
  Drawing drawing;
  drawing.area("mezzanine", box(0, 0, 5, 5), {0.5});
  drawing.area("floor", box(0, 0, 5, 5), {0});
  drawing.area("attic", box(0, 0, 5, 5), {1});
  drawing.plan.levels = {
      {0, "Ground", std::nullopt}, {0.5, "Gallery", "M"}, {1, std::nullopt, "A"}, {4, "Roof", "R"}};
  const Building building = drawing.make().building;
  ASSERT_EQ(building.levelNames.size(), 3U);
  EXPECT_EQ(building.levelNames[0].name, "Ground");
  EXPECT_EQ(building.levelNames[0].source, "0");
  EXPECT_EQ(building.levelNames[1].level, 1);
  EXPECT_EQ(building.levelNames[1].name, "Gallery");
  EXPECT_EQ(building.levelNames[1].source, "0.5");
  EXPECT_EQ(building.levelNames[2].name, "A");
  EXPECT_EQ(building.levelNames[2].source, "1");
}

TEST(PlanLevels, LevelsWithAnotherNumberThanInTheSourceAreCalledByTheSources) {
  Drawing drawing;
  drawing.area("floor", box(0, 0, 5, 5), {-0.5, 0, 0.5, 1});
  drawing.plan.levels = {{0.5, std::nullopt, std::nullopt}};
  const std::vector<LevelName> names = drawing.make().building.levelNames;
  ASSERT_EQ(names.size(), 4U);
  EXPECT_EQ(names[0].name, "-0.5");
  EXPECT_FALSE(names[1].name);
  EXPECT_EQ(names[2].name, "0.5");
  EXPECT_EQ(names[3].level, 2);
  EXPECT_EQ(names[3].name, "1");
}

TEST(PlanLevels, TheMappingIsReported) {
  Drawing drawing;
  drawing.area("floor", box(0, 0, 5, 5), {0, 0.5});
  const PlanReport report = drawing.make().report;
  ASSERT_EQ(report.levels.size(), 2U);
  EXPECT_EQ(report.levels[1].source, 0.5);
  EXPECT_EQ(report.levels[1].level, 1);
}

TEST(PlanLevels, DoorsAndPlacesOfLevelsThatNothingElseUsesAreRemarked) {
  Drawing drawing;
  drawing.area("floor", box(0, 0, 5, 5));
  drawing.door("node/7", {{0, 2}}, {5});
  drawing.plan.places.push_back({"node/8", "Kiosk", {6}, at({1, 1}), false, {}});
  const Made made = drawing.make();
  EXPECT_TRUE(made.building.places.empty());
  EXPECT_TRUE(made.remarked("node/7"));
  EXPECT_TRUE(made.remarked("node/8"));
  EXPECT_EQ(made.report.levels.size(), 1U);
}

TEST(PlanLevels, EachLevelHasARegionFiveMetresLargerThanWhatIsOnIt) {
  Drawing drawing;
  drawing.area("floor", box(0, 0, 20, 10), {0, 1});
  const Building building = drawing.make().building;
  ASSERT_EQ(building.regions.size(), 2U);
  EXPECT_EQ(building.regions[1].level, 1);
  const GroundPoint low = metres(building.regions[0].rectangle.southWest);
  const GroundPoint high = metres(building.regions[0].rectangle.northEast);
  EXPECT_NEAR(low.x, -5, 0.01);
  EXPECT_NEAR(low.y, -5, 0.01);
  EXPECT_NEAR(high.x, 25, 0.01);
  EXPECT_NEAR(high.y, 15, 0.01);
}

}  // namespace
}  // namespace KorvaniTest
