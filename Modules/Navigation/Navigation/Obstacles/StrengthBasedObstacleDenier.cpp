#include "Navigation/Obstacles/StrengthBasedObstacleDenier.hpp"

#include <algorithm>
#include <string>
#include <utility>

#include "Common/Logging.hpp"
#include "Navigation/API/Constants.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Localisation/RegionFinder.hpp"
#include "Navigation/Obstacles/ObstacleCounters.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

StrengthBasedObstacleDenier::StrengthBasedObstacleDenier(
    std::weak_ptr<ConfigDependents> configDependents)
    : configDependents_(std::move(configDependents)),
      regionFinder_(std::make_shared<RegionFinder>(configDependents_)),
      counters_(std::make_unique<ObstacleCounters>()) {
  regionFinder_->updateRegions();
}

StrengthBasedObstacleDenier::~StrengthBasedObstacleDenier() = default;

StrengthBasedObstacleDenier::Counters StrengthBasedObstacleDenier::obstacleCounters() const {
  const std::lock_guard lock(mutex_);
  return counters_->counters();
}

std::int64_t StrengthBasedObstacleDenier::numberOfPosUpdatesOnSameFloor() const {
  const std::lock_guard lock(mutex_);
  return numberOfPosUpdatesOnSameFloor_;
}

std::optional<float> StrengthBasedObstacleDenier::percentage() const {
  const std::lock_guard lock(mutex_);
  return percentage_;
}

std::shared_ptr<KRVNavRegion> StrengthBasedObstacleDenier::lastRegion() const {
  const std::lock_guard lock(mutex_);
  return lastRegion_;
}

std::shared_ptr<KRVNavPoint> StrengthBasedObstacleDenier::lastIndoorLocation() const {
  const std::lock_guard lock(mutex_);
  return lastIndoorLocation_;
}

CLLocationCoordinate2D StrengthBasedObstacleDenier::check(const KRVNavPoint& point) {
  const std::lock_guard lock(mutex_);
  regionFinder_->updateRegions();
  auto region = regionFinder_->findRegionFor(point.coordinate(), point.level(), true);
  if (!region) return point.coordinate();
  const CLLocationCoordinate2D result =
      isAccepted(point) ? point.coordinate() : lastIndoorLocation_->coordinate();
  lastIndoorLocation_ = std::make_shared<KRVNavPoint>(result, point.level());
  lastRegion_ = std::move(region);
  return result;
}

bool StrengthBasedObstacleDenier::isAccepted(const KRVNavPoint& point) {
  if (!lastIndoorLocation_ || lastIndoorLocation_->level() != point.level()) {
    startOnLevel();
    return true;
  }
  countPosition();
  if (configDependents_.expired()) {
    KORVANI_FATAL("the configuration of an obstacle denier is gone");
  }
  // The region's walls are left out on purpose: positions are watched, not held back.
  const ObstacleDetector detector({}, configDependents_);
  const auto detected =
      detector.detectBarriersBetween(point.coordinate(), lastIndoorLocation_->coordinate());
  KorvaniCommon::KRVDDLogDebug(
      [&] {
        return "detected " + std::to_string(detected.size()) +
               " obstacles between the old and the new position";
      },
      kKRVNavigationModuleName);
  return counters_->isCrossingAccepted(detected, *percentage_);
}

void StrengthBasedObstacleDenier::startOnLevel() {
  numberOfPosUpdatesOnSameFloor_ = 0;
  percentage_ = 0.0F;
  counters_->clear();
}

void StrengthBasedObstacleDenier::countPosition() {
  numberOfPosUpdatesOnSameFloor_ += 1;
  const float perPosition = 100.0F / static_cast<float>(POS_UPDATES_ON_FLOOR_FOR_FULL_STRENGTH);
  percentage_ = std::min(100.0F, static_cast<float>(numberOfPosUpdatesOnSameFloor_) * perPosition);
}

}  // namespace KorvaniNavigation
