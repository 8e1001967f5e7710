#include "Drawing/WallFloor.hpp"

#include <utility>

#include "FloorPlan/Geos.hpp"

namespace KorvaniTools {
namespace {

constexpr double kHalfGap = 1.25;    // metres
constexpr double kLeastFloor = 4;    // square metres; less is the thickness of a wall
constexpr double kTolerance = 0.02;  // metres, far below what a plan shows

GroundLine groundLine(const SceneLine& line) {
  GroundLine ground;
  ground.reserve(line.size());
  for (const ScenePoint& point : line) ground.push_back({point.x, point.y});
  return ground;
}

SceneLine sceneLine(const GroundLine& line) {
  SceneLine scene;
  scene.reserve(line.size());
  for (const GroundPoint& point : line) scene.push_back({point.x, point.y});
  return scene;
}

/// The polygons without their holes, all in one.
Shape filled(const Geos& geos, const Shape& shape) {
  std::vector<Shape> outer;
  for (const Shape& polygon : geos.polygonsOf(shape)) {
    Shape whole = geos.polygon({geos.ringsOf(polygon).front()}).shape;
    if (whole != nullptr) outer.push_back(std::move(whole));
  }
  return geos.united(std::move(outer));
}

/// Walls are made thick, which shuts the doors, filled, and made thin again.
std::vector<SceneLine> floorOf(const Geos& geos, const std::vector<SceneLine>& walls) {
  std::vector<Shape> thick;
  for (const SceneLine& wall : walls) {
    const Shape line = geos.line(groundLine(wall));
    if (line != nullptr) thick.push_back(geos.grown(line, kHalfGap));
  }
  const Shape floor = geos.grown(filled(geos, geos.united(std::move(thick))), -kHalfGap);
  std::vector<SceneLine> outlines;
  for (const Shape& polygon : geos.polygonsOf(geos.simplified(floor, kTolerance))) {
    if (geos.area(polygon) < kLeastFloor) continue;
    outlines.push_back(sceneLine(geos.ringsOf(polygon).front()));
  }
  return outlines;
}

}  // namespace

std::vector<SceneLine> floorWithin(const std::vector<SceneLine>& walls) {
  const Geos geos;
  try {
    return floorOf(geos, walls);
  } catch (const GeosError&) {
    return {};  // a plan without floor is better than none
  }
}

}  // namespace KorvaniTools
