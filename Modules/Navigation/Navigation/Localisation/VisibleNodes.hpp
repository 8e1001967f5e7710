#pragma once

// Internal. The nodes in sight of a position, nearest first.

#include <cstdint>
#include <vector>

#include "Navigation/Localisation/NodeTree.hpp"
#include "Navigation/Localisation/VisibleNodesByBoxes.hpp"
#include "Navigation/Obstacles/WallGrid.hpp"

namespace KorvaniNavigation {

// The nodes that no wall hides from the position, as places in the order of insertion: nearest
// first in degrees, of equal distances the one inserted first, those of a distance that is no
// number last. Beyond kVisibleNodeReach times the nearest one's distance none is looked at.
//
// Each node that is listed, or might be, is compared with the walls as `walls.meetsAny` does. Most
// positions see one of the few nodes next to them; these are taken from the cells around, at a few
// hundred nanoseconds. For all others see VisibleNodesByBoxes.hpp.
std::vector<std::uint32_t> visibleNodes(const NodeTree& nodes, const WallGrid& walls,
                                        CLLocationCoordinate2D position);

}  // namespace KorvaniNavigation
