#include "Common/CommonModule.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "Common/Config.hpp"
#include "Common/ConfigDependents.hpp"

namespace {

using KorvaniCommon::CommonModule;
using KorvaniCommon::Config;
using KorvaniCommon::ConfigDependents;

struct ParkingConfig : Config {
  double searchRadius = 50.0;
};

/// A module as small as one can be: it makes nothing by itself.
class BareParking : public CommonModule {
 public:
  std::shared_ptr<Config> createNewConfig() override {
    ++configsMade;
    return std::make_shared<ParkingConfig>();
  }

  std::shared_ptr<ConfigDependents> createNewConfigDependents(
      const std::string& configName) override {
    ++bundlesMade;
    return std::make_shared<ConfigDependents>(configName, createNewConfig());
  }

  using CommonModule::makeMainConfig;

  std::atomic<int> configsMade{0};
  std::atomic<int> bundlesMade{0};
};

/// A module as modules are: with its main configuration from the start.
class Parking final : public BareParking {
 public:
  Parking() { makeMainConfig(); }
};

std::vector<std::string> namesOf(const CommonModule& module) {
  std::vector<std::string> names;
  for (const auto& bundle : module.configs()) names.push_back(bundle->configName());
  return names;
}

TEST(CommonModule, MakesNothingWhileTheBaseClassIsConstructed) {
  const BareParking parking;
  EXPECT_TRUE(parking.configs().empty());
  EXPECT_EQ(parking.configFor("main"), nullptr);
  EXPECT_EQ(parking.bundlesMade, 0);
}

TEST(CommonModuleDeathTest, AskingForTheMainConfigurationBeforeItIsMadeIsFatal) {
  const BareParking parking;
  EXPECT_DEATH(parking.defaultConfig(), "main configuration missing");
}

TEST(CommonModule, HasItsMainConfigurationOnceConstructed) {
  const Parking parking;
  EXPECT_EQ(parking.defaultConfig()->configName(), "main");
  EXPECT_EQ(parking.defaultConfig()->configName(), KorvaniCommon::kMainConfigName);
}

TEST(CommonModule, MakesTheMainConfigurationThroughTheModulesFactories) {
  const Parking parking;
  EXPECT_EQ(parking.bundlesMade, 1);
  EXPECT_EQ(parking.configsMade, 1);
  const auto config = std::static_pointer_cast<ParkingConfig>(parking.defaultConfig()->_config());
  EXPECT_EQ(config->searchRadius, 50.0);
}

TEST(CommonModule, AttachesTheBundlesItMakes) {
  Parking parking;
  const auto main = parking.defaultConfig();
  EXPECT_EQ(main->_config()->configDependent(), main);
  const auto night = parking.addConfig("night");
  EXPECT_EQ(night->_config()->configDependent(), night);
}

TEST(CommonModule, FindsTheMainConfigurationByItsName) {
  const Parking parking;
  EXPECT_EQ(parking.configFor("main"), parking.defaultConfig());
}

TEST(CommonModule, FindsAnAddedConfigurationByItsName) {
  Parking parking;
  const auto night = parking.addConfig("night");
  EXPECT_EQ(night->configName(), "night");
  EXPECT_EQ(parking.configFor("night"), night);
  EXPECT_NE(night, parking.defaultConfig());
  EXPECT_NE(night->_config(), parking.defaultConfig()->_config());
}

TEST(CommonModule, KnowsNoConfigurationOfAnUnknownName) {
  Parking parking;
  parking.addConfig("night");
  EXPECT_EQ(parking.configFor("day"), nullptr);
  EXPECT_EQ(parking.configFor("Night"), nullptr);
  EXPECT_EQ(parking.configFor(""), nullptr);
}

TEST(CommonModule, AskingForAnUnknownNameMakesNothing) {
  Parking parking;
  parking.configFor("day");
  EXPECT_EQ(namesOf(parking), std::vector<std::string>{"main"});
  EXPECT_EQ(parking.bundlesMade, 1);
}

TEST(CommonModule, AddingATakenNameGivesThePresentBundle) {
  Parking parking;
  const auto night = parking.addConfig("night");
  EXPECT_EQ(parking.addConfig("night"), night);
  EXPECT_EQ(parking.addConfig("main"), parking.defaultConfig());
  EXPECT_EQ(parking.bundlesMade, 2);
}

TEST(CommonModule, MakingTheMainConfigurationAgainKeepsIt) {
  BareParking parking;
  parking.makeMainConfig();
  const auto main = parking.defaultConfig();
  parking.makeMainConfig();
  EXPECT_EQ(parking.defaultConfig(), main);
  EXPECT_EQ(parking.configs().size(), 1u);
}

TEST(CommonModule, AddingAConfigurationLeavesTheDefaultOneAlone) {
  Parking parking;
  const auto main = parking.defaultConfig();
  parking.addConfig("night");
  EXPECT_EQ(parking.defaultConfig(), main);
}

TEST(CommonModule, ListsConfigurationsInTheOrderTheyWereMade) {
  Parking parking;
  parking.addConfig("zebra");
  parking.addConfig("ant");
  parking.addConfig("zebra");
  EXPECT_EQ(namesOf(parking), (std::vector<std::string>{"main", "zebra", "ant"}));
  EXPECT_EQ(parking._configs().keys(), namesOf(parking));
}

TEST(CommonModule, ItsListIsASnapshotThatLaterAdditionsDoNotTouch) {
  Parking parking;
  const auto listed = parking.configs();
  const CommonModule::Configs registry = parking._configs();
  parking.addConfig("night");
  EXPECT_EQ(listed.size(), 1u);
  EXPECT_EQ(registry.size(), 1u);
  EXPECT_EQ(*registry.find("main"), parking.defaultConfig());
}

TEST(CommonModuleDeathTest, AFactoryThatMakesNoBundleIsFatal) {
  struct Broken : BareParking {
    std::shared_ptr<ConfigDependents> createNewConfigDependents(const std::string&) override {
      return nullptr;
    }
  };
  Broken broken;
  EXPECT_DEATH(broken.addConfig("night"), "configuration factory made no bundle");
}

TEST(CommonModule, AFactoryMayAskTheModule) {
  struct Curious : BareParking {
    std::shared_ptr<ConfigDependents> createNewConfigDependents(
        const std::string& configName) override {
      seen = namesOf(*this);
      return BareParking::createNewConfigDependents(configName);
    }
    std::vector<std::string> seen;
  };
  Curious curious;
  curious.addConfig("first");
  curious.addConfig("second");
  EXPECT_EQ(curious.seen, std::vector<std::string>{"first"});
}

TEST(CommonModule, ThreadsThatAddTheSameNamesAllGetTheSameBundles) {
  constexpr int kThreads = 4;
  constexpr int kNames = 50;
  Parking parking;
  std::vector<std::vector<std::shared_ptr<ConfigDependents>>> got(kThreads);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, i] {
      for (int name = 0; name < kNames; ++name) {
        got[i].push_back(parking.addConfig(std::to_string(name)));
        EXPECT_EQ(parking.configFor(std::to_string(name)), got[i].back());
        EXPECT_EQ(parking.configs().front(), parking.defaultConfig());
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const auto& bundles : got) EXPECT_EQ(bundles, got.front());
  EXPECT_EQ(parking.configs().size(), 1u + kNames);
}

}  // namespace
