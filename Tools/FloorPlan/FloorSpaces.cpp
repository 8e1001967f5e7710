#include "FloorPlan/FloorSpaces.hpp"

#include <algorithm>
#include <set>

namespace KorvaniTools {
namespace {

constexpr double kGap = 0.1;          // metres between cells that belong together
constexpr double kLeastArea = 0.1;    // square metres; less is a leftover of digitising
constexpr double kLeastWidth = 0.1;   // metres
constexpr double kInside = 0.5;       // share of a cell that must lie in another
constexpr double kOnOutline = 0.1;    // metres
constexpr double kLeastPiece = 0.05;  // metres

GroundLine outerRing(const Geos& geos, const Shape& shape) {
  GroundLine all;
  for (const Shape& polygon : geos.polygonsOf(shape)) {
    const GroundLine ring = geos.ringsOf(polygon).front();
    all.insert(all.end(), ring.begin(), ring.end());
  }
  return all;
}

class SpaceMaker {
 public:
  SpaceMaker(const FloorPlan& plan, const Floor& floor, const Geos& geos)
      : plan_(plan), floor_(floor), geos_(geos), index_(geos) {
    for (std::size_t i = 0; i < floor.cells.size(); ++i) {
      areas_.push_back(geos.area(floor.cells[i].shape));
      rings_.push_back(outerRing(geos, floor.cells[i].shape));
      index_.insert(i, rings_.back());
    }
  }

  std::vector<FloorSpace> make() {
    for (std::size_t i = 0; i < floor_.cells.size(); ++i) {
      if (floor_.cells[i].enclosed && !closed(i)) addRoom(i);
    }
    addOpenFloor();
    return std::move(spaces_);
  }

 private:
  bool closed(std::size_t i) const {
    return plan_.cells[floor_.cells[i].cell].kind == CellKind::closed;
  }

  void addRoom(std::size_t i) {
    std::vector<Shape> inside;
    for (const std::size_t other : near(i)) {
      if (other != i && (floor_.cells[other].enclosed || closed(other)) && liesIn(other, i)) {
        inside.push_back(geos_.copy(floor_.cells[other].shape));
      }
    }
    if (inside.empty()) return addPolygons(floor_.cells[i].shape, i);
    addPolygons(geos_.minus(floor_.cells[i].shape, geos_.united(std::move(inside))), i);
  }

  // Of two cells that are the same the later lies in the earlier.
  bool liesIn(std::size_t small, std::size_t large) const {
    if (areas_[small] > areas_[large]) return false;
    if (areas_[small] == areas_[large] && small < large) return false;
    const Shape& a = floor_.cells[small].shape;
    const Shape& b = floor_.cells[large].shape;
    if (!geos_.intersects(a, b)) return false;
    return geos_.area(geos_.common(a, b)) > kInside * areas_[small];
  }

  std::vector<std::size_t> near(std::size_t i) const {
    const BoundingBox box = boxOf(rings_[i]);
    return index_.near(box.low, box.high, 0);
  }

  void addOpenFloor() {
    std::vector<Shape> open;
    std::vector<Shape> taken;
    for (std::size_t i = 0; i < floor_.cells.size(); ++i) {
      const FloorCell& cell = floor_.cells[i];
      if (cell.enclosed || closed(i)) {
        taken.push_back(geos_.copy(cell.shape));
      } else {
        open.push_back(geos_.grownSharp(cell.shape, kGap / 2));
      }
    }
    if (open.empty()) return;
    const Shape floor = geos_.grownSharp(geos_.united(std::move(open)), -kGap / 2);
    addPolygons(geos_.minus(floor, geos_.united(std::move(taken))), std::nullopt);
  }

  void addPolygons(const Shape& shape, std::optional<std::size_t> cell) {
    for (Shape& polygon : geos_.polygonsOf(shape)) {
      if (geos_.area(polygon) < kLeastArea) continue;
      if (geos_.empty(geos_.grown(polygon, -kLeastWidth / 2))) continue;
      FloorSpace space;
      space.shape = std::move(polygon);
      space.cell = cell;
      spaces_.push_back(std::move(space));
    }
  }

  const FloorPlan& plan_;
  const Floor& floor_;
  const Geos& geos_;
  BoxIndex index_;
  std::vector<double> areas_;
  std::vector<GroundLine> rings_;
  std::vector<FloorSpace> spaces_;
};

void addPieces(FloorSpace& space, const Geos& geos, std::size_t drawn, const Shape& line) {
  for (const GroundLine& part : geos.linesOf(geos.common(line, space.shape))) {
    if (groundDistance(part.front(), part.back()) < kLeastPiece) continue;
    space.pieces.push_back({drawn, part.front(), part.back()});
  }
}

}  // namespace

std::vector<FloorSpace> makeSpaces(const FloorPlan& plan, const Floor& floor, const Geos& geos) {
  return SpaceMaker(plan, floor, geos).make();
}

void findLines(std::vector<FloorSpace>& spaces, const Floor& floor, const PlanGraph& graph,
               const Geos& geos) {
  const SpaceFinder finder(spaces, geos);
  BoxIndex index(geos);
  std::set<std::size_t> nodes;
  for (std::size_t i = 0; i < graph.drawn().size(); ++i) {
    const PlanGraph::Edge& edge = graph.drawn()[i];
    const PlanGraph::Node& from = graph.nodes()[edge.from];
    const PlanGraph::Node& to = graph.nodes()[edge.to];
    if (from.level == floor.level) nodes.insert(edge.from);
    if (to.level == floor.level) nodes.insert(edge.to);
    if (from.level == floor.level && to.level == floor.level) index.insert(i, from.at, to.at);
  }
  for (const std::size_t node : nodes) {
    for (const std::size_t space : finder.near(graph.nodes()[node].at, kOnOutline)) {
      spaces[space].lineNodes.push_back(node);
    }
  }
  for (FloorSpace& space : spaces) {
    const BoundingBox box = boxOf(geos.ringsOf(space.shape).front());
    for (const std::size_t drawn : index.near(box.low, box.high, 0)) {
      const PlanGraph::Edge& edge = graph.drawn()[drawn];
      const Shape line = geos.segment(graph.nodes()[edge.from].at, graph.nodes()[edge.to].at);
      if (geos.intersects(line, space.shape)) addPieces(space, geos, drawn, line);
    }
  }
}

SpaceFinder::SpaceFinder(const std::vector<FloorSpace>& spaces, const Geos& geos)
    : spaces_(spaces), geos_(geos), index_(geos) {
  for (std::size_t i = 0; i < spaces.size(); ++i) {
    index_.insert(i, geos.ringsOf(spaces[i].shape).front());
  }
}

std::optional<std::size_t> SpaceFinder::spaceAt(GroundPoint at) const {
  const Shape point = geos_.point(at);
  for (const std::size_t i : index_.near(at, at, 0)) {
    if (geos_.intersects(point, spaces_[i].shape)) return i;
  }
  return std::nullopt;
}

std::vector<std::size_t> SpaceFinder::near(GroundPoint at, double distance) const {
  std::vector<std::size_t> result;
  const Shape point = geos_.point(at);
  for (const std::size_t i : index_.near(at, at, distance)) {
    if (geos_.distance(point, spaces_[i].shape) <= distance) result.push_back(i);
  }
  return result;
}

}  // namespace KorvaniTools
