#include "Platform/Clock.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <thread>
#include <vector>

#include "Platform/ManualClock.hpp"

namespace KorvaniPlatform {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

class ClockTest : public testing::Test {
 protected:
  void TearDown() override { setClock(nullptr); }
};

TEST_F(ClockTest, TheSystemClockIsTheDefault) {
  const Duration before = SystemClock().uptime();
  const Duration now = clock()->uptime();
  const Duration after = SystemClock().uptime();
  EXPECT_LE(before, now);
  EXPECT_LE(now, after);
  EXPECT_TRUE(clock()->advancesByItself());
}

TEST_F(ClockTest, TheSystemClockPassesWhileSomeoneWaits) {
  const SystemClock time;
  const Duration before = time.uptime();
  std::this_thread::sleep_for(milliseconds(2));
  EXPECT_GE(time.uptime() - before, milliseconds(2));
}

TEST_F(ClockTest, TheSystemClockTellsTheCalendarTime) {
  const auto calendar = std::chrono::system_clock::now();
  const Date date = SystemClock().date();
  EXPECT_GE(date, calendar);
  EXPECT_LT(date - calendar, seconds(60));
}

TEST_F(ClockTest, AnotherClockHoldsForTheWholeProcessUntilItIsTakenAway) {
  const auto time = std::make_shared<ManualClock>(seconds(7));
  setClock(time);
  EXPECT_EQ(clock(), time);
  std::thread([] { EXPECT_EQ(clock()->uptime(), seconds(7)); }).join();
  setClock(nullptr);
  EXPECT_NE(clock(), nullptr);
  EXPECT_NE(clock(), time);
  EXPECT_TRUE(clock()->advancesByItself());
}

TEST_F(ClockTest, AManualClockStandsStillUntilItIsAdvanced) {
  ManualClock time;
  EXPECT_EQ(time.uptime(), Duration::zero());
  std::this_thread::sleep_for(milliseconds(2));
  EXPECT_EQ(time.uptime(), Duration::zero());
  time.advance(milliseconds(250));
  EXPECT_EQ(time.uptime(), milliseconds(250));
  EXPECT_FALSE(time.advancesByItself());
}

TEST_F(ClockTest, AManualClockMovesUptimeAndDateTogetherFromWhereItStarted) {
  const Date start{seconds(1000)};
  ManualClock time(seconds(5), start);
  EXPECT_EQ(time.date(), start);
  time.advance(seconds(2));
  time.advance(seconds(3));
  EXPECT_EQ(time.uptime(), seconds(10));
  EXPECT_EQ(time.date(), start + seconds(5));
}

TEST_F(ClockTest, AManualClockNeverGoesBack) {
  ManualClock time(seconds(5));
  time.advance(seconds(-3));
  EXPECT_EQ(time.uptime(), seconds(5));
}

TEST_F(ClockTest, AdvancesFromSeveralThreadsAddUp) {
  ManualClock time;
  std::vector<std::thread> threads;
  threads.reserve(4);
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int step = 0; step < 1000; ++step) time.advance(milliseconds(1));
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(time.uptime(), seconds(4));
}

class JumpHandlerTest : public ClockTest {
 protected:
  void SetUp() override {
    former_ = setClockJumpHandler([this] { ++jumps_; });
  }
  void TearDown() override {
    setClockJumpHandler(former_);
    ClockTest::TearDown();
  }

  int jumps_ = 0;
  std::function<void()> former_;
};

TEST_F(JumpHandlerTest, HearsOfReplacedClocksAndOfAdvances) {
  const auto time = std::make_shared<ManualClock>();
  setClock(time);
  EXPECT_EQ(jumps_, 1);
  time->advance(seconds(1));
  EXPECT_EQ(jumps_, 2);
  time->advance(Duration::zero());
  EXPECT_EQ(jumps_, 2);
  setClock(nullptr);
  EXPECT_EQ(jumps_, 3);
}

TEST_F(JumpHandlerTest, SeesTheNewTimeAlready) {
  const auto time = std::make_shared<ManualClock>();
  setClock(time);
  Duration seen{};
  setClockJumpHandler([&seen] { seen = clock()->uptime(); });
  time->advance(seconds(9));
  EXPECT_EQ(seen, seconds(9));
}

}  // namespace
}  // namespace KorvaniPlatform
