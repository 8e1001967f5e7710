#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "Lint/Lint.hpp"
#include "Tools/BuildingText.hpp"
#include "Tools/Process.hpp"

namespace KorvaniTest {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

const std::string kMembers = R"("name":"Town Hall","attribution":"Ann","licence":"CC0",)"
                             R"("levels":[{"level":0,"name":"Foyer"}])";

const std::string kSound =
    buildingText({nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11.0001, 48), edgeOf(1, 2)}, kMembers);

/// A warning only: an edge from a node to itself.
const std::string kWarning = buildingText(
    {nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11.0001, 48), edgeOf(1, 2), edgeOf(2, 2)}, kMembers);

/// An error: an edge through a wall.
const std::string kError =
    buildingText({nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11.0001, 48), edgeOf(1, 2),
                  wallOf(0, "[[11.00005,47.9999],[11.00005,48.0001]]")},
                 kMembers);

TEST(LintCommand, ASoundBuildingIsStatusZero) {
  const TemporaryFile file(kSound);
  const Outcome outcome = runTool({"lint", file.path()});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.errors, IsEmpty());
  EXPECT_EQ(outcome.output, "Town Hall\n\nnothing to mend\nmap data: Ann\n");
}

TEST(LintCommand, AnErrorIsStatusOne) {
  const TemporaryFile file(kError);
  const Outcome outcome = runTool({"lint", file.path()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.errors, IsEmpty());
  EXPECT_EQ(outcome.output,
            "Town Hall\n"
            "\n"
            "level 0, Foyer\n"
            "  error    Edge 1-2 runs through a wall (feature 3): lead it through a door, or leave "
            "a gap in the wall.\n"
            "           edge-through-wall at 48,11.00005\n"
            "\n"
            "1 error, 0 warnings, 0 notes\n"
            "map data: Ann\n");
}

TEST(LintCommand, TellsTheNumberOnTheDoorsAndTheFiles) {
  const TemporaryFile file(buildingText({nodeAt(1, 2, 11, 48), wallOf(2, "[[11,48],[11,48]]")},
                                        R"("levels":[{"level":2,"name":"1","source":"1"}])"));
  EXPECT_THAT(runTool({"lint", file.path()}).output, HasSubstr("\n\nlevel 1 (2 in the file)\n"));
}

TEST(LintCommand, WarningsAloneAreStatusZeroUnlessStrict) {
  const TemporaryFile file(kWarning);
  const Outcome outcome = runTool({"lint", file.path()});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, HasSubstr("0 errors, 1 warning, 0 notes\n"));
  const Outcome strict = runTool({"lint", file.path(), "--strict"});
  EXPECT_EQ(strict.status, 1);
  EXPECT_EQ(strict.output, outcome.output);
}

TEST(LintCommand, NotesAloneAreStatusZeroEvenWhenStrict) {
  const TemporaryFile file(buildingText({nodeAt(1, 0, 11, 48), wallOf(0, "[[11,48],[11,48]]")}));
  const Outcome outcome = runTool({"lint", file.path(), "--strict"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, AllOf(StartsWith(file.path()), HasSubstr("0 warnings, 1 note\n")));
}

TEST(LintCommand, ChoosesRules) {
  const TemporaryFile file(kError);
  EXPECT_EQ(runTool({"lint", file.path(), "--skip", "edge-through-wall"}).status, 0);
  EXPECT_EQ(runTool({"lint", file.path(), "--rule", "edge-to-itself"}).status, 0);
  EXPECT_EQ(
      runTool({"lint", file.path(), "--rule", "edge-to-itself", "--rule", "edge-through-wall"})
          .status,
      1);
}

TEST(LintCommand, AnUnknownRuleIsStatusTwo) {
  const TemporaryFile file(kSound);
  const Outcome outcome = runTool({"lint", file.path(), "--rule", "walls"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.output, IsEmpty());
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("\"walls\""), HasSubstr("edge-through-wall")));
}

TEST(LintCommand, ListsItsRulesWithoutAFile) {
  const Outcome outcome = runTool({"lint", "--list-rules"});
  EXPECT_EQ(outcome.status, 0);
  for (const auto& rule : KorvaniTools::lintRules()) {
    EXPECT_THAT(outcome.output, HasSubstr(rule.name + ' ')) << rule.name;
    EXPECT_THAT(outcome.output, HasSubstr(rule.finds)) << rule.name;
  }
}

TEST(LintCommand, NeedsAFileOtherwise) {
  const Outcome outcome = runTool({"lint"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.errors, HasSubstr("--list-rules"));
}

TEST(LintCommand, WritesJsonAndGeoJsonToAFile) {
  const TemporaryFile file(kError);
  const TemporaryFile output;
  EXPECT_EQ(runTool({"lint", file.path(), "--format", "json", "-o", output.path()}).status, 1);
  const auto json = nlohmann::json::parse(output.text());
  EXPECT_EQ(json["findings"][0]["rule"], "edge-through-wall");
  EXPECT_EQ(json["licence"], "CC0");
  EXPECT_EQ(runTool({"lint", file.path(), "--format", "geojson", "-o", output.path()}).status, 1);
  EXPECT_EQ(nlohmann::json::parse(output.text())["features"][0]["geometry"]["type"], "LineString");
}

TEST(LintCommand, ABrokenFileIsStatusTwoAndLeavesNoOutput) {
  const TemporaryFile file(buildingText({nodeAt(1, 0, 11, 48), nodeAt(1, 0, 11, 48)}));
  const TemporaryFile folder;
  const std::string output = folder.path() + ".out";
  const Outcome outcome = runTool({"lint", file.path(), "-o", output});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.output, IsEmpty());
  EXPECT_THAT(outcome.errors, HasSubstr("features[1]: id of a node: found 1 a second time"));
  EXPECT_FALSE(std::filesystem::exists(output));
}

TEST(LintCommand, AMissingFileAndAnUnknownFormatAreStatusTwo) {
  EXPECT_EQ(runTool({"lint", "/no/such/file"}).status, 2);
  const TemporaryFile file(kSound);
  EXPECT_EQ(runTool({"lint", file.path(), "--format", "xml"}).status, 2);
}

TEST(LintCommand, AnEmptyBuildingHasNothingToMend) {
  const TemporaryFile file(buildingText({}));
  const Outcome outcome = runTool({"lint", file.path()});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, HasSubstr("nothing to mend"));
}

TEST(LintCommand, SaysTheSameEveryTime) {
  const TemporaryFile file(kError);
  EXPECT_EQ(runTool({"lint", file.path(), "--format", "json"}).output,
            runTool({"lint", file.path(), "--format", "json"}).output);
}

TEST(LintCommand, ColoursOnlyOnATerminal) {
  const TemporaryFile file(kError);
  EXPECT_THAT(runTool({"lint", file.path()}, "TERM=xterm").output, Not(HasSubstr("\x1b")));
  EXPECT_THAT(runToolOnTerminal({"lint", file.path()}, {{"TERM", "xterm"}}).output,
              HasSubstr("\x1b[33merror"));
}

TEST(LintCommand, TheDemoBuildingIsFreeOfErrors) {
  const Outcome outcome =
      runTool({"lint", KORVANI_SOURCE_DIR "/Examples/Buildings/terminal.building.geojson"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, HasSubstr("\n0 errors, "));
}

}  // namespace
}  // namespace KorvaniTest
