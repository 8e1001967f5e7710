#pragma once

// Internal.

#include <memory>
#include <mutex>
#include <optional>

#include "Navigation/Localisation/Intersection.hpp"
#include "Navigation/Names.hpp"
#include "Navigation/Routing/RouteTrack.hpp"

namespace KorvaniNavigation {

/// Where a position was snapped to.
///
/// Hosts show the coordinate many times a second, and hardly ever ask which place of the graph it
/// is. On a route that would mean building the route's own graph, so the intersection is made when
/// it is asked for.
///
/// Thread safety: any thread at any time.
class SnappedPlace {
 public:
  /// A place that is an intersection already; never null.
  explicit SnappedPlace(std::shared_ptr<Intersection> intersection);

  /// A place on the route. Keeps what it knows of the route.
  SnappedPlace(TrackPlace place, std::shared_ptr<const RouteTrack> track);

  CLLocationCoordinate2D coordinate() const;

  /// The same object each time.
  std::shared_ptr<Intersection> intersection() const;

 private:
  const std::optional<TrackPlace> place_;
  const std::shared_ptr<const RouteTrack> track_;
  mutable std::mutex making_;
  mutable std::shared_ptr<Intersection> intersection_;
};

}  // namespace KorvaniNavigation
