#include "Platform/Timer.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "Unit/Platform/QueueFixture.hpp"

namespace KorvaniPlatform {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::seconds;

class TimerTest : public QueueFixture {
 protected:
  std::shared_ptr<Timer> noteAfter(Duration delay, char letter) {
    return mainQueue().schedule(delay, [this, letter] { log_ += letter; });
  }

  void advanceAndPump(Duration duration) {
    time_->advance(duration);
    mainQueue().pump();
  }

  std::string log_;
};

TEST_F(TimerTest, FiresOnceWhenItsTimeHasCome) {
  noteAfter(seconds(10), 'x');
  mainQueue().pump();
  EXPECT_EQ(log_, "");
  advanceAndPump(seconds(10) - nanoseconds(1));
  EXPECT_EQ(log_, "");
  advanceAndPump(nanoseconds(1));
  EXPECT_EQ(log_, "x");
  advanceAndPump(seconds(100));
  EXPECT_EQ(log_, "x");
}

TEST_F(TimerTest, FiresEvenWhenNobodyKeepsItsHandle) {
  noteAfter(seconds(1), 'x').reset();
  advanceAndPump(seconds(1));
  EXPECT_EQ(log_, "x");
}

TEST_F(TimerTest, IsValidUntilItFires) {
  const std::shared_ptr<Timer> timer = noteAfter(seconds(1), 'x');
  EXPECT_TRUE(timer->isValid());
  advanceAndPump(seconds(1));
  EXPECT_FALSE(timer->isValid());
}

TEST_F(TimerTest, IsNoLongerValidWhileItsJobRuns) {
  std::shared_ptr<Timer> timer;
  bool validInside = true;
  timer = mainQueue().schedule(seconds(1), [&] { validInside = timer->isValid(); });
  advanceAndPump(seconds(1));
  EXPECT_FALSE(validInside);
}

TEST_F(TimerTest, WithoutDelayOrWithANegativeOneFiresInTheNextPump) {
  noteAfter(Duration::zero(), 'a');
  noteAfter(seconds(-5), 'b');
  EXPECT_EQ(log_, "");
  mainQueue().pump();
  EXPECT_EQ(log_, "ab");
}

TEST_F(TimerTest, WithoutJobFiresAndDoesNothing) {
  const std::shared_ptr<Timer> timer = mainQueue().schedule(seconds(1), nullptr);
  ASSERT_NE(timer, nullptr);
  advanceAndPump(seconds(1));
  EXPECT_FALSE(timer->isValid());
}

TEST_F(TimerTest, NeverFiresWhenItsDueTimeIsBeyondAllTime) {
  const std::shared_ptr<Timer> timer = noteAfter(Duration::max(), 'x');
  advanceAndPump(std::chrono::hours(24 * 365));
  EXPECT_EQ(log_, "");
  timer->invalidate();
}

TEST_F(TimerTest, TimersFireByDueTimeWhateverTheOrderOfScheduling) {
  noteAfter(seconds(3), 'c');
  noteAfter(seconds(1), 'a');
  noteAfter(seconds(2), 'b');
  advanceAndPump(seconds(5));
  EXPECT_EQ(log_, "abc");
}

TEST_F(TimerTest, TimersDueAtTheSameMomentFireInTheOrderOfScheduling) {
  noteAfter(seconds(2), 'a');
  noteAfter(seconds(2), 'b');
  time_->advance(seconds(1));
  noteAfter(seconds(1), 'c');
  advanceAndPump(seconds(1));
  EXPECT_EQ(log_, "abc");
}

TEST_F(TimerTest, TimersFireAfterTheJobsOfTheSamePump) {
  noteAfter(Duration::zero(), 't');
  mainQueue().async([this] { log_ += 'j'; });
  mainQueue().pump();
  EXPECT_EQ(log_, "jt");
}

TEST_F(TimerTest, OneScheduledByAJobOrATimerWaitsForTheNextPump) {
  mainQueue().async([this] { noteAfter(Duration::zero(), 'b'); });
  mainQueue().schedule(Duration::zero(), [this] {
    log_ += 'a';
    noteAfter(Duration::zero(), 'c');
  });
  mainQueue().pump();
  EXPECT_EQ(log_, "a");
  mainQueue().pump();
  EXPECT_EQ(log_, "abc");
}

TEST_F(TimerTest, OneThatBecomesDueDuringAPumpWaitsForTheNext) {
  noteAfter(seconds(1), 'x');
  mainQueue().async([this] { time_->advance(seconds(1)); });
  mainQueue().pump();
  EXPECT_EQ(log_, "");
  mainQueue().pump();
  EXPECT_EQ(log_, "x");
}

TEST_F(TimerTest, RunUntilIdleFiresWhatIsDueAndLeavesTheRest) {
  noteAfter(seconds(1), 'a');
  noteAfter(seconds(60), 'z');
  mainQueue().async([this] { time_->advance(seconds(1)); });
  mainQueue().runUntilIdle();
  EXPECT_EQ(log_, "a");
}

TEST_F(TimerTest, AnInvalidatedOneNeverFires) {
  const std::shared_ptr<Timer> timer = noteAfter(seconds(1), 'x');
  timer->invalidate();
  EXPECT_FALSE(timer->isValid());
  advanceAndPump(seconds(2));
  EXPECT_EQ(log_, "");
}

TEST_F(TimerTest, InvalidatingTwiceOrAfterFiringIsHarmless) {
  const std::shared_ptr<Timer> called = noteAfter(seconds(1), 'x');
  called->invalidate();
  called->invalidate();
  const std::shared_ptr<Timer> fired = noteAfter(seconds(1), 'y');
  advanceAndPump(seconds(1));
  fired->invalidate();
  advanceAndPump(seconds(1));
  EXPECT_EQ(log_, "y");
}

TEST_F(TimerTest, MayBeInvalidatedFromInsideItsJob) {
  std::shared_ptr<Timer> timer;
  timer = mainQueue().schedule(seconds(1), [&] {
    timer->invalidate();
    timer.reset();
    log_ += 'x';
  });
  advanceAndPump(seconds(1));
  advanceAndPump(seconds(1));
  EXPECT_EQ(log_, "x");
}

TEST_F(TimerTest, AJobOrATimerOfTheSamePumpMayCallAnotherOff) {
  const std::shared_ptr<Timer> second = noteAfter(seconds(1), 'b');
  const std::shared_ptr<Timer> fourth = noteAfter(seconds(3), 'd');
  mainQueue().schedule(seconds(2), [this, fourth] {
    log_ += 'c';
    fourth->invalidate();
  });
  mainQueue().async([this, second] {
    log_ += 'a';
    second->invalidate();
  });
  advanceAndPump(seconds(5));
  EXPECT_EQ(log_, "ac");
}

TEST_F(TimerTest, ItsJobDiesRightAfterItFired) {
  auto captured = std::make_shared<int>(0);
  const std::weak_ptr<int> watch = captured;
  const std::shared_ptr<Timer> timer =
      mainQueue().schedule(seconds(1), [kept = std::move(captured)] { ++*kept; });
  noteAfter(seconds(2), 'x');
  mainQueue().schedule(seconds(1), [watch] { EXPECT_TRUE(watch.expired()); });
  EXPECT_FALSE(watch.expired());
  advanceAndPump(seconds(1));
  EXPECT_TRUE(watch.expired());
}

TEST_F(TimerTest, ItsJobDiesAtOnceWhenTheMainThreadInvalidatesIt) {
  auto captured = std::make_shared<int>(0);
  const std::weak_ptr<int> watch = captured;
  const std::shared_ptr<Timer> timer =
      mainQueue().schedule(seconds(1), [kept = std::move(captured)] { ++*kept; });
  timer->invalidate();
  EXPECT_TRUE(watch.expired());
}

TEST_F(TimerTest, ItsJobDiesOnTheMainThreadWhenAnotherThreadInvalidatesIt) {
  std::thread::id grave;
  auto witness = std::make_shared<DeathWitness>(grave);
  const std::weak_ptr<DeathWitness> watch = witness;
  const std::shared_ptr<Timer> timer =
      mainQueue().schedule(seconds(1), [kept = std::move(witness)] { (void)kept; });
  onAnotherThread([&timer] { timer->invalidate(); });
  EXPECT_FALSE(timer->isValid());
  EXPECT_FALSE(watch.expired());
  mainQueue().runUntilIdle();
  EXPECT_TRUE(watch.expired());
  EXPECT_EQ(grave, std::this_thread::get_id());
}

TEST_F(TimerTest, ItsJobDiesOnTheMainThreadWhenAnotherThreadScheduledIt) {
  std::thread::id grave;
  onAnotherThread([&grave] {
    mainQueue().schedule(seconds(1),
                         [kept = std::make_shared<DeathWitness>(grave)] { (void)kept; });
  });
  advanceAndPump(seconds(1));
  EXPECT_EQ(grave, std::this_thread::get_id());
}

TEST_F(TimerTest, EitherFiresOrIsCalledOffWhenThreadsRaceForIt) {
  constexpr int kTimers = 2000;
  int fired = 0;
  std::vector<std::shared_ptr<Timer>> timers;
  timers.reserve(kTimers);
  for (int i = 0; i < kTimers; ++i) {
    timers.push_back(mainQueue().schedule(milliseconds(i % 10), [&fired] { ++fired; }));
  }
  std::thread canceller([&timers] {
    for (const std::shared_ptr<Timer>& timer : timers) timer->invalidate();
  });
  for (int i = 0; i < 10; ++i) advanceAndPump(milliseconds(1));
  canceller.join();
  mainQueue().runUntilIdle();
  EXPECT_LE(fired, kTimers);
  for (const std::shared_ptr<Timer>& timer : timers) EXPECT_FALSE(timer->isValid());
  const int before = fired;
  advanceAndPump(seconds(1));
  EXPECT_EQ(fired, before);
}

}  // namespace
}  // namespace KorvaniPlatform
