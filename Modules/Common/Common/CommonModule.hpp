#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Common/Guarded.hpp"
#include "Common/OrderedDictionary.hpp"
#include "Platform/Export.hpp"

namespace KorvaniCommon {

class Config;
class ConfigDependents;

/// Name of every module's default configuration.
inline const std::string kMainConfigName = "main";

/// Base class of a module: the registry of its named configurations.
///
/// A module overrides the two factories with its own types. They cannot be called while the
/// base class is being constructed, so the module makes its main configuration itself, as the
/// last step of its own construction (from the most derived class):
///
///     class Parking : public KorvaniCommon::CommonModule {
///      public:
///       Parking() { makeMainConfig(); }
///       std::shared_ptr<Config> createNewConfig() override;
///       std::shared_ptr<ConfigDependents> createNewConfigDependents(
///           const std::string& configName) override;
///     };
///
///     parking.defaultConfig()->configName();  // "main"
///     parking.addConfig("night");             // another one
///     parking.configFor("day");               // null, nobody added it
///
/// Bundles are listed in the order in which they were made, the main one first, and are never
/// removed while the module lives.
///
/// Ownership: owns its bundles, together with whoever else holds them.
/// Thread safety: all functions may be called from any thread. A factory runs without a lock.
class KORVANI_API CommonModule {
 public:
  /// Bundles by their names, in the order in which they were made.
  using Configs = OrderedDictionary<std::string, std::shared_ptr<ConfigDependents>>;

  CommonModule();
  virtual ~CommonModule();

  CommonModule(const CommonModule&) = delete;
  CommonModule& operator=(const CommonModule&) = delete;

  /// A new configuration of the module's own type, with its defaults. Never null.
  virtual std::shared_ptr<Config> createNewConfig() = 0;

  /// A new bundle of the module's own type called `configName`, holding a new configuration.
  /// Never null. It is not registered; `addConfig` makes and registers.
  virtual std::shared_ptr<ConfigDependents> createNewConfigDependents(
      const std::string& configName) = 0;

  /// The main bundle, never null. Asking before the module made it is a fatal error.
  std::shared_ptr<ConfigDependents> defaultConfig() const;

  /// The bundle called `configName`, or null when there is none.
  std::shared_ptr<ConfigDependents> configFor(const std::string& configName) const;

  /// Makes and registers a bundle called `configName` and attaches it to its configuration. A
  /// name that is taken gives the present bundle, unchanged. Threads that add the same name
  /// at once all get the same bundle.
  std::shared_ptr<ConfigDependents> addConfig(const std::string& configName);

  /// All bundles as they are now, in order.
  std::vector<std::shared_ptr<ConfigDependents>> configs() const;

  /// The registry itself: a copy of it as it is now.
  Configs _configs() const;

 protected:
  /// Makes the main configuration and its bundle and keeps it as the default one. To be called
  /// once, by the most derived class, when it is constructed.
  void makeMainConfig();

 private:
  Guarded<Configs> configs_;
  Guarded<std::shared_ptr<ConfigDependents>> defaultConfig_;
};

}  // namespace KorvaniCommon
