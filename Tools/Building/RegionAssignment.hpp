#pragma once

/// Internal. Gives every node and every obstacle line of a building its regions.

#include <string>

#include "Building/Building.hpp"

namespace KorvaniTools {

/// Fills in `BuildingNode::region` and `ObstacleLine::regions`, makes regions for levels that
/// need one, and drops lines that touch no region of their level.
///
/// A node or obstacle that names a region goes there. Else a node goes into the first region
/// of its level whose rectangle holds it, or the one with the nearest corner when none does,
/// and an obstacle line into every region of its level whose rectangle its own touches.
///
/// @throws BuildingError naming `file` for an unknown region name or a region of another level
void assignRegions(Building& building, const std::string& file);

}  // namespace KorvaniTools
