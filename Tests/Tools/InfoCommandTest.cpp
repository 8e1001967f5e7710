#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/BuildingText.hpp"
#include "Tools/Process.hpp"

namespace KorvaniTest {
namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string kHall = buildingText(
    {nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48.001, "\"colour\":1"), nodeAt(3, 1, 11, 48.001),
     edgeOf(1, 2, "\"oneway\":true"), edgeOf(2, 3, R"("type":"stairs","barrierFree":false)"),
     wallOf(0, "[[11,48],[11,48.001]]"), placeAt("Desk", 1, 11, 48.001),
     featureOf("tree", "", "Point", "[11,48]")},
    R"("name":"Town Hall","attribution":"Ann","licence":"CC0",)"
    R"("levels":[{"level":1,"name":"Caf\u00e9"}])");

TEST(InfoCommand, ShowsWhatIsInABuilding) {
  const TemporaryFile file(kHall);
  const Outcome outcome = runTool({"info", file.path()});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.errors, IsEmpty());
  EXPECT_THAT(
      outcome.output,
      AllOf(HasSubstr("Town Hall\n"), ContainsRegex("levels +2\n"), ContainsRegex("nodes +3\n"),
            ContainsRegex("edges +2 \\(1 one-way, 1 barrier-free\\); 1 of type stairs\n"),
            ContainsRegex("obstacles +1\n"), ContainsRegex("places +1\n"),
            ContainsRegex("rooms +0\n"), ContainsRegex("connected +all 3 nodes\n"),
            ContainsRegex("step-free +2 parts, the largest with 2 nodes\n"),
            ContainsRegex("attribution +Ann\n"), ContainsRegex("licence +CC0\n")));
}

TEST(InfoCommand, HasATableOfTheLevels) {
  const TemporaryFile file(kHall);
  EXPECT_THAT(runTool({"info", file.path()}).output,
              AllOf(ContainsRegex("level +name +regions +nodes +edges"),
                    ContainsRegex("\n +0 +1 +2 +1 +1 +1 +0 +0\n"),
                    ContainsRegex("\n +1 +Caf.+ +1 +1 +0 +1 +0 +1 +0\n")));
}

TEST(InfoCommand, TellsWhatTheReaderIgnoredAndMade) {
  const TemporaryFile file(kHall);
  EXPECT_THAT(runTool({"info", file.path()}).output,
              AllOf(HasSubstr("1 feature of unknown kind tree"),
                    HasSubstr("unknown property colour of 1 node\n"),
                    HasSubstr("a region for level 0"), HasSubstr("a region for level 1")));
}

TEST(InfoCommand, TellsWhatTheReaderDropped) {
  const TemporaryFile file(
      buildingText({regionOf(0, 10, 47, 11, 48), wallOf(0, "[[50,1],[51,1]]")}));
  EXPECT_THAT(runTool({"info", file.path()}).output,
              HasSubstr("1 obstacle line outside every region of the level"));
}

TEST(InfoCommand, AnEmptyBuildingIsNoMistake) {
  const TemporaryFile file(buildingText({}));
  const Outcome outcome = runTool({"info", file.path()});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, HasSubstr("attribution  none given"));
}

TEST(InfoCommand, ABrokenFileIsStatusTwoWithFileFeatureFoundAndExpected) {
  const TemporaryFile file(buildingText({nodeAt(1, 0, 11, 48), nodeAt(1, 0, 11, 48)}));
  const Outcome outcome = runTool({"info", file.path()});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.output, IsEmpty());
  EXPECT_EQ(outcome.errors, "korvani-nav: " + file.path() +
                                ": features[1]: id of a node: found 1 a second time, expected an "
                                "id of its own\n");
}

TEST(InfoCommand, AMissingFileIsStatusTwo) {
  const Outcome outcome = runTool({"info", "/no/such/file"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.errors, HasSubstr("/no/such/file"));
}

TEST(InfoCommand, DoesNotColourWhatGoesIntoAPipe) {
  const TemporaryFile file(kHall);
  EXPECT_THAT(runTool({"info", file.path()}, "TERM=xterm").output, Not(HasSubstr("\x1b")));
}

}  // namespace
}  // namespace KorvaniTest
