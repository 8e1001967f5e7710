#include "FloorPlan/PlanBuilding.hpp"

#include <algorithm>
#include <cmath>
#include <memory>
#include <set>

#include "FloorPlan/FloorBuilding.hpp"
#include "FloorPlan/LineLevels.hpp"
#include "FloorPlan/LineNetwork.hpp"
#include "FloorPlan/PlanChecks.hpp"
#include "FloorPlan/PlanDetail.hpp"
#include "Support/InputError.hpp"
#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

constexpr double kLevelHeight = 3;       // metres between levels whose numbers differ by 1
constexpr double kLeastDistance = 0.01;  // metres; an edge must have a length
constexpr std::int64_t kWallStrength = 100;
constexpr double kRegionMargin = 5;  // metres
constexpr double kAtDoor = 0.5;      // metres from a line's end to a door that it leads to

const char* kindName(CellKind kind) {
  switch (kind) {
    case CellKind::room:
      return "room";
    case CellKind::corridor:
      return "corridor";
    case CellKind::area:
      return "area";
    case CellKind::stairs:
      return "stairs";
    case CellKind::elevator:
      return "elevator";
    case CellKind::escalator:
      return "escalator";
    case CellKind::ramp:
      return "ramp";
    case CellKind::closed:
      return "closed";
  }
  return "room";
}

/// Answers on which levels cells and doors lie at a coordinate.
class LevelFinder {
 public:
  LevelFinder(const FloorPlan& plan, const PlanLevels& levels, const LocalFrame& frame,
              const Geos& geos)
      : plan_(plan),
        levels_(levels),
        frame_(frame),
        geos_(geos),
        cellIndex_(geos),
        doorIndex_(geos) {
    for (std::size_t i = 0; i < plan.cells.size(); ++i) {
      shapes_.push_back(cellShape(plan.cells[i], frame, geos).shape);
      for (const Shape& polygon : geos.polygonsOf(shapes_.back())) {
        cellIndex_.insert(i, geos.ringsOf(polygon).front());
      }
    }
    for (std::size_t i = 0; i < plan.doors.size(); ++i) {
      if (plan.doors[i].positions.empty()) continue;
      const GroundPoint at = frame.metres(plan.doors[i].positions.front());
      doorIndex_.insert(i, at, at);
    }
  }

  LevelsHere at(Coordinate coordinate) const {
    LevelsHere result;
    const GroundPoint at = frame_.metres(coordinate);
    const Shape point = geos_.point(at);
    for (const std::size_t i : cellIndex_.near(at, at, 0)) {
      const CellKind kind = plan_.cells[i].kind;
      // A stairwell is on all of its levels, and tells nothing about the ends of its stairs.
      const bool tells =
          kind == CellKind::room || kind == CellKind::corridor || kind == CellKind::area;
      if (!(tells || kind == CellKind::stairs) || !geos_.intersects(point, shapes_[i])) continue;
      addLevels(plan_.cells[i].levels, result.floor);
      if (tells) addLevels(plan_.cells[i].levels, result.told);
    }
    for (const std::size_t i : doorIndex_.near(at, at, kAtDoor)) {
      addLevels(plan_.doors[i].levels, result.told);
      addLevels(plan_.doors[i].levels, result.floor);
    }
    return result;
  }

 private:
  void addLevels(const PlanLevelSet& levels, std::set<std::int64_t>& result) const {
    const auto whole = levels_.of(levels);
    result.insert(whole.begin(), whole.end());
  }

  const FloorPlan& plan_;
  const PlanLevels& levels_;
  const LocalFrame& frame_;
  const Geos& geos_;
  BoxIndex cellIndex_;
  BoxIndex doorIndex_;
  std::vector<Shape> shapes_;
};

class BuildingMaker {
 public:
  BuildingMaker(const FloorPlan& plan, const ConnectionTable& table, const PlanOptions& options,
                PlanReport& report)
      : plan_(plan),
        table_(table),
        options_(options),
        report_(report),
        levels_(plan, report.remarks),
        frame_(middleOf(plan)) {}

  Building make() {
    addHead();
    noteUnusedLevels(plan_, levels_, report_.remarks);
    addLines();
    const auto stops = addShafts(plan_, levels_, frame_, geos_, graph_, report_.remarks);
    const FloorInput input{plan_, levels_, frame_, geos_, options_, drawnSources_, stops};
    for (const auto& [source, level] : levels_.all()) {
      floors_.push_back(std::make_unique<FloorBuilding>(input, level, graph_, report_));
      floors_.back()->build();
    }
    addNodesAndEdges();
    addRegions();
    addWalls();
    addPlaces();
    addRooms();
    noteShutRooms();
    noteLonelyShafts();
    return std::move(building_);
  }

 private:
  void addHead() {
    building_.name = plan_.name;
    building_.attribution = plan_.attribution;
    building_.licence = plan_.licence;
    building_.levelNames = levels_.names(plan_);
    for (const auto& [source, level] : levels_.all()) report_.levels.push_back({source, level});
  }

  void addLines() {
    const LevelFinder finder(plan_, levels_, frame_, geos_);
    const auto tracks = lineTracks(
        plan_, levels_, [&](Coordinate at) { return finder.at(at); }, report_.remarks);
    addLineNetwork(plan_, tracks, frame_, graph_, drawnSources_);
    report_.lineNodes = graph_.nodes().size();
  }

  void addNodesAndEdges() {
    std::vector<std::int64_t> ids(graph_.nodes().size(), -1);
    for (std::size_t i = 0; i < graph_.nodes().size(); ++i) {
      if (!graph_.hasEdges(i)) continue;
      ids[i] = static_cast<std::int64_t>(building_.nodes.size());
      BuildingNode node;
      node.id = ids[i];
      node.level = graph_.nodes()[i].level;
      node.coordinate = frame_.coordinate(graph_.nodes()[i].at);
      building_.nodes.push_back(node);
    }
    for (const PlanGraph::Edge& edge : graph_.edges()) {
      building_.edges.push_back(edgeOf(edge, ids[edge.from], ids[edge.to]));
    }
    report_.areaNodes =
        building_.nodes.size() - std::min(building_.nodes.size(), report_.lineNodes);
    report_.edges = building_.edges.size();
  }

  BuildingEdge edgeOf(const PlanGraph::Edge& edge, std::int64_t from, std::int64_t to) const {
    const Connection& row = table_.of(edge.kind);
    BuildingEdge made;
    made.from = from;
    made.to = to;
    made.oneway = edge.oneway;
    made.distance = distanceOf(from, to);
    made.multiplicator = row.multiplicator;
    made.barrierFree =
        edge.stepFree == StepFree::unknown ? row.barrierFree : edge.stepFree == StepFree::yes;
    made.type = row.type;
    return made;
  }

  // The length of the slope, a level counted as 3 m. Without it the engine would add the height
  // of one level to every edge, within a level and across ten alike, which makes of two ways the
  // one with fewer nodes the shorter.
  double distanceOf(std::int64_t from, std::int64_t to) const {
    const BuildingNode& a = building_.nodes[static_cast<std::size_t>(from)];
    const BuildingNode& b = building_.nodes[static_cast<std::size_t>(to)];
    const double ground = KorvaniPlatform::greatCircleDistance(a.coordinate, b.coordinate);
    const double height = kLevelHeight * (levels_.source(b.level) - levels_.source(a.level));
    return std::max(std::hypot(ground, height), kLeastDistance);
  }

  void addRegions() {
    for (const auto& floor : floors_) {
      const std::int64_t level = floor->floor().level;
      BoundingBox box;
      for (const BuildingNode& node : building_.nodes) {
        if (node.level == level) box.include(frame_.metres(node.coordinate));
      }
      for (const GroundLine& wall : floor->walls()) box.include(wall);
      for (const FloorCell& cell : floor->floor().cells) {
        for (const Shape& polygon : geos_.polygonsOf(cell.shape)) {
          box.include(geos_.ringsOf(polygon).front());
        }
      }
      if (box.empty()) continue;
      BuildingRegion region;
      region.level = level;
      region.rectangle.include(
          frame_.coordinate({box.low.x - kRegionMargin, box.low.y - kRegionMargin}));
      region.rectangle.include(
          frame_.coordinate({box.high.x + kRegionMargin, box.high.y + kRegionMargin}));
      regionOf_[level] = building_.regions.size();
      building_.regions.push_back(region);
    }
    for (BuildingNode& node : building_.nodes) node.region = regionOf_.at(node.level);
  }

  void addWalls() {
    for (const auto& floor : floors_) {
      for (const GroundLine& wall : floor->walls()) {
        BuildingObstacle obstacle;
        obstacle.level = floor->floor().level;
        obstacle.strength = kWallStrength;
        obstacle.lines.push_back({frame_.coordinates(wall), {regionOf_.at(obstacle.level)}});
        building_.obstacles.push_back(std::move(obstacle));
      }
    }
    report_.wallLines = building_.obstacles.size();
  }

  void addPlaces() {
    for (const auto& floor : floors_) {
      for (const FloorCell& cell : floor->floor().cells) {
        const PlanCell& drawn = plan_.cells[cell.cell];
        if (!drawn.isPlace || !drawn.name) continue;
        const auto at = placeOf(*floor, cell);
        if (!at) continue;
        building_.places.push_back({*drawn.name, floor->floor().level, *at, false, drawn.further});
      }
    }
    for (const PlanPlace& place : plan_.places) {
      for (const std::int64_t level : levels_.of(place.levels)) {
        building_.places.push_back(
            {place.name, level, place.coordinate, place.entrance, place.further});
      }
    }
  }

  std::optional<Coordinate> placeOf(const FloorBuilding& floor, const FloorCell& cell) const {
    if (const auto node = floor.middleOf(cell.cell)) {
      return frame_.coordinate(graph_.nodes()[*node].at);
    }
    if (plan_.cells[cell.cell].displayPoint) return plan_.cells[cell.cell].displayPoint;
    const auto inside = geos_.innerPoint(cell.shape);
    return inside ? std::optional(frame_.coordinate(*inside)) : std::nullopt;
  }

  void addRooms() {
    for (const auto& floor : floors_) {
      for (const FloorCell& cell : floor->floor().cells) {
        const PlanCell& drawn = plan_.cells[cell.cell];
        for (const Shape& polygon : geos_.polygonsOf(cell.shape)) {
          Room room;
          room.level = floor->floor().level;
          room.name = drawn.name;
          room.category = drawn.category ? *drawn.category : kindName(drawn.kind);
          for (const GroundLine& ring : geos_.ringsOf(polygon)) {
            room.rings.push_back(frame_.coordinates(ring));
          }
          building_.rooms.push_back(std::move(room));
        }
      }
    }
  }

  void noteShutRooms() {
    std::set<std::size_t> shut;
    for (const auto& floor : floors_) {
      shut.insert(floor->shutCells().begin(), floor->shutCells().end());
    }
    for (const std::size_t cell : shut) {
      report_.roomsWithoutDoor.push_back(plan_.cells[cell].source);
    }
  }

  void noteLonelyShafts() {
    std::map<std::size_t, std::vector<double>> lonely;
    for (const auto& floor : floors_) {
      const double level = levels_.source(floor->floor().level);
      for (const std::size_t shaft : floor->lonelyShafts()) lonely[shaft].push_back(level);
    }
    for (const auto& [shaft, levels] : lonely) {
      std::string words = plan_.shafts[shaft].source + " meets nothing to walk on on level";
      if (levels.size() > 1) words += 's';
      const char* separator = " ";
      for (const double level : levels) {
        words += separator + decimals(level);
        separator = ", ";
      }
      report_.remarks.push_back(std::move(words));
    }
  }

  const FloorPlan& plan_;
  const ConnectionTable& table_;
  const PlanOptions& options_;
  PlanReport& report_;
  PlanLevels levels_;
  LocalFrame frame_;
  Geos geos_;
  PlanGraph graph_;
  std::vector<std::string> drawnSources_;
  std::vector<std::unique_ptr<FloorBuilding>> floors_;
  std::map<std::int64_t, std::size_t> regionOf_;
  Building building_;
};

}  // namespace

Building makeBuilding(const FloorPlan& plan, const ConnectionTable& table,
                      const PlanOptions& options, PlanReport& report) {
  const auto mended = withoutBadPositions(plan, report.remarks);
  const FloorPlan& sound = mended ? *mended : plan;
  const auto thinned = withoutNeedlessDetail(sound, report.remarks);
  try {
    return BuildingMaker(thinned ? *thinned : sound, table, options, report).make();
  } catch (const GeosError& error) {
    throw InputError("the floor plan cannot be worked with: " + std::string(error.what()));
  }
}

}  // namespace KorvaniTools
