#pragma once

// Internal. How often each wall was pushed against: the arithmetic of the strength-based denier.

#include <cstdint>
#include <memory>
#include <vector>

#include "Common/OrderedDictionary.hpp"

namespace KorvaniNavigation {

class KRVNavObstacle;

/// A counter from 1 to 100 for each wall that was crossed lately; a wall without an entry counts
/// as 0. Two walls are the same when they are one object.
///
/// Each position that crosses a wall raises its counter by 5, each that does not lowers it by
/// 10, until the entry vanishes. A wall is breached once its counter exceeds its strength,
/// scaled by how long the person has been on the level.
///
/// One thread at a time.
class ObstacleCounters {
 public:
  using Obstacles = std::vector<std::shared_ptr<KRVNavObstacle>>;
  using Counters = KorvaniCommon::OrderedDictionary<std::shared_ptr<KRVNavObstacle>, std::int64_t>;

  const Counters& counters() const { return counters_; }

  /// Forgets all walls.
  void clear();

  /// Counts the walls that a position has crossed, none or several, and tells whether the position
  /// may be accepted: with none it always is, otherwise once all of them are breached.
  bool isCrossingAccepted(const Obstacles& detected, float percentage);

  /// Raises the counters of the walls that were crossed, in list order, then lowers all others.
  void updateObstacleCounters(const Obstacles& obstacles);

  /// Adds `step` to one counter. Above 100 it stays at 100; below 1 the wall is forgotten.
  void updateObstacleCounter(const std::shared_ptr<KRVNavObstacle>& obstacle, std::int64_t step);

  /// Whether the counter of every one of these walls exceeds `percentage` (0 to 100) of its
  /// strength, in single precision; true for no walls. Fatal error for a wall without a counter.
  bool isStrengthOfObstaclesReached(const Obstacles& obstacles, float percentage) const;

 private:
  Counters counters_;
};

}  // namespace KorvaniNavigation
