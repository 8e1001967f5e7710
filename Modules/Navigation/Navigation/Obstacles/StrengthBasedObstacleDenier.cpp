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
  return shown_.load().obstacleCounters;
}

std::int64_t StrengthBasedObstacleDenier::numberOfPosUpdatesOnSameFloor() const {
  return shown_.load().numberOfPosUpdatesOnSameFloor;
}

std::optional<float> StrengthBasedObstacleDenier::percentage() const {
  return shown_.load().percentage;
}

std::shared_ptr<KRVNavRegion> StrengthBasedObstacleDenier::lastRegion() const {
  return shown_.load().lastRegion;
}

std::shared_ptr<KRVNavPoint> StrengthBasedObstacleDenier::lastIndoorLocation() const {
  return shown_.load().lastIndoorLocation;
}

CLLocationCoordinate2D StrengthBasedObstacleDenier::check(const KRVNavPoint& point) {
  const std::lock_guard lock(checkMutex_);
  regionFinder_->updateRegions();
  auto region = regionFinder_->findRegionFor(point.coordinate(), point.level(), true);
  if (!region) return point.coordinate();
  const CLLocationCoordinate2D result =
      isAccepted(point) ? point.coordinate() : memory_.lastIndoorLocation->coordinate();
  memory_.lastIndoorLocation = std::make_shared<KRVNavPoint>(result, point.level());
  memory_.lastRegion = std::move(region);
  memory_.obstacleCounters = counters_->counters();
  shown_.store(memory_);
  return result;
}

bool StrengthBasedObstacleDenier::isAccepted(const KRVNavPoint& point) {
  if (!memory_.lastIndoorLocation || memory_.lastIndoorLocation->level() != point.level()) {
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
      detector.detectBarriersBetween(point.coordinate(), memory_.lastIndoorLocation->coordinate());
  KorvaniCommon::KRVDDLogDebug(
      [&] {
        return "detected " + std::to_string(detected.size()) +
               " obstacles between the old and the new position";
      },
      kKRVNavigationModuleName);
  return counters_->isCrossingAccepted(detected, *memory_.percentage);
}

void StrengthBasedObstacleDenier::startOnLevel() {
  memory_.numberOfPosUpdatesOnSameFloor = 0;
  memory_.percentage = 0.0F;
  counters_->clear();
}

void StrengthBasedObstacleDenier::countPosition() {
  memory_.numberOfPosUpdatesOnSameFloor += 1;
  const float perPosition = 100.0F / static_cast<float>(POS_UPDATES_ON_FLOOR_FOR_FULL_STRENGTH);
  memory_.percentage =
      std::min(100.0F, static_cast<float>(memory_.numberOfPosUpdatesOnSameFloor) * perPosition);
}

}  // namespace KorvaniNavigation
