#pragma once

// Internal. Straight runs of steps, and what a walker is told about each of them.
//
// The rules of TurnByTurnDirectionCalculator, for steps that need not stand in one list: while a
// route is walked, its first step changes and the others stay where they are.

#include <cstddef>
#include <string>
#include <vector>

#include "Navigation/Directions/Directions.hpp"
#include "Navigation/Directions/DirectionsType.hpp"
#include "Navigation/Names.hpp"
#include "Navigation/Routing/StepsView.hpp"

namespace KorvaniNavigation {

/// A straight run of steps. `steps[start]` up to `steps[next - 1]` are its own; the one at `next`
/// ended it, if there is one. A plain value that refers to its type name.
struct Run {
  std::size_t start = 0;
  std::size_t next = 0;
  double bearing = 0;                                    ///< heading of its first step, degrees
  double distance = 0;                                   ///< metres
  double distanceWithNext = 0;                           ///< metres, with the step that ended it
  DirectionsType levelChange = DirectionsType::unknown;  ///< that ended it
  const std::string* typeName = nullptr;                 ///< of the step that ended it, if one did
};

/// The run that begins with the step at `start`, which exists. It ends before the first step that
/// ends on another level than its first one, or that deviates from its heading by more than
/// `kKRVNavigationTurnDirectionDegreesThreshold`.
Run runAt(const StepsView& steps, std::size_t start);

/// Whether a location's altitude, which carries the level of its point, is a 64-bit integer. An
/// instruction at a place where it is none is a fatal error.
bool hasLevel(const CLLocation& location);

/// Appends the instructions of a run that another one follows.
void appendInstructions(const StepsView& steps, const Run& run, const Run& following,
                        std::vector<Directions>& instructions);

/// Appends the instruction of the last run.
void appendDestination(const Run& run, std::vector<Directions>& instructions);

}  // namespace KorvaniNavigation
