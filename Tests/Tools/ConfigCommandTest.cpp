#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "Tools/Process.hpp"

namespace KorvaniTest {
namespace {

using testing::AllOf;
using testing::HasSubstr;

TEST(ConfigCommand, ListsEveryItemWithTitleDescriptionTypeAndDefault) {
  const Outcome outcome = runTool({"config"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, AllOf(HasSubstr("\nactivateObstacleChecking\n"
                                              "  Obstacle Checking\n"
                                              "  Avoids \"jumping\" through walls\n"
                                              "  boolean, default false\n"),
                                    HasSubstr("\nnavigationMagneticPathSnappingDistanceThreshold\n"
                                              "  Magnetic Path Snapping Distance\n"
                                              "  float, default 3.0\n"),
                                    HasSubstr("\nnavigationMagneticPathSnappingFallbackThreshold\n"
                                              "  Magnetic Path Snapping Fallback\n"
                                              "  integer, default 5\n")));
}

TEST(ConfigCommand, ListsTheFieldsThatHaveNoItem) {
  EXPECT_THAT(runTool({"config"}).output,
              AllOf(HasSubstr("\nlevelHeight\n"), HasSubstr("\nwalkingSpeed\n"),
                    HasSubstr("\ncheckDestinationsAgainstOwnWalls\n")));
}

TEST(ConfigCommand, GivesTheSameAsJson) {
  const Outcome outcome = runTool({"config", "--format", "json"});
  EXPECT_EQ(outcome.status, 0);
  const auto json = nlohmann::json::parse(outcome.output);
  ASSERT_EQ(json["items"].size(), 9U);
  EXPECT_EQ(json["items"][0].dump(),
            R"({"default":5.0,"description":"Distance until arriving at destination",)"
            R"("key":"navigationTargetProximityDistance","title":"Nav Target Proximity Distance",)"
            R"("type":"double"})");
  EXPECT_EQ(json["items"][6]["default"], 5);
  EXPECT_TRUE(json["items"][6]["default"].is_number_integer());
  EXPECT_EQ(json["items"][8]["default"], false);
  ASSERT_EQ(json["fields"].size(), 3U);
  EXPECT_EQ(json["fields"][0]["key"], "levelHeight");
  EXPECT_EQ(json["fields"][0]["default"], 3.0);
  EXPECT_EQ(json["fields"][2]["type"], "boolean");
}

}  // namespace
}  // namespace KorvaniTest
