#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "Platform/Clock.hpp"
#include "Platform/Executor.hpp"
#include "Platform/Export.hpp"
#include "Platform/RunLoopHost.hpp"
#include "Platform/Timer.hpp"

/// The queue of the main thread: where completion handlers run and timers fire.
///
/// The queue owns order, timers and protection against re-entry; when it runs is up to the host,
/// in one of three ways:
///
///     mainQueue().attach(host);        // the host's own main loop pumps (see RunLoopHost)
///     mainQueue().run();               // no loop of one's own: blocks until stop()
///     mainQueue().runUntilIdle();      // by hand: tests, tools, a game's frame
///
/// Guarantees
/// - Jobs run in the order in which they were queued, one at a time, on the thread that pumps.
/// - Each job, and what it captured, is destroyed on that thread right after it returned. The same
///   holds for the jobs of timers, fired or invalidated.
/// - A pump runs the jobs present when it begins, then the timers that were due then, earliest
///   first, ties in the order of scheduling. What they queue or schedule waits for the next pump,
///   so a pump always ends.
/// - Only one thread serves the queue. `pump`, `runUntilIdle` and `run` do nothing when they are
///   called from inside a job, or while another thread is in one of them.
///
/// Thread safety: every function may be called from any thread.

namespace KorvaniPlatform {

class KORVANI_API MainQueue final : public Executor {
 public:
  /// Queues a job. An empty one is ignored.
  void async(Job job);

  /// The same as `async`.
  void execute(Job job) override;

  /// Runs `job` once, by a pump that begins `delay` or more from now (of the process's clock); a
  /// negative delay counts as zero. Never null; the queue keeps the timer even when the caller
  /// drops it.
  std::shared_ptr<Timer> schedule(Duration delay, Job job);

  /// Makes `host` responsible for pumping; null detaches. The queue holds the host until another
  /// one is attached. A host that is attached late is told at once about work that is waiting. A
  /// call to the former host that was under way may still end after this returned.
  void attach(std::shared_ptr<RunLoopHost> host);

  /// Runs the jobs present now and the timers due now. The calling thread becomes the main thread.
  void pump();

  /// Pumps until no job and no due timer is left; does not wait for timers that are not due, nor
  /// for other threads that are about to queue something. The calling thread becomes the main
  /// thread.
  void runUntilIdle();

  /// Serves the queue until `stop()`, sleeping while there is nothing to do. The calling thread
  /// becomes the main thread. An attached host is left alone meanwhile. Where the main thread must
  /// not sleep, as in a browser page, a host is attached instead.
  void run();

  /// Makes `run()` return as soon as the pump that is under way has ended. A stop that comes when
  /// no `run()` is under way holds for the next one, which then pumps once.
  void stop();

  /// True on the thread that served the queue last; before anyone did, on the thread that first
  /// used the engine's queues.
  bool isMainThread() const;

 private:
  friend KORVANI_API MainQueue& mainQueue();

  class OneShotTimer;

  /// Due uptime, then number in the order of scheduling.
  using TimerKey = std::pair<Duration, std::uint64_t>;

  struct ScheduledJob {
    std::shared_ptr<OneShotTimer> timer;
    Job job;
  };

  MainQueue();

  bool enter();
  void leave();
  void pumpOnce();
  bool fireNextTimer(Duration now, std::uint64_t endNumber);
  bool takeDueTimer(Duration now, std::uint64_t endNumber, ScheduledJob& taken);
  bool hasWork() const;
  bool waitForWork();
  std::optional<Duration> nextWake() const;
  void workArrived();
  void tellHost(std::unique_lock<std::mutex>& lock);
  void drop(const TimerKey& key);

  mutable std::mutex mutex_;
  std::condition_variable wake_;
  std::deque<Job> jobs_;
  std::deque<Job> discarded_;
  std::deque<Job> present_;   // that the pump under way took; its thread's own
  std::deque<Job> dropping_;  // the same of the discarded ones
  std::map<TimerKey, ScheduledJob> timers_;
  std::uint64_t nextTimerNumber_ = 0;
  bool serving_ = false;
  bool stopRequested_ = false;
  std::shared_ptr<RunLoopHost> host_;
  std::optional<Duration> promisedWake_;
  bool telling_ = false;
  bool tellAgain_ = false;
  std::atomic<std::thread::id> mainThread_;
};

/// The main queue of the process. It is made on first use and never destroyed, so that leaving the
/// process with work pending is clean.
KORVANI_API MainQueue& mainQueue();

/// Whether the calling thread is the main thread; see `MainQueue::isMainThread`.
KORVANI_API bool isMainThread();

}  // namespace KorvaniPlatform
