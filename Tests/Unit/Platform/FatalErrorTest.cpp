#include "Platform/FatalError.hpp"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <string>

namespace KorvaniPlatform {
namespace {

void raiseWithHook() {
  setFatalErrorHook([](std::string_view message, std::string_view location) {
    std::fprintf(stderr, "hook got [%.*s] from [%.*s]\n", static_cast<int>(message.size()),
                 message.data(), static_cast<int>(location.size()), location.data());
  });
  fatalError("Should not use", "File.cpp:7");
}

void raiseInsideTheHook() {
  setFatalErrorHook([](std::string_view, std::string_view) { fatalError("second", "Hook.cpp:2"); });
  fatalError("first", "File.cpp:1");
}

void raiseWithRemovedHook() {
  setFatalErrorHook(
      [](std::string_view, std::string_view) { std::fputs("hook still there\n", stderr); });
  setFatalErrorHook(nullptr);
  fatalError("alone", "File.cpp:3");
}

TEST(FatalErrorDeathTest, WritesTheMessageAndTheLocationInOneLine) {
  EXPECT_DEATH(fatalError("main configuration missing", "Common/CommonModule.cpp:42"),
               "^fatal error: main configuration missing \\(Common/CommonModule.cpp:42\\)\n");
}

TEST(FatalErrorDeathTest, AbortsTheProcess) {
  EXPECT_EXIT(fatalError("over", "here"), testing::KilledBySignal(SIGABRT), "fatal error: over");
}

TEST(FatalErrorDeathTest, TheMacroNamesTheLineItStandsIn) {
  EXPECT_DEATH(KORVANI_FATAL("broken"), "fatal error: broken \\(.*FatalErrorTest.cpp:[0-9]+\\)");
}

TEST(FatalErrorDeathTest, TheMacroTakesComputedMessages) {
  EXPECT_DEATH(KORVANI_FATAL("level " + std::to_string(4)), "fatal error: level 4 \\(");
}

TEST(FatalErrorDeathTest, TheHookHearsMessageAndLocationAfterTheyAreWritten) {
  EXPECT_DEATH(raiseWithHook(),
               "fatal error: Should not use \\(File.cpp:7\\)\n"
               "hook got \\[Should not use\\] from \\[File.cpp:7\\]\n");
}

TEST(FatalErrorDeathTest, AFatalErrorInsideTheHookIsWrittenAndEndsTheProcess) {
  EXPECT_DEATH(raiseInsideTheHook(),
               "fatal error: first \\(File.cpp:1\\)\nfatal error: second \\(Hook.cpp:2\\)\n$");
}

TEST(FatalErrorDeathTest, ARemovedHookIsNotCalled) {
  EXPECT_DEATH(raiseWithRemovedHook(), "^fatal error: alone \\(File.cpp:3\\)\n$");
}

}  // namespace
}  // namespace KorvaniPlatform
