#include <gtest/gtest.h>

#include "Drawing.hpp"

namespace KorvaniTest {
namespace {

using namespace KorvaniTools;

TEST(Walls, StandAroundRooms) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 3));
  const Made made = drawing.make();
  EXPECT_NEAR(made.wallLength(), 14, 0.02);
  EXPECT_EQ(made.report.wallLines, made.building.obstacles.size());
}

TEST(Walls, AreAsStrongAsThoseOfOtherBuildings) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 3));
  for (const BuildingObstacle& wall : drawing.make().building.obstacles) {
    EXPECT_EQ(wall.strength, 100);
    EXPECT_EQ(wall.lines.at(0).regions.size(), 1U);
  }
}

TEST(Walls, DoNotStandAroundCorridorsAndAreas) {
  Drawing drawing;
  drawing.area("area", box(0, 0, 4, 3));
  drawing.cell("corridor", CellKind::corridor, box(4, 0, 9, 3));
  EXPECT_EQ(drawing.make().wallLength(), 0);
}

TEST(Walls, StandAroundCorridorsThatAreSaidToHaveThem) {
  Drawing drawing;
  drawing.cell("corridor", CellKind::corridor, box(0, 0, 4, 3)).walled = true;
  EXPECT_NEAR(drawing.make().wallLength(), 14, 0.02);
}

TEST(Walls, ThatNeighboursShareAreWrittenOnce) {
  Drawing drawing;
  drawing.room("a", box(0, 0, 4, 3));
  drawing.room("b", box(4, 0, 8, 3));
  EXPECT_NEAR(drawing.make().wallLength(), 8 + 8 + 3 * 3, 0.02);
}

TEST(Walls, AreOpenedForTheWidthOfADoor) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 3));
  drawing.area("hall", box(0, -3, 4, 0));
  drawing.door("door", {{2, 0}}).width = 1.2;
  const Made made = drawing.make();
  EXPECT_NEAR(made.wallLength(), 14 - 1.2, 0.02);
  EXPECT_FALSE(made.wallAt({2, 0}));
  EXPECT_FALSE(made.wallAt({2.55, 0}));
  EXPECT_TRUE(made.wallAt({2.65, 0}));
}

TEST(Walls, AreOpenedAMetreWideForADoorWithoutWidth) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 3));
  drawing.door("door", {{2, 0}});
  EXPECT_NEAR(drawing.make().wallLength(), 13, 0.02);
}

TEST(Walls, OfBothNeighboursAreOpenedEvenWhenTheyLieApart) {
  Drawing drawing;
  drawing.room("a", box(0, 0, 4, 3));
  drawing.room("b", box(4.2, 0, 8, 3));
  drawing.door("door", {{4.1, 1.5}});
  const Made made = drawing.make();
  EXPECT_FALSE(made.wallAt({4, 1.5}));
  EXPECT_FALSE(made.wallAt({4.2, 1.5}));
  EXPECT_TRUE(made.joined({4.1, 1.5}, {1, 1.5}) || made.report.doors == 1);
}

TEST(Walls, BesideADoorInTheCornerStayWhole) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 3));
  drawing.room("next", box(4, 0, 8, 3));
  drawing.door("door", {{3.6, 0}});
  const Made made = drawing.make();
  EXPECT_FALSE(made.wallAt({3.9, 0}));
  EXPECT_TRUE(made.wallAt({4, 0.1}));
}

TEST(Walls, AreOpenedAlongADoorThatIsALine) {
  Drawing drawing;
  drawing.room("a", box(0, 0, 4, 3));
  drawing.room("b", box(4.1, 0, 8, 3));
  drawing.door("door", {{4.05, 1}, {4.05, 2.5}});
  const Made made = drawing.make();
  for (const double y : {1.1, 1.8, 2.4}) {
    EXPECT_FALSE(made.wallAt({4, y})) << y;
    EXPECT_FALSE(made.wallAt({4.1, y})) << y;
  }
  EXPECT_TRUE(made.wallAt({4, 0.9}));
  EXPECT_TRUE(made.wallAt({4, 2.6}));
  EXPECT_TRUE(made.joined({4.05, 1.75}, {4.05, 1.75}));
}

TEST(Walls, DrawnAsLinesStandAndAreOpenedByDoors) {
  Drawing drawing;
  drawing.wall("wall", {{0, 0}, {10, 0}});
  drawing.door("door", {{5, 0.2}});
  const Made made = drawing.make();
  EXPECT_NEAR(made.wallLength(), 9, 0.02);
  EXPECT_FALSE(made.wallAt({5, 0}));
}

TEST(Walls, StayShutAtADoorThatNobodyGetsThrough) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 3));
  drawing.area("hall", box(0, -3, 4, 0));
  drawing.door("door", {{2, 0}}).passable = false;
  const Made made = drawing.make();
  EXPECT_NEAR(made.wallLength(), 14, 0.02);
  EXPECT_TRUE(made.building.nodes.empty());
  EXPECT_EQ(made.report.doors, 0U);
}

TEST(Walls, OfOtherLevelsAreNotOpened) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 3), {0, 1});
  drawing.door("door", {{2, 0}}, {1});
  const Made made = drawing.make();
  EXPECT_TRUE(made.wallAt({2, 0}, 0));
  EXPECT_FALSE(made.wallAt({2, 0}, 1));
}

TEST(Walls, AreOpenedWhereALinePassesThemWithoutADoor) {
  Drawing drawing;
  drawing.room("way/room", box(0, 0, 4, 3));
  drawing.line("way/path", {{2, -3}, {2, 2}});
  const Made made = drawing.make();
  EXPECT_FALSE(made.wallAt({2, 0}));
  EXPECT_NEAR(made.wallLength(), 13, 0.02);
  EXPECT_EQ(made.report.openedForLines, 1U);
  EXPECT_TRUE(
      made.remarked("way/path passes a wall where no door is mapped: opened there (way/room)"));
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
}

TEST(Walls, AreNotOpenedTwiceForALineThatGoesThroughADoor) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 3));
  drawing.door("door", {{2, 0}});
  drawing.line("path", {{2.1, -3}, {2.1, 2}});
  const Made made = drawing.make();
  EXPECT_EQ(made.report.openedForLines, 0U);
  EXPECT_NEAR(made.wallLength(), 13, 0.02);
}

TEST(Walls, StandWhereALinePassesALockedDoor) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 3));
  drawing.door("door", {{2, 0}}).passable = false;
  drawing.line("path", {{2, -3}, {2, 2}});
  const Made made = drawing.make();
  EXPECT_TRUE(made.wallAt({2, 0}));
  EXPECT_EQ(made.edgesThroughWalls(), 1U);
}

TEST(Walls, ALineThatEndsOnAnOutlineOpensIt) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 3));
  drawing.line("path", {{2, -3}, {2, 0}});
  const Made made = drawing.make();
  EXPECT_FALSE(made.wallAt({2, 0}));
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
}

TEST(Walls, AreOpenedForLinesOfTheirOwnLevelOnly) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 3), {0});
  drawing.line("path", {{2, -3}, {2, 2}}, {1});
  EXPECT_NEAR(drawing.make().wallLength(), 14, 0.02);
}

TEST(Walls, StandAroundStairsThatADoorLeadsInto) {
  Drawing drawing;
  drawing.area("hall", box(0, -5, 10, 0));
  drawing.cell("stairs", CellKind::stairs, box(2, 0, 6, 3));
  drawing.door("door", {{4, 0}});
  EXPECT_NEAR(drawing.make().wallLength(), 13, 0.02);
}

TEST(Walls, DoNotStandAroundStairsWithoutADoor) {
  Drawing drawing;
  drawing.area("hall", box(0, -5, 10, 0));
  drawing.cell("stairs", CellKind::stairs, box(2, 0, 6, 3));
  EXPECT_EQ(drawing.make().wallLength(), 0);
}

TEST(Walls, AreOpenedForLinesThatTouchThemByAHair) {
  for (const double hair : {-0.004, 0.0, 0.004}) {
    Drawing drawing;
    drawing.room("room", box(0.003, 0.003, 6, 6));
    drawing.line("path", {{-5, -8}, {0.003 + hair, 0.003 + hair}});
    const Made made = drawing.make();
    EXPECT_EQ(made.edgesThroughWalls(), 0U) << hair;
    EXPECT_EQ(made.report.openedForLines, 1U) << hair;
  }
}

}  // namespace
}  // namespace KorvaniTest
