#include "Navigation/Obstacles/DefaultObstacleDenier.hpp"

#include <cmath>
#include <memory>

#include "DenierFixture.hpp"
#include "Support/Points.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::DefaultObstacleDenier;

/// Walls are at 5 m north. South of that is in front of the wall, north of it behind.
class DefaultObstacleDenierTest : public DenierFixture {
 protected:
  DefaultObstacleDenierTest() { provide(graph); }

  /// A denier that has seen so many positions which earned credit, at the origin.
  std::unique_ptr<DefaultObstacleDenier> denierAfter(int clearUpdates) {
    auto denier = std::make_unique<DefaultObstacleDenier>(bundle());
    Walker(*denier).strolls(1 + clearUpdates, 0, 0);
    return denier;
  }
};

using DefaultObstacleDenierDeathTest = DefaultObstacleDenierTest;

TEST_F(DefaultObstacleDenierTest, StartsWithoutCreditAndMemory) {
  const DefaultObstacleDenier denier(bundle());
  EXPECT_EQ(denier.stickyCounter(), 0);
  EXPECT_EQ(denier.lastRegion(), nullptr);
  EXPECT_EQ(denier.lastIndoorLocation(), nullptr);
}

TEST_F(DefaultObstacleDenierTest, AcceptsTheFirstPositionAndRemembersIt) {
  DefaultObstacleDenier denier(bundle());
  wallAcross(west, 5);
  EXPECT_TRUE(Walker(denier).goesTo(5, 0));
  EXPECT_EQ(denier.stickyCounter(), 0);
  EXPECT_EQ(denier.lastRegion(), west);
  ASSERT_NE(denier.lastIndoorLocation(), nullptr);
  EXPECT_EQ(denier.lastIndoorLocation()->coordinate(), fromOrigin(5, 0));
  EXPECT_EQ(denier.lastIndoorLocation()->level(), 0);
  EXPECT_EQ(denier.lastIndoorLocation()->identifier(), -1);
}

TEST_F(DefaultObstacleDenierTest, DoesNotKeepThePositionItself) {
  DefaultObstacleDenier denier(bundle());
  const auto position = at(kOrigin, 0, 7);
  denier.check(*position);
  EXPECT_NE(denier.lastIndoorLocation(), position);
  position->setCoordinate(fromOrigin(9, 9));
  EXPECT_EQ(denier.lastIndoorLocation()->coordinate(), kOrigin);
}

TEST_F(DefaultObstacleDenierTest, EveryClearPositionEarnsHalfAPointUpToFive) {
  DefaultObstacleDenier denier(bundle());
  Walker walker(denier);
  walker.goesTo(0, 0);
  for (int i = 1; i <= 13; ++i) {
    walker.strolls(1, i, 0);
    EXPECT_EQ(denier.stickyCounter(), i < 10 ? 0.5 * i : 5.0);
  }
}

TEST_F(DefaultObstacleDenierTest, APositionThatStaysWhereItIsEarnsCredit) {
  wallAcross(west, 0);
  DefaultObstacleDenier denier(bundle());
  Walker walker(denier);
  EXPECT_TRUE(walker.goesTo(0, 0));
  EXPECT_TRUE(walker.goesTo(0, 0));
  EXPECT_EQ(denier.stickyCounter(), 0.5);
}

TEST_F(DefaultObstacleDenierTest, BlocksFourJumpsAfterTenClearPositionsAndAcceptsTheFifth) {
  wallAcross(west, 5);
  const auto denier = denierAfter(10);
  ASSERT_EQ(denier->stickyCounter(), 5.0);
  const auto accepted = denier->lastIndoorLocation()->coordinate();
  for (int jump = 1; jump <= 4; ++jump) {
    EXPECT_EQ(denier->check(*at(fromOrigin(10, jump))), accepted);
    EXPECT_EQ(denier->stickyCounter(), 5.0 - jump);
    EXPECT_EQ(denier->lastIndoorLocation()->coordinate(), accepted);
  }
  EXPECT_EQ(denier->check(*at(fromOrigin(10, 5))), fromOrigin(10, 5));
  EXPECT_EQ(denier->stickyCounter(), 0);
  EXPECT_EQ(denier->lastIndoorLocation()->coordinate(), fromOrigin(10, 5));
}

TEST_F(DefaultObstacleDenierTest, AJumpCostsOneAndIsBlockedOnlyWhileCreditIsLeft) {
  wallAcross(west, 5);
  for (int clear = 0; clear <= 2; ++clear) {
    const auto denier = denierAfter(clear);
    EXPECT_EQ(denier->check(*at(fromOrigin(10, 0))), fromOrigin(10, 0)) << clear;
    EXPECT_EQ(denier->stickyCounter(), 0);
  }
  const auto denier = denierAfter(3);
  const auto accepted = denier->lastIndoorLocation()->coordinate();
  EXPECT_EQ(denier->check(*at(fromOrigin(10, 0))), accepted);
  EXPECT_EQ(denier->stickyCounter(), 0.5);
  EXPECT_EQ(denier->check(*at(fromOrigin(10, 0))), fromOrigin(10, 0));
  EXPECT_EQ(denier->stickyCounter(), 0);
}

TEST_F(DefaultObstacleDenierTest, CreditIsEarnedAgainAfterBlockedJumps) {
  wallAcross(west, 5);
  const auto denier = denierAfter(10);
  Walker walker(*denier);
  walker.strolls(1, 0, 0);
  EXPECT_FALSE(walker.goesTo(10, 0));
  EXPECT_FALSE(walker.goesTo(10, 0));
  walker.strolls(3, 1, 1);
  EXPECT_EQ(denier->stickyCounter(), 4.5);
}

TEST_F(DefaultObstacleDenierTest, ComingToAnotherLevelIsAcceptedAndEndsTheCredit) {
  wallAcross(west, 5);
  wallAcross(upstairs, 5);
  const auto denier = denierAfter(10);
  Walker walker(*denier);
  EXPECT_TRUE(walker.goesTo(10, 0, 1));
  EXPECT_EQ(denier->stickyCounter(), 0);
  EXPECT_EQ(denier->lastIndoorLocation()->level(), 1);
  EXPECT_EQ(denier->lastRegion(), upstairs);
}

TEST_F(DefaultObstacleDenierTest, AJumpRightAfterALevelChangeIsAccepted) {
  wallAcross(upstairs, 5);
  const auto denier = denierAfter(10);
  Walker walker(*denier);
  EXPECT_TRUE(walker.goesTo(0, 0, 1));
  EXPECT_TRUE(walker.goesTo(10, 0, 1));
  EXPECT_EQ(denier->stickyCounter(), 0);
}

TEST_F(DefaultObstacleDenierTest, WallsOfAnotherLevelDoNotCount) {
  wallAcross(upstairs, 5);
  const auto denier = denierAfter(10);
  EXPECT_TRUE(Walker(*denier).goesTo(10, 0));
}

TEST_F(DefaultObstacleDenierTest, TheWallsOfTheLastRegionCountToo) {
  wallAcross(west, 5);
  const auto denier = denierAfter(10);
  Walker walker(*denier);
  walker.strolls(1, 0, 0);
  EXPECT_FALSE(walker.goesTo(10, 20));
  EXPECT_EQ(denier->lastRegion(), east);
}

TEST_F(DefaultObstacleDenierTest, TheWallsOfTheNewRegionCount) {
  wallAcross(east, 5);
  const auto denier = denierAfter(10);
  Walker walker(*denier);
  walker.strolls(1, 0, 0);
  EXPECT_TRUE(walker.goesTo(10, 0)) << "both ends lie in the western region";
  EXPECT_TRUE(walker.goesTo(0, 0));
  EXPECT_FALSE(walker.goesTo(10, 20));
}

TEST_F(DefaultObstacleDenierTest, TheWallsOfAnEarlierRegionNoLongerCount) {
  wallAcross(west, 5);
  const auto denier = denierAfter(10);
  Walker walker(*denier);
  walker.strolls(1, 0, 20);
  EXPECT_EQ(denier->lastRegion(), east);
  EXPECT_TRUE(walker.goesTo(10, 20));
}

// The region of a blocked position is remembered, although the place stays the accepted one.
TEST_F(DefaultObstacleDenierTest, ABlockedJumpIntoAnotherRegionForgetsTheWallsOfTheRegionLeft) {
  wallAcross(west, 5);
  const auto denier = denierAfter(10);
  Walker walker(*denier);
  walker.strolls(1, 0, 0);
  EXPECT_FALSE(walker.goesTo(10, 20));
  EXPECT_TRUE(walker.goesTo(10, 20));
  EXPECT_EQ(denier->stickyCounter(), 4.5);
}

TEST_F(DefaultObstacleDenierTest, APositionOutsideTheRectanglesBelongsToTheNearestRegion) {
  wallAcross(west, 5);
  DefaultObstacleDenier denier(bundle());
  Walker walker(denier);
  walker.strolls(11, 0, -1500);
  EXPECT_EQ(denier.lastRegion(), west);
  EXPECT_FALSE(walker.goesTo(10, -1500));
}

TEST_F(DefaultObstacleDenierTest, OnALevelWithoutRegionTheNearestLevelsWallsCount) {
  wallAcross(upstairs, 5);
  DefaultObstacleDenier denier(bundle());
  Walker walker(denier);
  walker.strolls(11, 0, 0, 7);
  EXPECT_EQ(denier.lastRegion(), upstairs);
  EXPECT_EQ(denier.lastIndoorLocation()->level(), 7);
  EXPECT_FALSE(walker.goesTo(10, 0, 7));
}

TEST_F(DefaultObstacleDenierTest, OutsideTheMapNothingIsCheckedOrRemembered) {
  provide(std::make_shared<KRVNavGraph>());
  DefaultObstacleDenier denier(bundle());
  Walker walker(denier);
  EXPECT_TRUE(walker.goesTo(0, 0));
  EXPECT_TRUE(walker.goesTo(10, 0));
  EXPECT_EQ(denier.lastIndoorLocation(), nullptr);
  EXPECT_EQ(denier.lastRegion(), nullptr);
  EXPECT_EQ(denier.stickyCounter(), 0);
}

TEST_F(DefaultObstacleDenierTest, APositionThatIsNoPlaceComesBackAndChangesNothing) {
  const auto denier = denierAfter(4);
  const auto before = denier->lastIndoorLocation();
  EXPECT_TRUE(std::isnan(denier->check(*at(kNotANumber, kNotANumber)).latitude));
  EXPECT_EQ(denier->lastIndoorLocation(), before);
  EXPECT_EQ(denier->lastRegion(), west);
  EXPECT_EQ(denier->stickyCounter(), 2.0);
}

TEST_F(DefaultObstacleDenierTest, KeepsTheRegionsOfTheGraphItWasMadeWith) {
  wallAcross(west, 5);
  const auto denier = denierAfter(10);
  provide(std::make_shared<KRVNavGraph>());
  EXPECT_EQ(denier->check(*at(fromOrigin(10, 0))), denier->lastIndoorLocation()->coordinate());
  EXPECT_EQ(denier->stickyCounter(), 4.0);
}

TEST_F(DefaultObstacleDenierTest, SeesWallsThatAreAddedToItsRegions) {
  const auto denier = denierAfter(10);
  Walker walker(*denier);
  walker.strolls(1, 0, 0);
  wallAcross(west, 5);
  EXPECT_FALSE(walker.goesTo(10, 0));
}

TEST_F(DefaultObstacleDenierTest, MadeWithoutGraphItWaitsForTheNextOneToBeAnnounced) {
  navigation().cancelAllTasks();
  DefaultObstacleDenier denier(bundle());
  Walker walker(denier);
  walker.strolls(3, 0, 0);
  navigation().provideGraph(graph);
  walker.strolls(3, 0, 0);
  EXPECT_EQ(denier.lastIndoorLocation(), nullptr);
  announceGraph();
  walker.strolls(3, 0, 0);
  EXPECT_EQ(denier.lastRegion(), west);
  EXPECT_EQ(denier.stickyCounter(), 1.0);
}

TEST_F(DefaultObstacleDenierTest, TwoDeniersDoNotShareTheirMemory) {
  wallAcross(west, 5);
  const auto one = denierAfter(10);
  DefaultObstacleDenier other(bundle());
  EXPECT_TRUE(Walker(other).goesTo(10, 0));
  EXPECT_EQ(other.stickyCounter(), 0);
  EXPECT_EQ(one->stickyCounter(), 5.0);
}

TEST_F(DefaultObstacleDenierTest, DoesNotKeepItsConfigurationAlive) {
  auto strange = strangeBundle();
  const DefaultObstacleDenier denier(strange);
  const std::weak_ptr<ConfigDependents> watched = strange;
  strange.reset();
  EXPECT_TRUE(watched.expired());
}

TEST_F(DefaultObstacleDenierTest, NeedsItsConfigurationOnlyOnTheSameLevel) {
  auto strange = strangeBundle();
  DefaultObstacleDenier denier(strange);
  strange.reset();
  Walker walker(denier);
  EXPECT_TRUE(walker.goesTo(0, 0, 0));
  EXPECT_TRUE(walker.goesTo(0, 0, 1));
}

TEST_F(DefaultObstacleDenierDeathTest, ACheckOnTheSameLevelWithoutConfigurationIsAFatalError) {
  auto strange = strangeBundle();
  DefaultObstacleDenier denier(strange);
  strange.reset();
  denier.check(*at(kOrigin));
  EXPECT_DEATH(denier.check(*at(kOrigin)), "fatal error: .*configuration");
}

TEST_F(DefaultObstacleDenierTest, ChecksOfSeveralThreadsComeOneAtATime) {
  DefaultObstacleDenier denier(bundle());
  checkOnThreads(denier, 3, 2000);
  EXPECT_EQ(denier.stickyCounter(), 5.0);
}

}  // namespace
}  // namespace KorvaniTest
