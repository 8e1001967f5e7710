#pragma once

#ifndef KORVANI_SINGLE_THREADED

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

#include "Platform/Executor.hpp"
#include "Platform/Export.hpp"

/// A fixed number of threads that run jobs, several at a time.
///
///     ThreadPool pool(4);
///     pool.execute([] { ... });
///     pool.join();                 // everything has run, no thread is left
///
/// Jobs begin in the order in which they were given. A worker destroys a job, and what it captured,
/// before it takes the next. The threads are started by the first job, and again by the first job
/// after a `join`. Builds with `KORVANI_SINGLE_THREADED` have no thread pool.
///
/// Thread safety: thread-safe. Destruction joins; nobody else may use the pool then.

namespace KorvaniPlatform {

class KORVANI_API ThreadPool final : public Executor {
 public:
  /// A pool of that many threads; 0 counts as 1. No thread is started yet.
  explicit ThreadPool(unsigned threads);
  ~ThreadPool() override;

  /// Queues the job for the next free worker.
  void execute(Job job) override;

  /// Waits until all jobs, queued ones and those they queue in turn, have run, and ends the
  /// threads. Jobs that other threads give meanwhile are run too, then or by fresh threads. Calling
  /// it from a job of this pool is a fatal error, since it would wait for itself.
  void join();

 private:
  void startWorkers();
  void work();

  const unsigned threadCount_;
  std::mutex joining_;
  std::mutex mutex_;
  std::condition_variable wake_;
  std::deque<Job> jobs_;
  std::vector<std::thread> workers_;
  bool started_ = false;
  bool ending_ = false;
};

}  // namespace KorvaniPlatform

#endif  // KORVANI_SINGLE_THREADED
