#pragma once

/// Internal. Lifts, and stairs of which only the room is drawn.

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "FloorPlan/LocalFrame.hpp"
#include "FloorPlan/PlanGraph.hpp"
#include "FloorPlan/PlanLevels.hpp"

namespace KorvaniTools {

class Geos;

/// Where a shaft stops.
struct ShaftStop {
  std::size_t shaft = 0;  ///< index into the plan's shafts
  std::int64_t level = 0;
  std::size_t node = 0;
  std::vector<std::size_t> cells;  ///< of the shaft on that level; indexes into the plan's cells
};

/// Adds a node for each level where a shaft stops, and edges between successive ones. A stop is
/// at the shaft's vertex, where lines that use it on that level are the same node; else in the
/// middle of its cell, where several shafts share one node. A shaft with neither is left out with a
/// remark.
std::vector<ShaftStop> addShafts(const FloorPlan& plan, const PlanLevels& levels,
                                 const LocalFrame& frame, const Geos& geos, PlanGraph& graph,
                                 std::vector<std::string>& remarks);

}  // namespace KorvaniTools
