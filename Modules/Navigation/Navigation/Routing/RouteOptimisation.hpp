#pragma once

// Internal. Cuts the corners of a way.

#include "Navigation/Routing/RouteEdge.hpp"

namespace KorvaniNavigation {

class ObstacleDetector;

/// Replaces two edges that form a turn by the straight line past the corner, where that line is
/// short and free of walls.
///
/// Works from the last edge to the first, so that a bend of several short edges can become one
/// line. A corner is cut when both outer ends lie on one level, at most 20 m apart on the
/// ground, the turn is at least 20 degrees, and `detector` sees no wall between them. The new
/// edge has the length of the line and the multiplicator, barrier-freeness and type of the
/// earlier of the two. The tests are made in this order because the last one is the dear one.
///
/// @param edges in walking order
/// @return the new edges in walking order
Edges cutCorners(Edges edges, const ObstacleDetector& detector);

}  // namespace KorvaniNavigation
