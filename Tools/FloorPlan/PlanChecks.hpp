#pragma once

/// Internal. What is looked at in a plan before anything is made of it.

#include <optional>
#include <string>
#include <vector>

#include "FloorPlan/FloorPlan.hpp"
#include "FloorPlan/PlanLevels.hpp"

namespace KorvaniTools {

/// A copy of the plan without the things that have positions which are not on Earth, a remark
/// each; none when there are no such things. Cells keep their indexes and lose their outlines.
std::optional<FloorPlan> withoutBadPositions(const FloorPlan& plan,
                                             std::vector<std::string>& remarks);

/// The middle of everything that is drawn; 0, 0 for an empty plan.
Coordinate middleOf(const FloorPlan& plan);

/// Adds a remark for each door and place that lies on levels only which nothing else uses.
void noteUnusedLevels(const FloorPlan& plan, const PlanLevels& levels,
                      std::vector<std::string>& remarks);

}  // namespace KorvaniTools
