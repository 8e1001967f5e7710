#pragma once

/// Waiting, on the main thread, for what background work delivers to the main queue.

#include <chrono>
#include <functional>
#include <thread>

#include "Platform/MainQueue.hpp"

namespace KorvaniTest {

/// Keeps the main queue going until `done()` holds. The time limit is there to end a test that
/// hangs; it decides nothing else.
/// @return whether it holds
inline bool pumpUntil(const std::function<bool()>& done,
                      std::chrono::seconds limit = std::chrono::seconds(60)) {
  const auto end = std::chrono::steady_clock::now() + limit;
  for (;;) {
    KorvaniPlatform::mainQueue().runUntilIdle();
    if (done()) return true;
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::microseconds(200));
  }
}

}  // namespace KorvaniTest
