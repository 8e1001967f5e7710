#pragma once

#include <optional>
#include <vector>

#include "Navigation/Directions/Directions.hpp"
#include "Navigation/Routing/Step.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

/// Whoever turns the steps of a route into instructions.
///
/// The engine brings one, `TurnByTurnDirectionCalculator`. Implementations are called from the
/// tasks' queue and from the threads of hosts, and must stand several calls at a time.
class KORVANI_API DirectionsFinder {
 public:
  virtual ~DirectionsFinder();

  /// The instructions for `steps`, in walking order. `andHistoryUsage` allows an
  /// implementation to take earlier answers into account.
  virtual std::vector<Directions> directionsForRoute(const std::vector<Step>& steps,
                                                     bool andHistoryUsage) const = 0;

  /// The first of these instructions; absent when there is none.
  std::optional<Directions> firstDirectionForRoute(const std::vector<Step>& steps,
                                                   bool andHistoryUsage) const;
};

}  // namespace KorvaniNavigation
