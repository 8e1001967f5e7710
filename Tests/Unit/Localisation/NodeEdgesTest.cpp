#include "Navigation/Localisation/NodeEdges.hpp"

#include <gtest/gtest.h>

#include <vector>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Support/PlacedBuilding.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::CompiledGraph;
using KorvaniNavigation::KRVNavGraph;
using KorvaniNavigation::NodeEdges;

/// A node with three neighbours, joined in another order than they were made.
class NodeEdgesOfAJunction : public testing::Test {
 protected:
  NodeEdgesOfAJunction() {
    for (const auto& neighbour : {second, third, first}) building.joinOneWay(node, neighbour);
  }

  void compile() { ASSERT_TRUE(CompiledGraph::of(graph())->isOrdinary()); }

  std::vector<PointPtr> ends() const {
    const NodeEdges edges(*node);
    std::vector<PointPtr> points;
    for (std::size_t i = 0; i < edges.count(); ++i) points.push_back(edges.end(i));
    return points;
  }

  KRVNavGraph& graph() { return *building.graph(); }

  PlacedBuilding building;
  PointPtr node = building.node(0, 0);
  PointPtr first = building.node(0, 5);
  PointPtr second = building.node(5, 0);
  PointPtr third = building.node(-4, 0);
};

using NodeEdgesDeathTest = NodeEdgesOfAJunction;

TEST_F(NodeEdgesOfAJunction, StandInTheOrderOfTheGraph) {
  EXPECT_EQ(ends(), (std::vector<PointPtr>{second, third, first}));
}

TEST_F(NodeEdgesOfAJunction, AreTheSameOnceTheGraphIsCompiled) {
  compile();
  EXPECT_EQ(ends(), (std::vector<PointPtr>{second, third, first}));
  const NodeEdges edges(*node);
  EXPECT_NEAR(edges.lengthIn(graph(), 1).value(), 4, 0.001);
  EXPECT_NEAR(edges.lengthIn(graph(), 2).value(), 5, 0.001);
}

TEST_F(NodeEdgesOfAJunction, ChangeWithTheGraphAfterItWasCompiled) {
  compile();
  building.joinOneWay(node, building.node(0, -3));
  EXPECT_EQ(ends().size(), 4U);
  graph().edgeFromNode(*node, *second)->setEnd(first);
  EXPECT_EQ(ends()[0], first);
}

TEST_F(NodeEdgesOfAJunction, HaveTheLengthOfTheEdgeThatTheAskedGraphHolds) {
  compile();
  KRVNavGraph other;
  const auto edge = std::make_shared<KorvaniNavigation::KRVNavEdge>(node, third, 70.0, 1.0, true);
  other.addEdge(edge, *node, *third);
  const NodeEdges edges(*node);
  EXPECT_EQ(edges.lengthIn(other, 1), 70.0);
  EXPECT_EQ(edges.lengthIn(other, 0), std::nullopt);
}

TEST_F(NodeEdgesOfAJunction, HaveTheLengthOfTheEdgeThatIsFiledUnderTheirEnd) {
  graph().edgeFromNode(*node, *second)->setEnd(first);
  graph().edgeFromNode(*node, *first)->setDistance(9);
  compile();
  const NodeEdges edges(*node);
  EXPECT_EQ(edges.end(0), first);
  EXPECT_EQ(edges.lengthIn(graph(), 0), 9.0);
}

TEST_F(NodeEdgesOfAJunction, AreNoneForANodeWithoutAny) {
  EXPECT_EQ(NodeEdges(*first).count(), 0U);
  compile();
  EXPECT_EQ(NodeEdges(*first).count(), 0U);
  EXPECT_EQ(NodeEdges(*building.position(1, 1)).count(), 0U);
}

TEST_F(NodeEdgesDeathTest, NeedEdgesWithAnEnd) {
  graph().edgeFromNode(*node, *second)->setEnd(nullptr);
  EXPECT_DEATH(ends(), "an edge of the graph has no end node");
  CompiledGraph::of(graph());
  EXPECT_DEATH(ends(), "an edge of the graph has no end node");
}

}  // namespace
}  // namespace KorvaniTest
