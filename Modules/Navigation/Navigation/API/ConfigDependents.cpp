#include "Navigation/API/ConfigDependents.hpp"

#include <utility>

#include "Navigation/API/MainConfiguration.hpp"
#include "Navigation/Localisation/IntersectionFinder.hpp"
#include "Navigation/Localisation/PositionMapper.hpp"
#include "Navigation/Localisation/RegionFinder.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

ConfigDependents::ConfigDependents(std::string configName, std::shared_ptr<Config> config)
    : KorvaniCommon::ConfigDependents(std::move(configName), std::move(config)) {}

ConfigDependents::~ConfigDependents() = default;

Config& ConfigDependents::config() const { return static_cast<Config&>(*_config()); }

std::shared_ptr<IntersectionFinder> ConfigDependents::intersectionFinder() {
  const std::lock_guard lock(intersectionFinderMutex_);
  if (!intersectionFinder_) {
    const auto self = std::static_pointer_cast<ConfigDependents>(shared_from_this());
    auto regionFinder = std::make_shared<RegionFinder>(self);
    regionFinder->updateRegions();
    intersectionFinder_ = std::make_shared<IntersectionFinder>(std::move(regionFinder), self);
  }
  return intersectionFinder_;
}

std::shared_ptr<RegionFinder> regionFinderOf(const std::weak_ptr<ConfigDependents>& configuration) {
  const auto bundle = configuration.lock();
  if (!bundle) KORVANI_FATAL("the configuration of a running task is gone");
  return bundle->intersectionFinder()->regionFinder();
}

bool ConfigDependents::isMainConfig() const { return configName() == mainConfigName(); }

}  // namespace KorvaniNavigation
