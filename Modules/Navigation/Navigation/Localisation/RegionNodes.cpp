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

RegionNodes::RegionNodes(Points points)
    : points_(std::move(points)), tree_(coordinatesOf(points_)) {}

RegionNodes::Points RegionNodes::visibleFrom(CLLocationCoordinate2D position,
                                             const ObstacleDetector& detector) const {
  const auto walls = Walls::of(detector.obstacles());
  const WallGrid* grid = walls->gridNow(detector.obstacles());
  if (!grid) return testedOneByOne(position, detector);
  Points visible;
  for (const std::uint32_t place : visibleNodes(tree_, *grid, position)) {
    visible.push_back(points_[place]);
  }
  return visible;
}

/// The same by asking the detector about one node after the other. For walls among which there is
/// one that cannot be tested: it is complained of by the first question that comes to it.
RegionNodes::Points RegionNodes::testedOneByOne(CLLocationCoordinate2D position,
                                                const ObstacleDetector& detector) const {
  std::vector<std::pair<double, const std::shared_ptr<KRVNavPoint>*>> byDistance;
  byDistance.reserve(points_.size());
  for (const auto& point : points_) {
    byDistance.emplace_back(degreeDistance(position, point->coordinate()), &point);
  }
  std::stable_sort(byDistance.begin(), byDistance.end(),
                   [](const auto& a, const auto& b) { return comesBefore(a.first, b.first); });
  Points visible;
  double nearest = std::numeric_limits<double>::max();
  for (const auto& [distance, point] : byDistance) {
    if (!visible.empty() && distance > kVisibleNodeReach * nearest) continue;
    if (detector.isAnyBarrierInBetween(position, (*point)->coordinate())) continue;
    nearest = std::min(nearest, distance);
    visible.push_back(*point);
  }
  return visible;
}

std::size_t RegionNodes::bytes() const {
  return sizeof *this + points_.capacity() * sizeof points_[0] + tree_.bytes();
}

}  // namespace KorvaniNavigation
