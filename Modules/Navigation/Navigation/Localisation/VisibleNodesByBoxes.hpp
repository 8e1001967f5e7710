#pragma once

// Internal. The nodes in sight of a position, for positions that see little or nothing.

#include <cstdint>
#include <vector>

#include "Navigation/Localisation/NodeTree.hpp"
#include "Navigation/Obstacles/WallGrid.hpp"

namespace KorvaniNavigation {

// Nodes farther than this many times the nearest visible node's distance are not looked at.
inline constexpr double kVisibleNodeReach = 2.5;

// The same list as `visibleNodes` gives, for every position and all nodes.
//
// Boxes of the tree and nodes are taken nearest first from a heap. A box that what was found of
// walls hides is passed over as a whole, so the cost depends on what is around the position, not on
// the size of the level. Where walls share a corner, or leave a narrow gap, a few nodes behind may
// be in sight all the same; these wedges are gathered and looked at in the end. A position that
// sees nothing costs one to two microseconds for each wall around it. Where no other walls stand
// behind these, there is besides what the wedges pass of the level, at most two nanoseconds a node.
std::vector<std::uint32_t> visibleNodesByBoxes(const NodeTree& nodes, const WallGrid& walls,
                                               CLLocationCoordinate2D position);

}  // namespace KorvaniNavigation
