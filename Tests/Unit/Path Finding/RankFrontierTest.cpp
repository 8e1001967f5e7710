#include "Navigation/Path Finding/Hierarchy/RankFrontier.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <set>
#include <vector>

namespace KorvaniTest {
namespace {

using KorvaniNavigation::RankFrontier;

std::vector<std::uint32_t> takeAll(RankFrontier& frontier) {
  std::vector<std::uint32_t> taken;
  while (!frontier.empty()) taken.push_back(frontier.takeLowest());
  return taken;
}

TEST(RankFrontier, IsEmptyAtFirst) {
  EXPECT_TRUE(RankFrontier(0).empty());
  EXPECT_TRUE(RankFrontier(1'000'000).empty());
}

TEST(RankFrontier, GivesNumbersLowestFirst) {
  RankFrontier frontier(300'000);
  for (const std::uint32_t number : {70U, 299'999U, 0U, 4096U, 63U, 64U, 262'144U}) {
    frontier.add(number);
  }
  EXPECT_EQ(takeAll(frontier), (std::vector<std::uint32_t>{0, 63, 64, 70, 4096, 262'144, 299'999}));
}

TEST(RankFrontier, TakesANumberThatIsThereAlreadyOnlyOnce) {
  RankFrontier frontier(100);
  frontier.add(99);
  frontier.add(99);
  EXPECT_EQ(takeAll(frontier), (std::vector<std::uint32_t>{99}));
}

TEST(RankFrontier, TakesNumbersInBetweenTheOnesThatAreTakenOut) {
  RankFrontier frontier(1000);
  frontier.add(10);
  frontier.add(900);
  EXPECT_EQ(frontier.takeLowest(), 10U);
  frontier.add(11);
  frontier.add(500);
  EXPECT_EQ(takeAll(frontier), (std::vector<std::uint32_t>{11, 500, 900}));
}

TEST(RankFrontier, TakesLowerNumbersAfterRewinding) {
  RankFrontier frontier(20'000);
  frontier.add(19'999);
  EXPECT_EQ(frontier.takeLowest(), 19'999U);
  frontier.rewind();
  frontier.add(3);
  frontier.add(12'345);
  EXPECT_EQ(takeAll(frontier), (std::vector<std::uint32_t>{3, 12'345}));
}

TEST(RankFrontier, DoesWhatAnOrderedSetDoes) {
  std::mt19937 random(11);
  RankFrontier frontier(50'000);
  for (int round = 0; round < 200; ++round) {
    std::set<std::uint32_t> expected;
    std::uint32_t lowest = 0;
    for (int step = 0; step < 100; ++step) {
      if (!expected.empty() && random() % 3 == 0) {
        lowest = frontier.takeLowest();
        ASSERT_EQ(lowest, *expected.begin());
        expected.erase(expected.begin());
        continue;
      }
      const std::uint32_t number =
          lowest + static_cast<std::uint32_t>(random()) % (50'000 - lowest);
      frontier.add(number);
      expected.insert(number);
    }
    ASSERT_EQ(takeAll(frontier), std::vector<std::uint32_t>(expected.begin(), expected.end()));
    frontier.rewind();
  }
}

}  // namespace
}  // namespace KorvaniTest
