#pragma once

#include "Platform/Clock.hpp"
#include "Platform/Export.hpp"

/// What a host's own main loop has to do for the engine: wake up and pump.
///
/// An application already has a main loop (a looper, an event loop, a browser's). The engine's main
/// queue needs one thing of it: that `MainQueue::pump` is called on the main thread soon after the
/// queue asked for it. In a browser that is one call:
///
///     class Page : public RunLoopHost {
///       void wakeUp(Duration after) override { setTimeout(pumpMainQueue, milliseconds(after)); }
///     };
///     mainQueue().attach(std::make_shared<Page>());
///
/// Examples/HostLoop attaches a loop of file descriptors in about ten lines.

namespace KorvaniPlatform {

class KORVANI_API RunLoopHost {
 public:
  RunLoopHost() = default;
  RunLoopHost(const RunLoopHost&) = delete;
  RunLoopHost& operator=(const RunLoopHost&) = delete;
  virtual ~RunLoopHost() = default;

  /// Asks for one `mainQueue().pump()` on the main thread, `after` from now: zero when jobs are
  /// waiting, otherwise the time until the next timer is due; never negative.
  ///
  /// Each call replaces the one before, so one timer is enough; pumping earlier or more often does
  /// no harm. After a pump the queue calls again if work is left. Calls come from any thread,
  /// one at a time. The function must not pump itself, only arrange for it; otherwise it may use
  /// the queue.
  virtual void wakeUp(Duration after) = 0;
};

}  // namespace KorvaniPlatform
