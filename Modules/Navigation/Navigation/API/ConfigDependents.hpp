#pragma once

#include <memory>
#include <mutex>
#include <string>

#include "Common/ConfigDependents.hpp"
#include "Navigation/API/Config.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class IntersectionFinder;

/// A named configuration with the helpers that depend on it: the bundle that every task of that
/// name works with.
///
/// The facade owns the bundles; tasks, finders and detectors refer to them weakly, so that none
/// of them keeps a configuration alive. Bundles are made by the facade's factories only (they
/// must be owned by a `std::shared_ptr`).
///
/// Thread safety: all members may be called from any thread.
class KORVANI_API ConfigDependents : public KorvaniCommon::ConfigDependents {
 public:
  ConfigDependents(std::string configName, std::shared_ptr<Config> config);
  ~ConfigDependents() override;

  /// The bundle's configuration: the inherited one, which is always of the engine's own class.
  Config& config() const;

  /// Holder of the bundle's region finder, made on the first call and then kept.
  std::shared_ptr<IntersectionFinder> intersectionFinder();

  /// Whether this is the bundle of the main configuration. Fatal error when there is no main
  /// configuration.
  bool isMainConfig() const;

 private:
  std::mutex intersectionFinderMutex_;
  std::shared_ptr<IntersectionFinder> intersectionFinder_;
};

}  // namespace KorvaniNavigation
