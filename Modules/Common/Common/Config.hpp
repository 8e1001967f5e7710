#pragma once

#include <memory>

#include "Platform/Export.hpp"

namespace KorvaniCommon {

class ConfigDependents;

/// Base class of a module's configuration values.
///
/// A module derives from it and adds its settings as fields. A configuration is held by one
/// bundle (`ConfigDependents`) and shared by reference: a change is seen by everybody who
/// uses that bundle.
///
///     class ParkingConfig : public KorvaniCommon::Config {
///      public:
///       std::atomic<double> searchRadius{50.0};  // metres
///     };
///
/// Ownership: the bundle owns the configuration; the way back is weak.
/// Thread safety: the way back is set once, before the bundle is known to anybody else, and
/// only read afterwards. Derived classes guard their fields themselves.
class KORVANI_API Config {
 public:
  Config();
  virtual ~Config();

  Config(const Config&) = delete;
  Config& operator=(const Config&) = delete;

  /// The bundle that holds this configuration; absent before the bundle was attached and
  /// after it has gone.
  std::shared_ptr<ConfigDependents> configDependent() const;

 private:
  friend class ConfigDependents;

  std::weak_ptr<ConfigDependents> _configDependent;
};

}  // namespace KorvaniCommon
