#pragma once

/// Internal. One level of a floor plan, in metres.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "FloorPlan/FloorPlan.hpp"
#include "FloorPlan/Geos.hpp"
#include "FloorPlan/LocalFrame.hpp"
#include "FloorPlan/PlanLevels.hpp"

namespace KorvaniTools {

/// A cell on one level.
struct FloorCell {
  std::size_t cell = 0;  ///< index into the plan's cells
  Shape shape;
  bool enclosed = false;  ///< its outline is a wall
};

/// A door that people get through, on one level.
struct FloorDoor {
  std::string source;
  GroundLine line;  ///< one position: a point
  double width = 1;
  std::int64_t key = 0;  ///< the source's node
  StepFree stepFree = StepFree::unknown;

  // Filled in when walls are opened:
  GroundPoint at;                    ///< the middle of the gap
  std::optional<GroundPoint> along;  ///< the wall's direction, of length 1; absent: no wall
  Shape gap;                         ///< what is cut out of walls; null: nothing
};

struct FloorWall {
  std::size_t wall = 0;  ///< index into the plan's walls
  GroundLine line;
};

struct Floor {
  std::int64_t level = 0;
  std::vector<FloorCell> cells;
  std::vector<FloorDoor> doors;
  std::vector<GroundPoint> shutDoors;  ///< that nobody gets through
  std::vector<FloorWall> walls;
};

/// Takes what lies on `level` out of the plan. Cells without any area are left out and crossed
/// outlines mended, with a remark each. Stairs and the like that no door leads into lie open.
Floor makeFloor(const FloorPlan& plan, const PlanLevels& levels, std::int64_t level,
                const LocalFrame& frame, const Geos& geos, std::vector<std::string>& remarks);

/// The shape of a cell; null when it has no area. Tells whether it had to be mended.
Geos::Polygon cellShape(const PlanCell& cell, const LocalFrame& frame, const Geos& geos);

}  // namespace KorvaniTools
