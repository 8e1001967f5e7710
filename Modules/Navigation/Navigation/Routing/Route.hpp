#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "Navigation/Directions/Directions.hpp"
#include "Navigation/Routing/Step.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class KRVNavPoint;
class RemainingSteps;

/// A way from a position to a destination: steps, points, length, walking time, instructions.
///
/// A value that hosts only read. Length, time and points are those of the route as it was
/// computed; while the user walks, the routing task shortens or drops the first steps, and
/// `remainingDistance` and `remainingTravelTime` follow:
///
///     if (route) {
///       showWay(route->points());
///       showTime(route->remainingTravelTime());
///     }
///
/// That there is no route is said by an absent `std::optional<Route>`, not by an empty one; a
/// route without steps is valid all the same, with no points, 0 m and 0 s.
///
/// Copies share everything, so they are cheap.
///
/// Thread safety: a route may be read from any thread. It shares its points with other routes
/// and with the graph.
class KORVANI_API Route {
 public:
  /// What `processSteps` finds out about a list of steps.
  struct Totals {
    double totalDistance = 0;                          ///< metres
    double travelTime = 0;                             ///< seconds
    std::vector<std::shared_ptr<KRVNavPoint>> points;  ///< starts, and the last end
  };

  /// Metres a second at which walking times are computed. It is the default of the
  /// configuration's `walkingSpeed` and stays what it is when a configuration changes, so that
  /// travel times of all routes compare.
  static constexpr double kWalkingSpeed = 1.5;

  /// A route without steps.
  Route() = default;

  /// The route along `steps`, in walking order, with its points and totals, and without
  /// instructions.
  explicit Route(std::vector<Step> steps);

  /// The steps still to walk, in walking order. The list of a route that was shortened is made
  /// when it is first asked for, and then kept for all copies.
  const std::vector<Step>& steps() const;

  /// Start of every step, then the end of the last, as the route was computed.
  const std::vector<std::shared_ptr<KRVNavPoint>>& points() const;

  /// Metres of the route as it was computed.
  double totalDistance() const;

  /// Seconds that the route takes, as it was computed.
  double travelTime() const;

  /// The turn-by-turn instructions; empty until the routing task has filled them, and when it
  /// is told not to.
  const std::vector<Directions>& directions() const;

  /// Metres from here on: the sum over the steps as they are now.
  double remainingDistance() const;

  /// Seconds from here on, from the steps as they are now.
  double remainingTravelTime() const;

  /// For the routing task: replaces the steps while the user walks. Points, totals and
  /// instructions stay what they were.
  void setSteps(std::vector<Step> steps);

  /// For the routing task: the steps in the form in which they are shortened; never null.
  std::shared_ptr<const RemainingSteps> remainingSteps() const;
  void setRemainingSteps(std::shared_ptr<const RemainingSteps> steps) { steps_ = std::move(steps); }

  /// For the routing task: sets the instructions that go with the steps as they are now.
  void setDirections(std::vector<Directions> directions);

  /// Points, length and walking time of a list of steps, in one pass. Consecutive steps share
  /// a point, which is listed once. The time is the sum of distance times `timeMultiplicator`
  /// over the walking speed. An empty list gives zeros and no points.
  static Totals processSteps(const std::vector<Step>& steps);

 private:
  // Each of them is constant and shared by the copies; null where there is nothing.
  std::shared_ptr<const Totals> totals_;  ///< as the route was computed
  std::shared_ptr<const RemainingSteps> steps_;
  std::shared_ptr<const std::vector<Directions>> directions_;
};

}  // namespace KorvaniNavigation
