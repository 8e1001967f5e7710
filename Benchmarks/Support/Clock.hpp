#pragma once

#include <chrono>

namespace KorvaniBenchmarks {

/// Nanoseconds since some moment, by a clock that never goes back.
inline double nanoseconds() {
  using Clock = std::chrono::steady_clock;
  return std::chrono::duration<double, std::nano>(Clock::now().time_since_epoch()).count();
}

}  // namespace KorvaniBenchmarks
