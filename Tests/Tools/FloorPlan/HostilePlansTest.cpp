#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Drawing.hpp"

namespace KorvaniTest {
namespace {

using namespace KorvaniTools;

/// A closed outline around the origin whose corners take turns in their distance from it, in
/// metres; a circle when both are alike.
GroundLine starOf(int corners, double inner, double outer) {
  GroundLine ring;
  ring.reserve(static_cast<std::size_t>(corners) + 1);
  for (int i = 0; i < corners; ++i) {
    const double angle = i * 2 * 3.14159265358979 / corners;
    const double radius = i % 2 == 0 ? inner : outer;
    ring.push_back({radius * std::cos(angle), radius * std::sin(angle)});
  }
  ring.push_back(ring.front());
  return ring;
}

TEST(HostilePlans, AnEmptyPlanIsAnEmptyBuilding) {
  const Made made = Drawing().make();
  EXPECT_TRUE(made.building.nodes.empty());
  EXPECT_TRUE(made.building.regions.empty());
}

TEST(HostilePlans, ARingThatCrossesItselfIsMendedWithARemark) {
  Drawing drawing;
  drawing.room("way/eight", {{0, 0}, {4, 4}, {4, 0}, {0, 4}, {0, 0}});
  const Made made = drawing.make();
  EXPECT_TRUE(made.remarked("way/eight crosses itself: mended"));
  EXPECT_FALSE(made.building.rooms.empty());
}

TEST(HostilePlans, CellsWithoutAreaAreLeftOutWithARemark) {
  Drawing drawing;
  drawing.room("way/flat", {{0, 0}, {4, 0}, {8, 0}, {0, 0}});
  drawing.room("way/point", {{1, 1}, {1, 1}, {1, 1}, {1, 1}});
  drawing.room("way/short", {{1, 1}, {2, 1}});
  drawing.room("way/none", {}).polygons.clear();
  const Made made = drawing.make();
  EXPECT_TRUE(made.building.rooms.empty());
  for (const char* source : {"way/flat", "way/point", "way/short", "way/none"}) {
    EXPECT_TRUE(made.remarked(source)) << source;
  }
}

TEST(HostilePlans, PositionsThatAreNotOnEarthCostOnlyTheirFeature) {
  Drawing drawing;
  drawing.room("way/good", box(0, 0, 4, 4));
  drawing.door("node/good", {{2, 0}});
  const double nothing = std::numeric_limits<double>::quiet_NaN();
  drawing.room("way/bad", box(4, 0, 8, 4)).polygons[0][0][1].latitude = nothing;
  drawing.door("node/bad", {{1, 0}}).positions[0].longitude = 1e300;
  drawing.line("way/line", {{0, 0}, {1, 1}}).vertices[0].coordinate.latitude =
      std::numeric_limits<double>::infinity();
  const Made made = drawing.make();
  EXPECT_EQ(made.building.rooms.size(), 1U);
  EXPECT_EQ(made.building.edges.size(), 1U);
  for (const char* source : {"way/bad", "node/bad", "way/line"}) {
    EXPECT_TRUE(made.remarked(source)) << source;
  }
}

TEST(HostilePlans, DuplicatePositionsDoNoHarm) {
  Drawing drawing;
  drawing.room("room", {{0, 0}, {0, 0}, {4, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 4}, {0, 0}});
  drawing.wall("wall", {{9, 0}, {9, 0}});
  drawing.wall("wall", {{9, 1}, {9, 1}, {9, 3}});
  drawing.door("door", {{2, 0}});
  const Made made = drawing.make();
  EXPECT_NEAR(made.wallLength(), 15 + 2, 0.02);
  EXPECT_EQ(made.building.edges.size(), 1U);
}

TEST(HostilePlans, ACellAsLargeAsACountryIsStillACell) {
  Drawing drawing;
  drawing.area("way/land", box(-400000, -400000, 400000, 400000));
  drawing.room("way/room", box(0, 0, 4, 4));
  drawing.door("node/door", {{2, 0}});
  const Made made = drawing.make();
  EXPECT_EQ(made.building.rooms.size(), 2U);
  EXPECT_GE(made.building.nodes.size(), 2U);
}

TEST(HostilePlans, TheSameRoomTwiceIsWalledOnce) {
  Drawing drawing;
  drawing.room("a", box(0, 0, 4, 4));
  drawing.room("b", box(0, 0, 4, 4));
  drawing.door("door", {{2, 0}});
  EXPECT_NEAR(drawing.make().wallLength(), 15, 0.02);
}

TEST(HostilePlans, UnknownCellsOfShaftsAreIgnored) {
  Drawing drawing;
  drawing.area("hall", box(0, 0, 4, 4), {0, 1});
  drawing.shaft("lift", {0, 1}, std::nullopt, {99});
  const Made made = drawing.make();
  EXPECT_TRUE(made.building.edges.empty());
  EXPECT_TRUE(made.remarked("lift leads to no other level"));
}

TEST(HostilePlans, DoorsWithoutPositionsAndLinesOfOneVertexAreIgnored) {
  Drawing drawing;
  drawing.area("hall", box(0, 0, 4, 4));
  drawing.door("door", {});
  drawing.line("line", {{1, 1}});
  drawing.wall("wall", {{1, 1}});
  EXPECT_TRUE(drawing.make().building.edges.empty());
}

TEST(HostilePlans, DoorsOfAbsurdWidthLeaveTheRoomUsable) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 4));
  drawing.area("hall", box(-4, -4, 8, 0));
  drawing.door("wide", {{2, 0}}).width = 1e12;
  drawing.door("thin", {{4, 2}}).width = -3;
  drawing.door("none", {{0, 2}}).width = std::numeric_limits<double>::quiet_NaN();
  const Made made = drawing.make();
  EXPECT_GT(made.wallLength(), 5);
  EXPECT_GE(made.building.edges.size(), 2U);
}

TEST(HostilePlans, AThousandDoorsOfOneHallAreJoined) {
  Drawing drawing;
  const int side = 500;
  drawing.area("hall", box(0, 0, 3.0 * side, 40));
  for (int i = 0; i < side; ++i) {
    drawing.room("south", box(i * 3, -3, i * 3 + 3, 0));
    drawing.door("door", {{i * 3 + 1.5, 0}});
    drawing.room("north", box(i * 3, 40, i * 3 + 3, 43));
    drawing.door("door", {{i * 3 + 1.5, 40}});
  }
  const Made made = drawing.make();
  EXPECT_EQ(made.report.doors, 1000U);
  EXPECT_TRUE(made.report.roomsWithoutDoor.empty());
  EXPECT_TRUE(made.joined({1.5, -1.5}, {3.0 * side - 1.5, 41.5}));
}

TEST(HostilePlans, ACircleOfThousandsOfCornersIsARoom) {
  Drawing drawing;
  const GroundLine ring = starOf(5000, 50, 50);
  drawing.room("round", ring);
  drawing.door("door", {{50, 0}});
  drawing.door("door", {{-50, 0}});
  EXPECT_TRUE(drawing.make().joined({50, 0}, {-50, 0}));
}

TEST(HostilePlans, AStarOfThousandsOfSpikesCostsOnlyItself) {
  Drawing drawing;
  const GroundLine ring = starOf(20000, 5, 25);
  drawing.area("way/star", ring);
  drawing.room("way/room", box(40, 0, 44, 4));
  drawing.door("door", {{42, 0}});
  const Made made = drawing.make();
  EXPECT_TRUE(made.remarked("way/star has an outline of more than 1000 corners, too many even"));
  EXPECT_EQ(made.building.rooms.size(), 1U);
  EXPECT_GE(made.node({42, 2}), 0);
}

TEST(HostilePlans, ARoundOutlineKeepsAsManyCornersAsAreOfUse) {
  Drawing drawing;
  const GroundLine ring = starOf(30000, 10, 10);
  drawing.room("way/round", ring);
  drawing.door("door", {{10, 0}});
  const Made made = drawing.make();
  EXPECT_TRUE(made.remarked("corners: those less than 0.1 m apart left out"));
  EXPECT_NEAR(made.wallLength(), 20 * 3.14159265358979 - 1, 0.1);
  EXPECT_GE(made.node({10, 0}), 0);
}

}  // namespace
}  // namespace KorvaniTest
