#include "FloorPlan/SpaceGraph.hpp"

#include <algorithm>
#include <cmath>

namespace KorvaniTools {
namespace {

constexpr std::size_t kFewDoors = 3;
constexpr double kCornerMargin = 0.4;
constexpr double kNarrowMargin = 0.15;
constexpr double kCornerApart = 0.3;
constexpr double kCornerTurn = 0.2;  // radians
constexpr double kRoundness = 0.1;   // metres that round corners are made straight by
constexpr double kWideFloor = 6.0;   // metres; wider floor has no middle to walk in
constexpr double kFrontOnWideFloor = 1.5;
constexpr double kFrontApart = 0.6;
constexpr double kStep = 0.1;
constexpr double kAtTriangle = 0.05;

double cross(GroundPoint a, GroundPoint b, GroundPoint c) {
  return (b.x - a.x) * (c.y - b.y) - (b.y - a.y) * (c.x - b.x);
}

double signedArea(const GroundLine& ring) {
  double sum = 0;
  for (std::size_t i = 0; i + 1 < ring.size(); ++i) {
    sum += ring[i].x * ring[i + 1].y - ring[i + 1].x * ring[i].y;
  }
  return sum / 2;
}

/// Where a ring, the floor on its left, turns right: the corners that people walk around.
void addReflexCorners(GroundLine ring, bool outer, GroundLine& corners) {
  if (ring.size() < 4) return;
  if ((signedArea(ring) > 0) != outer) std::reverse(ring.begin(), ring.end());
  const std::size_t count = ring.size() - 1;
  for (std::size_t i = 0; i < count; ++i) {
    const GroundPoint a = ring[(i + count - 1) % count];
    const GroundPoint b = ring[i];
    const GroundPoint c = ring[i + 1];
    const double dot = (b.x - a.x) * (c.x - b.x) + (b.y - a.y) * (c.y - b.y);
    if (std::atan2(cross(a, b, c), dot) < -kCornerTurn) corners.push_back(b);
  }
}

GroundPoint shifted(GroundPoint at, GroundPoint direction, double metres) {
  return {at.x + direction.x * metres, at.y + direction.y * metres};
}

}  // namespace

SpaceGraph::SpaceGraph(const FloorSpace& space, const SpaceSight& sight, const Geos& geos,
                       PlanGraph& graph)
    : space_(space), sight_(sight), geos_(geos), graph_(graph) {}

void SpaceGraph::join(const std::vector<SpaceItem>& items, StepFree stepFree,
                      const SpaceLines& lines) {
  addItems(items);
  addLines(lines);
  if (ends_.size() < 2) return;
  if (!straight(items)) {
    addFronts(items);
    addCorners(kCornerMargin);
    if (!connect()) {
      addCorners(kNarrowMargin);
      if (!connect()) {
        addTriangles();
        spanner_.bridge(triangle_, [&](std::size_t a, std::size_t b) { return sees(a, b); });
      }
    }
  }
  emit(stepFree);
}

std::size_t SpaceGraph::add(GroundPoint at, std::optional<std::size_t> node) {
  Point point;
  point.node = node;
  points_.push_back(point);
  return spanner_.add(at);
}

void SpaceGraph::addItems(const std::vector<SpaceItem>& items) {
  std::set<std::size_t> known;
  for (const SpaceItem& item : items) {
    const std::size_t point = add(item.at, item.node);
    points_[point].door = item.door;
    points_[point].stepFree = item.stepFree;
    if (known.insert(item.node).second) ends_.push_back(point);
  }
}

void SpaceGraph::addLines(const SpaceLines& lines) {
  const std::size_t own = ends_.size();
  for (const std::size_t point : ends_) ofNodes_.emplace(*points_[point].node, point);
  const std::set<std::size_t> inside(space_.lineNodes.begin(), space_.lineNodes.end());
  needed_ = ends_;
  for (const std::size_t node : inside) {
    const std::size_t known = ends_.size();
    const std::size_t point = endAt(node);
    if (ends_.size() > known && lines.needed.contains(node)) needed_.push_back(point);
  }
  addPieces(inside);
  for (std::size_t i = 0; i < ends_.size(); ++i) {
    const std::size_t node = *points_[ends_[i]].node;
    if (i < own || !lines.amid.contains(node)) free_.push_back(ends_[i]);
    const auto group = lines.groups.find(node);
    if (i >= own && group != lines.groups.end()) fixed_.emplace(ends_[i], group->second);
  }
}

std::size_t SpaceGraph::endAt(std::size_t node) {
  const auto known = ofNodes_.find(node);
  if (known != ofNodes_.end()) return known->second;
  const std::size_t point = add(graph_.nodes()[node].at, node);
  ofNodes_.emplace(node, point);
  ends_.push_back(point);
  return point;
}

// The stops of drawn pieces are ends too, and joined as they are drawn.
void SpaceGraph::addPieces(const std::set<std::size_t>& inside) {
  std::set<std::size_t> pieces;
  for (const SpacePiece& piece : space_.pieces) pieces.insert(piece.drawn);
  for (const std::size_t drawn : pieces) {
    const std::vector<std::size_t> stops = graph_.stopsOf(drawn);
    for (std::size_t i = 0; i + 1 < stops.size(); ++i) {
      const bool made = i > 0 || inside.contains(stops[i]);
      const bool madeNext = i + 2 < stops.size() || inside.contains(stops[i + 1]);
      if (!made || !madeNext) continue;
      const Spanner::Pair pair = std::minmax(endAt(stops[i]), endAt(stops[i + 1]));
      if (pair.first == pair.second) continue;
      given_.insert(pair);
      drawn_.insert(pair);
    }
  }
}

bool SpaceGraph::straight(const std::vector<SpaceItem>& items) {
  const auto doors =
      std::count_if(items.begin(), items.end(), [](const SpaceItem& item) { return item.door; });
  if (!space_.cell || static_cast<std::size_t>(doors) > kFewDoors) return false;
  return connect();
}

void SpaceGraph::addFronts(const std::vector<SpaceItem>& items) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    const SpaceItem& item = items[i];
    if (!item.door) continue;
    const std::size_t before = given_.size();
    if (item.along) {
      addFront(i, item, {-item.along->y, item.along->x});
      addFront(i, item, {item.along->y, -item.along->x});
    }
    if (given_.size() == before) addInwardFront(i, item);
    if (given_.size() == before) continue;
    free_.erase(std::remove(free_.begin(), free_.end(), i), free_.end());
  }
}

void SpaceGraph::addFront(std::size_t door, const SpaceItem& item, GroundPoint direction) {
  if (!geos_.intersects(geos_.point(shifted(item.at, direction, 3 * kStep)), space_.shape)) return;
  const double depth = depthFrom(item.at, direction);
  if (depth < 3 * kStep) return;
  const double out = depth < kWideFloor ? depth / 2 : kFrontOnWideFloor;
  addFrontAt(door, shifted(item.at, direction, out));
}

// How far one sees, to a step; what is seen from afar is seen from nearer too.
double SpaceGraph::depthFrom(GroundPoint at, GroundPoint direction) const {
  int seen = 0;
  int hidden = static_cast<int>(kWideFloor / kStep) + 1;
  while (hidden - seen > 1) {
    const int middle = (seen + hidden) / 2;
    (sight_.sees(at, shifted(at, direction, middle * kStep)) ? seen : hidden) = middle;
  }
  return seen * kStep;
}

void SpaceGraph::addInwardFront(std::size_t door, const SpaceItem& item) {
  const Shape at = geos_.point(item.at);
  for (const double margin : {kCornerMargin, kNarrowMargin}) {
    const auto nearest = geos_.nearest(at, geos_.grownSharp(space_.shape, -margin));
    if (!nearest || groundDistance(item.at, nearest->second) < kStep) continue;
    if (!sight_.sees(item.at, nearest->second)) continue;
    return addFrontAt(door, nearest->second);
  }
}

void SpaceGraph::addFrontAt(std::size_t door, GroundPoint at) {
  for (const std::size_t front : fronts_) {
    if (groundDistance(spanner_.points()[front], at) > kFrontApart) continue;
    if (!sight_.sees(spanner_.points()[door], spanner_.points()[front])) continue;
    given_.insert(std::minmax(door, front));
    return;
  }
  if (const auto end = freeEndAt(at)) {
    given_.insert(std::minmax(door, *end));
    return;
  }
  const std::size_t front = add(at, std::nullopt);
  fronts_.push_back(front);
  free_.push_back(front);
  given_.insert(std::minmax(door, front));
}

// Where a line or a middle is already, a node of its own would only be a double.
std::optional<std::size_t> SpaceGraph::freeEndAt(GroundPoint at) const {
  for (const std::size_t end : free_) {
    if (points_[end].node && !points_[end].door &&
        groundDistance(spanner_.points()[end], at) <= kSameSpot) {
      return end;
    }
  }
  return std::nullopt;
}

void SpaceGraph::addCorners(double margin) {
  const Shape plain = geos_.simplified(space_.shape, kRoundness);
  GroundLine corners;
  for (const Shape& polygon : geos_.polygonsOf(geos_.grownSharp(plain, -margin))) {
    bool outer = true;
    for (const GroundLine& ring : geos_.ringsOf(polygon)) {
      addReflexCorners(ring, outer, corners);
      outer = false;
    }
  }
  GroundLine kept;
  for (const GroundPoint& corner : corners) {
    const bool near = std::any_of(kept.begin(), kept.end(), [&](GroundPoint other) {
      return groundDistance(corner, other) < kCornerApart;
    });
    if (near) continue;
    kept.push_back(corner);
    free_.push_back(add(corner, std::nullopt));
  }
}

// Neighbouring triangles share an edge whose middle both of them see.
void SpaceGraph::addTriangles() {
  BoxIndex index(geos_);
  for (std::size_t i = 0; i < points_.size(); ++i) {
    index.insert(i, spanner_.points()[i], spanner_.points()[i]);
  }
  std::map<std::pair<double, double>, std::size_t> middles;
  for (const Shape& triangle : geos_.triangles(space_.shape)) {
    const GroundLine ring = geos_.ringsOf(triangle).front();
    std::vector<std::size_t> corners;
    for (std::size_t i = 0; i + 1 < ring.size(); ++i) {
      // The sum of two numbers does not depend on their order, so neighbours find the same middle.
      const GroundPoint middle{(ring[i].x + ring[i + 1].x) / 2, (ring[i].y + ring[i + 1].y) / 2};
      const auto known = middles.find({middle.x, middle.y});
      const std::size_t point = known != middles.end() ? known->second : add(middle, std::nullopt);
      middles.emplace(std::pair(middle.x, middle.y), point);
      corners.push_back(point);
    }
    for (std::size_t i = 0; i < corners.size(); ++i) {
      for (std::size_t k = i + 1; k < corners.size(); ++k) {
        triangle_.emplace_back(std::minmax(corners[i], corners[k]));
      }
    }
    const BoundingBox box = boxOf(ring);
    for (const std::size_t point : index.near(box.low, box.high, kAtTriangle)) {
      if (geos_.distance(geos_.point(spanner_.points()[point]), triangle) > kAtTriangle) continue;
      for (const std::size_t corner : corners) triangle_.emplace_back(std::minmax(point, corner));
    }
  }
}

bool SpaceGraph::connect() {
  spanner_.removeEdges();
  for (const Spanner::Pair& pair : given_) spanner_.join(pair.first, pair.second);
  spanner_.fill(spanner_.candidates(free_),
                [&](std::size_t a, std::size_t b) { return sees(a, b); });
  return spanner_.connects(needed_);
}

bool SpaceGraph::sees(std::size_t a, std::size_t b) const {
  const auto groupA = fixed_.find(a);
  const auto groupB = fixed_.find(b);
  const bool both = groupA != fixed_.end() && groupB != fixed_.end();
  if (both && groupA->second == groupB->second) return false;
  return sight_.sees(spanner_.points()[a], spanner_.points()[b]);
}

void SpaceGraph::emit(StepFree stepFree) {
  for (const Spanner::Pair& pair : spanner_.edgesBetween(ends_)) {
    if (drawn_.contains(pair)) continue;
    const Point& a = points_[pair.first];
    const Point& b = points_[pair.second];
    const bool door = a.door || b.door;
    StepFree free = stepFree;
    for (const Point* point : {&a, &b}) {
      if (point->door && point->stepFree != StepFree::unknown && free != StepFree::no) {
        free = point->stepFree;
      }
    }
    const std::size_t from = nodeOf(pair.first);
    const std::size_t to = nodeOf(pair.second);
    graph_.addMade({from, to, door ? ConnectionKind::door : ConnectionKind::path, free, false});
  }
}

std::size_t SpaceGraph::nodeOf(std::size_t point) {
  std::optional<std::size_t>& node = points_[point].node;
  if (!node) {
    const std::int64_t level = graph_.nodes()[*points_[ends_.front()].node].level;
    node = graph_.addNode(level, spanner_.points()[point]);
  }
  return *node;
}

}  // namespace KorvaniTools
