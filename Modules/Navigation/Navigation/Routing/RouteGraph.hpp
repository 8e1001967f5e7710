#pragma once

// Internal. The small graph of one route.

#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Names.hpp"

namespace KorvaniNavigation {

class ConfigDependents;
class KRVNavGraph;
class KRVNavPoint;
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

/// That graph for who asks for it: many a route is replaced by the next one before anybody does.
/// What it is made of is noted at once, so it is the graph that would have been built with the
/// route, whatever becomes of the building in between.
///
/// Thread safety: any thread at any time; who asks first builds it, others wait.
class RouteGraphOnDemand {
 public:
  RouteGraphOnDemand(std::shared_ptr<const Route> route,
                     const std::weak_ptr<ConfigDependents>& configuration);

  /// The same object each time.
  std::shared_ptr<KRVNavGraph> graph() const;

  /// What is noted of an end of a step.
  struct End {
    const KRVNavPoint* point = nullptr;  ///< tells points apart; kept alive by the route
    CLLocationCoordinate2D coordinate;
    std::int64_t level = 0;
    std::int64_t identifier = 0;
  };

  /// A level of the route, and the walls of the building there.
  struct Level {
    std::int64_t level = 0;
    KRVNavRegion::Obstacles obstacles;
  };

 private:
  std::shared_ptr<const Route> route_;
  std::vector<End> ends_;  ///< start and end of each step, in walking order
  std::vector<Level> levels_;
  mutable std::mutex building_;
  mutable std::shared_ptr<KRVNavGraph> graph_;
};

}  // namespace KorvaniNavigation
