#include "Common/Logging.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

using KorvaniCommon::KRVDDLogDebug;
using KorvaniCommon::KRVDDLogTest;
using KorvaniCommon::KRVDDLogVerbose;
using KorvaniCommon::KRVSwiftLogging;
using KorvaniCommon::LogLevel;
using KorvaniCommon::setLogSink;
using KorvaniCommon::setLogThreshold;

const std::string kModule = "Parking";

/// Collects what is logged, and restores the defaults afterwards.
class Logging : public testing::Test {
 protected:
  struct Line {
    LogLevel level;
    std::string module, text;
  };

  void SetUp() override {
    setLogSink([this](LogLevel level, std::string_view module, std::string_view text) {
      std::lock_guard lock(mutex_);
      lines_.push_back({level, std::string(module), std::string(text)});
    });
  }

  void TearDown() override {
    setLogSink(nullptr);
    setLogThreshold(initialThreshold_);
    KRVSwiftLogging::setLoggingEnabled(kModule, false);
  }

  static void switchEverythingOn() {
    setLogThreshold(LogLevel::test);
    KRVSwiftLogging::setLoggingEnabled(kModule, true);
  }

  /// Logs one line on each of the three levels modules use, and returns the texts that came.
  std::vector<std::string> logAll() {
    lines_.clear();
    KRVDDLogDebug([] { return "debug"; }, kModule);
    KRVDDLogVerbose([] { return "verbose"; }, kModule);
    KRVDDLogTest([] { return "test"; }, kModule);
    std::vector<std::string> texts;
    for (const Line& line : lines_) texts.push_back(line.text);
    return texts;
  }

  const LogLevel initialThreshold_ = KorvaniCommon::logThreshold();
  std::mutex mutex_;
  std::vector<Line> lines_;
};

using Texts = std::vector<std::string>;

TEST_F(Logging, IsOffByDefaultForAModuleNobodySwitchedOn) {
  EXPECT_FALSE(KRVSwiftLogging::loggingEnabled(kModule));
  EXPECT_FALSE(KRVSwiftLogging::loggingEnabled(""));
  EXPECT_EQ(logAll(), Texts{});
}

TEST_F(Logging, DebugVerboseAndTestAreOffByDefaultForAModuleThatIsOn) {
  KRVSwiftLogging::setLoggingEnabled(kModule, true);
  EXPECT_EQ(KorvaniCommon::logThreshold(), LogLevel::info);
  EXPECT_EQ(logAll(), Texts{});
}

TEST_F(Logging, ErrorsWarningsAndInformationPassTheDefaultThreshold) {
  KRVSwiftLogging::setLoggingEnabled(kModule, true);
  EXPECT_TRUE(KorvaniCommon::isLogged(LogLevel::error, kModule));
  EXPECT_TRUE(KorvaniCommon::isLogged(LogLevel::warning, kModule));
  EXPECT_TRUE(KorvaniCommon::isLogged(LogLevel::info, kModule));
  EXPECT_FALSE(KorvaniCommon::isLogged(LogLevel::debug, kModule));
}

TEST_F(Logging, TheThresholdLetsItsOwnLevelAndThoseBelowPass) {
  KRVSwiftLogging::setLoggingEnabled(kModule, true);
  setLogThreshold(LogLevel::debug);
  EXPECT_EQ(logAll(), Texts{"debug"});
  setLogThreshold(LogLevel::verbose);
  EXPECT_EQ(logAll(), (Texts{"debug", "verbose"}));
  setLogThreshold(LogLevel::test);
  EXPECT_EQ(logAll(), (Texts{"debug", "verbose", "test"}));
  setLogThreshold(LogLevel::error);
  EXPECT_EQ(logAll(), Texts{});
}

TEST_F(Logging, TheModuleSwitchTurnsLinesOnAndOff) {
  setLogThreshold(LogLevel::test);
  EXPECT_EQ(logAll(), Texts{});
  KRVSwiftLogging::setLoggingEnabled(kModule, true);
  EXPECT_TRUE(KRVSwiftLogging::loggingEnabled(kModule));
  EXPECT_EQ(logAll().size(), 3u);
  KRVSwiftLogging::setLoggingEnabled(kModule, false);
  EXPECT_FALSE(KRVSwiftLogging::loggingEnabled(kModule));
  EXPECT_EQ(logAll(), Texts{});
}

TEST_F(Logging, ModulesAreSwitchedOneByOne) {
  switchEverythingOn();
  KRVDDLogDebug([] { return "hidden"; }, "Elevators");
  EXPECT_TRUE(lines_.empty());
  EXPECT_FALSE(KRVSwiftLogging::loggingEnabled("Elevators"));
}

TEST_F(Logging, TheSinkGetsLevelModuleAndText) {
  switchEverythingOn();
  KRVDDLogVerbose([] { return std::string("space 7 is free"); }, kModule);
  ASSERT_EQ(lines_.size(), 1u);
  EXPECT_EQ(lines_[0].level, LogLevel::verbose);
  EXPECT_EQ(lines_[0].module, kModule);
  EXPECT_EQ(lines_[0].text, "space 7 is free");
}

TEST_F(Logging, EachFunctionLogsOnItsOwnLevel) {
  switchEverythingOn();
  logAll();
  ASSERT_EQ(lines_.size(), 3u);
  EXPECT_EQ(lines_[0].level, LogLevel::debug);
  EXPECT_EQ(lines_[1].level, LogLevel::verbose);
  EXPECT_EQ(lines_[2].level, LogLevel::test);
}

TEST_F(Logging, TheTextIsBuiltOnceForALineThatIsLogged) {
  switchEverythingOn();
  int built = 0;
  KRVDDLogDebug([&] { return std::to_string(++built); }, kModule);
  EXPECT_EQ(built, 1);
}

TEST_F(Logging, TheTextIsNotBuiltBelowTheThreshold) {
  KRVSwiftLogging::setLoggingEnabled(kModule, true);
  int built = 0;
  const auto text = [&] { return std::to_string(++built); };
  KRVDDLogDebug(text, kModule);
  KRVDDLogVerbose(text, kModule);
  KRVDDLogTest(text, kModule);
  EXPECT_EQ(built, 0);
}

TEST_F(Logging, TheTextIsNotBuiltForAModuleThatIsOff) {
  setLogThreshold(LogLevel::test);
  int built = 0;
  KRVDDLogDebug([&] { return std::to_string(++built); }, kModule);
  EXPECT_EQ(built, 0);
}

TEST_F(Logging, ATextMayLogItself) {
  switchEverythingOn();
  KRVDDLogDebug(
      [] {
        KRVDDLogVerbose([] { return "inner"; }, kModule);
        return "outer";
      },
      kModule);
  ASSERT_EQ(lines_.size(), 2u);
  EXPECT_EQ(lines_[0].text, "inner");
  EXPECT_EQ(lines_[1].text, "outer");
}

TEST_F(Logging, ASinkMayLogAndReplaceItself) {
  switchEverythingOn();
  std::vector<std::string> first;
  std::vector<std::string> second;
  setLogSink([&](LogLevel, std::string_view, std::string_view text) {
    first.emplace_back(text);
    setLogSink([&](LogLevel, std::string_view, std::string_view further) {
      second.emplace_back(further);
    });
    KRVDDLogDebug([] { return "two"; }, kModule);
  });
  KRVDDLogDebug([] { return "one"; }, kModule);
  EXPECT_EQ(first, Texts{"one"});
  EXPECT_EQ(second, Texts{"two"});
}

TEST_F(Logging, WithoutSinkALineGoesToStandardError) {
  switchEverythingOn();
  setLogSink(nullptr);
  testing::internal::CaptureStderr();
  KRVDDLogDebug([] { return "space 7 is free"; }, kModule);
  KRVDDLogTest([] { return "0.25 s"; }, kModule);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "[debug] Parking: space 7 is free\n[test] Parking: 0.25 s\n");
  EXPECT_TRUE(lines_.empty());
}

TEST_F(Logging, AFinishedLineGoesToTheSinkWhateverTheSwitchesSay) {
  KorvaniCommon::writeLogLine(LogLevel::test, "Elevators", "stuck");
  ASSERT_EQ(lines_.size(), 1u);
  EXPECT_EQ(lines_[0].text, "stuck");
}

TEST(LogLevel, EveryLevelHasItsName) {
  EXPECT_EQ(nameOf(LogLevel::error), "error");
  EXPECT_EQ(nameOf(LogLevel::warning), "warning");
  EXPECT_EQ(nameOf(LogLevel::info), "info");
  EXPECT_EQ(nameOf(LogLevel::debug), "debug");
  EXPECT_EQ(nameOf(LogLevel::verbose), "verbose");
  EXPECT_EQ(nameOf(LogLevel::test), "test");
  EXPECT_EQ(nameOf(static_cast<LogLevel>(99)), "unknown");
}

TEST_F(Logging, ManyThreadsLogWithoutLosingLines) {
  constexpr int kThreads = 4;
  constexpr int kRounds = 500;
  switchEverythingOn();
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([] {
      for (int round = 0; round < kRounds; ++round) {
        KRVDDLogDebug([&] { return std::to_string(round); }, kModule);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(lines_.size(), static_cast<std::size_t>(kThreads * kRounds));
}

TEST_F(Logging, SwitchesSinksAndThresholdMayChangeWhileOthersLog) {
  switchEverythingOn();
  std::atomic<bool> running{true};
  std::atomic<int> taken{0};
  std::vector<std::thread> threads;
  threads.reserve(2);
  for (int i = 0; i < 2; ++i) {
    threads.emplace_back([&] {
      while (running) KRVDDLogVerbose([] { return "x"; }, kModule);
    });
  }
  for (int round = 0; round < 500; ++round) {
    setLogSink([&taken](LogLevel, std::string_view, std::string_view) { ++taken; });
    KRVSwiftLogging::setLoggingEnabled(kModule, round % 2 == 0);
    KRVSwiftLogging::setLoggingEnabled("module " + std::to_string(round % 7), true);
    setLogThreshold(round % 3 == 0 ? LogLevel::info : LogLevel::test);
  }
  switchEverythingOn();
  KRVDDLogVerbose([] { return "x"; }, kModule);
  running = false;
  for (std::thread& thread : threads) thread.join();
  EXPECT_GE(taken, 1);
}

}  // namespace
