#pragma once

#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>

#include "Platform/Executor.hpp"

namespace KorvaniTools {

/// Hands jobs to another executor and knows when all of them have run.
///
///     const auto work = std::make_shared<CountedExecutor>(std::make_shared<ThreadPool>(2));
///     setGlobalExecutor(work);
///     task->run();
///     do mainQueue().runUntilIdle(); while (work->waitForJobs());   // everything is delivered
///
/// Thread safety: jobs may be given from any thread; one thread waits. Everything that was given
/// must have run before the executor is destroyed, so whoever gave jobs waits first.
class CountedExecutor final : public KorvaniPlatform::Executor {
 public:
  explicit CountedExecutor(std::shared_ptr<KorvaniPlatform::Executor> workers);

  void execute(KorvaniPlatform::Job job) override;

  /// Waits until no job is left, queued or running.
  /// @return whether any job has been given since the last call; what it has left for the main
  ///     queue is there now
  bool waitForJobs();

 private:
  void jobEnded();

  std::mutex mutex_;
  std::condition_variable ended_;
  std::size_t given_ = 0;
  std::size_t done_ = 0;
  std::size_t awaited_ = 0;
  // Last, so that its threads end before what their jobs count with.
  const std::shared_ptr<KorvaniPlatform::Executor> workers_;
};

}  // namespace KorvaniTools
