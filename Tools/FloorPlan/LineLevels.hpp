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
/// each; a line that leads from one level to another has one for each flight, which changes its
/// level between two vertices.
using LineTrack = std::vector<std::int64_t>;

/// What lies at a coordinate.
struct LevelsHere {
  std::set<std::int64_t> told;   ///< levels of rooms, open floor and doors
  std::set<std::int64_t> floor;  ///< levels of these and of stairwells, which have many
};
using LevelsAround = std::function<LevelsHere(Coordinate)>;

/// The tracks of every line, in the plan's order; none for a line on no level that is used.
///
/// Which end of stairs is where follows from lines on a level that meet them there, then from
/// their incline, then from other stairs at the same node, then from the cells and doors around
/// the end. What is left over is taken from the first vertex upwards, with a remark. Stairs and
/// escalators one above the other, with the same two end nodes, tell nothing about each other
/// where there is floor at both ends.
///
/// - Stairs over more than two levels stop at those in between where another line meets them.
///   Where none does, and both ends lie on floor of every level in between, they are flights one
///   above the other. Otherwise they pass those levels by.
/// - Stairs on several levels that meet lines of one level only, at both ends, stay on it. Stairs
///   on one level that meet only lines of another one at one end lead there. Both get a remark.
/// - A path on several levels is floor on each of them, unless it has an incline, or each end meets
///   one level and not the same: then it is a ramp.
///
/// Cost: near linear in the number of vertices.
std::vector<std::vector<LineTrack>> lineTracks(const FloorPlan& plan, const PlanLevels& levels,
                                               const LevelsAround& around,
                                               std::vector<std::string>& remarks);

}  // namespace KorvaniTools
