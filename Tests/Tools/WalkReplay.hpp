#pragma once

/// Simulated walks, and whether their replay arrives.
///
///     EXPECT_TRUE(arrives(simulated(building, "Lobby", "Desk", options), building));

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "Building/Building.hpp"
#include "Building/BuildingGraph.hpp"
#include "Navigation/API/Constants.hpp"
#include "Navigation/API/Navigation.hpp"
#include "Simulation/WalkSimulator.hpp"
#include "Simulation/WalkTrace.hpp"
#include "Support/LevelNames.hpp"
#include "Support/PlaceFinder.hpp"
#include "Support/RouteSearch.hpp"
#include "Trace/Replay.hpp"
#include "Trace/TraceReader.hpp"

namespace KorvaniTest {

/// Walks with and without what positioning systems get wrong and what people do, so chosen that
/// every two things come together once at least. Each has a seed of its own.
inline std::vector<KorvaniTools::WalkOptions> walksOfAllKinds() {
  const struct {
    double noise;
    double glitches;
    bool detour;
  } kinds[] = {{0, 0, false}, {0, 0.05, true}, {2, 0.05, false},
               {2, 0, true},  {5, 0.05, true}, {5, 0, false}};
  std::vector<KorvaniTools::WalkOptions> walks;
  for (const auto& kind : kinds) {
    KorvaniTools::WalkOptions options;
    options.seed = walks.size();
    options.speed = 3;  // in a hurry, so that the tests are quick
    options.noise = kind.noise;
    options.levelGlitches = kind.glitches;
    options.detour = kind.detour;
    walks.push_back(options);
  }
  return walks;
}

/// The trace that the command `simulate` writes of a walk between two places.
inline std::string simulated(const KorvaniTools::Building& building, const std::string& from,
                             const std::string& to, KorvaniTools::WalkOptions options = {},
                             const std::vector<std::string>& settings = {}) {
  const KorvaniTools::LevelNames levels(building);
  const KorvaniTools::PlaceFinder finder(building, levels);
  options.from = finder.find(from);
  options.to = finder.find(to);
  KorvaniTools::provideGraph(KorvaniTools::makeGraph(building));
  const auto config = KorvaniTools::configureWalk(
      settings, KorvaniNavigation::Navigation::sharedInstance().config());
  const auto operations = KorvaniTools::simulateWalk(building, options);
  return KorvaniTools::walkTrace({building, levels, "test.building.geojson", options, settings},
                                 config, operations);
}

/// Everything that a replay of the trace delivers.
inline KorvaniTools::Replay::Events replayed(const std::string& trace,
                                             const KorvaniTools::Building& building) {
  std::istringstream stream(trace);
  KorvaniTools::TraceReader reader(stream, "test.trace.ndjson");
  KorvaniTools::Replay replay(KorvaniTools::makeGraph(building));
  KorvaniTools::Replay::Events all;
  while (const auto line = reader.next()) {
    for (auto& event : replay.carryOut(*line)) all.push_back(std::move(event));
  }
  return all;
}

/// Whether the replay ends with an arrival and its notification, and has no error.
inline testing::AssertionResult arrives(const std::string& trace,
                                        const KorvaniTools::Building& building) {
  const auto events = replayed(trace, building);
  for (const auto& event : events) {
    if (event["event"] == "error") return testing::AssertionFailure() << event;
  }
  if (events.size() < 2) return testing::AssertionFailure() << events.size() << " events";
  const auto& arrival = events[events.size() - 2];
  if (arrival["event"] != "route" || arrival["finished"] != true ||
      arrival["destination"].is_null()) {
    return testing::AssertionFailure() << "no arrival: " << arrival;
  }
  const auto& last = events.back();
  if (last["name"] != KorvaniNavigation::NavigationRoutingTaskDestinationReachedNotification) {
    return testing::AssertionFailure() << "no notification: " << last;
  }
  return testing::AssertionSuccess();
}

}  // namespace KorvaniTest
