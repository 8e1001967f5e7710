#include "Navigation/Graph/KRVNavGraph.hpp"

#include <gtest/gtest.h>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Support/Points.hpp"

namespace KorvaniNavigation {
namespace {

using namespace KorvaniTest;
using Identifiers = std::vector<std::int64_t>;

std::shared_ptr<KRVNavEdge> edgeBetween(const PointPtr& a, const PointPtr& b) {
  return std::make_shared<KRVNavEdge>(a, b, 1, 1, true);
}

class KRVNavGraphTest : public testing::Test {
 protected:
  std::shared_ptr<KRVNavRegion> addedRegion() {
    const auto region = std::make_shared<KRVNavRegion>(0);
    graph_->add(region);
    return region;
  }

  PointPtr node(std::int64_t identifier) {
    const auto point = at(48, 11, 0, identifier);
    region_->addNode(point);
    return point;
  }

  std::shared_ptr<KRVNavGraph> graph_ = std::make_shared<KRVNavGraph>();
  std::shared_ptr<KRVNavRegion> region_ = addedRegion();
  PointPtr a_ = node(1);
  PointPtr b_ = node(2);
  PointPtr c_ = node(3);
};

TEST(KRVNavGraph, NewOneIsEmpty) {
  const auto graph = std::make_shared<KRVNavGraph>();
  EXPECT_TRUE(graph->regions().empty());
  EXPECT_TRUE(graph->edges().empty());
  EXPECT_TRUE(graph->nodes().empty());
}

TEST_F(KRVNavGraphTest, NodeEdgesIsAlwaysNull) {
  graph_->addEdge(edgeBetween(a_, b_), *a_, *b_);
  EXPECT_EQ(graph_->nodeEdges(), nullptr);
}

TEST_F(KRVNavGraphTest, AddingARegionSetsItsGraphAndListsIt) {
  const auto second = std::make_shared<KRVNavRegion>(1);
  graph_->add(second);
  EXPECT_EQ(second->graph(), graph_);
  EXPECT_EQ(graph_->regions(), (KRVNavGraph::Regions{region_, second}));
}

TEST_F(KRVNavGraphTest, AddingARegionTwiceListsItTwice) {
  graph_->add(region_);
  EXPECT_EQ(graph_->regions(), (KRVNavGraph::Regions{region_, region_}));
}

TEST_F(KRVNavGraphTest, NodesAreFoundByTheirIdentifier) {
  EXPECT_EQ(graph_->nodeWithIdentifier(2), b_);
  EXPECT_EQ(graph_->nodeWithIdentifier(77), nullptr);
}

TEST_F(KRVNavGraphTest, NodeWithoutOutgoingEdgeHasAbsentNeighbourIdentifiers) {
  graph_->addEdge(edgeBetween(a_, b_), *a_, *b_);
  EXPECT_EQ(graph_->neighbourIdentifiersOfNodeWithIdentifier(2), std::nullopt);
  EXPECT_EQ(graph_->neighbourIdentifiersOfNode(*b_), std::nullopt);
  EXPECT_EQ(graph_->neighbourIdentifiersOfNodeWithIdentifier(77), std::nullopt);
}

TEST_F(KRVNavGraphTest, NodeWhoseRowIsEmptyHasAbsentNeighbourIdentifiers) {
  graph_->edges().row(1);
  EXPECT_EQ(graph_->neighbourIdentifiersOfNode(*a_), std::nullopt);
}

TEST_F(KRVNavGraphTest, NeighbourIdentifiersComeInTheOrderOfTheEdges) {
  graph_->addEdge(edgeBetween(a_, c_), *a_, *c_);
  graph_->addEdge(edgeBetween(a_, b_), *a_, *b_);
  graph_->addEdge(edgeBetween(a_, c_), *a_, *c_);
  EXPECT_EQ(graph_->neighbourIdentifiersOfNode(*a_), (Identifiers{3, 2}));
  EXPECT_EQ(graph_->neighbourIdentifiersOfNodeWithIdentifier(1), (Identifiers{3, 2}));
}

TEST_F(KRVNavGraphTest, EdgesAreFoundByPointsAndByIdentifiers) {
  const auto edge = edgeBetween(a_, b_);
  graph_->addEdge(edge, *a_, *b_);
  EXPECT_EQ(graph_->edgeFromNode(*a_, *b_), edge);
  EXPECT_EQ(graph_->edgeFromNodeWithIdentifier(1, 2), edge);
  EXPECT_EQ(graph_->edgeFromNode(*a_, *c_), nullptr);
  EXPECT_EQ(graph_->edgeFromNodeWithIdentifier(3, 1), nullptr);
}

TEST_F(KRVNavGraphTest, SecondEdgeOfAPairReplacesTheFirst) {
  const auto second = edgeBetween(a_, b_);
  graph_->addEdge(edgeBetween(a_, b_), *a_, *b_);
  graph_->addEdge(second, *a_, *b_);
  EXPECT_EQ(graph_->edgeFromNode(*a_, *b_), second);
  EXPECT_EQ(graph_->edges().find(1)->size(), 1u);
}

TEST_F(KRVNavGraphTest, EdgeDoesNotLeadBack) {
  graph_->addEdge(edgeBetween(a_, b_), *a_, *b_);
  EXPECT_EQ(graph_->edgeFromNode(*b_, *a_), nullptr);
  EXPECT_FALSE(graph_->edges().contains(2));
}

TEST_F(KRVNavGraphTest, AddingAnEdgeAddsNoNodes) {
  const auto x = at(48, 11, 0, 50);
  const auto y = at(48, 11, 0, 51);
  graph_->addEdge(edgeBetween(x, y), *x, *y);
  EXPECT_EQ(graph_->nodeWithIdentifier(50), nullptr);
  EXPECT_EQ(graph_->nodes().size(), 3u);
  EXPECT_NE(graph_->edgeFromNode(*x, *y), nullptr);
}

TEST_F(KRVNavGraphTest, EdgeIsFiledUnderTheGivenNodesWhateverItsOwnEnds) {
  const auto edge = edgeBetween(b_, c_);
  graph_->addEdge(edge, *a_, *c_);
  EXPECT_EQ(graph_->edgeFromNode(*a_, *c_), edge);
  EXPECT_EQ(graph_->edgeFromNode(*b_, *c_), nullptr);
  EXPECT_EQ(edge->start(), b_);
  EXPECT_EQ(edge->end(), c_);
}

TEST_F(KRVNavGraphTest, KeysAreIdentifierNumbers) {
  const auto edge = edgeBetween(a_, b_);
  a_->setIdentifierNumber(10);
  graph_->addEdge(edge, *a_, *b_);
  EXPECT_EQ(graph_->edgeFromNodeWithIdentifier(10, 2), edge);
  EXPECT_EQ(graph_->edgeFromNodeWithIdentifier(1, 2), nullptr);
  EXPECT_EQ(graph_->neighbourIdentifiersOfNode(*a_), (Identifiers{2}));
}

TEST_F(KRVNavGraphTest, ContentsAreReplaceable) {
  const auto other = std::make_shared<KRVNavRegion>(5);
  graph_->setRegions({other});
  KRVNavGraph::Nodes nodes;
  nodes.set(3, c_);
  graph_->setNodes(nodes);
  KRVNavGraph::Edges edges;
  const auto edge = edgeBetween(a_, b_);
  edges[1].set(2, edge);
  graph_->setEdges(edges);
  EXPECT_EQ(graph_->regions(), (KRVNavGraph::Regions{other}));
  EXPECT_EQ(graph_->nodeWithIdentifier(1), nullptr);
  EXPECT_EQ(graph_->nodeWithIdentifier(3), c_);
  EXPECT_EQ(graph_->edgeFromNode(*a_, *b_), edge);
}

TEST(KRVNavGraph, OwnsRegionsAndThroughThemPoints) {
  auto graph = std::make_shared<KRVNavGraph>();
  auto region = std::make_shared<KRVNavRegion>(0);
  const std::weak_ptr<KRVNavRegion> watched = region;
  const auto point = at(48, 11, 0, 1);
  graph->add(region);
  region->addNode(point);
  region.reset();
  EXPECT_NE(point->region(), nullptr);
  graph.reset();
  EXPECT_TRUE(watched.expired());
  EXPECT_EQ(point->region(), nullptr);
}

}  // namespace
}  // namespace KorvaniNavigation
