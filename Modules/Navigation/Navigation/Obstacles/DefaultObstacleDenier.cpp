#include "Navigation/Obstacles/DefaultObstacleDenier.hpp"

#include <algorithm>
#include <utility>

#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Localisation/RegionFinder.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

namespace {

constexpr double kMostCredit = 5.0;
constexpr double kEarnedByClearPosition = 0.5;
constexpr double kCostOfJump = 1.0;

}  // namespace

DefaultObstacleDenier::DefaultObstacleDenier(std::weak_ptr<ConfigDependents> configDependents)
    : configDependents_(std::move(configDependents)),
      regionFinder_(std::make_shared<RegionFinder>(configDependents_)) {
  regionFinder_->updateRegions();
}

DefaultObstacleDenier::~DefaultObstacleDenier() = default;

double DefaultObstacleDenier::stickyCounter() const {
  const std::lock_guard lock(mutex_);
  return stickyCounter_;
}

std::shared_ptr<KRVNavRegion> DefaultObstacleDenier::lastRegion() const {
  const std::lock_guard lock(mutex_);
  return lastRegion_;
}

std::shared_ptr<KRVNavPoint> DefaultObstacleDenier::lastIndoorLocation() const {
  const std::lock_guard lock(mutex_);
  return lastIndoorLocation_;
}

CLLocationCoordinate2D DefaultObstacleDenier::check(const KRVNavPoint& point) {
  const std::lock_guard lock(mutex_);
  auto region = regionFinder_->findRegionFor(point.coordinate(), point.level(), true);
  if (!region) return point.coordinate();
  const CLLocationCoordinate2D result =
      isAccepted(point, *region) ? point.coordinate() : lastIndoorLocation_->coordinate();
  lastIndoorLocation_ = std::make_shared<KRVNavPoint>(result, point.level());
  lastRegion_ = std::move(region);
  return result;
}

bool DefaultObstacleDenier::isAccepted(const KRVNavPoint& point, const KRVNavRegion& region) {
  if (!lastIndoorLocation_ || lastIndoorLocation_->level() != point.level()) {
    stickyCounter_ = 0;
    return true;
  }
  if (!isBarrierOnTheWayTo(point, region)) {
    stickyCounter_ = std::min(stickyCounter_ + kEarnedByClearPosition, kMostCredit);
    return true;
  }
  stickyCounter_ = std::max(stickyCounter_ - kCostOfJump, 0.0);
  return stickyCounter_ == 0;
}

bool DefaultObstacleDenier::isBarrierOnTheWayTo(const KRVNavPoint& point,
                                                const KRVNavRegion& region) const {
  if (configDependents_.expired()) {
    KORVANI_FATAL("the configuration of an obstacle denier is gone");
  }
  const auto isBlockedIn = [&](const KRVNavRegion& one) {
    const ObstacleDetector detector(one.obstacles(), configDependents_);
    return detector.isAnyBarrierInBetween(point.coordinate(), lastIndoorLocation_->coordinate());
  };
  if (isBlockedIn(region)) return true;
  return lastRegion_ && lastRegion_.get() != &region && isBlockedIn(*lastRegion_);
}

}  // namespace KorvaniNavigation
