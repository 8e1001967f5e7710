#include "Navigation/Path Finding/Arrays/Interruption.hpp"

#include <gtest/gtest.h>

namespace KorvaniTest {
namespace {

using KorvaniNavigation::Interruption;

TEST(Interruption, IsSeenWhenTheFlagIsLookedAt) {
  std::atomic<bool> flag{false};
  Interruption interruption(flag);
  EXPECT_FALSE(interruption.now());
  flag = true;
  EXPECT_FALSE(interruption.seen());
  EXPECT_TRUE(interruption.now());
  EXPECT_TRUE(interruption.seen());
}

TEST(Interruption, StaysSeenWhenTheFlagIsTakenBack) {
  std::atomic<bool> flag{true};
  Interruption interruption(flag);
  EXPECT_TRUE(interruption.now());
  flag = false;
  EXPECT_TRUE(interruption.now());
  EXPECT_TRUE(interruption.seen());
}

}  // namespace
}  // namespace KorvaniTest
