#pragma once

// Internal. What a trace has said about the configurations so far.

#include <map>
#include <string>
#include <vector>

#include "Navigation/API/Navigation.hpp"
#include "Platform/Value.hpp"
#include "Trace/TraceOperation.hpp"

namespace KorvaniRecorder {

// Finds out what has to be written so that a replay has the app's configurations. A replay begins
// with the main configuration and the defaults, and so does this. One thread at a time.
class KnownConfigs {
 public:
  // What `configs` say now and the trace does not: one operation for each configuration that is
  // new or has changed, in their order. From here on the trace is taken to say it.
  //
  // Values that a trace cannot hold (those that are not finite) are left out, and described in
  // `problems` once.
  std::vector<KorvaniTools::ConfigOperation> changes(
      const KorvaniNavigation::Navigation::Configs& configs, std::vector<std::string>& problems);

 private:
  // Values by the keys of their settings.
  using Values = std::map<std::string, KorvaniPlatform::Number>;

  static Values defaults();
  static KorvaniTools::ConfigOperation change(const KorvaniNavigation::Config& config,
                                              const std::string& name, Values& known,
                                              std::vector<std::string>& problems);

  std::map<std::string, Values> known_;
};

}  // namespace KorvaniRecorder
