#include "Drawing/Scene.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <vector>

#include "Tools/BuildingText.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::Building;
using KorvaniTools::ConnectionSymbol;
using KorvaniTools::makeScene;
using KorvaniTools::RoomKind;
using KorvaniTools::Scene;
using KorvaniTools::SceneFrame;
using KorvaniTools::SceneLevel;
using KorvaniTools::ScenePoint;
using Levels = std::vector<std::int64_t>;

std::string roomOf(int level, const std::string& more) {
  return featureOf("room", "\"level\":" + std::to_string(level) + also(more), "Polygon",
                   "[[[11,48],[11.001,48],[11.001,48.001],[11,48.001],[11,48]]]");
}

TEST(SceneFrame, CountsMetresFromTheNorthWestCorner) {
  KorvaniTools::Rectangle rectangle;
  rectangle.include(KorvaniTools::Coordinate{48, 11});
  rectangle.include(KorvaniTools::Coordinate{48.001, 11.001});
  const SceneFrame frame(rectangle, 5);
  const ScenePoint corner = frame.at({48.001, 11});
  EXPECT_DOUBLE_EQ(corner.x, 5);
  EXPECT_DOUBLE_EQ(corner.y, 5);
  const ScenePoint other = frame.at({48, 11.001});
  EXPECT_NEAR(other.y - corner.y, 111.195, 0.01);
  EXPECT_NEAR(other.x - corner.x, 111.195 * std::cos(48.0005 * std::acos(-1) / 180), 0.01);
  EXPECT_NEAR(frame.width(), other.x + 5, 1e-9);
  EXPECT_NEAR(frame.height(), other.y + 5, 1e-9);
}

TEST(SceneFrame, OfNothingHasItsMargins) {
  const SceneFrame frame(KorvaniTools::Rectangle{}, 3);
  EXPECT_EQ(frame.width(), 6);
  EXPECT_EQ(frame.height(), 6);
}

TEST(Scene, OfAnEmptyBuildingHasNoLevels) {
  const Scene scene = makeScene(Building{});
  EXPECT_TRUE(scene.levels.empty());
  EXPECT_EQ(scene.find(0), nullptr);
  EXPECT_GT(scene.frame.width(), 0);
}

TEST(Scene, OfOnePointHasRoomAroundIt) {
  const Scene scene = makeScene(parsed({nodeAt(1, 0, 11, 48)}));
  ASSERT_EQ(scene.levels.size(), 1U);
  const ScenePoint at = scene.levels.front().nodes.front().at;
  EXPECT_DOUBLE_EQ(at.x, scene.frame.width() / 2);
  EXPECT_DOUBLE_EQ(at.y, scene.frame.height() / 2);
}

TEST(Scene, ListsLevelsFromBelow) {
  const Scene scene = makeScene(parsed(
      {nodeAt(1, 2, 11, 48), nodeAt(2, -1, 11, 48), placeAt("Roof", 7, 11, 48), roomOf(0, "")}));
  Levels levels;
  for (const SceneLevel& level : scene.levels) levels.push_back(level.level);
  EXPECT_EQ(levels, (Levels{-1, 0, 2, 7}));
  EXPECT_EQ(scene.find(7)->places.front().name, "Roof");
}

TEST(Scene, PutsAllLevelsIntoOneFrame) {
  const Scene scene =
      makeScene(parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 1, 11, 48), nodeAt(3, 1, 11.002, 48.001)}));
  const ScenePoint below = scene.find(0)->nodes[0].at;
  const ScenePoint above = scene.find(1)->nodes[0].at;
  EXPECT_EQ(below.x, above.x);
  EXPECT_EQ(below.y, above.y);
}

TEST(Scene, NamesLevelsAsPeopleDo) {
  const Scene scene = makeScene(
      parsed({nodeAt(1, 1, 11, 48), nodeAt(2, 0, 11, 48)},
             R"("levels":[{"level":1,"name":"Departures"},{"level":0,"name":"Level 0"}])"));
  EXPECT_EQ(scene.find(1)->title, "Level 1 \u00b7 Departures");
  EXPECT_EQ(scene.find(0)->title, "Level 0");
}

TEST(Scene, TellsTheNumbersThatAreOnTheDoors) {
  const Scene scene = makeScene(parsed(
      {nodeAt(1, 2, 11, 48), nodeAt(2, 3, 11, 48)},
      R"("levels":[{"level":2,"name":"1","source":"1"},{"level":3,"name":"Roof","source":"2"}])"));
  EXPECT_EQ(scene.find(2)->title, "Level 1");
  EXPECT_EQ(scene.find(3)->number, "2");
  EXPECT_EQ(scene.find(3)->title, "Level 2 \u00b7 Roof");
}

TEST(Scene, SortsEdgesFromLevelChanges) {
  const Scene scene = makeScene(parsed(
      {nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48.001), nodeAt(3, 1, 11, 48.001),
       nodeAt(4, 2, 11, 48.001), edgeOf(1, 2, R"("distance":99,"oneway":true)"),
       edgeOf(2, 3, R"("type":"lift")"), edgeOf(2, 4, R"("type":"lift","barrierFree":false)"),
       edgeOf(2, 3, R"("type":"stairs","barrierFree":false)")}));
  const SceneLevel& ground = *scene.find(0);
  ASSERT_EQ(ground.edges.size(), 1U);
  EXPECT_EQ(ground.edges[0].distance, 99);
  EXPECT_TRUE(ground.edges[0].oneway);
  ASSERT_EQ(ground.connections.size(), 2U);
  EXPECT_EQ(ground.connections[0].symbol, ConnectionSymbol::elevator);
  EXPECT_EQ(ground.connections[0].levels, (Levels{1, 2}));
  EXPECT_TRUE(ground.connections[0].barrierFree);
  EXPECT_EQ(ground.connections[1].symbol, ConnectionSymbol::stairs);
  EXPECT_FALSE(ground.connections[1].barrierFree);
  EXPECT_EQ(scene.find(2)->connections.front().levels, Levels{0});
}

TEST(Scene, MeasuresEdgesWithoutALength) {
  const Scene scene =
      makeScene(parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48.001), edgeOf(1, 2)}));
  EXPECT_NEAR(scene.levels[0].edges[0].distance, 111.195, 0.01);
}

TEST(Scene, KnowsWhatRoomsAndPlacesAreFor) {
  const Scene scene =
      makeScene(parsed({roomOf(0, R"("category":"toilets","name":"WC 1")"),
                        placeAt("Kiosk", 0, 11, 48, R"("shop":"kiosk")"),
                        placeAt("Cafe", 0, 11, 48, R"("category":"","amenity":"cafe")"),
                        placeAt("Odd", 0, 11, 48, R"("category":7)"),
                        placeAt("Door", 0, 11, 48, R"("entrance":true)")}));
  const SceneLevel& level = scene.levels.front();
  EXPECT_EQ(level.rooms[0].kind, RoomKind::toilet);
  EXPECT_EQ(level.rooms[0].name, "WC 1");
  EXPECT_EQ(level.places[0].kind, RoomKind::shop);
  EXPECT_EQ(level.places[1].kind, RoomKind::food);
  EXPECT_EQ(level.places[2].kind, RoomKind::other);
  EXPECT_FALSE(level.places[2].entrance);
  EXPECT_TRUE(level.places[3].entrance);
}

TEST(Scene, LeavesOutWhatHasNoExtent) {
  const Scene scene = makeScene(
      parsed({nodeAt(1, 0, 11, 48), wallOf(0, "[[11,48]]"), wallOf(0, "[[11,48],[11.001,48]]"),
              featureOf("room", "\"level\":0", "Polygon", "[[[11,48],[11.001,48]]]")}));
  EXPECT_EQ(scene.levels[0].walls.size(), 1U);
  EXPECT_TRUE(scene.levels[0].rooms.empty());
}

TEST(Scene, HoldsThePoles) {
  const Scene scene = makeScene(parsed({nodeAt(1, 0, -180, 90), nodeAt(2, 0, 180, -90)}));
  EXPECT_TRUE(std::isfinite(scene.frame.width()));
  EXPECT_GT(scene.frame.height(), 1.9e7);
}

}  // namespace
}  // namespace KorvaniTest
