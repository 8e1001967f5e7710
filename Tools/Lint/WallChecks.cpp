#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <utility>

#include "Lint/Checks.hpp"
#include "Lint/LintSubject.hpp"
#include "Lint/WallIndex.hpp"
#include "Platform/Location.hpp"
#include "Platform/MapPoint.hpp"

namespace KorvaniTools {
namespace {

using KorvaniPlatform::greatCircleDistance;
using KorvaniPlatform::MKMapPointForCoordinate;

/// A wall that is this near to an edge's end, in metres, is touched by the node; one that is this
/// near to the edge itself for a while has the edge in it.
constexpr double kTouchMetres = 0.01;

/// So many hits of one edge are told at most, the first ones. More say nothing new.
constexpr std::size_t kToldHits = 50;

/// Where an edge meets a wall.
struct Hit {
  double fraction;  ///< of the way from the edge's start
  std::size_t obstacle;
  bool along;  ///< the edge runs along in the wall
};

/// `metres` in units of the map plane, where the line from `a` to `b` is.
double planeUnits(double metres, MapPoint a, MapPoint b) {
  const double length = KorvaniPlatform::MKMetersBetweenMapPoints(a, b);
  return length > 0 ? metres * std::hypot(b.x - a.x, b.y - a.y) / length : 0;
}

/// The walls of every level, those of all its regions together: an edge may lead from one region
/// into the next.
class LevelWalls {
 public:
  explicit LevelWalls(const Building& building) : building_(building) {}

  std::vector<Hit> hits(std::int64_t level, MapPoint a, MapPoint b) {
    const WallIndex& walls = wallsOf(level);
    const double touch = planeUnits(kTouchMetres, a, b);
    std::vector<Hit> hits;
    for (const std::size_t near : walls.near(a, b)) {
      const WallPiece& wall = walls.pieces()[near];
      const auto along = whereLineRunsAlong(a, b, wall, touch);
      const auto fraction = along ? along : whereLineMeets(a, b, wall);
      if (fraction) hits.push_back({*fraction, wall.obstacle, along.has_value()});
    }
    std::stable_sort(hits.begin(), hits.end(),
                     [](const Hit& one, const Hit& two) { return one.fraction < two.fraction; });
    return hits;
  }

 private:
  const WallIndex& wallsOf(std::int64_t level) {
    const auto found = walls_.find(level);
    if (found != walls_.end()) return found->second;
    const auto isThere = [level](const BuildingObstacle& obstacle, const ObstacleLine&) {
      return obstacle.level == level;
    };
    return walls_.emplace(level, WallIndex(wallPieces(building_, isThere))).first->second;
  }

  const Building& building_;
  std::map<std::int64_t, WallIndex> walls_;
};

/// The only node of the edge that walls meet it at; none when they meet it in between, or at both.
const BuildingNode* touchingNode(const LintSubject& subject, const BuildingEdge& edge,
                                 const std::vector<Hit>& hits) {
  const BuildingNode& from = subject.node(edge.from);
  const BuildingNode& to = subject.node(edge.to);
  const double touch = kTouchMetres / greatCircleDistance(from.coordinate, to.coordinate);
  if (hits.back().fraction < touch) return &from;
  if (hits.front().fraction > 1 - touch) return &to;
  return nullptr;
}

std::string wallsWords(const std::vector<std::size_t>& walls, bool isAll) {
  const std::string count = std::to_string(walls.size());
  return (!isAll              ? "at least " + count + " walls ("
          : walls.size() == 1 ? "a wall ("
                              : count + " walls (") +
         featureWords(walls) + ')';
}

std::string wallMessage(const LintSubject& subject, const BuildingEdge& edge,
                        const std::vector<Hit>& hits, const std::string& wall) {
  if (const BuildingNode* node = touchingNode(subject, edge, hits)) {
    return edgeWords(edge) + " touches " + wall + " at node " + std::to_string(node->id) +
           ", which is as good as running through it: move the node off the wall, or end the wall "
           "before it.";
  }
  const bool along =
      std::all_of(hits.begin(), hits.end(), [](const Hit& hit) { return hit.along; });
  if (along) {
    return edgeWords(edge) + " runs along in " + wall +
           ": lead it beside the wall, or leave a gap in the wall.";
  }
  return edgeWords(edge) + " runs through " + wall +
         ": lead it through a door, or leave a gap in the wall.";
}

LintFinding wallFinding(const LintSubject& subject, const BuildingEdge& edge,
                        const std::vector<Hit>& hits) {
  LintFinding finding = edgeFinding(subject, edge);
  const MapPoint a = MKMapPointForCoordinate(subject.node(edge.from).coordinate);
  const MapPoint b = MKMapPointForCoordinate(subject.node(edge.to).coordinate);
  std::vector<std::size_t> walls;
  finding.at.clear();
  for (std::size_t i = 0; i < std::min(hits.size(), kToldHits); ++i) {
    const double fraction = hits[i].fraction;
    finding.at.push_back(KorvaniPlatform::MKCoordinateForMapPoint(
        {a.x + fraction * (b.x - a.x), a.y + fraction * (b.y - a.y)}));
    const std::size_t feature = subject.building().obstacles[hits[i].obstacle].feature;
    if (std::find(walls.begin(), walls.end(), feature) == walls.end()) walls.push_back(feature);
  }
  finding.features.insert(finding.features.end(), walls.begin(), walls.end());
  finding.message = wallMessage(subject, edge, hits, wallsWords(walls, hits.size() <= kToldHits));
  return finding;
}

bool hasExtent(const ObstacleLine& line) {
  return std::any_of(line.positions.begin(), line.positions.end(), [&](const Coordinate& position) {
    return position != line.positions.front();
  });
}

/// Those of at least two positions; a single one is no line.
std::vector<std::vector<Coordinate>> drawableLines(std::vector<std::vector<Coordinate>> lines) {
  std::erase_if(lines, [](const auto& line) { return line.size() < 2; });
  return lines;
}

}  // namespace

LintFindings findEdgesThroughWalls(LintSubject& subject) {
  LintFindings findings;
  LevelWalls walls(subject.building());
  for (const BuildingEdge& edge : subject.building().edges) {
    const BuildingNode& from = subject.node(edge.from);
    const BuildingNode& to = subject.node(edge.to);
    if (from.level != to.level) continue;
    const auto hits = walls.hits(from.level, MKMapPointForCoordinate(from.coordinate),
                                 MKMapPointForCoordinate(to.coordinate));
    if (!hits.empty()) findings.push_back(wallFinding(subject, edge, hits));
  }
  return findings;
}

LintFindings findObstaclesWithoutExtent(LintSubject& subject) {
  LintFindings findings;
  for (const BuildingObstacle& obstacle : subject.building().obstacles) {
    for (const ObstacleLine& line : obstacle.lines) {
      if (hasExtent(line)) continue;
      LintFinding finding;
      finding.severity = LintSeverity::note;
      finding.levels = {obstacle.level};
      finding.at = {line.positions.front()};
      finding.features = {obstacle.feature};
      finding.message = "The obstacle of feature " + std::to_string(obstacle.feature) +
                        " is a single spot, which stops nobody: draw it as a line, or remove it.";
      findings.push_back(std::move(finding));
    }
  }
  return findings;
}

LintFindings findObstaclesOutsideRegions(LintSubject& subject) {
  LintFindings findings;
  for (const BuildingObstacle& obstacle : subject.building().obstacles) {
    if (obstacle.droppedLines.empty()) continue;
    LintFinding finding;
    finding.severity = LintSeverity::warning;
    finding.levels = {obstacle.level};
    for (const auto& line : obstacle.droppedLines) finding.at.push_back(line.front());
    finding.lines = drawableLines(obstacle.droppedLines);
    finding.features = {obstacle.feature};
    finding.message = (obstacle.lines.empty() ? "The obstacle" : "A part of the obstacle") +
                      std::string(" of feature ") + std::to_string(obstacle.feature) +
                      " lies outside every region of level " + std::to_string(obstacle.level) +
                      ", so nobody notices it: widen the region, or mend its level.";
    findings.push_back(std::move(finding));
  }
  return findings;
}

}  // namespace KorvaniTools
