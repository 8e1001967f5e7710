#include "Navigation/Path Finding/Arrays/CompiledGraph.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::CompiledGraph;
using KorvaniNavigation::KRVNavPoint;

class CompiledGraphTest : public testing::Test {
 protected:
  std::shared_ptr<const CompiledGraph> compiled() const {
    return CompiledGraph::of(*building.graph());
  }

  const TextBuilding building{"A--B--C", 2.0};
};

TEST_F(CompiledGraphTest, HasTheNodesAndEdgesOfTheGraphInItsOrder) {
  const auto graph = compiled();
  ASSERT_TRUE(graph->isOrdinary());
  EXPECT_EQ(graph->structure().points().size(), 3U);
  EXPECT_EQ(graph->structure().firstEdge(), (std::vector<std::uint32_t>{0, 1, 3, 4}));
  EXPECT_EQ(graph->structure().target(), (std::vector<std::uint32_t>{1, 0, 2, 1}));
  EXPECT_EQ(graph->arrays().cost[1], building.edge("B", "A")->distance());
}

TEST_F(CompiledGraphTest, IsMadeOnceUntilTheGraphChanges) {
  const auto before = compiled();
  EXPECT_EQ(compiled(), before);
  building.edge("A", "B")->setMultiplicator(3);
  const auto after = compiled();
  EXPECT_NE(after, before);
  EXPECT_EQ(&after->structure(), &before->structure());  // only the costs are read again
  EXPECT_EQ(after->arrays().cost[0], 3 * building.edge("A", "B")->distance());
  building.graph()->edges()[1].clear();
  EXPECT_NE(&compiled()->structure(), &before->structure());
}

TEST_F(CompiledGraphTest, StaysWhenAnotherGraphChanges) {
  const TextBuilding other("A--B", 2.0);
  ASSERT_NE(CompiledGraph::of(*other.graph()), nullptr);
  const auto before = compiled();
  other.edge("A", "B")->setDistance(7);
  other.edge("A", "B")->setEnd(other.point("A"));
  other.point("B")->setRegion(nullptr);
  other.region(0)->setGraph(nullptr);
  EXPECT_EQ(compiled(), before);
}

TEST_F(CompiledGraphTest, NoticesTheChangeOfAnEdgeThatStandsInAnotherGraphAsWell) {
  const TextBuilding other("A--B", 2.0);
  other.graph()->edges()[1].set(2, building.edge("A", "B"));
  const auto before = compiled();
  const auto otherBefore = CompiledGraph::of(*other.graph());
  building.edge("A", "B")->setDistance(7);
  EXPECT_NE(compiled(), before);
  EXPECT_NE(CompiledGraph::of(*other.graph()), otherBefore);
}

TEST_F(CompiledGraphTest, IsNotMadeWhenItIsInterruptedAndByTheNextWhoAsks) {
  const std::atomic<bool> interrupted{true};
  EXPECT_EQ(CompiledGraph::of(*building.graph(), interrupted), nullptr);
  const auto whole = compiled();
  ASSERT_TRUE(whole->isOrdinary());
  EXPECT_EQ(whole->structure().target().size(), 4U);
  EXPECT_EQ(CompiledGraph::of(*building.graph(), interrupted), whole);
  building.edge("A", "B")->setDistance(7);
  EXPECT_EQ(CompiledGraph::of(*building.graph(), interrupted), nullptr);
  EXPECT_EQ(compiled()->arrays().cost[0], 7);
}

TEST_F(CompiledGraphTest, KnowsItsOwnPointsByObjectAndOthersByIdentifier) {
  const auto& structure = compiled()->structure();
  const auto b = building.point("B");
  EXPECT_EQ(structure.nodeOf(*b), 1U);
  EXPECT_EQ(structure.equalNode(*b), 1U);
  const auto twin = at(0, 0, 0, b->identifier());
  EXPECT_EQ(structure.nodeOf(*twin), std::nullopt);
  EXPECT_EQ(structure.equalNode(*twin), 1U);
  EXPECT_EQ(structure.equalNode(*at(0, 0, 0, 99)), std::nullopt);
  EXPECT_EQ(structure.equalNode(*at(0, 0)), std::nullopt);
}

TEST_F(CompiledGraphTest, KeepsItsPointsAlive) {
  std::weak_ptr<KRVNavPoint> point;
  std::shared_ptr<const CompiledGraph> graph;
  {
    const TextBuilding other("A--B");
    point = other.point("A");
    graph = CompiledGraph::of(*other.graph());
  }
  EXPECT_FALSE(point.expired());
  graph.reset();
  EXPECT_TRUE(point.expired());
}

TEST_F(CompiledGraphTest, IsNotOrdinaryWhenAnEdgeEndsAtAPointOfNoNode) {
  building.edge("A", "B")->setEnd(at(0, 0, 0, building.point("B")->identifier()));
  EXPECT_FALSE(compiled()->isOrdinary());
  building.edge("A", "B")->setEnd(nullptr);
  EXPECT_FALSE(compiled()->isOrdinary());
  building.edge("A", "B")->setEnd(building.point("B"));
  EXPECT_TRUE(compiled()->isOrdinary());
}

TEST_F(CompiledGraphTest, IsNotOrdinaryWhenAPointHasTwoNumbers) {
  building.point("B")->setIdentifierNumber(77);
  EXPECT_FALSE(compiled()->isOrdinary());
}

TEST_F(CompiledGraphTest, IsNotOrdinaryWhenAPointBelongsElsewhere) {
  building.point("B")->setRegion(nullptr);
  EXPECT_FALSE(compiled()->isOrdinary());
  building.point("B")->setRegion(building.region(0));
  EXPECT_TRUE(compiled()->isOrdinary());
  building.region(0)->setGraph(nullptr);
  EXPECT_FALSE(compiled()->isOrdinary());
}

TEST_F(CompiledGraphTest, IsNotOrdinaryWhenACostIsNoLength) {
  for (const double length :
       {-1.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    building.edge("A", "B")->setDistance(length);
    EXPECT_FALSE(compiled()->isOrdinary()) << length;
  }
  building.edge("A", "B")->setDistance(0);
  EXPECT_TRUE(compiled()->isOrdinary());
}

TEST_F(CompiledGraphTest, PassesOverRowsOfNoNodeAndEmptyPlaces) {
  building.graph()->edges()[500].set(1, building.edge("A", "B"));
  building.graph()->edges()[1].set(500, nullptr);
  EXPECT_TRUE(compiled()->isOrdinary());
  EXPECT_EQ(compiled()->structure().target().size(), 4U);
}

// 400 bytes a node, whatever has been prepared for searches.
TEST_F(CompiledGraphTest, StaysWithinItsMemory) {
  std::string corridor = "A";
  for (int i = 0; i < 60; ++i)
    corridor += "--" + std::string(1, static_cast<char>(i < 25   ? 'B' + i
                                                        : i < 51 ? 'a' + i - 25
                                                                 : '0' + i - 51));
  const TextBuilding large(corridor);
  const auto graph = CompiledGraph::of(*large.graph());
  const std::vector<KorvaniNavigation::StartNode> starts{{0, 0}};
  const std::vector<std::uint32_t> targets{59};
  const std::atomic<bool> interrupted{false};
  for (int i = 0; i < 20; ++i) {
    EXPECT_EQ(graph->search().find({starts, targets, i % 2 == 0, interrupted})->nodes.size(), 60U);
  }
  EXPECT_LT(graph->bytes() - sizeof(CompiledGraph), 61U * 400U);
}

}  // namespace
}  // namespace KorvaniTest
