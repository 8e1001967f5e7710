#include "Common/Config.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "Common/ConfigDependents.hpp"

namespace {

using KorvaniCommon::Config;
using KorvaniCommon::ConfigDependents;

std::shared_ptr<ConfigDependents> bundleNamed(const std::string& name) {
  return std::make_shared<ConfigDependents>(name, std::make_shared<Config>());
}

TEST(Config, NamesNoBundleWhenItStandsAlone) { EXPECT_EQ(Config().configDependent(), nullptr); }

TEST(Config, NamesNoBundleBeforeTheBundleIsAttached) {
  EXPECT_EQ(bundleNamed("night")->_config()->configDependent(), nullptr);
}

TEST(Config, NamesItsBundleOnceAttached) {
  const auto bundle = bundleNamed("night");
  bundle->attach();
  EXPECT_EQ(bundle->_config()->configDependent(), bundle);
}

TEST(Config, DoesNotKeepItsBundleAlive) {
  auto bundle = bundleNamed("night");
  bundle->attach();
  const std::shared_ptr<Config> config = bundle->_config();
  const std::weak_ptr<ConfigDependents> watched = bundle;
  bundle = nullptr;
  EXPECT_TRUE(watched.expired());
  EXPECT_EQ(config->configDependent(), nullptr);
}

TEST(Config, IsDestroyedAsItsDerivedTypeWithTheBundle) {
  struct Counting : Config {
    explicit Counting(int& destroyed) : destroyed_(destroyed) {}
    ~Counting() override { ++destroyed_; }
    int& destroyed_;
  };
  int destroyed = 0;
  {
    std::unique_ptr<Config> config = std::make_unique<Counting>(destroyed);
    const ConfigDependents bundle("night", std::move(config));
    EXPECT_EQ(destroyed, 0);
  }
  EXPECT_EQ(destroyed, 1);
}

TEST(ConfigDependents, KeepsNameAndConfigurationItWasMadeWith) {
  const auto config = std::make_shared<Config>();
  const ConfigDependents bundle("night", config);
  EXPECT_EQ(bundle.configName(), "night");
  EXPECT_EQ(bundle._config(), config);
}

TEST(ConfigDependents, IsEnabledAtFirst) { EXPECT_TRUE(bundleNamed("night")->configEnabled()); }

TEST(ConfigDependents, CanBeSwitchedOffAndOnAgain) {
  const auto bundle = bundleNamed("night");
  bundle->setConfigEnabled(false);
  EXPECT_FALSE(bundle->configEnabled());
  bundle->setConfigEnabled(true);
  EXPECT_TRUE(bundle->configEnabled());
}

TEST(ConfigDependentsDeathTest, WithoutConfigurationIsFatal) {
  EXPECT_DEATH(ConfigDependents("night", nullptr), "configuration bundle without configuration");
}

}  // namespace
