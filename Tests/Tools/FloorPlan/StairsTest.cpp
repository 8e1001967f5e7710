#include <gtest/gtest.h>

#include <cmath>

#include "Drawing.hpp"

namespace KorvaniTest {
namespace {

using namespace KorvaniTools;

PlanLine& stairs(Drawing& drawing, const GroundLine& line, const PlanLevelSet& levels) {
  return drawing.line("way/stairs", line, levels, ConnectionKind::stairs);
}

TEST(Stairs, JoinTheLevelsOfTheLinesTheyMeet) {
  Drawing drawing;
  stairs(drawing, {{0, 0}, {8, 0}}, {0, 1});
  drawing.line("way/1", {{0, 0}, {-5, 0}}, {1});
  drawing.line("way/2", {{8, 0}, {15, 0}}, {0});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({-5, 0}, {15, 0}, 1, 0));
  EXPECT_EQ(made.building.nodes.size(), 4U);
  EXPECT_FALSE(made.remarked("nothing tells"));
}

TEST(Stairs, AreAsLongAsTheirSlopeWithThreeMetresALevel) {
  Drawing drawing;
  stairs(drawing, {{0, 0}, {4, 0}}, {0, 1});
  const BuildingEdge edge = drawing.make().building.edges.at(0);
  EXPECT_NEAR(edge.distance.value_or(0), 5, 0.01);
  EXPECT_EQ(edge.type, "stairs");
}

TEST(Stairs, OneEndThatMeetsALineLeavesTheOtherLevelForTheOtherEnd) {
  Drawing drawing;
  stairs(drawing, {{0, 0}, {8, 0}}, {0, 1});
  drawing.line("way/1", {{8, 0}, {15, 0}}, {0});
  const Made made = drawing.make();
  EXPECT_GE(made.node({0, 0}, 1), 0);
  EXPECT_GE(made.node({8, 0}, 0), 0);
  EXPECT_FALSE(made.remarked("nothing tells"));
}

TEST(Stairs, ThatMeetLinesOfBothLevelsAtOneEndFollowTheOtherEnd) {
  Drawing drawing;
  stairs(drawing, {{0, 0}, {8, 0}}, {0, 1});
  drawing.line("way/1", {{0, 0}, {-5, 0}}, {0});
  drawing.line("way/2", {{0, 0}, {-5, 1}}, {1});
  drawing.line("way/3", {{8, 0}, {15, 0}}, {1});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({-5, 0}, {15, 0}, 0, 1));
  EXPECT_GE(made.node({0, 0}, 0), 0);
}

TEST(Stairs, FollowTheRoomsAroundTheirEnds) {
  Drawing drawing;
  drawing.area("up", box(-5, -2, 1, 2), {1});
  drawing.area("down", box(7, -2, 15, 2), {0});
  stairs(drawing, {{0, 0}, {8, 0}}, {0, 1});
  const Made made = drawing.make();
  EXPECT_GE(made.node({0, 0}, 1), 0);
  EXPECT_GE(made.node({8, 0}, 0), 0);
  EXPECT_FALSE(made.remarked("nothing tells"));
}

TEST(Stairs, FollowTheDoorsAtTheirEnds) {
  Drawing drawing;
  drawing.wall("wall", {{0, -3}, {0, 3}}, {0, 1});
  drawing.door("door", {{0, 0}}, {1});
  stairs(drawing, {{0, 0}, {8, 0}}, {0, 1});
  EXPECT_GE(drawing.make().node({0, 0}, 1), 0);
}

TEST(Stairs, LinesTellMoreThanRooms) {
  Drawing drawing;
  drawing.area("void", box(-5, -2, 1, 2), {0});
  stairs(drawing, {{0, 0}, {8, 0}}, {0, 1});
  drawing.line("way/1", {{0, 0}, {-5, 0}}, {1});
  EXPECT_GE(drawing.make().node({0, 0}, 1), 0);
}

TEST(Stairs, FollowTheIncline) {
  Drawing drawing;
  stairs(drawing, {{0, 0}, {8, 0}}, {0, 1}).incline = -1;
  const Made made = drawing.make();
  EXPECT_GE(made.node({0, 0}, 1), 0);
  EXPECT_FALSE(made.remarked("nothing tells"));
}

TEST(Stairs, LinesTellMoreThanTheIncline) {
  Drawing drawing;
  stairs(drawing, {{0, 0}, {8, 0}}, {0, 1}).incline = -1;
  drawing.line("way/1", {{0, 0}, {-5, 0}}, {0});
  EXPECT_GE(drawing.make().node({0, 0}, 0), 0);
}

TEST(Stairs, ThatNothingTellsAboutRiseFromTheFirstVertexWithARemark) {
  Drawing drawing;
  stairs(drawing, {{0, 0}, {8, 0}}, {0, 1});
  const Made made = drawing.make();
  EXPECT_GE(made.node({0, 0}, 0), 0);
  EXPECT_GE(made.node({8, 0}, 1), 0);
  EXPECT_TRUE(made.remarked("way/stairs"));
}

TEST(Stairs, ThatMeetOtherStairsTakeTheLevelTheyShare) {
  Drawing drawing;
  stairs(drawing, {{0, 0}, {8, 0}}, {0, 1});
  stairs(drawing, {{16, 0}, {8, 0}}, {1, 2});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({0, 0}, {16, 0}, 0, 2));
  EXPECT_EQ(made.building.nodes.size(), 3U);
}

TEST(Stairs, AChainOfStairsFollowsTheOneEndThatIsKnown) {
  Drawing drawing;
  stairs(drawing, {{0, 0}, {8, 0}}, {0, 1});
  stairs(drawing, {{8, 0}, {16, 0}}, {0, 1});
  drawing.line("way/1", {{16, 0}, {20, 0}}, {0});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({20, 0}, {8, 0}, 0, 1));
  EXPECT_TRUE(made.joined({8, 0}, {0, 0}, 1, 0));
}

TEST(Stairs, ChangeLevelInTheMiddle) {
  Drawing drawing;
  stairs(drawing, {{0, 0}, {2, 0}, {4, 0}, {6, 0}}, {0, 1});
  drawing.line("way/1", {{0, 0}, {-5, 0}}, {0});
  const Made made = drawing.make();
  EXPECT_GE(made.node({2, 0}, 0), 0);
  EXPECT_GE(made.node({4, 0}, 1), 0);
  const BuildingEdge* change = made.edge(made.node({2, 0}, 0), made.node({4, 0}, 1));
  ASSERT_NE(change, nullptr);
  EXPECT_NEAR(change->distance.value_or(0), std::hypot(2, 3), 0.01);
}

TEST(Stairs, OverThreeLevelsStopWhereALineMeetsThem) {
  Drawing drawing;
  stairs(drawing, {{0, 0}, {5, 0}, {10, 0}}, {0, 1, 2});
  drawing.line("way/1", {{0, 0}, {-5, 0}}, {0});
  drawing.line("way/2", {{5, 0}, {5, 9}}, {1});
  drawing.line("way/3", {{10, 0}, {15, 0}}, {2});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({-5, 0}, {5, 9}, 0, 1));
  EXPECT_TRUE(made.joined({5, 9}, {15, 0}, 1, 2));
}

TEST(Stairs, OverThreeLevelsThatNothingMeetsLeadFromEndToEnd) {
  Drawing drawing;
  stairs(drawing, {{0, 0}, {4, 0}}, {0, 1, 2});
  drawing.line("way/1", {{0, 0}, {-5, 0}}, {2});
  const Made made = drawing.make();
  const BuildingEdge* edge = made.edge(made.node({0, 0}, 2), made.node({4, 0}, 0));
  ASSERT_NE(edge, nullptr);
  EXPECT_NEAR(edge->distance.value_or(0), std::hypot(4, 6), 0.01);
}

TEST(Stairs, ToAFractionOfALevelAreAsHighAsThat) {
  Drawing drawing;
  stairs(drawing, {{0, 0}, {2, 0}}, {0, 0.5});
  EXPECT_NEAR(drawing.make().building.edges.at(0).distance.value_or(0), 2.5, 0.01);
}

TEST(Escalators, KeepTheirDirectionWhicheverEndIsHigher) {
  Drawing drawing;
  PlanLine& line = drawing.line("way/1", {{0, 0}, {8, 0}}, {0, 1}, ConnectionKind::escalator);
  line.oneway = true;
  line.backward = true;
  drawing.line("way/2", {{0, 0}, {-5, 0}}, {1});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({8, 0}, {-5, 0}, 0, 1));
  EXPECT_FALSE(made.joined({-5, 0}, {8, 0}, 1, 0));
}

TEST(Stairs, ThatComeBackToTheirBeginningLeadToTheLevelAbove) {
  Drawing drawing;
  stairs(drawing, {{0, 0}, {4, 0}, {4, 3}, {0, 3}, {0, 0}}, {0, 1});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({0, 0}, {0, 0}, 0, 1));
  EXPECT_FALSE(made.remarked("nothing tells"));
}

}  // namespace
}  // namespace KorvaniTest
