#include "Simulation/LevelGlitches.hpp"

#include <algorithm>

#include "Simulation/RandomStreams.hpp"

namespace KorvaniTools {

LevelGlitches::LevelGlitches(const Building& building, double probability, std::uint64_t seed)
    : probability_(probability), random_(seed, kLevelStream) {
  for (const BuildingRegion& region : building.regions) levels_.push_back(region.level);
  std::sort(levels_.begin(), levels_.end());
  levels_.erase(std::unique(levels_.begin(), levels_.end()), levels_.end());
}

std::int64_t LevelGlitches::reported(std::int64_t level) {
  // Both are drawn every time, so that the places of the glitches do not hang on the levels.
  const bool wrong = random_.uniform() < probability_;
  const bool upwards = random_.uniform() < 0.5;
  if (!wrong) return level;
  const auto [first, last] = std::equal_range(levels_.begin(), levels_.end(), level);
  const bool hasBelow = first != levels_.begin();
  const bool hasAbove = last != levels_.end();
  if (hasAbove && (upwards || !hasBelow)) return *last;
  return hasBelow ? *(first - 1) : level;
}

}  // namespace KorvaniTools
