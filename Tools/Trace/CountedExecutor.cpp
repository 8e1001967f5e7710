#include "Trace/CountedExecutor.hpp"

#include <utility>

namespace KorvaniTools {

using KorvaniPlatform::Executor;
using KorvaniPlatform::Job;
using KorvaniPlatform::takeJob;

CountedExecutor::CountedExecutor(std::shared_ptr<Executor> workers)
    : workers_(std::move(workers)) {}

void CountedExecutor::execute(Job job) {
  if (!job) return;
  {
    const std::lock_guard lock(mutex_);
    ++given_;
  }
  workers_->execute([this, job = takeJob(job)]() mutable {
    job();
    // What it captured ends with it, before anybody is told.
    job = nullptr;
    jobEnded();
  });
}

void CountedExecutor::jobEnded() {
  const std::lock_guard lock(mutex_);
  ++done_;
  ended_.notify_all();
}

bool CountedExecutor::waitForJobs() {
  std::unique_lock lock(mutex_);
  if (awaited_ == given_) return false;
  ended_.wait(lock, [this] { return done_ == given_; });
  awaited_ = given_;
  return true;
}

}  // namespace KorvaniTools
