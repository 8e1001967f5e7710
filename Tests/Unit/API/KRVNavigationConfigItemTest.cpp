#include "Navigation/API/KRVNavigationConfigItem.hpp"

#include <gtest/gtest.h>

#include "Navigation/API/Config.hpp"

namespace KorvaniNavigation {
namespace {

using Action = KorvaniCommon::KRVCommonConfigItemAction;
using Item = KRVNavigationConfigItem;
using KorvaniPlatform::Number;

struct Expected {
  const char* rawValue;
  const char* title;
  const char* shortDescription;
  Number defaultValue;
  Number freshValue;
};

/// The items as hosts know them, in order.
const Expected kExpected[] = {
    {"navigationTargetProximityDistance", "Nav Target Proximity Distance",
     "Distance until arriving at destination", Number::real(5.0), Number::real(5.0)},
    {"navigationActivateBarrierFreeNavigation", "Activate Barrier Free Navigation",
     "Barrier Free Navigation", Number::boolean(false), Number::boolean(false)},
    {"navigationActivateRouteOptimisation", "Activate Route Optimisation",
     "Optimised Navigation Paths", Number::boolean(false), Number::boolean(false)},
    {"activateNavigationPathSnapping", "Navigation Path Snapping",
     "Snap the user location to nearest path, if near enough", Number::boolean(false),
     Number::boolean(false)},
    {"navigationPathSnappingDistance", "Navigation Path Snapping Distance", "", Number::real(5.0),
     Number::real(5.0)},
    {"navigationActivateMagneticSnapping", "Magnetic Path Snapping", "Try to stick to old segment",
     Number::boolean(false), Number::boolean(false)},
    {"navigationMagneticPathSnappingFallbackThreshold", "Magnetic Path Snapping Fallback", "",
     Number::integer(5), Number::integer(5)},
    {"navigationMagneticPathSnappingDistanceThreshold", "Magnetic Path Snapping Distance", "",
     Number::real(3.0), Number::single(3.0F)},
    {"activateObstacleChecking", "Obstacle Checking", "Avoids \"jumping\" through walls",
     Number::boolean(false), Number::boolean(false)},
};

TEST(KRVNavigationConfigItem, ListsNineItemsWithTheirKeysTitlesAndDescriptionsInOrder) {
  ASSERT_EQ(Item::allCases.size(), std::size(kExpected));
  for (std::size_t i = 0; i < Item::allCases.size(); ++i) {
    const Item item = Item::allCases[i];
    EXPECT_EQ(item.hashValue(), static_cast<int>(i));
    EXPECT_EQ(item.rawValue(), kExpected[i].rawValue);
    EXPECT_EQ(item.title(), kExpected[i].title);
    EXPECT_EQ(item.shortDescription(), kExpected[i].shortDescription);
  }
}

TEST(KRVNavigationConfigItem, BoxesDefaultsAndFreshValuesByTheirOwnKinds) {
  const Config config;
  for (std::size_t i = 0; i < Item::allCases.size(); ++i) {
    EXPECT_EQ(Item::allCases[i].defaultValue(), kExpected[i].defaultValue) << i;
    EXPECT_EQ(Item::allCases[i].value(config), kExpected[i].freshValue) << i;
  }
}

TEST(KRVNavigationConfigItem, DefaultOfTheMagneticDistanceIsADoubleButItsValueIsAFloat) {
  const auto item = Item::navigationMagneticPathSnappingDistanceThreshold;
  EXPECT_EQ(item.defaultValue(), Number::real(3.0));
  EXPECT_EQ(item.value(Config()), Number::single(3.0F));
}

TEST(KRVNavigationConfigItem, SettingItem1ToTheNumber1SwitchesBarrierFreeNavigationOn) {
  Config config;
  Item::navigationActivateBarrierFreeNavigation.setValue(Number::integer(1), config);
  EXPECT_TRUE(config.activateBarrierFreeNavigation());
}

TEST(KRVNavigationConfigItem, SettingWithoutANumberChangesNothing) {
  Config config;
  config.setActivateBarrierFreeNavigation(true);
  const auto result = Item::navigationActivateBarrierFreeNavigation.performAction(
      Action::setValue, &config, std::nullopt);
  EXPECT_FALSE(result);
  EXPECT_TRUE(config.activateBarrierFreeNavigation());
}

TEST(KRVNavigationConfigItem, SettingWithoutAConfigurationGivesNothing) {
  EXPECT_FALSE(Item::navigationTargetProximityDistance.performAction(Action::setValue, nullptr,
                                                                     Number::real(1)));
}

TEST(KRVNavigationConfigItem, ValueWithoutAConfigurationIsADouble0) {
  for (const auto item : Item::allCases) {
    const auto value = item.performAction(Action::getValue, nullptr, std::nullopt);
    ASSERT_TRUE(value && value->number());
    EXPECT_EQ(*value->number(), Number::real(0.0)) << item.rawValue();
  }
}

TEST(KRVNavigationConfigItem, KeyOfTheLastItemHasNoNavigationPrefix) {
  EXPECT_EQ(Item::fromRawValue("activateObstacleChecking"), Item::activateObstacleChecking);
  EXPECT_EQ(Item::fromRawValue("activateObstacleChecking")->hashValue(), 8);
  EXPECT_FALSE(Item::fromRawValue("navigationActivateObstacleChecking"));
}

TEST(KRVNavigationConfigItem, EveryKeyLeadsBackToItsItem) {
  for (const auto item : Item::allCases) EXPECT_EQ(Item::fromRawValue(item.rawValue()), item);
  EXPECT_FALSE(Item::fromRawValue(""));
}

TEST(KRVNavigationConfigItem, DescriptionOfThePathSnappingDistanceIsEmpty) {
  EXPECT_EQ(Item::navigationPathSnappingDistance.shortDescription(), "");
}

TEST(KRVNavigationConfigItem, WritesEachItemIntoItsOwnFieldConvertedToTheFieldsType) {
  Config config;
  Item::navigationTargetProximityDistance.setValue(Number::integer(7), config);
  Item::navigationActivateRouteOptimisation.setValue(Number::real(0.5), config);
  Item::activateNavigationPathSnapping.setValue(Number::boolean(true), config);
  Item::navigationPathSnappingDistance.setValue(Number::single(2.5F), config);
  Item::navigationActivateMagneticSnapping.setValue(Number::integer(1), config);
  Item::navigationMagneticPathSnappingFallbackThreshold.setValue(Number::real(8.9), config);
  Item::navigationMagneticPathSnappingDistanceThreshold.setValue(Number::real(0.1), config);
  Item::activateObstacleChecking.setValue(Number::boolean(true), config);
  EXPECT_EQ(config.targetProximityDistance(), 7.0);
  EXPECT_TRUE(config.activateRouteOptimisation());
  EXPECT_TRUE(config.activateNavigationPathSnapping());
  EXPECT_EQ(config.navigationPathSnappingDistance(), 2.5);
  EXPECT_TRUE(config.activateMagneticSnapping());
  EXPECT_EQ(config.magneticPathSnappingFallbackThreshold(), 8);
  EXPECT_EQ(config.magneticPathSnappingDistanceThreshold(), 0.1F);
  EXPECT_TRUE(config.activateObstacleChecking());
  EXPECT_FALSE(config.activateBarrierFreeNavigation());
}

TEST(KRVNavigationConfigItem, TitlesAndDefaultsNeedNoConfiguration) {
  const auto title = Item::activateObstacleChecking.performAction(Action::title, nullptr, {});
  ASSERT_TRUE(title && title->string());
  EXPECT_EQ(*title->string(), "Obstacle Checking");
}

}  // namespace
}  // namespace KorvaniNavigation
