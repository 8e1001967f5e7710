#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <utility>

#include "Platform/MainQueue.hpp"
#include "Platform/ManualClock.hpp"

/// What the tests of the queues share: a main queue that the test's thread serves, driven by a
/// clock that the test moves.

namespace KorvaniPlatform {

class QueueFixture : public testing::Test {
 protected:
  void SetUp() override {
    setClock(time_);
    mainQueue().runUntilIdle();
  }

  void TearDown() override {
    mainQueue().attach(nullptr);
    time_->advance(std::chrono::hours(1000));
    mainQueue().runUntilIdle();
    setClock(nullptr);
  }

  const std::shared_ptr<ManualClock> time_ = std::make_shared<ManualClock>();
};

/// Remembers the thread on which it was destroyed: stands for what a job captures.
class DeathWitness {
 public:
  explicit DeathWitness(std::thread::id& grave) : grave_(grave) { grave_ = std::thread::id(); }
  DeathWitness(const DeathWitness&) = delete;
  DeathWitness& operator=(const DeathWitness&) = delete;
  ~DeathWitness() { grave_ = std::this_thread::get_id(); }

 private:
  std::thread::id& grave_;
};

/// Runs `work` on a thread of its own and waits for its end.
template <class Work>
void onAnotherThread(Work&& work) {
  std::thread(std::forward<Work>(work)).join();
}

}  // namespace KorvaniPlatform
