#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Tools/BuildingText.hpp"
#include "Tools/Process.hpp"

namespace KorvaniTest {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// A building whose every text forges a line and colours the terminal.
const std::string kEvil = R"(x\n  error  Fake\u001b[31m)";

const std::string kHostile = buildingText(
    {nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11.0005, 48), nodeAt(3, 1, 11.0005, 48),
     edgeOf(1, 2, R"("type":")" + kEvil + R"(",")" + kEvil + R"(":1)"),
     edgeOf(2, 3, R"("type":")" + kEvil + '"'), placeAt(kEvil, 0, 11, 48),
     placeAt("Door", 1, 11.0005, 48), placeAt("Twin", 0, 11, 48), placeAt("Twin", 0, 11.0005, 48),
     placeAt("Shut" + kEvil, 5, 11, 48), featureOf(kEvil, "", "Point", "[11,48]")},
    R"("name":")" + kEvil + R"(","attribution":")" + kEvil + R"(","licence":")" + kEvil +
        R"(","levels":[{"level":0,"name":")" + kEvil + R"("},{"level":1,"name":")" + kEvil +
        R"("}])");

void expectHarmless(const Outcome& outcome) {
  const std::string all = outcome.output + outcome.errors;
  EXPECT_THAT(all, AllOf(HasSubstr(R"(x\n  error  Fake\x1b[31m)"),
                         Not(HasSubstr("\n  error  Fake")), Not(HasSubstr("\x1b"))));
}

TEST(HostileText, NoCommandLetsNamesForgeLinesOrReachTheTerminalRaw) {
  const TemporaryFile file(kHostile);
  const std::vector<std::vector<std::string>> commands{
      {"info", file.path()},
      {"lint", file.path()},
      {"route", file.path(), "--from", "x\n  error  Fake\x1b[31m", "--to", "Door"},
      {"route", file.path(), "--from", "Door", "--to", "48,11,0"},
      {"route", file.path(), "--from", "Door", "--to", "Twin"},
      {"route", file.path(), "--from", "Door", "--to", "Twin@3"},
      {"route", file.path(), "--from", "Door", "--to", "Shut"},
      {"simulate", file.path(), "--from", "x\n  error  Fake\x1b[31m", "--to", "Door"},
      {"simulate", file.path(), "--from", "Door", "--to", "x\n  error  Fake\x1b[31m",
       "--barrier-free", "--detour"},
  };
  for (const auto& command : commands) {
    SCOPED_TRACE(command.front() + " " + command.back());
    expectHarmless(runTool(command));
  }
}

TEST(HostileText, WhatIsWrongWithABuildingIsToldInOneLine) {
  const TemporaryFile file(
      buildingText({placeAt("A", 0, 11, 48, R"("entrance":")" + kEvil + '"')}));
  const Outcome outcome = runTool({"info", file.path()});
  EXPECT_EQ(outcome.status, 2);
  expectHarmless(outcome);
}

}  // namespace
}  // namespace KorvaniTest
