#include "Platform/ThreadPool.hpp"

#ifndef KORVANI_SINGLE_THREADED

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace KorvaniPlatform {
namespace {

TEST(ThreadPool, RunsJobsOnThreadsOfItsOwn) {
  std::promise<std::thread::id> where;
  ThreadPool pool(2);
  pool.execute([&where] { where.set_value(std::this_thread::get_id()); });
  EXPECT_NE(where.get_future().get(), std::this_thread::get_id());
}

TEST(ThreadPool, RunsAsManyJobsAtATimeAsItHasThreads) {
  constexpr int kThreads = 3;
  ThreadPool pool(kThreads);
  std::atomic<int> meeting{0};
  // Each job waits for the others: fewer threads would never get out of here.
  for (int i = 0; i < kThreads; ++i) {
    pool.execute([&meeting] {
      ++meeting;
      while (meeting < kThreads) std::this_thread::yield();
    });
  }
  pool.join();
  EXPECT_EQ(meeting, kThreads);
}

TEST(ThreadPool, OneThreadRunsJobsInOrder) {
  ThreadPool pool(1);
  std::vector<int> order;
  for (int i = 0; i < 1000; ++i) pool.execute([&order, i] { order.push_back(i); });
  pool.join();
  ASSERT_EQ(order.size(), 1000u);
  for (int i = 0; i < 1000; ++i) ASSERT_EQ(order[static_cast<std::size_t>(i)], i);
}

TEST(ThreadPool, ZeroThreadsCountAsOne) {
  ThreadPool pool(0);
  std::atomic<int> ran{0};
  pool.execute([&ran] { ++ran; });
  pool.join();
  EXPECT_EQ(ran, 1);
}

TEST(ThreadPool, IgnoresEmptyJobs) {
  ThreadPool pool(1);
  pool.execute(nullptr);
  std::atomic<int> ran{0};
  pool.execute([&ran] { ++ran; });
  pool.join();
  EXPECT_EQ(ran, 1);
}

TEST(ThreadPool, JoinRunsWhatIsQueuedAndWhatThatQueuesInTurn) {
  ThreadPool pool(2);
  std::atomic<int> ran{0};
  for (int i = 0; i < 100; ++i) {
    pool.execute([&pool, &ran] {
      ++ran;
      pool.execute([&pool, &ran] {
        ++ran;
        pool.execute([&ran] { ++ran; });
      });
    });
  }
  pool.join();
  EXPECT_EQ(ran, 300);
}

TEST(ThreadPool, JoinWithoutJobsReturns) {
  ThreadPool pool(2);
  pool.join();
  pool.join();
  std::atomic<int> ran{0};
  pool.execute([&ran] { ++ran; });
  pool.join();
  EXPECT_EQ(ran, 1);
}

TEST(ThreadPool, StartsAgainWithTheNextJobAfterAJoin) {
  ThreadPool pool(2);
  std::atomic<int> ran{0};
  for (int round = 1; round <= 20; ++round) {
    pool.execute([&ran] { ++ran; });
    pool.join();
    EXPECT_EQ(ran, round);
  }
}

TEST(ThreadPool, JobsGivenWhileItJoinsRunToo) {
  constexpr int kJobs = 3000;
  std::atomic<int> ran{0};
  {
    ThreadPool pool(2);
    std::atomic<bool> given{false};
    std::thread giver([&] {
      for (int i = 0; i < kJobs; ++i) pool.execute([&ran] { ++ran; });
      given = true;
    });
    while (!given) pool.join();
    giver.join();
  }
  EXPECT_EQ(ran, kJobs);
}

TEST(ThreadPool, SeveralThreadsMayJoinAtATime) {
  ThreadPool pool(2);
  std::atomic<int> ran{0};
  for (int i = 0; i < 100; ++i) pool.execute([&ran] { ++ran; });
  std::thread other([&pool] { pool.join(); });
  pool.join();
  other.join();
  EXPECT_EQ(ran, 100);
}

TEST(ThreadPool, DestructionRunsWhatIsQueued) {
  std::atomic<int> ran{0};
  {
    ThreadPool pool(2);
    for (int i = 0; i < 100; ++i) pool.execute([&ran] { ++ran; });
  }
  EXPECT_EQ(ran, 100);
}

TEST(ThreadPool, AWorkerDestroysAJobBeforeItTakesTheNext) {
  ThreadPool pool(1);
  std::atomic<int> alive{0};
  std::atomic<int> overlaps{0};
  struct Life {
    explicit Life(std::atomic<int>& count) : counter(count) {}
    ~Life() { --counter; }
    std::atomic<int>& counter;
  };
  for (int i = 0; i < 200; ++i) {
    pool.execute([&alive, &overlaps] {
      if (alive != 0) ++overlaps;
      ++alive;
    });
    pool.execute([life = std::make_shared<Life>(alive)] { EXPECT_EQ(life->counter, 1); });
  }
  pool.join();
  EXPECT_EQ(overlaps, 0);
  EXPECT_EQ(alive, 0);
}

TEST(ThreadPool, WhatAJobCapturedDiesOnTheWorkerThatRanIt) {
  struct Witness {
    explicit Witness(std::atomic<bool>& flag) : elsewhere(flag) {}
    ~Witness() { elsewhere = std::this_thread::get_id() != runner; }
    std::atomic<bool>& elsewhere;
    std::thread::id runner;
  };
  ThreadPool pool(4);
  for (int i = 0; i < 1000; ++i) {
    std::atomic<bool> elsewhere{true};
    pool.execute([witness = std::make_shared<Witness>(elsewhere)] {
      witness->runner = std::this_thread::get_id();
    });
    pool.join();
    ASSERT_FALSE(elsewhere);
  }
}

void joinFromInside() {
  ThreadPool pool(1);
  pool.execute([&pool] { pool.join(); });
  pool.join();
}

TEST(ThreadPoolDeathTest, JoiningFromOneOfItsOwnJobsIsAFatalError) {
  EXPECT_DEATH(joinFromInside(), "fatal error: ThreadPool::join was called from one of the pool's");
}

}  // namespace
}  // namespace KorvaniPlatform

#endif  // KORVANI_SINGLE_THREADED
