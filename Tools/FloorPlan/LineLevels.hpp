#pragma once

/// Internal. On which level each corner of a line to walk on lies.

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "FloorPlan/FloorPlan.hpp"
#include "FloorPlan/PlanLevels.hpp"

namespace KorvaniTools {

/// One level for each vertex of a line. A path that is drawn on several levels has a track for
/// each; a line that leads from one level to another has one, and changes between two vertices.
using LineTrack = std::vector<std::int64_t>;

/// The levels of the cells and doors that lie at a coordinate.
using LevelsAround = std::function<std::set<std::int64_t>(Coordinate)>;

/// The tracks of every line, in the plan's order; none for a line on no level that is used.
///
/// Which end of stairs is where follows from what they meet there: first the other lines at the
/// same node, then the cells and doors around the end, then the incline. What is left over is
/// taken from the first vertex upwards, with a remark. Stairs over more than two levels stop at
/// those in between where another line meets them, and pass by the others.
///
/// Cost: near linear in the number of vertices.
std::vector<std::vector<LineTrack>> lineTracks(const FloorPlan& plan, const PlanLevels& levels,
                                               const LevelsAround& around,
                                               std::vector<std::string>& remarks);

}  // namespace KorvaniTools
