#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Tools/BuildingText.hpp"
#include "Tools/Process.hpp"

namespace KorvaniTest {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

/// A corridor to the north with a side corridor half-way, stairs at its end, and a hut alone.
const std::string kHallWithHut = buildingText(
    {nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48.0005), nodeAt(3, 0, 11, 48.001),
     nodeAt(4, 1, 11, 48.001), nodeAt(5, 0, 11.0005, 48.0005), nodeAt(6, 0, 11.01, 48),
     nodeAt(7, 0, 11.01, 48.0001), edgeOf(1, 2), edgeOf(2, 3), edgeOf(2, 5), edgeOf(6, 7),
     edgeOf(3, 4, R"("type":"stairs","barrierFree":false)"), placeAt("Door", 0, 11, 48),
     placeAt("Corner", 0, 11, 48.0005), placeAt("End", 0, 11, 48.001),
     placeAt("Gallery", 1, 11, 48.001), placeAt("Hut", 0, 11.01, 48)});

class SimulateCommand : public testing::Test {
 protected:
  Outcome simulate(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"simulate", file_.path()});
    return runTool(arguments);
  }

  const TemporaryFile file_{kHallWithHut};
};

TEST_F(SimulateCommand, HelpNamesEveryOption) {
  const Outcome outcome = runTool({"simulate", "--help"});
  EXPECT_EQ(outcome.status, 0);
  for (const char* option : {"--from", "--to", "--noise", "--speed", "--seed", "--level-glitches",
                             "--detour", "--barrier-free", "--config", "--output"}) {
    EXPECT_THAT(outcome.output, HasSubstr(option));
  }
}

TEST_F(SimulateCommand, WritesATraceToStandardOutput) {
  const Outcome outcome = simulate({"--from", "Door", "--to", "End"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.errors, IsEmpty());
  EXPECT_THAT(outcome.output, StartsWith("# A simulated walk, made by korvani-nav simulate.\n"));
  EXPECT_THAT(outcome.output,
              HasSubstr("\n{\"op\":\"config\",\"fields\":{\"checkDestinationsAgainstOwnWalls\":"
                        "true}}\n{\"op\":\"route\",\"from\":{\"lat\":48.0,\"lon\":11.0,"
                        "\"level\":0},\"to\":[{\"lat\":48.001,\"lon\":11.0,\"level\":0}]}\n"
                        "{\"op\":\"snap\",\"at\":{\"lat\":48.00001349,\"lon\":11.0,\"level\":0}}\n"
                        "{\"op\":\"position\",\"at\":{\"lat\":48.00001349,\"lon\":11.0,"
                        "\"level\":0}}\n"));
  EXPECT_THAT(outcome.output, EndsWith("}\n"));
}

TEST_F(SimulateCommand, NamesTheFileWithoutItsFolder) {
  const std::string output = simulate({"--from", "Door", "--to", "End"}).output;
  EXPECT_THAT(output, Not(HasSubstr(file_.path())));
}

TEST_F(SimulateCommand, GivesTheSameBytesForTheSameSeed) {
  const std::vector<std::string> arguments{"--from",
                                           "Door",
                                           "--to",
                                           "Gallery",
                                           "--noise",
                                           "4",
                                           "--level-glitches",
                                           "0.1",
                                           "--detour",
                                           "--seed",
                                           "18446744073709551615"};
  const Outcome first = simulate(arguments);
  EXPECT_EQ(first.status, 0);
  EXPECT_THAT(first.output, HasSubstr("--seed 18446744073709551615 "));
  EXPECT_EQ(first.output, simulate(arguments).output);
}

TEST_F(SimulateCommand, WritesToAFile) {
  const TemporaryFile target("old");
  const Outcome outcome = simulate({"--from", "Door", "--to", "End", "-o", target.path()});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, IsEmpty());
  EXPECT_EQ(target.text(), simulate({"--from", "Door", "--to", "End"}).output);
}

TEST_F(SimulateCommand, ATraceThatItWroteArrivesInAReplay) {
  const TemporaryFile target;
  EXPECT_EQ(simulate({"--from", "Door", "--to", "Gallery", "--noise", "3", "--config",
                      "navigationTargetProximityDistance=4", "-o", target.path()})
                .status,
            0);
  const Outcome replay = runTool({"replay", file_.path(), target.path()});
  EXPECT_EQ(replay.status, 0);
  EXPECT_THAT(replay.output, HasSubstr("\"finished\":true"));
  EXPECT_THAT(replay.output, Not(HasSubstr("\"event\":\"error\"")));
}

TEST_F(SimulateCommand, WithoutAWayIsStatusOneAndWritesNothing) {
  const TemporaryFile target("old");
  const std::vector<std::vector<std::string>> cases{
      {"--from", "Door", "--to", "Hut", "-o", target.path()},
      {"--from", "Door", "--to", "Gallery", "--barrier-free", "-o", target.path()}};
  for (const auto& arguments : cases) {
    const Outcome outcome = simulate(arguments);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.output, IsEmpty());
    EXPECT_THAT(outcome.errors, MatchesRegex("korvani-nav: no mapped way found from Door to .*\n"));
  }
  EXPECT_EQ(target.text(), "old");
}

TEST_F(SimulateCommand, WithoutADetourIsStatusOne) {
  const Outcome outcome = simulate({"--from", "Corner", "--to", "End", "--detour"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.errors, HasSubstr("no detour"));
}

TEST_F(SimulateCommand, WrongInputIsStatusTwo) {
  const struct {
    std::vector<std::string> arguments;
    const char* complaint;
  } cases[] = {{{"--noise", "-1"}, "--noise: found -1, expected metres"},
               {{"--noise", "nan"}, "--noise"},
               {{"--noise", "much"}, "--noise"},
               {{"--speed", "0"}, "--speed: found 0, expected metres per second"},
               {{"--speed", "inf"}, "--speed"},
               {{"--speed", "1e-9"}, "100000 at most"},
               {{"--level-glitches", "1.5"}, "a probability from 0 to 1"},
               {{"--seed", "-1"}, "--seed"},
               {{"--seed", "1.5"}, "--seed"},
               {{"--seed", "18446744073709551616"}, "--seed"},
               {{"--config", "fast=1"}, "unknown key"},
               {{"--config", "levelHeight"}, "KEY=VALUE"}};
  for (const auto& each : cases) {
    std::vector<std::string> arguments{"--from", "Door", "--to", "End"};
    arguments.insert(arguments.end(), each.arguments.begin(), each.arguments.end());
    const Outcome outcome = simulate(arguments);
    EXPECT_EQ(outcome.status, 2) << testing::PrintToString(each.arguments);
    EXPECT_THAT(outcome.output, IsEmpty());
    EXPECT_THAT(outcome.errors, HasSubstr(each.complaint));
  }
}

TEST_F(SimulateCommand, WrongPlacesAndFilesAreStatusTwo) {
  EXPECT_THAT(simulate({"--from", "Dor", "--to", "End"}).errors, HasSubstr("\"Door\"?"));
  EXPECT_EQ(simulate({"--from", "Door", "--to", "91,0,0"}).status, 2);
  EXPECT_EQ(simulate({"--from", "Door"}).status, 2);
  const TemporaryFile broken("{");
  EXPECT_EQ(runTool({"simulate", broken.path(), "--from", "A", "--to", "B"}).status, 2);
  const TemporaryFile empty(buildingText({placeAt("A", 0, 11, 48), placeAt("B", 0, 11, 48.1)}));
  EXPECT_THAT(runTool({"simulate", empty.path(), "--from", "A", "--to", "B"}).errors,
              HasSubstr("no region"));
}

}  // namespace
}  // namespace KorvaniTest
