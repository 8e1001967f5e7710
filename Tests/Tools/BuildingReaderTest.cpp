#include "Building/BuildingReader.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

#include "Building/BuildingGraph.hpp"
#include "Tools/BuildingText.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::Building;
using KorvaniTools::parseBuilding;
using KorvaniTools::readBuilding;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

TEST(BuildingReader, AFileWithoutFeaturesIsAnEmptyBuilding) {
  const Building building = parsed({});
  EXPECT_FALSE(building.name);
  EXPECT_FALSE(building.attribution);
  EXPECT_FALSE(building.licence);
  EXPECT_THAT(building.levelNames, IsEmpty());
  EXPECT_THAT(building.regions, IsEmpty());
  EXPECT_TRUE(building.summary.empty());
}

TEST(BuildingReader, ReadsTheMembersBesideTheFeatures) {
  const Building building = parsed(
      {}, R"("formatVersion":1,"name":"Hall","attribution":"Jo","licence":"CC0","extra":{"a":1},)"
          R"("levels":[{"level":1,"name":"Upper floor","source":"0.5"},{"level":-2}])");
  EXPECT_EQ(building.name, "Hall");
  EXPECT_EQ(building.attribution, "Jo");
  EXPECT_EQ(building.licence, "CC0");
  ASSERT_EQ(building.levelNames.size(), 2U);
  EXPECT_EQ(building.levelNames[0].level, 1);
  EXPECT_EQ(building.levelNames[0].name, "Upper floor");
  EXPECT_EQ(building.levelNames[0].source, "0.5");
  EXPECT_EQ(building.levelNames[1].level, -2);
  EXPECT_FALSE(building.levelNames[1].name);
}

TEST(BuildingReader, ReadsANode) {
  const Building building = parsed({nodeAt(17, -3, 11.25, 48.5)});
  ASSERT_EQ(building.nodes.size(), 1U);
  EXPECT_EQ(building.nodes[0].id, 17);
  EXPECT_EQ(building.nodes[0].level, -3);
  EXPECT_EQ(building.nodes[0].coordinate.latitude, 48.5);
  EXPECT_EQ(building.nodes[0].coordinate.longitude, 11.25);
  EXPECT_EQ(building.nodes[0].feature, 0U);
}

TEST(BuildingReader, RegionsAndPlacesKnowTheirFeatures) {
  const Building building =
      parsed({nodeAt(1, 5, 11, 48), regionOf(0, 10, 47, 11, 48), placeAt("Desk", 0, 11, 48)});
  ASSERT_EQ(building.regions.size(), 2U);
  EXPECT_EQ(building.regions[0].feature, 1U);
  EXPECT_FALSE(building.regions[1].feature);  // made for level 5
  EXPECT_EQ(building.places[0].feature, 2U);
}

TEST(BuildingReader, APositionMayHaveAHeightThatIsIgnored) {
  const Building building =
      parsed({featureOf("node", R"("id":1,"level":0)", "Point", "[11,48,520.5]")});
  EXPECT_EQ(building.nodes[0].coordinate.longitude, 11);
}

TEST(BuildingReader, ANumberEqualToAWholeNumberIsAnInteger) {
  const Building building =
      parsed({featureOf("node", R"("id":2e1,"level":-1.0)", "Point", "[11,48]")});
  EXPECT_EQ(building.nodes[0].id, 20);
  EXPECT_EQ(building.nodes[0].level, -1);
}

TEST(BuildingReader, AnEdgeHasDefaults) {
  const Building building = parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48.1), edgeOf(1, 2)});
  ASSERT_EQ(building.edges.size(), 1U);
  EXPECT_FALSE(building.edges[0].oneway);
  EXPECT_FALSE(building.edges[0].distance);
  EXPECT_EQ(building.edges[0].multiplicator, 1.0);
  EXPECT_TRUE(building.edges[0].barrierFree);
  EXPECT_FALSE(building.edges[0].type);
}

TEST(BuildingReader, ReadsEveryPropertyOfAnEdge) {
  const Building building =
      parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 1, 11, 48),
              edgeOf(2, 1,
                     R"("oneway":true,"distance":7.25,"multiplicator":2,"barrierFree":false,)"
                     R"("type":"stairs")")});
  EXPECT_EQ(building.edges[0].from, 2);
  EXPECT_EQ(building.edges[0].to, 1);
  EXPECT_TRUE(building.edges[0].oneway);
  EXPECT_EQ(building.edges[0].distance, 7.25);
  EXPECT_EQ(building.edges[0].multiplicator, 2.0);
  EXPECT_FALSE(building.edges[0].barrierFree);
  EXPECT_EQ(building.edges[0].type, "stairs");
}

TEST(BuildingReader, NullCountsAsAbsent) {
  const Building building =
      parsed({nodeAt(1, 0, 11, 48, "\"region\":null"),
              edgeOf(1, 1, R"("oneway":null,"distance":null,"multiplicator":null,"type":null)"),
              placeAt("Desk", 0, 11, 48, R"("entrance":null,"phone":null)")},
             R"("name":null,"levels":null)");
  EXPECT_FALSE(building.name);
  EXPECT_EQ(building.edges[0].multiplicator, 1.0);
  EXPECT_FALSE(building.edges[0].type);
  EXPECT_FALSE(building.places[0].entrance);
  EXPECT_TRUE(building.places[0].further.empty());
}

TEST(BuildingReader, WhatAFeatureNamesMayComeLater) {
  const Building building =
      parsed({edgeOf(1, 2), nodeAt(1, 0, 11, 48, R"("region":"Hall")"), nodeAt(2, 0, 11, 48),
              regionOf(0, 10, 47, 12, 49, R"("name":"Hall")")});
  EXPECT_EQ(building.edges.size(), 1U);
  EXPECT_EQ(building.nodes[0].region, 0U);
}

TEST(BuildingReader, ARegionsRectangleIsItsPolygonsBoundingBox) {
  const Building building = parsed({featureOf("region", R"("level":4,"name":"L")", "Polygon",
                                              "[[[11,48],[13,48.5],[12,50]],[[11.5,47.5]]]")});
  ASSERT_EQ(building.regions.size(), 1U);
  EXPECT_EQ(building.regions[0].level, 4);
  EXPECT_EQ(building.regions[0].name, "L");
  EXPECT_FALSE(building.regions[0].made);
  EXPECT_EQ(building.regions[0].rectangle.southWest.latitude, 47.5);
  EXPECT_EQ(building.regions[0].rectangle.southWest.longitude, 11);
  EXPECT_EQ(building.regions[0].rectangle.northEast.latitude, 50);
  EXPECT_EQ(building.regions[0].rectangle.northEast.longitude, 13);
}

TEST(BuildingReader, AnObstacleHasStrengthZeroUnlessItSaysOtherwise) {
  const Building building =
      parsed({wallOf(0, "[[11,48],[11,49]]"), wallOf(0, "[[11,48],[11,49]]", "\"strength\":-40")});
  EXPECT_EQ(building.obstacles[0].strength, 0);
  EXPECT_EQ(building.obstacles[1].strength, -40);
}

TEST(BuildingReader, RingsOfAnObstacleAreClosed) {
  const Building building =
      parsed({featureOf("obstacle", "\"level\":0", "Polygon",
                        "[[[11,48],[12,48],[12,49]],[[11,48],[12,48],[12,49],[11,48]]]")});
  ASSERT_EQ(building.obstacles[0].lines.size(), 2U);
  for (const auto& line : building.obstacles[0].lines) {
    EXPECT_EQ(line.positions.size(), 4U);
    EXPECT_EQ(line.positions.front(), line.positions.back());
  }
}

TEST(BuildingReader, ALineStringStaysOpen) {
  const Building building = parsed({wallOf(0, "[[11,48],[12,48],[12,49]]")});
  EXPECT_EQ(building.obstacles[0].lines[0].positions.size(), 3U);
}

TEST(BuildingReader, APlaceKeepsItsFurtherProperties) {
  const Building building = parsed(
      {placeAt("Caf\xc3\xa9", 2, 11, 48, R"("entrance":true,"phone":"+49","tags":["a",1])")});
  ASSERT_EQ(building.places.size(), 1U);
  EXPECT_EQ(building.places[0].name, "Caf\xc3\xa9");
  EXPECT_EQ(building.places[0].level, 2);
  EXPECT_TRUE(building.places[0].entrance);
  EXPECT_EQ(building.places[0].further.dump(), R"({"phone":"+49","tags":["a",1]})");
  EXPECT_TRUE(building.summary.empty());
}

TEST(BuildingReader, ReadsARoom) {
  const Building building =
      parsed({featureOf("room", R"("level":1,"name":"Lab","category":"office")", "Polygon",
                        "[[[11,48],[12,48],[12,49],[11,48]]]"),
              featureOf("room", "\"level\":2", "Polygon", "[[[11,48]]]")});
  ASSERT_EQ(building.rooms.size(), 2U);
  EXPECT_EQ(building.rooms[0].name, "Lab");
  EXPECT_EQ(building.rooms[0].category, "office");
  EXPECT_EQ(building.rooms[0].rings[0].size(), 4U);
  EXPECT_FALSE(building.rooms[1].name);
}

TEST(BuildingReader, CountsUnknownKindsAndDoesNotLookAtThem) {
  const Building building =
      parsed({featureOf("tree", "", "Sphere", "7"), featureOf("tree", "", "Point", "[999,999]"),
              featureOf("bench", "", "Point", "[11,48]")});
  EXPECT_THAT(building.summary.ignoredKinds, ElementsAre(Pair("bench", 1), Pair("tree", 2)));
}

TEST(BuildingReader, CountsUnknownPropertiesByKind) {
  const Building building =
      parsed({nodeAt(1, 0, 11, 48, R"("colour":"red")"), nodeAt(2, 0, 11, 48, "\"colour\":1"),
              edgeOf(1, 2, R"("region":"x","nothing":null)")});
  EXPECT_THAT(building.summary.ignoredProperties,
              ElementsAre(Pair(Pair("edge", "region"), 1), Pair(Pair("node", "colour"), 2)));
}

TEST(BuildingReader, ReadsAFile) {
  const auto path = std::filesystem::temp_directory_path() / "korvani-reader-test.geojson";
  std::ofstream(path) << buildingText({nodeAt(1, 0, 11, 48)}, R"("name":"Hall")");
  const Building building = readBuilding(path);
  std::filesystem::remove(path);
  EXPECT_EQ(building.name, "Hall");
  EXPECT_EQ(building.nodes.size(), 1U);
}

TEST(BuildingReader, AHundredThousandFeaturesAreReadInSeconds) {
  constexpr int kNodes = 40000;
  std::string text = R"({"type":"FeatureCollection","features":[)";
  for (int i = 0; i < kNodes; ++i) {
    text += nodeAt(i, i % 10, 11 + i * 1e-6, 48 + i * 1e-6) + ",\n";
    if (i > 0) text += edgeOf(i - 1, i) + ",\n";
    if (i % 2 == 0) text += wallOf(i % 10, "[[11,48],[11.01,48.01]]") + ",\n";
  }
  text += placeAt("End", 0, 11, 48) + "]}";
  const auto start = std::chrono::steady_clock::now();
  const Building building = parseBuilding(text, "big");
  const auto graph = KorvaniTools::makeGraph(building);
  const auto elapsed = std::chrono::steady_clock::now() - start;
  EXPECT_EQ(building.nodes.size(), 40000U);
  EXPECT_EQ(building.edges.size(), 39999U);
  EXPECT_EQ(building.obstacles.size(), 20000U);
  EXPECT_EQ(graph->nodes().size(), 40000U);
  // Far above what it takes, so that sanitizers and busy machines do not decide the test.
  EXPECT_LT(elapsed, std::chrono::seconds(60));
}

}  // namespace
}  // namespace KorvaniTest
