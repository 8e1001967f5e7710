#pragma once

/// Internal. The drawn lines of a level by where they lie.

#include <vector>

#include "FloorPlan/Geos.hpp"
#include "FloorPlan/PlanGraph.hpp"

namespace KorvaniTools {

/// The pieces with both ends on a level. Pieces that are added to the graph later are not found.
class LevelLines {
 public:
  LevelLines(const PlanGraph& graph, std::int64_t level, const Geos& geos);

  struct Spot {
    double distance = 0;
    std::size_t drawn = 0;
    double share = 0;  ///< of the piece, from 0 to 1
  };

  /// The nearest spots of all pieces within `distance` metres, nearest first.
  std::vector<Spot> near(GroundPoint at, double distance) const;

 private:
  const PlanGraph& graph_;
  BoxIndex index_;
};

}  // namespace KorvaniTools
