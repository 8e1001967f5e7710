/// Drawn lines, and the floor that they end on.

#include <gtest/gtest.h>

#include <algorithm>

#include "Drawing.hpp"

namespace KorvaniTest {
namespace {

using namespace KorvaniTools;

/// A hall of 30 m by 10 m with a line along its middle and a door in the south that a path from
/// outdoors ends at.
Drawing hallWithEntrance(bool walled) {
  Drawing drawing;
  drawing.area("hall", box(0, 0, 30, 10)).walled = walled;
  drawing.line("inside", {{5, 5}, {25, 5}});
  drawing.line("outside", {{10, -20}, {10, 0}});
  drawing.door("entrance", {{10, 0}}).node = drawing.key({10, 0});
  return drawing;
}

TEST(LineJoin, ALineThatEndsAtTheDoorOfAHallIsJoinedToTheLinesInside) {
  const Made made = hallWithEntrance(true).make();
  EXPECT_TRUE(made.joined({10, -20}, {25, 5}));
  EXPECT_NE(made.edge(made.node({10, 0}), made.node({10, 5})), nullptr);
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
}

TEST(LineJoin, ALineThatEndsAtTheEdgeOfOpenFloorIsJoinedToTheLinesThere) {
  EXPECT_TRUE(hallWithEntrance(false).make().joined({10, -20}, {25, 5}));
  Drawing drawing = hallWithEntrance(false);
  drawing.plan.doors.clear();
  EXPECT_TRUE(drawing.make().joined({10, -20}, {25, 5}));
}

TEST(LineJoin, StairsThatEndBesideTheLinesOfAHallAreJoinedToThem) {
  Drawing drawing;
  drawing.area("low", box(0, 0, 30, 20), {0});
  drawing.area("high", box(0, 0, 30, 20), {1});
  drawing.line("a", {{0, 5}, {30, 5}}, {0});
  drawing.line("b", {{0, 5}, {30, 5}}, {1});
  drawing.line("stairs", {{10, 12}, {16, 12}}, {0, 1}, ConnectionKind::stairs).incline = 1;
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({0, 5}, {30, 5}, 0, 1));
}

TEST(LineJoin, EscalatorsThatEndAroundAnOpeningInTheFloorAreJoinedAcrossIt) {
  Drawing drawing;
  PlanCell& hall = drawing.area("hall", box(0, 0, 40, 20), {0});
  hall.polygons[0].push_back({at({10, 5}), at({10, 15}), at({30, 15}), at({30, 5}), at({10, 5})});
  drawing.line("up", {{10, 5}, {20, 5}}, {0, 1}, ConnectionKind::escalator).incline = 1;
  drawing.line("down", {{30, 15}, {20, 15}}, {0, 1}, ConnectionKind::escalator).incline = 1;
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({10, 5}, {30, 15}));
}

TEST(LineJoin, PiecesOfLinesOnOnePlatformAreJoined) {
  Drawing drawing;
  drawing.area("platform", box(0, 0, 100, 8), {1});
  drawing.line("west", {{5, 4}, {30, 4}}, {1});
  drawing.line("east", {{70, 4}, {95, 4}}, {1});
  drawing.line("subway", {{36, 4}, {36, -20}, {64, -20}, {64, 4}}, {0});
  drawing.line("stairs", {{30, 4}, {36, 4}}, {0, 1}, ConnectionKind::stairs);
  drawing.line("escalator", {{70, 4}, {64, 4}}, {0, 1}, ConnectionKind::escalator).oneway = true;
  const Made made = drawing.make();
  const auto way = made.way(made.node({5, 4}, 1), made.node({95, 4}, 1));
  ASSERT_TRUE(way);
  EXPECT_NEAR(*way, 90, 0.1);
}

TEST(LineJoin, DoorsAreLedToTheEndOfStairsThatIsNearerThanTheLines) {
  Drawing drawing;
  drawing.area("low", box(0, 0, 40, 20), {0});
  drawing.line("path", {{0, 1}, {40, 1}}, {0});
  drawing.line("up", {{20, 16}, {26, 16}}, {1});
  drawing.line("stairs", {{14, 16}, {20, 16}}, {0, 1}, ConnectionKind::stairs);
  drawing.room("room", box(10, 20, 16, 24), {0});
  drawing.door("door", {{13, 20}}, {0});
  const Made made = drawing.make();
  const auto way = made.way(made.node({13, 20}), made.node({14, 16}));
  ASSERT_TRUE(way);
  EXPECT_LT(*way, 5);
  EXPECT_TRUE(made.joined({14, 16}, {0, 1}));
}

TEST(LineJoin, LinesThatHangTogetherGetNothingMore) {
  Drawing drawing;
  drawing.area("hall", box(0, 0, 40, 10));
  drawing.line("way/1", {{0, 5}, {20, 5}, {40, 5}});
  drawing.line("way/2", {{20, 5}, {20, 10}});
  EXPECT_EQ(drawing.make().building.edges.size(), 3U);
}

TEST(LineJoin, NobodyStepsOntoStairsAmidTheirFlight) {
  Drawing drawing;
  drawing.area("hall", box(0, 0, 40, 10));
  drawing.line("stairs", {{10, 5}, {15, 5}, {20, 5}, {25, 5}}, {0}, ConnectionKind::stairs);
  drawing.room("room", box(15, 10, 20, 14));
  drawing.door("door", {{17.5, 10}});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({17.5, 10}, {10, 5}));
  EXPECT_TRUE(made.joined({17.5, 10}, {25, 5}));
  for (const GroundPoint amid : {GroundPoint{15, 5}, GroundPoint{20, 5}}) {
    const std::int64_t node = made.node(amid);
    EXPECT_EQ(std::count_if(
                  made.building.edges.begin(), made.building.edges.end(),
                  [&](const BuildingEdge& edge) { return edge.from == node || edge.to == node; }),
              2);
  }
}

TEST(LineJoin, ARoomThatLinesOnlyTouchIsNoPassage) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 10, 10));
  drawing.line("south", {{5, -10}, {5, 0}});
  drawing.line("north", {{5, 20}, {5, 10}});
  EXPECT_FALSE(drawing.make().joined({5, -10}, {5, 20}));
}

TEST(LineJoin, ADoorOnALineInARoomHasNoSecondEdgeAlongIt) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 12, 2));
  drawing.line("path", {{-0.1, 20}, {0, 0}});
  drawing.door("door", {{0, 1}});
  const Building building = drawing.make().building;
  for (std::size_t i = 0; i < building.edges.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      const BuildingEdge& a = building.edges[i];
      const BuildingEdge& b = building.edges[k];
      EXPECT_FALSE(std::minmax(a.from, a.to) == std::minmax(b.from, b.to)) << a.from << " " << a.to;
    }
  }
}

TEST(LineJoin, StairsThatEndOnALineBetweenItsNodesAreAStopOfIt) {
  Drawing drawing;
  drawing.area("hall", box(-10, -4, 10, 4));
  drawing.line("way/path", {{-9, 0}, {9, 0}});
  drawing.line("way/stairs", {{0, 0.005}, {0, 20}}, {0, 1}, ConnectionKind::stairs).incline = 1;
  const Made made = drawing.make();
  EXPECT_EQ(made.nodesOn(0), 3U);
  EXPECT_TRUE(made.joined({-9, 0}, {0, 20}, 0, 1));
  EXPECT_TRUE(made.joined({9, 0}, {0, 20}, 0, 1));
}

}  // namespace
}  // namespace KorvaniTest
