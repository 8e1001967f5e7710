#include "Navigation/Obstacles/ObstacleDetector.hpp"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

namespace {

bool isWithinUnit(double fraction) { return 0 <= fraction && fraction <= 1; }

// Where the lines meet, as the fraction r of the way from a to b and s of that from p to q.
// Both bounds are inclusive, so touching counts; parallel lines never meet.
bool segmentsMeet(MKMapPoint a, MKMapPoint b, MKMapPoint p, MKMapPoint q) {
  const double denominator = (b.x - a.x) * (q.y - p.y) - (b.y - a.y) * (q.x - p.x);
  if (denominator == 0) return false;
  const double r = ((p.x - a.x) * (q.y - p.y) - (p.y - a.y) * (q.x - p.x)) / denominator;
  if (!isWithinUnit(r)) return false;
  const double s = ((b.y - a.y) * (p.x - a.x) - (b.x - a.x) * (p.y - a.y)) / denominator;
  return isWithinUnit(s);
}

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

ObstacleDetector::ObstacleDetector(std::vector<std::shared_ptr<KRVNavObstacle>> obstacles,
                                   std::weak_ptr<ConfigDependents> configDependents)
    : obstacles_(std::move(obstacles)), configDependents_(std::move(configDependents)) {}

void ObstacleDetector::setObstacles(std::vector<std::shared_ptr<KRVNavObstacle>> obstacles) {
  obstacles_ = std::move(obstacles);
}

bool ObstacleDetector::isAnyBarrierInBetween(CLLocationCoordinate2D coordinateA,
                                             CLLocationCoordinate2D coordinateB) const {
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
