#include "Navigation/Graph/KRVNavObstacle.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

namespace KorvaniNavigation {
namespace {

const std::vector<CLLocationCoordinate2D> kCorners{{48, 11}, {48, 12}, {49, 12}};

TEST(KRVNavObstacle, WithoutStrengthHasNone) {
  const KRVNavObstacle obstacle(kCorners);
  EXPECT_EQ(obstacle.coordinates(), kCorners);
  EXPECT_EQ(obstacle.strength(), 0);
  EXPECT_FALSE(obstacle.hasStrength());
}

TEST(KRVNavObstacle, OnlyAPositiveStrengthCounts) {
  EXPECT_FALSE(KRVNavObstacle(kCorners, 0).hasStrength());
  EXPECT_FALSE(KRVNavObstacle(kCorners, -3).hasStrength());
  EXPECT_TRUE(KRVNavObstacle(kCorners, 1).hasStrength());
}

TEST(KRVNavObstacle, KeepsANegativeStrengthAsGiven) {
  EXPECT_EQ(KRVNavObstacle(kCorners, -3).strength(), -3);
}

TEST(KRVNavObstacle, CoordinateAtGivesTheCornersInOrder) {
  const KRVNavObstacle obstacle(kCorners);
  EXPECT_EQ(obstacle.coordinateAt(0), kCorners[0]);
  EXPECT_EQ(obstacle.coordinateAt(2), kCorners[2]);
}

TEST(KRVNavObstacle, CoordinateAtThrowsOutsideTheCorners) {
  const KRVNavObstacle obstacle(kCorners);
  EXPECT_THROW(obstacle.coordinateAt(3), std::out_of_range);
  EXPECT_THROW(obstacle.coordinateAt(-1), std::out_of_range);
  EXPECT_THROW(obstacle.coordinateAt(std::numeric_limits<std::int64_t>::min()), std::out_of_range);
  EXPECT_THROW(KRVNavObstacle({}).coordinateAt(0), std::out_of_range);
}

TEST(KRVNavObstacle, WithTheSameCornersIsNotEqual) {
  const KRVNavObstacle a(kCorners, 1);
  const KRVNavObstacle b(kCorners, 1);
  EXPECT_FALSE(a.isEqual(b));
  EXPECT_FALSE(a == b);
  EXPECT_TRUE(a.isEqual(a));
  EXPECT_TRUE(a == a);
  EXPECT_NE(a.hash(), b.hash());
}

TEST(KRVNavObstacle, PropertiesAreSetOneByOne) {
  KRVNavObstacle obstacle(kCorners);
  obstacle.setCoordinates({{1, 2}});
  obstacle.setStrength(4);
  EXPECT_EQ(obstacle.coordinateAt(0), (CLLocationCoordinate2D{1, 2}));
  EXPECT_EQ(obstacle.strength(), 4);
  EXPECT_FALSE(obstacle.hasStrength());
  obstacle.setHasStrength(true);
  EXPECT_TRUE(obstacle.hasStrength());
}

}  // namespace
}  // namespace KorvaniNavigation
