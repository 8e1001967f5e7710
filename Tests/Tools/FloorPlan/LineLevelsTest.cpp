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

}  // namespace
}  // namespace KorvaniTest
