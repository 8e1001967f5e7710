#include "Platform/ThreadPool.hpp"

#ifndef KORVANI_SINGLE_THREADED

#include <algorithm>

#include "Platform/FatalError.hpp"

namespace KorvaniPlatform {

namespace {

// The pool whose worker the thread is.
thread_local const ThreadPool* poolOfThisThread = nullptr;

}  // namespace

ThreadPool::ThreadPool(unsigned threads) : threadCount_(std::max(threads, 1u)) {}

ThreadPool::~ThreadPool() { join(); }

void ThreadPool::execute(Job job) {
  if (!job) return;
  const std::lock_guard lock(mutex_);
  jobs_.emplace_back().swap(job);
  if (!started_) startWorkers();
  wake_.notify_one();
}

void ThreadPool::join() {
  if (poolOfThisThread == this) {
    KORVANI_FATAL("ThreadPool::join was called from one of the pool's own jobs");
  }
  const std::lock_guard joining(joining_);
  std::unique_lock lock(mutex_);
  if (!started_) return;
  std::vector<std::thread> ended;
  ended.swap(workers_);
  ending_ = true;
  wake_.notify_all();
  lock.unlock();
  for (std::thread& worker : ended) worker.join();
  lock.lock();
  ending_ = false;
  started_ = false;
  if (!jobs_.empty()) startWorkers();
}

void ThreadPool::startWorkers() {
  started_ = true;
  for (unsigned i = 0; i < threadCount_; ++i) {
    workers_.emplace_back([this] { work(); });
  }
}

void ThreadPool::work() {
  poolOfThisThread = this;
  std::unique_lock lock(mutex_);
  while (true) {
    wake_.wait(lock, [this] { return ending_ || !jobs_.empty(); });
    if (jobs_.empty()) return;
    Job job;
    job.swap(jobs_.front());
    jobs_.pop_front();
    lock.unlock();
    job();
    job = nullptr;
    lock.lock();
  }
}

}  // namespace KorvaniPlatform

#endif  // KORVANI_SINGLE_THREADED
