#include "Recorder/KnownConfigs.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "Support/FacadeFixture.hpp"
#include "Trace/TraceWriter.hpp"

namespace KorvaniRecorder {
namespace {

using KorvaniNavigation::Config;
using testing::ElementsAre;
using testing::IsEmpty;

class KnownConfigsTest : public KorvaniTest::FacadeFixture {
 protected:
  /// The changes as lines of a trace.
  std::vector<std::string> lines() {
    std::vector<std::string> result;
    for (const auto& change : known.changes(navigation().navigationConfigs(), problems)) {
      result.push_back(KorvaniTools::traceLine(change));
    }
    return result;
  }

  static Config& configNamed(const std::string& name) {
    navigation().addConfig(name);
    return (*navigation().navigationConfigs().find(name))->config();
  }

  KnownConfigs known;
  std::vector<std::string> problems;
};

TEST_F(KnownConfigsTest, TheDefaultsNeedNotBeSaid) { EXPECT_THAT(lines(), IsEmpty()); }

TEST_F(KnownConfigsTest, ItemsAndFieldsThatHaveChangedAreSaidOnce) {
  config().setActivateRouteOptimisation(true);
  config().setMagneticPathSnappingDistanceThreshold(2.5F);
  config().setMagneticPathSnappingFallbackThreshold(9);
  config().setLevelHeight(4.5);
  config().setCheckDestinationsAgainstOwnWalls(true);
  EXPECT_THAT(lines(),
              ElementsAre(R"({"op":"config","set":{"navigationActivateRouteOptimisation":true,)"
                          R"("navigationMagneticPathSnappingFallbackThreshold":9,)"
                          R"("navigationMagneticPathSnappingDistanceThreshold":2.5},)"
                          R"("fields":{"levelHeight":4.5,)"
                          R"("checkDestinationsAgainstOwnWalls":true}})"));
  EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(KnownConfigsTest, WhatGoesBackToTheDefaultIsSaidAgain) {
  config().setTargetProximityDistance(3);
  EXPECT_THAT(lines(),
              ElementsAre(R"({"op":"config","set":{"navigationTargetProximityDistance":3.0}})"));
  config().setTargetProximityDistance(5);
  EXPECT_THAT(lines(),
              ElementsAre(R"({"op":"config","set":{"navigationTargetProximityDistance":5.0}})"));
}

TEST_F(KnownConfigsTest, AnotherConfigurationIsSaidEvenWithTheDefaults) {
  configNamed("night");
  EXPECT_THAT(lines(), ElementsAre(R"({"op":"config","config":"night"})"));
  configNamed("night").setWalkingSpeed(1);
  EXPECT_THAT(lines(),
              ElementsAre(R"({"op":"config","config":"night","fields":{"walkingSpeed":1.0}})"));
}

TEST_F(KnownConfigsTest, AValueThatIsNotFiniteIsLeftOutAndNamedOnce) {
  config().setLevelHeight(std::numeric_limits<double>::quiet_NaN());
  config().setWalkingSpeed(2);
  EXPECT_THAT(lines(), ElementsAre(R"({"op":"config","fields":{"walkingSpeed":2.0}})"));
  EXPECT_THAT(lines(), IsEmpty());
  EXPECT_THAT(problems,
              ElementsAre("configuration main: levelHeight is not finite and was left out"));
}

}  // namespace
}  // namespace KorvaniRecorder
