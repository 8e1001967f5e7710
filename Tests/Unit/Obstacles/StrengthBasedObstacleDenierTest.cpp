#include "Navigation/Obstacles/StrengthBasedObstacleDenier.hpp"

#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "DenierFixture.hpp"
#include "LoggedLines.hpp"
#include "Support/Points.hpp"

namespace KorvaniTest {
namespace {

using KorvaniCommon::LogLevel;
using KorvaniNavigation::StrengthBasedObstacleDenier;
using Texts = std::vector<std::string>;

class StrengthBasedObstacleDenierTest : public DenierFixture {
 protected:
  StrengthBasedObstacleDenierTest() {
    provide(graph);
    denier = std::make_unique<StrengthBasedObstacleDenier>(bundle());
  }

  void TearDown() override {
    denier.reset();
    DenierFixture::TearDown();
  }

  std::unique_ptr<StrengthBasedObstacleDenier> denier;
};

using StrengthBasedObstacleDenierDeathTest = StrengthBasedObstacleDenierTest;

TEST_F(StrengthBasedObstacleDenierTest, StartsWithoutMemory) {
  EXPECT_TRUE(denier->obstacleCounters().empty());
  EXPECT_EQ(denier->numberOfPosUpdatesOnSameFloor(), 0);
  EXPECT_EQ(denier->percentage(), std::nullopt);
  EXPECT_EQ(denier->lastRegion(), nullptr);
  EXPECT_EQ(denier->lastIndoorLocation(), nullptr);
}

TEST_F(StrengthBasedObstacleDenierTest, AcceptsTheFirstPositionAndRemembersIt) {
  EXPECT_TRUE(Walker(*denier).goesTo(3, 20));
  EXPECT_EQ(denier->numberOfPosUpdatesOnSameFloor(), 0);
  EXPECT_EQ(denier->percentage(), 0.0F);
  EXPECT_EQ(denier->lastRegion(), east);
  ASSERT_NE(denier->lastIndoorLocation(), nullptr);
  EXPECT_EQ(denier->lastIndoorLocation()->coordinate(), fromOrigin(3, 20));
  EXPECT_EQ(denier->lastIndoorLocation()->level(), 0);
  EXPECT_EQ(denier->lastIndoorLocation()->identifier(), -1);
}

TEST_F(StrengthBasedObstacleDenierTest, PercentageReachesAHundredOnThe25thUpdateAndStaysThere) {
  EXPECT_EQ(StrengthBasedObstacleDenier::POS_UPDATES_ON_FLOOR_FOR_FULL_STRENGTH, 25);
  static_assert(std::is_same_v<decltype(denier->percentage()), std::optional<float>>);
  Walker walker(*denier);
  walker.goesTo(0, 0);
  for (int update = 1; update <= 30; ++update) {
    walker.goesTo(0, 0.1 * update);
    EXPECT_EQ(denier->numberOfPosUpdatesOnSameFloor(), update);
    EXPECT_EQ(denier->percentage(), update < 25 ? 4.0F * static_cast<float>(update) : 100.0F);
  }
}

TEST_F(StrengthBasedObstacleDenierTest, AcceptsEveryPositionOnALevelWhateverWallsThereAre) {
  wallAcross(west, 5)->setStrength(100);
  Walker walker(*denier);
  walker.strolls(30, 0, 0);
  for (int i = 0; i < 30; ++i) EXPECT_TRUE(walker.goesTo(i % 2 == 0 ? 10 : 0, 0));
  EXPECT_TRUE(denier->obstacleCounters().empty());
  EXPECT_EQ(denier->lastIndoorLocation()->coordinate(), fromOrigin(0, 0));
}

TEST_F(StrengthBasedObstacleDenierTest, ComingToAnotherLevelStartsTheCountAnew) {
  Walker walker(*denier);
  walker.strolls(8, 0, 0);
  EXPECT_EQ(denier->percentage(), 28.0F);
  EXPECT_TRUE(walker.goesTo(0, 0, 1));
  EXPECT_EQ(denier->numberOfPosUpdatesOnSameFloor(), 0);
  EXPECT_EQ(denier->percentage(), 0.0F);
  EXPECT_TRUE(denier->obstacleCounters().empty());
  EXPECT_EQ(denier->lastRegion(), upstairs);
  EXPECT_EQ(denier->lastIndoorLocation()->level(), 1);
  EXPECT_TRUE(walker.goesTo(0, 0, 1));
  EXPECT_EQ(denier->percentage(), 4.0F);
}

TEST_F(StrengthBasedObstacleDenierTest, ComingToAnotherRegionOfTheLevelGoesOnCounting) {
  Walker walker(*denier);
  walker.strolls(3, 0, 0);
  walker.strolls(3, 0, 20);
  EXPECT_EQ(denier->numberOfPosUpdatesOnSameFloor(), 5);
  EXPECT_EQ(denier->lastRegion(), east);
}

TEST_F(StrengthBasedObstacleDenierTest, SaysWhatItDetectedAndWhatIsLeftInTheMap) {
  wallAcross(west, 5);
  Walker walker(*denier);
  const LoggedLines log(LogLevel::test);
  walker.goesTo(0, 0);
  EXPECT_TRUE(log.lines().empty()) << "nothing is checked on the first position";
  walker.goesTo(10, 0);
  EXPECT_EQ(log.texts(LogLevel::debug),
            (Texts{"detected 0 obstacles between the old and the new position",
                   "updated obstacle counters - 0 still in map"}));
  EXPECT_EQ(log.lines().size(), 2U);
  walker.goesTo(10, 0, 1);
  EXPECT_EQ(log.lines().size(), 2U) << "nothing is checked on a new level";
}

TEST_F(StrengthBasedObstacleDenierTest, OutsideTheMapNothingIsCheckedOrRemembered) {
  provide(std::make_shared<KRVNavGraph>());
  Walker walker(*denier);
  const LoggedLines log(LogLevel::test);
  EXPECT_TRUE(walker.goesTo(0, 0));
  EXPECT_TRUE(walker.goesTo(10, 0));
  EXPECT_EQ(denier->lastIndoorLocation(), nullptr);
  EXPECT_EQ(denier->lastRegion(), nullptr);
  EXPECT_EQ(denier->percentage(), std::nullopt);
  EXPECT_TRUE(log.lines().empty());
}

TEST_F(StrengthBasedObstacleDenierTest, APositionThatIsNoPlaceComesBackAndChangesNothing) {
  Walker(*denier).strolls(3, 0, 0);
  const auto before = denier->lastIndoorLocation();
  EXPECT_TRUE(std::isnan(denier->check(*at(kNotANumber, kNotANumber)).latitude));
  EXPECT_EQ(denier->lastIndoorLocation(), before);
  EXPECT_EQ(denier->numberOfPosUpdatesOnSameFloor(), 2);
  EXPECT_EQ(denier->percentage(), 8.0F);
}

TEST_F(StrengthBasedObstacleDenierTest, APositionOutsideTheRectanglesBelongsToTheNearestRegion) {
  Walker(*denier).strolls(1, 0, 1500);
  EXPECT_EQ(denier->lastRegion(), east);
  Walker(*denier).strolls(1, 0, 0, 9);
  EXPECT_EQ(denier->lastRegion(), upstairs);
  EXPECT_EQ(denier->lastIndoorLocation()->level(), 9);
}

TEST_F(StrengthBasedObstacleDenierTest, ReadsTheGraphsRegionsForEveryCheck) {
  Walker walker(*denier);
  walker.strolls(3, 0, 0);
  const auto other = std::make_shared<KRVNavGraph>();
  const auto region = regionOf(0, -1000, 1000);
  other->add(region);
  navigation().provideGraph(other);  // and not announced
  walker.strolls(1, 0, 0);
  EXPECT_EQ(denier->lastRegion(), region);
  navigation().cancelAllTasks();
  walker.strolls(5, 0, 0);
  EXPECT_EQ(denier->numberOfPosUpdatesOnSameFloor(), 3) << "without a graph nothing is counted";
}

TEST_F(StrengthBasedObstacleDenierTest, MadeWithoutGraphItChecksAsSoonAsThereIsOne) {
  navigation().cancelAllTasks();
  StrengthBasedObstacleDenier early(bundle());
  Walker walker(early);
  walker.strolls(2, 0, 0);
  EXPECT_EQ(early.lastIndoorLocation(), nullptr);
  navigation().provideGraph(graph);
  walker.strolls(2, 0, 0);
  EXPECT_EQ(early.lastRegion(), west);
  EXPECT_EQ(early.percentage(), 4.0F);
}

TEST_F(StrengthBasedObstacleDenierTest, NeedsItsConfigurationOnlyOnTheSameLevel) {
  auto strange = strangeBundle();
  const std::weak_ptr<ConfigDependents> watched = strange;
  StrengthBasedObstacleDenier other(strange);
  strange.reset();
  EXPECT_TRUE(watched.expired());
  Walker walker(other);
  EXPECT_TRUE(walker.goesTo(0, 0, 0));
  EXPECT_TRUE(walker.goesTo(0, 0, 1));
}

TEST_F(StrengthBasedObstacleDenierDeathTest, ACheckOnTheSameLevelWithoutConfigurationIsFatal) {
  auto strange = strangeBundle();
  StrengthBasedObstacleDenier other(strange);
  strange.reset();
  other.check(*at(kOrigin));
  EXPECT_DEATH(other.check(*at(kOrigin)), "fatal error: .*configuration");
}

TEST_F(StrengthBasedObstacleDenierTest, ALogSinkMayLookAtTheDenierThatLogs) {
  denier->check(*at(kOrigin));
  std::vector<std::int64_t> seen;
  const LoggedLines lines(KorvaniCommon::LogLevel::debug);  // restores the sink
  KorvaniCommon::setLogSink([&](auto, std::string_view, std::string_view) {
    seen.push_back(denier->numberOfPosUpdatesOnSameFloor());
  });
  denier->check(*at(kOrigin));
  EXPECT_EQ(seen, (std::vector<std::int64_t>{0, 0})) << "as the check before has left it";
  EXPECT_EQ(denier->numberOfPosUpdatesOnSameFloor(), 1);
}

TEST_F(StrengthBasedObstacleDenierTest, ChecksOfSeveralThreadsComeOneAtATime) {
  checkOnThreads(*denier, 3, 2000);
  EXPECT_EQ(denier->numberOfPosUpdatesOnSameFloor(), 3 * 2000 - 1);
}

}  // namespace
}  // namespace KorvaniTest
