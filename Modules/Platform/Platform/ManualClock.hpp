#pragma once

#include <atomic>

#include "Platform/Clock.hpp"
#include "Platform/Export.hpp"

/// A clock that stands still until it is told to move: for tests, simulations and replays.
///
///     auto time = std::make_shared<ManualClock>();
///     setClock(time);
///     time->advance(std::chrono::milliseconds(250));
///
/// Uptime and calendar time move together. While it is the process's clock, a thread that waits in
/// `MainQueue::run` wakes up when an advance makes a timer due.
///
/// Thread safety: thread-safe.

namespace KorvaniPlatform {

class KORVANI_API ManualClock final : public Clock {
 public:
  /// A clock that shows the given readings until it is advanced: by default an uptime of zero, and
  /// the calendar's epoch.
  explicit ManualClock(Duration uptime = Duration::zero(), Date date = Date());

  /// The starting uptime and everything advanced since.
  Duration uptime() const override;

  /// The starting date and everything advanced since.
  Date date() const override;

  /// False: only `advance` moves it.
  bool advancesByItself() const override;

  /// Moves both readings forward and announces the jump. A negative duration does nothing, since
  /// uptime never goes back.
  void advance(Duration duration);

 private:
  const Duration startUptime_;
  const Date startDate_;
  std::atomic<Duration::rep> elapsed_{0};
};

}  // namespace KorvaniPlatform
