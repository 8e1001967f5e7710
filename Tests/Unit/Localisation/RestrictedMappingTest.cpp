#include <gtest/gtest.h>

#include <cmath>

#include "MapperFixture.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Support/Points.hpp"

// Mapping a position onto one node and its edges, and onto one segment.

namespace KorvaniTest {
namespace {

using KorvaniNavigation::ObstacleDetector;

class MappingOntoANode : public MapperFixture {
 protected:
  /// Maps onto the node, holding the walls of level 0 as they are now.
  std::shared_ptr<Intersection> map(const PointPtr& position, const PointPtr& node) {
    open();
    mapper.useWallsOf(building.region(0));
    return mapper.intersect(*position, node);
  }
};

using MappingOntoANodeDeathTest = MappingOntoANode;

TEST_F(MappingOntoANode, FindsNothingWithoutARegion) {
  mapper.setObstacleDetector(std::make_shared<ObstacleDetector>(
      std::vector<std::shared_ptr<KorvaniNavigation::KRVNavObstacle>>{}, bundle()));
  EXPECT_EQ(mapper.intersect(*building.position(1, 1), building.node(0, 0)), nullptr);
}

TEST_F(MappingOntoANodeDeathTest, NeedsWallsToTestTheNodeAgainst) {
  const auto node = building.node(0, 0);
  open();
  EXPECT_DEATH(mapper.intersect(*building.position(1, 1), node), "fatal error: .*walls");
}

TEST_F(MappingOntoANode, FindsTheNodeWhereNoEdgeIsNearer) {
  const auto node = building.node(0, 0);
  building.join(node, building.node(0, 10));
  const auto position = building.position(2, -1);
  const auto place = map(position, node);
  ASSERT_TRUE(isNode(place, node));
  EXPECT_EQ(place->distance(), metresBetween(node->coordinate(), position->coordinate()));
  EXPECT_EQ(place->delta(), degreesBetween(node->coordinate(), position->coordinate()));
}

TEST_F(MappingOntoANode, FindsTheFootOnOneOfItsEdgesWhereThatIsNearer) {
  const auto node = building.node(0, 0, 3);
  const auto east = building.node(0, 10, 3);
  building.join(node, building.node(10, 0, 3));
  building.join(node, east);
  const auto position = building.position(1, 4, 3);
  const auto place = map(position, node);
  ASSERT_TRUE(isOnEdge(place, node, east));
  EXPECT_EQ(place->node()->level(), 3);
  EXPECT_EQ(place->node()->identifier(), -1);
  EXPECT_EQ(place->distance(), metresBetween(place->node()->coordinate(), position->coordinate()));
  EXPECT_EQ(place->delta(), degreesBetween(place->node()->coordinate(), position->coordinate()));
  EXPECT_NEAR(place->distance(), 1, kFootPrecision);
}

TEST_F(MappingOntoANode, KeepsTheFirstOfTwoEdgesAtTheSameDistance) {
  const auto node = building.node(0, 0);
  const auto first = building.node(1, 10);
  const auto second = building.node(1, 10);
  building.join(node, second);
  building.join(node, first);
  EXPECT_TRUE(isOnEdge(map(building.position(2, 3), node), node, second));
}

TEST_F(MappingOntoANode, NeverUsesOtherNodesOrTheirEdges) {
  const auto node = building.node(0, 0);
  const auto near = building.node(4, 4);
  building.join(near, building.node(4, -4));
  EXPECT_TRUE(isNode(map(building.position(4, 1), node), node));
}

TEST_F(MappingOntoANode, ReachesAsFarAsItMust) {
  const auto node = building.node(0, 0);
  building.node(299, 299);
  EXPECT_TRUE(isNode(map(building.position(300, 300), node), node));
}

TEST_F(MappingOntoANode, MakesNoDetourTest) {
  const auto node = building.node(0, 0);
  const auto east = building.node(0, 10);
  building.join(node, east, 0.1);
  EXPECT_TRUE(isOnEdge(map(building.position(3, 4), node), node, east));
}

TEST_F(MappingOntoANode, HoldsTheWallsOfThePositionsRegionOnceAFootIsFoundThoughNoneIsNearer) {
  const auto node = building.node(0, 0);
  building.join(node, building.node(0, 10));
  building.wall(-5, -5, -5, 5);
  open();
  mapper.setObstacleDetector(std::make_shared<ObstacleDetector>(
      std::vector<std::shared_ptr<KorvaniNavigation::KRVNavObstacle>>{}, bundle()));
  const auto place = mapper.intersect(*building.position(0, 0), node);
  ASSERT_TRUE(isNode(place, node));
  EXPECT_EQ(mapper.obstacleDetector()->obstacles().size(), 1U);
}

TEST_F(MappingOntoANode, LeavesOutEdgesToOtherLevels) {
  const auto node = building.node(0, 0, 0);
  building.join(node, building.node(0, 10, 1));
  EXPECT_TRUE(isNode(map(building.position(1, 4), node), node));
}

TEST_F(MappingOntoANode, FindsAFootInSightOfANodeBehindAWall) {
  const auto node = building.node(0, 0);
  const auto east = building.node(0, 10);
  building.join(node, east);
  building.wall(1, -1, 1, 4);
  EXPECT_TRUE(isOnEdge(map(building.position(8, 5), node), node, east));
}

TEST_F(MappingOntoANode, FindsNothingWhenNodeAndFeetAreBehindWalls) {
  const auto node = building.node(0, 0);
  building.join(node, building.node(0, 10));
  building.wall(1, -20, 1, 20);
  EXPECT_EQ(map(building.position(2, 4), node), nullptr);
}

TEST_F(MappingOntoANode, LeavesOutFeetBehindAWallOfThePositionsRegion) {
  const auto node = building.node(0, 0);
  building.join(node, building.node(0, 10));
  building.wall(1, 4.5, 1, 5.5);
  EXPECT_TRUE(isNode(map(building.position(2, 5), node), node));
}

TEST_F(MappingOntoANode, TestsTheNodeAgainstTheWallsThatAreHeld) {
  const auto node = building.node(0, 0, 0);
  building.wall(1, -20, 1, 20, 1);
  const auto position = building.position(2, 0);
  EXPECT_TRUE(isNode(map(position, node), node));
  mapper.useWallsOf(building.region(1));
  EXPECT_EQ(mapper.intersect(*position, node), nullptr);
}

TEST_F(MappingOntoANode, TestsFeetAgainstTheWallsOfThePositionsRegionAndHoldsThemAfterwards) {
  const auto node = building.node(0, 0, 0);
  const auto east = building.node(0, 10, 0);
  building.join(node, east);
  const auto ground = building.wall(50, 50, 60, 60, 0);
  building.wall(1, -20, 1, 20, 1);
  open();
  mapper.useWallsOf(building.region(1));
  EXPECT_TRUE(isOnEdge(mapper.intersect(*building.position(2, 4), node), node, east));
  EXPECT_EQ(mapper.obstacleDetector()->obstacles(), (std::vector{ground}));
}

TEST_F(MappingOntoANode, KeepsTheWallsThatAreHeldWhenNoFootIsTested) {
  const auto node = building.node(0, 0, 0);
  const auto upper = building.wall(50, 50, 60, 60, 1);
  open();
  mapper.useWallsOf(building.region(1));
  EXPECT_TRUE(isNode(mapper.intersect(*building.position(2, 4), node), node));
  EXPECT_EQ(mapper.obstacleDetector()->obstacles(), (std::vector{upper}));
}

TEST_F(MappingOntoANode, StandsPositionsThatAreNotNumbers) {
  const auto node = building.node(0, 0);
  building.join(node, building.node(0, 10));
  EXPECT_EQ(map(at(kNotANumber, kNotANumber), node), nullptr);
  const auto place = map(at(1e308, -1e308), node);
  EXPECT_TRUE(!place || place->node());
}

// Onto one segment.

class MappingOntoASegment : public MapperFixture {
 protected:
  std::shared_ptr<EdgeIntersection> map(double north, double east, bool ignoreWalls = true) {
    return mapper.findIntersectionOnSegmentBetween(start, end, building.place(north, east),
                                                   ignoreWalls);
  }

  PointPtr start = at(building.place(0, 0), 2);
  PointPtr end = at(building.place(10, 10), 7);
};

using MappingOntoASegmentDeathTest = MappingOntoASegment;

TEST_F(MappingOntoASegment, FindsTheFootOnTheStartsLevel) {
  const auto place = map(2, 6);
  ASSERT_TRUE(isOnEdge(place, start, end));
  EXPECT_EQ(place->node()->level(), 2);
  EXPECT_EQ(place->node()->identifier(), -1);
  EXPECT_NEAR(metresBetween(place->node()->coordinate(), building.place(4, 4)), 0, kFootPrecision);
  EXPECT_NEAR(place->distance(), std::sqrt(8.0), kFootPrecision);
  EXPECT_EQ(place->delta(), 0);
}

TEST_F(MappingOntoASegment, MeasuresTheDistanceOnTheMapPlane) {
  const auto position = building.place(2, 6);
  const auto place = map(2, 6);
  ASSERT_NE(place, nullptr);
  EXPECT_NEAR(place->distance(), metresBetween(place->node()->coordinate(), position), 1e-6);
}

TEST_F(MappingOntoASegment, FindsNoFootOutsideTheBoxOfTheEnds) {
  EXPECT_NE(map(9.99, 9.99), nullptr);
  EXPECT_EQ(map(10.01, 10.01), nullptr);
  EXPECT_NE(map(0.01, 0.01), nullptr);
  EXPECT_EQ(map(-0.01, -0.01), nullptr);
}

TEST_F(MappingOntoASegment, AllowsNothingBeyondTheEndsUnlikeTheTestOfAnEdge) {
  const auto beyond = building.place(10.002, 10.002);
  EXPECT_TRUE(mapper.findIntersectionPointOnEdge(building.region(0), *start, *end, *at(beyond)));
  EXPECT_EQ(map(10.002, 10.002), nullptr);
}

TEST_F(MappingOntoASegment, CountsTheBordersOfTheBox) {
  // Around the middle of the map the plane's numbers are exact, also when the box has no height.
  start = at(0, 0, 0);
  end = at(0, 0.703125, 0);
  const auto onto = [&](CLLocationCoordinate2D position) {
    return mapper.findIntersectionOnSegmentBetween(start, end, position, true);
  };
  ASSERT_NE(onto({0, 0.3515625}), nullptr);
  ASSERT_NE(onto(start->coordinate()), nullptr);
  ASSERT_NE(onto(end->coordinate()), nullptr);
  EXPECT_EQ(onto(end->coordinate())->distance(), 0);
  EXPECT_EQ(onto({0, 0.7032}), nullptr);
  EXPECT_EQ(onto({0, -0.0001}), nullptr);
}

TEST_F(MappingOntoASegment, FindsNoFootBehindAWallUnlessWallsAreIgnored) {
  building.wall(2, 4, 4, 6);
  mapper.useWallsOf(building.region(0));
  EXPECT_NE(map(2, 6, true), nullptr);
  EXPECT_EQ(map(2, 6, false), nullptr);
  EXPECT_NE(map(8, 6, false), nullptr);
}

TEST_F(MappingOntoASegmentDeathTest, NeedsWallsUnlessTheyAreIgnoredOrTheFootLiesOutside) {
  EXPECT_NE(map(2, 6, true), nullptr);
  EXPECT_EQ(map(20, 20, false), nullptr);
  EXPECT_DEATH(map(2, 6, false), "fatal error: .*walls");
}

TEST_F(MappingOntoASegment, FindsNoFootOnASegmentWithoutLength) {
  end = at(start->coordinate(), 2);
  EXPECT_EQ(map(2, 6), nullptr);
  EXPECT_EQ(map(0, 0), nullptr);
}

TEST_F(MappingOntoASegment, StandsCoordinatesThatAreNotNumbers) {
  const auto onto = [&](CLLocationCoordinate2D position) {
    return mapper.findIntersectionOnSegmentBetween(start, end, position, true);
  };
  EXPECT_EQ(onto({kNotANumber, kNotANumber}), nullptr);
  EXPECT_EQ(onto({48, kNotANumber}), nullptr);
  EXPECT_EQ(onto({1e308, 1e308}), nullptr);
  end = at(kNotANumber, 11.0);
  EXPECT_EQ(map(2, 6), nullptr);
}

}  // namespace
}  // namespace KorvaniTest
