#include "Drawing/Viewer/ViewerData.hpp"

#include <gmock/gmock.h>

#include "ViewerCase.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::makeScene;
using KorvaniTools::Moment;
using KorvaniTools::OrderedJson;
using KorvaniTools::Scene;
using KorvaniTools::Timeline;
using KorvaniTools::TimelinePoint;
using KorvaniTools::TimelineRoute;
using KorvaniTools::viewerData;

class ViewerDataOfAWalk : public ViewerFixture {
 protected:
  OrderedJson walk(const Timeline& made) const {
    return viewerData(scene_, made, 2, false)["walk"];
  }

  const Scene scene_ = makeScene(viewerBuilding());
};

TEST_F(ViewerDataOfAWalk, PositionsAreInTheUnitsOfTheDrawing) {
  const OrderedJson data = viewerData(scene_, {}, 2, false);
  const OrderedJson& door = data["places"][0];
  const OrderedJson& desk = data["places"][1];
  EXPECT_EQ(door["name"], "Door");
  EXPECT_EQ(desk["name"], "Desk");
  EXPECT_NEAR(desk["at"][0].get<double>() - door["at"][0].get<double>(), 40, 0.5) << "20 m";
  EXPECT_EQ(desk["at"][2], 0);
  EXPECT_NEAR(data["width"].get<double>(), 2 * scene_.frame.width(), 0.01);
}

TEST_F(ViewerDataOfAWalk, LevelsComeAscendingWithTheirTitles) {
  const OrderedJson levels = viewerData(scene_, {}, 2, false)["levels"];
  ASSERT_EQ(levels.size(), 2U);
  EXPECT_EQ(levels[0]["level"], 0);
  EXPECT_EQ(levels[1]["number"], "1");
  EXPECT_EQ(levels[1]["title"], "Level 1");
}

TEST_F(ViewerDataOfAWalk, WithoutRouteAndWalkBothAreNull) {
  const OrderedJson data = viewerData(scene_, {}, 2, true);
  EXPECT_TRUE(data["route"].is_null());
  EXPECT_TRUE(data["walk"].is_null());
  EXPECT_EQ(data["graph"], true);
}

TEST_F(ViewerDataOfAWalk, TheWayLeftIsWrittenAsAPartOfTheRoute) {
  const Timeline made = timeline(routeTo(30, 10, 1) + lineAt("position", 4, 0));
  const OrderedJson json = walk(made);
  const OrderedJson& moment = json["moments"][1];
  ASSERT_TRUE(moment.contains("here")) << moment;
  EXPECT_FALSE(moment.contains("ahead"));
  const std::size_t next = moment["next"];
  EXPECT_EQ(json["routes"][0]["points"].size() - next + 1, made.moments[1].ahead.size());
  EXPECT_NEAR(moment["here"][0].get<double>() - json["routes"][0]["points"][0][0].get<double>(), 8,
              0.5);
}

TEST_F(ViewerDataOfAWalk, AWayBesideTheRouteIsWrittenWhole) {
  Timeline made;
  made.routes.push_back(TimelineRoute{});
  made.routes[0].points = {{{10, 20}, 0}, {{10, 20.0001}, 0}};
  Moment moment;
  moment.route = 0;
  moment.ahead = {{{10, 20}, 0}, {{10.0001, 20}, 0}, {{10, 20.0002}, 0}};
  made.moments.push_back(moment);
  const OrderedJson json = walk(made)["moments"][0];
  EXPECT_EQ(json["ahead"].size(), 3U);
  EXPECT_FALSE(json.contains("here"));
}

TEST_F(ViewerDataOfAWalk, ARouteHasItsMarks) {
  const OrderedJson route = walk(timeline(routeTo(30, 10, 1)))["routes"][0];
  EXPECT_EQ(route["start"], "Door");
  EXPECT_EQ(route["destination"], "Archive");
  EXPECT_EQ(route["from"], viewerData(scene_, {}, 2, false)["places"][0]["at"]);
  ASSERT_EQ(route["changes"].size(), 1U);
  const OrderedJson& change = route["changes"][0];
  EXPECT_EQ(change["symbol"], "stairs");
  EXPECT_EQ(change["words"], "to level 1");
  EXPECT_EQ(change["leaves"][2], 0);
  EXPECT_EQ(change["arrives"][2], 1);
  bool turns = false;
  for (const OrderedJson& arrow : route["arrows"]) {
    turns = turns || arrow["text"] == "turn right";
    EXPECT_EQ(arrow.contains("symbol"), arrow["kind"] == "levelUp") << arrow;
  }
  EXPECT_TRUE(turns) << route["arrows"];
}

TEST_F(ViewerDataOfAWalk, ARouteThatBeginsWithAChangeOfLevelHasTheLevelOfItsStart) {
  Scene scene = scene_;
  KorvaniTools::DrawnRoute route;
  route.start = {0, {20, 10}, "Stairs"};
  route.destination = {1, {30, 10}, "Archive"};
  route.legs.push_back({1, {{20, 10}, {30, 10}}});
  KorvaniTools::RouteChange change;
  change.to = 1;
  route.changes.push_back(change);
  scene.route = route;
  const OrderedJson data = viewerData(scene, {}, 2, false)["route"];
  EXPECT_EQ(data["from"].dump(), "[40.0,20.0,0]");
  EXPECT_EQ(data["levels"].dump(), "[0,1]");
}

TEST_F(ViewerDataOfAWalk, TheTimeOfARouteIsTheEngines) {
  const Timeline made = timeline(routeTo(30, 10, 1));
  EXPECT_NEAR(walk(made)["routes"][0]["time"].get<double>(), made.routes[0].found.travelTime(),
              0.01);
}

TEST_F(ViewerDataOfAWalk, ALevelSaysWhatIsWorthSeeingFirst) {
  Scene scene = scene_;
  scene.levels[0].rooms.push_back({{{{1, 2}, {11, 2}, {11, 5}, {1, 5}, {1, 2}}}, {}, "", ""});
  const OrderedJson levels = viewerData(scene, {}, 2, false)["levels"];
  EXPECT_EQ(levels[0]["home"].dump(), "[2.0,4.0,22.0,10.0]");
  EXPECT_TRUE(levels[1]["home"].is_null());
}

TEST_F(ViewerDataOfAWalk, WhatIsNotThereIsNotWritten) {
  const OrderedJson moment = walk(timeline(lineAt("snap", 1, 0)))["moments"][0];
  for (const char* absent :
       {"checked", "denied", "route", "told", "rerouted", "arrived", "error"}) {
    EXPECT_FALSE(moment.contains(absent)) << absent;
  }
  EXPECT_TRUE(moment.contains("raw"));
  EXPECT_TRUE(moment.contains("snapped"));
}

TEST_F(ViewerDataOfAWalk, AWalkTakesThePlaceOfTheRoute) {
  Scene scene = scene_;
  scene.route.emplace();
  scene.route->destination.name = "Desk";
  scene.route->instructions = {"go on"};
  scene.route->instructionSpots = {{0, {1, 2}}};
  EXPECT_EQ(viewerData(scene, {}, 2, false)["route"]["instructions"].dump(),
            R"([{"text":"go on","at":[2.0,4.0,0]}])");
  EXPECT_TRUE(viewerData(scene, Timeline{}, 2, false)["route"].is_null());
}

}  // namespace
}  // namespace KorvaniTest
