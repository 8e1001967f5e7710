#include <gtest/gtest.h>

#include "Drawing.hpp"

namespace KorvaniTest {
namespace {

using namespace KorvaniTools;

PlanLine& stairs(Drawing& drawing, const GroundLine& line, const PlanLevelSet& levels) {
  return drawing.line("way/stairs", line, levels, ConnectionKind::stairs);
}

TEST(PathsOnSeveralLevels, AreFloorOnEachOfThem) {
  Drawing drawing;
  drawing.line("way/path", {{0, 0}, {10, 0}}, {0, 1});
  for (const double level : {0.0, 1.0}) {
    drawing.line("way/west", {{-5, level}, {0, 0}}, {level});
    drawing.line("way/east", {{10, 0}, {15, level}}, {level});
  }
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({-5, 0}, {15, 0}, 0, 0));
  EXPECT_TRUE(made.joined({-5, 1}, {15, 1}, 1, 1));
  EXPECT_FALSE(made.joined({-5, 0}, {15, 1}, 0, 1));
}

TEST(PathsOnSeveralLevels, DoNotCutTheLineOfOneLevel) {
  Drawing drawing;
  drawing.line("way/west", {{-5, 0}, {0, 0}}, {0});
  drawing.line("way/path", {{0, 0}, {10, 0}}, {0, 1});
  drawing.line("way/east", {{10, 0}, {15, 0}}, {0});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({-5, 0}, {15, 0}, 0, 0));
  EXPECT_TRUE(made.joined({0, 0}, {10, 0}, 1, 1));
}

TEST(PathsOnSeveralLevels, LeadToTheLiftAtTheirEnd) {
  Drawing drawing;
  drawing.line("way/path", {{0, 0}, {10, 0}}, {0, 1, 2});
  drawing.shaft("lift", {0, 1, 2}, GroundPoint{10, 0});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({0, 0}, {0, 0}, 0, 1));
  EXPECT_TRUE(made.joined({0, 0}, {0, 0}, 1, 2));
}

TEST(PathsOnSeveralLevels, AreRampsBetweenLinesOfDifferentLevels) {
  Drawing drawing;
  drawing.line("way/west", {{-5, 0}, {0, 0}}, {0});
  drawing.line("way/path", {{0, 0}, {10, 0}}, {0, 1});
  drawing.line("way/east", {{10, 0}, {15, 0}}, {1});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({-5, 0}, {15, 0}, 0, 1));
  const BuildingEdge* edge = made.edge(made.node({0, 0}, 0), made.node({10, 0}, 1));
  ASSERT_NE(edge, nullptr);
  EXPECT_EQ(edge->type, "ramp");
}

TEST(PathsOnSeveralLevels, AreRampsBetweenFloorsOfDifferentLevels) {
  Drawing drawing;
  drawing.area("low", box(-8, -4, 1, 4), {0});
  drawing.area("high", box(9, -4, 18, 4), {1});
  drawing.line("way/path", {{0, 0}, {10, 0}}, {0, 1});
  const Made made = drawing.make();
  EXPECT_NE(made.edge(made.node({0, 0}, 0), made.node({10, 0}, 1)), nullptr);
}

TEST(PathsOnSeveralLevels, AreRampsWhenTheyHaveAnIncline) {
  Drawing drawing;
  drawing.line("way/path", {{0, 0}, {10, 0}}, {0, 1}).incline = -1;
  const Made made = drawing.make();
  const BuildingEdge* edge = made.edge(made.node({0, 0}, 1), made.node({10, 0}, 0));
  ASSERT_NE(edge, nullptr);
  EXPECT_EQ(edge->type, "ramp");
}

TEST(StackedFlights, StopOnEveryLevelThatHasFloorAtBothEnds) {
  Drawing drawing;
  drawing.area("floor", box(-10, -10, 10, 10), {0, 1, 2});
  stairs(drawing, {{0, 0}, {2, 0}, {4, 0}}, {0, 1, 2}).incline = 1;
  const Made made = drawing.make();
  EXPECT_NE(made.edge(made.node({0, 0}, 0), made.node({2, 0}, 1)), nullptr);
  EXPECT_NE(made.edge(made.node({0, 0}, 1), made.node({2, 0}, 2)), nullptr);
  EXPECT_TRUE(made.joined({0, 0}, {4, 0}, 0, 1));
  EXPECT_TRUE(made.joined({0, 0}, {4, 0}, 0, 2));
}

TEST(StackedFlights, StopInAStairwell) {
  Drawing drawing;
  drawing.cell("well", CellKind::stairs, box(-1, -3, 6, 3), {0, 1, 2});
  drawing.area("west", box(-9, -3, -1, 3), {0, 1, 2});
  drawing.door("door", {{-1, 0}}, {0, 1, 2});
  stairs(drawing, {{1, 1}, {4, 1}, {4, -1}, {1, -1}}, {0, 1, 2});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({-1, 0}, {-1, 0}, 0, 1));
  EXPECT_TRUE(made.joined({-1, 0}, {-1, 0}, 1, 2));
}

TEST(StackedFlights, GoDownAsTheyAreDrawn) {
  Drawing drawing;
  drawing.area("floor", box(-10, -10, 10, 10), {0, 1, 2});
  PlanLine& line = stairs(drawing, {{0, 0}, {4, 0}}, {0, 1, 2});
  line.incline = -1;
  line.oneway = true;
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({0, 0}, {4, 0}, 2, 0));
  EXPECT_GE(made.node({4, 0}, 0), 0);
  EXPECT_FALSE(made.joined({4, 0}, {0, 0}, 0, 2));
}

TEST(StackedFlights, AreNotMadeWhereOneEndHasNoFloorInBetween) {
  Drawing drawing;
  drawing.area("low", box(-10, -10, 2, 10), {0, 1});
  drawing.area("high", box(2, -10, 10, 10), {2});
  stairs(drawing, {{0, 0}, {4, 0}}, {0, 1, 2}).incline = 1;
  const Made made = drawing.make();
  EXPECT_NE(made.edge(made.node({0, 0}, 0), made.node({4, 0}, 2)), nullptr);
}

TEST(StairsOnSeveralLevels, ThatMeetOneLevelOnlyStayOnIt) {
  Drawing drawing;
  drawing.line("way/west", {{-5, 0}, {0, 0}}, {0});
  stairs(drawing, {{0, 0}, {4, 0}}, {0, 1});
  drawing.line("way/east", {{4, 0}, {9, 0}}, {0});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({-5, 0}, {9, 0}));
  EXPECT_EQ(made.nodesOn(1), 0U);
  EXPECT_TRUE(made.remarked("way/stairs is drawn on several levels and meets only level 0"));
}

TEST(StairsOnSeveralLevels, ThatHaveFloorOfAnotherLevelAtAnEndLeadThere) {
  Drawing drawing;
  drawing.line("way/west", {{-5, 0}, {0, 0}}, {0});
  stairs(drawing, {{0, 0}, {4, 0}}, {0, 1});
  drawing.line("way/east", {{4, 0}, {9, 0}}, {0});
  drawing.area("gallery", box(3, -3, 9, 3), {1});
  EXPECT_GE(drawing.make().node({4, 0}, 1), 0);
}

TEST(StairsOnSeveralLevels, ThatComeBackToTheirBeginningLeadOnFromThoseBelow) {
  Drawing drawing;
  const GroundLine loop{{0, 0}, {4, 0}, {4, 3}, {0, 3}, {0, 0}};
  drawing.line("way/low", {{-5, 0}, {0, 0}}, {0});
  stairs(drawing, loop, {0, 1});
  stairs(drawing, loop, {1, 2});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({-5, 0}, {0, 0}, 0, 1));
  EXPECT_TRUE(made.joined({0, 0}, {0, 0}, 1, 2));
}

TEST(StairsOnOneLevel, LeadToTheLevelOfTheOnlyLineAtAnEnd) {
  Drawing drawing;
  drawing.line("way/low", {{-5, 0}, {0, 0}}, {0});
  stairs(drawing, {{0, 0}, {4, 0}}, {0});
  drawing.line("way/high", {{4, 0}, {9, 0}}, {1});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({-5, 0}, {9, 0}, 0, 1));
  EXPECT_TRUE(made.remarked("way/stairs is drawn on level 0 alone"));
}

TEST(StairsOnOneLevel, StayThereWhenSomethingOfItIsAtBothEnds) {
  Drawing drawing;
  drawing.area("floor", box(-1, -3, 5, 3), {0});
  stairs(drawing, {{0, 0}, {4, 0}}, {0});
  drawing.line("way/high", {{4, 0}, {9, 0}}, {1});
  const Made made = drawing.make();
  EXPECT_GE(made.node({4, 0}, 0), 0);
  EXPECT_FALSE(made.joined({0, 0}, {9, 0}, 0, 1));
  EXPECT_FALSE(made.remarked("way/stairs"));
}

/// Floors with one way up above the other, all on the same two nodes.
Drawing stackedClimbs(ConnectionKind kind, int incline) {
  Drawing drawing;
  drawing.area("floor", box(-10, -10, 10, 10), {0, 1, 2, 3});
  for (const double level : {0.0, 1.0, 2.0}) {
    PlanLine& line = drawing.line("way/up", {{0, 0}, {4, 0}}, {level, level + 1}, kind);
    line.incline = incline;
    line.oneway = kind == ConnectionKind::escalator;
  }
  return drawing;
}

TEST(ClimbsAboveEachOther, AllRunAsTheirInclineSays) {
  for (const ConnectionKind kind : {ConnectionKind::escalator, ConnectionKind::stairs}) {
    const Made made = stackedClimbs(kind, 1).make();
    for (const std::int64_t level : {0, 1, 2}) {
      const BuildingEdge* edge = made.edge(made.node({0, 0}, level), made.node({4, 0}, level + 1));
      ASSERT_NE(edge, nullptr) << level;
      EXPECT_EQ(edge->from, made.node({0, 0}, level));
      EXPECT_EQ(made.edge(made.node({4, 0}, level), made.node({0, 0}, level + 1)), nullptr);
    }
    EXPECT_TRUE(made.joined({0, 0}, {4, 0}, 0, 3));
    EXPECT_FALSE(made.remarked("nothing tells"));
  }
}

TEST(ClimbsAboveEachOther, WithoutInclineRunAsTheyAreDrawn) {
  for (const ConnectionKind kind : {ConnectionKind::escalator, ConnectionKind::stairs}) {
    const Made made = stackedClimbs(kind, 0).make();
    for (const std::int64_t level : {0, 1, 2}) {
      EXPECT_NE(made.edge(made.node({0, 0}, level), made.node({4, 0}, level + 1)), nullptr);
    }
    EXPECT_TRUE(made.joined({0, 0}, {4, 0}, 0, 3));
  }
}

TEST(ClimbsAboveEachOther, ThatTurnOnALandingBeginWhereTheOneBelowEnds) {
  Drawing drawing;
  drawing.line("way/low", {{-5, 0}, {0, 0}}, {0});
  stairs(drawing, {{0, 0}, {4, 0}}, {0, 0.5});
  stairs(drawing, {{4, 0}, {0, 0}}, {0.5, 1});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({-5, 0}, {0, 0}, 0, 2));
  EXPECT_FALSE(made.remarked("nothing tells"));
}

TEST(ClimbsAboveEachOther, OfOneLineAreSteppedOnAndOffBetweenFlights) {
  Drawing drawing;
  drawing.area("floor", box(-10, -10, 10, 10), {0, 1, 2});
  stairs(drawing, {{0, 0}, {4, 0}}, {0, 1}).incline = 1;
  // The same stairs again, as a source writes them that repeats a feature on further levels.
  stairs(drawing, {{0, 0}, {4, 0}}, {1, 2}).incline = -1;
  drawing.line("way/path", {{8, 5}, {8, 6}}, {1});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({0, 0}, {8, 5}, 0, 1));
  EXPECT_TRUE(made.joined({8, 5}, {0, 0}, 1, 2));
}

TEST(StairsOnSeveralLevels, FollowTheirInclineAgainstOtherStairsAndRooms) {
  Drawing drawing;
  drawing.area("wrong", box(-5, -2, 1, 2), {1});
  stairs(drawing, {{0, 0}, {8, 0}}, {0, 1}).incline = 1;
  stairs(drawing, {{8, 0}, {16, 0}}, {0, 1}).incline = 1;
  const Made made = drawing.make();
  EXPECT_GE(made.node({0, 0}, 0), 0);
  EXPECT_GE(made.node({8, 0}, 0), 0);
  EXPECT_GE(made.node({16, 0}, 1), 0);
}

}  // namespace
}  // namespace KorvaniTest
