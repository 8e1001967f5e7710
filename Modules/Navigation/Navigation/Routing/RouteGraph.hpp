#pragma once

// Internal. The small graph of one route.

#include <cstdint>
#include <memory>
#include <vector>

#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Routing/RouteNotes.hpp"
#include "Navigation/Routing/StepsView.hpp"

namespace KorvaniNavigation {

class KRVNavGraph;

/// A level of a route, and the walls of the building there.
struct RouteLevel {
  std::int64_t level = 0;
  KRVNavRegion::Obstacles obstacles;
};

/// What the first point without an identifier gets in a route's graph; the next ones count down.
inline constexpr std::int64_t kFirstOwnIdentifier = -2;

/// A graph that holds nothing but the route, so that positions can be mapped onto it: one region
/// for each level the route touches, with the walls that the building has there, the route's
/// points as nodes and an edge a step.
///
/// The points are copied, since a point belongs to one region only and must not leave the
/// building's graph. A copy keeps coordinate, level and identifier; copies of points without an
/// identifier get negative ones of their own (-2, -3, ...), so that they do not replace one
/// another.
///
/// @param ends start and end of each step, in walking order
/// @param levels those of the starts and of the last end, in walking order
std::shared_ptr<KRVNavGraph> buildRouteGraph(const StepsView& steps,
                                             const std::vector<NotedPoint>& ends,
                                             const std::vector<RouteLevel>& levels);

}  // namespace KorvaniNavigation
