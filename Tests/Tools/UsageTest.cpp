#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/Process.hpp"

namespace KorvaniTest {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(Usage, HelpHasExamplesAndExitStatuses) {
  const Outcome outcome = runTool({"--help"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output,
              AllOf(HasSubstr("Examples:"), HasSubstr("korvani-nav route"),
                    HasSubstr("Exit status: 0 done, 1 no route found, 2 bad input or usage")));
  EXPECT_THAT(outcome.errors, IsEmpty());
}

TEST(Usage, EveryCommandHasHelp) {
  for (const char* command : {"info", "route", "config"}) {
    const Outcome outcome = runTool({command, "--help"});
    EXPECT_EQ(outcome.status, 0) << command;
    EXPECT_THAT(outcome.output, HasSubstr("Usage: korvani-nav " + std::string(command)));
  }
  EXPECT_THAT(runTool({"route", "--help"}).output,
              AllOf(HasSubstr("--barrier-free"), HasSubstr("--optimise"), HasSubstr("KEY=VALUE"),
                    HasSubstr("NAME@LEVEL"), HasSubstr("Examples:")));
}

TEST(Usage, VersionNamesTheProgram) {
  const Outcome outcome = runTool({"--version"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, testing::MatchesRegex("korvani-nav [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST(Usage, MistakesGoToStandardErrorWithStatusTwo) {
  const std::vector<std::vector<std::string>> mistakes{
      {},
      {"fly"},
      {"info"},
      {"info", "a", "b"},
      {"route", "file"},
      {"route", "file", "--from", "A"},
      {"route", "file", "--from", "A", "--to", "B", "--format", "xml"},
      {"route", "file", "--from", "A", "--to", "B", "--fast"},
      {"config", "--format", "geojson"}};
  for (const auto& arguments : mistakes) {
    const Outcome outcome = runTool(arguments);
    EXPECT_EQ(outcome.status, 2) << testing::PrintToString(arguments);
    EXPECT_THAT(outcome.output, IsEmpty());
    EXPECT_THAT(outcome.errors, Not(IsEmpty()));
  }
}

}  // namespace
}  // namespace KorvaniTest
