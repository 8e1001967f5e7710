#include "Navigation/Localisation/RegionNodes.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "Navigation/Graph/GraphAccess.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Localisation/VisibleNodes.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Navigation/Obstacles/WallGrid.hpp"
#include "Navigation/Obstacles/Walls.hpp"

namespace KorvaniNavigation {

namespace {

RegionNodes::Points watchedNodes(const KRVNavRegion& region) {
  RegionNodes::Points points;
  points.reserve(region.nodes().size());
  for (const auto& entry : region.nodes()) {
    GraphAccess::watch(*entry.second);
    points.push_back(entry.second);
  }
  return points;
}

std::vector<CLLocationCoordinate2D> coordinatesOf(const RegionNodes::Points& points) {
  std::vector<CLLocationCoordinate2D> coordinates;
  coordinates.reserve(points.size());
  for (const auto& point : points) coordinates.push_back(point->coordinate());
  return coordinates;
}

/// Less-than that puts what is not a number last, so that sorting stands any input.
bool comesBefore(double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); }

}  // namespace

std::shared_ptr<const RegionNodes> RegionNodes::of(const KRVNavRegion& region) {
  return GraphAccess::derivedOf(region).get<RegionNodes>(GraphAccess::nodesStamp(region), [&] {
    return std::make_shared<const RegionNodes>(watchedNodes(region));
  });
}

RegionNodes::RegionNodes(const Points& points) : tree_(coordinatesOf(points)) {
  nodes_.reserve(points.size());
  for (const auto& point : points) nodes_.push_back({point, SpherePlace(point->coordinate())});
}

std::vector<ClosestNode> RegionNodes::visibleFrom(CLLocationCoordinate2D position,
                                                  const ObstacleDetector& detector) const {
  std::shared_ptr<const Walls> held;
  const WallGrid* grid = detector.gridNow(held);
  if (!grid) return testedOneByOne(position, detector);
  const auto indexes = visibleNodes(tree_, *grid, position);
  const SpherePlace here(position);
  std::vector<ClosestNode> visible;
  visible.reserve(indexes.size());
  for (const std::uint32_t index : indexes) {
    const Placed& each = nodes_[index];
    visible.push_back({each.node, greatCircleDistance(each.place, here)});
  }
  return visible;
}

/// The same by asking the detector about one node after the other. For walls among which there is
/// one that cannot be tested: it is complained of by the first question that comes to it.
std::vector<ClosestNode> RegionNodes::testedOneByOne(CLLocationCoordinate2D position,
                                                     const ObstacleDetector& detector) const {
  std::vector<std::pair<double, const std::shared_ptr<KRVNavPoint>*>> byDistance;
  byDistance.reserve(nodes_.size());
  for (const auto& each : nodes_) {
    byDistance.emplace_back(degreeDistance(position, each.node->coordinate()), &each.node);
  }
  std::stable_sort(byDistance.begin(), byDistance.end(),
                   [](const auto& a, const auto& b) { return comesBefore(a.first, b.first); });
  std::vector<ClosestNode> visible;
  double nearest = std::numeric_limits<double>::max();
  for (const auto& [distance, point] : byDistance) {
    if (!visible.empty() && distance > kVisibleNodeReach * nearest) continue;
    if (detector.isAnyBarrierInBetween(position, (*point)->coordinate())) continue;
    nearest = std::min(nearest, distance);
    visible.push_back(
        {*point, KorvaniPlatform::greatCircleDistance((*point)->coordinate(), position)});
  }
  return visible;
}

std::size_t RegionNodes::bytes() const {
  return sizeof *this + nodes_.capacity() * sizeof nodes_[0] + tree_.bytes();
}

}  // namespace KorvaniNavigation
