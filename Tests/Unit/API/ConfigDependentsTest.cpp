#include "Navigation/API/ConfigDependents.hpp"

#include <gtest/gtest.h>

#include "Navigation/Localisation/PositionMapper.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniNavigation {
namespace {

class ConfigDependentsTest : public KorvaniTest::FacadeFixture {};

TEST_F(ConfigDependentsTest, HoldsAConfigurationOfTheEnginesOwnClass) {
  config().setLevelHeight(4.0);
  EXPECT_EQ(bundle()->config().levelHeight(), 4.0);
  EXPECT_EQ(&bundle()->config(), &config());
}

TEST_F(ConfigDependentsTest, ItsConfigurationKnowsItsBundle) {
  EXPECT_EQ(config().configDependent(), bundle());
}

TEST_F(ConfigDependentsTest, MakesItsIntersectionFinderOnceWithoutAnObstacleDetector) {
  const auto finder = bundle()->intersectionFinder();
  ASSERT_TRUE(finder);
  EXPECT_EQ(finder, bundle()->intersectionFinder());
  EXPECT_FALSE(finder->obstacleDetector());
  EXPECT_EQ(finder->configDependents(), bundle());
  EXPECT_EQ(finder->regionFinder()->configDependents(), bundle());
}

TEST_F(ConfigDependentsTest, ABundleMadeAfterTheGraphFindsItsRegionsOnFirstUse) {
  const KorvaniTest::TextBuilding building("A--B");
  navigation().provideGraph(building.graph());
  const auto late = std::static_pointer_cast<ConfigDependents>(navigation().addConfig("late"));
  ASSERT_EQ(late->intersectionFinder()->regionFinder()->regions().size(), 1U);
}

TEST_F(ConfigDependentsTest, OnlyTheBundleNamedLikeTheMainOneIsTheMainOne) {
  EXPECT_TRUE(bundle()->isMainConfig());
  const auto other = std::static_pointer_cast<ConfigDependents>(navigation().addConfig("other"));
  EXPECT_FALSE(other->isMainConfig());
  const auto namesake =
      navigation().createNewConfigDependents(navigation().defaultConfig()->configName());
  EXPECT_TRUE(std::static_pointer_cast<ConfigDependents>(namesake)->isMainConfig())
      << "the name decides";
}

TEST(ConfigDependentsDeathTest, AskingAVanishedConfigurationForItsRegionFinderEndsTheProcess) {
  EXPECT_DEATH(regionFinderOf(std::weak_ptr<ConfigDependents>()),
               "fatal error: the configuration of a running task is gone");
}

}  // namespace
}  // namespace KorvaniNavigation
