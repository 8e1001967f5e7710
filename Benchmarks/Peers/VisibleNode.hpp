#pragma once

#include <cstdint>

namespace KorvaniBenchmarks {

/// A node in sight of a position, and the great-circle distance in metres.
struct VisibleNode {
  std::uint32_t node;
  double distance;

  friend bool operator==(const VisibleNode&, const VisibleNode&) = default;
};

/// How many times farther than the nearest visible node others may be, in degrees.
inline constexpr double kReach = 2.5;

}  // namespace KorvaniBenchmarks
