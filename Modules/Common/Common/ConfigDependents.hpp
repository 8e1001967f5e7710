#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "Platform/Export.hpp"

namespace KorvaniCommon {

class Config;

/// A named configuration together with the helpers that depend on it.
///
/// A module derives from it to add such helpers, and keeps one bundle per configuration name
/// (`CommonModule`). Bundles live in `std::shared_ptr`. A bundle cannot name itself to its
/// configuration while it is being constructed; `attach` does so afterwards.
///
///     auto bundle = std::make_shared<ConfigDependents>("night", std::make_shared<NightConfig>());
///     bundle->attach();
///     assert(bundle->_config()->configDependent() == bundle);
///
/// Ownership: owns its configuration. Thread safety: name and configuration never change,
/// the switch is atomic; `attach` belongs before the bundle is shared between threads.
class KORVANI_API ConfigDependents : public std::enable_shared_from_this<ConfigDependents> {
 public:
  /// A bundle called `configName` that holds `config`, switched on. A null `config` is a fatal
  /// error.
  ConfigDependents(std::string configName, std::shared_ptr<Config> config);
  virtual ~ConfigDependents();

  ConfigDependents(const ConfigDependents&) = delete;
  ConfigDependents& operator=(const ConfigDependents&) = delete;

  /// The name under which the module knows the bundle.
  const std::string& configName() const;

  /// Whether the configuration is in use; true at first. Kept for the host: the framework
  /// itself serves bundles that are switched off, too.
  bool configEnabled() const;
  void setConfigEnabled(bool enabled);

  /// The configuration, never null. Modules hand it on as their own type.
  const std::shared_ptr<Config>& _config() const;

  /// Makes the configuration's back reference name this bundle. `CommonModule` calls it for
  /// the bundles it makes.
  void attach();

 private:
  const std::string configName_;
  const std::shared_ptr<Config> config_;
  std::atomic<bool> configEnabled_{true};
};

}  // namespace KorvaniCommon
