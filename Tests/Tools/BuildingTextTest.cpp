#include "Building/BuildingText.hpp"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "Building/BuildingReader.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::Building;
using KorvaniTools::buildingText;
using KorvaniTools::parseBuilding;

/// A building in which every property has another value than its default.
Building fullBuilding() {
  Building building;
  building.name = "Hall \"A\"";
  building.attribution = "© its mappers";
  building.licence = "CC0";
  building.levelNames = {{0, "Ground", "0"}, {1, {}, "0.5"}};
  building.regions = {{0, "ground", {{48, 11}, {48.01, 11.02}}, false},
                      {1, {}, {{48, 11}, {48.01, 11.02}}, false}};
  building.nodes = {{0, 7, 0, {48.001, 11.001}, "ground", 0}, {0, 8, 1, {48.002, 11.003}, {}, 1}};
  building.edges = {{0, 7, 8, true, 12.5, 1.8, false, "stairs"}, {0, 8, 7, false, {}, 1, true, {}}};
  building.obstacles = {{0, 0, 100, "ground", {{{{48.003, 11.001}, {48.003, 11.1 / 3}}, {}}}},
                        {0,
                         1,
                         0,
                         {},
                         {{{{48.004, 11.001}, {48.004, 11.002}, {48.004, 11.001}}, {}},
                          {{{48.005, 11.001}, {48.005, 11.002}, {48.005, 11.001}}, {}}}}};
  building.places = {{"Café", 0, {48.001, 11.001}, true, {{"amenity", "cafe"}, {"seats", 8}}}};
  building.rooms = {{1, "R 1", "office", {{{48, 11}, {48, 11.1}, {48.1, 11}, {48, 11}}}}};
  return building;
}

TEST(BuildingText, ReadBackIsTheSameText) {
  const std::string text = buildingText(fullBuilding());

  EXPECT_EQ(buildingText(parseBuilding(text, "test")), text);
}

TEST(BuildingText, KeepsNamesAndLevels) {
  const Building read = parseBuilding(buildingText(fullBuilding()), "test");

  EXPECT_EQ(read.name, "Hall \"A\"");
  EXPECT_EQ(read.attribution, "© its mappers");
  EXPECT_EQ(read.licence, "CC0");
  ASSERT_EQ(read.levelNames.size(), 2U);
  EXPECT_EQ(read.levelNames[0].name, "Ground");
  EXPECT_EQ(read.levelNames[1].source, "0.5");
  EXPECT_TRUE(read.summary.empty());
}

TEST(BuildingText, KeepsEveryPropertyOfAnEdge) {
  const auto edges = parseBuilding(buildingText(fullBuilding()), "test").edges;

  ASSERT_EQ(edges.size(), 2U);
  EXPECT_EQ(edges[0].from, 7);
  EXPECT_EQ(edges[0].to, 8);
  EXPECT_TRUE(edges[0].oneway);
  EXPECT_EQ(edges[0].distance, 12.5);
  EXPECT_EQ(edges[0].multiplicator, 1.8);
  EXPECT_FALSE(edges[0].barrierFree);
  EXPECT_EQ(edges[0].type, "stairs");
  EXPECT_FALSE(edges[1].oneway);
  EXPECT_FALSE(edges[1].distance);
  EXPECT_TRUE(edges[1].barrierFree);
  EXPECT_FALSE(edges[1].type);
}

TEST(BuildingText, KeepsWallsToTheLastBit) {
  const auto obstacles = parseBuilding(buildingText(fullBuilding()), "test").obstacles;

  ASSERT_EQ(obstacles.size(), 2U);
  EXPECT_EQ(obstacles[0].strength, 100);
  ASSERT_EQ(obstacles[0].lines.size(), 1U);
  EXPECT_EQ(obstacles[0].lines[0].positions[1].longitude, 11.1 / 3);
  EXPECT_EQ(obstacles[1].lines.size(), 2U);
}

TEST(BuildingText, KeepsWhatElseAPlaceHas) {
  const auto places = parseBuilding(buildingText(fullBuilding()), "test").places;

  ASSERT_EQ(places.size(), 1U);
  EXPECT_EQ(places[0].name, "Café");
  EXPECT_TRUE(places[0].entrance);
  EXPECT_EQ(places[0].further, (nlohmann::json{{"amenity", "cafe"}, {"seats", 8}}));
}

TEST(BuildingText, ReplacesBytesThatAreNoUtf8) {
  Building building;
  building.name = "Gate \xFF";

  EXPECT_EQ(parseBuilding(buildingText(building), "test").name, "Gate \xEF\xBF\xBD");
}

TEST(BuildingText, LeavesOutRegionsThatTheReaderMakes) {
  Building building;
  building.nodes = {{0, 1, 3, {48, 11}, {}, 0}};
  const std::string text = buildingText(building);
  const Building read = parseBuilding(text, "test");
  ASSERT_EQ(read.regions.size(), 1U);
  ASSERT_TRUE(read.regions[0].made);

  EXPECT_EQ(buildingText(read), text);
}

}  // namespace
}  // namespace KorvaniTest
