#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>

#include "Common/Guarded.hpp"
#include "Common/OrderedDictionary.hpp"
#include "Navigation/Obstacles/ObstacleDenier.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class ConfigDependents;
class KRVNavObstacle;
class KRVNavRegion;
class ObstacleCounters;
class RegionFinder;

/// Lets a wall be crossed once it has been pushed against often enough, measured by the wall's
/// `strength`: the denier that the facade gives to its obstacle checks.
///
/// A position that crosses walls is blocked until the counter of each of them exceeds the wall's
/// strength. Somebody who has come to the level lately gets through sooner: the strength counts
/// in full only from the 25th position on the level on. Coming to another level forgets all
/// counters.
///
/// As it stands the walls are not handed to the test, so none is ever crossed: every position on
/// a level is accepted and counters only decay. This is the intended behaviour, which hosts rely
/// on: counters and log lines are kept, positions are not held back. `DefaultObstacleDenier` is
/// the strategy that blocks.
///
/// The graph's regions are read anew for every check.
class KORVANI_API StrengthBasedObstacleDenier : public ObstacleDenier {
 public:
  using Counters = KorvaniCommon::OrderedDictionary<std::shared_ptr<KRVNavObstacle>, std::int64_t>;

  /// From this many positions on a level on, walls have their full strength.
  static constexpr std::int64_t POS_UPDATES_ON_FLOOR_FOR_FULL_STRENGTH = 25;

  /// A denier for the bundle `configDependents`, which it does not keep alive.
  explicit StrengthBasedObstacleDenier(std::weak_ptr<ConfigDependents> configDependents);
  ~StrengthBasedObstacleDenier() override;

  /// Fatal error when the configuration is gone and the position is on the level of the last.
  /// Logs what it decides, at debug and verbose level. A log sink may look at the denier, which
  /// then is as the last check left it, but must not have it check.
  CLLocationCoordinate2D check(const KRVNavPoint& point) override;

  /// The walls that are counted, each with its counter from 1 to 100.
  Counters obstacleCounters() const;

  /// Positions on this level since the first one there.
  std::int64_t numberOfPosUpdatesOnSameFloor() const;

  /// How much of their strength walls have now, from 0 to 100; absent before the first check.
  std::optional<float> percentage() const;

  /// The region of the position checked last; absent before the first.
  std::shared_ptr<KRVNavRegion> lastRegion() const;

  /// What the last check returned, with the position's level; absent before the first.
  std::shared_ptr<KRVNavPoint> lastIndoorLocation() const;

 private:
  /// What a check leaves for the next one, as others may see it.
  struct Memory {
    Counters obstacleCounters;
    std::int64_t numberOfPosUpdatesOnSameFloor = 0;
    std::optional<float> percentage;
    std::shared_ptr<KRVNavRegion> lastRegion;
    std::shared_ptr<KRVNavPoint> lastIndoorLocation;
  };

  bool isAccepted(const KRVNavPoint& point);
  void startOnLevel();
  void countPosition();

  const std::weak_ptr<ConfigDependents> configDependents_;
  const std::shared_ptr<RegionFinder> regionFinder_;
  std::mutex checkMutex_;  ///< orders the checks, and guards what only they touch
  const std::unique_ptr<ObstacleCounters> counters_;
  Memory memory_;
  KorvaniCommon::Guarded<Memory> shown_;  ///< apart, since a log sink may ask during a check
};

}  // namespace KorvaniNavigation
