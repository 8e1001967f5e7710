#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Tools/BuildingText.hpp"
#include "Tools/Process.hpp"

namespace KorvaniTest {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// A corridor to the north, one from its end to the east, a lift (and stairs beside it) to a
/// corridor on level 1, and a hut that no way leads to.
const std::string kHallWithLift = buildingText(
    {nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48.001), nodeAt(3, 0, 11.001, 48.001),
     nodeAt(4, 1, 11.001, 48.001), nodeAt(5, 1, 11.001, 48.0015), nodeAt(6, 0, 11.0005, 48.003),
     nodeAt(7, 0, 11.0005, 48.0031), edgeOf(1, 2), edgeOf(2, 3), edgeOf(6, 7),
     edgeOf(3, 4, R"("type":"lift","barrierFree":false)"), edgeOf(4, 5), placeAt("Door", 0, 11, 48),
     placeAt("Corner", 0, 11, 48.001), placeAt("Desk", 1, 11.001, 48.0015),
     placeAt("Kiosk", 0, 11.001, 48.001), placeAt("Kiosk", 1, 11.001, 48.001),
     placeAt("Hut", 0, 11.0005, 48.0031)},
    R"("attribution":"Ann and Bo","licence":"CC0","levels":[{"level":1,"name":"Gallery"}])");

class RouteCommand : public testing::Test {
 protected:
  Outcome route(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"route", file_.path()});
    return runTool(arguments);
  }
  json routeJson(std::vector<std::string> arguments) const {
    arguments.insert(arguments.end(), {"--format", "json"});
    return json::parse(route(arguments).output);
  }

  const TemporaryFile file_{kHallWithLift};
};

TEST_F(RouteCommand, PrintsOneLineAnInstructionAndTheTotals) {
  const Outcome outcome = route({"--from", "Door", "--to", "Desk"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.errors, IsEmpty());
  EXPECT_EQ(outcome.output,
            "From Door (level 0) to Desk (level 1, Gallery)\n"
            "\n"
            "set off to the north\n"
            "  1. go straight on for 111 m\n"
            "  2. turn right, then 74 m\n"
            "  3. after these 74 m take the lift up to level 1, Gallery (3 m)\n"
            "  4. leave the lift, in 56 m you reach Desk\n"
            "\n"
            "distance      244 m\n"
            "walking time  2 min 43 s\n"
            "destination   Desk (level 1, Gallery)\n"
            "\n"
            "map data: Ann and Bo\n");
}

TEST_F(RouteCommand, TakesCoordinates) {
  const Outcome outcome = route({"--from", "48,11,0", "--to", "48.001,11.0,0"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, AllOf(HasSubstr("From 48,11 (level 0) to 48.001,11 (level 0)"),
                                    HasSubstr("in 111 m you reach 48.001,11")));
}

TEST_F(RouteCommand, WritesJsonAsOneObject) {
  const Outcome outcome = route({"--from", "Door", "--to", "Desk", "--format", "json"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 1);
  const json answer = json::parse(outcome.output);
  EXPECT_EQ(answer.size(), 2U);
  EXPECT_EQ(answer["direct"], false);
  EXPECT_EQ(answer["route"]["steps"].size() + 1, answer["route"]["points"].size());
  EXPECT_EQ(answer["route"]["steps"][2]["neighborType"], "lift");
  EXPECT_EQ(answer["route"]["points"][3]["id"], 4);
  EXPECT_FALSE(answer["route"]["directions"].empty());
}

TEST_F(RouteCommand, WritesGeoJsonWithTheAttribution) {
  const Outcome outcome = route({"--from", "Door", "--to", "Desk", "--format", "geojson"});
  EXPECT_EQ(outcome.status, 0);
  const json collection = json::parse(outcome.output);
  EXPECT_EQ(collection["type"], "FeatureCollection");
  EXPECT_EQ(collection["attribution"], "Ann and Bo");
  EXPECT_EQ(collection["licence"], "CC0");
  EXPECT_EQ(collection["direct"], false);
  std::vector<std::string> kinds;
  for (const json& feature : collection["features"]) {
    EXPECT_EQ(feature["type"], "Feature");
    EXPECT_TRUE(feature["properties"]["level"].is_number_integer());
    kinds.push_back(feature["properties"]["kind"]);
  }
  EXPECT_EQ(kinds,
            (std::vector<std::string>{"start", "route", "levelChange", "route", "instruction",
                                      "instruction", "instruction", "instruction", "destination"}));
  const json& change = collection["features"][2];
  EXPECT_EQ(change["properties"]["type"], "lift");
  EXPECT_EQ(change["properties"]["toLevel"], 1);
  EXPECT_EQ(collection["features"][1]["geometry"]["coordinates"].size(), 3U);
  EXPECT_EQ(collection["features"][1]["geometry"]["coordinates"][0].dump(), "[11.0,48.0]");
}

TEST_F(RouteCommand, WithoutAMappedWayIsStatusOneAndSaysSo) {
  const Outcome outcome = route({"--from", "Door", "--to", "Hut"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.output, HasSubstr("\nno mapped way found; straight line of 347 m\n"));
  EXPECT_THAT(outcome.output, Not(HasSubstr("walking time")));
}

TEST_F(RouteCommand, WithoutAMappedWayIsADirectLineInJson) {
  const json answer = routeJson({"--from", "Door", "--to", "Hut"});
  EXPECT_EQ(answer["direct"], true);
  EXPECT_EQ(answer["route"]["steps"].size(), 1U);
  EXPECT_EQ(route({"--from", "Door", "--to", "Hut", "--format", "json"}).status, 1);
  EXPECT_EQ(route({"--from", "Door", "--to", "Hut", "--format", "geojson"}).status, 1);
}

TEST_F(RouteCommand, BarrierFreeRoutesTakeNoOtherWays) {
  EXPECT_EQ(route({"--from", "Door", "--to", "Desk", "--barrier-free"}).status, 1);
  EXPECT_EQ(route({"--from", "Door", "--to", "Kiosk@0", "--barrier-free"}).status, 0);
  EXPECT_EQ(route({"--from", "Door", "--to", "Desk", "--config",
                   "navigationActivateBarrierFreeNavigation=true"})
                .status,
            1);
}

TEST_F(RouteCommand, LeadsToTheNearestOfSeveralDestinations) {
  const Outcome outcome = route({"--from", "Door", "--to", "Desk", "--to", "Corner"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output,
              AllOf(HasSubstr("to Desk (level 1, Gallery) or Corner (level 0)\n"),
                    HasSubstr("you reach Corner\n"), HasSubstr("destination   Corner (level 0)")));
}

TEST_F(RouteCommand, OptimisingCutsCorners) {
  // A corner whose shortcut is shorter than 20 m.
  const TemporaryFile small(
      buildingText({nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48.0001), nodeAt(3, 0, 11.0001, 48.0001),
                    nodeAt(4, 0, 11.0001, 48.0003), edgeOf(1, 2), edgeOf(2, 3), edgeOf(3, 4)}));
  const std::vector<std::string> plain{"route", small.path(),        "--from",   "48,11,0",
                                       "--to",  "48.0003,11.0001,0", "--format", "json"};
  std::vector<std::string> optimised = plain;
  optimised.emplace_back("--optimise");
  const json whole = json::parse(runTool(plain).output);
  const json cut = json::parse(runTool(optimised).output);
  EXPECT_LT(cut["route"]["totalDistance"].get<double>(),
            whole["route"]["totalDistance"].get<double>());
}

TEST_F(RouteCommand, TheConfigurationIsInForceBeforeTheFileIsRead) {
  const json plain = routeJson({"--from", "Door", "--to", "Corner"});
  const json flat = routeJson({"--from", "Door", "--to", "Corner", "--config", "levelHeight=0"});
  const double height = 3.0;
  const double ground = flat["route"]["totalDistance"];
  EXPECT_NEAR(plain["route"]["totalDistance"].get<double>(),
              std::sqrt(ground * ground + height * height), 1e-9);
}

TEST_F(RouteCommand, WithinTheProximityOfTheDestinationSaysSo) {
  const std::vector<std::string> far{"--config", "navigationTargetProximityDistance=500"};
  std::vector<std::string> corner{"--from", "Door", "--to", "Corner"};
  corner.insert(corner.end(), far.begin(), far.end());
  const Outcome outcome = route(corner);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, HasSubstr("\nyou are already there\n"));
  EXPECT_EQ(routeJson(corner).dump(), R"({"direct":false,"route":null})");

  std::vector<std::string> desk{"--from", "Door", "--to", "Desk"};
  desk.insert(desk.end(), far.begin(), far.end());
  EXPECT_THAT(route(desk).output,
              HasSubstr("but for the level: Desk is right above, on level 1, Gallery\n"));
}

TEST_F(RouteCommand, FromAPlaceToItselfIsNoWalk) {
  const Outcome outcome = route({"--from", "Corner", "--to", "corner"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, HasSubstr("\nyou are already there\n"));
}

TEST_F(RouteCommand, AStartThatSeesNothingOfTheMapHasNoRoute) {
  const TemporaryFile bare(buildingText({regionOf(0, 10, 47, 12, 49)}));
  const std::vector<std::string> arguments{"route",   bare.path(), "--from",
                                           "48,11,0", "--to",      "48.1,11,0"};
  const Outcome outcome = runTool(arguments);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.output, HasSubstr("no mapped way found"));
  std::vector<std::string> asJson = arguments;
  asJson.insert(asJson.end(), {"--format", "json"});
  EXPECT_EQ(runTool(asJson).output, "{\"route\":null,\"direct\":false}\n");
}

TEST_F(RouteCommand, ABuildingWithoutRegionIsRefused) {
  const TemporaryFile empty(buildingText({placeAt("A", 0, 11, 48), placeAt("B", 0, 11, 48.1)}));
  const Outcome outcome = runTool({"route", empty.path(), "--from", "A", "--to", "B"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.errors, HasSubstr("no region"));
}

TEST_F(RouteCommand, WrongPlacesAreStatusTwo) {
  const struct {
    const char* from;
    const char* complaint;
  } cases[] = {{"Dor", "did you mean \"Door\"?"}, {"Kiosk", "Kiosk@1"},
               {"Kiosk@4", "is not on level 4"},  {"91,0,0", "latitude"},
               {"nan,11,0", "latitude"},          {"48,inf,0", "longitude"},
               {"48,11,1001", "level"},           {"48,11", "LAT,LON,LEVEL"}};
  for (const auto& each : cases) {
    const Outcome outcome = route({"--from", each.from, "--to", "Desk"});
    EXPECT_EQ(outcome.status, 2) << each.from;
    EXPECT_THAT(outcome.output, IsEmpty());
    EXPECT_THAT(outcome.errors, HasSubstr(each.complaint));
    EXPECT_EQ(route({"--from", "Desk", "--to", each.from}).status, 2);
  }
}

TEST_F(RouteCommand, WrongSettingsAreStatusTwo) {
  for (const char* setting : {"speed=1", "levelHeight=tall", "levelHeight"}) {
    const Outcome outcome = route({"--from", "Door", "--to", "Desk", "--config", setting});
    EXPECT_EQ(outcome.status, 2) << setting;
    EXPECT_THAT(outcome.errors, HasSubstr("expected"));
  }
}

TEST_F(RouteCommand, ABrokenFileIsStatusTwo) {
  const TemporaryFile broken("{");
  EXPECT_EQ(runTool({"route", broken.path(), "--from", "A", "--to", "B"}).status, 2);
}

TEST_F(RouteCommand, WritesToAFileWithoutColours) {
  const TemporaryFile target("old");
  const Outcome outcome = route({"--from", "Door", "--to", "Desk", "-o", target.path()});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, IsEmpty());
  EXPECT_THAT(target.text(), AllOf(HasSubstr("From Door"), Not(HasSubstr("\x1b"))));
}

TEST_F(RouteCommand, ADirectLineIsWrittenToTheFileToo) {
  const TemporaryFile target;
  EXPECT_EQ(route({"--from", "Door", "--to", "Hut", "--output", target.path()}).status, 1);
  EXPECT_THAT(target.text(), HasSubstr("no mapped way found"));
}

TEST_F(RouteCommand, LeavesTheOldFileWhenSomethingIsWrong) {
  const TemporaryFile target("old");
  EXPECT_EQ(route({"--from", "Nowhere", "--to", "Desk", "-o", target.path()}).status, 2);
  EXPECT_EQ(target.text(), "old");
}

TEST_F(RouteCommand, LeavesNothingBesideTheFile) {
  const auto folder = std::filesystem::path(file_.path() + "-folder");
  std::filesystem::create_directory(folder);
  EXPECT_EQ(route({"--from", "Door", "--to", "Desk", "-o", (folder / "way.txt").string()}).status,
            0);
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.push_back(entry.path().filename().string());
  }
  std::filesystem::remove_all(folder);
  EXPECT_EQ(names, std::vector<std::string>{"way.txt"});
}

TEST_F(RouteCommand, AFileThatCannotBeWrittenIsStatusTwo) {
  for (const char* path : {"/no/such/folder/way.txt", "/"}) {
    const Outcome outcome = route({"--from", "Door", "--to", "Desk", "-o", path});
    EXPECT_EQ(outcome.status, 2) << path;
    EXPECT_THAT(outcome.errors, HasSubstr("cannot write"));
  }
}

TEST_F(RouteCommand, GivesTheSameOutputEveryTime) {
  const std::string first = route({"--from", "Door", "--to", "Desk", "--format", "json"}).output;
  const std::string second = route({"--from", "Door", "--to", "Desk", "--format", "json"}).output;
  EXPECT_EQ(first, second);
}

TEST_F(RouteCommand, DoesNotColourWhatGoesIntoAPipe) {
  const Outcome outcome =
      runTool({"route", file_.path(), "--from", "Door", "--to", "Hut"}, "TERM=xterm-256color");
  EXPECT_THAT(outcome.output, Not(HasSubstr("\x1b")));
}

}  // namespace
}  // namespace KorvaniTest
