#pragma once

#include <cstddef>
#include <cstdint>

namespace KorvaniBenchmarks {

/// Random numbers that are the same on every machine, and cheap: a building of a million nodes
/// takes some ten million of them.
///
///     SeededNumbers numbers(seed);
///     const double width = numbers.between(3.0, 7.0);
///
/// The generator is SplitMix64 (Steele, Lea and Flood, 2014). Not thread-safe.
class SeededNumbers {
 public:
  explicit SeededNumbers(std::uint64_t seed) : state_(seed) {}

  /// Any of the 2^64 numbers.
  std::uint64_t next() {
    state_ += 0x9e3779b97f4a7c15U;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30U)) * 0xbf58476d1ce4e5b9U;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94d049bb133111ebU;
    return mixed ^ (mixed >> 31U);
  }

  /// From `low` up to `high`, which is left out but for rounding.
  double between(double low, double high) {
    constexpr double kUnit = 1.0 / 9007199254740992.0;  // 2^-53
    return low + (high - low) * (static_cast<double>(next() >> 11U) * kUnit);
  }

  /// One of 0 to `count` - 1; `count` is at least 1.
  std::size_t below(std::size_t count) { return static_cast<std::size_t>(next() % count); }

  /// True once in `count` times on average.
  bool oneIn(std::size_t count) { return below(count) == 0; }

 private:
  std::uint64_t state_;
};

}  // namespace KorvaniBenchmarks
