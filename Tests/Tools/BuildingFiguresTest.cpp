#include "Building/BuildingFigures.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/BuildingText.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::figuresOf;
using testing::ElementsAre;
using testing::Pair;

TEST(BuildingFigures, CountWhatEachLevelHas) {
  const auto figures = figuresOf(parsed(
      {nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48), nodeAt(3, 1, 11, 48), edgeOf(1, 2), edgeOf(2, 3),
       wallOf(0, "[[11,48],[12,48]]"), placeAt("A", 1, 11, 48, "\"entrance\":true"),
       placeAt("B", 1, 11, 48), featureOf("room", "\"level\":1", "Polygon", "[[[11,48]]]")},
      R"("levels":[{"level":7,"name":"Roof"}])"));
  ASSERT_EQ(figures.levels.size(), 3U);
  const auto& ground = figures.levels.at(0);
  EXPECT_EQ(ground.regions, 1U);
  EXPECT_EQ(ground.nodes, 2U);
  EXPECT_EQ(ground.edges, 1U);
  EXPECT_EQ(ground.connections, 1U);
  EXPECT_EQ(ground.obstacles, 1U);
  EXPECT_EQ(ground.places, 0U);
  const auto& upper = figures.levels.at(1);
  EXPECT_EQ(upper.edges, 0U);
  EXPECT_EQ(upper.connections, 1U);
  EXPECT_EQ(upper.places, 2U);
  EXPECT_EQ(upper.rooms, 1U);
  EXPECT_EQ(figures.entrances, 1U);
}

TEST(BuildingFigures, CountEdgesByTheirProperties) {
  const auto figures =
      figuresOf(parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48), edgeOf(1, 2, "\"oneway\":true"),
                        edgeOf(1, 2, R"("type":"stairs","barrierFree":false)"),
                        edgeOf(2, 1, R"("type":"lift")"), edgeOf(2, 1, R"("type":"lift")")}));
  EXPECT_EQ(figures.oneway, 1U);
  EXPECT_EQ(figures.barrierFree, 3U);
  EXPECT_THAT(figures.edgeTypes, ElementsAre(Pair("lift", 2), Pair("stairs", 1)));
}

TEST(BuildingFigures, ComponentsLeaveDirectionsAside) {
  const auto figures =
      figuresOf(parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48), nodeAt(3, 0, 11, 48),
                        nodeAt(4, 0, 11, 48), nodeAt(5, 0, 11, 48), edgeOf(1, 2, "\"oneway\":true"),
                        edgeOf(3, 2, "\"oneway\":true"), edgeOf(4, 5)}));
  EXPECT_EQ(figures.components.count, 2U);
  EXPECT_EQ(figures.components.largest, 3U);
}

TEST(BuildingFigures, StepFreeComponentsUseBarrierFreeEdgesOnly) {
  const auto figures =
      figuresOf(parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48), nodeAt(3, 0, 11, 48),
                        edgeOf(1, 2), edgeOf(2, 3, "\"barrierFree\":false")}));
  EXPECT_EQ(figures.components.count, 1U);
  EXPECT_EQ(figures.stepFree.count, 2U);
  EXPECT_EQ(figures.stepFree.largest, 2U);
}

TEST(BuildingFigures, ObstaclesOutsideEveryRegionDoNotCount) {
  const auto figures =
      figuresOf(parsed({regionOf(0, 10, 47, 11, 48), wallOf(0, "[[50,1],[51,1]]")}));
  EXPECT_EQ(figures.obstacles, 0U);
}

TEST(BuildingFigures, OfAnEmptyBuildingAreZero) {
  const auto figures = figuresOf(parsed({}));
  EXPECT_TRUE(figures.levels.empty());
  EXPECT_EQ(figures.components.count, 0U);
}

}  // namespace
}  // namespace KorvaniTest
