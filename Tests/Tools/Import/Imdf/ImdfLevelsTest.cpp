#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/Import/Imdf/TestArchive.hpp"

namespace KorvaniTest {
namespace {

using testing::HasSubstr;

TEST(ImdfLevels, AreTheOrdinalsInAscendingOrder) {
  TestArchive archive;
  archive.floor(2, {"A"}, {{'A', "room"}});
  archive.floor(-1, {"A"}, {{'A', "room"}});
  const FloorPlan plan = archive.read();
  ASSERT_EQ(plan.levels.size(), 2U);
  EXPECT_EQ(plan.levels[0].level, -1);
  EXPECT_EQ(plan.levels[1].level, 2);
  EXPECT_EQ(cellOf(plan, "A2").levels, KorvaniTools::PlanLevelSet{2});
  EXPECT_EQ(cellOf(plan, "A-1").levels, KorvaniTools::PlanLevelSet{-1});
}

TEST(ImdfLevels, TakeTheirNameOrElseTheirShortName) {
  TestArchive archive;
  archive.floor(0, {"A"}, {{'A', "room"}});
  archive.floor(1, {"A"}, {{'A', "room"}});
  archive.properties("level", "level0")["name"] = {{"en", "Ground floor"}};
  archive.properties("level", "level1")["name"] = {{"en", " "}};
  archive.properties("level", "level1")["short_name"] = {{"en", "L1"}};
  const FloorPlan plan = archive.read();
  EXPECT_EQ(plan.levels.at(0).name, "Ground floor");
  EXPECT_EQ(plan.levels.at(1).name, "L1");
}

/// Two buildings side by side, of which each has a level with ordinal 1.
TestArchive twoBuildings() {
  TestArchive archive;
  archive.floor(1, {"A"}, {{'A', "room"}});
  archive.add("level", "other", boxOf({10, 0}, {11, 1}),
              {{"ordinal", 1}, {"building_ids", {"east"}}, {"name", {{"en", "Level 1"}}}});
  archive.add("unit", "B1", boxOf({10, 0}, {11, 1}), {{"category", "room"}, {"level_id", "other"}});
  archive.add("building", "west", nullptr, {{"name", {{"en", "West wing"}}}});
  archive.add("building", "east", nullptr, {{"name", {{"en", "East wing"}}}});
  archive.properties("level", "level1")["building_ids"] = {"west"};
  archive.properties("level", "level1")["name"] = {{"en", "Level 2"}};
  return archive;
}

TEST(ImdfLevels, OfOneOrdinalAreOneLevel) {
  const FloorPlan plan = twoBuildings().read();
  ASSERT_EQ(plan.levels.size(), 1U);
  EXPECT_EQ(cellOf(plan, "A1").levels, cellOf(plan, "B1").levels);
}

TEST(ImdfLevels, OfOneOrdinalAndDifferentNamesNameTheirBuildings) {
  EXPECT_EQ(twoBuildings().read().levels.at(0).name, "Level 2 (West wing), Level 1 (East wing)");
}

TEST(ImdfLevels, OfOneOrdinalAndTheSameNameNameNoBuilding) {
  TestArchive archive = twoBuildings();
  archive.properties("level", "level1")["name"] = {{"en", "Level 1"}};
  EXPECT_EQ(archive.read().levels.at(0).name, "Level 1");
}

TEST(ImdfLevels, ThePlanIsNamedAfterTheVenueOrElseTheFirstBuilding) {
  TestArchive archive = twoBuildings();
  EXPECT_EQ(archive.read().name, "West wing");
  archive.add("venue", "venue", nullptr, {{"name", {{"en", "Fair"}}}});
  EXPECT_EQ(archive.read().name, "Fair");
}

TEST(ImdfLevels, WithoutTheirFileAreAnError) {
  TestArchive archive = smallArchive();
  archive.file("level.geojson", R"({"type":"FeatureCollection","features":[]})");
  EXPECT_THAT(archive.errorOfReading(),
              HasSubstr("level.geojson: found no levels, expected at least one"));
}

TEST(ImdfLevels, AnOrdinalThatIsNotWholeIsAnErrorWithFileFeatureAndId) {
  TestArchive archive = smallArchive();
  archive.properties("level", "level0")["ordinal"] = 0.5;
  EXPECT_THAT(archive.errorOfReading(),
              HasSubstr("level.geojson: features[0]: ordinal of level \"level0\": found 0.5, "
                        "expected an integer"));
}

TEST(ImdfLevels, AHugeOrdinalIsAnError) {
  TestArchive archive = smallArchive();
  archive.properties("level", "level0")["ordinal"] = 4000000000;
  EXPECT_THAT(archive.errorOfReading(),
              HasSubstr("found 4000000000, expected an integer from -1000 to 1000"));
}

TEST(ImdfLevels, TwoOfOneIdAreAnError) {
  TestArchive archive = smallArchive();
  archive.add("level", "level0", boxOf({0, 0}, {1, 1}), {{"ordinal", 1}});
  EXPECT_THAT(archive.errorOfReading(), HasSubstr("level.geojson: features[1]: id of a level: "
                                                  "found \"level0\", expected an id of its own"));
}

TEST(ImdfLevels, WithoutAnOutlineAreKept) {
  TestArchive archive = smallArchive();
  archive.feature("level", "level0")["geometry"] = nullptr;
  const FloorPlan plan = archive.read();
  EXPECT_EQ(plan.levels.size(), 1U);
  EXPECT_EQ(remarkWith(plan, "level.geojson"),
            "level.geojson: no polygon as its geometry, ignored: \"level0\"");
}

}  // namespace
}  // namespace KorvaniTest
