#include "Import/Imdf/ImdfShapes.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace KorvaniTools {
namespace {

/// Openings are drawn on the outlines; what is farther away is another wall.
constexpr double kOnUnitOutline = 0.3;
/// A level's outline may be that of the facade, with the outer wall between it and the units.
constexpr double kOnLevelOutline = 1.0;
constexpr double kSubstantial = 0.5;
constexpr double kFromOutline = 0.25;  // metres

double distanceTo(const GroundLine& line, GroundPoint point) {
  double nearest = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i + 1 < line.size(); ++i) {
    const double share = nearestShare(point, line[i], line[i + 1]);
    nearest = std::min(nearest, groundDistance(point, between(line[i], line[i + 1], share)));
  }
  return nearest;
}

bool isNear(const std::vector<GroundLine>& rings, GroundPoint point, double metres) {
  return std::any_of(rings.begin(), rings.end(),
                     [&](const GroundLine& ring) { return distanceTo(ring, point) <= metres; });
}

GroundPoint middleOf(const GroundLine& line) { return between(line.front(), line.back(), 0.5); }

Coordinate middleOf(const ImdfModel& model) {
  const Coordinate first = model.plan.cells.front().polygons.front().front().front();
  Rectangle all{first, first};
  for (const PlanCell& cell : model.plan.cells) {
    for (const auto& polygon : cell.polygons) {
      for (const Coordinate& position : polygon.front()) all.include(position);
    }
  }
  return {(all.southWest.latitude + all.northEast.latitude) / 2,
          (all.southWest.longitude + all.northEast.longitude) / 2};
}

}  // namespace

ImdfShapes::ImdfShapes(ImdfModel& model) : model_(model), frame_(middleOf(model)) {
  for (std::size_t unit = 0; unit < model.units.size(); ++unit) addUnit(unit, model);
}

void ImdfShapes::addUnit(std::size_t unit, ImdfModel& model) {
  const PlanCell& cell = model.plan.cells[model.units[unit].cell];
  std::vector<GroundLine> rings;
  std::unique_ptr<BoxIndex>& floor = floors_[model.ordinalOf(model.units[unit])];
  if (!floor) floor = std::make_unique<BoxIndex>(geos_);
  for (const auto& polygon : cell.polygons) {
    for (const auto& ring : polygon) rings.push_back(frame_.metres(ring));
    floor->insert(unit, frame_.metres(polygon.front()));
  }
  rings_.push_back(std::move(rings));
  try {
    shapes_.push_back(shapeOf(cell));
  } catch (const GeosError&) {
    shapes_.push_back(nullptr);
  }
  areas_.push_back(shapes_.back() ? geos_.area(shapes_.back()) : 0);
  if (areas_.back() > 0) return;
  model.remarks.note("unit.geojson: outlines without an area", inQuotes(model.units[unit].id));
}

Shape ImdfShapes::shapeOf(const PlanCell& cell) const {
  std::vector<Shape> parts;
  for (const auto& polygon : cell.polygons) {
    std::vector<GroundLine> rings;
    rings.reserve(polygon.size());
    for (const auto& ring : polygon) rings.push_back(frame_.metres(ring));
    if (Shape part = geos_.polygon(rings).shape) parts.push_back(std::move(part));
  }
  return parts.empty() ? nullptr : geos_.united(std::move(parts));
}

std::vector<std::size_t> ImdfShapes::unitsNear(const GroundLine& line, std::int64_t ordinal,
                                               double margin) const {
  const auto floor = floors_.find(ordinal);
  if (floor == floors_.end()) return {};
  GroundPoint low = line.front();
  GroundPoint high = line.front();
  for (const GroundPoint& point : line) {
    low = {std::min(low.x, point.x), std::min(low.y, point.y)};
    high = {std::max(high.x, point.x), std::max(high.y, point.y)};
  }
  std::vector<std::size_t> units = floor->second->near(low, high, margin);
  // A unit of several polygons has as many boxes.
  units.erase(std::unique(units.begin(), units.end()), units.end());
  return units;
}

std::vector<std::size_t> ImdfShapes::unitsAlong(const Positions& line, std::size_t level) const {
  const GroundLine ground = frame_.metres(line);
  const std::array<GroundPoint, 3> points = {ground.front(), middleOf(ground), ground.back()};
  std::vector<std::size_t> along;
  for (const std::size_t unit : unitsNear(ground, model_.levels[level].ordinal, kOnUnitOutline)) {
    if (model_.units[unit].level != level) continue;
    const bool all = std::all_of(points.begin(), points.end(), [&](GroundPoint point) {
      return isNear(rings_[unit], point, kOnUnitOutline);
    });
    if (all) along.push_back(unit);
  }
  return along;
}

bool ImdfShapes::isOnOutlineOf(const ImdfLevel& level, const Positions& line) const {
  const GroundPoint middle = middleOf(frame_.metres(line));
  for (const std::vector<Positions>& polygon : level.outline) {
    for (const Positions& ring : polygon) {
      if (distanceTo(frame_.metres(ring), middle) <= kOnLevelOutline) return true;
    }
  }
  return false;
}

double ImdfShapes::commonArea(std::size_t a, std::size_t b) const {
  if (!shapes_[a] || !shapes_[b]) return 0;
  try {
    return geos_.area(geos_.common(shapes_[a], shapes_[b]));
  } catch (const GeosError&) {
    return 0;
  }
}

std::vector<std::size_t> ImdfShapes::unitsAbove(std::size_t unit, std::int64_t ordinal) const {
  std::vector<std::size_t> above;
  for (const GroundLine& ring : rings_[unit]) {
    for (const std::size_t other : unitsNear(ring, ordinal, 0)) {
      const double smaller = std::min(areas_[unit], areas_[other]);
      if (smaller <= 0 || commonArea(unit, other) < kSubstantial * smaller) continue;
      above.push_back(other);
    }
  }
  std::sort(above.begin(), above.end());
  above.erase(std::unique(above.begin(), above.end()), above.end());
  return above;
}

bool ImdfShapes::covers(std::size_t other, std::size_t unit) const {
  return areas_[unit] > 0 && commonArea(unit, other) >= kSubstantial * areas_[unit];
}

Coordinate ImdfShapes::pointIn(std::size_t unit) const {
  if (shapes_[unit]) {
    if (const auto inside = geos_.innerPoint(shapes_[unit])) return frame_.coordinate(*inside);
  }
  return frame_.coordinate(rings_[unit].front().front());
}

Coordinate ImdfShapes::spotBeside(std::size_t unit, std::size_t other) const {
  if (!shapes_[unit] || !shapes_[other]) return pointIn(unit);
  const Shape inside = geos_.grown(shapes_[unit], -kFromOutline);
  const auto nearest = geos_.nearest(inside, shapes_[other]);
  return nearest ? frame_.coordinate(nearest->first) : pointIn(unit);
}

}  // namespace KorvaniTools
