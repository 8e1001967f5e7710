#include "Drawing.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>

#include "Building/BuildingGraph.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"

namespace KorvaniTest {

using namespace KorvaniTools;

namespace {

const LocalFrame kFrame(kMiddle);
constexpr double kFar = std::numeric_limits<double>::infinity();

}  // namespace

Coordinate at(GroundPoint point) { return kFrame.coordinate(point); }

GroundPoint metres(Coordinate coordinate) { return kFrame.metres(coordinate); }

GroundLine box(double west, double south, double east, double north) {
  return {{west, south}, {east, south}, {east, north}, {west, north}, {west, south}};
}

std::int64_t Made::node(GroundPoint point, std::int64_t level) const {
  std::int64_t best = -1;
  double distance = 0.3;
  for (const BuildingNode& node : building.nodes) {
    const double away = groundDistance(metres(node.coordinate), point);
    if (node.level != level || away >= distance) continue;
    distance = away;
    best = node.id;
  }
  return best;
}

const BuildingEdge* Made::edge(std::int64_t a, std::int64_t b) const {
  for (const BuildingEdge& edge : building.edges) {
    if ((edge.from == a && edge.to == b) || (edge.from == b && edge.to == a)) return &edge;
  }
  return nullptr;
}

std::optional<double> Made::way(std::int64_t from, std::int64_t to) const {
  if (from < 0 || to < 0) return std::nullopt;
  std::vector<double> distance(building.nodes.size(), kFar);
  distance[static_cast<std::size_t>(from)] = 0;
  bool changed = true;
  const auto relax = [&](std::int64_t a, std::int64_t b, double length) {
    const double sum = distance[static_cast<std::size_t>(a)] + length;
    if (sum >= distance[static_cast<std::size_t>(b)]) return;
    distance[static_cast<std::size_t>(b)] = sum;
    changed = true;
  };
  while (changed) {
    changed = false;
    for (const BuildingEdge& edge : building.edges) {
      relax(edge.from, edge.to, edge.distance.value_or(kFar));
      if (!edge.oneway) relax(edge.to, edge.from, edge.distance.value_or(kFar));
    }
  }
  const double result = distance[static_cast<std::size_t>(to)];
  return result == kFar ? std::nullopt : std::optional(result);
}

bool Made::joined(GroundPoint from, GroundPoint to, std::int64_t levelFrom,
                  std::int64_t levelTo) const {
  return way(node(from, levelFrom), node(to, levelTo)).has_value();
}

bool Made::wallAt(GroundPoint point, std::int64_t level) const {
  for (const BuildingObstacle& obstacle : building.obstacles) {
    if (obstacle.level != level) continue;
    for (const ObstacleLine& wall : obstacle.lines) {
      for (std::size_t i = 0; i + 1 < wall.positions.size(); ++i) {
        const GroundPoint a = metres(wall.positions[i]);
        const GroundPoint b = metres(wall.positions[i + 1]);
        if (groundDistance(point, between(a, b, nearestShare(point, a, b))) < 0.01) return true;
      }
    }
  }
  return false;
}

double Made::wallLength(std::int64_t level) const {
  double length = 0;
  for (const BuildingObstacle& obstacle : building.obstacles) {
    if (obstacle.level != level) continue;
    for (const ObstacleLine& wall : obstacle.lines) {
      for (std::size_t i = 0; i + 1 < wall.positions.size(); ++i) {
        length += groundDistance(metres(wall.positions[i]), metres(wall.positions[i + 1]));
      }
    }
  }
  return length;
}

std::size_t Made::edgesThroughWalls() const {
  std::map<std::int64_t, std::vector<std::shared_ptr<KorvaniNavigation::KRVNavObstacle>>> walls;
  for (const BuildingObstacle& obstacle : building.obstacles) {
    for (const ObstacleLine& line : obstacle.lines) {
      walls[obstacle.level].push_back(
          std::make_shared<KorvaniNavigation::KRVNavObstacle>(line.positions, obstacle.strength));
    }
  }
  std::size_t count = 0;
  for (const BuildingEdge& edge : building.edges) {
    const BuildingNode& from = building.nodes[static_cast<std::size_t>(edge.from)];
    const BuildingNode& to = building.nodes[static_cast<std::size_t>(edge.to)];
    if (from.level != to.level) continue;
    const KorvaniNavigation::ObstacleDetector detector(walls[from.level], {});
    if (detector.isAnyBarrierInBetween(from.coordinate, to.coordinate)) ++count;
  }
  return count;
}

std::size_t Made::nodesOn(std::int64_t level) const {
  return static_cast<std::size_t>(
      std::count_if(building.nodes.begin(), building.nodes.end(),
                    [&](const BuildingNode& node) { return node.level == level; }));
}

bool Made::remarked(const std::string& words) const {
  return std::any_of(report.remarks.begin(), report.remarks.end(), [&](const std::string& remark) {
    return remark.find(words) != std::string::npos;
  });
}

PlanCell& Drawing::cell(const std::string& source, CellKind kind, const GroundLine& ring,
                        PlanLevelSet levels) {
  PlanCell cell;
  cell.source = source;
  cell.kind = kind;
  cell.levels = std::move(levels);
  cell.polygons = {{kFrame.coordinates(ring)}};
  cell.walled = kind != CellKind::area && kind != CellKind::corridor;
  plan.cells.push_back(std::move(cell));
  return plan.cells.back();
}

PlanCell& Drawing::room(const std::string& source, const GroundLine& ring, PlanLevelSet levels) {
  return cell(source, CellKind::room, ring, std::move(levels));
}

PlanCell& Drawing::area(const std::string& source, const GroundLine& ring, PlanLevelSet levels) {
  return cell(source, CellKind::area, ring, std::move(levels));
}

PlanDoor& Drawing::door(const std::string& source, const GroundLine& line, PlanLevelSet levels) {
  PlanDoor door;
  door.source = source;
  door.levels = std::move(levels);
  door.positions = kFrame.coordinates(line);
  plan.doors.push_back(std::move(door));
  return plan.doors.back();
}

void Drawing::wall(const std::string& source, const GroundLine& line, PlanLevelSet levels) {
  plan.walls.push_back({source, std::move(levels), kFrame.coordinates(line)});
}

PlanLine& Drawing::line(const std::string& source, const GroundLine& line, PlanLevelSet levels,
                        ConnectionKind kind) {
  PlanLine made;
  made.source = source;
  made.kind = kind;
  made.levels = std::move(levels);
  for (const GroundPoint& point : line) made.vertices.push_back({key(point), at(point)});
  plan.lines.push_back(std::move(made));
  return plan.lines.back();
}

PlanShaft& Drawing::shaft(const std::string& source, PlanLevelSet levels,
                          std::optional<GroundPoint> point, std::vector<std::size_t> cells) {
  PlanShaft made;
  made.source = source;
  made.levels = std::move(levels);
  made.cells = std::move(cells);
  if (point) made.vertex = PlanVertex{key(*point), at(*point)};
  plan.shafts.push_back(std::move(made));
  return plan.shafts.back();
}

std::int64_t Drawing::key(GroundPoint point) {
  for (std::size_t i = 0; i < keys_.size(); ++i) {
    if (keys_[i].x == point.x && keys_[i].y == point.y) return static_cast<std::int64_t>(i + 1);
  }
  keys_.push_back(point);
  return static_cast<std::int64_t>(keys_.size());
}

Made Drawing::make() const {
  Made made;
  made.building = makeBuilding(plan, table, options, made.report);
  return made;
}

}  // namespace KorvaniTest
