#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "Building/Rectangle.hpp"
#include "Navigation/Routing/Route.hpp"

namespace KorvaniTools {

/// Where somebody is.
struct Whereabouts {
  Coordinate coordinate;
  std::int64_t level = 0;
};

/// How somebody walks through a building: where they are at any second.
///
///     Walk walk(start, 1.5);
///     walk.follow(route);
///     const Whereabouts later = walk.at(10);
///
/// Ways on one level take their length on the ground. A change of level takes the length of its
/// step, which is more than nothing for a lift; half-way through it the level changes. A step's
/// `timeMultiplicator` slows the walk down, as it does in a route's travel time.
///
/// Nodes of the graph are where they are; other points of a route, which were computed, are rounded
/// (see GroundOffset.hpp).
class Walk {
 public:
  /// Somebody who stands.
  /// @param speed metres per second, above 0
  Walk(Whereabouts start, double speed);

  /// Walks on in a straight line.
  void goTo(const Whereabouts& place);

  /// Walks on to where the route starts, and along its first `steps` steps.
  void follow(const KorvaniNavigation::Route& route, std::size_t steps);

  /// The same along all of the route, to its end or, where that is no farther than a metre, to the
  /// node before it.
  ///
  /// A route to a place beside a node ends with a step from the node to where the place lies on one
  /// of the node's edges. Somebody there may be taken to be short of the node, with the node's
  /// step and the last one still ahead; at the node itself the engine sees the destination.
  void follow(const KorvaniNavigation::Route& route);

  /// How long all of it takes.
  double seconds() const { return legs_.empty() ? 0 : legs_.back().arrival; }

  /// Where one is after that time; at the end from `seconds()` on.
  Whereabouts at(double seconds) const;

  Whereabouts end() const { return legs_.empty() ? start_ : legs_.back().to; }

 private:
  struct Leg {
    Whereabouts from;
    Whereabouts to;
    double departure = 0;  ///< seconds
    double arrival = 0;
  };

  void add(const Whereabouts& to, double metres);

  Whereabouts start_;
  double speed_;
  std::vector<Leg> legs_;
};

/// The last node of the graph that the route comes to; absent when it passes none.
std::optional<Whereabouts> lastNodeOf(const KorvaniNavigation::Route& route);

}  // namespace KorvaniTools
