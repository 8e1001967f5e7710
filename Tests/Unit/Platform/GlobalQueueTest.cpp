#include "Platform/GlobalQueue.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "Unit/Platform/QueueFixture.hpp"

namespace KorvaniPlatform {
namespace {

// Collects jobs until the test runs them.
class CollectingExecutor : public Executor {
 public:
  void execute(Job job) override { jobs.push_back(takeJob(job)); }

  std::vector<Job> jobs;
};

class GlobalQueueTest : public QueueFixture {
 protected:
  void TearDown() override {
    setGlobalExecutor(nullptr);
    joinGlobalQueue();
    QueueFixture::TearDown();
  }

  // Lets the default executor do all its work, with or without threads.
  static void finishBackgroundWork() {
    joinGlobalQueue();
    mainQueue().runUntilIdle();
  }
};

TEST_F(GlobalQueueTest, RunsEveryJobOnce) {
  std::atomic<int> ran{0};
  for (int i = 0; i < 100; ++i) globalQueue().execute([&ran] { ++ran; });
  finishBackgroundWork();
  EXPECT_EQ(ran, 100);
}

TEST_F(GlobalQueueTest, IsTheSameObjectAlways) { EXPECT_EQ(&globalQueue(), &globalQueue()); }

TEST_F(GlobalQueueTest, HandsJobsToTheExecutorThatIsInstalled) {
  const auto host = std::make_shared<CollectingExecutor>();
  setGlobalExecutor(host);
  std::atomic<int> ran{0};
  globalQueue().execute([&ran] { ++ran; });
  EXPECT_EQ(ran, 0);
  ASSERT_EQ(host->jobs.size(), 1u);
  host->jobs.front()();
  EXPECT_EQ(ran, 1);
}

TEST_F(GlobalQueueTest, ReferencesTakenEarlierFollowAReplacement) {
  Executor& queue = globalQueue();
  const auto host = std::make_shared<CollectingExecutor>();
  setGlobalExecutor(host);
  queue.execute([] {});
  EXPECT_EQ(host->jobs.size(), 1u);
}

TEST_F(GlobalQueueTest, RestoresTheDefaultWhenTheExecutorIsTakenAway) {
  auto host = std::make_shared<CollectingExecutor>();
  const std::weak_ptr<CollectingExecutor> watch = host;
  setGlobalExecutor(std::move(host));
  EXPECT_FALSE(watch.expired());
  setGlobalExecutor(nullptr);
  EXPECT_TRUE(watch.expired());
  std::atomic<int> ran{0};
  globalQueue().execute([&ran] { ++ran; });
  finishBackgroundWork();
  EXPECT_EQ(ran, 1);
}

TEST_F(GlobalQueueTest, TheSingleThreadedExecutorRunsEverythingInOrderOnTheMainThread) {
  setGlobalExecutor(std::make_shared<MainQueueExecutor>());
  std::string log;
  globalQueue().execute([&log] {
    log += isMainThread() ? 'a' : '?';
    globalQueue().execute([&log] { log += 'd'; });
  });
  mainQueue().async([&log] { log += 'b'; });
  globalQueue().execute([&log] { log += 'c'; });
  EXPECT_EQ(log, "");
  mainQueue().runUntilIdle();
  EXPECT_EQ(log, "abcd");
}

TEST_F(GlobalQueueTest, TheSingleThreadedExecutorLetsCapturesDieOnTheMainThread) {
  setGlobalExecutor(std::make_shared<MainQueueExecutor>());
  std::thread::id grave;
  onAnotherThread([&grave] {
    globalQueue().execute([witness = std::make_shared<DeathWitness>(grave)] { (void)witness; });
  });
  mainQueue().runUntilIdle();
  EXPECT_EQ(grave, std::this_thread::get_id());
}

TEST_F(GlobalQueueTest, PassingJobsOnLeavesNoCopyOfWhatTheyCaptured) {
  const auto host = std::make_shared<CollectingExecutor>();
  setGlobalExecutor(host);
  auto captured = std::make_shared<int>(0);
  globalQueue().execute([captured] { ++*captured; });
  EXPECT_EQ(captured.use_count(), 2);
  host->jobs.clear();
  EXPECT_EQ(captured.use_count(), 1);
}

TEST(GlobalQueue, ItsFirstUserIsTheMainThreadUntilSomeonePumps) {
  // The order of events of a host that has not touched the main queue yet. Only in a process of
  // its own is this test the first user; elsewhere this thread pumped before.
  std::atomic<bool> workerIsMain{true};
  globalQueue().execute([&workerIsMain] { workerIsMain = isMainThread(); });
  EXPECT_TRUE(isMainThread());
  joinGlobalQueue();
#ifndef KORVANI_SINGLE_THREADED
  EXPECT_FALSE(workerIsMain);
#endif
  mainQueue().runUntilIdle();
}

TEST_F(GlobalQueueTest, JoiningWithoutWorkReturns) {
  joinGlobalQueue();
  joinGlobalQueue();
  std::atomic<int> ran{0};
  globalQueue().execute([&ran] { ++ran; });
  finishBackgroundWork();
  EXPECT_EQ(ran, 1);
}

#ifdef KORVANI_SINGLE_THREADED

TEST_F(GlobalQueueTest, WithoutThreadsTheDefaultIsTheMainQueue) {
  std::thread::id where;
  globalQueue().execute([&where] { where = std::this_thread::get_id(); });
  joinGlobalQueue();
  EXPECT_EQ(where, std::thread::id());
  mainQueue().pump();
  EXPECT_EQ(where, std::this_thread::get_id());
}

#else

TEST_F(GlobalQueueTest, DefaultRunsTwoJobsAtATimeAtLeast) {
  std::atomic<int> meeting{0};
  for (int i = 0; i < 2; ++i) {
    globalQueue().execute([&meeting] {
      ++meeting;
      while (meeting < 2) std::this_thread::yield();
    });
  }
  joinGlobalQueue();
  EXPECT_EQ(meeting, 2);
}

TEST_F(GlobalQueueTest, DefaultRunsJobsAwayFromTheMainThread) {
  std::atomic<bool> onMain{true};
  globalQueue().execute([&onMain] { onMain = isMainThread(); });
  joinGlobalQueue();
  EXPECT_FALSE(onMain);
}

TEST_F(GlobalQueueTest, DefaultStartsAgainAfterAJoin) {
  std::atomic<int> ran{0};
  for (int round = 1; round <= 5; ++round) {
    globalQueue().execute([&ran] { ++ran; });
    joinGlobalQueue();
    EXPECT_EQ(ran, round);
  }
}

TEST_F(GlobalQueueTest, AJobMayCarryWhatItCapturedHomeToTheMainThread) {
  std::vector<std::thread::id> graves(500);
  for (std::thread::id& grave : graves) {
    globalQueue().execute([witness = std::make_shared<DeathWitness>(grave)]() mutable {
      mainQueue().async([home = std::move(witness)] { (void)home; });
    });
  }
  joinGlobalQueue();
  mainQueue().runUntilIdle();
  for (const std::thread::id& grave : graves) ASSERT_EQ(grave, std::this_thread::get_id());
}

void leaveWhileJobsRun() {
  for (int i = 0; i < 20; ++i) {
    globalQueue().execute([] {
      while (true) {
        mainQueue().async([] {});
        std::this_thread::yield();
      }
    });
  }
  std::exit(0);
}

TEST(GlobalQueueDeathTest, LeavingTheProcessWithRunningJobsIsClean) {
  EXPECT_EXIT(leaveWhileJobsRun(), testing::ExitedWithCode(0), "^$");
}

#endif

}  // namespace
}  // namespace KorvaniPlatform
