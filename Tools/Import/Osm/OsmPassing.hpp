#pragma once

/// Internal. Tunnels and bridges that no level tells about.

#include <vector>

#include "FloorPlan/FloorPlan.hpp"

namespace KorvaniTools {

/// The pieces of a line that are not under or over floor, and cross no wall, of the plan on the
/// line's levels. Corners that it shares with outlines do not count.
///
/// Cost: linear in the corners of the plan for each line.
std::vector<PlanLine> piecesBeside(const PlanLine& line, const FloorPlan& plan);

}  // namespace KorvaniTools
