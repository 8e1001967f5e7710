#include "FloorPlan/Floor.hpp"

#include <algorithm>

namespace KorvaniTools {
namespace {

constexpr double kLeastFloor = 0.01;   // square metres
constexpr double kLeastPassage = 0.4;  // metres that people fit through
constexpr double kMostWidth = 20.0;
constexpr double kOutlineTolerance = 0.5;  // metres from door to outline

bool contains(const std::vector<std::int64_t>& levels, std::int64_t level) {
  return std::binary_search(levels.begin(), levels.end(), level);
}

bool leadsElsewhere(CellKind kind) {
  return kind == CellKind::stairs || kind == CellKind::escalator || kind == CellKind::ramp;
}

void addDoors(const FloorPlan& plan, const PlanLevels& levels, const LocalFrame& frame,
              Floor& floor) {
  for (const PlanDoor& door : plan.doors) {
    if (door.positions.empty() || !contains(levels.of(door.levels), floor.level)) continue;
    FloorDoor made;
    made.source = door.source;
    made.line = frame.metres(door.positions);
    made.width = door.width > 0 ? std::clamp(door.width, kLeastPassage, kMostWidth) : 1.0;
    made.key = door.node;
    made.stepFree = door.stepFree;
    made.at = made.line.front();
    if (door.passable) {
      floor.doors.push_back(std::move(made));
    } else {
      floor.shutDoors.push_back(made.at);
    }
  }
}

void addCells(const FloorPlan& plan, const PlanLevels& levels, const LocalFrame& frame,
              const Geos& geos, Floor& floor, std::vector<std::string>& remarks) {
  for (std::size_t i = 0; i < plan.cells.size(); ++i) {
    const PlanCell& cell = plan.cells[i];
    const std::vector<std::int64_t> on = levels.of(cell.levels);
    if (!contains(on, floor.level)) continue;
    Geos::Polygon polygon = cellShape(cell, frame, geos);
    const bool first = on.front() == floor.level;  // one remark for all levels
    if (!polygon.shape || geos.area(polygon.shape) < kLeastFloor) {
      if (first) remarks.push_back(cell.source + " has no area: left out");
      continue;
    }
    if (polygon.mended && first) remarks.push_back(cell.source + " crosses itself: mended");
    floor.cells.push_back({i, std::move(polygon.shape), cell.walled});
  }
}

bool anyDoorAt(const Floor& floor, const BoxIndex& doors, const FloorCell& cell, const Geos& geos) {
  for (const Shape& polygon : geos.polygonsOf(cell.shape)) {
    for (const GroundLine& ring : geos.ringsOf(polygon)) {
      const Shape outline = geos.line(ring);
      const BoundingBox box = boxOf(ring);
      for (const std::size_t door : doors.near(box.low, box.high, kOutlineTolerance)) {
        const Shape at = geos.point(floor.doors[door].line.front());
        if (geos.distance(at, outline) <= kOutlineTolerance) return true;
      }
    }
  }
  return false;
}

}  // namespace

Geos::Polygon cellShape(const PlanCell& cell, const LocalFrame& frame, const Geos& geos) {
  Geos::Polygon whole;
  std::vector<Shape> parts;
  try {
    for (const auto& polygon : cell.polygons) {
      std::vector<GroundLine> rings;
      rings.reserve(polygon.size());
      for (const auto& ring : polygon) rings.push_back(frame.metres(ring));
      Geos::Polygon part = geos.polygon(rings);
      whole.mended = whole.mended || part.mended;
      if (part.shape) parts.push_back(std::move(part.shape));
    }
    if (!parts.empty()) whole.shape = geos.united(std::move(parts));
  } catch (const GeosError&) {
    return {};  // beyond mending: as good as no area
  }
  return whole;
}

Floor makeFloor(const FloorPlan& plan, const PlanLevels& levels, std::int64_t level,
                const LocalFrame& frame, const Geos& geos, std::vector<std::string>& remarks) {
  Floor floor;
  floor.level = level;
  addDoors(plan, levels, frame, floor);
  addCells(plan, levels, frame, geos, floor, remarks);
  for (std::size_t i = 0; i < plan.walls.size(); ++i) {
    const PlanWall& wall = plan.walls[i];
    if (wall.positions.size() < 2 || !contains(levels.of(wall.levels), level)) continue;
    floor.walls.push_back({i, frame.metres(wall.positions)});
  }
  BoxIndex doors(geos);
  for (std::size_t i = 0; i < floor.doors.size(); ++i) doors.insert(i, floor.doors[i].line);
  for (FloorCell& cell : floor.cells) {
    if (!cell.enclosed || !leadsElsewhere(plan.cells[cell.cell].kind)) continue;
    cell.enclosed = anyDoorAt(floor, doors, cell, geos);
  }
  return floor;
}

}  // namespace KorvaniTools
