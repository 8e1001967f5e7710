#pragma once

// Internal. When watched objects of graphs changed last, for the whole process. What watching means
// is told in GraphAccess.hpp.

#include "Common/Revision.hpp"

namespace KorvaniNavigation {

// A revision for each kind of change.
struct GraphChanges {
  KorvaniCommon::Revision points;     // a point's numbers, coordinate, level, location or region
  KorvaniCommon::Revision regions;    // a region's graph
  KorvaniCommon::Revision edgeEnds;   // an edge's start or end
  KorvaniCommon::Revision edgeCosts;  // an edge's distance, multiplicator or barrier-freeness
  KorvaniCommon::Revision obstacles;  // an obstacle's coordinates
};

// The process's own; never destroyed. Any thread at any time.
GraphChanges& graphChanges();

}  // namespace KorvaniNavigation
