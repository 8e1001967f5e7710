#include "Navigation/Obstacles/ObstacleCounters.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "LoggedLines.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Support/Points.hpp"

namespace KorvaniTest {
namespace {

using KorvaniCommon::LogLevel;
using KorvaniNavigation::KRVNavObstacle;
using KorvaniNavigation::ObstacleCounters;
using Obstacles = ObstacleCounters::Obstacles;
using Texts = std::vector<std::string>;

std::shared_ptr<KRVNavObstacle> wallOf(std::int64_t strength) {
  return std::make_shared<KRVNavObstacle>(
      std::vector<CLLocationCoordinate2D>{fromOrigin(0, 0), fromOrigin(10, 0)}, strength);
}

class ObstacleCountersTest : public testing::Test {
 protected:
  std::int64_t counterOf(const std::shared_ptr<KRVNavObstacle>& wall) const {
    const auto* counter = counters.counters().find(wall);
    return counter ? *counter : 0;
  }

  /// Makes a counter what it is to be, by one step.
  void setCounter(const std::shared_ptr<KRVNavObstacle>& wall, std::int64_t value) {
    counters.updateObstacleCounter(wall, value - counterOf(wall));
  }

  /// What a single wall of that strength, with that counter, makes of a crossing.
  bool isBreached(std::int64_t strength, float percentage, std::int64_t counter) {
    const auto wall = wallOf(strength);
    setCounter(wall, counter);
    return counters.isStrengthOfObstaclesReached({wall}, percentage);
  }

  /// "changed obstacle ... counter to ..."
  static std::string changed(const std::shared_ptr<KRVNavObstacle>& wall, std::int64_t value) {
    return "changed obstacle " + std::to_string(wall->hash()) + " counter to " +
           std::to_string(value);
  }

  /// "obstacle ...: .../..."
  static std::string compared(const std::shared_ptr<KRVNavObstacle>& wall, std::int64_t counter,
                              std::int64_t threshold) {
    return "obstacle " + std::to_string(wall->hash()) + ": " + std::to_string(counter) + "/" +
           std::to_string(threshold);
  }

  const std::shared_ptr<KRVNavObstacle> a = wallOf(10);
  const std::shared_ptr<KRVNavObstacle> b = wallOf(10);
  const std::shared_ptr<KRVNavObstacle> c = wallOf(10);
  ObstacleCounters counters;
};

using ObstacleCountersDeathTest = ObstacleCountersTest;

TEST_F(ObstacleCountersTest, StartWithoutAny) { EXPECT_TRUE(counters.counters().empty()); }

TEST_F(ObstacleCountersTest, AStepIsAddedToTheCounterOrToNothing) {
  counters.updateObstacleCounter(a, 7);
  EXPECT_EQ(counterOf(a), 7);
  counters.updateObstacleCounter(a, 5);
  EXPECT_EQ(counterOf(a), 12);
  counters.updateObstacleCounter(a, -4);
  EXPECT_EQ(counterOf(a), 8);
  EXPECT_EQ(counterOf(b), 0);
}

TEST_F(ObstacleCountersTest, ACounterStopsAtAHundred) {
  counters.updateObstacleCounter(a, 99);
  counters.updateObstacleCounter(a, 1);
  EXPECT_EQ(counterOf(a), 100);
  counters.updateObstacleCounter(a, 1);
  EXPECT_EQ(counterOf(a), 100);
  counters.updateObstacleCounter(a, -10);
  EXPECT_EQ(counterOf(a), 90);
  counters.updateObstacleCounter(b, 250);
  EXPECT_EQ(counterOf(b), 100);
}

TEST_F(ObstacleCountersTest, ACounterBelowOneVanishes) {
  counters.updateObstacleCounter(a, 10);
  counters.updateObstacleCounter(a, -9);
  EXPECT_EQ(counterOf(a), 1);
  counters.updateObstacleCounter(a, -1);
  EXPECT_TRUE(counters.counters().empty());
  counters.updateObstacleCounter(a, -10);
  counters.updateObstacleCounter(a, 0);
  EXPECT_TRUE(counters.counters().empty());
}

TEST_F(ObstacleCountersTest, EqualWallsAreCountedApart) {
  counters.updateObstacleCounters({a});
  counters.updateObstacleCounters({a, b});
  EXPECT_EQ(counterOf(a), 10);
  EXPECT_EQ(counterOf(b), 5);
}

TEST_F(ObstacleCountersTest, CrossedWallsGainFiveAndAllOthersLoseTen) {
  setCounter(a, 50);
  setCounter(b, 50);
  counters.updateObstacleCounters({b, c});
  EXPECT_EQ(counterOf(a), 40);
  EXPECT_EQ(counterOf(b), 55);
  EXPECT_EQ(counterOf(c), 5);
}

TEST_F(ObstacleCountersTest, AWallThatIsCrossedTwiceGainsTwice) {
  counters.updateObstacleCounters({a, a});
  EXPECT_EQ(counterOf(a), 10);
}

TEST_F(ObstacleCountersTest, WithoutACrossingAllLoseTenUntilTheyVanishBelowOne) {
  setCounter(a, 31);
  setCounter(b, 30);
  setCounter(c, 10);
  std::vector<std::vector<std::int64_t>> history;
  for (int i = 0; i < 4; ++i) {
    counters.updateObstacleCounters({});
    history.push_back({counterOf(a), counterOf(b), counterOf(c)});
  }
  EXPECT_EQ(history, (std::vector<std::vector<std::int64_t>>{
                         {21, 20, 0}, {11, 10, 0}, {1, 0, 0}, {0, 0, 0}}));
  EXPECT_TRUE(counters.counters().empty());
}

TEST_F(ObstacleCountersTest, TheCounterOfAWallThatIsCrossedAgainAndAgainStaysAtAHundred) {
  for (int i = 0; i < 20; ++i) counters.updateObstacleCounters({a});
  EXPECT_EQ(counterOf(a), 100);
  counters.updateObstacleCounters({a});
  EXPECT_EQ(counterOf(a), 100);
}

TEST_F(ObstacleCountersTest,
       CrossedWallsAreCountedFirstInListOrderThenTheOthersInTheirsThenAllAreSummedUp) {
  counters.updateObstacleCounter(a, 40);
  counters.updateObstacleCounter(b, 4);
  const LoggedLines log(LogLevel::verbose);
  const auto d = wallOf(10);
  counters.updateObstacleCounters({d, c});
  EXPECT_EQ(log.texts(), (Texts{changed(d, 5), changed(c, 5), changed(a, 30), changed(b, -6),
                                "updated obstacle counters - 3 still in map"}));
}

TEST_F(ObstacleCountersTest, TellEveryStepAtVerboseAndTheSumAtDebugLevel) {
  counters.updateObstacleCounter(a, 99);
  counters.updateObstacleCounter(b, 10);
  const LoggedLines log(LogLevel::test);
  counters.updateObstacleCounters({a});
  EXPECT_EQ(log.texts(LogLevel::verbose), (Texts{changed(a, 100), changed(b, 0)}));
  EXPECT_EQ(log.texts(LogLevel::debug), Texts{"updated obstacle counters - 1 still in map"});
  EXPECT_EQ(log.lines().size(), 3U);
}

TEST_F(ObstacleCountersTest, SayThatNothingIsLeftInTheMap) {
  const LoggedLines log(LogLevel::debug);
  counters.updateObstacleCounters({});
  EXPECT_EQ(log.texts(), Texts{"updated obstacle counters - 0 still in map"});
}

TEST_F(ObstacleCountersTest, ClearingForgetsAllWalls) {
  counters.updateObstacleCounters({a, b});
  const LoggedLines log(LogLevel::test);
  counters.clear();
  EXPECT_TRUE(counters.counters().empty());
  counters.clear();
  EXPECT_TRUE(log.lines().empty());
}

TEST_F(ObstacleCountersTest, NoWallsAreBreached) {
  const LoggedLines log(LogLevel::test);
  EXPECT_TRUE(counters.isStrengthOfObstaclesReached({}, 100));
  EXPECT_TRUE(log.lines().empty());
}

TEST_F(ObstacleCountersTest, AWallIsBreachedOnceItsCounterExceedsItsScaledStrength) {
  EXPECT_FALSE(isBreached(50, 100, 49));
  EXPECT_FALSE(isBreached(50, 100, 50));
  EXPECT_TRUE(isBreached(50, 100, 51));
  EXPECT_FALSE(isBreached(50, 40, 20));
  EXPECT_TRUE(isBreached(50, 40, 21));
  EXPECT_FALSE(isBreached(100, 100, 100));
}

TEST_F(ObstacleCountersTest, AWallIsBreachedAtOnceByWhoHasJustArrivedAndWhenItHasNoStrength) {
  EXPECT_TRUE(isBreached(100, 0, 5));
  EXPECT_TRUE(isBreached(0, 100, 5));
  EXPECT_TRUE(isBreached(-50, 100, 5));
}

// In double precision the threshold of 29 comes out below 29, and that of 53 as 53.
TEST_F(ObstacleCountersTest, ThresholdsAreOfSinglePrecision) {
  EXPECT_FALSE(isBreached(29, 100, 29));
  EXPECT_FALSE(isBreached(57, 100, 57));
  EXPECT_TRUE(isBreached(53, 100, 53));
  EXPECT_TRUE(isBreached(59, 100, 59));
}

TEST_F(ObstacleCountersTest, ThresholdsAreLoggedCutOffToAnInteger) {
  const std::map<std::int64_t, std::int64_t> shown{{29, 29}, {53, 52}, {57, 57},
                                                   {59, 58}, {0, 0},   {-7, -7}};
  for (const auto& entry : shown) {
    const auto wall = wallOf(entry.first);
    setCounter(wall, 60);
    const LoggedLines log(LogLevel::verbose);
    counters.isStrengthOfObstaclesReached({wall}, 100);
    EXPECT_EQ(log.texts(LogLevel::verbose), Texts{compared(wall, 60, entry.second)});
    EXPECT_EQ(log.lines().size(), 1U);
  }
  const auto wall = wallOf(15);
  setCounter(wall, 5);
  const LoggedLines log(LogLevel::verbose);
  EXPECT_FALSE(counters.isStrengthOfObstaclesReached({wall}, 36));
  EXPECT_EQ(log.texts(), Texts{compared(wall, 5, 5)}) << "5.4 is shown as 5, and not reached by 5";
}

TEST_F(ObstacleCountersTest, ThresholdsBeyondTheIntegersAreLoggedAsTheLastInteger) {
  constexpr auto kMost = std::numeric_limits<std::int64_t>::max();
  constexpr auto kLeast = std::numeric_limits<std::int64_t>::min();
  const auto strongest = wallOf(kMost);
  const auto weakest = wallOf(kLeast);
  counters.updateObstacleCounters({strongest, weakest});
  const LoggedLines log(LogLevel::verbose);
  EXPECT_FALSE(counters.isStrengthOfObstaclesReached({weakest, strongest}, 100));
  EXPECT_EQ(log.texts(), (Texts{compared(weakest, 5, kLeast), compared(strongest, 5, kMost)}));
}

TEST_F(ObstacleCountersTest, TheFirstWallThatHoldsDecides) {
  const auto strong = wallOf(80);
  const auto weak = wallOf(1);
  counters.updateObstacleCounters({weak, strong, a});
  const LoggedLines log(LogLevel::verbose);
  EXPECT_FALSE(counters.isStrengthOfObstaclesReached({weak, strong, a}, 100));
  EXPECT_EQ(log.texts(), (Texts{compared(weak, 5, 1), compared(strong, 5, 80)}));
}

TEST_F(ObstacleCountersTest, AllWallsMustBeBreached) {
  setCounter(a, 11);
  setCounter(b, 11);
  EXPECT_TRUE(counters.isStrengthOfObstaclesReached({a, b}, 100));
  setCounter(b, 10);
  EXPECT_FALSE(counters.isStrengthOfObstaclesReached({a, b}, 100));
  EXPECT_FALSE(counters.isStrengthOfObstaclesReached({b, a}, 100));
}

TEST_F(ObstacleCountersTest, AWallIsCrossedOnceItWasPushedAgainstOftenEnough) {
  const auto wall = wallOf(20);
  std::vector<bool> accepted;
  for (int i = 0; i < 6; ++i) accepted.push_back(counters.isCrossingAccepted({wall}, 100));
  EXPECT_EQ(accepted, (std::vector<bool>{false, false, false, false, true, true}));
}

TEST_F(ObstacleCountersTest, ACrossingIsCountedThenDecidedThenSaid) {
  const auto wall = wallOf(8);
  const LoggedLines log(LogLevel::verbose);
  EXPECT_FALSE(counters.isCrossingAccepted({wall}, 100));
  EXPECT_TRUE(counters.isCrossingAccepted({wall}, 100));
  EXPECT_EQ(log.texts(), (Texts{
                             changed(wall, 5),
                             "updated obstacle counters - 1 still in map",
                             compared(wall, 5, 8),
                             "obstacle(s) not breached - latest position will be blocked",
                             changed(wall, 10),
                             "updated obstacle counters - 1 still in map",
                             compared(wall, 10, 8),
                             "obstacle(s) breached - latest position will be accepted",
                         }));
  EXPECT_EQ(log.texts(LogLevel::debug).size(), 4U);
}

TEST_F(ObstacleCountersTest, WithoutACrossingNothingIsDecidedOrSaidAboutIt) {
  setCounter(a, 50);
  const LoggedLines log(LogLevel::verbose);
  EXPECT_TRUE(counters.isCrossingAccepted({}, 100));
  EXPECT_EQ(counterOf(a), 40);
  EXPECT_EQ(log.texts(), (Texts{changed(a, 40), "updated obstacle counters - 1 still in map"}));
}

TEST_F(ObstacleCountersDeathTest, AWallThatWasNotCountedCannotBeJudged) {
  EXPECT_DEATH(counters.isStrengthOfObstaclesReached({a}, 100),
               "fatal error: an obstacle is to be breached that was not counted");
}

}  // namespace
}  // namespace KorvaniTest
