#pragma once

/// Internal. What sees what on a level.

#include <optional>
#include <vector>

#include "FloorPlan/Geos.hpp"

namespace KorvaniTools {

/// The walls of a level, gaps cut out.
class FloorSight {
 public:
  FloorSight(const Geos& geos, const std::vector<GroundLine>& walls);

  /// Whether the straight way keeps clear of every wall by more than 3 cm, so that it still
  /// does after rounding.
  bool clear(GroundPoint a, GroundPoint b) const;

  /// Whether the point keeps clear of every wall in the same way.
  bool clear(GroundPoint at) const;

 private:
  const Geos& geos_;
  std::optional<PreparedShape> walls_;
};

/// The view within one space.
class SpaceSight {
 public:
  SpaceSight(const Geos& geos, const FloorSight& floor, const Shape& space);

  /// Whether the straight way lies in the space, 0.1 m of digitising aside, and is clear.
  bool sees(GroundPoint a, GroundPoint b) const;

  /// Whether the point lies in the space, with the same tolerance, and at no wall.
  bool holds(GroundPoint at) const;

 private:
  const Geos& geos_;
  const FloorSight& floor_;
  PreparedShape space_;
};

}  // namespace KorvaniTools
