#include "FloorPlan/PlanChecks.hpp"

#include <algorithm>
#include <cmath>

#include "Building/Rectangle.hpp"
#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

bool good(Coordinate c) {
  return std::abs(c.latitude) <= 90 && std::abs(c.longitude) <= 180;  // false for NaN
}

bool good(const std::vector<Coordinate>& line) {
  return std::all_of(line.begin(), line.end(), [](Coordinate c) { return good(c); });
}

bool good(const PlanCell& cell) {
  for (const auto& polygon : cell.polygons) {
    for (const auto& ring : polygon) {
      if (!good(ring)) return false;
    }
  }
  return !cell.displayPoint || good(*cell.displayPoint);
}

bool good(const PlanDoor& door) { return good(door.positions); }
bool good(const PlanWall& wall) { return good(wall.positions); }
bool good(const PlanPlace& place) { return good(place.coordinate); }
bool good(const PlanShaft& shaft) { return !shaft.vertex || good(shaft.vertex->coordinate); }

bool good(const PlanLine& line) {
  return std::all_of(line.vertices.begin(), line.vertices.end(),
                     [](const PlanVertex& vertex) { return good(vertex.coordinate); });
}

template <typename Things>
bool allGood(const Things& things) {
  return std::all_of(things.begin(), things.end(), [](const auto& thing) { return good(thing); });
}

template <typename Things>
void drop(Things& things, std::vector<std::string>& remarks) {
  const auto bad = std::stable_partition(things.begin(), things.end(),
                                         [](const auto& thing) { return good(thing); });
  for (auto thing = bad; thing != things.end(); ++thing) {
    remarks.push_back(thing->source + " has a position that is not on Earth: left out");
  }
  things.erase(bad, things.end());
}

void include(const std::vector<Coordinate>& line, Rectangle& rectangle) {
  for (const Coordinate& coordinate : line) rectangle.include(coordinate);
}

template <typename Things>
void note(const Things& things, const PlanLevels& levels, std::vector<std::string>& remarks) {
  for (const auto& thing : things) {
    if (!levels.of(thing.levels).empty()) continue;
    std::string on;
    for (const double level : thing.levels) on += (on.empty() ? "" : ", ") + decimals(level);
    remarks.push_back(thing.source + " lies on no level that has floors or lines" +
                      (on.empty() ? "" : " (" + on + ")") + ": left out");
  }
}

}  // namespace

std::optional<FloorPlan> withoutBadPositions(const FloorPlan& plan,
                                             std::vector<std::string>& remarks) {
  if (allGood(plan.cells) && allGood(plan.doors) && allGood(plan.walls) && allGood(plan.lines) &&
      allGood(plan.shafts) && allGood(plan.places)) {
    return std::nullopt;
  }
  FloorPlan copy = plan;
  for (PlanCell& cell : copy.cells) {
    if (good(cell)) continue;
    remarks.push_back(cell.source + " has a position that is not on Earth: left out");
    cell.polygons.clear();
    cell.displayPoint.reset();
    cell.levels.clear();
  }
  drop(copy.doors, remarks);
  drop(copy.walls, remarks);
  drop(copy.lines, remarks);
  drop(copy.shafts, remarks);
  drop(copy.places, remarks);
  return copy;
}

Coordinate middleOf(const FloorPlan& plan) {
  Rectangle all;
  for (const PlanCell& cell : plan.cells) {
    for (const auto& polygon : cell.polygons) {
      for (const auto& ring : polygon) include(ring, all);
    }
  }
  for (const PlanWall& wall : plan.walls) include(wall.positions, all);
  for (const PlanLine& line : plan.lines) {
    for (const PlanVertex& vertex : line.vertices) all.include(vertex.coordinate);
  }
  for (const PlanShaft& shaft : plan.shafts) {
    if (shaft.vertex) all.include(shaft.vertex->coordinate);
  }
  if (!(all.southWest.latitude <= all.northEast.latitude)) return {0, 0};
  return {(all.southWest.latitude + all.northEast.latitude) / 2,
          (all.southWest.longitude + all.northEast.longitude) / 2};
}

void noteUnusedLevels(const FloorPlan& plan, const PlanLevels& levels,
                      std::vector<std::string>& remarks) {
  note(plan.doors, levels, remarks);
  note(plan.places, levels, remarks);
}

}  // namespace KorvaniTools
