#include "Navigation/Localisation/EdgeIntersection.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>
#include <vector>

#include "Navigation/Directions/DirectionsHelpers.hpp"
#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Support/Points.hpp"

using namespace KorvaniNavigation;
using KorvaniPlatform::radians;
using KorvaniTest::at;
using KorvaniTest::PointPtr;

namespace {

constexpr double kAnyDistance = 1e6;

// A graph on the equator, where going east is a bearing of exactly 90 degrees, and a walk along
// it towards `target`. Places are in thousandths of a degree, about 111 m each.
class StraightWalkTest : public testing::Test {
 protected:
  StraightWalkTest() { graph_->add(region_); }

  PointPtr node(double north, double east, std::int64_t level = 0) {
    const PointPtr point = at(north / 1000, east / 1000, level, ++lastIdentifier_);
    region_->addNode(point);
    return point;
  }

  void oneWay(const PointPtr& from, const PointPtr& to) {
    graph_->addEdge(std::make_shared<KRVNavEdge>(from, to, 1.0, 1.0, true), *from, *to);
  }

  void chain(std::initializer_list<PointPtr> points) {
    for (const PointPtr* from = points.begin(); from + 1 != points.end(); ++from) {
      oneWay(*from, *(from + 1));
    }
  }

  PointPtr walk(const PointPtr& from, const PointPtr& endNode) const {
    return intersection_.enclosingPathSegmentGraphNodeFrom(from, target_, bearing_, endNode,
                                                           closestDistance_);
  }

  PointPtr walk(const PointPtr& from) const { return walk(from, from); }

  CLLocation target_{CLLocationCoordinate2D{0, 0.010}};
  double bearing_ = 90;
  double closestDistance_ = kAnyDistance;
  std::shared_ptr<KRVNavGraph> graph_ = std::make_shared<KRVNavGraph>();
  std::shared_ptr<KRVNavRegion> region_ = std::make_shared<KRVNavRegion>(0);

 private:
  std::int64_t lastIdentifier_ = 0;
  EdgeIntersection intersection_{0, 0, at(0, 0), at(0, 0), at(0, 0)};
};

}  // namespace

TEST(EdgeIntersection, KeepsWhatItWasMadeOf) {
  const auto node = at(48.0005, 11);
  const auto one = at(48, 11);
  const auto two = at(48.001, 11);
  const EdgeIntersection intersection(0.25, 3.5, node, one, two);
  EXPECT_EQ(intersection.delta(), 0.25);
  EXPECT_EQ(intersection.distance(), 3.5);
  EXPECT_EQ(intersection.node(), node);
  EXPECT_EQ(intersection.enclosingNodeOne(), one);
  EXPECT_EQ(intersection.enclosingNodeTwo(), two);
}

TEST(EdgeIntersection, MeasuresTheGroundDistanceOfBothNodesToThePoint) {
  const auto node = at(KorvaniTest::fromOrigin(0, 3));
  const EdgeIntersection intersection(0, 0, node, at(KorvaniTest::fromOrigin(0, 0)),
                                      at(KorvaniTest::fromOrigin(0, 10)));
  EXPECT_NEAR(intersection.distanceEnclosingNodeOne(), 3, 1e-6);
  EXPECT_NEAR(intersection.distanceEnclosingNodeTwo(), 7, 1e-6);
}

TEST(EdgeIntersection, MeasuresCoordinatesNotTheLocationsOfThePoints) {
  const auto one = at(48, 11);
  one->setLocation(CLLocation({50, 11}));
  EXPECT_EQ(EdgeIntersection(0, 0, at(48, 11), one, one).distanceEnclosingNodeOne(), 0);
}

TEST(EdgeIntersection, StartsWithoutFoundFields) {
  const EdgeIntersection intersection(0, 0, at(0, 0), at(0, 1), at(0, 2));
  EXPECT_EQ(intersection.foundEnclosingSegmentExtensionNode1(), nullptr);
  EXPECT_EQ(intersection.foundEnclosingSegmentExtensionNode2(), nullptr);
  EXPECT_FALSE(intersection.foundNearestIntersectionCoordinateOnSegment());
  EXPECT_EQ(intersection.foundNearestIntersectionWaypointOnSegment(), nullptr);
}

TEST(EdgeIntersection, FoundFieldsAreSeenByEveryoneWhoSharesTheObject) {
  const auto shared = std::make_shared<EdgeIntersection>(0, 0, at(0, 0), at(0, 1), at(0, 2));
  const std::shared_ptr<Intersection> held = shared;
  const auto one = at(1, 1), two = at(2, 2), waypoint = at(3, 3);
  shared->setFoundEnclosingSegmentExtensionNode1(one);
  shared->setFoundEnclosingSegmentExtensionNode2(two);
  shared->setFoundNearestIntersectionCoordinateOnSegment(CLLocationCoordinate2D{3, 3});
  shared->setFoundNearestIntersectionWaypointOnSegment(waypoint);

  const auto seen = asEdge(held);
  ASSERT_NE(seen, nullptr);
  EXPECT_EQ(seen->foundEnclosingSegmentExtensionNode1(), one);
  EXPECT_EQ(seen->foundEnclosingSegmentExtensionNode2(), two);
  EXPECT_EQ(seen->foundNearestIntersectionCoordinateOnSegment(), (CLLocationCoordinate2D{3, 3}));
  EXPECT_EQ(seen->foundNearestIntersectionWaypointOnSegment(), waypoint);
}

TEST(EdgeIntersectionDeathTest, WithoutAPointIsAFatalError) {
  const char* message = "fatal error: an edge intersection needs three points";
  EXPECT_DEATH(EdgeIntersection(0, 0, nullptr, at(0, 1), at(0, 2)), message);
  EXPECT_DEATH(EdgeIntersection(0, 0, at(0, 0), nullptr, at(0, 2)), message);
  EXPECT_DEATH(EdgeIntersection(0, 0, at(0, 0), at(0, 1), nullptr), message);
}

TEST(Intersection, KindsTellTheDerivedTypesApart) {
  const auto plain = std::make_shared<Intersection>(at(0, 0), 1, 2);
  const auto node = std::make_shared<SingleNodeIntersection>(at(0, 0), 1, 2);
  const auto edge = std::make_shared<EdgeIntersection>(2, 1, at(0, 0), at(0, 1), at(0, 2));
  EXPECT_EQ(plain->kind(), IntersectionKind::plain);
  EXPECT_EQ(node->kind(), IntersectionKind::node);
  EXPECT_EQ(edge->kind(), IntersectionKind::edge);
  EXPECT_EQ(asEdge(plain), nullptr);
  EXPECT_EQ(asEdge(node), nullptr);
  EXPECT_EQ(asEdge(edge), edge);
  EXPECT_EQ(asEdge(nullptr), nullptr);
}

TEST(Intersection, AtANodeKeepsNodeDistanceAndDelta) {
  const auto point = at(48, 11, 0, 7);
  const SingleNodeIntersection intersection(point, 3.5, 0.25);
  EXPECT_EQ(intersection.node(), point);
  EXPECT_EQ(intersection.distance(), 3.5);
  EXPECT_EQ(intersection.delta(), 0.25);
}

TEST(StraightLineThreshold, IsFiveDegrees) {
  EXPECT_EQ(kKRVHeadingDeviationTresholdForStraightLines, 5.0);
}

TEST_F(StraightWalkTest, ANodeWithoutNeighboursReturnsItself) {
  const auto alone = node(0, 0);
  EXPECT_EQ(walk(alone), alone);
}

TEST_F(StraightWalkTest, NeighboursOnOtherLevelsDoNotCount) {
  const auto start = node(0, 0);
  chain({start, node(0, 11, 1)});
  EXPECT_EQ(walk(start), start);
}

TEST_F(StraightWalkTest, StopsBeforeANodeThatTheTargetStillLiesAheadOf) {
  const auto start = node(0, 0);
  chain({start, node(0, 9)});
  EXPECT_EQ(walk(start), start);
}

TEST_F(StraightWalkTest, GoesOnToANodeThatLiesBehindTheTarget) {
  const auto start = node(0, 0);
  const auto behind = node(0, 12);
  chain({start, behind});
  EXPECT_EQ(walk(start), behind);
}

TEST_F(StraightWalkTest, GoesFromNodeToNodeWhileTheyComeNearer) {
  const auto start = node(0, 0);
  const auto far = node(0, 14), nearer = node(0, 12), nearest = node(0, 11);
  chain({start, far, nearer, nearest});
  EXPECT_EQ(walk(start), nearest);
}

TEST_F(StraightWalkTest, EachNodeLimitsTheNextToItsOwnDistance) {
  const auto start = node(0, 0);
  const auto near = node(0, 11), farther = node(0, 12);
  chain({start, near, farther});
  EXPECT_EQ(walk(start), near);
}

TEST_F(StraightWalkTest, NodesFartherThanTheClosestDistanceDoNotCount) {
  const auto start = node(0, 0);
  const auto behind = node(0, 12);
  chain({start, behind});
  const double distance = CLLocation(behind->coordinate()).distanceFromLocation(target_);
  closestDistance_ = std::nextafter(distance, 0.0);
  EXPECT_EQ(walk(start), start);
  closestDistance_ = distance;
  EXPECT_EQ(walk(start), behind);
}

TEST_F(StraightWalkTest, WithClosestDistanceZeroOnlyANeighbourAtTheLocationQualifies) {
  const auto start = node(0, 0);
  const auto almost = node(0, 10.0001), exact = node(0, 10);
  oneWay(start, almost);
  closestDistance_ = 0;
  EXPECT_EQ(walk(start), start);
  oneWay(start, exact);
  EXPECT_EQ(walk(start), exact);
}

TEST_F(StraightWalkTest, ANeighbour4Point9DegreesOffContinuesTheStraightLine) {
  const auto start = node(0, 0);
  const auto east = node(0, 12);  // at a bearing of exactly 90
  chain({start, east});
  bearing_ = 94.9;
  EXPECT_EQ(walk(start), east);
  bearing_ = 85.1;
  EXPECT_EQ(walk(start), east);
}

TEST_F(StraightWalkTest, ANeighbour5DegreesOffDoesNotContinueTheStraightLine) {
  const auto start = node(0, 0);
  chain({start, node(0, 12)});
  bearing_ = 95.0;
  EXPECT_EQ(walk(start), start);
  bearing_ = 85.0;
  EXPECT_EQ(walk(start), start);
}

TEST_F(StraightWalkTest, ABearingOf359Against1DegreeIsADifferenceOf2) {
  const auto start = node(0, 0);
  const auto behind = node(12, 12 * std::tan(radians(1)));
  target_ = CLLocation(CLLocationCoordinate2D{0.010, 0});
  chain({start, behind});
  const double bearing =
      DirectionsHelpers::bearingToLocation(behind->location(), start->location());
  EXPECT_NEAR(bearing, 1, 1e-3);
  bearing_ = 359;
  EXPECT_EQ(walk(start), behind);
}

TEST_F(StraightWalkTest, StraightOnIsJudgedFromTheEndNodeNotFromWhereTheWalkStands) {
  const auto endNode = node(0, 0);
  const auto from = node(1, 11.5);
  const auto next = node(0, 11);  // straight east of the end node, but south-west of `from`
  chain({from, next});
  EXPECT_EQ(walk(from, endNode), next);
  EXPECT_EQ(walk(from, from), from);
}

TEST_F(StraightWalkTest, TheTargetLiesAheadWithin30DegreesOfTheBearing) {
  const auto start = node(0, 0);
  const auto next = node(0, 9);
  chain({start, next});
  // Seen from the next node, the target is at a bearing of 90 - 29 and 90 - 31 degrees.
  target_ = CLLocation({0.001 * std::tan(radians(29)), 0.010});
  EXPECT_EQ(walk(start), start);
  target_ = CLLocation({0.001 * std::tan(radians(31)), 0.010});
  EXPECT_EQ(walk(start), next);
}

TEST_F(StraightWalkTest, ATargetExactly30DegreesAsideIsNotAhead) {
  const auto start = node(0, 0);
  const auto next = node(9, 9 * std::tan(radians(30)));
  chain({start, next});
  target_ = CLLocation({0.010, next->coordinate().longitude});  // due north of the next node
  bearing_ = 30;
  EXPECT_EQ(walk(start), next);
  bearing_ = 29.999;
  EXPECT_EQ(walk(start), start);
}

TEST_F(StraightWalkTest, OnlyTheFirstEdgeThatContinuesDecides) {
  const auto start = node(0, 0);
  const auto before = node(0, 9), behind = node(0, 11);
  chain({start, before});
  chain({start, behind});
  EXPECT_EQ(walk(start), start);
}

TEST_F(StraightWalkTest, EdgesThatDoNotContinueArePassedOver) {
  const auto start = node(0, 0);
  const auto aside = node(12, 0), above = node(0, 12, 3), behind = node(0, 11);
  chain({start, aside});
  chain({start, above});
  chain({start, behind});
  EXPECT_EQ(walk(start), behind);
}

TEST_F(StraightWalkTest, ACycleAtEqualDistanceEndsWhereItWouldComeBack) {
  const auto start = node(0, 0);
  const auto left = node(0.5, 12), right = node(-0.5, 12);
  chain({start, left, right, left});
  EXPECT_EQ(walk(start), right);
}

TEST_F(StraightWalkTest, ALongerCycleAtEqualDistanceEndsOnItsLastNode) {
  const auto start = node(0, 0);
  const auto one = node(0.5, 12), two = node(-0.5, 12), three = node(0.5, 12);
  chain({start, one, two, three, one});
  EXPECT_EQ(walk(start), three);
}

TEST_F(StraightWalkTest, ACycleThatContainsTheStartEndsWhereItWouldComeBack) {
  const auto endNode = node(0, 0);
  const auto left = node(0.5, 12), right = node(-0.5, 12);
  chain({left, right, left});
  EXPECT_EQ(walk(left, endNode), right);
}

TEST_F(StraightWalkTest, ANodeThatIsItsOwnNeighbourEndsTheWalk) {
  const auto endNode = node(0, 0);
  const auto loop = node(0, 12);
  chain({loop, loop});
  EXPECT_EQ(walk(loop, endNode), loop);
}

TEST_F(StraightWalkTest, ComingBackToANearerStartIsNoCycleWhileTheWalkGetsOn) {
  const auto endNode = node(0, 0);
  const auto start = node(0, 12), farther = node(0, 14), nearest = node(0, 11);
  chain({start, farther, start});
  chain({start, nearest});
  EXPECT_EQ(walk(start, endNode), nearest);
}

TEST_F(StraightWalkTest, AWalkOfManyNodesNeedsNoStack) {
  const auto start = node(0, 0);
  PointPtr last = start;
  for (int i = 0; i < 20000; ++i) {
    const auto next = node(0, 40 - i * 0.001);
    chain({last, next});
    last = next;
  }
  EXPECT_EQ(walk(start), last);
}

TEST_F(StraightWalkTest, ALocationThatIsNoNumberEndsTheWalk) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  target_ = CLLocation({nan, nan});
  const auto start = node(0, 0);
  const auto one = node(0, 11), two = node(0, 12);
  chain({start, one, two, one});
  EXPECT_EQ(walk(start), two);
}

using StraightWalkDeathTest = StraightWalkTest;

TEST_F(StraightWalkDeathTest, AnEdgeWithoutAnEndIsAFatalError) {
  const auto start = node(0, 0);
  const auto end = node(0, 12);
  const auto edge = std::make_shared<KRVNavEdge>(start, end, 1.0, 1.0, true);
  edge->setEnd(nullptr);
  graph_->addEdge(edge, *start, *end);
  EXPECT_DEATH(walk(start), "fatal error: an edge without an end node");
}

TEST_F(StraightWalkDeathTest, ANullNodeIsAFatalError) {
  EXPECT_DEATH(walk(nullptr, at(0, 0)), "fatal error: a walk needs a start and an end node");
  EXPECT_DEATH(walk(at(0, 0), nullptr), "fatal error: a walk needs a start and an end node");
}
