#include "Support/ConfigSettings.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "Support/InputError.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::Config;
using KorvaniPlatform::Number;
using KorvaniTools::applySetting;
using KorvaniTools::configSettingNamed;
using KorvaniTools::configSettings;
using KorvaniTools::InputError;
using testing::AllOf;
using testing::HasSubstr;

std::string complaintAbout(const std::string& text) {
  Config config;
  try {
    applySetting(text, config);
  } catch (const InputError& error) {
    return error.what();
  }
  return "";
}

TEST(ConfigSettings, AreTheNineItemsAndThenThreeFields) {
  ASSERT_EQ(configSettings().size(), 12U);
  EXPECT_EQ(configSettings()[0]->key(), "navigationTargetProximityDistance");
  EXPECT_EQ(configSettings()[8]->key(), "activateObstacleChecking");
  EXPECT_TRUE(configSettings()[8]->isItem());
  EXPECT_EQ(configSettings()[9]->key(), "levelHeight");
  EXPECT_EQ(configSettings()[11]->key(), "checkDestinationsAgainstOwnWalls");
  EXPECT_FALSE(configSettings()[11]->isItem());
}

TEST(ConfigSettings, KnowTheirTypes) {
  EXPECT_EQ(configSettingNamed("navigationPathSnappingDistance")->type(), "double");
  EXPECT_EQ(configSettingNamed("activateObstacleChecking")->type(), "boolean");
  EXPECT_EQ(configSettingNamed("navigationMagneticPathSnappingFallbackThreshold")->type(),
            "integer");
  EXPECT_EQ(configSettingNamed("navigationMagneticPathSnappingDistanceThreshold")->type(), "float");
  EXPECT_EQ(configSettingNamed("walkingSpeed")->type(), "double");
  EXPECT_EQ(configSettingNamed("nothing"), nullptr);
}

TEST(ConfigSettings, EveryOneCanBeSet) {
  Config config;
  for (const char* text :
       {"navigationTargetProximityDistance=2.5", "navigationActivateBarrierFreeNavigation=true",
        "navigationActivateRouteOptimisation=1", "activateNavigationPathSnapping=TRUE",
        "navigationPathSnappingDistance=7", "navigationActivateMagneticSnapping=true",
        "navigationMagneticPathSnappingFallbackThreshold=8",
        "navigationMagneticPathSnappingDistanceThreshold=1.5", "activateObstacleChecking=true",
        "levelHeight=0", "walkingSpeed=2", "checkDestinationsAgainstOwnWalls=true"}) {
    applySetting(text, config);
  }
  EXPECT_EQ(config.targetProximityDistance(), 2.5);
  EXPECT_TRUE(config.activateBarrierFreeNavigation());
  EXPECT_TRUE(config.activateRouteOptimisation());
  EXPECT_TRUE(config.activateNavigationPathSnapping());
  EXPECT_EQ(config.navigationPathSnappingDistance(), 7);
  EXPECT_TRUE(config.activateMagneticSnapping());
  EXPECT_EQ(config.magneticPathSnappingFallbackThreshold(), 8);
  EXPECT_EQ(config.magneticPathSnappingDistanceThreshold(), 1.5F);
  EXPECT_TRUE(config.activateObstacleChecking());
  EXPECT_EQ(config.levelHeight(), 0);
  EXPECT_EQ(config.walkingSpeed(), 2);
  EXPECT_TRUE(config.checkDestinationsAgainstOwnWalls());
  applySetting(" activateObstacleChecking = 0 ", config);
  EXPECT_FALSE(config.activateObstacleChecking());
}

TEST(ConfigSettings, AnUnknownKeyIsNamedWithTheKnownOnes) {
  EXPECT_THAT(complaintAbout("speed=3"),
              AllOf(HasSubstr("unknown key \"speed\""), HasSubstr("\n  walkingSpeed"),
                    HasSubstr("\n  activateObstacleChecking")));
  EXPECT_THAT(complaintAbout("navigationActivateObstacleChecking=1"), HasSubstr("unknown key"));
}

TEST(ConfigSettings, AnIllTypedValueIsNamedWithWhatIsExpected) {
  EXPECT_EQ(complaintAbout("levelHeight=high"),
            "--config: levelHeight: found \"high\", expected a number");
  EXPECT_THAT(complaintAbout("levelHeight=inf"), HasSubstr("expected a number"));
  EXPECT_THAT(complaintAbout("levelHeight="), HasSubstr("expected a number"));
  EXPECT_THAT(complaintAbout("activateObstacleChecking=2"), HasSubstr("expected true or false"));
  EXPECT_THAT(complaintAbout("navigationMagneticPathSnappingFallbackThreshold=1.5"),
              HasSubstr("expected a whole number"));
  EXPECT_THAT(complaintAbout("navigationMagneticPathSnappingDistanceThreshold=1e39"),
              HasSubstr("single precision"));
}

TEST(ConfigSettings, AKeyAloneIsNotEnough) {
  EXPECT_THAT(complaintAbout("levelHeight"), HasSubstr("expected KEY=VALUE"));
}

TEST(ConfigSettings, AcceptOnlyWhatTheirFieldsHold) {
  const auto accepts = [](const char* key, const Number& number) {
    return configSettingNamed(key)->accepts(number);
  };
  EXPECT_TRUE(accepts("activateObstacleChecking", true));
  EXPECT_FALSE(accepts("activateObstacleChecking", 1));
  EXPECT_TRUE(accepts("levelHeight", 3));
  EXPECT_TRUE(accepts("levelHeight", 3.5));
  EXPECT_FALSE(accepts("levelHeight", true));
  EXPECT_FALSE(accepts("levelHeight", std::numeric_limits<double>::infinity()));
  EXPECT_TRUE(accepts("navigationMagneticPathSnappingFallbackThreshold", 4.0));
  EXPECT_FALSE(accepts("navigationMagneticPathSnappingFallbackThreshold", 4.5));
  EXPECT_FALSE(accepts("navigationMagneticPathSnappingFallbackThreshold", 0x1p63));
  EXPECT_TRUE(accepts("navigationMagneticPathSnappingDistanceThreshold", -3e38));
  EXPECT_FALSE(accepts("navigationMagneticPathSnappingDistanceThreshold", 1e39));
}

}  // namespace
}  // namespace KorvaniTest
