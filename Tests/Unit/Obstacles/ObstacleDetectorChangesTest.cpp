// Detectors that have been asked so often that they have prepared something, before and after a
// change of their walls.

#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Navigation/Obstacles/WallGrid.hpp"
#include "Navigation/Obstacles/Walls.hpp"
#include "Support/Points.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::CLLocationCoordinate2D;
using KorvaniNavigation::KRVNavObstacle;
using KorvaniNavigation::KRVNavRegion;
using KorvaniNavigation::ObstacleDetector;
using KorvaniNavigation::Walls;

/// A region with one wall, from (0, 5) northwards over 10 m; the way asked about crosses it.
class ObstacleDetectorChangesTest : public testing::Test {
 protected:
  ObstacleDetectorChangesTest() { region->addObstacle(wall); }

  static std::shared_ptr<KRVNavObstacle> wallAt(double east) {
    return std::make_shared<KRVNavObstacle>(
        std::vector<CLLocationCoordinate2D>{fromOrigin(-5, east), fromOrigin(5, east)});
  }

  ObstacleDetector detector() const {
    ObstacleDetector made(std::as_const(*region).obstacles(), {});
    askOften(made);
    return made;
  }

  static void askOften(const ObstacleDetector& detector) {
    for (int i = 0; i < 20; ++i) isBlocked(detector);
  }

  static bool isBlocked(const ObstacleDetector& detector) {
    return detector.isAnyBarrierInBetween(fromOrigin(0, 0), fromOrigin(0, 9));
  }

  static std::size_t crossedBy(const ObstacleDetector& detector) {
    return detector.detectBarriersBetween(fromOrigin(0, 0), fromOrigin(0, 9)).size();
  }

  std::shared_ptr<KRVNavRegion> region = std::make_shared<KRVNavRegion>(0);
  std::shared_ptr<KRVNavObstacle> wall = wallAt(5);
};

TEST_F(ObstacleDetectorChangesTest, AWallThatMovesAwayBlocksNoLonger) {
  const ObstacleDetector asked = detector();
  ASSERT_TRUE(isBlocked(asked));
  wall->setCoordinates({fromOrigin(-5, 50), fromOrigin(5, 50)});
  EXPECT_FALSE(isBlocked(asked));
  EXPECT_FALSE(isBlocked(detector()));
  askOften(asked);
  wall->setCoordinates({fromOrigin(-5, 5), fromOrigin(5, 5)});
  EXPECT_TRUE(isBlocked(asked));
  EXPECT_EQ(crossedBy(asked), 1U);
}

TEST_F(ObstacleDetectorChangesTest, AWallThatIsAddedToTheRegionBlocksWhoTakesTheListAnew) {
  const ObstacleDetector before = detector();
  region->addObstacle(wallAt(3));
  EXPECT_EQ(crossedBy(before), 1U);
  EXPECT_EQ(crossedBy(detector()), 2U);
  region->obstacles().erase(region->obstacles().begin());
  EXPECT_EQ(crossedBy(detector()), 1U);
  region->obstacles().set(0, wallAt(50));
  EXPECT_FALSE(isBlocked(detector()));
  region->setObstacles({wallAt(1), wallAt(2), wallAt(3)});
  EXPECT_EQ(crossedBy(detector()), 3U);
  region->obstacles().clear();
  EXPECT_FALSE(isBlocked(detector()));
}

TEST_F(ObstacleDetectorChangesTest, AnotherListTakesThePlaceOfTheOneThatWasAsked) {
  ObstacleDetector asked = detector();
  asked.setObstacles({});
  EXPECT_FALSE(isBlocked(asked));
  asked.setObstacles({wallAt(1), wallAt(2)});
  askOften(asked);
  EXPECT_EQ(crossedBy(asked), 2U);
}

TEST_F(ObstacleDetectorChangesTest, DetectorsOverOneListShareWhatIsPrepared) {
  const ObstacleDetector one = detector();
  const ObstacleDetector other = detector();
  EXPECT_TRUE(one.obstacles().sharesWith(other.obstacles()));
  EXPECT_EQ(Walls::of(one.obstacles()), Walls::of(other.obstacles()));
  const auto walls = Walls::of(one.obstacles());
  EXPECT_NE(walls->grid(one.obstacles()), nullptr);
  EXPECT_EQ(walls->grid(one.obstacles()), walls->gridNow(other.obstacles()));
}

TEST_F(ObstacleDetectorChangesTest, TheFirstQuestionsAreAnsweredWithoutPreparation) {
  const KRVNavRegion::Obstacles list{wallAt(5), wallAt(6)};
  const auto walls = Walls::of(list);
  EXPECT_EQ(walls->grid(list), nullptr);
  const ObstacleDetector asked(list, {});
  EXPECT_TRUE(isBlocked(asked));
  askOften(asked);
  EXPECT_NE(walls->grid(list), nullptr);
}

using ObstacleDetectorChangesDeathTest = ObstacleDetectorChangesTest;

TEST_F(ObstacleDetectorChangesDeathTest, WhatCannotBeTestedStopsEveryQuestionThatComesToIt) {
  const ObstacleDetector asked(
      {wall, std::make_shared<KRVNavObstacle>(std::vector<CLLocationCoordinate2D>())}, {});
  askOften(asked);  // the wall in front of it answers
  EXPECT_DEATH(asked.isAnyBarrierInBetween(fromOrigin(0, 0), fromOrigin(0, 1)),
               "an obstacle without coordinates");
  EXPECT_DEATH(crossedBy(asked), "an obstacle without coordinates");
}

TEST_F(ObstacleDetectorChangesDeathTest, ANullObstacleStopsEveryQuestionThatComesToIt) {
  const ObstacleDetector asked({wall, nullptr}, {});
  askOften(asked);
  EXPECT_DEATH(asked.isAnyBarrierInBetween(fromOrigin(0, 0), fromOrigin(0, 1)), "a null obstacle");
}

}  // namespace
}  // namespace KorvaniTest
