#include "Platform/MainQueue.hpp"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <string>
#include <vector>

#include "Unit/Platform/QueueFixture.hpp"

namespace KorvaniPlatform {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::seconds;

class MainQueueTest : public QueueFixture {
 protected:
  Job note(char letter) {
    return [this, letter] { log_ += letter; };
  }

  std::string log_;
};

TEST_F(MainQueueTest, RunsJobsInTheOrderInWhichTheyWereQueued) {
  mainQueue().async(note('a'));
  mainQueue().execute(note('b'));
  mainQueue().async(note('c'));
  EXPECT_EQ(log_, "");
  mainQueue().pump();
  EXPECT_EQ(log_, "abc");
}

TEST_F(MainQueueTest, RunsEachJobOnce) {
  mainQueue().async(note('a'));
  mainQueue().pump();
  mainQueue().pump();
  EXPECT_EQ(log_, "a");
}

TEST_F(MainQueueTest, IgnoresEmptyJobs) {
  mainQueue().async(nullptr);
  mainQueue().async(note('a'));
  mainQueue().pump();
  EXPECT_EQ(log_, "a");
}

TEST_F(MainQueueTest, APumpRunsOnlyTheJobsThatWerePresentWhenItBegan) {
  mainQueue().async([this] {
    log_ += 'a';
    mainQueue().async(note('c'));
  });
  mainQueue().async(note('b'));
  mainQueue().pump();
  EXPECT_EQ(log_, "ab");
  mainQueue().pump();
  EXPECT_EQ(log_, "abc");
}

TEST_F(MainQueueTest, RunUntilIdleRunsTheJobsThatJobsQueue) {
  mainQueue().async([this] {
    log_ += 'a';
    mainQueue().async([this] {
      log_ += 'c';
      mainQueue().async(note('d'));
    });
  });
  mainQueue().async(note('b'));
  mainQueue().runUntilIdle();
  EXPECT_EQ(log_, "abcd");
}

TEST_F(MainQueueTest, ServingItFromInsideAJobDoesNothing) {
  mainQueue().async([this] {
    log_ += 'a';
    mainQueue().pump();
    mainQueue().runUntilIdle();
    mainQueue().run();
    log_ += 'b';
  });
  mainQueue().async(note('c'));
  mainQueue().pump();
  EXPECT_EQ(log_, "abc");
}

TEST_F(MainQueueTest, ServingItFromAnotherThreadWhileAJobRunsDoesNothing) {
  mainQueue().async([this] {
    onAnotherThread([] {
      mainQueue().pump();
      mainQueue().runUntilIdle();
      mainQueue().run();
      EXPECT_FALSE(isMainThread());
    });
    log_ += 'a';
    EXPECT_TRUE(isMainThread());
  });
  mainQueue().async(note('b'));
  mainQueue().pump();
  EXPECT_EQ(log_, "ab");
}

TEST_F(MainQueueTest, TheMainThreadIsTheOneThatPumpedLast) {
  EXPECT_TRUE(isMainThread());
  onAnotherThread([] {
    EXPECT_FALSE(isMainThread());
    mainQueue().pump();
    EXPECT_TRUE(isMainThread());
    EXPECT_TRUE(mainQueue().isMainThread());
  });
  EXPECT_FALSE(isMainThread());
  mainQueue().pump();
  EXPECT_TRUE(isMainThread());
}

TEST_F(MainQueueTest, JobsFromAnyThreadRunOnTheThreadThatPumps) {
  onAnotherThread([this] { mainQueue().async([this] { log_ += isMainThread() ? 'm' : 'o'; }); });
  EXPECT_EQ(log_, "");
  mainQueue().pump();
  EXPECT_EQ(log_, "m");
}

TEST_F(MainQueueTest, AJobAndWhatItCapturedDieRightAfterItReturned) {
  auto witness = std::make_shared<int>(0);
  const std::weak_ptr<int> watch = witness;
  mainQueue().async([kept = std::move(witness)] { ++*kept; });
  mainQueue().async([watch] { EXPECT_TRUE(watch.expired()); });
  EXPECT_FALSE(watch.expired());
  mainQueue().pump();
  EXPECT_TRUE(watch.expired());
}

TEST_F(MainQueueTest, WhatAJobCapturedDiesOnTheMainThreadWhoeverQueuedIt) {
  // Small and large captures: a std::function treats them differently when it is moved.
  std::thread::id small;
  std::thread::id large;
  onAnotherThread([&small, &large] {
    mainQueue().async([witness = std::make_shared<DeathWitness>(small)] { (void)witness; });
    std::array<char, 256> ballast{};
    mainQueue().async([witness = std::make_shared<DeathWitness>(large), ballast] {
      (void)witness;
      (void)ballast;
    });
  });
  mainQueue().pump();
  EXPECT_EQ(small, std::this_thread::get_id());
  EXPECT_EQ(large, std::this_thread::get_id());
}

TEST_F(MainQueueTest, WhatJobsCapturedDiesOnTheMainThreadWhileItPumpsAllTheTime) {
  constexpr int kJobs = 5000;
  std::vector<std::thread::id> graves(kJobs);
  std::atomic<bool> posted{false};
  std::thread poster([&] {
    for (std::thread::id& grave : graves) {
      mainQueue().async([witness = std::make_shared<DeathWitness>(grave)] { (void)witness; });
    }
    posted = true;
  });
  while (!posted) mainQueue().pump();
  poster.join();
  mainQueue().runUntilIdle();
  for (const std::thread::id& grave : graves) ASSERT_EQ(grave, std::this_thread::get_id());
}

TEST_F(MainQueueTest, DestructorsOfCapturesMayUseTheQueue) {
  struct Farewell {
    explicit Farewell(std::string& text) : log(text) {}
    ~Farewell() {
      mainQueue().async([&text = log] { text += 'b'; });
    }
    std::string& log;
  };
  mainQueue().async([this, last = std::make_shared<Farewell>(log_)] { log_ += 'a'; });
  mainQueue().runUntilIdle();
  EXPECT_EQ(log_, "ab");
}

TEST_F(MainQueueTest, EveryThreadsJobsKeepTheirOrder) {
  constexpr int kThreads = 4;
  constexpr int kJobs = 1000;
  std::vector<std::vector<int>> seen(kThreads);
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    std::vector<int>& mine = seen[static_cast<std::size_t>(i)];
    threads.emplace_back([&mine] {
      for (int job = 0; job < kJobs; ++job)
        mainQueue().async([&mine, job] { mine.push_back(job); });
    });
  }
  mainQueue().runUntilIdle();
  for (std::thread& thread : threads) thread.join();
  mainQueue().runUntilIdle();
  for (const std::vector<int>& jobs : seen) {
    ASSERT_EQ(jobs.size(), static_cast<std::size_t>(kJobs));
    for (int job = 0; job < kJobs; ++job) ASSERT_EQ(jobs[static_cast<std::size_t>(job)], job);
  }
}

// The remaining tests block in run() on a thread of their own, by the real clock or a manual one.

class MainQueueRunTest : public MainQueueTest {
 protected:
  std::thread startRunning() {
    std::thread server([] { mainQueue().run(); });
    waitUntilServed();
    return server;
  }

  static void waitUntilServed() {
    std::atomic<bool> served{false};
    mainQueue().async([&served] { served = true; });
    while (!served) std::this_thread::yield();
  }
};

TEST_F(MainQueueRunTest, RunServesJobsAsTheyComeUntilItIsStopped) {
  std::thread server = startRunning();
  for (int i = 0; i < 100; ++i) mainQueue().async(note('x'));
  waitUntilServed();
  mainQueue().stop();
  server.join();
  EXPECT_EQ(log_, std::string(100, 'x'));
}

TEST_F(MainQueueRunTest, RunMakesItsThreadTheMainThread) {
  std::thread server = startRunning();
  EXPECT_FALSE(isMainThread());
  std::atomic<bool> onMain{false};
  mainQueue().async([&onMain] { onMain = isMainThread(); });
  waitUntilServed();
  EXPECT_TRUE(onMain);
  mainQueue().stop();
  server.join();
}

TEST_F(MainQueueRunTest, PumpingElsewhereWhileRunSleepsDoesNothing) {
  std::thread server = startRunning();
  mainQueue().pump();
  mainQueue().runUntilIdle();
  mainQueue().run();
  EXPECT_FALSE(isMainThread());
  mainQueue().stop();
  server.join();
}

TEST_F(MainQueueRunTest, StopFromInsideAJobEndsRunAfterTheJobsPresent) {
  mainQueue().async([this] {
    log_ += 'a';
    mainQueue().stop();
    mainQueue().async(note('c'));
  });
  mainQueue().async(note('b'));
  mainQueue().run();
  EXPECT_EQ(log_, "ab");
  mainQueue().pump();
  EXPECT_EQ(log_, "abc");
}

TEST_F(MainQueueRunTest, AStopBeforeRunHoldsForTheNextRunOnly) {
  mainQueue().async(note('a'));
  mainQueue().stop();
  mainQueue().run();
  EXPECT_EQ(log_, "a");
  mainQueue().async([this] {
    log_ += 'b';
    mainQueue().async([this] {
      log_ += 'c';
      mainQueue().stop();
    });
  });
  mainQueue().run();
  EXPECT_EQ(log_, "abc");
}

TEST_F(MainQueueRunTest, RunSleepsUntilATimerIsDueByTheSystemClock) {
  setClock(nullptr);
  const Duration before = clock()->uptime();
  mainQueue().schedule(milliseconds(30), [] { mainQueue().stop(); });
  mainQueue().run();
  EXPECT_GE(clock()->uptime() - before, milliseconds(30));
}

TEST_F(MainQueueRunTest, AnEarlierTimerFromAnotherThreadShortensTheSleep) {
  setClock(nullptr);
  const Duration before = clock()->uptime();
  const std::shared_ptr<Timer> far = mainQueue().schedule(hours(10), note('x'));
  std::thread server = startRunning();
  mainQueue().schedule(milliseconds(20), [] { mainQueue().stop(); });
  server.join();
  EXPECT_LT(clock()->uptime() - before, hours(1));
  EXPECT_EQ(log_, "");
  far->invalidate();
}

TEST_F(MainQueueRunTest, AdvancingAManualClockWakesRun) {
  mainQueue().schedule(hours(5), [this] {
    log_ += 'x';
    mainQueue().stop();
  });
  std::thread server = startRunning();
  time_->advance(hours(4));
  waitUntilServed();
  time_->advance(hours(1));
  server.join();
  EXPECT_EQ(log_, "x");
}

TEST_F(MainQueueRunTest, ATimerInTheFarthestFutureIsWaitedForWithoutOverflow) {
  setClock(nullptr);
  const std::shared_ptr<Timer> never = mainQueue().schedule(Duration::max(), note('x'));
  std::thread server = startRunning();
  mainQueue().stop();
  server.join();
  EXPECT_EQ(log_, "");
  EXPECT_TRUE(never->isValid());
  never->invalidate();
}

}  // namespace
}  // namespace KorvaniPlatform
