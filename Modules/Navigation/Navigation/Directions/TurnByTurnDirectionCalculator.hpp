#pragma once

#include <cstddef>
#include <vector>

#include "Navigation/Directions/Directions.hpp"
#include "Navigation/Directions/DirectionsFinder.hpp"
#include "Navigation/Directions/StraightSegment.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

/// Turns the steps of a route into turn-by-turn instructions.
///
/// The route is cut into straight segments: runs of steps on one level whose headings stay
/// within 15 degrees of the run's first heading. A long segment is announced by a `forward`
/// instruction; at its end comes a turn (more than 50 degrees), a bear, a change of level or
/// the destination. A list for a route with steps always ends with `destination`.
///
///     const TurnByTurnDirectionCalculator calculator;
///     for (const Directions& each : calculator.directionsForRoute(route.steps(), false)) {
///       announce(each);
///     }
///
/// `turnaround` is never produced: a walker who is to turn back hears `left` or `right`.
/// Thread safety: the calculator has no state; one may serve any number of threads.
class KORVANI_API TurnByTurnDirectionCalculator : public DirectionsFinder {
 public:
  /// The instructions for the whole route. Without steps it is one empty `Directions()`.
  /// `andHistoryUsage` is ignored: the answer depends on nothing but the steps.
  ///
  /// Fatal error when the altitude of a point's location, from which an arrow's level is read,
  /// is not finite or does not fit a signed 64-bit integer.
  std::vector<Directions> directionsForRoute(const std::vector<Step>& steps,
                                             bool andHistoryUsage) const override;

  /// Cuts the route into its straight segments, short ones included. Empty without steps.
  std::vector<StraightSegment> findAllStraightSegments(const std::vector<Step>& steps) const;

  /// How far the straight run reaches that begins with the step at `startingFrom`.
  ///
  /// The run ends before the first step that ends on another level than the run's first step,
  /// or that deviates by more than `kKRVNavigationTurnDirectionDegreesThreshold`. With
  /// `allSegments` false, a run counts only when its length together with the step that ended
  /// it exceeds `kKRVNavigationMinimumSegmentLength`; a run that the route's end cuts off
  /// always counts. An index past the steps gives no bearing and no distance.
  StraightSegmentExtent extendLongestStraightSegment(const std::vector<Step>& steps,
                                                     std::size_t startingFrom,
                                                     bool allSegments) const;

  /// The instructions for `segment`, which `following` follows (null: `segment` is the last
  /// one, and `destination` is the answer).
  ///
  /// A change of level gives that instruction alone. Otherwise a segment longer than
  /// `kKRVNavigationStraightAheadDirectionDistanceThreshold` gives `forward` with its length
  /// and then the turn with the following segment's length, since its own was told already; a
  /// shorter one gives the turn with its own length. A turn of exactly 50 degrees is a bear,
  /// one of 0 degrees is `bearLeft`.
  ///
  /// Fatal error when a step is needed and the segment has none, and for altitudes as above.
  std::vector<Directions> directions(const StraightSegment& segment,
                                     const StraightSegment* following) const;
};

}  // namespace KorvaniNavigation
