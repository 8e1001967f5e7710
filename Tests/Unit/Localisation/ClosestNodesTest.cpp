#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "MapperFixture.hpp"
#include "Support/Points.hpp"

// Which nodes a position can be mapped to.

namespace KorvaniTest {
namespace {

/// About 0.42 m of latitude, and a power of two: its multiples are exact at 48 degrees.
const double kStep = std::ldexp(1.0, -18);

CLLocationCoordinate2D stepsNorth(double steps) { return {48.0 + steps * kStep, 11.0}; }

class ClosestNodes : public MapperFixture {};

TEST_F(ClosestNodes, AreNoneWhileNoWallsAreHeld) {
  building.node(1, 0);
  EXPECT_TRUE(mapper.findClosestNodes(*building.region(0), *at(kOrigin)).empty());
  EXPECT_TRUE(mapper.findClosestNodes(*building.region(0), *at(kOrigin), 4).empty());
}

TEST_F(ClosestNodes, AreNoneInARegionWithoutNodes) {
  EXPECT_TRUE(closest(at(kOrigin)).empty());
  EXPECT_TRUE(closest(at(kOrigin), 4).empty());
}

TEST_F(ClosestNodes, AreThoseWithinTwoAndAHalfTimesTheNearestInWhateverOrderTheyCame) {
  std::vector<double> steps{1, 2, 2.5, 2.6};
  do {
    PlacedBuilding shuffled;
    for (const double each : steps) shuffled.node(stepsNorth(each));
    mapper.useWallsOf(shuffled.region(0));
    const auto found = mapper.findClosestNodes(*shuffled.region(0), *at(kOrigin));
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0].node->coordinate(), stepsNorth(1));
    EXPECT_EQ(found[1].node->coordinate(), stepsNorth(2));
    EXPECT_EQ(found[2].node->coordinate(), stepsNorth(2.5));
  } while (std::next_permutation(steps.begin(), steps.end()));
}

TEST_F(ClosestNodes, ReachExactlyToTwoAndAHalfTimesTheNearest) {
  building.node(stepsNorth(1));
  const auto limit = building.node(stepsNorth(2.5));
  building.node({std::nextafter(stepsNorth(2.5).latitude, 90), 11.0});
  const auto found = closest(at(kOrigin));
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[1].node, limit);
}

TEST_F(ClosestNodes, ReachAccordingToTheNearestVisibleNode) {
  building.node(1, 0);
  building.wall(0.5, -1, 0.5, 1);
  const auto visible = building.node(-4, 0);
  const auto other = building.node(-9, 0);
  building.node(-11, 0);
  EXPECT_EQ(nodesOf(closest(at(kOrigin))), (std::vector<PointPtr>{visible, other}));
}

TEST_F(ClosestNodes, LeaveOutNodesBehindWalls) {
  const auto visible = building.node(5, 0);
  building.node(0, 5);
  building.wall(-1, 3, 1, 3);
  EXPECT_EQ(nodesOf(closest(at(kOrigin))), std::vector<PointPtr>{visible});
}

TEST_F(ClosestNodes, AreNoneWhenAllNodesAreBehindWalls) {
  building.node(5, 0);
  building.node(6, 1);
  building.wall(2, -5, 2, 5);
  EXPECT_TRUE(closest(at(kOrigin)).empty());
}

TEST_F(ClosestNodes, ComeNearestFirstInMetresWhateverTheirDegrees) {
  // A degree of longitude is shorter than one of latitude: east is farther in degrees.
  const auto north = building.node({48.0 + 1.0e-5, 11.0});
  const auto east = building.node({48.0, 11.0 + 1.2e-5});
  EXPECT_EQ(nodesOf(closest(at(kOrigin))), (std::vector<PointPtr>{east, north}));
}

TEST_F(ClosestNodes, ComeInTheOrderOfTheirInsertionWhenTheyAreEquallyNear) {
  std::vector<PointPtr> inserted;
  for (int i = 0; i < 40; ++i) inserted.push_back(building.node(3, 0));
  const auto nearest = building.node(2, 0);
  inserted.insert(inserted.begin(), nearest);
  EXPECT_EQ(nodesOf(closest(at(kOrigin))), inserted);
}

TEST_F(ClosestNodes, CarryTheirDistancesInMetres) {
  const auto node = building.node(3, 4);
  const auto found = closest(at(kOrigin));
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].distance, metresBetween(node->coordinate(), kOrigin));
  EXPECT_NEAR(found[0].distance, 5, 1e-5);
}

TEST_F(ClosestNodes, AreOnlyThoseAtThePositionItselfWhenThereIsOne) {
  const auto here = building.node(kOrigin);
  building.node(0.01, 0);
  const auto alsoHere = building.node(kOrigin);
  EXPECT_EQ(nodesOf(closest(at(kOrigin))), (std::vector<PointPtr>{here, alsoHere}));
}

TEST_F(ClosestNodes, StandNodesWhoseCoordinatesAreNotNumbers) {
  building.node({kNotANumber, 11.0});
  const auto good = building.node(2, 0);
  building.node({48.0, kNotANumber});
  const auto near = building.node(1, 0);
  const auto found = nodesOf(closest(at(kOrigin)));
  ASSERT_GE(found.size(), 2U);
  EXPECT_EQ(found[0], near);
  EXPECT_EQ(found[1], good);
}

TEST_F(ClosestNodes, StandPositionsThatAreNotNumbers) {
  building.node(1, 0);
  building.node(2, 0);
  building.wall(1.5, -1, 1.5, 1);
  for (const double hostile :
       {kNotANumber, std::numeric_limits<double>::infinity(), 1e308, -1e308}) {
    EXPECT_LE(closest(at(hostile, hostile)).size(), 2U);
    EXPECT_LE(closest(at(48.0, hostile), 1).size(), 1U);
  }
}

// The same list, cut down.

TEST_F(ClosestNodes, CutDownAreOneWhenTheNearestIsTwelveMetresAway) {
  const auto nearest = building.node(12, 0);
  building.node(-12.1, 0);
  building.node(0, 12.2);
  EXPECT_EQ(closest(at(kOrigin), 3), std::vector<PointPtr>{nearest});
}

TEST_F(ClosestNodes, CutDownAreThoseWithinOneAndAFifthTimesTheNearest) {
  building.node(0, 7);
  building.node(0, -6.1);
  const auto second = building.node(-5.5, 0);
  const auto nearest = building.node(5, 0);
  EXPECT_EQ(closest(at(kOrigin), 3), (std::vector<PointPtr>{nearest, second}));
}

TEST_F(ClosestNodes, CutDownAreAtMostThatMany) {
  const auto second = building.node(0, 5.1);
  const auto third = building.node(0, -5.2);
  building.node(-5.3, 0);
  const auto nearest = building.node(5, 0);
  EXPECT_EQ(closest(at(kOrigin), 3), (std::vector<PointPtr>{nearest, second, third}));
  EXPECT_EQ(closest(at(kOrigin), 1), std::vector<PointPtr>{nearest});
  EXPECT_EQ(closest(at(kOrigin), 9).size(), 4U);
}

TEST_F(ClosestNodes, CutDownKeepTheNearestWhateverTheMaximum) {
  const auto nearest = building.node(5, 0);
  building.node(5.1, 0);
  EXPECT_EQ(closest(at(kOrigin), 0), std::vector<PointPtr>{nearest});
}

TEST_F(ClosestNodes, CutDownAreTheOnlyNodeHoweverFarItIs) {
  const auto only = building.node(500, 0);
  EXPECT_EQ(closest(at(kOrigin), 4), std::vector<PointPtr>{only});
}

TEST_F(ClosestNodes, CutDownKeepANodeAtExactlyOneAndAFifthTimesTheNearest) {
  const auto nearest = building.node(exactlyNorthOfNull(5));
  const auto kept = building.node(exactlyNorthOfNull(5 * 1.2));
  building.node(exactlyNorthOfNull(std::nextafter(5 * 1.2, 7)));
  EXPECT_EQ(closest(at(0, 0), 4), (std::vector<PointPtr>{nearest, kept}));
}

TEST_F(ClosestNodes, CutDownKeepOthersWhenTheNearestIsExactlyTenMetresAway) {
  const auto nearest = building.node(exactlyNorthOfNull(10));
  const auto other = building.node(exactlyNorthOfNull(11));
  EXPECT_EQ(closest(at(0, 0), 4), (std::vector<PointPtr>{nearest, other}));
}

TEST_F(ClosestNodes, CutDownAreOneWhenTheNearestIsAHairFartherThanTenMetres) {
  const auto nearest = building.node(exactlyNorthOfNull(std::nextafter(10, 11)));
  building.node(exactlyNorthOfNull(11));
  EXPECT_EQ(closest(at(0, 0), 4), std::vector<PointPtr>{nearest});
}

}  // namespace
}  // namespace KorvaniTest
