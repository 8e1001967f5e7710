#include "Common/Config.hpp"

namespace KorvaniCommon {

Config::Config() = default;

Config::~Config() = default;

std::shared_ptr<ConfigDependents> Config::configDependent() const {
  return _configDependent.lock();
}

}  // namespace KorvaniCommon
