#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Building/BuildingReader.hpp"
#include "Tools/BuildingText.hpp"

/// Which regions nodes and obstacles go into.

namespace KorvaniTest {
namespace {

using KorvaniTools::Building;
using KorvaniTools::Coordinate;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string kWest = regionOf(0, 10, 47, 11, 48, R"("name":"West")");
const std::string kEast = regionOf(0, 12, 47, 13, 48, R"("name":"East")");

TEST(BuildingRegions, ANodeGoesIntoTheFirstRegionOfItsLevelThatContainsIt) {
  const Building building = parsed({regionOf(1, 0, 0, 20, 80), kEast, regionOf(0, 0, 0, 20, 80),
                                    kWest, nodeAt(1, 0, 12.5, 47.5), nodeAt(2, 0, 10.5, 47.5)});
  EXPECT_EQ(building.nodes[0].region, 1U);
  EXPECT_EQ(building.nodes[1].region, 2U);
}

TEST(BuildingRegions, ABorderBelongsToTheRegion) {
  const Building building = parsed({kWest, kEast, nodeAt(1, 0, 12, 48)});
  EXPECT_EQ(building.nodes[0].region, 1U);
}

TEST(BuildingRegions, ANodeThatNamesARegionGoesThereEvenFromOutside) {
  const Building building = parsed({kWest, kEast, nodeAt(1, 0, 10.5, 47.5, R"("region":"East")")});
  EXPECT_EQ(building.nodes[0].region, 1U);
}

TEST(BuildingRegions, ANodeOutsideGoesToTheNearestSouthWestOrNorthEastCorner) {
  // Just outside the east region's north-west corner, which does not count: its two corners
  // that do are farther away than the north-east one of the west region.
  const Building building = parsed({kEast, kWest, nodeAt(1, 0, 11.4, 48.1)});
  EXPECT_EQ(building.nodes[0].region, 1U);
  const Building other = parsed({kWest, kEast, nodeAt(1, 0, 12, 46.9)});
  EXPECT_EQ(other.nodes[0].region, 1U);
}

TEST(BuildingRegions, EquallyNearCornersGiveTheEarlierRegion) {
  const Building building =
      parsed({regionOf(0, 10, 47, 11, 48), regionOf(0, 10, 47, 11, 48), nodeAt(1, 0, 11.5, 48)});
  EXPECT_EQ(building.nodes[0].region, 0U);
}

TEST(BuildingRegions, RegionsOfOtherLevelsAreNeverTaken) {
  const Building building =
      parsed({regionOf(1, 10, 47, 11, 48), regionOf(0, 50, 0, 51, 1), nodeAt(1, 0, 10.5, 47.5)});
  EXPECT_EQ(building.nodes[0].region, 1U);
}

TEST(BuildingRegions, AnObstacleGoesIntoEveryRegionItsBoxTouches) {
  const Building building =
      parsed({kWest, regionOf(1, 0, 0, 20, 80), kEast, wallOf(0, "[[10.5,47.5],[12,47.5]]")});
  EXPECT_THAT(building.obstacles[0].lines[0].regions, ElementsAre(0, 2));
}

TEST(BuildingRegions, ItIsTheObstaclesBoxThatTouches) {
  // The line itself passes outside the corner of the region.
  const Building building = parsed({kWest, wallOf(0, "[[9,47.9],[10.1,49]]")});
  EXPECT_THAT(building.obstacles[0].lines[0].regions, ElementsAre(0));
}

TEST(BuildingRegions, AnObstacleThatNamesARegionGoesThereAlone) {
  const Building building =
      parsed({kWest, kEast, wallOf(0, "[[10.5,47.5],[12.5,47.5]]", R"("region":"East")")});
  EXPECT_THAT(building.obstacles[0].lines[0].regions, ElementsAre(1));
}

TEST(BuildingRegions, ALineThatTouchesNoRegionIsDroppedAndCounted) {
  const Building building = parsed({kWest, wallOf(0, "[[50,1],[51,1]]")});
  EXPECT_THAT(building.obstacles[0].lines, IsEmpty());
  EXPECT_EQ(building.summary.droppedObstacleLines, 1U);
  ASSERT_EQ(building.obstacles[0].droppedLines.size(), 1U);
  EXPECT_THAT(building.obstacles[0].droppedLines[0],
              ElementsAre(Coordinate{1, 50}, Coordinate{1, 51}));
}

TEST(BuildingRegions, EachRingIsAssignedByItsOwnBox) {
  const Building building = parsed(
      {kWest, kEast,
       featureOf("obstacle", "\"level\":0", "Polygon",
                 "[[[10.2,47.2],[10.3,47.2],[10.3,47.3]],[[12.2,47.2],[12.3,47.2],[12.3,47.3]],"
                 "[[50,1],[51,1],[51,2]]]")});
  ASSERT_EQ(building.obstacles[0].lines.size(), 2U);
  EXPECT_THAT(building.obstacles[0].lines[0].regions, ElementsAre(0));
  EXPECT_THAT(building.obstacles[0].lines[1].regions, ElementsAre(1));
  EXPECT_EQ(building.summary.droppedObstacleLines, 1U);
  ASSERT_EQ(building.obstacles[0].droppedLines.size(), 1U);
  EXPECT_EQ(building.obstacles[0].droppedLines[0].size(), 4U);  // the ring was closed
}

TEST(BuildingRegions, ALevelWithoutRegionGetsOneAroundItsNodesAndObstacles) {
  const Building building = parsed({nodeAt(1, 2, 11, 48), nodeAt(2, 2, 11.5, 48.2),
                                    wallOf(2, "[[10.5,48.1],[11,47.5]]"), nodeAt(3, -1, 1, 2)});
  ASSERT_EQ(building.regions.size(), 2U);
  EXPECT_EQ(building.regions[0].level, -1);
  EXPECT_EQ(building.regions[1].level, 2);
  EXPECT_TRUE(building.regions[1].made);
  EXPECT_FALSE(building.regions[1].name);
  EXPECT_EQ(building.regions[1].rectangle.southWest.latitude, 47.5);
  EXPECT_EQ(building.regions[1].rectangle.southWest.longitude, 10.5);
  EXPECT_EQ(building.regions[1].rectangle.northEast.latitude, 48.2);
  EXPECT_EQ(building.regions[1].rectangle.northEast.longitude, 11.5);
  EXPECT_EQ(building.nodes[1].region, 1U);
  EXPECT_THAT(building.obstacles[0].lines[0].regions, ElementsAre(1));
  EXPECT_THAT(building.summary.madeRegions, ElementsAre(-1, 2));
}

TEST(BuildingRegions, MadeRegionsComeAfterThoseOfTheFileByAscendingLevel) {
  const Building building = parsed({nodeAt(1, 3, 11, 48), nodeAt(2, -5, 11, 48),
                                    regionOf(9, 10, 47, 12, 49), regionOf(0, 10, 47, 12, 49)});
  ASSERT_EQ(building.regions.size(), 4U);
  EXPECT_EQ(building.regions[0].level, 9);
  EXPECT_EQ(building.regions[1].level, 0);
  EXPECT_EQ(building.regions[2].level, -5);
  EXPECT_EQ(building.regions[3].level, 3);
}

TEST(BuildingRegions, PlacesAndRoomsAloneMakeNoRegion) {
  const Building building = parsed(
      {placeAt("Desk", 4, 11, 48), featureOf("room", "\"level\":5", "Polygon", "[[[1,2]]]")});
  EXPECT_THAT(building.regions, IsEmpty());
}

}  // namespace
}  // namespace KorvaniTest
