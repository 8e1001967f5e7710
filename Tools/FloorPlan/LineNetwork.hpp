#pragma once

/// Internal. The lines to walk on, as they are drawn.

#include <string>
#include <vector>

#include "FloorPlan/LineLevels.hpp"
#include "FloorPlan/LocalFrame.hpp"
#include "FloorPlan/PlanGraph.hpp"

namespace KorvaniTools {

/// Adds every line's pieces to the graph: a node for each source node and level, an edge for each
/// piece between two of them. Positions that lie on each other become one node. `drawnSources` gets
/// the source of each drawn piece.
void addLineNetwork(const FloorPlan& plan, const std::vector<std::vector<LineTrack>>& tracks,
                    const LocalFrame& frame, PlanGraph& graph,
                    std::vector<std::string>& drawnSources);

}  // namespace KorvaniTools
