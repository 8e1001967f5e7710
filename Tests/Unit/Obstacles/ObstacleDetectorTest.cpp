#include "Navigation/Obstacles/ObstacleDetector.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Support/Points.hpp"
#include "Support/TextBuilding.hpp"

using namespace KorvaniNavigation;
using KorvaniTest::fromOrigin;
using KorvaniTest::TextBuilding;

namespace {

using Coordinates = std::vector<CLLocationCoordinate2D>;
using Obstacles = std::vector<std::shared_ptr<KRVNavObstacle>>;

std::shared_ptr<KRVNavObstacle> obstacle(Coordinates coordinates) {
  return std::make_shared<KRVNavObstacle>(std::move(coordinates));
}

ObstacleDetector detector(Obstacles obstacles) {
  return ObstacleDetector(std::move(obstacles), {});
}

// Whether a wall from (0, 0) northwards over 10 m blocks the way between two places, given as
// metres north and east.
bool wallBlocks(double northA, double eastA, double northB, double eastB) {
  return detector({obstacle({fromOrigin(0, 0), fromOrigin(10, 0)})})
      .isAnyBarrierInBetween(fromOrigin(northA, eastA), fromOrigin(northB, eastB));
}

// South-west, north-west, north-east and south-east corner of a square of 10 m.
Coordinates squareCorners() {
  return {fromOrigin(0, 0), fromOrigin(10, 0), fromOrigin(10, 10), fromOrigin(0, 10)};
}

}  // namespace

TEST(ObstacleDetector, NoObstaclesBlockNothing) {
  EXPECT_FALSE(detector({}).isAnyBarrierInBetween(fromOrigin(0, 0), fromOrigin(9, 9)));
  EXPECT_TRUE(detector({}).detectBarriersBetween(fromOrigin(0, 0), fromOrigin(9, 9)).empty());
}

TEST(ObstacleDetector, ALineThroughAWallIsBlockedBothWays) {
  EXPECT_TRUE(wallBlocks(5, -3, 6, 3));
  EXPECT_TRUE(wallBlocks(6, 3, 5, -3));
}

TEST(ObstacleDetector, ALineThatEndsBeforeTheWallIsNotBlocked) {
  EXPECT_FALSE(wallBlocks(5, -3, 5, -0.01));
  EXPECT_FALSE(wallBlocks(5, 0.01, 5, 3));
}

TEST(ObstacleDetector, ALineThatPassesBesideTheWallIsNotBlocked) {
  EXPECT_FALSE(wallBlocks(10.01, -3, 10.01, 3));
  EXPECT_FALSE(wallBlocks(-0.01, -3, -0.01, 3));
}

TEST(ObstacleDetector, ASegmentThatMeetsAWallExactlyAtTheWallsEndIsBlocked) {
  EXPECT_TRUE(wallBlocks(0, -3, 0, 3));
  EXPECT_TRUE(wallBlocks(10, -3, 10, 3));
}

TEST(ObstacleDetector, ASegmentThatStartsOrEndsExactlyOnAWallIsBlocked) {
  EXPECT_TRUE(wallBlocks(4, 0, 4, 3));
  EXPECT_TRUE(wallBlocks(4, -3, 4, 0));
  EXPECT_TRUE(wallBlocks(0, 0, 4, 3));
}

TEST(ObstacleDetector, ASegmentAlongAWallIsNotBlocked) {
  EXPECT_FALSE(wallBlocks(2, 0, 8, 0));
  EXPECT_FALSE(wallBlocks(-5, 0, 15, 0));
  EXPECT_FALSE(wallBlocks(0, 0, 10, 0));
}

TEST(ObstacleDetector, AParallelSegmentIsNotBlocked) { EXPECT_FALSE(wallBlocks(2, 1, 8, 1)); }

TEST(ObstacleDetector, ASegmentOfZeroLengthIsNeverBlocked) {
  EXPECT_FALSE(wallBlocks(5, 0, 5, 0));
  EXPECT_FALSE(wallBlocks(5, 1, 5, 1));
}

TEST(ObstacleDetector, ASquareWithoutItsFirstCornerRepeatedHasAnOpenSide) {
  const auto open = detector({obstacle(squareCorners())});
  const auto inside = fromOrigin(5, 5);
  EXPECT_FALSE(open.isAnyBarrierInBetween(inside, fromOrigin(-5, 5)));
  EXPECT_TRUE(open.isAnyBarrierInBetween(inside, fromOrigin(15, 5)));
  EXPECT_TRUE(open.isAnyBarrierInBetween(inside, fromOrigin(5, -5)));
  EXPECT_TRUE(open.isAnyBarrierInBetween(inside, fromOrigin(5, 15)));
}

TEST(ObstacleDetector, ASquareWithItsFirstCornerRepeatedIsClosed) {
  Coordinates corners = squareCorners();
  corners.push_back(corners.front());
  EXPECT_TRUE(
      detector({obstacle(corners)}).isAnyBarrierInBetween(fromOrigin(5, 5), fromOrigin(-5, 5)));
}

TEST(ObstacleDetector, AnObstacleOfOneCoordinateBlocksNothing) {
  const auto pole = detector({obstacle({fromOrigin(5, 0)})});
  EXPECT_FALSE(pole.isAnyBarrierInBetween(fromOrigin(5, -3), fromOrigin(5, 3)));
  EXPECT_FALSE(pole.isAnyBarrierInBetween(fromOrigin(5, 0), fromOrigin(5, 3)));
}

TEST(ObstacleDetector, AnEdgeOfZeroLengthInAnObstacleIsPassedOver) {
  const auto bent = detector({obstacle({fromOrigin(0, 0), fromOrigin(0, 0), fromOrigin(10, 0)})});
  EXPECT_TRUE(bent.isAnyBarrierInBetween(fromOrigin(5, -3), fromOrigin(5, 3)));
}

TEST(ObstacleDetector, EveryEdgeOfAPolylineCounts) {
  const auto bent = detector({obstacle({fromOrigin(0, 0), fromOrigin(10, 0), fromOrigin(10, 20)})});
  EXPECT_TRUE(bent.isAnyBarrierInBetween(fromOrigin(5, -3), fromOrigin(5, 3)));
  EXPECT_TRUE(bent.isAnyBarrierInBetween(fromOrigin(5, 15), fromOrigin(15, 15)));
}

TEST(ObstacleDetector, ListsEveryCrossedObstacleInListOrder) {
  const auto near = obstacle({fromOrigin(0, 1), fromOrigin(10, 1)});
  const auto beside = obstacle({fromOrigin(20, 2), fromOrigin(30, 2)});
  const auto far = obstacle({fromOrigin(0, 3), fromOrigin(10, 3)});
  const auto found =
      detector({far, beside, near}).detectBarriersBetween(fromOrigin(5, 0), fromOrigin(5, 5));
  EXPECT_EQ(found, (Obstacles{far, near}));
}

TEST(ObstacleDetector, ListsAnObstacleOnceHoweverOftenItIsCrossed) {
  Coordinates corners = squareCorners();
  corners.push_back(corners.front());
  const auto found =
      detector({obstacle(corners)}).detectBarriersBetween(fromOrigin(5, -5), fromOrigin(5, 15));
  EXPECT_EQ(found.size(), 1U);
}

TEST(ObstacleDetector, ListsAnObstacleTwiceThatIsListedTwice) {
  const auto wall = obstacle({fromOrigin(0, 1), fromOrigin(10, 1)});
  const auto found =
      detector({wall, wall}).detectBarriersBetween(fromOrigin(5, 0), fromOrigin(5, 5));
  EXPECT_EQ(found, (Obstacles{wall, wall}));
}

TEST(ObstacleDetector, TestsOneObstacleThatNeedNotBeItsOwn) {
  const auto wall = obstacle({fromOrigin(0, 1), fromOrigin(10, 1)});
  EXPECT_TRUE(detector({}).barrierIsInBetween(*wall, fromOrigin(5, 0), fromOrigin(5, 5)));
  EXPECT_FALSE(detector({}).barrierIsInBetween(*wall, fromOrigin(15, 0), fromOrigin(15, 5)));
}

TEST(ObstacleDetector, TestsTheObstaclesThatWereSetLast) {
  auto moving = detector({obstacle({fromOrigin(0, 1), fromOrigin(10, 1)})});
  moving.setObstacles({});
  EXPECT_FALSE(moving.isAnyBarrierInBetween(fromOrigin(5, 0), fromOrigin(5, 5)));
  EXPECT_TRUE(moving.obstacles().empty());
}

TEST(ObstacleDetector, CoordinatesThatAreNoNumbersAreNeverBlocked) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const auto wall = detector({obstacle({fromOrigin(0, 0), fromOrigin(10, 0)})});
  EXPECT_FALSE(wall.isAnyBarrierInBetween({nan, nan}, fromOrigin(5, 3)));
  EXPECT_FALSE(wall.isAnyBarrierInBetween(fromOrigin(5, -3), {nan, 11}));
}

TEST(ObstacleDetector, DoesNotKeepItsBundleAlive) {
  EXPECT_EQ(detector({}).configDependents(), nullptr);
}

TEST(ObstacleDetector, SeesTheWallsOfADrawnBuilding) {
  const TextBuilding building(R"(
        #
      A # B
        #
      C   D
      )");
  const ObstacleDetector walls(building.region(0)->obstacles(), {});
  const auto blocked = [&](const char* from, const char* to) {
    return walls.isAnyBarrierInBetween(building.point(from)->coordinate(),
                                       building.point(to)->coordinate());
  };
  EXPECT_TRUE(blocked("A", "B"));
  EXPECT_FALSE(blocked("C", "D"));
  EXPECT_FALSE(blocked("A", "C"));
}

TEST(ObstacleDetector, LaterObstaclesAreNotLookedAtOnceOneIsCrossed) {
  const auto wall = obstacle({fromOrigin(0, 1), fromOrigin(10, 1)});
  EXPECT_TRUE(
      detector({wall, obstacle({})}).isAnyBarrierInBetween(fromOrigin(5, 0), fromOrigin(5, 5)));
}

TEST(ObstacleDetectorDeathTest, AnObstacleWithoutCoordinatesIsAFatalError) {
  const auto broken = detector({obstacle({})});
  EXPECT_DEATH(broken.isAnyBarrierInBetween(fromOrigin(0, 0), fromOrigin(1, 1)),
               "fatal error: an obstacle without coordinates");
  EXPECT_DEATH(broken.detectBarriersBetween(fromOrigin(0, 0), fromOrigin(1, 1)),
               "fatal error: an obstacle without coordinates");
}

TEST(ObstacleDetectorDeathTest, ANullObstacleIsAFatalError) {
  EXPECT_DEATH(detector({nullptr}).isAnyBarrierInBetween(fromOrigin(0, 0), fromOrigin(1, 1)),
               "fatal error: a null obstacle");
}
