#pragma once

/// Internal. A bound for outlines of more corners than a building has use for.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "FloorPlan/FloorPlan.hpp"

namespace KorvaniTools {

/// Corners of one outline that are worked with; the time of overlays may grow with their square.
inline constexpr std::size_t kMostCorners = 1000;

/// A copy of the plan in which no ring of a cell has more than 1000 corners, with a remark for
/// each cell that had; none when no cell has.
///
/// Of a longer ring only corners some way apart are kept, as little as makes them few enough. Where
/// not even a metre does, the cell keeps its index and loses its outlines. Positions have to be on
/// Earth. Cost: linear.
std::optional<FloorPlan> withoutNeedlessDetail(const FloorPlan& plan,
                                               std::vector<std::string>& remarks);

}  // namespace KorvaniTools
