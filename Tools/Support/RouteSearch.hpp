#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "Building/Building.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Routing/Route.hpp"
#include "Support/PlaceFinder.hpp"

namespace KorvaniTools {

/// What the engine answers to one question for a route.
struct RouteAnswer {
  std::optional<KorvaniNavigation::Route> route;
  bool direct = false;          ///< no way on the graph was found; a route is a straight line then
  bool arrived = false;         ///< the start is at a destination already; there is no route
  std::size_t destination = 0;  ///< index of the destination that was chosen

  /// Whether there is a route, and it is a straight line for want of a way.
  bool isDirectRoute() const { return direct && route.has_value(); }
};

/// Gives `graph` to the engine and tells it that it is there.
void provideGraph(const std::shared_ptr<KorvaniNavigation::KRVNavGraph>& graph);

/// Searches the route, with instructions, from `start` to the cheapest of `destinations` in the
/// graph that the engine has, and waits for the answer while it serves the main queue. To be
/// called on the main thread.
/// @param barrierFree true: without barriers; false: as the main configuration says
/// @throws InputError when there are no destinations
RouteAnswer searchRoute(const Spot& start, const std::vector<Spot>& destinations, bool barrierFree);

/// Which of `destinations` a route leads to whose last point is `end`: the nearest on its
/// level, or the nearest of all when none is there. There must be one.
std::size_t destinationAt(Coordinate end, std::int64_t level,
                          const std::vector<Spot>& destinations);

/// Refuses a building that the engine cannot place anything in.
/// @throws InputError when it has no region
void requireRegions(const Building& building);

}  // namespace KorvaniTools
