#include "Recorder/GraphFaults.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Support/FacadeFixture.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniRecorder {
namespace {

using KorvaniNavigation::KRVNavEdge;
using KorvaniNavigation::KRVNavObstacle;
using KorvaniNavigation::KRVNavRegion;
using KorvaniTest::PointPtr;
using KorvaniTest::TextBuilding;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class GraphFaults : public KorvaniTest::FacadeFixture {
 protected:
  std::vector<std::string> faults() const { return graphFaults(*building.graph()); }
  KorvaniNavigation::KRVNavGraph& graph() const { return *building.graph(); }
  KRVNavRegion& region() const { return *building.region(0); }
  const PointPtr& a() const { return building.point("A"); }
  const PointPtr& b() const { return building.point("B"); }

  /// Adds a node to the region.
  PointPtr node(double latitude, double longitude, std::int64_t level, std::int64_t number) const {
    auto point = KorvaniTest::at(latitude, longitude, level, number);
    region().addNode(point);
    return point;
  }

  void expectOneFault(const std::string& words) const {
    EXPECT_THAT(faults(), ElementsAre(HasSubstr(words)));
  }

  static constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  TextBuilding building{"A--B"};
};

TEST_F(GraphFaults, AnOrdinaryGraphHasNone) { EXPECT_THAT(faults(), IsEmpty()); }

TEST_F(GraphFaults, ACoordinateThatIsNotOnEarthIsNamedWithItsNode) {
  node(kNan, 11, 0, 7);
  node(48, std::numeric_limits<double>::infinity(), 0, 8);
  node(91, 11, 0, 9);
  EXPECT_THAT(faults(), ElementsAre(AllOf(HasSubstr("node 7"), HasSubstr("expected -90 to 90")),
                                    HasSubstr("node 8"), HasSubstr("node 9: found latitude 91")));
}

TEST_F(GraphFaults, ALevelBeyondAThousandIsNamed) {
  const auto tower = std::make_shared<KRVNavRegion>(1001);
  graph().add(tower);
  tower->addNode(KorvaniTest::at(48, 11, 1001, 7));
  EXPECT_THAT(faults(), ElementsAre(HasSubstr("region 2: found level 1001, expected -1000 to 1000"),
                                    HasSubstr("node 7: found level 1001")));
}

TEST_F(GraphFaults, ANodeOfAnotherLevelThanItsRegionsIsNamed) {
  node(48, 11, 2, 7);
  expectOneFault("node 7: found level 2, expected 0, the one of its region");
}

TEST_F(GraphFaults, ANegativeNumberIsNamed) {
  node(48, 11, 0, -4);
  expectOneFault("node -4: found a negative number");
}

TEST_F(GraphFaults, ANodeFiledUnderAnotherNumberIsNamed) {
  a()->setIdentifier(12);
  expectOneFault("node 1: its identifiers are 12 and 1");
}

TEST_F(GraphFaults, TwoNodesOfOneNumberAreNamed) {
  const auto upper = std::make_shared<KRVNavRegion>(0);
  graph().add(upper);
  upper->addNode(KorvaniTest::at(48, 11, 0, 1));  // takes the place of A in the graph
  EXPECT_THAT(faults(), testing::Contains(HasSubstr("the graph does not know its node 1")));
}

TEST_F(GraphFaults, ANodeThatTheGraphDoesNotKnowIsNamed) {
  const auto late = std::make_shared<KRVNavRegion>(0);
  late->addNode(KorvaniTest::at(48, 11, 0, 5));
  graph().add(late);
  EXPECT_THAT(faults(),
              testing::Contains(HasSubstr("region 2: the graph does not know its node 5")));
}

TEST_F(GraphFaults, NodesInAnotherOrderThanTheGraphsAreNamed) {
  KRVNavRegion::Nodes nodes;
  nodes.set(2, b());
  nodes.set(1, a());
  region().setNodes(nodes);
  expectOneFault("region 1: its nodes are others than the graph's, or in another order");
}

TEST_F(GraphFaults, ANodeWithoutRegionIsNamed) {
  graph().nodes().set(6, KorvaniTest::at(48, 11, 0, 6));
  expectOneFault("node 6: it lies in no region of the graph");
}

TEST_F(GraphFaults, ANodeThatWasMovedAwayFromItsLocationIsNamed) {
  a()->setCoordinate({48.5, 11.5});
  expectOneFault("node 1: its location is not at its coordinate");
}

TEST_F(GraphFaults, LengthsAndFactorsThatAreNotPositiveAreNamed) {
  graph().edgeFromNode(*a(), *b())->setDistance(-1);
  graph().edgeFromNode(*b(), *a())->setMultiplicator(kNan);
  EXPECT_THAT(faults(), ElementsAre(HasSubstr("edge from 1 to 2: found distance -1"),
                                    HasSubstr("edge from 2 to 1: found multiplicator nan")));
}

TEST_F(GraphFaults, ALengthOfNothingIsOneUnlessThePointsAreAtNoDistance) {
  const auto c = node(48, 11, 0, 3);
  const auto d = node(48, 11, 0, 4);
  graph().addEdge(std::make_shared<KRVNavEdge>(c, d, 0, 1, true), *c, *d);
  expectOneFault("edge from 3 to 4: found distance 0");
  config().setLevelHeight(0);
  EXPECT_THAT(faults(), IsEmpty());
}

TEST_F(GraphFaults, AnEdgeToNowhereIsNamed) {
  const auto stranger = KorvaniTest::at(48, 11, 0, 44);
  graph().addEdge(std::make_shared<KRVNavEdge>(a(), stranger), *a(), *stranger);
  expectOneFault("edge from 1 to 44: there is no node 44");
}

TEST_F(GraphFaults, AnEdgeBetweenOtherPointsThanItsNodesIsNamed) {
  graph().addEdge(std::make_shared<KRVNavEdge>(b(), a()), *a(), *b());
  expectOneFault("edge from 1 to 2: its start and end are other points");
}

TEST_F(GraphFaults, ATypeThatIsNoTextIsNamed) {
  graph().edgeFromNode(*a(), *b())->setType("\xFF");
  expectOneFault("edge from 1 to 2: its type is not UTF-8 text");
}

TEST_F(GraphFaults, WhatIsMissingIsNamed) {
  graph().edges().row(1).set(2, nullptr);
  region().obstacles().push_back(nullptr);
  EXPECT_THAT(faults(), ElementsAre(HasSubstr("obstacle 1 of region 1: there is none"),
                                    HasSubstr("edge from 1 to 2: there is none")));
  graph().regions().insert(graph().regions().begin(), nullptr);
  EXPECT_THAT(faults(), testing::Contains(HasSubstr("region 1: there is none")));
  graph().nodes().set(3, nullptr);
  EXPECT_THAT(faults(), testing::Contains(HasSubstr("node 3: there is none")));
}

TEST_F(GraphFaults, AnObstacleWithoutPositionsIsNamed) {
  region().addObstacle(
      std::make_shared<KRVNavObstacle>(std::vector<KorvaniNavigation::CLLocationCoordinate2D>{}));
  expectOneFault("obstacle 1 of region 1: no positions");
}

TEST_F(GraphFaults, ARegionListedTwiceIsNamed) {
  graph().add(building.region(0));
  EXPECT_THAT(faults(), testing::Contains(HasSubstr("region 2: found a region that the graph")));
}

TEST_F(GraphFaults, ARegionOfAnotherGraphIsNamed) {
  region().setGraph(nullptr);
  expectOneFault("region 1: it says it belongs to another graph");
}

TEST_F(GraphFaults, SwappedCornersAreNamed) {
  const auto low = region().southWestCoordinate();
  region().setSouthWestCoordinate(region().northEastCoordinate());
  region().setNorthEastCoordinate(low);
  expectOneFault("region 1: its north-east corner lies south or west");
}

TEST_F(GraphFaults, TheSearchEndsAfterTwenty) {
  for (int number = 10; number < 100; ++number) node(kNan, 11, 0, number);
  EXPECT_THAT(faults(), SizeIs(20));
}

}  // namespace
}  // namespace KorvaniRecorder
