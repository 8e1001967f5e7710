// Positions that are mapped before and after a change of the building: nothing that was prepared
// may outlive the change. Every test maps first, so that there is something prepared.

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <utility>

#include "MapperFixture.hpp"
#include "Navigation/Localisation/RegionNodes.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::KRVNavObstacle;
using KorvaniNavigation::KRVNavRegion;
using KorvaniNavigation::RegionNodes;

/// Two nodes 1 m and 2 m north of the position; a wall far away.
class PositionMapperChangesTest : public MapperFixture {
 protected:
  PositionMapperChangesTest() {
    open();
    EXPECT_EQ(seen(), (std::vector<PointPtr>{near, far}));
  }

  std::vector<PointPtr> seen() { return nodesOf(closest(building.position(0, 0))); }

  PointPtr near = building.node(1, 0);
  PointPtr far = building.node(2, 0);
  std::shared_ptr<KRVNavObstacle> wall = building.wall(50, -5, 50, 5);
};

TEST_F(PositionMapperChangesTest, ANodeMoves) {
  near->setCoordinate(building.place(2.2, 0));
  EXPECT_EQ(seen(), (std::vector<PointPtr>{far, near}));
}

TEST_F(PositionMapperChangesTest, ANodeIsAdded) {
  const auto added = building.node(1.5, 0);
  EXPECT_EQ(seen(), (std::vector<PointPtr>{near, added, far}));
}

TEST_F(PositionMapperChangesTest, ANodeIsReplaced) {
  const auto other = at(building.place(0.9, 0), 0, near->identifier());
  building.region(0)->addNode(other);
  EXPECT_EQ(seen(), (std::vector<PointPtr>{other, far}));
}

TEST_F(PositionMapperChangesTest, ANodeIsRemoved) {
  building.region(0)->nodes().remove(near->identifierNumber());
  EXPECT_EQ(seen(), std::vector<PointPtr>{far});
}

TEST_F(PositionMapperChangesTest, AllNodesAreReplaced) {
  KRVNavRegion::Nodes nodes;
  nodes.set(2, far);
  building.region(0)->setNodes(std::move(nodes));
  EXPECT_EQ(seen(), std::vector<PointPtr>{far});
}

TEST_F(PositionMapperChangesTest, AWallMovesInBetween) {
  wall->setCoordinates({building.place(1.5, -5), building.place(1.5, 5)});
  EXPECT_EQ(seen(), std::vector<PointPtr>{near});
}

TEST_F(PositionMapperChangesTest, AWallIsAdded) {
  building.wall(0.5, -5, 0.5, 5);
  EXPECT_TRUE(seen().empty());
}

TEST_F(PositionMapperChangesTest, WallsAreReplacedAndRemoved) {
  const auto between = std::make_shared<KRVNavObstacle>(
      std::vector{building.place(1.5, -5), building.place(1.5, 5)});
  building.region(0)->setObstacles({between});
  EXPECT_EQ(seen(), std::vector<PointPtr>{near});
  building.region(0)->obstacles().clear();
  EXPECT_EQ(seen(), (std::vector<PointPtr>{near, far}));
}

TEST_F(PositionMapperChangesTest, WhatIsPreparedIsKeptWhileNothingChanges) {
  const auto prepared = RegionNodes::of(*building.region(0));
  building.wall(70, -5, 70, 5);
  EXPECT_EQ(RegionNodes::of(*building.region(0)), prepared);
  near->setCoordinate(building.place(1, 0));
  EXPECT_NE(RegionNodes::of(*building.region(0)), prepared);
}

TEST_F(PositionMapperChangesTest, NodesAreTriedOneByOneWhereAWallCannotBeTested) {
  building.wall(1.5, -5, 1.5, 5);
  // Of no coordinates, but never come to: the walls before it hide all that it would be asked for.
  building.wall(0.5, -5, 0.5, 5);
  building.region(0)->addObstacle(
      std::make_shared<KRVNavObstacle>(std::vector<CLLocationCoordinate2D>()));
  EXPECT_TRUE(seen().empty());
}

using PositionMapperChangesDeathTest = PositionMapperChangesTest;

TEST_F(PositionMapperChangesDeathTest, AWallThatCannotBeTestedStopsWhoComesToIt) {
  building.region(0)->addObstacle(nullptr);
  EXPECT_DEATH(seen(), "a null obstacle");
}

}  // namespace
}  // namespace KorvaniTest
