#include "Import/Osm/OsmPlan.hpp"

#include <algorithm>
#include <utility>

#include "Import/Osm/LengthText.hpp"
#include "Import/Osm/LevelText.hpp"
#include "Import/Osm/OsmLines.hpp"
#include "Import/Osm/OsmNames.hpp"
#include "Import/Osm/OsmPassing.hpp"
#include "Import/Osm/OsmPlatforms.hpp"
#include "Import/Osm/OsmRoles.hpp"
#include "Import/Osm/OsmShafts.hpp"

namespace KorvaniTools {
namespace {

constexpr Remarks::Kind kNotClosed{"outline is not closed and was left out",
                                   "outlines are not closed and were left out"};
constexpr Remarks::Kind kClosedLine{"way is closed to people and was left out",
                                    "ways are closed to people and were left out"};
constexpr Remarks::Kind kClosedLift{"lift is closed to people and was left out",
                                    "lifts are closed to people and were left out"};
constexpr Remarks::Kind kPassesBy{
    "way passes over or under what is on level 0 and was left out there",
    "ways pass over or under what is on level 0 and were left out there"};
constexpr Remarks::Kind kWidth{"door has a width that cannot be read and got the usual one",
                               "doors have widths that cannot be read and got the usual one"};

std::vector<Coordinate> positionsOf(const OsmWay& way) {
  std::vector<Coordinate> positions;
  for (const PlanVertex& corner : way.corners) positions.push_back(corner.coordinate);
  return positions;
}

std::vector<std::int64_t> nodesOf(const OsmWay& way) {
  std::vector<std::int64_t> nodes;
  for (const PlanVertex& corner : way.corners) nodes.push_back(corner.node);
  return nodes;
}

bool isPassable(const OsmTags& tags) {
  return !isClosedToPeople(tags) && !tags.is("entrance", {"emergency", "fire_exit"}) &&
         tags["locked"] != "yes";
}

StepFree doorStepFree(const OsmTags& tags) {
  const StepFree stated = stepFreeOf(tags);
  if (stated != StepFree::unknown) return stated;
  return tags.is("barrier", {"turnstile", "full-height_turnstile", "kissing_gate"})
             ? StepFree::no
             : StepFree::unknown;
}

/// Whether people look for the cell by its name.
bool isPlaceCell(const OsmTags& tags, CellKind kind) {
  if (amenityName(tags)) return true;
  if (kind == CellKind::room) return ownName(tags).has_value();
  return (kind == CellKind::corridor || kind == CellKind::area) &&
         (tags.has("name") || platformName(tags));
}

}  // namespace

OsmPlan::OsmPlan(OsmExtract& extract) : extract_(extract), levels_(extract) {}

FloorPlan OsmPlan::make() {
  for (const OsmWay& way : extract_.ways) addWay(way);
  for (const OsmArea& area : extract_.areas) addArea(area);
  for (const OsmNode& node : extract_.nodes) addNode(node);
  addPassing();
  addPlatforms(platforms_, plan_);
  addShafts(plan_, {cellNodes_, closedCells_, steps_, std::move(lifts_)});
  findStairs();
  return std::move(plan_);
}

void OsmPlan::addWay(const OsmWay& way) {
  switch (roleOf(way.tags, way.closed)) {
    case WayRole::line:
      return addLine(way);
    case WayRole::cell:
      return addCell(way.source(), way.tags, {{positionsOf(way)}}, nodesOf(way));
    case WayRole::wall:
      return addWall(way.source(), way.tags, positionsOf(way));
    case WayRole::door:
      return addDoorLine(way);
    case WayRole::levelOutline:
      return addLevelOutline(way.source(), way.tags);
    case WayRole::site:
      return addSite(way);
    case WayRole::none:
      if (isUnfinished(way.tags, way.closed)) extract_.remarks.add(kNotClosed, way.source());
  }
}

void OsmPlan::addLine(const OsmWay& way) {
  if (isClosedToPeople(way.tags)) return extract_.remarks.add(kClosedLine, way.source());
  PlanLine line = lineOf(way.tags);
  line.source = way.source();
  line.vertices = way.corners;
  for (PlanLevelSet& levels : levels_.ofLine(way)) {
    line.levels = std::move(levels);
    if (line.levels == PlanLevelSet{0} && passesOverOrUnder(way.tags)) {
      passing_.push_back(line);
      continue;
    }
    if (way.tags["highway"] == "steps") steps_.push_back(plan_.lines.size());
    plan_.lines.push_back(line);
    if (auto platform = platformOf(way, plan_, plan_.lines.size() - 1)) {
      platforms_.push_back(std::move(*platform));
    }
  }
}

void OsmPlan::addCell(const std::string& source, const OsmTags& tags,
                      std::vector<std::vector<std::vector<Coordinate>>> polygons,
                      std::vector<std::int64_t> nodes) {
  PlanCell cell;
  cell.source = source;
  cell.kind = cellKindOf(tags);
  cell.levels = levels_.ofArea(source, tags);
  cell.polygons = std::move(polygons);
  cell.walled = isWalled(tags, cell.kind);
  cell.stepFree = stepFreeOf(tags);
  cell.isPlace = isPlaceCell(tags, cell.kind);
  cell.name = ownName(tags);
  if (!cell.name) cell.name = amenityName(tags);
  cell.category = categoryOf(tags);
  cell.further = furtherOf(source, tags);
  plan_.cells.push_back(std::move(cell));
  cellNodes_.push_back(std::move(nodes));
  closedCells_.push_back(isClosedToPeople(tags));
}

void OsmPlan::addArea(const OsmArea& area) {
  switch (roleOf(area.tags, true)) {
    case WayRole::wall:
      for (const auto& polygon : area.polygons) {
        for (const auto& ring : polygon) addWall(area.source(), area.tags, ring);
      }
      return;
    case WayRole::levelOutline:
      return addLevelOutline(area.source(), area.tags);
    case WayRole::line:  // a multipolygon is floor, even without area=yes
    case WayRole::cell:
      return addCell(area.source(), area.tags, area.polygons, area.nodes);
    default:
      return;
  }
}

void OsmPlan::addWall(const std::string& source, const OsmTags& tags,
                      std::vector<Coordinate> positions) {
  plan_.walls.push_back({source, levels_.ofArea(source, tags), std::move(positions)});
}

void OsmPlan::addDoorLine(const OsmWay& way) {
  PlanDoor door;
  door.source = way.source();
  door.levels = levels_.ofArea(way.source(), way.tags);
  door.positions = positionsOf(way);
  door.passable = isPassable(way.tags);
  door.entrance = isEntrance(way.tags);
  door.stepFree = doorStepFree(way.tags);
  if (way.tags.has("name")) door.name = std::string(way.tags["name"]);
  plan_.doors.push_back(std::move(door));
}

void OsmPlan::addLevelOutline(const std::string& source, const OsmTags& tags) {
  const PlanLevelSet levels = levels_.ofArea(source, tags);
  if (levels.size() != 1) return;
  PlanLevel level;
  level.level = levels.front();
  const auto known = std::find_if(plan_.levels.begin(), plan_.levels.end(),
                                  [&](const PlanLevel& each) { return each.level == level.level; });
  if (known != plan_.levels.end()) return;
  if (tags.has("level:ref")) level.source = std::string(tags["level:ref"]);
  level.name = tags.has("name") ? std::string(tags["name"]) : level.source;
  plan_.levels.push_back(std::move(level));
}

void OsmPlan::addSite(const OsmWay& way) {
  const std::size_t count = way.corners.size() - (way.closed ? 1 : 0);
  Coordinate middle;
  for (std::size_t i = 0; i < count; ++i) {
    middle.latitude += way.corners[i].coordinate.latitude / static_cast<double>(count);
    middle.longitude += way.corners[i].coordinate.longitude / static_cast<double>(count);
  }
  plan_.places.push_back({way.source(), std::string(way.tags["name"]),
                          levels_.ofArea(way.source(), way.tags), middle, false,
                          furtherOf(way.source(), way.tags)});
}

void OsmPlan::addNode(const OsmNode& node) {
  if (isLift(node.tags)) addLift(node);
  if (isDoor(node.tags)) addDoor(node);
  if (isEntrance(node.tags)) return addPlace(node, entranceName(node.tags), true);
  if (const auto name = isAmenity(node.tags) ? amenityName(node.tags) : std::nullopt) {
    addPlace(node, *name, false);
  }
}

void OsmPlan::addLift(const OsmNode& node) {
  if (isClosedToPeople(node.tags)) return extract_.remarks.add(kClosedLift, node.source());
  PlanShaft shaft;
  shaft.source = node.source();
  shaft.levels = levels_.ofLift(node);
  shaft.vertex = PlanVertex{node.id, node.coordinate};
  shaft.stepFree = stepFreeOf(node.tags);
  lifts_.push_back(std::move(shaft));
}

void OsmPlan::addDoor(const OsmNode& node) {
  PlanDoor door;
  door.source = node.source();
  door.levels = levels_.ofNode(node);
  door.positions = {node.coordinate};
  const std::string_view width = node.tags[node.tags.has("door:width") ? "door:width" : "width"];
  const auto metres = parseLength(width);
  if (!metres && !width.empty()) extract_.remarks.add(kWidth, door.source);
  door.width = metres.value_or(door.width);
  door.passable = isPassable(node.tags);
  door.entrance = isEntrance(node.tags);
  door.stepFree = doorStepFree(node.tags);
  door.node = node.id;
  if (node.tags.has("name")) door.name = std::string(node.tags["name"]);
  plan_.doors.push_back(std::move(door));
}

void OsmPlan::addPlace(const OsmNode& node, std::string name, bool entrance) {
  plan_.places.push_back({node.source(), std::move(name), levels_.ofNode(node), node.coordinate,
                          entrance, furtherOf(node.source(), node.tags)});
}

/// What of bridges and tunnels without a level is not over or under the plan's own floor is taken
/// as it is drawn, for the ways outdoors to hang together.
void OsmPlan::addPassing() {
  for (const PlanLine& line : passing_) {
    std::vector<PlanLine> pieces = piecesBeside(line, plan_);
    const bool whole = pieces.size() == 1 && pieces[0].vertices.size() == line.vertices.size();
    if (!whole) extract_.remarks.add(kPassesBy, line.source);
    for (PlanLine& piece : pieces) plan_.lines.push_back(std::move(piece));
  }
}

/// A path on several levels that runs through a stairwell is stairs.
void OsmPlan::findStairs() {
  for (PlanLine& line : plan_.lines) {
    if (line.kind != ConnectionKind::path || line.levels.size() < 2) continue;
    const std::size_t middle = line.vertices.size() / 2;
    const Coordinate a = line.vertices[middle - 1].coordinate;
    const Coordinate b = line.vertices[middle].coordinate;
    const Coordinate point{(a.latitude + b.latitude) / 2, (a.longitude + b.longitude) / 2};
    const bool stairs = std::any_of(plan_.cells.begin(), plan_.cells.end(), [&](const auto& cell) {
      return cell.kind == CellKind::stairs && shareLevel(cell.levels, line.levels) &&
             liesIn(cell, point);
    });
    if (stairs) line.kind = ConnectionKind::stairs;
  }
}

}  // namespace KorvaniTools
