#pragma once

// Internal. From the edges of a way to the route that a host is given.

#include "Navigation/Routing/Route.hpp"
#include "Navigation/Routing/RouteEdge.hpp"

namespace KorvaniNavigation {

/// A route with one step an edge, its points and its totals; without instructions.
///
/// An edge that runs back on the step before it, within one degree, is merged with it into one
/// straight step between the outer ends: nobody is sent to a dead end and back. Edges that go
/// on in the same direction stay steps of their own, and nothing is merged into a step that
/// changes the level.
Route createRoute(Edges edges);

}  // namespace KorvaniNavigation
