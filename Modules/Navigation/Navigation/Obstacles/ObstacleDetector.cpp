#include "Navigation/Obstacles/ObstacleDetector.hpp"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Navigation/Obstacles/WallGrid.hpp"
#include "Navigation/Obstacles/Walls.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

namespace {

bool crosses(const KRVNavObstacle& obstacle, MKMapPoint a, MKMapPoint b) {
  const auto& coordinates = obstacle.coordinates();
  if (coordinates.empty()) KORVANI_FATAL("an obstacle without coordinates");
  if (coordinates.size() == 1) return false;
  MKMapPoint p = MKMapPointForCoordinate(coordinates[0]);
  for (std::size_t i = 1; i < coordinates.size(); ++i) {
    const MKMapPoint q = MKMapPointForCoordinate(coordinates[i]);
    if (segmentsMeet(a, b, p, q)) return true;
    p = q;
  }
  return false;
}

const KRVNavObstacle& existing(const std::shared_ptr<KRVNavObstacle>& obstacle) {
  if (!obstacle) KORVANI_FATAL("a null obstacle");
  return *obstacle;
}

}  // namespace

// NOLINTNEXTLINE(modernize-pass-by-value): a copy is shared, to move makes a list to leave behind
ObstacleDetector::ObstacleDetector(const Obstacles& obstacles,
                                   std::weak_ptr<ConfigDependents> configDependents)
    : obstacles_(obstacles),
      walls_(Walls::of(obstacles_)),
      configDependents_(std::move(configDependents)) {}

ObstacleDetector::~ObstacleDetector() = default;

void ObstacleDetector::setObstacles(Obstacles obstacles) {
  obstacles_ = std::move(obstacles);
  walls_ = Walls::of(obstacles_);
}

/// The walls as they are now. `held` keeps them alive where the detector does not, because an
/// obstacle has changed since it was made.
const Walls& ObstacleDetector::walls(std::shared_ptr<const Walls>& held) const {
  if (walls_->isCurrent()) return *walls_;
  held = Walls::of(obstacles_);
  return *held;
}

/// The grid to ask, if there is one.
const WallGrid* ObstacleDetector::grid(std::shared_ptr<const Walls>& held) const {
  return walls(held).grid(obstacles_);
}

/// The same for who has many questions.
const WallGrid* ObstacleDetector::gridNow(std::shared_ptr<const Walls>& held) const {
  return walls(held).gridNow(obstacles_);
}

bool ObstacleDetector::isAnyBarrierInBetween(CLLocationCoordinate2D coordinateA,
                                             CLLocationCoordinate2D coordinateB) const {
  const WallGrid* made = walls_->isCurrent() ? walls_->gridIfMade() : nullptr;
  if (made) return made->meetsAnyBetween(coordinateA, coordinateB);
  return isAnyBarrierInBetweenAtFirst(coordinateA, coordinateB);
}

/// The same for a list that was not asked about often enough, or has changed.
bool ObstacleDetector::isAnyBarrierInBetweenAtFirst(CLLocationCoordinate2D coordinateA,
                                                    CLLocationCoordinate2D coordinateB) const {
  std::shared_ptr<const Walls> held;
  if (const WallGrid* grid = this->grid(held))
    return grid->meetsAnyBetween(coordinateA, coordinateB);
  const MKMapPoint a = MKMapPointForCoordinate(coordinateA);
  const MKMapPoint b = MKMapPointForCoordinate(coordinateB);
  return std::any_of(obstacles_.begin(), obstacles_.end(),
                     [&](const auto& obstacle) { return crosses(existing(obstacle), a, b); });
}

std::vector<std::shared_ptr<KRVNavObstacle>> ObstacleDetector::detectBarriersBetween(
    CLLocationCoordinate2D coordinateA, CLLocationCoordinate2D coordinateB) const {
  const MKMapPoint a = MKMapPointForCoordinate(coordinateA);
  const MKMapPoint b = MKMapPointForCoordinate(coordinateB);
  std::vector<std::shared_ptr<KRVNavObstacle>> crossed;
  std::shared_ptr<const Walls> held;
  if (const WallGrid* grid = this->grid(held)) {
    for (const std::uint32_t place : grid->met(a, b)) crossed.push_back(obstacles_[place]);
    return crossed;
  }
  for (const auto& obstacle : obstacles_) {
    if (crosses(existing(obstacle), a, b)) crossed.push_back(obstacle);
  }
  return crossed;
}

bool ObstacleDetector::barrierIsInBetween(const KRVNavObstacle& obstacle,
                                          CLLocationCoordinate2D coordinateA,
                                          CLLocationCoordinate2D coordinateB) const {
  return crosses(obstacle, MKMapPointForCoordinate(coordinateA),
                 MKMapPointForCoordinate(coordinateB));
}

}  // namespace KorvaniNavigation
