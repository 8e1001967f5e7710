#include "Platform/UUID.hpp"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <thread>
#include <vector>

namespace KorvaniPlatform {
namespace {

constexpr std::string_view kUpperCaseHexadecimal = "0123456789ABCDEF";

TEST(UUID, TextIsUpperCaseInGroupsOfEightFourFourFourAndTwelve) {
  for (int round = 0; round < 200; ++round) {
    const std::string text = UUID::random().uuidString();
    ASSERT_EQ(text.size(), 36u) << text;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (i == 8 || i == 13 || i == 18 || i == 23) {
        EXPECT_EQ(text[i], '-') << text;
      } else {
        EXPECT_NE(kUpperCaseHexadecimal.find(text[i]), std::string_view::npos) << text;
      }
    }
  }
}

TEST(UUID, SaysThatItIsRandomByVersionFourAndTheUsualVariant) {
  for (int round = 0; round < 200; ++round) {
    const std::string text = UUID::random().uuidString();
    EXPECT_EQ(text[14], '4') << text;
    EXPECT_NE(std::string_view("89AB").find(text[19]), std::string_view::npos) << text;
  }
}

TEST(UUID, EveryOtherDigitVaries) {
  std::vector<std::set<char>> seen(36);
  for (int round = 0; round < 1000; ++round) {
    const std::string text = UUID::random().uuidString();
    for (std::size_t i = 0; i < text.size(); ++i) seen[i].insert(text[i]);
  }
  for (std::size_t i = 0; i < seen.size(); ++i) {
    if (i == 8 || i == 13 || i == 18 || i == 23 || i == 14) continue;
    EXPECT_EQ(seen[i].size(), i == 19 ? 4u : 16u) << "digit " << i;
  }
}

TEST(UUID, EqualityIsThatOfTheTexts) {
  const UUID one = UUID::random();
  const UUID copy = one;
  const UUID other = UUID::random();
  EXPECT_TRUE(one == copy);
  EXPECT_EQ(one.uuidString(), copy.uuidString());
  EXPECT_FALSE(one == other);
  EXPECT_NE(one.uuidString(), other.uuidString());
}

TEST(UUID, OrderIsThatOfTheTexts) {
  UUID previous = UUID::random();
  for (int round = 0; round < 200; ++round) {
    const UUID next = UUID::random();
    EXPECT_EQ(previous < next, previous.uuidString() < next.uuidString());
    EXPECT_EQ(next < previous, next.uuidString() < previous.uuidString());
    EXPECT_FALSE(next < UUID(next));
    previous = next;
  }
}

TEST(UUID, ThreadsNeverGetTheSameOne) {
  constexpr std::size_t kThreads = 4;
  constexpr std::size_t kEach = 5000;
  std::vector<std::vector<UUID>> made(kThreads);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < kThreads; ++i) {
    threads.emplace_back([&made, i] {
      for (std::size_t round = 0; round < kEach; ++round) made[i].push_back(UUID::random());
    });
  }
  for (std::thread& thread : threads) thread.join();
  std::set<UUID> all;
  for (const std::vector<UUID>& some : made) all.insert(some.begin(), some.end());
  EXPECT_EQ(all.size(), kThreads * kEach);
}

}  // namespace
}  // namespace KorvaniPlatform
