#pragma once

// Internal. The small graph of one route.

#include <memory>
#include <mutex>

#include "Navigation/Localisation/RegionFinder.hpp"

namespace KorvaniNavigation {

class ConfigDependents;
class KRVNavGraph;
class Route;

/// A graph that holds nothing but the route, so that positions can be mapped onto it: one region
/// for each level the route touches, with the walls that the building has there, the route's
/// points as nodes and an edge a step.
///
/// The points are copied, since a point belongs to one region only and must not leave the
/// building's graph. A copy keeps coordinate, level and identifier; copies of points without an
/// identifier get negative ones of their own (-2, -3, ...), so that they do not replace one
/// another.
std::shared_ptr<KRVNavGraph> buildRouteGraph(const Route& route,
                                             const std::weak_ptr<ConfigDependents>& configuration);

/// The graph of a route for who asks for it: many a route is replaced by the next one before
/// anybody does. It is the graph that would have been built with the route.
///
/// Thread safety: any thread at any time; who asks first builds it, others wait.
class RouteGraphOnDemand {
 public:
  RouteGraphOnDemand(std::shared_ptr<const Route> route,
                     std::weak_ptr<ConfigDependents> configuration);

  /// The same object each time.
  std::shared_ptr<KRVNavGraph> graph() const;

 private:
  std::shared_ptr<const Route> route_;
  std::weak_ptr<ConfigDependents> configuration_;
  RegionFinder::Regions regions_;  // of the building, as it was when the route was made
  mutable std::mutex building_;
  mutable std::shared_ptr<KRVNavGraph> graph_;
};

}  // namespace KorvaniNavigation
