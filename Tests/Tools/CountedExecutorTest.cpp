#include "Trace/CountedExecutor.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

#include "Platform/MainQueue.hpp"
#include "Platform/MainQueueExecutor.hpp"
#include "Platform/ThreadPool.hpp"

namespace KorvaniTest {
namespace {

using KorvaniPlatform::mainQueue;
using KorvaniPlatform::MainQueueExecutor;
using KorvaniTools::CountedExecutor;

TEST(CountedExecutor, HasNothingToWaitForWithoutJobs) {
  CountedExecutor work(std::make_shared<MainQueueExecutor>());
  EXPECT_FALSE(work.waitForJobs());
  work.execute(nullptr);
  EXPECT_FALSE(work.waitForJobs());
}

TEST(CountedExecutor, SaysOnceThatJobsWereThere) {
  CountedExecutor work(std::make_shared<MainQueueExecutor>());
  bool done = false;
  work.execute([&] { done = true; });
  mainQueue().runUntilIdle();
  EXPECT_TRUE(done);
  EXPECT_TRUE(work.waitForJobs());
  EXPECT_FALSE(work.waitForJobs());
}

#ifndef KORVANI_SINGLE_THREADED

TEST(CountedExecutor, WaitsForJobsAndTheJobsTheyGive) {
  CountedExecutor work(std::make_shared<KorvaniPlatform::ThreadPool>(2));
  std::atomic<int> done{0};
  const auto captured = std::make_shared<int>();
  for (int i = 0; i < 20; ++i) {
    work.execute([&, captured] {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
      work.execute([&, captured] { ++done; });
      ++done;
    });
  }
  EXPECT_TRUE(work.waitForJobs());
  EXPECT_EQ(done, 40);
  EXPECT_EQ(captured.use_count(), 1);
}

#endif

}  // namespace
}  // namespace KorvaniTest
