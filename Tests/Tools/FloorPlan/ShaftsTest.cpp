#include <gtest/gtest.h>

#include "Drawing.hpp"

namespace KorvaniTest {
namespace {

using namespace KorvaniTools;

TEST(Shafts, JoinTheLinesThatUseTheirNodeOnEachLevel) {
  Drawing drawing;
  drawing.line("a", {{0, 0}, {5, 0}}, {0});
  drawing.line("b", {{0, 0}, {0, 5}}, {1});
  drawing.shaft("lift", {0, 1}, GroundPoint{0, 0});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({5, 0}, {0, 5}, 0, 1));
  EXPECT_EQ(made.building.nodes.size(), 4U);
  const BuildingEdge* edge = made.edge(made.node({0, 0}, 0), made.node({0, 0}, 1));
  ASSERT_NE(edge, nullptr);
  EXPECT_EQ(edge->type, "elevator");
  EXPECT_TRUE(edge->barrierFree);
  EXPECT_NEAR(edge->distance.value_or(0), 3, 0.001);
}

TEST(Shafts, PassByLevelsTheyDoNotStopAt) {
  Drawing drawing;
  drawing.line("a", {{0, 0}, {5, 0}}, {0, 1, 2});
  drawing.shaft("lift", {0, 2}, GroundPoint{0, 0});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({5, 0}, {5, 0}, 0, 2));
  EXPECT_FALSE(made.joined({5, 0}, {5, 0}, 0, 1));
  const BuildingEdge* edge = made.edge(made.node({0, 0}, 0), made.node({0, 0}, 2));
  ASSERT_NE(edge, nullptr);
  EXPECT_NEAR(edge->distance.value_or(0), 6, 0.001);
}

TEST(Shafts, AreEnteredThroughTheDoorsOfTheirCell) {
  Drawing drawing;
  drawing.cell("stairwell", CellKind::stairs, box(0, 0, 4, 6), {0, 1});
  drawing.room("low", box(4, 0, 10, 6), {0});
  drawing.room("high", box(-6, 0, 0, 6), {1});
  drawing.door("a", {{4, 3}}, {0});
  drawing.door("b", {{0, 3}}, {1});
  drawing.shaft("stairwell", {0, 1}, std::nullopt, {0}).kind = ConnectionKind::stairs;
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({4, 3}, {0, 3}, 0, 1));
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
}

TEST(Shafts, OfSeveralCellsOneAboveTheOtherStopInEach) {
  Drawing drawing;
  drawing.cell("low", CellKind::stairs, box(0, 0, 4, 6), {0});
  drawing.cell("high", CellKind::stairs, box(1, 0, 5, 6), {1});
  drawing.door("a", {{0, 3}}, {0});
  drawing.door("b", {{5, 3}}, {1});
  drawing.shaft("stairs", {0, 1}, std::nullopt, {0, 1}).kind = ConnectionKind::stairs;
  EXPECT_TRUE(drawing.make().joined({0, 3}, {5, 3}, 0, 1));
}

TEST(Shafts, ThatLieOpenAreJoinedToTheFloorAround) {
  Drawing drawing;
  drawing.area("hall", box(0, 0, 20, 10), {0, 1});
  drawing.cell("stairs", CellKind::stairs, box(8, 4, 12, 6), {0, 1});
  drawing.room("room", box(20, 0, 24, 10), {0, 1});
  drawing.door("door", {{20, 5}}, {0, 1});
  drawing.shaft("stairs", {0, 1}, std::nullopt, {1}).kind = ConnectionKind::stairs;
  EXPECT_TRUE(drawing.make().joined({20, 5}, {20, 5}, 0, 1));
}

TEST(Shafts, ThatAreAPointAreJoinedToTheFloorTheyLieIn) {
  Drawing drawing;
  drawing.area("hall", box(0, 0, 20, 10), {0});
  drawing.room("room", box(20, 0, 24, 10), {0});
  drawing.door("door", {{20, 5}}, {0});
  drawing.line("path", {{10, 5}, {10, 30}}, {1});
  drawing.shaft("lift", {0, 1}, GroundPoint{10, 5});
  EXPECT_TRUE(drawing.make().joined({20, 5}, {10, 30}, 0, 1));
}

TEST(Shafts, ThatAreAPointBesideALineAreJoinedToIt) {
  Drawing drawing;
  drawing.line("a", {{-10, 2}, {10, 2}}, {0});
  drawing.line("b", {{0, 0}, {0, 30}}, {1});
  drawing.shaft("lift", {0, 1}, GroundPoint{0, 0});
  EXPECT_TRUE(drawing.make().joined({10, 2}, {0, 30}, 0, 1));
}

TEST(Shafts, FarFromEverythingOnALevelAreRemarked) {
  Drawing drawing;
  drawing.line("a", {{-10, 9}, {10, 9}}, {0});
  drawing.line("b", {{0, 0}, {0, 30}}, {1});
  drawing.shaft("node/5", {0, 1}, GroundPoint{0, 0});
  const Made made = drawing.make();
  EXPECT_FALSE(made.joined({10, 9}, {0, 30}, 0, 1));
  EXPECT_TRUE(made.remarked("node/5 meets nothing to walk on on level 0"));
}

TEST(Shafts, FarFromEverythingOnSeveralLevelsAreRemarkedOnce) {
  Drawing drawing;
  drawing.line("a", {{-10, 9}, {10, 9}}, {0, 1, 2});
  drawing.line("b", {{0, 0}, {0, 30}}, {3});
  drawing.shaft("node/5", {0, 1, 2, 3}, GroundPoint{0, 0});
  const Made made = drawing.make();
  ASSERT_EQ(made.report.remarks.size(), 1U);
  EXPECT_EQ(made.report.remarks[0], "node/5 meets nothing to walk on on levels 0, 1, 2");
}

TEST(Shafts, ThatLeadDownOnlyAreEnteredAtTheTop) {
  Drawing drawing;
  drawing.line("a", {{0, 0}, {5, 0}}, {0, 1});
  PlanShaft& shaft = drawing.shaft("slide", {0, 1}, GroundPoint{0, 0});
  shaft.oneway = true;
  shaft.backward = true;
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({5, 0}, {5, 0}, 1, 0));
  EXPECT_FALSE(made.joined({5, 0}, {5, 0}, 0, 1));
}

TEST(Shafts, WithOneLevelAreRemarked) {
  Drawing drawing;
  drawing.line("a", {{0, 0}, {5, 0}}, {0});
  drawing.shaft("node/5", {0}, GroundPoint{0, 0});
  EXPECT_TRUE(drawing.make().remarked("node/5 leads to no other level"));
}

TEST(Shafts, ThatMeetInOneCellShareItsNode) {
  Drawing drawing;
  drawing.cell("stairs", CellKind::stairs, box(0, 0, 4, 6), {0, 1, 2});
  for (const double level : {0.0, 1.0, 2.0}) drawing.door("door", {{4, 3}}, {level});
  drawing.shaft("low", {0, 1}, std::nullopt, {0}).kind = ConnectionKind::stairs;
  drawing.shaft("high", {1, 2}, std::nullopt, {0}).kind = ConnectionKind::stairs;
  const Made made = drawing.make();
  EXPECT_EQ(made.nodesOn(1), 2U);
  EXPECT_TRUE(made.joined({4, 3}, {4, 3}, 0, 2));
}

}  // namespace
}  // namespace KorvaniTest
