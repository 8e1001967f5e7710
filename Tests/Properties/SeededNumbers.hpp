#pragma once

/// Numbers that look random and follow from a seed, the same on every platform: what the standard's
/// distributions make of a generator differs, what it gives does not.

#include <cstdint>
#include <random>

namespace KorvaniTest {

class SeededNumbers {
 public:
  explicit SeededNumbers(std::uint64_t seed) : engine_(seed) {}

  /// From 0 to below `count`, which is positive.
  std::uint32_t below(std::uint32_t count) { return static_cast<std::uint32_t>(engine_() % count); }

  /// From 0 to below 1.
  double unit() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }

  bool chance(double probability) { return unit() < probability; }

 private:
  std::mt19937_64 engine_;
};

}  // namespace KorvaniTest
