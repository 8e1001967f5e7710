#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Navigation/Routing/Route.hpp"
#include "Simulation/Walk.hpp"

namespace KorvaniTools {

/// A way off a route: along the graph, to a place that is not on the route.
struct Branch {
  std::size_t steps = 0;            ///< how many of the route's steps are walked before
  std::vector<Whereabouts> places;  ///< where it leads to, in walking order; at least one
};

/// The ways by which a route can be left, in an order that the seed decides.
///
/// A branch starts at a node of the route and stays on its level. It turns at random, never meets
/// the route or itself again, and ends after 15 to 40 m (drawn from the seed as well, and if need
/// be in the middle of an edge) or where it leads no further. Only those that end at least
/// `kOffRoute` away from the route are given, so that whoever guides by the default settings
/// notices. Empty when the graph offers none.
///
/// @param barrierFree leave out ways with barriers
std::vector<Branch> branchesOff(const KorvaniNavigation::Route& route, bool barrierFree,
                                std::uint64_t seed);

/// Metres.
inline constexpr double kOffRoute = 6.0;

}  // namespace KorvaniTools
