#pragma once

/// Internal. Joins the things in a space with each other and with the drawn lines there.

#include "FloorPlan/FloorSight.hpp"
#include "FloorPlan/FloorSpaces.hpp"
#include "FloorPlan/LineParts.hpp"
#include "FloorPlan/PlanGraph.hpp"

namespace KorvaniTools {

/// Where drawn lines run through a space (2 m of them, and 0.3 of its extent), they are the
/// graph: doors and rooms are joined to the nearest point of a line that they see. So is each part
/// of the lines, and each end of stairs, that does not hang together with the others on the level.
/// Elsewhere, and for what sees no line or is nearer to the end of stairs, the floor gets a graph
/// of its own (SpaceGraph.hpp).
void joinSpace(const FloorSpace& space, const FloorSight& sight, const Geos& geos,
               StepFree stepFree, const LineParts& parts, PlanGraph& graph);

}  // namespace KorvaniTools
