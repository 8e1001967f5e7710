#include "FloorPlan/FloorWalls.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

#include "FloorPlan/DoorSides.hpp"

namespace KorvaniTools {
namespace {

constexpr double kDoorTolerance = kThickestWall + 0.01;  // metres from a door to walls it opens
constexpr double kGapDepth = 0.3;       // to each side of the wall; neighbours' walls are two
constexpr double kCornerMargin = 0.05;  // left standing, so that the wall beyond stays whole
constexpr double kCornerTurn = 0.6;     // radians
constexpr double kAtCorner = 0.1;
constexpr double kLineGap = 1.0;
constexpr double kShutTolerance = 0.75;
constexpr double kPassingBy = 0.01;  // metres; what rounding may make of passing by

struct Spot {
  std::size_t piece = 0;
  GroundPoint at;
  double distance = std::numeric_limits<double>::infinity();
};

Spot nearestSpot(GroundPoint p, const GroundLine& line) {
  Spot best;
  for (std::size_t i = 0; i + 1 < line.size(); ++i) {
    const GroundPoint at = between(line[i], line[i + 1], nearestShare(p, line[i], line[i + 1]));
    const double distance = groundDistance(p, at);
    if (distance < best.distance) best = {i, at, distance};
  }
  return best;
}

double turnBetween(GroundPoint a, GroundPoint b, GroundPoint c) {
  const double cross = (b.x - a.x) * (c.y - b.y) - (b.y - a.y) * (c.x - b.x);
  const double dot = (b.x - a.x) * (c.x - b.x) + (b.y - a.y) * (c.y - b.y);
  return std::abs(std::atan2(cross, dot));
}

/// Walks along a line from one of its spots until `reach` metres, a corner or the end.
class LineWalk {
 public:
  LineWalk(const GroundLine& line, bool closed, int direction)
      : line_(line), closed_(closed), direction_(direction) {}

  GroundLine from(const Spot& spot, double reach) const {
    GroundLine path{spot.at};
    double walked = 0;
    std::size_t next = direction_ > 0 ? spot.piece + 1 : spot.piece;
    for (std::size_t steps = 0; steps < line_.size(); ++steps) {
      const double length = groundDistance(path.back(), line_[next]);
      if (walked + length >= reach) {
        path.push_back(between(path.back(), line_[next], (reach - walked) / length));
        return path;
      }
      walked += length;
      const auto after = following(next);
      const bool corner =
          walked > kAtCorner &&
          (!after || turnBetween(path.back(), line_[next], line_[*after]) > kCornerTurn);
      if (corner && length > kCornerMargin) {
        path.push_back(between(path.back(), line_[next], (length - kCornerMargin) / length));
      } else if (length > 0) {
        path.push_back(line_[next]);
      }
      if (corner || !after) return path;
      next = *after;
    }
    return path;
  }

 private:
  std::optional<std::size_t> following(std::size_t at) const {
    const std::size_t last = line_.size() - 1;
    if (direction_ > 0) {
      if (at < last) return at + 1;
      return closed_ ? std::optional<std::size_t>(1) : std::nullopt;
    }
    if (at > 0) return at - 1;
    return closed_ && last > 0 ? std::optional<std::size_t>(last - 1) : std::nullopt;
  }

  const GroundLine& line_;
  bool closed_;
  int direction_;
};

GroundLine stretchAround(const GroundLine& line, bool closed, const Spot& spot, double half) {
  GroundLine stretch = LineWalk(line, closed, -1).from(spot, half);
  std::reverse(stretch.begin(), stretch.end());
  const GroundLine onwards = LineWalk(line, closed, 1).from(spot, half);
  stretch.insert(stretch.end(), onwards.begin() + 1, onwards.end());
  return stretch;
}

std::optional<GroundPoint> direction(GroundPoint a, GroundPoint b) {
  const double length = groundDistance(a, b);
  if (!(length > 1e-6)) return std::nullopt;
  return GroundPoint{(b.x - a.x) / length, (b.y - a.y) / length};
}

double lengthOf(const GroundLine& line) {
  double length = 0;
  for (std::size_t i = 0; i + 1 < line.size(); ++i) length += groundDistance(line[i], line[i + 1]);
  return length;
}

GroundPoint middleOf(const GroundLine& line) {
  double left = lengthOf(line) / 2;
  for (std::size_t i = 0; i + 1 < line.size(); ++i) {
    const double length = groundDistance(line[i], line[i + 1]);
    if (length >= left && length > 0) return between(line[i], line[i + 1], left / length);
    left -= length;
  }
  return line.back();
}

}  // namespace

FloorWalls::FloorWalls(const FloorPlan& plan, const Floor& floor, const Geos& geos)
    : geos_(geos), index_(geos) {
  for (const FloorCell& cell : floor.cells) {
    if (!cell.enclosed) continue;
    for (const Shape& polygon : geos.polygonsOf(cell.shape)) {
      for (GroundLine& ring : geos.ringsOf(polygon)) {
        add(std::move(ring), true, plan.cells[cell.cell].source);
      }
    }
  }
  for (const FloorWall& wall : floor.walls) {
    const bool closed = groundDistance(wall.line.front(), wall.line.back()) < 1e-6;
    add(wall.line, closed, plan.walls[wall.wall].source);
  }
}

void FloorWalls::add(GroundLine line, bool closed, const std::string& source) {
  if (line.size() < 2 || !(lengthOf(line) > 0)) return;
  index_.insert(outlines_.size(), line);
  outlines_.push_back({std::move(line), closed, &source});
}

void FloorWalls::place(FloorDoor& door) const {
  if (door.line.size() > 1 && lengthOf(door.line) > kAtCorner) {
    door.at = middleOf(door.line);
    door.along = direction(door.line.front(), door.line.back());
    const Spot middle = nearestSpot(door.at, door.line);
    const double half = lengthOf(door.line) / 2 - kCornerMargin;
    door.gap = geos_.band(geos_.line(stretchAround(door.line, false, middle, half)), kGapDepth);
    return;
  }
  const std::vector<Near> near = outlinesAt(door.line.front());
  if (near.empty()) return;
  const double half = door.width / 2;
  std::vector<Shape> gaps;
  for (const Near& outline : near) {
    const GroundLine stretch = stretchAround(outline.outline->line, outline.outline->closed,
                                             {outline.piece, outline.at, 0}, half);
    if (gaps.empty()) {
      door.at = outline.at;
      door.along = direction(stretch.front(), stretch.back());
    } else if (door.along) {
      // Only what lies behind each other is one wall; what begins beside it is another.
      const double beside =
          (outline.at.x - door.at.x) * door.along->x + (outline.at.y - door.at.y) * door.along->y;
      if (std::abs(beside) > kAtCorner) continue;
    }
    if (lengthOf(stretch) > 0) gaps.push_back(geos_.band(geos_.line(stretch), kGapDepth));
  }
  if (!gaps.empty()) door.gap = geos_.united(std::move(gaps));
}

std::vector<FloorWalls::Near> FloorWalls::outlinesAt(GroundPoint at) const {
  std::vector<Near> result;
  for (const std::size_t i : index_.near(at, at, kDoorTolerance)) {
    const Spot spot = nearestSpot(at, outlines_[i].line);
    if (spot.distance > kDoorTolerance) continue;
    result.push_back({&outlines_[i], spot.piece, spot.at, spot.distance});
  }
  std::stable_sort(result.begin(), result.end(),
                   [](const Near& a, const Near& b) { return a.distance < b.distance; });
  return result;
}

void FloorWalls::open(const Shape& gap) {
  if (gap) gaps_.push_back(geos_.copy(gap));
}

std::vector<GroundLine> FloorWalls::lines() const {
  std::vector<GroundLine> lines;
  for (const Outline& outline : outlines_) lines.push_back(outline.line);
  std::vector<Shape> gaps;
  for (const Shape& gap : gaps_) gaps.push_back(geos_.copy(gap));
  return geos_.mergedLines(lines, geos_.united(std::move(gaps)));
}

std::size_t FloorWalls::openForLines(const Floor& floor, const PlanGraph& graph,
                                     const std::vector<std::string>& drawnSources,
                                     std::vector<std::string>& remarks) {
  std::vector<Shape> walls;
  for (const GroundLine& line : lines()) walls.push_back(geos_.line(line));
  if (walls.empty()) return 0;
  const Shape standing = geos_.united(std::move(walls));
  const PreparedShape near(geos_, geos_.copy(standing));
  const std::size_t before = gaps_.size();
  for (std::size_t i = 0; i < graph.drawn().size(); ++i) {
    const PlanGraph::Node& from = graph.nodes()[graph.drawn()[i].from];
    const PlanGraph::Node& to = graph.nodes()[graph.drawn()[i].to];
    if (from.level != floor.level || to.level != floor.level) continue;
    const Shape piece = geos_.segment(from.at, to.at);
    if (!piece || !near.isWithin(kPassingBy, piece)) continue;
    const Shape crossings = geos_.common(standing, piece);
    openAt(withoutShutDoors(floor, crossings), drawnSources[i], remarks);
    const Shape passed = geos_.common(standing, geos_.grown(piece, 2 * kPassingBy));
    const Shape touching = geos_.minus(geos_.common(geos_.grown(passed, kPassingBy), piece),
                                       geos_.grown(crossings, kLineGap / 2));
    openAt(withoutShutDoors(floor, touching), drawnSources[i], remarks);
  }
  return gaps_.size() - before;
}

Shape FloorWalls::withoutShutDoors(const Floor& floor, const Shape& crossings) const {
  std::vector<Shape> shut;
  if (!geos_.empty(crossings)) {
    for (const GroundPoint& door : floor.shutDoors) {
      Shape point = geos_.point(door);
      if (geos_.distance(point, crossings) <= kShutTolerance) shut.push_back(std::move(point));
    }
  }
  if (shut.empty()) return geos_.copy(crossings);
  return geos_.minus(crossings, geos_.grown(geos_.united(std::move(shut)), kShutTolerance));
}

void FloorWalls::openAt(const Shape& crossing, const std::string& line,
                        std::vector<std::string>& remarks) {
  if (geos_.empty(crossing)) return;
  std::vector<std::pair<GroundPoint, Shape>> spots;
  for (const GroundPoint& at : geos_.pointsOf(crossing)) spots.emplace_back(at, geos_.point(at));
  for (const GroundLine& along : geos_.linesOf(crossing)) {
    spots.emplace_back(middleOf(along), geos_.line(along));
  }
  for (auto& [at, shape] : spots) {
    gaps_.push_back(geos_.grown(shape, kLineGap / 2));
    remarks.push_back(line + " passes a wall where no door is mapped: opened there (" +
                      sourceAt(at) + ")");
  }
}

const std::string& FloorWalls::sourceAt(GroundPoint at) const {
  static const std::string kUnknown = "an unknown cell";
  const std::string* source = &kUnknown;
  double best = kDoorTolerance;
  for (const std::size_t i : index_.near(at, at, kDoorTolerance)) {
    const double distance = nearestSpot(at, outlines_[i].line).distance;
    if (distance >= best) continue;
    best = distance;
    source = outlines_[i].source;
  }
  return *source;
}

}  // namespace KorvaniTools
