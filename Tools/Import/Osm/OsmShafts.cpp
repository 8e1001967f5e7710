#include "Import/Osm/OsmShafts.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <optional>

#include "Import/Osm/LevelText.hpp"

namespace KorvaniTools {
namespace {

using Ring = std::vector<Coordinate>;

/// Whether a line from the point to the east leaves the ring once more than it enters.
bool liesInRing(const Ring& ring, Coordinate point) {
  bool inside = false;
  for (std::size_t i = 0; i + 1 < ring.size(); ++i) {
    const Coordinate a = ring[i];
    const Coordinate b = ring[i + 1];
    if ((a.latitude > point.latitude) == (b.latitude > point.latitude)) continue;
    const double along = (point.latitude - a.latitude) / (b.latitude - a.latitude);
    if (point.longitude < a.longitude + along * (b.longitude - a.longitude)) inside = !inside;
  }
  return inside;
}

/// The mean corner of the outline; a closed ring's last corner is its first.
Coordinate middle(const PlanCell& cell) {
  const Ring& ring = cell.polygons.front().front();
  Coordinate sum;
  const std::size_t count = ring.size() - 1;
  for (std::size_t i = 0; i < count; ++i) {
    sum.latitude += ring[i].latitude / static_cast<double>(count);
    sum.longitude += ring[i].longitude / static_cast<double>(count);
  }
  return sum;
}

/// Where a cell is, for quick answers.
struct Extent {
  Rectangle rectangle;
  Coordinate middle;
};

Extent extentOf(const PlanCell& cell) {
  Extent extent{{}, middle(cell)};
  for (const auto& polygon : cell.polygons) {
    for (const Coordinate corner : polygon.front()) extent.rectangle.include(corner);
  }
  return extent;
}

/// Whether a level of one is that of the other or the next to it. Stairs elsewhere in the height
/// are others.
bool areNeighbours(const PlanLevelSet& a, const PlanLevelSet& b) {
  return std::any_of(a.begin(), a.end(), [&b](double level) {
    return std::any_of(b.begin(), b.end(),
                       [level](double other) { return std::abs(level - other) <= 1; });
  });
}

std::optional<ConnectionKind> connectionOf(CellKind kind) {
  switch (kind) {
    case CellKind::elevator:
      return ConnectionKind::elevator;
    case CellKind::stairs:
      return ConnectionKind::stairs;
    case CellKind::escalator:
      return ConnectionKind::escalator;
    case CellKind::ramp:
      return ConnectionKind::ramp;
    default:
      return std::nullopt;
  }
}

class Shafts {
 public:
  Shafts(FloorPlan& plan, const ShaftParts& parts)
      : plan_(plan), parts_(parts), parent_(plan.cells.size()) {
    std::iota(parent_.begin(), parent_.end(), std::size_t{0});
    for (const PlanCell& cell : plan.cells) extents_.push_back(extentOf(cell));
  }

  void add();

 private:
  std::size_t root(std::size_t cell) {
    while (parent_[cell] != cell) cell = parent_[cell];
    return cell;
  }
  bool holds(std::size_t cell, Coordinate point) const {
    return extents_[cell].rectangle.contains(point) && liesIn(plan_.cells[cell], point);
  }
  bool belongTogether(std::size_t a, std::size_t b) const;
  void join(const std::vector<std::size_t>& cells);
  PlanShaft shaftOf(const std::vector<std::size_t>& cells) const;
  bool touches(std::size_t cell, const PlanVertex& vertex) const;
  PlanLevelSet servedBy(const PlanLine& line, const PlanShaft& shaft) const;
  bool linesDoIt(const PlanShaft& shaft) const;
  PlanShaft* shaftAt(const PlanShaft& lift, std::vector<PlanShaft>& shafts) const;

  FloorPlan& plan_;
  const ShaftParts& parts_;
  std::vector<std::size_t> parent_;
  std::vector<Extent> extents_;  ///< of each cell
};

bool Shafts::belongTogether(std::size_t a, std::size_t b) const {
  const PlanCell& one = plan_.cells[a];
  const PlanCell& other = plan_.cells[b];
  if (one.kind != other.kind || !extents_[a].rectangle.touches(extents_[b].rectangle)) return false;
  if (one.kind != CellKind::elevator && !areNeighbours(one.levels, other.levels)) return false;
  return holds(a, extents_[b].middle) || holds(b, extents_[a].middle);
}

void Shafts::join(const std::vector<std::size_t>& cells) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    for (std::size_t j = i + 1; j < cells.size(); ++j) {
      const std::size_t a = root(cells[i]);
      const std::size_t b = root(cells[j]);
      if (a != b && belongTogether(cells[i], cells[j])) parent_[std::max(a, b)] = std::min(a, b);
    }
  }
}

PlanShaft Shafts::shaftOf(const std::vector<std::size_t>& cells) const {
  PlanShaft shaft;
  const PlanCell& first = plan_.cells[cells.front()];
  shaft.source = first.source;
  shaft.kind = connectionOf(first.kind).value_or(ConnectionKind::stairs);
  shaft.cells = cells;
  for (const std::size_t cell : cells) {
    shaft.levels = united(shaft.levels, plan_.cells[cell].levels);
    if (shaft.stepFree == StepFree::unknown) shaft.stepFree = plan_.cells[cell].stepFree;
  }
  return shaft;
}

/// Whether the cell, on its outline or inside, has that point of a line.
bool Shafts::touches(std::size_t cell, const PlanVertex& vertex) const {
  const auto& nodes = parts_.cellNodes[cell];
  return std::find(nodes.begin(), nodes.end(), vertex.node) != nodes.end() ||
         holds(cell, vertex.coordinate);
}

/// The levels of the shaft that a line of steps stops at; none for one that is elsewhere.
PlanLevelSet Shafts::servedBy(const PlanLine& line, const PlanShaft& shaft) const {
  if (line.levels.size() < 2) return {};
  const PlanVertex& a = line.vertices[(line.vertices.size() - 1) / 2];
  const PlanVertex& b = line.vertices[(line.vertices.size() - 1) / 2 + 1];
  const Coordinate middle{(a.coordinate.latitude + b.coordinate.latitude) / 2,
                          (a.coordinate.longitude + b.coordinate.longitude) / 2};
  const auto found = std::find_if(shaft.cells.begin(), shaft.cells.end(), [&](std::size_t cell) {
    return shareLevel(plan_.cells[cell].levels, line.levels) && holds(cell, middle);
  });
  if (found == shaft.cells.end()) return {};
  // One that leaves the stairwell passes the floors in between.
  const bool inside =
      touches(*found, line.vertices.front()) && touches(*found, line.vertices.back());
  return inside ? line.levels : PlanLevelSet{line.levels.front(), line.levels.back()};
}

bool Shafts::linesDoIt(const PlanShaft& shaft) const {
  if (shaft.kind == ConnectionKind::elevator) return false;
  PlanLevelSet reached;
  for (const std::size_t index : parts_.steps) {
    reached = united(reached, servedBy(plan_.lines[index], shaft));
  }
  return std::includes(reached.begin(), reached.end(), shaft.levels.begin(), shaft.levels.end());
}

PlanShaft* Shafts::shaftAt(const PlanShaft& lift, std::vector<PlanShaft>& shafts) const {
  const auto hasLift = [&](std::size_t cell) { return touches(cell, *lift.vertex); };
  const auto found = std::find_if(shafts.begin(), shafts.end(), [&](const PlanShaft& shaft) {
    return shaft.kind == ConnectionKind::elevator && !shaft.vertex &&
           areNeighbours(shaft.levels, lift.levels) &&
           std::any_of(shaft.cells.begin(), shaft.cells.end(), hasLift);
  });
  return found == shafts.end() ? nullptr : &*found;
}

void Shafts::add() {
  std::vector<std::size_t> candidates;
  for (std::size_t i = 0; i < plan_.cells.size(); ++i) {
    if (connectionOf(plan_.cells[i].kind) && !parts_.closedCells[i]) candidates.push_back(i);
  }
  join(candidates);
  std::map<std::size_t, std::vector<std::size_t>> groups;
  for (const std::size_t cell : candidates) groups[root(cell)].push_back(cell);
  std::vector<PlanShaft> shafts;
  shafts.reserve(groups.size());
  for (const auto& [first, cells] : groups) shafts.push_back(shaftOf(cells));
  for (const PlanShaft& lift : parts_.lifts) {
    PlanShaft* const shaft = shaftAt(lift, shafts);
    if (shaft == nullptr) {
      shafts.push_back(lift);
      continue;
    }
    shaft->vertex = lift.vertex;
    shaft->levels = united(shaft->levels, lift.levels);
    if (lift.stepFree != StepFree::unknown) shaft->stepFree = lift.stepFree;
  }
  for (PlanShaft& shaft : shafts) {
    if (shaft.levels.size() > 1 && !linesDoIt(shaft)) plan_.shafts.push_back(std::move(shaft));
  }
}

}  // namespace

bool liesIn(const PlanCell& cell, Coordinate point) {
  return std::any_of(cell.polygons.begin(), cell.polygons.end(), [point](const auto& polygon) {
    if (polygon.empty() || !liesInRing(polygon.front(), point)) return false;
    return std::none_of(polygon.begin() + 1, polygon.end(),
                        [point](const Ring& hole) { return liesInRing(hole, point); });
  });
}

void addShafts(FloorPlan& plan, const ShaftParts& parts) { Shafts(plan, parts).add(); }

}  // namespace KorvaniTools
