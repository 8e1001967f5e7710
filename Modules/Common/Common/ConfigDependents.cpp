#include "Common/ConfigDependents.hpp"

#include <utility>

#include "Common/Config.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniCommon {

ConfigDependents::ConfigDependents(std::string configName, std::shared_ptr<Config> config)
    : configName_(std::move(configName)), config_(std::move(config)) {
  if (!config_) KORVANI_FATAL("configuration bundle without configuration");
}

ConfigDependents::~ConfigDependents() = default;

const std::string& ConfigDependents::configName() const { return configName_; }

bool ConfigDependents::configEnabled() const { return configEnabled_; }

void ConfigDependents::setConfigEnabled(bool enabled) { configEnabled_ = enabled; }

const std::shared_ptr<Config>& ConfigDependents::_config() const { return config_; }

void ConfigDependents::attach() { config_->_configDependent = weak_from_this(); }

}  // namespace KorvaniCommon
