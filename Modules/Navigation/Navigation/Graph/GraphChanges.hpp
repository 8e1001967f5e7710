#pragma once

// Internal. When watched objects of graphs changed last. What watching means is told in
// GraphAccess.hpp.

#include "Common/Revision.hpp"
#include "Navigation/Graph/WatchFlag.hpp"

namespace KorvaniNavigation {

// A revision for each kind of change.
struct GraphChanges {
  KorvaniCommon::Revision points;     // a point's numbers, coordinate, level, location or region
  KorvaniCommon::Revision regions;    // a region's graph
  KorvaniCommon::Revision edgeEnds;   // an edge's start or end
  KorvaniCommon::Revision edgeCosts;  // an edge's distance, multiplicator or barrier-freeness
  KorvaniCommon::Revision obstacles;  // an obstacle's coordinates
};

// Those of what is watched for one graph, or for everybody. Never destroyed, whatever becomes of
// the graph: objects may outlive it and go on telling. Any thread at any time.
GraphChanges& graphChanges(WatchFlag::Watcher watcher);

// To be called after a change of the object that the flag belongs to.
//
//   noteChange(isWatched_, &GraphChanges::edgeCosts);
void noteChange(const WatchFlag& flag, KorvaniCommon::Revision GraphChanges::*kind);

// The number for another graph. There are as many as a byte holds, so that a flag takes no more,
// and they are given out in turn: graphs of the same number are rare, and only cost time.
WatchFlag::Watcher nextWatcher();

}  // namespace KorvaniNavigation
