#include "Platform/RunLoopHost.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "Unit/Platform/QueueFixture.hpp"

namespace KorvaniPlatform {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// Writes down what the queue asks for.
class RecordingHost : public RunLoopHost {
 public:
  void wakeUp(Duration after) override {
    const std::lock_guard lock(mutex_);
    delays_.push_back(after);
  }

  // The delays since the last call.
  std::vector<Duration> take() {
    const std::lock_guard lock(mutex_);
    return std::exchange(delays_, {});
  }

 private:
  std::mutex mutex_;
  std::vector<Duration> delays_;
};

using Delays = std::vector<Duration>;

class RunLoopHostTest : public QueueFixture {
 protected:
  void attach() { mainQueue().attach(host_); }

  const std::shared_ptr<RecordingHost> host_ = std::make_shared<RecordingHost>();
};

TEST_F(RunLoopHostTest, IsLeftAloneWhileThereIsNoWork) {
  attach();
  mainQueue().pump();
  EXPECT_EQ(host_->take(), Delays{});
}

TEST_F(RunLoopHostTest, IsWokenAtOnceForAJob) {
  attach();
  mainQueue().async([] {});
  EXPECT_EQ(host_->take(), Delays{Duration::zero()});
}

TEST_F(RunLoopHostTest, IsWokenFromTheThreadThatQueues) {
  attach();
  onAnotherThread([] { mainQueue().async([] {}); });
  EXPECT_EQ(host_->take(), Delays{Duration::zero()});
}

TEST_F(RunLoopHostTest, IsWokenOnceForManyJobsBetweenTwoPumps) {
  attach();
  for (int i = 0; i < 10; ++i) mainQueue().async([] {});
  EXPECT_EQ(host_->take(), Delays{Duration::zero()});
  mainQueue().pump();
  EXPECT_EQ(host_->take(), Delays{});
  mainQueue().async([] {});
  EXPECT_EQ(host_->take(), Delays{Duration::zero()});
}

TEST_F(RunLoopHostTest, IsToldTheTimeToTheNextTimer) {
  attach();
  mainQueue().schedule(seconds(10), [] {});
  EXPECT_EQ(host_->take(), Delays{seconds(10)});
}

TEST_F(RunLoopHostTest, IsToldAgainOnlyWhenATimerIsEarlier) {
  attach();
  mainQueue().schedule(seconds(10), [] {});
  mainQueue().schedule(seconds(20), [] {});
  time_->advance(seconds(2));
  EXPECT_EQ(host_->take(), (Delays{seconds(10), seconds(8)}));
  mainQueue().schedule(seconds(3), [] {});
  EXPECT_EQ(host_->take(), Delays{seconds(3)});
  mainQueue().async([] {});
  EXPECT_EQ(host_->take(), Delays{Duration::zero()});
}

TEST_F(RunLoopHostTest, IsToldAboutTheRemainingTimersAfterEachPump) {
  attach();
  mainQueue().schedule(seconds(10), [] {});
  mainQueue().schedule(seconds(25), [] {});
  host_->take();
  mainQueue().pump();
  EXPECT_EQ(host_->take(), Delays{seconds(10)});
  time_->advance(seconds(12));
  EXPECT_EQ(host_->take(), Delays{Duration::zero()});
  mainQueue().pump();
  EXPECT_EQ(host_->take(), Delays{seconds(13)});
  time_->advance(seconds(13));
  mainQueue().pump();
  host_->take();
  mainQueue().pump();
  EXPECT_EQ(host_->take(), Delays{});
}

TEST_F(RunLoopHostTest, IsWokenOnceAfterAPumpWhoseJobsQueuedMore) {
  attach();
  mainQueue().async([this] {
    host_->take();
    mainQueue().async([] {});
    mainQueue().schedule(seconds(5), [] {});
    EXPECT_EQ(host_->take(), Delays{});
  });
  mainQueue().pump();
  EXPECT_EQ(host_->take(), Delays{Duration::zero()});
}

TEST_F(RunLoopHostTest, IsToldAtOnceAboutWorkThatWaitedWhenItIsAttached) {
  mainQueue().async([] {});
  attach();
  EXPECT_EQ(host_->take(), Delays{Duration::zero()});
  mainQueue().runUntilIdle();
  mainQueue().attach(nullptr);
  mainQueue().schedule(seconds(4), [] {});
  attach();
  EXPECT_EQ(host_->take(), Delays{seconds(4)});
}

TEST_F(RunLoopHostTest, HearsNothingAfterItWasDetachedOrReplaced) {
  attach();
  mainQueue().attach(nullptr);
  mainQueue().async([] {});
  EXPECT_EQ(host_->take(), Delays{});
  const auto other = std::make_shared<RecordingHost>();
  attach();
  mainQueue().attach(other);
  host_->take();
  mainQueue().runUntilIdle();
  other->take();
  mainQueue().async([] {});
  EXPECT_EQ(host_->take(), Delays{});
  EXPECT_EQ(other->take(), Delays{Duration::zero()});
}

TEST_F(RunLoopHostTest, IsHeldUntilAnotherOneIsAttached) {
  auto host = std::make_shared<RecordingHost>();
  const std::weak_ptr<RecordingHost> watch = host;
  mainQueue().attach(std::move(host));
  EXPECT_FALSE(watch.expired());
  mainQueue().attach(nullptr);
  EXPECT_TRUE(watch.expired());
}

TEST_F(RunLoopHostTest, IsWokenForAJobThatAnotherThreadCalledOff) {
  const std::shared_ptr<Timer> timer = mainQueue().schedule(seconds(4), [] {});
  attach();
  host_->take();
  onAnotherThread([&timer] { timer->invalidate(); });
  EXPECT_EQ(host_->take(), Delays{Duration::zero()});
}

TEST_F(RunLoopHostTest, IsLeftAloneWhileRunServesTheQueueItself) {
  attach();
  mainQueue().async([this] {
    host_->take();
    mainQueue().async([] { mainQueue().stop(); });
  });
  mainQueue().run();
  EXPECT_EQ(host_->take(), Delays{});
}

TEST_F(RunLoopHostTest, MayUseTheQueueFromWakeUp) {
  class Curious : public RunLoopHost {
   public:
    void wakeUp(Duration) override {
      ++calls;
      if (calls == 1) mainQueue().async([] {});
      onMain = mainQueue().isMainThread();
    }
    int calls = 0;
    bool onMain = false;
  };
  const auto host = std::make_shared<Curious>();
  mainQueue().attach(host);
  mainQueue().schedule(seconds(1), [] {});
  EXPECT_EQ(host->calls, 2);
  EXPECT_TRUE(host->onMain);
}

// A main loop of a host's own: one wake-up time, replaced by each call, and a thread that sleeps
// until then.
class LoopOnAThread : public RunLoopHost {
 public:
  void wakeUp(Duration after) override {
    const std::lock_guard lock(mutex_);
    wake_ = std::chrono::steady_clock::now() + after;
    changed_.notify_all();
  }

  void loopUntilQuit() {
    std::unique_lock lock(mutex_);
    while (!quit_) {
      if (!wake_) {
        changed_.wait(lock);
      } else if (std::chrono::steady_clock::now() < *wake_) {
        changed_.wait_until(lock, *wake_);
      } else {
        wake_.reset();
        lock.unlock();
        mainQueue().pump();
        lock.lock();
      }
    }
  }

  void quit() {
    const std::lock_guard lock(mutex_);
    quit_ = true;
    changed_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::optional<std::chrono::steady_clock::time_point> wake_;
  bool quit_ = false;
};

class HostWithItsOwnLoopTest : public testing::Test {
 protected:
  void SetUp() override {
    mainQueue().attach(loop_);
    main_ = std::thread([this] { loop_->loopUntilQuit(); });
  }

  void TearDown() override {
    if (main_.joinable()) finish();
    mainQueue().attach(nullptr);
  }

  void finish() {
    mainQueue().async([this] { loop_->quit(); });
    main_.join();
  }

  const std::shared_ptr<LoopOnAThread> loop_ = std::make_shared<LoopOnAThread>();
  std::thread main_;
};

TEST_F(HostWithItsOwnLoopTest, RunsJobsFromManyThreadsWithoutLosingAny) {
  constexpr int kThreads = 4;
  constexpr int kJobs = 1000;
  int ran = 0;  // On the loop's thread only.
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&ran] {
      for (int job = 0; job < kJobs; ++job) mainQueue().async([&ran] { ++ran; });
    });
  }
  for (std::thread& thread : threads) thread.join();
  finish();
  EXPECT_EQ(ran, kThreads * kJobs);
}

TEST_F(HostWithItsOwnLoopTest, FiresTimersScheduledFromManyThreads) {
  constexpr int kThreads = 4;
  constexpr int kTimers = 100;
  std::atomic<int> fired{0};
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&fired, i] {
      for (int timer = 0; timer < kTimers; ++timer) {
        mainQueue().schedule(milliseconds((timer * 7 + i) % 20), [&fired] { ++fired; });
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  while (fired < kThreads * kTimers) std::this_thread::yield();
  finish();
  EXPECT_EQ(fired, kThreads * kTimers);
}

TEST_F(HostWithItsOwnLoopTest, TimersAreNotEarly) {
  const Duration before = clock()->uptime();
  std::atomic<bool> fired{false};
  Duration when{};
  mainQueue().schedule(milliseconds(25), [&] {
    when = clock()->uptime();
    fired = true;
  });
  while (!fired) std::this_thread::yield();
  EXPECT_GE(when - before, milliseconds(25));
}

}  // namespace
}  // namespace KorvaniPlatform
