#pragma once

#include <string>
#include <vector>

#include "Building/Building.hpp"
#include "Navigation/API/Config.hpp"
#include "Simulation/WalkSimulator.hpp"
#include "Support/LevelNames.hpp"
#include "Trace/TraceOperation.hpp"

namespace KorvaniTools {

/// Sets `config` for a simulated walk: `checkDestinationsAgainstOwnWalls`, then what `settings`
/// ("KEY=VALUE", see ConfigSettings.hpp) say.
/// @return the same as a line of a trace, each value once, so that a replay sees what the
///   simulation saw
/// @throws InputError naming the key and what is expected
ConfigOperation configureWalk(const std::vector<std::string>& settings,
                              KorvaniNavigation::Config& config);

/// What the head of a trace says about how it was made.
struct WalkSource {
  const Building& building;
  const LevelNames& levels;
  std::string file;  ///< the building file's name, without folders
  const WalkOptions& options;
  std::vector<std::string> settings;
};

/// The trace: comments that say how it was made, the configuration, and the operations, each a
/// line.
std::string walkTrace(const WalkSource& source, const ConfigOperation& config,
                      const std::vector<TraceOperation>& operations);

}  // namespace KorvaniTools
