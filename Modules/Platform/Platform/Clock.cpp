#include "Platform/Clock.hpp"

#include <mutex>
#include <utility>

namespace KorvaniPlatform {

namespace {

struct ClockState {
  std::mutex mutex;
  std::shared_ptr<Clock> clock = std::make_shared<SystemClock>();
  std::function<void()> jumpHandler;
};

// Never destroyed: background work may still read the clock while the process leaves.
ClockState& state() {
  static auto* const clockState = new ClockState;
  return *clockState;
}

}  // namespace

Duration SystemClock::uptime() const {
  return std::chrono::duration_cast<Duration>(std::chrono::steady_clock::now().time_since_epoch());
}

Date SystemClock::date() const {
  return std::chrono::time_point_cast<Duration>(std::chrono::system_clock::now());
}

std::shared_ptr<Clock> clock() {
  const std::lock_guard lock(state().mutex);
  return state().clock;
}

void setClock(std::shared_ptr<Clock> replacement) {
  if (replacement == nullptr) replacement = std::make_shared<SystemClock>();
  {
    const std::lock_guard lock(state().mutex);
    state().clock.swap(replacement);
  }
  announceClockJump();
}

void announceClockJump() {
  std::function<void()> handler;
  {
    const std::lock_guard lock(state().mutex);
    handler = state().jumpHandler;
  }
  if (handler) handler();
}

std::function<void()> setClockJumpHandler(std::function<void()> handler) {
  const std::lock_guard lock(state().mutex);
  state().jumpHandler.swap(handler);
  return handler;
}

}  // namespace KorvaniPlatform
