#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "Tools/Process.hpp"

namespace KorvaniTest {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kHouse = KORVANI_SOURCE_DIR "/Tests/Golden/house.building.geojson";
constexpr auto kSnap = R"({"op":"snap","at":{"lat":10.0,"lon":20.0,"level":0}})";
constexpr auto kSnapped = R"({"line":1,"event":"snapped","lat":10.0,"lon":20.0})";

Outcome replay(const TemporaryFile& trace) { return runTool({"replay", kHouse, trace.path()}); }

TEST(ReplayCommand, WritesOneObjectALine) {
  const TemporaryFile trace(std::string(kSnap) + "\n# and again\r\n\r\n" + kSnap);
  const Outcome outcome = replay(trace);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.errors, IsEmpty());
  EXPECT_EQ(outcome.output, std::string(kSnapped) + '\n' +
                                R"({"line":4,"event":"snapped","lat":10.0,"lon":20.0})" + '\n');
}

TEST(ReplayCommand, AnEmptyTraceGivesNothing) {
  const Outcome outcome = replay(TemporaryFile());
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, IsEmpty());
}

TEST(ReplayCommand, GoesOnAfterALineThatCannotBeCarriedOut) {
  const TemporaryFile trace(R"({"op":"config","set":{"speed":1}})" + ('\n' + std::string(kSnap)));
  const Outcome outcome = replay(trace);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, AllOf(HasSubstr(R"({"line":1,"event":"error","message":")"),
                                    HasSubstr(R"({"line":2,"event":"snapped")")));
  EXPECT_THAT(outcome.errors, IsEmpty());
}

TEST(ReplayCommand, AMalformedLineEndsItAfterWhatCameBefore) {
  const TemporaryFile trace(std::string(kSnap) + "\n{\"op\":\"fly\"}\n" + kSnap);
  const Outcome outcome = replay(trace);
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.output, std::string(kSnapped) + '\n');
  EXPECT_EQ(outcome.errors, "korvani-nav: " + trace.path() +
                                ": line 2: op: found \"fly\", expected one of config, intersect, "
                                "route, position, destinations, snap, check, cancel\n");
}

TEST(ReplayCommand, AFileHoldsAllOfTheOutputOrIsLeftAlone) {
  const TemporaryFile trace(kSnap);
  const TemporaryFile output("old");
  EXPECT_EQ(runTool({"replay", kHouse, trace.path(), "-o", output.path()}).status, 0);
  EXPECT_EQ(output.text(), std::string(kSnapped) + '\n');
  const TemporaryFile malformed(std::string(kSnap) + "\n{");
  EXPECT_EQ(runTool({"replay", kHouse, malformed.path(), "-o", output.path()}).status, 2);
  EXPECT_EQ(output.text(), std::string(kSnapped) + '\n');
}

TEST(ReplayCommand, RefusesFilesThatAreNone) {
  const TemporaryFile trace(kSnap);
  const Outcome noTrace = runTool({"replay", kHouse, "/no/such.trace.ndjson"});
  EXPECT_EQ(noTrace.status, 2);
  EXPECT_THAT(noTrace.errors,
              AllOf(HasSubstr("/no/such.trace.ndjson"), HasSubstr("expected a trace file")));
  const Outcome noBuilding = runTool({"replay", trace.path(), trace.path()});
  EXPECT_EQ(noBuilding.status, 2);
  EXPECT_THAT(noBuilding.output, IsEmpty());
  EXPECT_THAT(noBuilding.errors, HasSubstr("expected a FeatureCollection"));
}

TEST(ReplayCommand, SaysWhenItCannotWrite) {
  const TemporaryFile trace(kSnap);
  const Outcome outcome = runTool({"replay", kHouse, trace.path(), "-o", "/no/such/folder/out"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.errors, HasSubstr("cannot write /no/such/folder/out"));
}

TEST(ReplayCommand, HelpAndUsage) {
  EXPECT_THAT(runTool({"replay", "--help"}).output,
              AllOf(HasSubstr("BUILDING"), HasSubstr("TRACE"), HasSubstr("--output")));
  EXPECT_EQ(runTool({"replay", kHouse}).status, 2);
}

}  // namespace
}  // namespace KorvaniTest
