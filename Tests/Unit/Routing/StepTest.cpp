#include "Navigation/Routing/Step.hpp"

#include <gtest/gtest.h>

#include "Support/Points.hpp"

using namespace KorvaniNavigation;
using KorvaniTest::at;

TEST(Step, KeepsWhatItWasMadeOf) {
  const auto start = at(48, 11);
  const auto end = at(48.001, 11);
  const Step step(start, end, 12.5, false, 1.75, "stairs");
  EXPECT_EQ(step.start(), start);
  EXPECT_EQ(step.end(), end);
  EXPECT_EQ(step.distance(), 12.5);
  EXPECT_FALSE(step.barrierFree());
  EXPECT_EQ(step.timeMultiplicator(), 1.75);
  EXPECT_EQ(step.neighborType(), "stairs");
}

TEST(Step, IsBarrierFreeAtNormalSpeedUnlessToldOtherwise) {
  const Step step(at(48, 11), at(48.001, 11), 3);
  EXPECT_TRUE(step.barrierFree());
  EXPECT_EQ(step.timeMultiplicator(), 1.0);
}

TEST(Step, WithoutNeighborTypeHasTheEmptyText) {
  EXPECT_EQ(Step(at(48, 11), at(48.001, 11), 3).neighborType(), std::string());
}

TEST(Step, BetweenLevelsIsALevelChangeWhateverItsGeometry) {
  EXPECT_TRUE(Step(at(48, 11, 0), at(48, 11, 1), 3).levelChange());
  EXPECT_TRUE(Step(at(48, 11, 2), at(48.01, 11.01, -1), 3).levelChange());
}

TEST(Step, OnOneLevelIsNoLevelChange) {
  EXPECT_FALSE(Step(at(48, 11, 4), at(48.001, 11, 4), 3).levelChange());
}

TEST(Step, BetweenPointsAtTheSameCoordinateHeadsNorth) {
  EXPECT_EQ(Step(at(48.1, 11.5), at(48.1, 11.5), 3).heading(), 0);
}

TEST(Step, HeadingIsTheBearingFromStartToEnd) {
  EXPECT_EQ(Step(at(0, 0), at(0, 1), 3).heading(), 90);
  EXPECT_EQ(Step(at(0, 1), at(0, 0), 3).heading(), 270);
  EXPECT_EQ(Step(at(1, 0), at(0, 0), 3).heading(), 180);
}

TEST(Step, HeadingIsMeasuredBetweenTheLocationsOfThePoints) {
  const auto end = at(1, 0);
  end->setLocation(CLLocation({0, 1}));
  EXPECT_EQ(Step(at(0, 0), end, 3).heading(), 90);
}

TEST(Step, WithHeadingKeepsTheGivenHeadingAndAllElse) {
  const auto start = at(0, 0, 1);
  const auto end = at(0, 1, 2);
  const Step step = Step::withHeading(start, end, 6, 15.01, false, 2.0, "lift");
  EXPECT_EQ(step.heading(), 15.01);
  EXPECT_EQ(step.start(), start);
  EXPECT_EQ(step.end(), end);
  EXPECT_EQ(step.distance(), 6);
  EXPECT_FALSE(step.barrierFree());
  EXPECT_EQ(step.timeMultiplicator(), 2.0);
  EXPECT_EQ(step.neighborType(), "lift");
  EXPECT_TRUE(step.levelChange());
}

TEST(Step, KeepsItsPointsAlive) {
  std::weak_ptr<KRVNavPoint> watched;
  auto start = at(0, 0);
  watched = start;
  const Step step(start, at(0, 1), 1);
  start.reset();
  EXPECT_FALSE(watched.expired());
}

TEST(Step, DoesNotFollowPointsThatMoveLater) {
  const auto end = at(0, 1, 0);
  const Step step(at(0, 0), end, 1);
  end->setLevel(5);
  EXPECT_FALSE(step.levelChange());
}

TEST(StepDeathTest, WithoutAPointIsAFatalError) {
  EXPECT_DEATH(Step(nullptr, at(0, 1), 1), "fatal error: a step needs two points");
  EXPECT_DEATH(Step(at(0, 1), nullptr, 1), "fatal error: a step needs two points");
}
