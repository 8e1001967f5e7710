#include "FloorPlan/FloorSight.hpp"

namespace KorvaniTools {
namespace {

constexpr double kClearance = 0.03;
constexpr double kTolerance = 0.1;

}  // namespace

FloorSight::FloorSight(const Geos& geos, const std::vector<GroundLine>& walls) : geos_(geos) {
  std::vector<Shape> bands;
  bands.reserve(walls.size());
  for (const GroundLine& wall : walls) bands.push_back(geos.grown(geos.line(wall), kClearance));
  if (!bands.empty()) walls_.emplace(geos, geos.gathered(bands));
}

bool FloorSight::clear(GroundPoint a, GroundPoint b) const {
  return !walls_ || !walls_->intersects(geos_.segment(a, b));
}

bool FloorSight::clear(GroundPoint at) const {
  return !walls_ || !walls_->intersects(geos_.point(at));
}

SpaceSight::SpaceSight(const Geos& geos, const FloorSight& floor, const Shape& space)
    : geos_(geos), floor_(floor), space_(geos, geos.grownSharp(space, kTolerance)) {}

bool SpaceSight::sees(GroundPoint a, GroundPoint b) const {
  return space_.covers(geos_.segment(a, b)) && floor_.clear(a, b);
}

bool SpaceSight::holds(GroundPoint at) const {
  return space_.covers(geos_.point(at)) && floor_.clear(at);
}

}  // namespace KorvaniTools
