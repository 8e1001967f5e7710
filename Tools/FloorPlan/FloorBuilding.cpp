#include "FloorPlan/FloorBuilding.hpp"

#include <algorithm>

#include "FloorPlan/SpaceJoin.hpp"
#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

constexpr double kOnSpot = 0.02;       // metres from a door to an outline that it is drawn on
constexpr double kOnLine = 0.3;        // metres from a door to a line that goes through it
constexpr double kSameDoor = 0.1;      // metres
constexpr double kOutdoors = 1.5;      // metres from a door to a line in front of it
constexpr double kNoWall = 0.5;        // metres from a door without wall to the floors it joins
constexpr double kStopReach = 3.0;     // metres from a lift to the floor in front of it
constexpr double kAssumedReach = 5.0;  // metres from a room to floor that it may open to
constexpr double kShared = 0.3;        // metres between outlines that count as one wall
constexpr double kMiddleClearance = 0.3;

bool isFloor(CellKind kind) { return kind == CellKind::corridor || kind == CellKind::area; }

}  // namespace

FloorBuilding::FloorBuilding(const FloorInput& input, std::int64_t level, PlanGraph& graph,
                             PlanReport& report)
    : input_(input),
      geos_(input.geos),
      graph_(graph),
      report_(report),
      floor_(makeFloor(input.plan, input.levels, level, input.frame, input.geos, report.remarks)),
      walls_(input.plan, floor_, input.geos),
      spaces_(makeSpaces(input.plan, floor_, input.geos)),
      lines_(graph, level, input.geos),
      earlier_(input.geos) {
  finder_.emplace(spaces_, geos_);
  for (std::size_t i = 0; i < graph.nodes().size(); ++i) {
    const PlanGraph::Node& node = graph.nodes()[i];
    if (node.level == level) earlier_.insert(i, node.at, node.at);
  }
}

void FloorBuilding::build() {
  openWalls();
  findLines(spaces_, floor_, graph_, geos_);
  attachDoors();
  assumeDoors();
  addStops();
  addMiddles();
  noteShutCells();
  wallLines_ = walls_.lines();
  const FloorSight sight(geos_, wallLines_);
  joinOutdoors(sight);
  for (const FloorSpace& space : spaces_) {
    const StepFree stepFree =
        space.cell && cellOf(space).stepFree == StepFree::no ? StepFree::no : StepFree::unknown;
    joinSpace(space, sight, geos_, stepFree, graph_);
  }
  joinLonelyStops(sight);
}

std::optional<std::size_t> FloorBuilding::middleOf(std::size_t cell) const {
  const auto found = middles_.find(cell);
  if (found == middles_.end() || !graph_.hasEdges(found->second)) return std::nullopt;
  return found->second;
}

const PlanCell& FloorBuilding::cellOf(const FloorSpace& space) const {
  return input_.plan.cells[floor_.cells[*space.cell].cell];
}

bool FloorBuilding::entered(const FloorSpace& space) {
  return !space.pieces.empty() || std::any_of(space.items.begin(), space.items.end(),
                                              [](const SpaceItem& item) { return item.door; });
}

void FloorBuilding::openWalls() {
  for (FloorDoor& door : floor_.doors) {
    walls_.place(door);
    walls_.open(door.gap);
  }
  report_.openedForLines +=
      walls_.openForLines(floor_, graph_, input_.drawnSources, report_.remarks);
}

void FloorBuilding::attachDoors() {
  for (const FloorDoor& door : floor_.doors) attach(door, kOutdoors);
}

std::vector<std::size_t> FloorBuilding::sidesOf(const FloorDoor& door,
                                                const SpaceFinder& finder) const {
  if (!door.along) return finder.near(door.at, kNoWall);
  std::set<std::size_t> sides;
  for (const double side : {1.0, -1.0}) {
    for (const double away : {0.3, 0.6, 1.0}) {
      const GroundPoint at{door.at.x - side * away * door.along->y,
                           door.at.y + side * away * door.along->x};
      const auto space = finder.spaceAt(at);
      if (!space) continue;
      sides.insert(*space);
      break;
    }
  }
  if (sides.size() < 2) {
    for (const std::size_t space : finder.near(door.at, kOnSpot)) sides.insert(space);
  }
  return {sides.begin(), sides.end()};
}

std::size_t FloorBuilding::nodeOf(const FloorDoor& door, bool& onLine) {
  onLine = true;
  if (const auto shared = graph_.findAt(door.key, floor_.level)) return *shared;
  if (const auto same = nodeOnSpot(door.at)) {
    graph_.name(door.key, floor_.level, *same);
    onLine = !lines_.near(door.at, kOnLine).empty();
    return *same;
  }
  const auto spots = lines_.near(door.at, kOnLine);
  const std::size_t node = spots.empty() ? graph_.addNode(floor_.level, door.at)
                                         : graph_.stopOn(spots.front().drawn, spots.front().share);
  onLine = !spots.empty();
  doorNodes_.push_back(node);
  graph_.name(door.key, floor_.level, node);
  return node;
}

std::optional<std::size_t> FloorBuilding::nodeOnSpot(GroundPoint at) const {
  std::vector<std::size_t> near = earlier_.near(at, at, kSameDoor);
  near.insert(near.end(), doorNodes_.begin(), doorNodes_.end());
  for (const std::size_t node : near) {
    if (groundDistance(graph_.nodes()[node].at, at) <= kSameDoor) return node;
  }
  return std::nullopt;
}

// A door between two corridors that are one floor leads nowhere else.
bool FloorBuilding::inside(const FloorDoor& door, std::size_t space) const {
  for (const GroundLine& ring : geos_.ringsOf(spaces_[space].shape)) {
    if (geos_.distance(geos_.point(door.at), geos_.line(ring)) < kShared) return false;
  }
  return true;
}

void FloorBuilding::attach(const FloorDoor& door, double reach) {
  const std::vector<std::size_t> sides = sidesOf(door, *finder_);
  if (door.gap || sides.size() > 1) ++report_.doors;
  if (sides.empty() || (sides.size() == 1 && !door.gap && inside(door, sides.front()))) return;
  bool onLine = false;
  const std::size_t node = nodeOf(door, onLine);
  for (const std::size_t side : sides) {
    const auto& items = spaces_[side].items;
    const bool known = std::any_of(items.begin(), items.end(),
                                   [&](const SpaceItem& item) { return item.node == node; });
    if (known) continue;
    SpaceItem item{node, graph_.nodes()[node].at, true, door.along, door.stepFree};
    spaces_[side].items.push_back(item);
  }
  if (sides.size() == 1 && !onLine) outdoors_.push_back({node, door.stepFree, reach});
}

bool FloorBuilding::mayAssumeDoor(const FloorSpace& space) const {
  if (!space.cell || entered(space)) return false;
  const CellKind kind = cellOf(space).kind;
  // A lift is of no use without one.
  return kind != CellKind::closed && (input_.options.assumeDoors || kind == CellKind::elevator);
}

void FloorBuilding::assumeDoors() {
  for (const FloorSpace& space : spaces_) {
    if (!mayAssumeDoor(space)) continue;
    auto door = assumedDoor(space);
    if (!door) continue;
    walls_.place(*door);
    walls_.open(door->gap);
    const std::size_t before = space.items.size();
    attach(*door, kAssumedReach);
    if (space.items.size() == before) continue;
    ++report_.assumedDoors;
    report_.remarks.push_back(cellOf(space).source + " has no door on level " +
                              decimals(input_.levels.source(floor_.level)) + ": one was assumed");
  }
}

// Floor and lines near a space that a door of it may lead to.
Shape FloorBuilding::surroundings(const FloorSpace& space) const {
  std::vector<Shape> targets;
  const bool lift = cellOf(space).kind == CellKind::elevator;
  for (const FloorSpace& other : spaces_) {
    const bool floor = !other.cell || isFloor(cellOf(other).kind) || (lift && entered(other));
    if (&other == &space || !floor) continue;
    if (geos_.distance(other.shape, space.shape) > kAssumedReach) continue;
    targets.push_back(geos_.copy(other.shape));
  }
  const BoundingBox box = boxOf(geos_.ringsOf(space.shape).front());
  const double reach = groundDistance(box.low, box.high) / 2 + kAssumedReach;
  for (const LevelLines::Spot& spot : lines_.near(between(box.low, box.high, 0.5), reach)) {
    const PlanGraph::Edge& edge = graph_.drawn()[spot.drawn];
    targets.push_back(geos_.segment(graph_.nodes()[edge.from].at, graph_.nodes()[edge.to].at));
  }
  return geos_.united(std::move(targets));
}

std::optional<FloorDoor> FloorBuilding::assumedDoor(const FloorSpace& space) const {
  const Shape target = surroundings(space);
  if (geos_.empty(target)) return std::nullopt;
  const Shape outline = geos_.line(geos_.ringsOf(space.shape).front());
  FloorDoor door;
  double longest = 0;
  for (const GroundLine& stretch :
       geos_.linesOf(geos_.common(outline, geos_.grown(target, kShared)))) {
    for (std::size_t i = 0; i + 1 < stretch.size(); ++i) {
      const double length = groundDistance(stretch[i], stretch[i + 1]);
      if (length <= longest) continue;
      longest = length;
      door.line = {between(stretch[i], stretch[i + 1], 0.5)};
    }
  }
  if (!door.line.empty()) return door;
  const auto nearest = geos_.nearest(outline, target);
  if (!nearest || groundDistance(nearest->first, nearest->second) > kAssumedReach) {
    return std::nullopt;
  }
  door.line = {nearest->first};
  return door;
}

void FloorBuilding::addStops() {
  for (const ShaftStop& stop : input_.stops) {
    if (stop.level != floor_.level) continue;
    for (const std::size_t cell : stop.cells) middles_.emplace(cell, stop.node);
    const GroundPoint at = graph_.nodes()[stop.node].at;
    auto space = finder_->spaceAt(at);
    if (!space) {
      const auto near = finder_->near(at, kShared);
      if (near.empty()) continue;
      space = near.front();
    }
    spaces_[*space].items.push_back({stop.node, at, false, std::nullopt, StepFree::unknown});
  }
}

void FloorBuilding::addMiddles() {
  for (std::size_t i = 0; i < spaces_.size(); ++i) {
    if (spaces_[i].cell && needsMiddle(spaces_[i])) addRoomMiddle(i);
  }
  for (const FloorCell& cell : floor_.cells) {
    const PlanCell& drawn = input_.plan.cells[cell.cell];
    if (!cell.enclosed && drawn.isPlace && drawn.kind != CellKind::closed) addAreaMiddle(cell);
  }
}

// Walled floor is a passage: whoever is there wants to get on.
bool FloorBuilding::needsMiddle(const FloorSpace& space) const {
  const PlanCell& cell = cellOf(space);
  if (cell.kind == CellKind::closed || !entered(space)) return false;
  return cell.isPlace || cell.name || !isFloor(cell.kind) || space.items.size() < 2;
}

void FloorBuilding::addRoomMiddle(std::size_t space) {
  addMiddle(space, floor_.cells[*spaces_[space].cell].cell, spaces_[space].shape);
}

void FloorBuilding::addAreaMiddle(const FloorCell& cell) {
  Shape best;
  std::size_t where = 0;
  std::set<std::size_t> looked;
  const std::vector<Shape> polygons = geos_.polygonsOf(cell.shape);
  const GroundLine ring = geos_.ringsOf(polygons.front()).front();
  for (const GroundPoint& corner : ring) {
    for (const std::size_t space : finder_->near(corner, kShared)) {
      if (!looked.insert(space).second) continue;
      Shape part = geos_.common(cell.shape, spaces_[space].shape);
      if (best && geos_.area(part) <= geos_.area(best)) continue;
      best = std::move(part);
      where = space;
    }
  }
  if (best && geos_.area(best) > 0) addMiddle(where, cell.cell, best);
}

void FloorBuilding::addMiddle(std::size_t space, std::size_t cell, const Shape& within) {
  if (middles_.contains(cell)) return;
  const PlanCell& drawn = input_.plan.cells[cell];
  std::optional<GroundPoint> at;
  if (drawn.displayPoint) {
    const GroundPoint shown = input_.frame.metres(*drawn.displayPoint);
    const Shape clear = geos_.grown(within, -kMiddleClearance);
    if (!geos_.empty(clear) && geos_.intersects(geos_.point(shown), clear)) at = shown;
  }
  if (!at) at = geos_.innerPoint(within);
  if (!at) return;
  const std::size_t node = graph_.addNode(floor_.level, *at);
  middles_.emplace(cell, node);
  spaces_[space].items.push_back({node, *at, false, std::nullopt, StepFree::unknown});
}

void FloorBuilding::joinOutdoors(const FloorSight& sight) {
  for (const Outdoor& door : outdoors_) {
    const GroundPoint at = graph_.nodes()[door.node].at;
    for (const LevelLines::Spot& spot : lines_.near(at, door.reach)) {
      const PlanGraph::Edge& edge = graph_.drawn()[spot.drawn];
      const GroundPoint foot =
          between(graph_.nodes()[edge.from].at, graph_.nodes()[edge.to].at, spot.share);
      if (!sight.clear(at, foot)) continue;
      const std::size_t stop = graph_.stopOn(spot.drawn, spot.share);
      graph_.addMade({door.node, stop, ConnectionKind::door, door.stepFree, false});
      break;
    }
  }
}

// A lift that is a point beside the floor.
void FloorBuilding::joinLonelyStops(const FloorSight& sight) {
  std::set<std::size_t> joined;
  for (const PlanGraph::Edge& edge : graph_.edges()) {
    if (graph_.nodes()[edge.from].level != graph_.nodes()[edge.to].level) continue;
    joined.insert(edge.from);
    joined.insert(edge.to);
  }
  for (const ShaftStop& stop : input_.stops) {
    if (stop.level != floor_.level || joined.contains(stop.node)) continue;
    if (const auto near = nearestWay(stop.node, joined, sight)) {
      graph_.addMade({stop.node, *near, ConnectionKind::path, StepFree::unknown, false});
    } else {
      report_.remarks.push_back(input_.plan.shafts[stop.shaft].source +
                                " meets nothing to walk on on level " +
                                decimals(input_.levels.source(floor_.level)));
    }
  }
}

std::optional<std::size_t> FloorBuilding::nearestWay(std::size_t lonely,
                                                     const std::set<std::size_t>& nodes,
                                                     const FloorSight& sight) {
  const GroundPoint at = graph_.nodes()[lonely].at;
  std::optional<std::size_t> best;
  double reach = kStopReach;
  for (const std::size_t i : nodes) {
    const PlanGraph::Node& node = graph_.nodes()[i];
    const double distance = groundDistance(node.at, at);
    if (node.level != floor_.level || distance >= reach || !sight.clear(node.at, at)) continue;
    best = i;
    reach = distance;
  }
  for (const LevelLines::Spot& spot : lines_.near(at, reach)) {
    const PlanGraph::Edge& edge = graph_.drawn()[spot.drawn];
    const GroundPoint foot =
        between(graph_.nodes()[edge.from].at, graph_.nodes()[edge.to].at, spot.share);
    if (sight.clear(at, foot)) return graph_.stopOn(spot.drawn, spot.share);
  }
  return best;
}

void FloorBuilding::noteShutCells() {
  std::set<std::size_t> open;
  for (const FloorSpace& space : spaces_) {
    if (!space.cell || cellOf(space).kind == CellKind::closed) continue;
    const std::size_t cell = floor_.cells[*space.cell].cell;
    (entered(space) ? open : shut_).insert(cell);
  }
  for (const std::size_t cell : open) shut_.erase(cell);
}

}  // namespace KorvaniTools
