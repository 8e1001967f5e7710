#include "Navigation/Obstacles/ObstacleCounters.hpp"

#include <algorithm>
#include <limits>
#include <string>

#include "Common/Logging.hpp"
#include "Navigation/API/Constants.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

namespace {

constexpr std::int64_t kMost = 100;
constexpr std::int64_t kStepOfCrossed = 5;
constexpr std::int64_t kStepOfOthers = -10;

/// Towards zero; numbers beyond the integers become the last one.
std::int64_t truncated(float value) {
  constexpr float kBeyondIntegers = 9223372036854775808.0F;
  if (value >= kBeyondIntegers) return std::numeric_limits<std::int64_t>::max();
  if (value <= -kBeyondIntegers) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(value);
}

void logDecision(const char* decision) {
  KorvaniCommon::KRVDDLogDebug([&] { return decision; }, kKRVNavigationModuleName);
}

}  // namespace

void ObstacleCounters::clear() { counters_ = Counters(); }

bool ObstacleCounters::isCrossingAccepted(const Obstacles& detected, float percentage) {
  updateObstacleCounters(detected);
  if (detected.empty()) return true;
  const bool breached = isStrengthOfObstaclesReached(detected, percentage);
  logDecision(breached ? "obstacle(s) breached - latest position will be accepted"
                       : "obstacle(s) not breached - latest position will be blocked");
  return breached;
}

void ObstacleCounters::updateObstacleCounters(const Obstacles& obstacles) {
  for (const auto& obstacle : obstacles) updateObstacleCounter(obstacle, kStepOfCrossed);
  const Counters before = counters_;  // entries vanish while their counters fall
  for (const auto& entry : before) {
    const bool crossed =
        std::find(obstacles.begin(), obstacles.end(), entry.first) != obstacles.end();
    if (!crossed) updateObstacleCounter(entry.first, kStepOfOthers);
  }
  KorvaniCommon::KRVDDLogDebug(
      [&] {
        return "updated obstacle counters - " + std::to_string(counters_.size()) + " still in map";
      },
      kKRVNavigationModuleName);
}

void ObstacleCounters::updateObstacleCounter(const std::shared_ptr<KRVNavObstacle>& obstacle,
                                             std::int64_t step) {
  const std::int64_t* present = counters_.find(obstacle);
  const std::int64_t value = std::min((present ? *present : 0) + step, kMost);
  if (value < 1) {
    counters_.remove(obstacle);
  } else {
    counters_.set(obstacle, value);
  }
  KorvaniCommon::KRVDDLogVerbose(
      [&] {
        return "changed obstacle " + std::to_string(obstacle->hash()) + " counter to " +
               std::to_string(value);
      },
      kKRVNavigationModuleName);
}

bool ObstacleCounters::isStrengthOfObstaclesReached(const Obstacles& obstacles,
                                                    float percentage) const {
  for (const auto& obstacle : obstacles) {
    const std::int64_t* counter = counters_.find(obstacle);
    if (!counter) KORVANI_FATAL("an obstacle is to be breached that was not counted");
    const float threshold = (static_cast<float>(obstacle->strength()) / 100.0F) * percentage;
    KorvaniCommon::KRVDDLogVerbose(
        [&] {
          return "obstacle " + std::to_string(obstacle->hash()) + ": " + std::to_string(*counter) +
                 "/" + std::to_string(truncated(threshold));
        },
        kKRVNavigationModuleName);
    if (static_cast<float>(*counter) <= threshold) return false;
  }
  return true;
}

}  // namespace KorvaniNavigation
