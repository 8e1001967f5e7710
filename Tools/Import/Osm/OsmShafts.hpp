#pragma once

/// Internal. Lifts and stairwells: which cells above each other are one of them.

#include <cstdint>
#include <vector>

#include "Building/Rectangle.hpp"
#include "FloorPlan/FloorPlan.hpp"

namespace KorvaniTools {

/// What the shafts of a plan are made of.
struct ShaftParts {
  /// Of each cell of the plan, the nodes of its outline.
  const std::vector<std::vector<std::int64_t>>& cellNodes;
  /// Of each cell of the plan, whether people are kept out.
  const std::vector<bool>& closedCells;
  /// Lines of the plan that are steps or escalators.
  const std::vector<std::size_t>& steps;
  std::vector<PlanShaft> lifts;  ///< that are nodes
};

/// Adds the shafts that lift cells, stair cells and lift nodes make. Cells of a kind that lie
/// above each other are one shaft; a lift node in them or on their outline belongs to it. Stairs
/// whose levels are all reached by lines of steps inside get no shaft; steps that begin and end
/// inside reach all their levels, others those of their ends.
void addShafts(FloorPlan& plan, const ShaftParts& parts);

/// Whether `point` lies inside the outline of a cell and in none of its holes.
bool liesIn(const PlanCell& cell, Coordinate point);

}  // namespace KorvaniTools
