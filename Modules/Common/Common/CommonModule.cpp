#include "Common/CommonModule.hpp"

#include "Common/ConfigDependents.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniCommon {

CommonModule::CommonModule() = default;

CommonModule::~CommonModule() = default;

std::shared_ptr<ConfigDependents> CommonModule::defaultConfig() const {
  std::shared_ptr<ConfigDependents> main = defaultConfig_.load();
  if (!main) KORVANI_FATAL("main configuration missing");
  return main;
}

std::shared_ptr<ConfigDependents> CommonModule::configFor(const std::string& configName) const {
  return configs_.read([&](const Configs& configs) -> std::shared_ptr<ConfigDependents> {
    const auto* found = configs.find(configName);
    return found ? *found : nullptr;
  });
}

std::shared_ptr<ConfigDependents> CommonModule::addConfig(const std::string& configName) {
  if (auto present = configFor(configName)) return present;
  const std::shared_ptr<ConfigDependents> made = createNewConfigDependents(configName);
  if (!made) KORVANI_FATAL("configuration factory made no bundle");
  made->attach();
  return configs_.update([&](Configs& configs) {
    auto& entry = configs.row(configName);
    if (!entry) entry = made;  // else another thread was faster, and its bundle may be in use
    return entry;
  });
}

std::vector<std::shared_ptr<ConfigDependents>> CommonModule::configs() const {
  return configs_.read([](const Configs& configs) {
    std::vector<std::shared_ptr<ConfigDependents>> result;
    result.reserve(configs.size());
    for (const auto& entry : configs) result.push_back(entry.second);
    return result;
  });
}

CommonModule::Configs CommonModule::_configs() const { return configs_.load(); }

void CommonModule::makeMainConfig() { defaultConfig_.store(addConfig(kMainConfigName)); }

}  // namespace KorvaniCommon
