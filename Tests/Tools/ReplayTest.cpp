#include "Trace/Replay.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/BuildingText.hpp"
#include "Tools/Replaying.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::OrderedJson;
using testing::HasSubstr;
using testing::IsEmpty;

/// A way to the north-east of three edges, about 78 m long, the last with a barrier; a wall north
/// of it. Level 1 has a node that no way leads to.
KorvaniTools::Building wayWithAWall() {
  return parsed({nodeAt(1, 0, 20.0, 10.0), nodeAt(2, 0, 20.0002, 10.0001),
                 nodeAt(3, 0, 20.0004, 10.00015), nodeAt(4, 0, 20.0006, 10.0003), edgeOf(1, 2),
                 edgeOf(2, 3), edgeOf(3, 4, "\"barrierFree\":false"),
                 wallOf(0, "[[20.0001,10.0002],[20.0003,10.0002]]"),
                 nodeAt(5, 1, 20.0005, 10.0001)});
}

const std::string kStart = tracePoint(10.00001, 20.00001);
const std::string kMiddle = tracePoint(10.00006, 20.0001);
const std::string kEnd = tracePoint(10.0003, 20.00059);

std::string route(const std::string& to, const std::string& more = "") {
  return R"({"op":"route","from":)" + kStart + R"(,"to":[)" + to + ']' + also(more) + '}';
}
std::string position(const std::string& at) { return R"({"op":"position","at":)" + at + '}'; }
std::string destinations(const std::string& to) {
  return R"({"op":"destinations","to":[)" + to + "]}";
}
std::string snap(const std::string& at, const std::string& more = "") {
  return R"({"op":"snap","at":)" + at + also(more) + '}';
}
std::string check(const std::string& at, const std::string& more = R"("denier":"default")") {
  return R"({"op":"check","at":)" + at + also(more) + '}';
}
std::string intersect(const std::string& at, const std::string& more = "") {
  return R"({"op":"intersect","at":)" + at + also(more) + '}';
}

std::vector<std::string> membersOf(const OrderedJson& object) {
  std::vector<std::string> members;
  for (const auto& entry : object.items()) members.push_back(entry.key());
  return members;
}

class ReplayOfATrace : public ReplayFixture {
 protected:
  void SetUp() override { begin(wayWithAWall()); }

  /// What is said about a line that cannot be carried out.
  std::string errorOf(const std::string& line) {
    const OrderedJson event = onlyEvent(line);
    EXPECT_EQ(event["event"], "error") << event.dump();
    EXPECT_EQ(membersOf(event), (std::vector<std::string>{"line", "event", "message"}));
    return event.value("message", "");
  }

  /// Latitude of the place that the delivered route leads to.
  double endOf(const std::string& line) {
    const OrderedJson route = onlyEvent(line)["route"];
    return route.is_null() ? 0 : route["steps"].back()["end"]["lat"].get<double>();
  }
};

TEST_F(ReplayOfATrace, AnIntersectionOnAnEdgeNamesItsEnds) {
  const OrderedJson event = onlyEvent(intersect(kMiddle));
  EXPECT_EQ(membersOf(event), (std::vector<std::string>{"line", "event", "kind", "node", "distance",
                                                        "delta", "enclosing"}));
  EXPECT_EQ(event["line"], 1);
  EXPECT_EQ(event["event"], "intersection");
  EXPECT_EQ(event["kind"], "edge");
  EXPECT_EQ(event["node"]["id"], -1);
  EXPECT_EQ(event["enclosing"], (OrderedJson{2, 1}));
}

TEST_F(ReplayOfATrace, AnIntersectionAtANodeHasNoEnds) {
  const OrderedJson event = onlyEvent(intersect(tracePoint(9.9999, 19.9999)));
  EXPECT_EQ(event["kind"], "node");
  EXPECT_EQ(event["node"].dump(), R"({"lat":10.0,"lon":20.0,"level":0,"id":1})");
  EXPECT_FALSE(event.contains("enclosing"));
}

TEST_F(ReplayOfATrace, AnIntersectionOnTheRouteSeesNothingElse) {
  carryOut(route(tracePoint(10.0001, 20.0002), R"("directions":false)"));
  const std::string place = tracePoint(10.0002, 20.0005);
  EXPECT_EQ(onlyEvent(intersect(place))["enclosing"], (OrderedJson{3, 4}));
  const OrderedJson onRoute = onlyEvent(intersect(place, R"("onOriginalGraph":false)"));
  EXPECT_NEAR(onRoute["node"]["lat"].get<double>(), 10.0001, 1e-6);
}

TEST_F(ReplayOfATrace, ARouteComesWithItsInstructions) {
  const OrderedJson event = onlyEvent(route(kEnd));
  EXPECT_EQ(membersOf(event), (std::vector<std::string>{"line", "event", "route", "finished"}));
  EXPECT_EQ(event["event"], "route");
  EXPECT_EQ(event["finished"], false);
  EXPECT_FALSE(event["route"]["steps"].empty());
  EXPECT_FALSE(event["route"]["directions"].empty());
}

TEST_F(ReplayOfATrace, ARouteComesWithoutInstructionsWhenTheyAreNotWanted) {
  EXPECT_THAT(onlyEvent(route(kEnd, R"("directions":false)"))["route"]["directions"], IsEmpty());
}

TEST_F(ReplayOfATrace, TheLineDecidesAboutBarriersBeforeTheConfigurationDoes) {
  const auto steps = [&](const std::string& more) {
    return onlyEvent(route(kEnd, more))["route"]["steps"].size();
  };
  const std::size_t whole = steps("");
  EXPECT_EQ(steps(R"("barrierFree":true)"), 1U);
  carryOut(R"({"op":"config","set":{"navigationActivateBarrierFreeNavigation":true}})");
  EXPECT_EQ(steps(""), 1U);
  EXPECT_EQ(steps(R"("barrierFree":false)"), whole);
}

TEST_F(ReplayOfATrace, PositionsGoToTheNewestHandle) {
  carryOut(route(kEnd));
  const OrderedJson event = onlyEvent(position(kMiddle));
  EXPECT_EQ(event["event"], "route");
  EXPECT_EQ(event["route"]["steps"][0]["end"]["id"], 2);
  EXPECT_LT(event["route"]["steps"][0]["distance"], 20);
  EXPECT_EQ(onlyEvent(position(tracePoint(10.00013, 20.0003)))["route"]["steps"][0]["end"]["id"],
            3);
}

TEST_F(ReplayOfATrace, ArrivalEndsTheRouting) {
  carryOut(route(kEnd));
  const Events events = carryOut(position(kEnd));
  ASSERT_EQ(events.size(), 2U);
  EXPECT_EQ(membersOf(events[0]),
            (std::vector<std::string>{"line", "event", "route", "finished", "destination"}));
  EXPECT_TRUE(events[0]["route"].is_null());
  EXPECT_EQ(events[0]["finished"], true);
  EXPECT_EQ(membersOf(events[0]["destination"]), (std::vector<std::string>{"lat", "lon", "level"}));
  EXPECT_EQ(events[1]["event"], "notification");
  EXPECT_EQ(events[1]["line"], 2);
  EXPECT_EQ(events[1]["name"], "NavigationRoutingDestinationReachedNotification");
  EXPECT_EQ(events[1]["userInfo"]["kNavigationRoutingDestinationReachedLatitude"],
            events[0]["destination"]["lat"]);
  EXPECT_EQ(events[1]["userInfo"]["kNavigationRoutingDestinationReachedLevel"], 0);
  EXPECT_THAT(errorOf(position(kEnd)), HasSubstr("no routing"));
  EXPECT_THAT(errorOf(destinations(kStart)), HasSubstr("no routing"));
  EXPECT_FALSE(navigation().activeRoutingTask());
}

TEST_F(ReplayOfATrace, ARouteThatIsShortEnoughArrivesAtOnce) {
  const Events events = carryOut(route(tracePoint(10.00001, 20.00002)));
  ASSERT_EQ(events.size(), 2U);
  EXPECT_EQ(events[0]["finished"], true);
  errorOf(position(kMiddle));
}

TEST_F(ReplayOfATrace, ANewRouteTakesTheOldOnesPlace) {
  carryOut(route(kEnd));
  const std::weak_ptr<RoutingTask> old = navigation().activeRoutingTask();
  carryOut(route(tracePoint(10.0001, 20.0002)));
  EXPECT_TRUE(old.expired());
  EXPECT_TRUE(navigation().activeRoutingTask());
  EXPECT_NEAR(endOf(position(kMiddle)), 10.0001, 1e-6);
}

TEST_F(ReplayOfATrace, ARouteOfAnotherConfigurationIsNotTheActiveOne) {
  carryOut(R"({"op":"config","config":"calm"})");
  carryOut(route(kEnd));
  carryOut(route(kEnd, R"("config":"calm")"));
  EXPECT_FALSE(navigation().activeRoutingTask());
  EXPECT_EQ(onlyEvent(position(kMiddle))["event"], "route");
}

TEST_F(ReplayOfATrace, DestinationsAloneDeliverNothing) {
  carryOut(route(kEnd));
  EXPECT_THAT(carryOut(destinations(tracePoint(10.0001, 20.0002))), IsEmpty());
  EXPECT_NEAR(endOf(position(kMiddle)), 10.0001, 1e-6);
  EXPECT_THAT(carryOut(destinations("")), IsEmpty());
}

TEST_F(ReplayOfATrace, SnapsToTheMap) {
  const OrderedJson event = onlyEvent(snap(kMiddle));
  EXPECT_EQ(membersOf(event), (std::vector<std::string>{"line", "event", "lat", "lon"}));
  EXPECT_EQ(event["event"], "snapped");
  const OrderedJson foot = onlyEvent(intersect(kMiddle))["node"];
  EXPECT_EQ(event["lat"], foot["lat"]);
  EXPECT_EQ(event["lon"], foot["lon"]);
}

TEST_F(ReplayOfATrace, ChecksGoOnWhereTheLastOneOfTheirConfigurationAndDenierLeftOff) {
  const std::string north = tracePoint(10.00025, 20.0002);
  const std::string south = tracePoint(10.00015, 20.0002);
  const auto latitude = [&](const std::string& line) {
    return onlyEvent(line)["lat"].get<double>();
  };
  for (int i = 0; i < 6; ++i) EXPECT_EQ(latitude(check(north)), 10.00025);
  const Events events = carryOut(check(south));
  EXPECT_EQ(events.front().dump(), R"({"line":7,"event":"checked","lat":10.00025,"lon":20.0002})");
  // Others have not been there.
  EXPECT_EQ(latitude(check(south, "")), 10.00015);
  EXPECT_EQ(latitude(check(north, R"("denier":"strength")")), 10.00025);
  carryOut(R"({"op":"config","config":"calm"})");
  EXPECT_EQ(latitude(check(south, R"("denier":"default","config":"calm")")), 10.00015);
  // The main configuration by its name, and after a cancel: the credit is still there.
  carryOut(R"({"op":"cancel"})");
  EXPECT_EQ(latitude(check(south, R"("denier":"default","config":"main")")), 10.00025);
}

TEST_F(ReplayOfATrace, CancelEndsTheRoutingAndKeepsTheMap) {
  carryOut(route(kEnd));
  EXPECT_THAT(carryOut(R"({"op":"cancel"})"), IsEmpty());
  errorOf(position(kMiddle));
  errorOf(destinations(kStart));
  EXPECT_EQ(onlyEvent(intersect(kMiddle, R"("onOriginalGraph":false)"))["kind"], "edge");
  EXPECT_EQ(onlyEvent(route(kEnd))["event"], "route");
}

TEST_F(ReplayOfATrace, ChangesTheConfiguration) {
  EXPECT_THAT(carryOut(R"({"op":"config","set":{"navigationTargetProximityDistance":7,)"
                       R"("activateObstacleChecking":true,)"
                       R"("navigationMagneticPathSnappingFallbackThreshold":9.0},)"
                       R"("fields":{"levelHeight":4,"walkingSpeed":1.25,)"
                       R"("checkDestinationsAgainstOwnWalls":true}})"),
              IsEmpty());
  EXPECT_EQ(config().targetProximityDistance(), 7.0);
  EXPECT_TRUE(config().activateObstacleChecking());
  EXPECT_EQ(config().magneticPathSnappingFallbackThreshold(), 9);
  EXPECT_EQ(config().levelHeight(), 4.0);
  EXPECT_EQ(config().walkingSpeed(), 1.25);
  EXPECT_TRUE(config().checkDestinationsAgainstOwnWalls());
}

TEST_F(ReplayOfATrace, MakesAConfigurationOfANewName) {
  EXPECT_THAT(carryOut(R"({"op":"config","config":"quick","fields":{"walkingSpeed":3}})"),
              IsEmpty());
  const auto configs = navigation().navigationConfigs();
  ASSERT_TRUE(configs.find("quick"));
  EXPECT_EQ((*configs.find("quick"))->config().walkingSpeed(), 3.0);
  EXPECT_EQ(config().walkingSpeed(), 1.5);
  EXPECT_EQ(onlyEvent(snap(kMiddle, R"("config":"quick")"))["event"], "snapped");
}

TEST_F(ReplayOfATrace, ChangesNothingWhenOneSettingIsWrong) {
  const std::vector<std::pair<std::string, std::string>> faults{
      {R"("set":{"speed":1})", "\"speed\""},
      {R"("set":{"levelHeight":1})", "\"levelHeight\""},
      {R"("fields":{"activateObstacleChecking":true})", "\"activateObstacleChecking\""},
      {R"("set":{"activateObstacleChecking":1})", "found 1, expected true or false"},
      {R"("set":{"navigationPathSnappingDistance":true})", "found true, expected a number"},
      {R"("set":{"navigationMagneticPathSnappingFallbackThreshold":1.5})",
       "found 1.5, expected a whole number"},
      {R"("set":{"navigationMagneticPathSnappingDistanceThreshold":1e39})", "single precision"},
      {R"("fields":{"levelHeight":false})", "levelHeight: found false, expected a number"}};
  for (const auto& [fault, complaint] : faults) {
    const bool inSet = fault.find("\"set\"") == 0;
    const std::string good = inSet ? R"("fields":{"walkingSpeed":9})"
                                   : R"("set":{"navigationTargetProximityDistance":9})";
    EXPECT_THAT(errorOf(R"({"op":"config",)" + good + ',' + fault + '}'), HasSubstr(complaint));
    EXPECT_THAT(errorOf(R"({"op":"config","config":"stillborn",)" + fault + '}'),
                HasSubstr(complaint));
  }
  EXPECT_EQ(config().walkingSpeed(), 1.5);
  EXPECT_EQ(config().targetProximityDistance(), 5.0);
  EXPECT_FALSE(navigation().navigationConfigs().find("stillborn"));
}

TEST_F(ReplayOfATrace, RefusesConfigurationsThatNobodyMade) {
  const std::string unknown = R"("config":"unheard of")";
  carryOut(route(kEnd));
  for (const std::string& line :
       {route(kEnd, unknown), snap(kMiddle, unknown), check(kMiddle, unknown)}) {
    EXPECT_THAT(errorOf(line), HasSubstr("\"unheard of\""));
  }
  EXPECT_EQ(onlyEvent(position(kMiddle))["event"], "route");
}

TEST_F(ReplayOfATrace, ARouteThatCannotBeLeavesTheOldOneAlone) {
  carryOut(route(kEnd));
  EXPECT_THAT(errorOf(route("")), HasSubstr("to: found no points"));
  EXPECT_THAT(errorOf(route(kEnd + R"(,{"lat":1e308,"lon":1e308,"level":0})")), HasSubstr("to[1]"));
  EXPECT_THAT(errorOf(destinations(R"({"lat":1e308,"lon":1e308,"level":0})")), HasSubstr("to[0]"));
  EXPECT_NEAR(endOf(position(kMiddle)), 10.0003, 1e-5);
}

TEST_F(ReplayOfATrace, StandsLevelsThatTheEngineCannotCarry) {
  const std::string highest = R"({"lat":10.0003,"lon":20.0006,"level":9223372036854775295})";
  const std::string tooHigh = R"({"lat":10.0003,"lon":20.0006,"level":9223372036854775296})";
  const std::string lowest = R"({"lat":10.00006,"lon":20.0001,"level":-9223372036854775808})";
  EXPECT_EQ(onlyEvent(route(highest))["event"], "route");
  EXPECT_EQ(onlyEvent(position(lowest))["event"], "route");
  EXPECT_EQ(onlyEvent(position(kMiddle))["event"], "route");
  EXPECT_EQ(onlyEvent(intersect(lowest))["event"], "intersection");
  EXPECT_EQ(onlyEvent(check(highest))["event"], "checked");
  for (const std::string& line : {route(tooHigh), position(tooHigh), destinations(tooHigh),
                                  snap(tooHigh), intersect(tooHigh), check(tooHigh)}) {
    EXPECT_THAT(errorOf(line), HasSubstr("found level 9223372036854775296"));
  }
}

TEST_F(ReplayOfATrace, LeavesTheFacadeEmpty) {
  carryOut(route(kEnd));
  const std::weak_ptr<RoutingTask> task = navigation().activeRoutingTask();
  end();
  EXPECT_TRUE(task.expired());
  EXPECT_FALSE(navigation().graph());
  EXPECT_FALSE(navigation().activeRoutingTask());
}

class ReplayWithoutAMap : public ReplayFixture {
 protected:
  void SetUp() override { begin(parsed({})); }
};

TEST_F(ReplayWithoutAMap, FindsNothingAndStandsIt) {
  EXPECT_EQ(onlyEvent(intersect(kMiddle)).dump(),
            R"({"line":1,"event":"intersection","kind":null})");
  EXPECT_EQ(onlyEvent(snap(kMiddle)).dump(),
            R"({"line":2,"event":"snapped","lat":10.00006,"lon":20.0001})");
  EXPECT_EQ(onlyEvent(check(kMiddle)).dump(),
            R"({"line":3,"event":"checked","lat":10.00006,"lon":20.0001})");
  EXPECT_EQ(onlyEvent(route(kEnd))["event"], "error");
}

}  // namespace
}  // namespace KorvaniTest
