#pragma once

// Internal. The small graph of one route.

#include <memory>

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

}  // namespace KorvaniNavigation
