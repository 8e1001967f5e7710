#include "Import/Osm/OsmPassing.hpp"

#include <algorithm>

#include "Building/Rectangle.hpp"
#include "Import/Osm/LevelText.hpp"
#include "Import/Osm/OsmShafts.hpp"

namespace KorvaniTools {
namespace {

/// Above 0 when `point` lies to the left of the way from `a` to `b`, 0 on it.
double sideOf(Coordinate a, Coordinate b, Coordinate point) {
  return (b.longitude - a.longitude) * (point.latitude - a.latitude) -
         (b.latitude - a.latitude) * (point.longitude - a.longitude);
}

bool cross(Coordinate a, Coordinate b, Coordinate c, Coordinate d) {
  return sideOf(a, b, c) * sideOf(a, b, d) < 0 && sideOf(c, d, a) * sideOf(c, d, b) < 0;
}

bool crossesAny(Coordinate a, Coordinate b, const std::vector<Coordinate>& line) {
  for (std::size_t i = 0; i + 1 < line.size(); ++i) {
    if (cross(a, b, line[i], line[i + 1])) return true;
  }
  return false;
}

bool meetsCell(Coordinate a, Coordinate b, const PlanCell& cell) {
  Rectangle piece;
  piece.include(a);
  piece.include(b);
  Rectangle outline;
  for (const auto& polygon : cell.polygons) {
    for (const Coordinate corner : polygon.front()) outline.include(corner);
  }
  if (!piece.touches(outline)) return false;
  const Coordinate middle{(a.latitude + b.latitude) / 2, (a.longitude + b.longitude) / 2};
  if (liesIn(cell, middle)) return true;
  return std::any_of(cell.polygons.begin(), cell.polygons.end(), [&](const auto& polygon) {
    return std::any_of(polygon.begin(), polygon.end(),
                       [&](const auto& ring) { return crossesAny(a, b, ring); });
  });
}

bool meetsAnything(Coordinate a, Coordinate b, const PlanLevelSet& levels, const FloorPlan& plan) {
  const bool floor = std::any_of(plan.cells.begin(), plan.cells.end(), [&](const PlanCell& cell) {
    return shareLevel(cell.levels, levels) && meetsCell(a, b, cell);
  });
  return floor || std::any_of(plan.walls.begin(), plan.walls.end(), [&](const PlanWall& wall) {
           return shareLevel(wall.levels, levels) && crossesAny(a, b, wall.positions);
         });
}

}  // namespace

std::vector<PlanLine> piecesBeside(const PlanLine& line, const FloorPlan& plan) {
  std::vector<PlanLine> pieces;
  bool open = false;
  for (std::size_t i = 0; i + 1 < line.vertices.size(); ++i) {
    const PlanVertex& from = line.vertices[i];
    const PlanVertex& to = line.vertices[i + 1];
    const bool beside = !meetsAnything(from.coordinate, to.coordinate, line.levels, plan);
    if (beside && !open) {
      pieces.push_back(line);
      pieces.back().vertices = {from};
    }
    if (beside) pieces.back().vertices.push_back(to);
    open = beside;
  }
  return pieces;
}

}  // namespace KorvaniTools
