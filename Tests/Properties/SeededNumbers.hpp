#pragma once

/// Numbers that look random and follow from a seed, the same on every platform.
///
/// Counts up in steps of the golden ratio and scrambles the bits (SplitMix64: Steele, Lea, Flood,
/// "Fast splittable pseudorandom number generators", 2014).

#include <cstdint>

namespace KorvaniTest {

class SeededNumbers {
 public:
  explicit SeededNumbers(std::uint64_t seed) : state_(seed) {}

  std::uint64_t next() {
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t bits = state_;
    bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9U;
    bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EBU;
    return bits ^ (bits >> 31);
  }

  /// From 0 to below `count`, which is positive.
  std::uint32_t below(std::uint32_t count) { return static_cast<std::uint32_t>(next() % count); }

  /// From 0 to below 1.
  double unit() { return static_cast<double>(next() >> 11) * 0x1p-53; }

  bool chance(double probability) { return unit() < probability; }

 private:
  std::uint64_t state_;
};

}  // namespace KorvaniTest
