#include "Navigation/API/Config.hpp"

#include <gtest/gtest.h>

#include "Navigation/API/KRVNavigationConfigItem.hpp"

namespace KorvaniNavigation {
namespace {

TEST(Config, StartsWithTheDefaultsOfEveryField) {
  const Config config;
  EXPECT_EQ(config.levelHeight(), 3.0);
  EXPECT_EQ(config.targetProximityDistance(), 5.0);
  EXPECT_FALSE(config.activateNavigationPathSnapping());
  EXPECT_FALSE(config.activateObstacleChecking());
  EXPECT_EQ(config.navigationPathSnappingDistance(), 5.0);
  EXPECT_FALSE(config.activateMagneticSnapping());
  EXPECT_FALSE(config.activateBarrierFreeNavigation());
  EXPECT_FALSE(config.activateRouteOptimisation());
  EXPECT_EQ(config.magneticPathSnappingDistanceThreshold(), 3.0F);
  EXPECT_EQ(config.magneticPathSnappingFallbackThreshold(), 5);
  EXPECT_EQ(config.walkingSpeed(), 1.5);
  EXPECT_FALSE(config.checkDestinationsAgainstOwnWalls());
}

TEST(Config, KeepsWhatIsWrittenIntoEachField) {
  Config config;
  config.setLevelHeight(4.5);
  config.setTargetProximityDistance(2.5);
  config.setActivateNavigationPathSnapping(true);
  config.setActivateObstacleChecking(true);
  config.setNavigationPathSnappingDistance(7.5);
  config.setActivateMagneticSnapping(true);
  config.setActivateBarrierFreeNavigation(true);
  config.setActivateRouteOptimisation(true);
  config.setMagneticPathSnappingDistanceThreshold(1.25F);
  config.setMagneticPathSnappingFallbackThreshold(-3);
  config.setWalkingSpeed(0.5);
  config.setCheckDestinationsAgainstOwnWalls(true);
  EXPECT_EQ(config.levelHeight(), 4.5);
  EXPECT_EQ(config.targetProximityDistance(), 2.5);
  EXPECT_TRUE(config.activateNavigationPathSnapping());
  EXPECT_TRUE(config.activateObstacleChecking());
  EXPECT_EQ(config.navigationPathSnappingDistance(), 7.5);
  EXPECT_TRUE(config.activateMagneticSnapping());
  EXPECT_TRUE(config.activateBarrierFreeNavigation());
  EXPECT_TRUE(config.activateRouteOptimisation());
  EXPECT_EQ(config.magneticPathSnappingDistanceThreshold(), 1.25F);
  EXPECT_EQ(config.magneticPathSnappingFallbackThreshold(), -3);
  EXPECT_EQ(config.walkingSpeed(), 0.5);
  EXPECT_TRUE(config.checkDestinationsAgainstOwnWalls());
}

TEST(Config, TakesTheDefaultsOfItsItemsFromTheItems) {
  const Config config;
  for (const auto item : KRVNavigationConfigItem::allCases) {
    EXPECT_EQ(item.value(config).doubleValue(), item.defaultValue().doubleValue())
        << item.rawValue();
  }
}

}  // namespace
}  // namespace KorvaniNavigation
