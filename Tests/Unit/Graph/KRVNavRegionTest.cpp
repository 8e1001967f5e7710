#include "Navigation/Graph/KRVNavRegion.hpp"

#include <gtest/gtest.h>

#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Support/Points.hpp"

namespace KorvaniNavigation {
namespace {

using namespace KorvaniTest;

constexpr CLLocationCoordinate2D kZero{0, 0};

TEST(KRVNavRegion, NewOneIsEmptyWithBothCornersAtZero) {
  const auto region = std::make_shared<KRVNavRegion>(-2);
  EXPECT_EQ(region->level(), -2);
  EXPECT_TRUE(region->nodes().empty());
  EXPECT_TRUE(region->obstacles().empty());
  EXPECT_EQ(region->northEastCoordinate(), kZero);
  EXPECT_EQ(region->southWestCoordinate(), kZero);
  EXPECT_EQ(region->graph(), nullptr);
}

TEST(KRVNavRegion, CornersAndLevelAreWhatTheHostSets) {
  const auto region = std::make_shared<KRVNavRegion>(0);
  region->setNorthEastCoordinate({49, 12});
  region->setSouthWestCoordinate({48, 11});
  region->setLevel(3);
  EXPECT_EQ(region->northEastCoordinate(), (CLLocationCoordinate2D{49, 12}));
  EXPECT_EQ(region->southWestCoordinate(), (CLLocationCoordinate2D{48, 11}));
  EXPECT_EQ(region->level(), 3);
}

TEST(KRVNavRegion, AddingAPointFilesItInRegionAndGraph) {
  const auto graph = std::make_shared<KRVNavGraph>();
  const auto region = std::make_shared<KRVNavRegion>(0);
  graph->add(region);
  const auto point = at(48, 11, 0, 5);
  region->addNode(point);
  EXPECT_EQ(point->region(), region);
  ASSERT_NE(region->nodes().find(5), nullptr);
  EXPECT_EQ(*region->nodes().find(5), point);
  EXPECT_EQ(graph->nodeWithIdentifier(5), point);
}

TEST(KRVNavRegion, PointsAddedBeforeItsGraphAreUnknownToTheGraph) {
  const auto graph = std::make_shared<KRVNavGraph>();
  const auto region = std::make_shared<KRVNavRegion>(0);
  region->addNode(at(48, 11, 0, 5));
  graph->add(region);
  EXPECT_TRUE(region->nodes().contains(5));
  EXPECT_FALSE(graph->nodes().contains(5));
}

TEST(KRVNavRegion, PointAddedToTwoStaysInBothAndBelongsToTheSecond) {
  const auto first = std::make_shared<KRVNavRegion>(0);
  const auto second = std::make_shared<KRVNavRegion>(1);
  const auto point = at(48, 11, 0, 5);
  first->addNode(point);
  second->addNode(point);
  EXPECT_EQ(point->region(), second);
  EXPECT_TRUE(first->nodes().contains(5));
  EXPECT_TRUE(second->nodes().contains(5));
}

TEST(KRVNavRegion, LaterPointOfTheSameIdentifierReplacesTheEarlierInItsPlace) {
  const auto graph = std::make_shared<KRVNavGraph>();
  const auto region = std::make_shared<KRVNavRegion>(0);
  graph->add(region);
  const auto later = at(49, 11, 0, 5);
  region->addNode(at(48, 11, 0, 5));
  region->addNode(at(48, 11, 0, 3));
  region->addNode(later);
  EXPECT_EQ(region->nodes().keys(), (std::vector<std::int64_t>{5, 3}));
  EXPECT_EQ(*region->nodes().find(5), later);
  EXPECT_EQ(graph->nodeWithIdentifier(5), later);
}

TEST(KRVNavRegion, PointsAreFiledUnderTheirIdentifierNumber) {
  const auto graph = std::make_shared<KRVNavGraph>();
  const auto region = std::make_shared<KRVNavRegion>(0);
  graph->add(region);
  const auto point = at(48, 11, 0, 5);
  point->setIdentifierNumber(6);
  region->addNode(point);
  EXPECT_EQ(region->nodes().keys(), (std::vector<std::int64_t>{6}));
  EXPECT_EQ(graph->nodeWithIdentifier(6), point);
}

TEST(KRVNavRegion, AddingAPointTouchesNeitherLevelsNorCorners) {
  const auto region = std::make_shared<KRVNavRegion>(0);
  const auto point = at(48, 11, 4, 5);
  region->addNode(point);
  EXPECT_EQ(region->level(), 0);
  EXPECT_EQ(point->level(), 4);
  EXPECT_EQ(region->northEastCoordinate(), kZero);
  EXPECT_EQ(region->southWestCoordinate(), kZero);
}

TEST(KRVNavRegion, ObstaclesStayInOrderAndMayRepeat) {
  const auto region = std::make_shared<KRVNavRegion>(0);
  const auto a = std::make_shared<KRVNavObstacle>(std::vector<CLLocationCoordinate2D>{{48, 11}});
  const auto b = std::make_shared<KRVNavObstacle>(std::vector<CLLocationCoordinate2D>{{48, 11}});
  region->addObstacle(a);
  region->addObstacle(b);
  region->addObstacle(a);
  EXPECT_EQ(region->obstacles(), (KRVNavRegion::Obstacles{a, b, a}));
}

TEST(KRVNavRegion, NodesAndObstaclesAreReplaceable) {
  const auto region = std::make_shared<KRVNavRegion>(0);
  region->addNode(at(48, 11, 0, 5));
  KRVNavRegion::Nodes nodes;
  nodes.set(9, at(48, 11, 0, 9));
  region->setNodes(nodes);
  region->setObstacles(
      {std::make_shared<KRVNavObstacle>(std::vector<CLLocationCoordinate2D>{{48, 11}})});
  EXPECT_EQ(region->nodes().keys(), (std::vector<std::int64_t>{9}));
  EXPECT_EQ(region->obstacles().size(), 1u);
}

TEST(KRVNavRegion, DoesNotKeepItsGraphAlive) {
  auto graph = std::make_shared<KRVNavGraph>();
  const auto region = std::make_shared<KRVNavRegion>(0);
  graph->add(region);
  EXPECT_EQ(region->graph(), graph);
  graph.reset();
  EXPECT_EQ(region->graph(), nullptr);
  const auto point = at(48, 11, 0, 5);
  region->addNode(point);
  EXPECT_TRUE(region->nodes().contains(5));
}

}  // namespace
}  // namespace KorvaniNavigation
