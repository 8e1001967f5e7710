#pragma once

#include <cstdint>
#include <vector>

#include "Building/Building.hpp"
#include "Simulation/RandomSource.hpp"

namespace KorvaniTools {

/// A positioning system that takes one level for another now and then: each position, whatever the
/// one before, has the given probability of being put on the next level above or below that the
/// building has. A building with one level has no wrong one.
class LevelGlitches {
 public:
  /// @param probability from 0 to 1
  LevelGlitches(const Building& building, double probability, std::uint64_t seed);

  /// The level that is reported for somebody on `level`.
  std::int64_t reported(std::int64_t level);

 private:
  std::vector<std::int64_t> levels_;  ///< ascending
  double probability_;
  RandomSource random_;
};

}  // namespace KorvaniTools
