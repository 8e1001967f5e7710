#pragma once

#include <utility>
#include <vector>

#include "Navigation/API/Config.hpp"
#include "Platform/Value.hpp"
#include "Support/ConfigSettings.hpp"
#include "Trace/TraceOperation.hpp"

namespace KorvaniTools {

/// The settings of one configuration operation, looked at before any of them is made.
class ConfigChange {
 public:
  /// @throws InputError for an item or field that does not exist, a field under `set`, an item
  ///     under `fields`, and a value that the setting cannot hold
  explicit ConfigChange(const ConfigOperation& operation);

  /// Makes all settings.
  void applyTo(KorvaniNavigation::Config& config) const;

 private:
  void add(const ConfigOperation::Settings& settings, bool items);

  std::vector<std::pair<const ConfigSetting*, KorvaniPlatform::Number>> settings_;
};

}  // namespace KorvaniTools
