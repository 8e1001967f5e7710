#include "FloorPlan/FloorBuilding.hpp"

#include <algorithm>

#include "FloorPlan/SpaceJoin.hpp"
#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

constexpr double kOnLine = 0.3;        // metres from a door to a line that goes through it
constexpr double kSameDoor = 0.1;      // metres
constexpr double kOutdoors = 1.5;      // metres from a door to a line in front of it
constexpr double kStopReach = 3.0;     // metres from a lift to the floor in front of it
constexpr double kAssumedReach = 5.0;  // metres from a room to floor that it may open to
constexpr double kShared = 0.3;        // metres between outlines that count as one wall
constexpr double kFacing = 0.15;       // metres by which outlines that face each other may slant
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
      parts_(graph, level),
      earlier_(input.geos) {
  finder_.emplace(spaces_, geos_);
  doorSides_.emplace(spaces_, *finder_, geos_);
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
  joinEntries(sight);
  joinOutdoors(sight);
  noteAssumedDoors();
  addPlaces(sight);
  for (const FloorSpace& space : spaces_) {
    const StepFree stepFree =
        space.cell && cellOf(space).stepFree == StepFree::no ? StepFree::no : StepFree::unknown;
    joinSpace(space, sight, geos_, stepFree, parts_, graph_);
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
  for (FloorDoor& door : floor_.doors) sides_.push_back(open(door));
  report_.openedForLines +=
      walls_.openForLines(floor_, graph_, input_.drawnSources, report_.remarks);
}

std::vector<DoorSide> FloorBuilding::open(FloorDoor& door) {
  walls_.place(door);
  std::vector<DoorSide> sides = doorSides_->of(door);
  doorSides_->deepen(door, sides);
  walls_.open(door.gap);
  return sides;
}

void FloorBuilding::attachDoors() {
  for (std::size_t i = 0; i < floor_.doors.size(); ++i) {
    attach(floor_.doors[i], sides_[i], kOutdoors);
  }
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

void FloorBuilding::attach(const FloorDoor& door, const std::vector<DoorSide>& sides,
                           double reach) {
  if (door.gap || sides.size() > 1) ++report_.doors;
  const bool nowhere = sides.size() == 1 && !door.gap && inside(door, sides.front().space);
  if (sides.empty() || nowhere) return;
  bool onLine = false;
  const std::size_t node = nodeOf(door, onLine);
  for (const DoorSide& side : sides) attach(door, node, side);
  if (sides.size() == 1 && !onLine) outdoors_.push_back({node, &door, reach, false});
}

void FloorBuilding::attach(const FloorDoor& door, std::size_t node, const DoorSide& side) {
  std::vector<SpaceItem>& items = spaces_[side.space].items;
  const bool known = std::any_of(items.begin(), items.end(),
                                 [&](const SpaceItem& item) { return item.node == node; }) ||
                     std::any_of(entries_.begin(), entries_.end(), [&](const Entry& entry) {
                       return entry.door == node && entry.space == side.space;
                     });
  if (known) return;
  std::size_t reached = node;
  if (side.entry) {
    reached = nodeNear(*side.entry, kOnLine);
    entries_.push_back({node, reached, side.space, &door});
  }
  items.push_back({reached, graph_.nodes()[reached].at, true, door.along, door.stepFree});
}

void FloorBuilding::joinEntries(const FloorSight& sight) {
  for (const Entry& entry : entries_) {
    if (sight.clear(graph_.nodes()[entry.door].at, graph_.nodes()[entry.node].at)) {
      graph_.addMade({entry.door, entry.node, ConnectionKind::door, entry.drawn->stepFree, false});
      continue;
    }
    report_.remarks.push_back(entry.drawn->source +
                              " has a wall between it and the floor beside it on level " +
                              decimals(input_.levels.source(floor_.level)) + ": not joined");
  }
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
    door->source = cellOf(space).source;
    assumed_.push_back({floor_.cells[*space.cell].cell, std::move(*door)});
    FloorDoor& made = assumed_.back().door;
    const std::vector<DoorSide> sides = open(made);
    attach(made, sides, kAssumedReach);
  }
}

// A door that leads nowhere is none.
void FloorBuilding::noteAssumedDoors() {
  for (const Assumed& assumed : assumed_) {
    const bool shut = std::any_of(outdoors_.begin(), outdoors_.end(), [&](const Outdoor& door) {
      return door.drawn == &assumed.door && !door.joined;
    });
    const PlanCell& cell = input_.plan.cells[assumed.cell];
    const std::string words =
        cell.source + " has no door on level " + decimals(input_.levels.source(floor_.level));
    const bool lift = !input_.options.assumeDoors && cell.kind == CellKind::elevator;
    const char* const made = lift ? ": a lift opens to what is in front" : ": one was assumed";
    report_.remarks.push_back(words + (shut ? ", and nothing to walk on is near" : made));
    if (!shut && !lift) ++report_.assumedDoors;
  }
}

// Floor and lines near a space that a door of it may lead to.
Shape FloorBuilding::surroundings(const FloorSpace& space) const {
  std::vector<Shape> targets;
  const bool lift = cellOf(space).kind == CellKind::elevator;
  for (const FloorSpace& other : spaces_) {
    const bool floor = !other.cell || isFloor(cellOf(other).kind) || (lift && entered(other));
    if (&other == &space || !floor) continue;
    if (geos_.distance(other.shape, space.shape) > kThickestWall - kFacing) continue;
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

// In the middle of the longest stretch that faces what people walk on.
std::optional<FloorDoor> FloorBuilding::assumedDoor(const FloorSpace& space) const {
  const Shape target = surroundings(space);
  if (geos_.empty(target)) return std::nullopt;
  const Shape outline = geos_.line(geos_.ringsOf(space.shape).front());
  const double away = geos_.distance(outline, target);
  if (away > kAssumedReach) return std::nullopt;
  const Shape facing = geos_.grown(target, std::max(kShared, away + kFacing));
  FloorDoor door;
  double longest = 0;
  for (const GroundLine& stretch : geos_.linesOf(geos_.common(outline, facing))) {
    for (std::size_t i = 0; i + 1 < stretch.size(); ++i) {
      const double length = groundDistance(stretch[i], stretch[i + 1]);
      if (length <= longest) continue;
      longest = length;
      door.line = {between(stretch[i], stretch[i + 1], 0.5)};
    }
  }
  if (door.line.empty()) return std::nullopt;
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
  const auto at = middleWithin(input_.plan.cells[cell], within);
  if (at) middles_.emplace(cell, nodeInside(space, *at));
}

std::optional<GroundPoint> FloorBuilding::middleWithin(const PlanCell& cell,
                                                       const Shape& within) const {
  if (cell.displayPoint) {
    const GroundPoint shown = input_.frame.metres(*cell.displayPoint);
    const Shape clear = geos_.grown(within, -kMiddleClearance);
    if (!geos_.empty(clear) && geos_.intersects(geos_.point(shown), clear)) return shown;
  }
  return geos_.innerPoint(within);
}

std::size_t FloorBuilding::nodeInside(std::size_t space, GroundPoint at) {
  std::vector<SpaceItem>& items = spaces_[space].items;
  for (const SpaceItem& item : items) {
    if (groundDistance(item.at, at) <= kSameSpot) return item.node;
  }
  const auto same = nodeOnSpot(at);
  const std::size_t node = same && !parts_.amidStairs(*same) ? *same : nodeNear(at, kSameSpot);
  items.push_back({node, graph_.nodes()[node].at, false, std::nullopt, StepFree::unknown});
  return node;
}

std::size_t FloorBuilding::nodeNear(GroundPoint at, double distance) {
  for (const LevelLines::Spot& spot : lines_.near(at, distance)) {
    if (isWalkedOn(graph_.drawn()[spot.drawn].kind)) return graph_.stopOn(spot.drawn, spot.share);
  }
  return graph_.addNode(floor_.level, at);
}

// Where no door and no line is in sight of a place, as in the arm of a winding hall, nobody would
// be led there.
void FloorBuilding::addPlaces(const FloorSight& sight) {
  for (const PlanPlace& place : input_.plan.places) {
    const auto levels = input_.levels.of(place.levels);
    if (place.entrance || !std::binary_search(levels.begin(), levels.end(), floor_.level)) continue;
    const GroundPoint at = input_.frame.metres(place.coordinate);
    const auto space = finder_->spaceAt(at);
    if (space && !isSeen(at, spaces_[*space], sight)) nodeInside(*space, at);
  }
}

bool FloorBuilding::isSeen(GroundPoint at, const FloorSpace& space, const FloorSight& sight) const {
  if (space.items.empty() && space.lineNodes.empty()) return true;  // no graph to be joined to
  return std::any_of(space.items.begin(), space.items.end(),
                     [&](const SpaceItem& item) { return sight.clear(item.at, at); }) ||
         std::any_of(space.lineNodes.begin(), space.lineNodes.end(),
                     [&](std::size_t node) { return sight.clear(graph_.nodes()[node].at, at); });
}

void FloorBuilding::joinOutdoors(const FloorSight& sight) {
  for (Outdoor& door : outdoors_) {
    const GroundPoint at = graph_.nodes()[door.node].at;
    for (const LevelLines::Spot& spot : lines_.near(at, door.reach)) {
      const PlanGraph::Edge& edge = graph_.drawn()[spot.drawn];
      const GroundPoint foot =
          between(graph_.nodes()[edge.from].at, graph_.nodes()[edge.to].at, spot.share);
      if (!sight.clear(at, foot)) continue;
      const std::size_t stop = graph_.stopOn(spot.drawn, spot.share);
      graph_.addMade({door.node, stop, ConnectionKind::door, door.drawn->stepFree, false});
      door.joined = true;
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
      lonelyShafts_.insert(stop.shaft);
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
