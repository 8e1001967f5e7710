#include "Platform/GlobalQueue.hpp"

#include <algorithm>
#include <mutex>
#include <thread>
#include <utility>

#include "Platform/MainQueue.hpp"

namespace KorvaniPlatform {

namespace {

#ifdef KORVANI_SINGLE_THREADED

using DefaultExecutor = MainQueueExecutor;

DefaultExecutor* makeDefaultExecutor() { return new MainQueueExecutor; }

void join(DefaultExecutor&) {}

#else

using DefaultExecutor = ThreadPool;

// Two at the least: where there is one processor, a long search must not hold up everything else.
DefaultExecutor* makeDefaultExecutor() {
  return new ThreadPool(std::max(2u, std::thread::hardware_concurrency()));
}

void join(DefaultExecutor& executor) { executor.join(); }

#endif

// Never destroyed: leaving the process with running jobs is clean.
DefaultExecutor& defaultExecutor() {
  static auto* const executor = makeDefaultExecutor();
  return *executor;
}

// Hands every job to the executor that is installed at that moment.
class Forwarder final : public Executor {
 public:
  void execute(Job job) override {
    if (const std::shared_ptr<Executor> executor = installed()) {
      executor->execute(takeJob(job));
    } else {
      defaultExecutor().execute(takeJob(job));
    }
  }

  void install(std::shared_ptr<Executor> executor) {
    const std::lock_guard lock(mutex_);
    installed_.swap(executor);
  }

 private:
  std::shared_ptr<Executor> installed() const {
    const std::lock_guard lock(mutex_);
    return installed_;
  }

  mutable std::mutex mutex_;
  std::shared_ptr<Executor> installed_;
};

Forwarder& forwarder() {
  static auto* const queue = new Forwarder;
  return *queue;
}

}  // namespace

Executor& globalQueue() {
  mainQueue();
  return forwarder();
}

void setGlobalExecutor(std::shared_ptr<Executor> executor) {
  forwarder().install(std::move(executor));
}

void joinGlobalQueue() { join(defaultExecutor()); }

}  // namespace KorvaniPlatform
