#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "Navigation/Directions/DirectionsType.hpp"
#include "Navigation/Routing/Step.hpp"

namespace KorvaniNavigation {

/// Degrees: the largest deviation from a straight segment's first heading that still
/// continues the segment.
inline constexpr double kKRVNavigationTurnDirectionDegreesThreshold = 15.0;

/// Metres: a segment must be longer than this when short segments are not wanted; also the
/// run-in that a walker gets before the arrow of a go-straight instruction.
inline constexpr double kKRVNavigationMinimumSegmentLength = 4.0;

/// Metres: a segment longer than this is announced with a go-straight instruction of its own.
inline constexpr double kKRVNavigationStraightAheadDirectionDistanceThreshold = 11.0;

/// A run of steps on one level that a walker feels as going straight. A plain value.
///
/// Segments partition a route: each step belongs to exactly one, in walking order, and every
/// segment made by `TurnByTurnDirectionCalculator` holds at least one step.
struct StraightSegment {
  /// Index of the segment's first step in the route.
  std::size_t startIndex = 0;

  /// Heading of the first step, degrees: what the other steps are compared with.
  double bearing = 0;

  /// Metres: the sum of the steps' distances.
  double distance = 0;

  /// The segment's steps in walking order.
  std::vector<Step> intermediateSteps = {};

  /// The first step after the segment; absent at the end of the route.
  std::optional<Step> nextStep = std::nullopt;

  /// `levelUp` or `levelDown` when the level changes after the segment, else `unknown`.
  DirectionsType levelChangeDirection = DirectionsType::unknown;

  /// `neighborType` of the step that ended the segment; absent at the end of the route.
  std::optional<std::string> neighbourType = std::nullopt;
};

/// How far a straight run reaches from a given step. A plain value.
struct StraightSegmentExtent {
  /// Heading of the run's first step, degrees; absent when there is no step to start from.
  std::optional<double> referenceBearing = std::nullopt;

  /// Metres of the run; absent when there is no run, or only one that is too short to count.
  std::optional<double> segmentDistance = std::nullopt;

  /// Index of the first step after the run; where the search started when there is no run.
  std::size_t nextStartIndex = 0;

  /// `levelUp` or `levelDown` when a level change ended the run, else `unknown`.
  DirectionsType levelChangeDirection = DirectionsType::unknown;

  /// `neighborType` of the step that ended the run; absent when the route ended it.
  std::optional<std::string> neighbourType = std::nullopt;
};

}  // namespace KorvaniNavigation
