#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "Building/BuildingGraph.hpp"
#include "Building/BuildingReader.hpp"
#include "Navigation/API/Navigation.hpp"
#include "Simulation/WalkSimulator.hpp"
#include "Simulation/WalkTrace.hpp"
#include "Support/LevelNames.hpp"
#include "Support/PlaceFinder.hpp"
#include "Support/PlainText.hpp"
#include "Support/RouteSearch.hpp"
#include "korvani-nav/Commands.hpp"
#include "korvani-nav/Output.hpp"

namespace KorvaniTools {
namespace {

WalkOptions walkOptions(const SimulateOptions& options, const PlaceFinder& finder) {
  WalkOptions walk;
  walk.from = finder.find(options.from);
  walk.to = finder.find(options.to);
  walk.noise = options.noise;
  walk.speed = options.speed;
  walk.seed = options.seed;
  walk.levelGlitches = options.levelGlitches;
  walk.detour = options.detour;
  walk.barrierFree = options.barrierFree;
  return walk;
}

}  // namespace

int runSimulate(const SimulateOptions& options) {
  const Building building = readBuilding(options.file);
  requireRegions(building);
  const LevelNames levels(building);
  const WalkOptions walk = walkOptions(options, PlaceFinder(building, levels));

  // The graph first, then the settings: so it is when the trace is replayed.
  provideGraph(makeGraph(building));
  const ConfigOperation config =
      configureWalk(options.settings, KorvaniNavigation::Navigation::sharedInstance().config());
  try {
    const auto operations = simulateWalk(building, walk);
    const std::string file = std::filesystem::path(options.file).filename().string();
    const WalkSource source{building, levels, file, walk, options.settings};
    writeOutput(walkTrace(source, config, operations), options.output);
  } catch (const NoWalkError& error) {
    std::cerr << "korvani-nav: " << plainLine(error.what()) << '\n';
    return kExitNoRoute;
  }
  return kExitOk;
}

}  // namespace KorvaniTools
