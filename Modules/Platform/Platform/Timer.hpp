#pragma once

#include "Platform/Export.hpp"

/// The handle of a scheduled job of the main queue. See `MainQueue::schedule`, which makes them.
///
///     std::shared_ptr<Timer> limit = mainQueue().schedule(std::chrono::seconds(10), interrupt);
///     ...
///     limit->invalidate();     // the search was quick enough
///
/// The queue holds the timer until it fires; letting the handle go changes nothing.
///
/// Thread safety: thread-safe.

namespace KorvaniPlatform {

class KORVANI_API Timer {
 public:
  Timer() = default;
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;
  virtual ~Timer() = default;

  /// Calls the job off, if it has not begun; harmless afterwards, and from inside the job. On the
  /// main thread the job is destroyed before this returns; called from another thread, the job is
  /// destroyed by the next pump, since what it captured belongs to the main thread, and a job that
  /// has just begun may still be running.
  virtual void invalidate() = 0;

  /// True until the timer fires or is invalidated. Already false while its job runs.
  virtual bool isValid() const = 0;
};

}  // namespace KorvaniPlatform
