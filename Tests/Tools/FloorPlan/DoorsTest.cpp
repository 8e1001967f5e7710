#include <gtest/gtest.h>

#include <algorithm>

#include "Drawing.hpp"

namespace KorvaniTest {
namespace {

using namespace KorvaniTools;

TEST(Doors, JoinARoomToOpenFloor) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 4));
  drawing.room("other", box(4, 0, 8, 4));
  drawing.area("hall", box(0, -6, 8, 0));
  drawing.door("a", {{2, 0}});
  drawing.door("b", {{6, 0}});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({2, 2}, {6, 2}));
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
  EXPECT_EQ(made.report.doors, 2U);
  EXPECT_TRUE(made.report.roomsWithoutDoor.empty());
}

TEST(Doors, AreOneNodeForBothSides) {
  Drawing drawing;
  drawing.room("a", box(0, 0, 4, 4));
  drawing.room("b", box(4, 0, 8, 4));
  drawing.door("door", {{4, 2}});
  const Made made = drawing.make();
  EXPECT_EQ(made.building.nodes.size(), 3U);
  EXPECT_EQ(made.building.edges.size(), 2U);
  EXPECT_GE(made.node({4, 2}), 0);
}

TEST(Doors, OnASharedOutlineJoinTwoRooms) {
  Drawing drawing;
  drawing.room("a", box(0, 0, 4, 4));
  drawing.room("b", box(4, 0, 8, 4));
  drawing.door("door", {{4, 2}});
  EXPECT_TRUE(drawing.make().joined({2, 2}, {6, 2}));
}

TEST(Doors, BesideTheOutlineLieInTheMiddleOfTheirGap) {
  Drawing drawing;
  drawing.room("a", box(0, 0, 4, 4));
  drawing.room("b", box(4, 0, 8, 4));
  drawing.door("door", {{4.3, 2}});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({4, 2}, {6, 2}));
  EXPECT_TRUE(made.joined({4, 2}, {2, 2}));
}

TEST(Doors, FarFromAnyWallOpenNone) {
  Drawing drawing;
  drawing.room("a", box(0, 0, 4, 4));
  drawing.door("door", {{2, -0.7}});
  EXPECT_NEAR(drawing.make().wallLength(), 16, 0.02);
}

TEST(Doors, ThatALineSharesAreTheLinesNode) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 4));
  drawing.line("path", {{2, -5}, {2, 0}});
  drawing.door("door", {{2, 0}}).node = drawing.key({2, 0});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({2, -5}, {2, 2}));
  EXPECT_EQ(made.building.nodes.size(), 3U);
  EXPECT_EQ(made.report.openedForLines, 0U);
}

TEST(Doors, ThatALinePassesThroughLieOnTheLine) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 8, 8));
  drawing.line("path", {{4, -5}, {4, 1}});
  drawing.door("door", {{4, 0}});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({4, -5}, {4, 4}));
  EXPECT_EQ(made.node({4, 0}), made.node({4, 0.01}));
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
}

TEST(Doors, LeadOutdoorsToALineInFrontOfThem) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 4));
  drawing.line("pavement", {{-10, -1}, {10, -1}});
  drawing.door("door", {{2, 0}});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({2, 2}, {-10, -1}));
}

TEST(Doors, DoNotLeadToALineFarOff) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 4));
  drawing.line("pavement", {{-10, -4}, {10, -4}});
  drawing.door("door", {{2, 0}});
  EXPECT_FALSE(drawing.make().joined({2, 2}, {-10, -4}));
}

TEST(Doors, TakeTheirKindFromTheTable) {
  Drawing drawing;
  drawing.room("a", box(0, 0, 4, 4));
  drawing.room("b", box(4, 0, 8, 4));
  drawing.door("door", {{4, 2}}).stepFree = StepFree::no;
  const Made made = drawing.make();
  for (const BuildingEdge& edge : made.building.edges) {
    EXPECT_FALSE(edge.barrierFree);
    EXPECT_FALSE(edge.type);
  }
}

TEST(Doors, AtTheSameSpotAreOneNode) {
  Drawing drawing;
  drawing.room("a", box(0, 0, 4, 4));
  drawing.room("b", box(4, 0, 8, 4));
  drawing.door("door", {{4, 2}}).node = 11;
  drawing.door("door", {{4, 2}}).node = 12;
  EXPECT_EQ(drawing.make().building.nodes.size(), 3U);
}

TEST(Doors, InAWallAcrossAHallJoinItsTwoHalves) {
  Drawing drawing;
  drawing.area("hall", box(0, 0, 20, 6));
  drawing.wall("glass", {{10, 0}, {10, 6}});
  drawing.room("west", box(-4, 0, 0, 6));
  drawing.room("east", box(20, 0, 24, 6));
  drawing.door("a", {{0, 3}});
  drawing.door("b", {{20, 3}});
  drawing.door("middle", {{10, 1}});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({-2, 3}, {22, 3}));
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
}

/// A corridor, and a room whose outline is drawn `gap` metres off it.
Drawing thickWall(double gap, bool walledCorridor) {
  Drawing drawing;
  drawing.cell("corridor", CellKind::corridor, box(0, 0, 20, 3)).walled = walledCorridor;
  drawing.room("far", box(-6, 0, 0, 3));
  drawing.door("a", {{0, 1.5}});
  drawing.room("room", box(5, 3 + gap, 10, 8));
  return drawing;
}

TEST(Doors, LeadThroughWallsThatAreDrawnWithTheirThickness) {
  for (const double gap : {0.05, 0.15, 0.25, 0.4, 0.55}) {
    for (const bool walled : {false, true}) {
      Drawing drawing = thickWall(gap, walled);
      drawing.door("door", {{7, 3 + gap}, {8, 3 + gap}});
      const Made made = drawing.make();
      EXPECT_TRUE(made.joined({7.5, 3 + gap}, {-3, 1.5})) << gap << walled;
      EXPECT_TRUE(made.joined({7.5, 3 + gap}, {7.5, (11 + gap) / 2})) << gap << walled;
      EXPECT_EQ(made.edgesThroughWalls(), 0U) << gap << walled;
    }
  }
}

TEST(Doors, ThatArePointsLeadThroughThickWallsToo) {
  for (const double gap : {0.15, 0.4}) {
    Drawing drawing = thickWall(gap, false);
    drawing.door("door", {{7.5, 3 + gap}});
    const Made made = drawing.make();
    EXPECT_TRUE(made.joined({7.5, 3 + gap}, {-3, 1.5})) << gap;
    EXPECT_EQ(made.edgesThroughWalls(), 0U) << gap;
  }
}

TEST(Doors, InAThickWallThatALinePassesThroughLieOnTheLine) {
  Drawing drawing = thickWall(0.4, true);
  drawing.line("path", {{7.5, 1.5}, {7.5, 5}});
  drawing.door("door", {{7, 3.4}, {8, 3.4}});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({7.5, 1.5}, {7.5, 5}));
  EXPECT_EQ(made.report.openedForLines, 0U);
  for (const BuildingNode& node : made.building.nodes) {
    const GroundPoint at = metres(node.coordinate);
    if (at.y > 2.5 && at.y < 4) {
      EXPECT_NEAR(at.x, 7.5, 0.001);
    }
  }
}

TEST(Doors, AmidAThickWallOpenBothOfItsSides) {
  Drawing drawing = thickWall(0.5, true);
  drawing.door("door", {{7, 3.25}, {8, 3.25}});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({-3, 1.5}, {7.5, 5.75}));
  EXPECT_FALSE(made.wallAt({7.5, 3}));
  EXPECT_FALSE(made.wallAt({7.5, 3.5}));
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
}

TEST(Doors, LeadToOpenFloorAStepAway) {
  Drawing drawing = thickWall(0.8, false);
  drawing.door("door", {{7, 3.8}, {8, 3.8}});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({7.5, 3.8}, {-3, 1.5}));
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
}

TEST(Doors, WithAWallBeforeThemAreNotJoinedToTheFloorBehindIt) {
  Drawing drawing = thickWall(0.8, false);
  drawing.door("door", {{7, 3.8}, {8, 3.8}});
  drawing.wall("fence", {{0, 3.1}, {20, 3.1}});
  const Made made = drawing.make();
  EXPECT_FALSE(made.joined({7.5, 3.8}, {-3, 1.5}));
  EXPECT_TRUE(made.remarked("door has a wall between it and the floor beside it on level 0"));
}

TEST(Doors, DoNotOpenTheHouseAcrossTheAlley) {
  Drawing drawing = thickWall(0.9, true);
  drawing.door("door", {{7, 3.9}, {8, 3.9}});
  const Made made = drawing.make();
  EXPECT_FALSE(made.joined({7.5, 3.9}, {-3, 1.5}));
  EXPECT_TRUE(made.wallAt({7.5, 3}));
}

TEST(Doors, AreAssumedThroughThickWalls) {
  for (const double gap : {0.15, 0.4}) {
    Drawing drawing = thickWall(gap, false);
    drawing.room("next", box(10.2, 3 + gap, 15, 8));
    drawing.options.assumeDoors = true;
    const Made made = drawing.make();
    EXPECT_EQ(made.report.assumedDoors, 2U) << gap;
    EXPECT_FALSE(made.wallAt({7.5, 3 + gap})) << gap;
    EXPECT_TRUE(made.joined({7.5, (11 + gap) / 2}, {-3, 1.5})) << gap;
    EXPECT_EQ(made.edgesThroughWalls(), 0U) << gap;
  }
}

TEST(Doors, ThatLeadNowhereAreNotAssumed) {
  Drawing drawing = thickWall(2, false);
  drawing.options.assumeDoors = true;
  const Made made = drawing.make();
  EXPECT_EQ(made.report.assumedDoors, 0U);
  EXPECT_NEAR(made.wallLength(), 2 * (5 + 3) + 2 * (6 + 3) - 1, 0.1);
}

TEST(Doors, RoomsWithoutOneAreListed) {
  Drawing drawing;
  drawing.room("way/1", box(0, 0, 4, 4));
  drawing.room("way/2", box(4, 0, 8, 4));
  drawing.area("way/3", box(0, -4, 8, 0));
  drawing.door("door", {{2, 0}});
  const Made made = drawing.make();
  ASSERT_EQ(made.report.roomsWithoutDoor.size(), 1U);
  EXPECT_EQ(made.report.roomsWithoutDoor[0], "way/2");
  EXPECT_EQ(made.report.assumedDoors, 0U);
}

TEST(Doors, AreAssumedTowardsOpenFloorWhenAskedFor) {
  Drawing drawing;
  drawing.options.assumeDoors = true;
  drawing.room("way/1", box(0, 0, 4, 4));
  drawing.room("way/2", box(4, 0, 8, 4));
  drawing.area("way/3", box(0, -4, 8, 0));
  const Made made = drawing.make();
  EXPECT_EQ(made.report.assumedDoors, 2U);
  EXPECT_TRUE(made.report.roomsWithoutDoor.empty());
  EXPECT_TRUE(made.joined({2, 2}, {6, 2}));
  EXPECT_FALSE(made.wallAt({2, 0}));
  EXPECT_TRUE(made.remarked("way/2 has no door on level 0"));
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
}

TEST(Doors, AreAssumedTowardsALineWhenAskedFor) {
  Drawing drawing;
  drawing.options.assumeDoors = true;
  drawing.room("way/1", box(0, 0, 4, 4));
  drawing.line("way/2", {{-10, -4}, {10, -4}});
  const Made made = drawing.make();
  EXPECT_EQ(made.report.assumedDoors, 1U);
  EXPECT_TRUE(made.joined({2, 2}, {10, -4}));
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
}

TEST(Doors, AreNotAssumedIntoClosedCells) {
  Drawing drawing;
  drawing.options.assumeDoors = true;
  drawing.cell("void", CellKind::closed, box(0, 0, 4, 4));
  drawing.area("hall", box(0, -4, 8, 0));
  const Made made = drawing.make();
  EXPECT_EQ(made.report.assumedDoors, 0U);
  EXPECT_TRUE(made.report.roomsWithoutDoor.empty());
}

TEST(Doors, OfLiftsAreAssumedAlways) {
  Drawing drawing;
  drawing.cell("lift", CellKind::elevator, box(0, 0, 2, 2), {0, 1});
  drawing.area("hall", box(0, -6, 8, 0), {0, 1});
  drawing.area("named", box(4, -6, 8, -3), {0, 1}).name = "Bar";
  drawing.plan.cells.back().isPlace = true;
  drawing.shaft("lift", {0, 1}, std::nullopt, {0});
  const Made made = drawing.make();
  EXPECT_EQ(made.report.assumedDoors, 0U);  // nobody asked for one
  EXPECT_TRUE(made.remarked("lift has no door on level 0: a lift opens to what is in front"));
  EXPECT_FALSE(made.remarked("assumed"));
  EXPECT_TRUE(made.way(made.node({1, 1}, 0), made.node({1, 1}, 1)).has_value());
  ASSERT_EQ(made.building.places.size(), 2U);
  const GroundPoint bar = metres(made.building.places[0].coordinate);
  EXPECT_TRUE(made.joined(bar, bar, 0, 1));
}

TEST(Doors, OfOpenCorridorsLeadThroughThickWallsIntoTheRoomBeside) {
  for (const double gap : {0.4, 0.52, 0.6}) {
    Drawing drawing;
    drawing.room("room", box(0, gap, 6, 5));
    drawing.area("corridor", box(-2, -4, 8, 0));
    drawing.door("door", {{3, 0}});
    drawing.door("far", {{-2, -2}});
    const Made made = drawing.make();
    EXPECT_TRUE(made.report.roomsWithoutDoor.empty()) << gap;
    EXPECT_FALSE(made.wallAt({3, gap})) << gap;
    EXPECT_EQ(made.edgesThroughWalls(), 0U) << gap;
    const std::int64_t door = made.node({3, 0});
    EXPECT_TRUE(std::any_of(made.building.nodes.begin(), made.building.nodes.end(),
                            [&](const BuildingNode& node) {
                              return metres(node.coordinate).y > gap &&
                                     made.way(door, node.id).has_value();
                            }))
        << gap;
  }
}

}  // namespace
}  // namespace KorvaniTest
