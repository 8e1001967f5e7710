// Searches before and after a change of the graph: nothing that was prepared may outlive the
// change. Every test asks first, so that there is something prepared.

#include <algorithm>
#include <string>
#include <utility>

#include "SearchFixture.hpp"

namespace KorvaniTest {
namespace {

/// A to D over B costs 2, over C 3.
class DijkstraImprovedChangesTest : public SearchTest {
 protected:
  DijkstraImprovedChangesTest() {
    edge("A", "B", 1);
    edge("B", "D", 1);
    edge("A", "C", 1);
    edge("C", "D", 2);
    EXPECT_EQ(search(), "ABD");
  }

  std::string search() {
    finder.restart();
    return find("A", {0}, "D");
  }

  std::shared_ptr<KRVNavEdge> edgeOf(const std::string& from, const std::string& to) const {
    return building.edge(from, to);
  }
};

TEST_F(DijkstraImprovedChangesTest, AnEdgeGetsLonger) {
  edgeOf("B", "D")->setDistance(5);
  EXPECT_EQ(search(), "ACD");
}

TEST_F(DijkstraImprovedChangesTest, AnEdgeGetsShorter) {
  edgeOf("C", "D")->setDistance(0.5);
  EXPECT_EQ(search(), "ACD");
  EXPECT_EQ(finder.bestPath()->distance, 1.5);
}

TEST_F(DijkstraImprovedChangesTest, AnEdgeGetsSlower) {
  edgeOf("A", "B")->setMultiplicator(10);
  EXPECT_EQ(search(), "ACD");
}

TEST_F(DijkstraImprovedChangesTest, AnEdgeGetsBarriers) {
  finder.setLookForBarrierFreeRoute(true);
  EXPECT_EQ(search(), "ABD");
  edgeOf("B", "D")->setIsBarrierFree(false);
  EXPECT_EQ(search(), "ACD");
}

TEST_F(DijkstraImprovedChangesTest, AnEdgeEndsElsewhere) {
  edgeOf("B", "D")->setEnd(building.point("C"));
  EXPECT_EQ(search(), "ACD");
}

TEST_F(DijkstraImprovedChangesTest, AnEdgeEndsAtAnEqualPointThatLeadsOn) {
  const auto twin = at(kOrigin, 0, building.point("B")->identifier());
  twin->setRegion(building.region(0));
  edgeOf("A", "B")->setEnd(twin);
  finder.restart();
  const auto nodes = finder.findPathInGraph(building.graph(), {building.point("A")}, {0},
                                            {building.point("D")}, false);
  ASSERT_EQ(nodes.size(), 3U);
  EXPECT_EQ(nodes[1], twin);
}

TEST_F(DijkstraImprovedChangesTest, AnEdgeIsAdded) {
  edge("A", "D", 1.5);
  EXPECT_EQ(search(), "AD");
}

TEST_F(DijkstraImprovedChangesTest, AnEdgeIsRemovedFromItsRow) {
  building.graph()
      ->edges()
      .row(building.point("A")->identifierNumber())
      .remove(building.point("B")->identifierNumber());
  EXPECT_EQ(search(), "ACD");
}

TEST_F(DijkstraImprovedChangesTest, AllEdgesAreRemoved) {
  building.graph()->setEdges({});
  EXPECT_EQ(search(), "");
}

TEST_F(DijkstraImprovedChangesTest, APointLeavesItsRegion) {
  building.point("B")->setRegion(nullptr);
  EXPECT_EQ(search(), "ACD");
}

TEST_F(DijkstraImprovedChangesTest, ARegionLeavesItsGraph) {
  building.region(0)->setGraph(nullptr);
  EXPECT_EQ(search(), "");
}

TEST_F(DijkstraImprovedChangesTest, APointGetsTheNumberOfAnother) {
  building.point("B")->setIdentifierNumber(building.point("F")->identifierNumber());
  EXPECT_EQ(search(), "ACD");
}

TEST_F(DijkstraImprovedChangesTest, APointGetsTheIdentifierOfTheDestination) {
  building.point("C")->setIdentifier(building.point("D")->identifier());
  EXPECT_EQ(search(), "AC");
}

TEST_F(DijkstraImprovedChangesTest, APointIsReplaced) {
  const auto other = at(kOrigin, 0, building.point("D")->identifier());
  building.region(0)->addNode(other);
  EXPECT_EQ(search(), "ABD");
  EXPECT_NE(finder.destination(), other);
}

// The labels are those of the search as it was made, although nobody asked for them in time.
TEST_F(DijkstraImprovedChangesTest, LabelsOfAnEarlierSearchStayAsTheyWere) {
  edgeOf("A", "C")->setDistance(50);
  building.graph()->edges().clear();
  EXPECT_EQ(way("C"), "AC");
  EXPECT_EQ(cost("C"), 1);
  EXPECT_EQ(cost("D"), 2);
}

// Another finder has had the graph compiled anew, with other numbers, before somebody asks.
TEST_F(DijkstraImprovedChangesTest, LabelsOfAnEarlierSearchDoNotDependOnLaterNumbers) {
  auto nodes = building.graph()->nodes();
  nodes.remove(building.point("F")->identifierNumber());
  KRVNavGraph::Nodes reversed;
  for (const auto& number : [&] {
         auto keys = nodes.keys();
         std::reverse(keys.begin(), keys.end());
         return keys;
       }()) {
    reversed.set(number, *nodes.find(number));
  }
  building.graph()->setNodes(std::move(reversed));
  DijkstraImproved other{std::weak_ptr<KorvaniNavigation::ConfigDependents>()};
  EXPECT_EQ(other
                .findPathInGraph(building.graph(), {building.point("A")}, {0},
                                 {building.point("D")}, false)
                .size(),
            3U);
  EXPECT_EQ(way("C"), "AC");
  EXPECT_EQ(cost("D"), 2);
}

TEST_F(DijkstraImprovedChangesTest, ARegionThatNobodyKeepsAnyLongerTakesItsPointsAway) {
  auto away = std::make_shared<KRVNavRegion>(3);
  away->setGraph(building.graph());
  building.point("B")->setRegion(away);
  EXPECT_EQ(search(), "ABD");
  away.reset();
  EXPECT_EQ(search(), "ACD");
}

// More often than it takes to prepare something: the answer stays.
TEST_F(DijkstraImprovedChangesTest, CostsWhoseSumIsNoNumberAreFoundAllTheSame) {
  for (const char* ends : {"AB", "BD", "AC", "CD"}) {
    edgeOf(std::string(1, ends[0]), std::string(1, ends[1]))->setDistance(1e308);
  }
  for (int i = 0; i < 12; ++i) EXPECT_EQ(search(), "ABD");
}

}  // namespace
}  // namespace KorvaniTest
