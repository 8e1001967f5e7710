#include "Navigation/Graph/GraphAccess.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Support/Points.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::CLLocationCoordinate2D;
using KorvaniNavigation::GraphAccess;
using KorvaniNavigation::KRVNavEdge;
using KorvaniNavigation::KRVNavGraph;
using KorvaniNavigation::KRVNavObstacle;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::KRVNavRegion;
using KorvaniNavigation::RevisionStamp;

/// Two nodes of one region, an edge between them and a wall, all of them watched.
class GraphAccessTest : public testing::Test {
 protected:
  GraphAccessTest() {
    graph->add(region);
    region->addNode(a);
    region->addNode(b);
    region->addObstacle(wall);
    graph->addEdge(edge, *a, *b);
    GraphAccess::watch(*a);
    GraphAccess::watch(*edge, *graph);
    GraphAccess::watch(*wall);
    GraphAccess::watch(*region, *graph);
  }

  RevisionStamp structure() const { return GraphAccess::structureStamp(*graph); }
  RevisionStamp costs() const { return GraphAccess::costStamp(*graph); }
  RevisionStamp nodes() const { return GraphAccess::nodesStamp(*region); }
  static RevisionStamp obstacles() { return GraphAccess::obstaclesStamp(); }

  /// Which of the four stamps grow with a change, as letters.
  std::string grown(const std::function<void()>& change) const {
    const RevisionStamp before[] = {structure(), costs(), nodes(), obstacles()};
    change();
    std::string letters;
    if (structure() > before[0]) letters += 'S';
    if (costs() > before[1]) letters += 'C';
    if (nodes() > before[2]) letters += 'N';
    if (obstacles() > before[3]) letters += 'O';
    return letters;
  }

  std::shared_ptr<KRVNavGraph> graph = std::make_shared<KRVNavGraph>();
  std::shared_ptr<KRVNavRegion> region = std::make_shared<KRVNavRegion>(0);
  std::shared_ptr<KRVNavPoint> a = at(0, 0, 0, 1);
  std::shared_ptr<KRVNavPoint> b = at(0, 0.001, 0, 2);
  std::shared_ptr<KRVNavEdge> edge = std::make_shared<KRVNavEdge>(a, b);
  std::shared_ptr<KRVNavObstacle> wall =
      std::make_shared<KRVNavObstacle>(std::vector<CLLocationCoordinate2D>{{0, 0}, {1, 1}});
};

TEST_F(GraphAccessTest, EveryChangeOfTheGraphsContainersChangesItsStructure) {
  EXPECT_EQ(grown([&] { graph->addEdge(edge, *b, *a); }), "SC");
  EXPECT_EQ(grown([&] { graph->edges()[2].remove(1); }), "SC");
  EXPECT_EQ(grown([&] { graph->edges().row(1).set(2, nullptr); }), "SC");
  EXPECT_EQ(grown([&] { graph->nodes().remove(2); }), "SC");
  EXPECT_EQ(grown([&] { graph->add(std::make_shared<KRVNavRegion>(1)); }), "SC");
  EXPECT_EQ(grown([&] { graph->regions().clear(); }), "SC");
  EXPECT_EQ(grown([&] { graph->setEdges({}); }), "SC");
  EXPECT_EQ(grown([&] { graph->setNodes({}); }), "SC");
  EXPECT_EQ(grown([&] { graph->setRegions({region}); }), "SC");
}

TEST_F(GraphAccessTest, ARowThatWasHandedOutBeforeOthersMovedItStillCounts) {
  for (std::int64_t number = 10; number < 50; ++number) graph->edges()[number].set(1, edge);
  EXPECT_EQ(grown([&] { graph->edges()[1].set(2, edge); }), "SC");
}

TEST_F(GraphAccessTest, EveryChangeOfAnEdgeCounts) {
  EXPECT_EQ(grown([&] { edge->setStart(b); }), "SC");
  EXPECT_EQ(grown([&] { edge->setEnd(a); }), "SC");
  EXPECT_EQ(grown([&] { edge->setDistance(7); }), "C");
  EXPECT_EQ(grown([&] { edge->setMultiplicator(2); }), "C");
  EXPECT_EQ(grown([&] { edge->setIsBarrierFree(false); }), "C");
}

TEST_F(GraphAccessTest, EveryChangeOfAPointCounts) {
  EXPECT_EQ(grown([&] { a->setIdentifier(9); }), "SCN");
  EXPECT_EQ(grown([&] { a->setIdentifierNumber(9); }), "SCN");
  EXPECT_EQ(grown([&] { a->setCoordinate({1, 1}); }), "SCN");
  EXPECT_EQ(grown([&] { a->setLevel(3); }), "SCN");
  EXPECT_EQ(grown([&] { a->setLocation(a->location()); }), "SCN");
  EXPECT_EQ(grown([&] { a->setRegion(nullptr); }), "SCN");
  EXPECT_EQ(grown([&] { std::make_shared<KRVNavRegion>(4)->addNode(a); }), "SCN");
}

TEST_F(GraphAccessTest, EveryChangeOfARegionsNodesAndGraphCounts) {
  EXPECT_EQ(grown([&] { region->nodes().remove(2); }), "N");
  EXPECT_EQ(grown([&] { region->setNodes({}); }), "N");
  EXPECT_EQ(grown([&] { region->addNode(at(0, 1, 0, 5)); }), "SCN");
  EXPECT_EQ(grown([&] { region->setGraph(nullptr); }), "SC");
}

TEST_F(GraphAccessTest, AChangeOfAnObstaclesCoordinatesCounts) {
  EXPECT_EQ(grown([&] { wall->setCoordinates({{2, 2}, {3, 3}}); }), "O");
}

TEST_F(GraphAccessTest, WhatNothingIsComputedFromDoesNotCount) {
  EXPECT_EQ(grown([&] {
              edge->setType("stairs");
              wall->setStrength(4);
              wall->setHasStrength(true);
              region->setLevel(1);
              region->setNorthEastCoordinate({1, 1});
              region->setSouthWestCoordinate({0, 0});
            }),
            "");
}

TEST_F(GraphAccessTest, ReadingDoesNotCount) {
  EXPECT_EQ(grown([&] {
              EXPECT_EQ(graph->edges().find(1)->size(), 1U);
              EXPECT_EQ(graph->nodes().size(), 2U);
              EXPECT_EQ(graph->regions().size(), 1U);
              EXPECT_EQ(region->obstacles()[0], wall);
              EXPECT_EQ(a->neighbourEdges().size(), 1U);
            }),
            "");
}

TEST_F(GraphAccessTest, ObjectsThatNobodyWatchesChangeNothing) {
  EXPECT_EQ(grown([] {
              const auto position = at(0, 0);
              position->setCoordinate({1, 1});
              position->setLevel(2);
              const auto route = std::make_shared<KRVNavGraph>();
              const auto level = std::make_shared<KRVNavRegion>(0);
              route->add(level);
              level->addNode(position);
              const auto step = std::make_shared<KRVNavEdge>(position, position);
              step->setDistance(1);
              route->addEdge(step, *position, *position);
            }),
            "");
}

TEST_F(GraphAccessTest, APointThatIsWatchedForItsGraphAloneChangesNoFormOfARegion) {
  GraphAccess::watch(*b, *graph);
  EXPECT_EQ(grown([&] { b->setLevel(3); }), "SC");
}

TEST_F(GraphAccessTest, AChangeInOneGraphIsNoneOfAnother) {
  const auto other = std::make_shared<KRVNavGraph>();
  const auto otherRegion = std::make_shared<KRVNavRegion>(0);
  const auto otherEdge = std::make_shared<KRVNavEdge>(a, b);
  GraphAccess::watch(*otherEdge, *other);
  GraphAccess::watch(*otherRegion, *other);
  GraphAccess::watch(*b, *other);
  EXPECT_EQ(grown([&] {
              otherEdge->setDistance(3);
              otherEdge->setEnd(a);
              otherRegion->setGraph(other);
              b->setLevel(2);
            }),
            "");
}

TEST_F(GraphAccessTest, AChangeOfAnObjectThatTwoGraphsWatchCountsInBoth) {
  const auto other = std::make_shared<KRVNavGraph>();
  GraphAccess::watch(*edge, *other);
  GraphAccess::watch(*edge, *graph);
  const RevisionStamp before = GraphAccess::costStamp(*other);
  EXPECT_EQ(grown([&] { edge->setDistance(3); }), "C");
  EXPECT_GT(GraphAccess::costStamp(*other), before);
}

// There are more graphs than numbers for them: some share a number, and none may miss a change.
TEST_F(GraphAccessTest, EveryOneOfManyGraphsNoticesTheChangesOfItsOwn) {
  constexpr int kGraphs = 600;
  std::vector<std::shared_ptr<KRVNavGraph>> graphs;
  std::vector<std::shared_ptr<KRVNavEdge>> edges;
  for (int i = 0; i < kGraphs; ++i) {
    graphs.push_back(std::make_shared<KRVNavGraph>());
    edges.push_back(std::make_shared<KRVNavEdge>(a, b));
    GraphAccess::watch(*edges.back(), *graphs.back());
  }
  for (std::size_t i = 0; i < kGraphs; ++i) {
    const RevisionStamp before = GraphAccess::costStamp(*graphs[i]);
    edges[i]->setDistance(3);
    EXPECT_GT(GraphAccess::costStamp(*graphs[i]), before);
  }
}

TEST_F(GraphAccessTest, AnObjectThatOutlivesItsGraphStillTellsTheNextOne) {
  {
    const auto gone = std::make_shared<KRVNavGraph>();
    GraphAccess::watch(*b, *gone);
  }
  EXPECT_EQ(grown([&] { b->setLevel(1); }), "");
  GraphAccess::watch(*b, *graph);
  EXPECT_EQ(grown([&] { b->setLevel(2); }), "SCN");
}

TEST_F(GraphAccessTest, APointHasNoPlaceUntilItIsGivenOne) {
  EXPECT_EQ(GraphAccess::place(*a), GraphAccess::kNoPlace);
  GraphAccess::setPlace(*a, 3);
  EXPECT_EQ(GraphAccess::place(*a), 3U);
}

}  // namespace
}  // namespace KorvaniTest
