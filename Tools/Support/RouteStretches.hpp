#pragma once

/// Internal. A route cut into the straight stretches that its instructions speak of.

#include <cstddef>
#include <vector>

#include "Navigation/Directions/Directions.hpp"
#include "Navigation/Routing/Route.hpp"

namespace KorvaniTools {

/// A straight stretch: perhaps a level change, then a walk on one level, then what its
/// instruction says. Refers to the route it was made from.
struct RouteStretch {
  const KorvaniNavigation::Directions* forward = nullptr;  ///< the go-straight instruction, if any
  const KorvaniNavigation::Directions* ending = nullptr;   ///< turn, level change or destination
  const KorvaniNavigation::Step* firstStep = nullptr;      ///< null when it has no steps
  std::size_t stepCount = 0;

  const KorvaniNavigation::Step* begin() const { return firstStep; }
  const KorvaniNavigation::Step* end() const { return firstStep + stepCount; }

  /// The level change that the stretch begins with; null when it begins with a walk.
  const KorvaniNavigation::Step* change() const;

  /// Metres walked on the level, without the level change.
  double walked() const;

  /// Whether there is nothing to walk, or less than half a metre.
  bool isWithoutWalk() const { return walked() < 0.5; }

  /// Whether `ending` is a change to another level.
  bool endsWithChange() const;
};

/// The stretches of `route`, in walking order; none without instructions or steps. A stretch
/// for which no steps can be found (instructions of another route) has none, and what it walks
/// is what its instruction says. `route` must outlive the result.
std::vector<RouteStretch> stretchesOf(const KorvaniNavigation::Route& route);

}  // namespace KorvaniTools
