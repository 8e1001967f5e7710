#pragma once

// Internal. The instructions of a route, and those of what is left of it while it is walked.

#include <cstddef>
#include <memory>
#include <vector>

#include "Navigation/Directions/Directions.hpp"
#include "Navigation/Routing/StepsView.hpp"

namespace KorvaniNavigation {

class RemainingSteps;

/// The instructions of the steps of a route, with the runs that they are about.
///
/// A run of steps depends on its first step and on what follows, not on what came before. So when
/// the first steps of a route are walked, the instructions stay what they were from the first place
/// on where a run of the rest begins that was a run of the whole; mostly that is the very next one.
///
/// Constant once made. Any number of threads may read it. Fatal error as for
/// `TurnByTurnDirectionCalculator::directionsForRoute`.
class RouteInstructions {
 public:
  explicit RouteInstructions(const StepsView& steps);

  /// The instructions for what is left of a route. They are those that would be made of its steps
  /// alone; instructions for places that the person has not come to yet are shared with those for
  /// earlier positions, as long as no point of the graph has moved.
  static std::vector<Directions> of(const RemainingSteps& left);

  /// For the whole route; one empty `Directions()` without steps.
  const std::vector<Directions>& all() const { return all_; }

 private:
  struct Place {
    std::size_t start;        ///< index of the run's first step
    double bearing;           ///< of the run, degrees
    double distance;          ///< of the run, metres
    std::size_t instruction;  ///< index of the first instruction about it
  };

  std::vector<Directions> forRest(const StepsView& steps, std::size_t gone) const;
  const Place* runFrom(std::size_t start) const;

  std::vector<Place> runs_;  ///< in walking order
  std::vector<Directions> all_;
};

}  // namespace KorvaniNavigation
