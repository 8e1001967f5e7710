#pragma once

#include <functional>

#include "Platform/Export.hpp"

/// Something that runs jobs: the main queue, the global queue, or what a host puts in their place.
///
/// A host that has its own thread pool implements this one function and installs it with
/// `setGlobalExecutor`:
///
///     class HostPool : public Executor {
///       void execute(Job job) override { pool_.submit(std::move(job)); }
///     };

namespace KorvaniPlatform {

/// A piece of work. It runs once, and what it captured is released with it. It must not throw.
using Job = std::function<void()>;

/// Moves the work out of `job` and leaves it empty. A moved-from `std::function` may keep what it
/// captured (libc++ copies small ones), and then objects would die late, on the wrong thread;
/// whoever passes a job on therefore takes it this way.
inline Job takeJob(Job& job) {
  Job taken;
  taken.swap(job);
  return taken;
}

/// Runs jobs, some time after they were given to it.
class KORVANI_API Executor {
 public:
  Executor() = default;
  Executor(const Executor&) = delete;
  Executor& operator=(const Executor&) = delete;
  virtual ~Executor() = default;

  /// Takes a job and returns without waiting for it. The job runs exactly once, never inside this
  /// call, and is destroyed, with what it captured, on the thread that ran it, as soon as it has
  /// returned. An empty job is ignored. May be called from any thread, and from inside jobs.
  virtual void execute(Job job) = 0;
};

}  // namespace KorvaniPlatform
