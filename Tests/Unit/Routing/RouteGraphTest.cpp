#include "Navigation/Routing/RouteTrack.hpp"

#include <gtest/gtest.h>

#include <utility>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Routing/RemainingSteps.hpp"
#include "Navigation/Routing/Route.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/PlacedBuilding.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::RouteTrack;
using KorvaniNavigation::Step;
using Identifiers = std::vector<std::int64_t>;

std::shared_ptr<KRVNavGraph> graphOf(const std::vector<Step>& steps) {
  return RouteTrack(Route(steps).remainingSteps()).graph();
}

class RouteGraph : public FacadeFixture {
 protected:
  std::shared_ptr<KRVNavGraph> build(const std::vector<Step>& steps) {
    provide(building.graph());
    return graphOf(steps);
  }

  /// The route graph of plain steps over these points.
  std::shared_ptr<KRVNavGraph> buildOver(const std::vector<PointPtr>& points) {
    std::vector<Step> steps;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
      steps.emplace_back(points[i], points[i + 1], 10.0);
    }
    return build(steps);
  }

  static std::vector<std::int64_t> levelsOf(const KRVNavGraph& graph) {
    std::vector<std::int64_t> levels;
    for (const auto& region : graph.regions()) levels.push_back(region->level());
    return levels;
  }

  PlacedBuilding building;
};

TEST_F(RouteGraph, OfARouteWithoutStepsIsEmpty) {
  const auto graph = build({});
  EXPECT_TRUE(graph->regions().empty());
  EXPECT_TRUE(graph->nodes().empty());
}

TEST_F(RouteGraph, HasOneRegionForEachLevelInTheOrderOfTheRoute) {
  const auto graph =
      buildOver({building.node(0, 0, 2), building.node(0, 5, 2), building.node(0, 9, -1),
                 building.node(5, 9, -1), building.node(5, 5, 2), building.node(9, 9, 2)});
  EXPECT_EQ(levelsOf(*graph), (Identifiers{2, -1}));
  EXPECT_EQ(graph->regions()[0]->nodes().keys(), (Identifiers{1, 2, 5, 6}));
  EXPECT_EQ(graph->regions()[1]->nodes().keys(), (Identifiers{3, 4}));
  EXPECT_EQ(graph->nodes().keys(), (Identifiers{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(graph->regions()[0]->graph(), graph);
}

TEST_F(RouteGraph, SharesTheObstaclesOfTheBuildingsRegions) {
  const auto ground = building.wall(5, 5, 6, 6, 0);
  const auto other = building.wall(7, 5, 8, 6, 0);
  const auto upper = building.wall(9, 5, 9, 6, 1);
  const auto graph =
      buildOver({building.node(0, 0, 0), building.node(0, 5, 1), building.node(0, 9, 1)});
  ASSERT_EQ(levelsOf(*graph), (Identifiers{0, 1}));
  EXPECT_EQ(graph->regions()[0]->obstacles(), (std::vector{ground, other}));
  EXPECT_EQ(graph->regions()[1]->obstacles(), (std::vector{upper}));
}

TEST_F(RouteGraph, HasTheRegionWithObstaclesOfALevelOnWhichTheRouteOnlyEnds) {
  const auto upper = building.wall(9, 5, 9, 6, 3);
  const auto graph = buildOver({building.node(0, 0, 0), building.node(0, 5, 3)});
  ASSERT_EQ(levelsOf(*graph), (Identifiers{0, 3}));
  EXPECT_EQ(graph->regions()[1]->nodes().keys(), Identifiers{2});
  EXPECT_EQ(graph->regions()[1]->obstacles(), (std::vector{upper}));
}

TEST_F(RouteGraph, TakesObstaclesOnceFromTheRegionWhereALevelIsFirstEntered) {
  // Two regions on level 0, each with a wall of its own; level 0 is left and entered again.
  const auto east = std::make_shared<KRVNavRegion>(0);
  east->setSouthWestCoordinate(building.place(0, 2000));
  east->setNorthEastCoordinate(building.place(10, 2100));
  const std::vector<CLLocationCoordinate2D> ends{building.place(0, 2001), building.place(1, 2001)};
  const auto eastWall = std::make_shared<KRVNavObstacle>(ends);
  east->addObstacle(eastWall);
  building.graph()->add(east);
  building.wall(5, 5, 6, 6, 0);
  building.region(1);
  const auto graph = buildOver({building.position(5, 2050, 0), building.position(5, 2060, 1),
                                building.position(5, 5, 0), building.position(5, 9, 0)});
  ASSERT_EQ(levelsOf(*graph), (Identifiers{0, 1}));
  EXPECT_EQ(graph->regions()[0]->obstacles(), (std::vector{eastWall}));
}

TEST_F(RouteGraph, TakesObstaclesFromTheNearestRegionWhereNoneContainsThePoint) {
  const auto wall = building.wall(5, 5, 6, 6, 0);
  const auto graph = buildOver({building.position(5000, 0, 7), building.position(5001, 0, 7)});
  ASSERT_EQ(levelsOf(*graph), Identifiers{7});
  EXPECT_EQ(graph->regions()[0]->obstacles(), (std::vector{wall}));
}

TEST_F(RouteGraph, HasNoObstaclesWhereTheBuildingHasNoRegion) {
  provide(std::make_shared<KRVNavGraph>());
  const auto graph = graphOf({Step(at(48, 11), at(48, 11.001), 5)});
  ASSERT_EQ(levelsOf(*graph), Identifiers{0});
  EXPECT_TRUE(graph->regions()[0]->obstacles().empty());
}

TEST_F(RouteGraph, HoldsCopiesAndLeavesTheProvidedGraphAsItIs) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 5);
  const auto c = building.node(5, 5);
  building.join(a, b);
  building.join(b, c);
  const auto graph = buildOver({a, b, c});
  for (const auto& point : {a, b, c}) {
    const auto copy = graph->nodeWithIdentifier(point->identifier());
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy, point);
    EXPECT_EQ(copy->coordinate(), point->coordinate());
    EXPECT_EQ(copy->level(), point->level());
    EXPECT_EQ(copy->region(), graph->regions()[0]);
    EXPECT_EQ(point->region(), building.region(0));
  }
  EXPECT_EQ(b->neighbourEdges().size(), 2U);
  EXPECT_EQ(building.graph()->regions().size(), 1U);
  EXPECT_EQ(building.graph()->nodes().size(), 3U);
  EXPECT_EQ(building.region(0)->nodes().size(), 3U);
  EXPECT_EQ(*building.region(0)->nodes().find(1), a);
}

TEST_F(RouteGraph, GivesPointsWithoutIdentifierNegativeOnesOfTheirOwn) {
  const auto start = building.position(0, -5);
  const auto a = building.node(0, 0);
  const auto end = building.position(0, 5);
  const auto graph = buildOver({start, a, end});
  EXPECT_EQ(graph->nodes().keys(), (Identifiers{-2, 1, -3}));
  EXPECT_EQ(graph->nodeWithIdentifier(-2)->coordinate(), start->coordinate());
  EXPECT_EQ(graph->nodeWithIdentifier(-3)->coordinate(), end->coordinate());
  EXPECT_EQ(start->identifier(), -1);
  EXPECT_EQ(end->identifier(), -1);
}

TEST_F(RouteGraph, KeepsApartPointsWithoutIdentifierAtTheSamePlace) {
  const auto graph = buildOver({building.position(0, 5), building.position(0, 5)});
  EXPECT_EQ(graph->nodes().keys(), (Identifiers{-2, -3}));
  EXPECT_NE(graph->edgeFromNodeWithIdentifier(-2, -3), nullptr);
}

TEST_F(RouteGraph, CopiesAPointThatTheRoutePassesTwiceOnce) {
  const auto start = building.position(0, -5);
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 5);
  const auto graph = buildOver({start, a, b, a, start});
  EXPECT_EQ(graph->nodes().size(), 3U);
  EXPECT_EQ(graph->edgeFromNodeWithIdentifier(1, 2)->end(),
            graph->edgeFromNodeWithIdentifier(2, 1)->start());
  EXPECT_EQ(graph->edgeFromNodeWithIdentifier(1, -2)->end(), graph->nodeWithIdentifier(-2));
}

TEST_F(RouteGraph, HasAnEdgeForEveryStepInWalkingDirection) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 5);
  const auto c = building.node(5, 5);
  building.join(a, b);
  building.join(b, c);
  building.join(a, c);
  const auto graph = build({Step(a, b, 12.5, false, 1.75, "ramp"), Step(b, c, 4.0)});
  const auto ramp = graph->edgeFromNodeWithIdentifier(1, 2);
  ASSERT_NE(ramp, nullptr);
  EXPECT_EQ(ramp->start(), graph->nodeWithIdentifier(1));
  EXPECT_EQ(ramp->end(), graph->nodeWithIdentifier(2));
  EXPECT_EQ(ramp->distance(), 12.5);
  EXPECT_EQ(ramp->multiplicator(), 1.75);
  EXPECT_FALSE(ramp->isBarrierFree());
  EXPECT_EQ(ramp->type(), "ramp");
  const auto plain = graph->edgeFromNodeWithIdentifier(2, 3);
  ASSERT_NE(plain, nullptr);
  EXPECT_EQ(plain->type(), "");
  EXPECT_TRUE(plain->isBarrierFree());
  EXPECT_EQ(graph->edgeFromNodeWithIdentifier(2, 1), nullptr);
  EXPECT_EQ(graph->edgeFromNodeWithIdentifier(1, 3), nullptr);
  EXPECT_EQ(graph->nodeWithIdentifier(3)->neighbourEdges().size(), 0U);
  EXPECT_EQ(graph->nodeWithIdentifier(2)->neighbourEdges(), (std::vector{plain}));
}

TEST_F(RouteGraph, LivesOnWithoutTheRoute) {
  auto start = building.position(0, -5);
  auto end = building.position(0, 5);
  const auto graph = buildOver({start, end});
  start.reset();
  end.reset();
  EXPECT_EQ(graph->edgeFromNodeWithIdentifier(-2, -3)->end()->coordinate(), building.place(0, 5));
}

// As the active routing task shows it.

class GraphForRoute : public FacadeFixture {
 protected:
  TextBuilding building{R"(
    A----B----C
              |
    D---------E)"};
};

TEST_F(GraphForRoute, IsTheWholeGraphWhileThereIsNoRoute) {
  const auto task = navigation().routingTask(building.point("A"), {building.point("E")}, {});
  EXPECT_EQ(task->graphForRoute(), nullptr);
  provide(building.graph());
  EXPECT_EQ(task->graphForRoute(), building.graph());
}

TEST_F(GraphForRoute, IsTheSameObjectUntilTheRouteChanges) {
  provide(building.graph());
  const auto task = guide(building.point("A"), {building.point("E")});
  const auto first = task->graphForRoute();
  EXPECT_NE(first, building.graph());
  EXPECT_EQ(task->graphForRoute(), first);
  deliveries().back().update->updateStartPoint(building.position(0, 7, 0));
  pump();
  EXPECT_NE(task->graphForRoute(), first);
}

TEST_F(GraphForRoute, IsThatOfTheRouteWhateverBecomesOfTheBuildingBeforeItIsReadFirst) {
  provide(building.graph());
  const auto task = guide(building.point("A"), {building.point("E")});
  const auto before = building.point("A")->coordinate();
  building.point("A")->setCoordinate({0, 0});
  building.region(0)->addObstacle(std::make_shared<KRVNavObstacle>(
      std::vector<CLLocationCoordinate2D>{fromOrigin(50, 50), fromOrigin(60, 60)}));
  const auto graph = task->graphForRoute();
  EXPECT_EQ(graph->regions()[0]->nodes().begin()->second->coordinate(), before);
  EXPECT_TRUE(graph->regions()[0]->obstacles().empty());
}

TEST_F(GraphForRoute, TakesItsObstaclesFromTheBuildingWhileAnotherRouteIsActive) {
  building.region(0)->addObstacle(std::make_shared<KRVNavObstacle>(
      std::vector<CLLocationCoordinate2D>{fromOrigin(50, 50), fromOrigin(60, 60)}));
  provide(building.graph());
  const auto task = guide(building.point("A"), {building.point("E")});
  const auto first = task->graphForRoute();
  std::as_const(*first).regions()[0]->obstacles().clear();
  const auto graph = graphOf({Step(building.point("D"), building.point("E"), 5)});
  EXPECT_EQ(graph->regions()[0]->obstacles().size(), 1U);
}

}  // namespace
}  // namespace KorvaniTest
