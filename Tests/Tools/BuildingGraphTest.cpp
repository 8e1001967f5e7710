#include "Building/BuildingGraph.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Support/FacadeFixture.hpp"
#include "Tools/BuildingText.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::makeGraph;
using testing::ElementsAre;

class BuildingGraph : public FacadeFixture {};

TEST_F(BuildingGraph, HasRegionsWithLevelAndCornersInFileOrder) {
  const auto graph = makeGraph(parsed({regionOf(5, 11, 48, 12, 49), regionOf(-1, 10, 47, 12, 49)}));
  ASSERT_EQ(graph->regions().size(), 2U);
  EXPECT_EQ(graph->regions()[0]->level(), 5);
  EXPECT_EQ(graph->regions()[0]->southWestCoordinate().latitude, 48);
  EXPECT_EQ(graph->regions()[0]->southWestCoordinate().longitude, 11);
  EXPECT_EQ(graph->regions()[0]->northEastCoordinate().latitude, 49);
  EXPECT_EQ(graph->regions()[0]->northEastCoordinate().longitude, 12);
  EXPECT_EQ(graph->regions()[1]->level(), -1);
  EXPECT_EQ(graph->regions()[0]->graph(), graph);
}

TEST_F(BuildingGraph, HasNodesInFileOrderEachWithItsRegion) {
  const auto graph =
      makeGraph(parsed({nodeAt(9, 1, 11, 48), nodeAt(2, 0, 11, 48.5), nodeAt(5, 1, 11.5, 48)}));
  EXPECT_THAT(graph->nodes().keys(), ElementsAre(9, 2, 5));
  const auto node = graph->nodeWithIdentifier(2);
  EXPECT_EQ(node->coordinate().latitude, 48.5);
  EXPECT_EQ(node->level(), 0);
  EXPECT_EQ(node->region(), graph->regions()[0]);
  EXPECT_TRUE(graph->regions()[1]->nodes().contains(9));
}

TEST_F(BuildingGraph, AnEdgeIsEnteredInBothDirections) {
  const auto graph = makeGraph(parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48.001),
                                       edgeOf(1, 2,
                                              R"("distance":7,"multiplicator":2.5,)"
                                              R"("barrierFree":false,"type":"steps")")}));
  for (const auto& [from, to] : {std::pair(1, 2), std::pair(2, 1)}) {
    const auto edge = graph->edgeFromNodeWithIdentifier(from, to);
    ASSERT_TRUE(edge);
    EXPECT_EQ(edge->start(), graph->nodeWithIdentifier(from));
    EXPECT_EQ(edge->end(), graph->nodeWithIdentifier(to));
    EXPECT_EQ(edge->distance(), 7);
    EXPECT_EQ(edge->multiplicator(), 2.5);
    EXPECT_FALSE(edge->isBarrierFree());
    EXPECT_EQ(edge->type(), "steps");
  }
}

TEST_F(BuildingGraph, AOneWayEdgeIsEnteredInItsDirectionOnly) {
  const auto graph = makeGraph(
      parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48.001), edgeOf(1, 2, "\"oneway\":true")}));
  EXPECT_TRUE(graph->edgeFromNodeWithIdentifier(1, 2));
  EXPECT_FALSE(graph->edgeFromNodeWithIdentifier(2, 1));
}

TEST_F(BuildingGraph, EdgesWithoutDistanceTakeTheEnginesOwn) {
  const auto building = parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 1, 11, 48), edgeOf(1, 2)});
  EXPECT_EQ(makeGraph(building)->edgeFromNodeWithIdentifier(1, 2)->distance(), 3.0);
  config().setLevelHeight(4.5);
  EXPECT_EQ(makeGraph(building)->edgeFromNodeWithIdentifier(1, 2)->distance(), 4.5);
  EXPECT_FALSE(makeGraph(building)->edgeFromNodeWithIdentifier(1, 2)->type());
}

TEST_F(BuildingGraph, NeighboursComeInTheOrderOfTheFile) {
  const auto graph =
      makeGraph(parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48), nodeAt(3, 0, 11, 48),
                        nodeAt(4, 0, 11, 48), edgeOf(4, 1), edgeOf(1, 3), edgeOf(2, 1)}));
  EXPECT_EQ(graph->neighbourIdentifiersOfNodeWithIdentifier(1),
            (std::vector<std::int64_t>{4, 3, 2}));
  EXPECT_THAT(graph->edges().keys(), ElementsAre(4, 1, 3, 2));
}

TEST_F(BuildingGraph, TheLaterOfTwoEdgesBetweenTheSameNodesHolds) {
  const auto graph =
      makeGraph(parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48), edgeOf(1, 2, "\"distance\":5"),
                        edgeOf(2, 1, "\"distance\":6")}));
  EXPECT_EQ(graph->edgeFromNodeWithIdentifier(1, 2)->distance(), 6);
}

TEST_F(BuildingGraph, ObstaclesLieInEveryRegionTheyTouch) {
  const auto graph = makeGraph(parsed({regionOf(0, 10, 47, 11, 48), regionOf(0, 12, 47, 13, 48),
                                       wallOf(0, "[[10.5,47.5],[12.5,47.5]]", "\"strength\":40"),
                                       wallOf(0, "[[12.5,47.5],[12.6,47.5]]")}));
  ASSERT_EQ(graph->regions()[0]->obstacles().size(), 1U);
  ASSERT_EQ(graph->regions()[1]->obstacles().size(), 2U);
  const auto wall = graph->regions()[0]->obstacles()[0];
  EXPECT_EQ(graph->regions()[1]->obstacles()[0], wall);
  EXPECT_EQ(wall->strength(), 40);
  EXPECT_TRUE(wall->hasStrength());
  EXPECT_EQ(wall->coordinateAt(1).longitude, 12.5);
  EXPECT_FALSE(graph->regions()[1]->obstacles()[1]->hasStrength());
}

TEST_F(BuildingGraph, EachRingOfAPolygonIsAnObstacle) {
  const auto graph =
      makeGraph(parsed({featureOf("obstacle", "\"level\":0", "Polygon",
                                  "[[[10,47],[13,47],[13,48]],[[11,47.1],[12,47.1],[12,47.2]]]")}));
  ASSERT_EQ(graph->regions()[0]->obstacles().size(), 2U);
  EXPECT_EQ(graph->regions()[0]->obstacles()[0]->coordinates().size(), 4U);
}

}  // namespace
}  // namespace KorvaniTest
