#include <gtest/gtest.h>

#include "Drawing.hpp"

namespace KorvaniTest {
namespace {

using namespace KorvaniTools;

TEST(LineNetwork, HasANodeForEachCornerAndAnEdgeForEachPiece) {
  Drawing drawing;
  drawing.line("way/1", {{0, 0}, {10, 0}, {10, 5}});
  const Made made = drawing.make();
  EXPECT_EQ(made.building.nodes.size(), 3U);
  ASSERT_EQ(made.building.edges.size(), 2U);
  EXPECT_NEAR(made.building.edges[0].distance.value_or(0), 10, 0.01);
  EXPECT_NEAR(made.building.edges[1].distance.value_or(0), 5, 0.01);
  EXPECT_EQ(made.report.lineNodes, 3U);
  EXPECT_EQ(made.report.areaNodes, 0U);
}

TEST(LineNetwork, NodeIdsRunFromZero) {
  Drawing drawing;
  drawing.line("way/1", {{0, 0}, {10, 0}, {10, 5}});
  const Made made = drawing.make();
  for (std::size_t i = 0; i < made.building.nodes.size(); ++i) {
    EXPECT_EQ(made.building.nodes[i].id, static_cast<std::int64_t>(i));
  }
}

TEST(LineNetwork, LinesThatShareANodeAreJoined) {
  Drawing drawing;
  drawing.line("way/1", {{0, 0}, {10, 0}});
  drawing.line("way/2", {{10, 0}, {10, 9}});
  EXPECT_TRUE(drawing.make().joined({0, 0}, {10, 9}));
}

TEST(LineNetwork, LinesThatShareANodeButNoLevelAreNotJoined) {
  Drawing drawing;
  drawing.line("way/1", {{0, 0}, {10, 0}}, {0});
  drawing.line("way/2", {{10, 0}, {10, 9}}, {1});
  const Made made = drawing.make();
  EXPECT_EQ(made.building.nodes.size(), 4U);
  EXPECT_FALSE(made.joined({0, 0}, {10, 9}, 0, 1));
}

TEST(LineNetwork, LinesThatOnlyCrossAreNotJoined) {
  Drawing drawing;
  drawing.line("way/1", {{0, 0}, {10, 0}});
  drawing.line("way/2", {{5, -5}, {5, 5}});
  EXPECT_FALSE(drawing.make().joined({0, 0}, {5, 5}));
}

TEST(LineNetwork, VerticesWithoutNodeAreNobodysElse) {
  Drawing drawing;
  drawing.line("way/1", {{0, 0}, {10, 0}}).vertices[1].node = 0;
  drawing.line("way/2", {{10, 0}, {10, 9}}).vertices[0].node = 0;
  const Made made = drawing.make();
  EXPECT_EQ(made.building.nodes.size(), 4U);
}

TEST(LineNetwork, PositionsOnEachOtherAreOneNode) {
  Drawing drawing;
  PlanLine& line = drawing.line("way/1", {{0, 0}, {5, 0}, {10, 0}});
  line.vertices.insert(line.vertices.begin() + 1, {777, at({5, 0})});
  drawing.line("way/2", {{5, 9}, {5, 0}}).vertices[1].node = 777;
  const Made made = drawing.make();
  EXPECT_EQ(made.building.nodes.size(), 4U);
  EXPECT_TRUE(made.joined({0, 0}, {5, 9}));
  for (const BuildingEdge& edge : made.building.edges) EXPECT_GT(edge.distance.value_or(0), 0);
}

TEST(LineNetwork, ARepeatedNodeMakesNoEdgeToItself) {
  Drawing drawing;
  drawing.line("way/1", {{0, 0}, {5, 0}, {5, 0}, {10, 0}});
  const Made made = drawing.make();
  EXPECT_EQ(made.building.edges.size(), 2U);
}

TEST(LineNetwork, APieceThatIsDrawnTwiceIsOneEdge) {
  Drawing drawing;
  drawing.line("way/1", {{0, 0}, {10, 0}});
  drawing.line("way/2", {{10, 0}, {0, 0}});
  EXPECT_EQ(drawing.make().building.edges.size(), 1U);
}

TEST(LineNetwork, OnewayLinesAreEnteredAtTheirFirstVertexOnly) {
  Drawing drawing;
  drawing.line("way/1", {{0, 0}, {10, 0}}).oneway = true;
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({0, 0}, {10, 0}));
  EXPECT_FALSE(made.joined({10, 0}, {0, 0}));
}

TEST(LineNetwork, BackwardOnewayLinesAreEnteredAtTheirLastVertexOnly) {
  Drawing drawing;
  PlanLine& line = drawing.line("way/1", {{0, 0}, {10, 0}});
  line.oneway = true;
  line.backward = true;
  const Made made = drawing.make();
  EXPECT_FALSE(made.joined({0, 0}, {10, 0}));
  EXPECT_TRUE(made.joined({10, 0}, {0, 0}));
}

TEST(LineNetwork, KindsAreLookedUpInTheTable) {
  Drawing drawing;
  drawing.line("way/1", {{0, 0}, {10, 0}}, {0}, ConnectionKind::stairs);
  const BuildingEdge edge = drawing.make().building.edges.at(0);
  EXPECT_EQ(edge.type, "stairs");
  EXPECT_FALSE(edge.barrierFree);
  EXPECT_EQ(edge.multiplicator, drawing.table.of(ConnectionKind::stairs).multiplicator);
}

TEST(LineNetwork, WhatTheSourceSaysOfWheelsComesBeforeTheTable) {
  Drawing drawing;
  drawing.line("way/1", {{0, 0}, {10, 0}}, {0}, ConnectionKind::stairs).stepFree = StepFree::yes;
  drawing.line("way/2", {{0, 1}, {10, 1}}).stepFree = StepFree::no;
  const Building building = drawing.make().building;
  EXPECT_TRUE(building.edges.at(0).barrierFree);
  EXPECT_FALSE(building.edges.at(1).barrierFree);
}

TEST(LineNetwork, APathOnTwoLevelsIsFloorOnBoth) {
  Drawing drawing;
  drawing.line("way/1", {{0, 0}, {10, 0}}, {0, 1});
  const Made made = drawing.make();
  EXPECT_EQ(made.nodesOn(0), 2U);
  EXPECT_EQ(made.nodesOn(1), 2U);
  EXPECT_FALSE(made.joined({0, 0}, {0, 0}, 0, 1));
}

TEST(LineNetwork, APathWhoseEndsMeetDifferentLevelsLeadsFromOneToTheOther) {
  Drawing drawing;
  drawing.line("way/1", {{0, 0}, {10, 0}}, {0, 1});
  drawing.line("way/2", {{-5, 0}, {0, 0}}, {0});
  drawing.line("way/3", {{10, 0}, {15, 0}}, {1});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({-5, 0}, {15, 0}, 0, 1));
  EXPECT_EQ(made.building.nodes.size(), 4U);
}

TEST(LineNetwork, TheSamePlanGivesTheSameBuilding) {
  Drawing drawing;
  drawing.area("hall", box(0, 0, 30, 20));
  for (int i = 0; i < 5; ++i) {
    drawing.room("room", box(i * 6, 20, i * 6 + 5, 25));
    drawing.door("door", {{i * 6 + 2.0, 20}});
  }
  const Made first = drawing.make();
  const Made second = drawing.make();
  ASSERT_EQ(first.building.edges.size(), second.building.edges.size());
  for (std::size_t i = 0; i < first.building.edges.size(); ++i) {
    EXPECT_EQ(first.building.edges[i].from, second.building.edges[i].from);
    EXPECT_EQ(first.building.edges[i].to, second.building.edges[i].to);
    EXPECT_EQ(first.building.edges[i].distance, second.building.edges[i].distance);
  }
}

}  // namespace
}  // namespace KorvaniTest
