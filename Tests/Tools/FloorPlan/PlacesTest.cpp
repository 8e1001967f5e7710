#include <gtest/gtest.h>

#include "Drawing.hpp"

namespace KorvaniTest {
namespace {

using namespace KorvaniTools;

PlanCell& named(PlanCell& cell, const std::string& name) {
  cell.name = name;
  cell.isPlace = true;
  return cell;
}

TEST(Places, OfRoomsLieAtTheirNode) {
  Drawing drawing;
  named(drawing.room("room", box(0, 0, 4, 4)), "101").further["category"] = "office";
  drawing.door("door", {{2, 0}});
  const Made made = drawing.make();
  ASSERT_EQ(made.building.places.size(), 1U);
  const Place& place = made.building.places[0];
  EXPECT_EQ(place.name, "101");
  EXPECT_EQ(place.further["category"], "office");
  EXPECT_FALSE(place.entrance);
  bool atNode = false;
  for (const BuildingNode& node : made.building.nodes) {
    atNode = atNode || node.coordinate == place.coordinate;
  }
  EXPECT_TRUE(atNode);
}

TEST(Places, LieWhereTheSourceShowsTheirLabel) {
  Drawing drawing;
  named(drawing.room("room", box(0, 0, 8, 4)), "101").displayPoint = at({6, 3});
  drawing.door("door", {{2, 0}});
  const Made made = drawing.make();
  EXPECT_GE(made.node({6, 3}), 0);
  EXPECT_NEAR(metres(made.building.places.at(0).coordinate).x, 6, 0.01);
}

TEST(Places, ALabelOutsideOrInTheWallIsNotFollowed) {
  Drawing drawing;
  named(drawing.room("room", box(0, 0, 8, 4)), "101").displayPoint = at({7.95, 3});
  drawing.door("door", {{2, 0}});
  const Made made = drawing.make();
  EXPECT_LT(metres(made.building.places.at(0).coordinate).x, 7.5);
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
}

TEST(Places, OfNamedAreasLieInTheHallTheyArePartOf) {
  Drawing drawing;
  drawing.area("hall", box(0, 0, 30, 10));
  named(drawing.area("cafe", box(20, 6, 26, 10)), "Café");
  drawing.room("room", box(-4, 0, 0, 10));
  drawing.door("door", {{0, 5}});
  const Made made = drawing.make();
  const GroundPoint cafe = metres(made.building.places.at(0).coordinate);
  EXPECT_GT(cafe.x, 20);
  EXPECT_GT(cafe.y, 6);
  EXPECT_TRUE(made.joined(cafe, {0, 5}));
}

TEST(Places, OnSeveralLevelsAreOneForEach) {
  Drawing drawing;
  named(drawing.room("room", box(0, 0, 4, 4), {0, 1}), "Tower");
  drawing.plan.places.push_back({"node/1", "Lift", {0, 1}, at({9, 9}), false, {}});
  EXPECT_EQ(drawing.make().building.places.size(), 4U);
}

TEST(Places, EntrancesAreTakenOver) {
  Drawing drawing;
  drawing.area("hall", box(0, 0, 4, 4));
  drawing.plan.places.push_back(
      {"node/1", "Main entrance", {0}, at({2, 0}), true, {{"door", "revolving"}}});
  const Place place = drawing.make().building.places.at(0);
  EXPECT_TRUE(place.entrance);
  EXPECT_EQ(place.further["door"], "revolving");
}

TEST(Places, UnnamedRoomsAreNone) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 4));
  EXPECT_TRUE(drawing.make().building.places.empty());
}

TEST(Rooms, AreKeptForEachLevelWithNameAndCategory) {
  Drawing drawing;
  PlanCell& cell = drawing.room("room", box(0, 0, 4, 4), {0, 1});
  cell.name = "101";
  cell.category = "office";
  drawing.cell("corridor", CellKind::corridor, box(4, 0, 8, 4));
  const Building building = drawing.make().building;
  ASSERT_EQ(building.rooms.size(), 3U);
  EXPECT_EQ(building.rooms[0].name, "101");
  EXPECT_EQ(building.rooms[0].category, "office");
  EXPECT_EQ(building.rooms[1].category, "corridor");
  EXPECT_EQ(building.rooms[2].level, 1);
}

TEST(Rooms, KeepTheirHoles) {
  Drawing drawing;
  PlanCell& cell = drawing.area("hall", box(0, 0, 20, 20));
  std::vector<Coordinate> hole;
  for (const GroundPoint& point : box(8, 8, 12, 12)) hole.push_back(at(point));
  cell.polygons[0].push_back(hole);
  EXPECT_EQ(drawing.make().building.rooms.at(0).rings.size(), 2U);
}

TEST(Buildings, CarryNameAttributionAndLicence) {
  Drawing drawing;
  drawing.plan.name = "Station";
  drawing.plan.attribution = "Mappers";
  drawing.plan.licence = "ODbL";
  const Building building = drawing.make().building;
  EXPECT_EQ(building.name, "Station");
  EXPECT_EQ(building.attribution, "Mappers");
  EXPECT_EQ(building.licence, "ODbL");
}

TEST(Places, AtAPointThatNoDoorSeesGetANode) {
  Drawing drawing;
  drawing
      .cell("hall", CellKind::corridor,
            {{0, 0}, {30, 0}, {30, 20}, {26, 20}, {26, 3}, {0, 3}, {0, 0}})
      .walled = true;
  drawing.room("room", box(-4, 0, 0, 3));
  drawing.room("other", box(3, -4, 7, 0));
  drawing.door("door", {{0, 1.5}});
  drawing.door("other", {{5, 0}});
  drawing.plan.places.push_back({"node/1", "Cash", {0}, at({28, 15}), false, {}});
  drawing.plan.places.push_back({"node/2", "Bench", {0}, at({10, 2}), false, {}});
  const Made made = drawing.make();
  EXPECT_TRUE(made.joined({28, 15}, {0, 1.5}));
  EXPECT_EQ(made.node({10, 2}), -1);
  EXPECT_EQ(made.edgesThroughWalls(), 0U);
}

TEST(Places, AtAPointInARoomThatNobodyCanEnterGetNone) {
  Drawing drawing;
  drawing.room("room", box(0, 0, 4, 4));
  drawing.plan.places.push_back({"node/1", "Cash", {0}, at({2, 2}), false, {}});
  EXPECT_TRUE(drawing.make().building.nodes.empty());
}

}  // namespace
}  // namespace KorvaniTest
