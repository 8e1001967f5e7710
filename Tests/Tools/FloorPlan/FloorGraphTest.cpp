#include <gtest/gtest.h>

#include <algorithm>

#include "Drawing.hpp"

namespace KorvaniTest {
namespace {

using namespace KorvaniTools;

/// A room of 4 m by 4 m with a door in the wall that faces `door`.
void roomWithDoor(Drawing& drawing, double west, double south, GroundPoint door) {
  drawing.room("room", box(west, south, west + 4, south + 4));
  drawing.door("door", {door});
}

TEST(FloorGraph, ARoomWithOneDoorHasOneEdge) {
  Drawing drawing;
  roomWithDoor(drawing, 0, 0, {2, 0});
  const Made made = drawing.make();
  EXPECT_EQ(made.building.nodes.size(), 2U);
  ASSERT_EQ(made.building.edges.size(), 1U);
  EXPECT_NEAR(made.building.edges[0].distance.value_or(0), 2, 0.1);
}

TEST(FloorGraph, RoomsAlongACorridorAreJoinedAndTheCorridorStaysReadable) {
  Drawing drawing;
  drawing.cell("corridor", CellKind::corridor, box(0, 0, 40, 2));
  for (int i = 0; i < 10; ++i) {
    roomWithDoor(drawing, i * 4, 2, {i * 4 + 2.0, 2});
    roomWithDoor(drawing, i * 4, -4, {i * 4 + 2.0, 0});
  }
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({2, 4}, {38, -2}));
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
  // 20 rooms, 20 doors, 10 points in the corridor, and a chain of them.
  EXPECT_EQ(made.building.nodes.size(), 50U);
  EXPECT_EQ(made.building.edges.size(), 49U);
}

TEST(FloorGraph, WaysAlongACorridorAreHardlyLongerThanStraight) {
  Drawing drawing;
  drawing.cell("corridor", CellKind::corridor, box(0, 0, 40, 2));
  roomWithDoor(drawing, 0, 2, {2, 2});
  roomWithDoor(drawing, 36, 2, {38, 2});
  const Made made = drawing.make();
  const auto way = made.way(made.node({2, 2}), made.node({38, 2}));
  ASSERT_TRUE(way);
  EXPECT_LT(*way, 36 * 1.06 + 2);
}

TEST(FloorGraph, GoesAroundCorners) {
  Drawing drawing;
  drawing.area("bend", {{0, 0}, {20, 0}, {20, 20}, {17, 20}, {17, 3}, {0, 3}, {0, 0}});
  roomWithDoor(drawing, -4, 0, {0, 1.5});
  roomWithDoor(drawing, 16.5, 20, {18.5, 20});
  const Made made = drawing.make();
  const auto way = made.way(made.node({0, 1.5}), made.node({18.5, 20}));
  ASSERT_TRUE(way);
  EXPECT_LT(*way, 38);
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
}

TEST(FloorGraph, GoesAroundARoomThatStandsInAHall) {
  Drawing drawing;
  drawing.area("hall", box(0, 0, 20, 10));
  drawing.room("kiosk", box(5, 2, 15, 8));
  roomWithDoor(drawing, -4, 3, {0, 5});
  roomWithDoor(drawing, 20, 3, {20, 5});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({0, 5}, {20, 5}));
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
}

TEST(FloorGraph, GoesAroundClosedCells) {
  Drawing drawing;
  drawing.area("hall", box(0, 0, 20, 10));
  drawing.cell("void", CellKind::closed, box(5, 2, 15, 8));
  roomWithDoor(drawing, -4, 3, {0, 5});
  roomWithDoor(drawing, 20, 3, {20, 5});
  const Made made = drawing.make();
  const auto way = made.way(made.node({0, 5}), made.node({20, 5}));
  ASSERT_TRUE(way);
  EXPECT_GT(*way, 20.5);
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
}

TEST(FloorGraph, CellsThatTouchAreOneFloor) {
  Drawing drawing;
  drawing.cell("a", CellKind::corridor, box(0, 0, 10, 3));
  drawing.cell("b", CellKind::corridor, box(10, -10, 13, 3));
  roomWithDoor(drawing, -4, -1, {0, 1.5});
  roomWithDoor(drawing, 9.5, -14, {11.5, -10});
  EXPECT_TRUE(drawing.make().joined({0, 1.5}, {11.5, -10}));
}

TEST(FloorGraph, CellsWithAGapOfDigitisingAreOneFloor) {
  Drawing drawing;
  drawing.cell("a", CellKind::corridor, box(0, 0, 10, 3));
  drawing.cell("b", CellKind::corridor, box(10.08, 0, 20, 3));
  roomWithDoor(drawing, -4, -1, {0, 1.5});
  roomWithDoor(drawing, 20, -1, {20, 1.5});
  EXPECT_TRUE(drawing.make().joined({0, 1.5}, {20, 1.5}));
}

TEST(FloorGraph, CellsApartAreNotJoined) {
  Drawing drawing;
  drawing.cell("a", CellKind::corridor, box(0, 0, 10, 3));
  drawing.cell("b", CellKind::corridor, box(10.5, 0, 20, 3));
  roomWithDoor(drawing, -4, -1, {0, 1.5});
  roomWithDoor(drawing, 20, -1, {20, 1.5});
  EXPECT_FALSE(drawing.make().joined({0, 1.5}, {20, 1.5}));
}

TEST(FloorGraph, AWalledCorridorIsARoomWithManyDoors) {
  Drawing drawing;
  drawing.cell("corridor", CellKind::corridor, box(0, 0, 40, 2)).walled = true;
  for (int i = 0; i < 10; ++i) roomWithDoor(drawing, i * 4, 2, {i * 4 + 2.0, 2});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({2, 4}, {38, 4}));
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
  EXPECT_EQ(made.building.nodes.size(), 30U);
}

TEST(FloorGraph, ANarrowZigzagIsJoinedToItsEnd) {
  Drawing drawing;
  drawing.area("zigzag", {{0, 0},
                          {6, 0},
                          {6, 6},
                          {12, 6},
                          {12, 0},
                          {18, 0},
                          {18, .7},
                          {12.7, .7},
                          {12.7, 6.7},
                          {5.3, 6.7},
                          {5.3, .7},
                          {0, .7},
                          {0, 0}});
  roomWithDoor(drawing, -4, -2, {0, 0.35});
  roomWithDoor(drawing, 18, -2, {18, 0.35});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({0, 0.35}, {18, 0.35}));
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
}

TEST(FloorGraph, LinesInAHallAreItsGraph) {
  Drawing drawing;
  drawing.area("hall", box(0, 0, 40, 10));
  drawing.line("path", {{1, 5}, {39, 5}});
  roomWithDoor(drawing, 8, 10, {10, 10});
  roomWithDoor(drawing, 28, -4, {30, 0});
  const Made made = drawing.make();
  EXPECT_GE(made.node({10, 5}), 0);
  EXPECT_GE(made.node({30, 5}), 0);
  EXPECT_TRUE(made.joined({10, 12}, {30, -2}));
  EXPECT_EQ(made.building.nodes.size(), 8U);
  EXPECT_EQ(made.building.edges.size(), 7U);
}

TEST(FloorGraph, ADoorThatSeesNoLineIsLedToOneAcrossTheFloor) {
  Drawing drawing;
  drawing.area("bend", {{0, 0}, {30, 0}, {30, 30}, {26, 30}, {26, 3}, {0, 3}, {0, 0}});
  drawing.line("path", {{1, 1.5}, {20, 1.5}});
  roomWithDoor(drawing, 26, 30, {28, 30});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({28, 30}, {1, 1.5}));
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
}

TEST(FloorGraph, ALineThatEndsInAHallIsJoinedToItsDoors) {
  Drawing drawing;
  drawing.area("hall", box(0, 0, 40, 20));
  drawing.line("path", {{-5, 5}, {1, 5}});
  roomWithDoor(drawing, 36, 20, {38, 20});
  EXPECT_TRUE(drawing.make().joined({38, 20}, {-5, 5}));
}

TEST(FloorGraph, ALineThroughARoomIsJoinedToItsMiddle) {
  Drawing drawing;
  drawing.room("shop", box(0, 0, 10, 10)).name = "Shop";
  drawing.plan.cells.back().isPlace = true;
  drawing.line("path", {{-5, 2}, {15, 2}});
  const Made made = drawing.make();
  const GroundPoint shop = metres(made.building.places.at(0).coordinate);
  EXPECT_TRUE(made.joined(shop, {15, 2}));
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
  EXPECT_EQ(made.report.openedForLines, 2U);
}

TEST(FloorGraph, ARoomsNodeBesideALineIsTheLines) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 20, 10)).name = "Hall";
  drawing.line("path", {{-5, 5.03}, {25, 5.03}});
  const Made made = drawing.make();
  EXPECT_EQ(made.building.nodes.size(), 3U);
  EXPECT_EQ(made.building.edges.size(), 2U);
}

TEST(FloorGraph, EdgesOfACellWithStepsAreNotForWheels) {
  Drawing drawing;
  roomWithDoor(drawing, 0, 0, {2, 0});
  drawing.plan.cells[0].stepFree = StepFree::no;
  EXPECT_FALSE(drawing.make().building.edges.at(0).barrierFree);
}

TEST(FloorGraph, NoNodeIsMadeWhereStairsEndInFrontOfADoor) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 4), {0});
  drawing.area("corridor", box(-10, -3, 14, 0), {0});
  drawing.door("door", {{2, 0}}, {0});
  drawing.door("west", {{-10, -1.5}}, {0});
  drawing.line("way/stairs", {{2.005, -1.5}, {8, -1.5}}, {0, 1}, ConnectionKind::stairs).incline =
      1;
  const Made made = drawing.make();
  const auto here = std::count_if(made.building.nodes.begin(), made.building.nodes.end(),
                                  [](const BuildingNode& node) {
                                    return groundDistance(metres(node.coordinate), {2, -1.5}) < 0.1;
                                  });
  EXPECT_EQ(here, 1);
  EXPECT_TRUE(made.joined({2, 0}, {8, -1.5}, 0, 1));
}

TEST(FloorGraph, NoNodeIsMadeWhereStairsEndAmidAPlace) {
  Drawing drawing;
  PlanCell& hall = drawing.area("hall", box(-4, -4, 4, 4));
  hall.name = "Hall";
  hall.isPlace = true;
  drawing.door("door", {{0, -4}});
  drawing.line("way/stairs", {{0.005, 0}, {12, 0}}, {0, 1}, ConnectionKind::stairs).incline = 1;
  const Made made = drawing.make();
  const auto here = std::count_if(
      made.building.nodes.begin(), made.building.nodes.end(), [](const BuildingNode& node) {
        return node.level == 0 && groundDistance(metres(node.coordinate), {0, 0}) < 0.1;
      });
  EXPECT_EQ(here, 1);
  EXPECT_TRUE(made.joined({0, -4}, {12, 0}, 0, 1));
}

}  // namespace
}  // namespace KorvaniTest
