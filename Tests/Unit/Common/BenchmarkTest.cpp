#include "Common/Benchmark.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <thread>

#include "Platform/Clock.hpp"
#include "Platform/ManualClock.hpp"

namespace {

using namespace std::chrono_literals;
using KorvaniCommon::Benchmark;
using KorvaniPlatform::ManualClock;

/// Runs each test on a clock that moves only by hand.
class BenchmarkOnManualClock : public testing::Test {
 protected:
  void SetUp() override { KorvaniPlatform::setClock(clock_); }
  void TearDown() override { KorvaniPlatform::setClock(nullptr); }

  const std::shared_ptr<ManualClock> clock_ = std::make_shared<ManualClock>();
};

TEST_F(BenchmarkOnManualClock, StopsAtZeroWhenNoTimePassed) {
  EXPECT_EQ(Benchmark::start().stop(), 0.0);
}

TEST_F(BenchmarkOnManualClock, StopGivesTheSecondsSinceTheStart) {
  clock_->advance(3s);
  const Benchmark benchmark = Benchmark::start();
  clock_->advance(1500ms);
  EXPECT_DOUBLE_EQ(benchmark.stop(), 1.5);
}

TEST_F(BenchmarkOnManualClock, ResolvesNanoseconds) {
  const Benchmark benchmark = Benchmark::start();
  clock_->advance(1ns);
  EXPECT_DOUBLE_EQ(benchmark.stop(), 1e-9);
}

TEST_F(BenchmarkOnManualClock, ElapsedSecondsLooksWithoutEndingTheMeasurement) {
  const Benchmark benchmark = Benchmark::start();
  clock_->advance(1s);
  EXPECT_DOUBLE_EQ(benchmark.elapsedSeconds(), 1.0);
  clock_->advance(1s);
  EXPECT_DOUBLE_EQ(benchmark.stop(), 2.0);
}

TEST_F(BenchmarkOnManualClock, GoesOnAfterStop) {
  const Benchmark benchmark = Benchmark::start();
  clock_->advance(1s);
  EXPECT_DOUBLE_EQ(benchmark.stop(), 1.0);
  clock_->advance(1s);
  EXPECT_DOUBLE_EQ(benchmark.stop(), 2.0);
}

TEST_F(BenchmarkOnManualClock, CopiesGoOnFromTheSameStart) {
  const Benchmark original = Benchmark::start();
  clock_->advance(1s);
  Benchmark copy = Benchmark::start();
  copy = original;
  clock_->advance(1s);
  EXPECT_DOUBLE_EQ(copy.stop(), 2.0);
}

TEST_F(BenchmarkOnManualClock, StaysOnTheClockOfItsStartWhenTheClockIsReplaced) {
  const Benchmark benchmark = Benchmark::start();
  const auto other = std::make_shared<ManualClock>();
  other->advance(1h);
  KorvaniPlatform::setClock(other);
  clock_->advance(2s);
  EXPECT_DOUBLE_EQ(benchmark.stop(), 2.0);
}

TEST(Benchmark, MeasuresRealTimeOnTheSystemClock) {
  const Benchmark benchmark = Benchmark::start();
  std::this_thread::sleep_for(5ms);
  const double seconds = benchmark.stop();
  EXPECT_GE(seconds, 0.005);
  EXPECT_GE(benchmark.stop(), seconds);
}

}  // namespace
