#pragma once

// Internal. The nodes in sight of a position, nearest first.

#include <cstdint>
#include <vector>

#include "Navigation/Localisation/NodeTree.hpp"
#include "Navigation/Obstacles/WallGrid.hpp"

namespace KorvaniNavigation {

// Nodes farther than this many times the nearest visible node's distance are not looked at.
inline constexpr double kVisibleNodeReach = 2.5;

// The nodes that no wall hides from the position, as places in the order of insertion: nearest
// first in degrees, of equal distances the one inserted first, those of a distance that is no
// number last. Beyond kVisibleNodeReach times the nearest one's distance none is looked at.
//
// Each node that is listed, or might be, is compared with the walls as `walls.meetsAny` does; only
// nodes that are sure to be hidden are passed over, alone or whole areas of them. So the cost
// depends on what is around the position, not on the size of the level. A position that sees
// nothing costs about a microsecond for each corner of the walls around it where other walls stand
// behind them; where none do, what the line over the corner passes of the level besides.
std::vector<std::uint32_t> visibleNodes(const NodeTree& nodes, const WallGrid& walls,
                                        CLLocationCoordinate2D position);

}  // namespace KorvaniNavigation
