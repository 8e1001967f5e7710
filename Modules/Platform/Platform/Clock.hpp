#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "Platform/Export.hpp"

/// The time, as everything in the engine reads it.
///
/// Two readings exist: `uptime()`, which never goes back and drives timers and measurements, and
/// `date()`, the calendar time that stamps locations. Both come from one process-wide clock, so
/// that a test or a replay can put its own in place (`ManualClock`) and drive every timer by hand:
///
///     auto time = std::make_shared<ManualClock>();
///     setClock(time);
///     mainQueue().schedule(std::chrono::seconds(10), [] { ... });
///     time->advance(std::chrono::seconds(10));
///     mainQueue().runUntilIdle();              // the timer fires here
///
/// Thread safety: all of it may be used from any thread.

namespace KorvaniPlatform {

/// A length of time. Signed, whole nanoseconds.
using Duration = std::chrono::nanoseconds;

/// A moment of calendar time.
using Date = std::chrono::time_point<std::chrono::system_clock, Duration>;

/// A source of time. Implementations are thread-safe; their functions return quickly and call
/// nothing of the engine, since they are asked while the engine holds its locks.
class KORVANI_API Clock {
 public:
  Clock() = default;
  Clock(const Clock&) = delete;
  Clock& operator=(const Clock&) = delete;
  virtual ~Clock() = default;

  /// Time since some fixed moment of the clock's own. Never decreases.
  virtual Duration uptime() const = 0;

  /// The calendar time now. It may jump, as calendars do when they are set.
  virtual Date date() const = 0;

  /// Whether waiting makes this clock's time pass. False for a clock that is moved by hand: who
  /// waits for a moment of it waits for `announceClockJump` instead. The default is true.
  virtual bool advancesByItself() const { return true; }
};

/// The device's clocks: the standard library's steady clock and its system clock. The default.
class KORVANI_API SystemClock final : public Clock {
 public:
  Duration uptime() const override;
  Date date() const override;
};

/// The clock of the process; never null.
KORVANI_API std::shared_ptr<Clock> clock();

/// Puts another clock in place for the whole process; null restores the system clock. Timers that
/// are already scheduled keep the uptime at which they are due, so a clock with another origin is
/// best set before the first timer. Announces a jump.
KORVANI_API void setClock(std::shared_ptr<Clock> replacement);

/// To be called by a clock whose uptime changed otherwise than by waiting, after the change and
/// with no lock held. Who sleeps until a moment of the clock looks at it again.
KORVANI_API void announceClockJump();

/// For the main queue, which is the only one that sleeps by the clock: `handler` runs at every
/// announced jump, on the announcing thread. Returns the handler that it replaces.
KORVANI_API std::function<void()> setClockJumpHandler(std::function<void()> handler);

}  // namespace KorvaniPlatform
