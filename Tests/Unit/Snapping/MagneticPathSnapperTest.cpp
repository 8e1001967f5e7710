#include "Navigation/Snapping/MagneticPathSnapper.hpp"

#include <cmath>

#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Unit/Snapping/SnapperFixture.hpp"

namespace KorvaniNavigation {
namespace {

using KorvaniTest::IntersectionPtr;
using KorvaniTest::PointPtr;

/// Two nodes, 10 m apart on the way to the north-east, and a third 10 m further on. They are
/// joined where a test says so: a held node can only be compared with other nodes.
class MagneticPathSnapperTest : public KorvaniTest::SnapperFixture {
 protected:
  void join() {
    building.join(a, b);
    building.join(b, c);
  }

  IntersectionPtr plainly(const PointPtr& point) {
    IntersectionTask task(
        bundle(), point, [](const auto&) {}, true);
    return task.intersect(*point);
  }

  const PointPtr a = building.node(0, 0);
  const PointPtr b = building.node(8, 6);
  const PointPtr c = building.node(16, 12);
};

void expectSamePlace(const IntersectionPtr& place, const IntersectionPtr& other) {
  ASSERT_TRUE(place);
  ASSERT_TRUE(other);
  EXPECT_EQ(place->kind(), other->kind());
  EXPECT_EQ(place->node()->coordinate(), other->node()->coordinate());
  EXPECT_EQ(place->distance(), other->distance());
  EXPECT_EQ(place->delta(), other->delta());
}

TEST_F(MagneticPathSnapperTest, SwitchedOffGivesThePlainPlaceEvenWithAHeldOne) {
  join();
  open();
  config().setActivateMagneticSnapping(false);
  memory.previousIntersection() = onNode(c);
  const PointPtr position = building.position(4, 4);
  expectSamePlace(snapper.perform(position), plainly(position));
  EXPECT_EQ(memory.previousIntersection()->node(), c) << "what is held stays as it is";
}

TEST_F(MagneticPathSnapperTest, AnEmptySnapperGivesThePlainPlaceEveryTimeAndHoldsNothing) {
  join();
  open();
  for (const bool magnetic : {true, false}) {
    config().setActivateMagneticSnapping(magnetic);
    for (const std::int64_t threshold : {0, 1, 5}) {
      config().setMagneticPathSnappingFallbackThreshold(threshold);
      for (const double north : {0.0, 2.0, 5.0, 9.0}) {
        const PointPtr position = building.position(north, north);
        expectSamePlace(snapper.perform(position), plainly(position));
        EXPECT_FALSE(memory.previousIntersection());
        EXPECT_FALSE(memory.lastCounted());
      }
    }
  }
}

TEST_F(MagneticPathSnapperTest, APositionThatSeesNothingHasNoPlaceAndChangesNothing) {
  building.wall(100, 100, 100, 110);
  building.wall(100, 110, 110, 110);
  building.wall(110, 110, 110, 100);
  building.wall(110, 100, 100, 100);
  open();
  memory.previousIntersection() = onNode(a);
  EXPECT_FALSE(snapper.perform(building.position(105, 105)));
  EXPECT_EQ(memory.previousIntersection()->node(), a);
}

TEST_F(MagneticPathSnapperTest, WithoutAGraphThereIsNoPlace) {
  EXPECT_FALSE(snapper.perform(building.position(1, 1)));
}

TEST_F(MagneticPathSnapperTest, AHeldNodeIsKeptWhileItIsNearlyAsNearAsTheNearestPlace) {
  open();
  knowWalls();
  const IntersectionPtr held = onNode(a);
  memory.previousIntersection() = held;
  EXPECT_EQ(snapper.perform(building.position(4, 4)), held);
  EXPECT_EQ(memory.previousIntersection(), held);
}

TEST_F(MagneticPathSnapperTest, AHeldNodeIsKeptWhileARouteIsFollowed) {
  join();
  open();
  knowWalls();
  const auto task = guide(a, {c});
  ASSERT_TRUE(lastRoute());
  const IntersectionPtr held = onNode(c);
  memory.previousIntersection() = held;
  EXPECT_EQ(snapper.perform(building.position(17, 13)), held);
}

TEST_F(MagneticPathSnapperTest, AHeldNodeIsLeftWhenTheNearestPlaceIsMuchNearer) {
  open();
  knowWalls();
  memory.previousIntersection() = onNode(a);
  const PointPtr position = building.position(8, 6.5);
  const auto place = snapper.perform(position);
  expectSamePlace(place, plainly(position));
  EXPECT_EQ(memory.previousIntersection(), place) << "and is held from now on";
  EXPECT_EQ(memory.lastCounted(), place);
}

TEST_F(MagneticPathSnapperTest, ADistanceDifferenceOfExactlyTheThresholdStillHolds) {
  open();
  knowWalls();
  ASSERT_TRUE(snapper.perform(building.position(0, 0)));
  const PointPtr position = KorvaniTest::at(0, 0);
  const IntersectionPtr held = onNode(KorvaniTest::at(KorvaniTest::exactlyNorthOfNull(5)));
  const IntersectionPtr current = onNode(KorvaniTest::at(KorvaniTest::exactlyNorthOfNull(2)));
  memory.previousIntersection() = held;
  ASSERT_EQ(config().magneticPathSnappingDistanceThreshold(), 3.0F);
  EXPECT_EQ(memory.magneticSnapping(*position, current), held);
  config().setMagneticPathSnappingDistanceThreshold(std::nextafterf(3, 0));
  EXPECT_EQ(memory.magneticSnapping(*position, current), current);
}

TEST_F(MagneticPathSnapperTest, AHeldPlaceIsAlsoLeftWhenTheNearestOneIsMuchFarther) {
  open();
  knowWalls();
  const PointPtr position = building.position(0, 0);
  ASSERT_TRUE(snapper.perform(position));
  memory.previousIntersection() = onNode(a);
  const IntersectionPtr farther = onNode(b);
  EXPECT_EQ(memory.magneticSnapping(*position, farther), farther);
}

TEST_F(MagneticPathSnapperTest, AHeldNodeOnAnotherLevelIsLeft) {
  const PointPtr above = building.node(4, 4, 1);
  building.node(4, 5);  // so near that only the level can be the reason
  open();
  knowWalls();
  memory.previousIntersection() = onNode(above);
  const PointPtr position = building.position(4, 4);
  expectSamePlace(snapper.perform(position), plainly(position));
  EXPECT_NE(memory.previousIntersection()->node(), above);
}

TEST_F(MagneticPathSnapperTest, AHeldNodeBehindAWallIsLeft) {
  const PointPtr aside = building.node(4, 0);
  building.wall(2, 2, 20, 2);
  open();
  knowWalls();
  memory.previousIntersection() = onNode(aside);
  const PointPtr position = building.position(4, 4);
  expectSamePlace(snapper.perform(position), plainly(position));
  EXPECT_NE(memory.previousIntersection()->node(), aside);
}

TEST_F(MagneticPathSnapperTest, AHeldNodeWithoutKnownWallsIsAFatalError) {
  open();
  memory.previousIntersection() = onNode(a);
  EXPECT_DEATH(snapper.perform(building.position(4, 4)),
               "no walls are known to test a held node against");
}

TEST_F(MagneticPathSnapperTest, AFallbackThresholdOfZeroAlwaysFallsBackAndCountsNothing) {
  open();
  config().setMagneticPathSnappingFallbackThreshold(0);
  config().setMagneticPathSnappingDistanceThreshold(50);
  const PointPtr position = building.position(4, 4);
  ASSERT_TRUE(snapper.perform(position));
  memory.previousIntersection() = onSegment(building.position(4, 3), a, b);
  memory.fallbackCounter() = 3;
  // It does not know its segment, so counting it would be a fatal error.
  const IntersectionPtr current = std::make_shared<EdgeIntersection>(0, 0, position, a, b);
  EXPECT_EQ(memory.magneticSnapping(*position, current), current);
  EXPECT_EQ(memory.previousIntersection(), current);
  EXPECT_EQ(memory.fallbackCounter(), 0);
}

TEST_F(MagneticPathSnapperTest,
       AHeldSegmentIsFollowedInPlaceAndItsEndsAreWalkedTowardsThePosition) {
  join();
  open();
  config().setMagneticPathSnappingDistanceThreshold(20);
  const auto held = onSegment(building.position(4, 3), a, c);
  memory.previousIntersection() = held;
  const PointPtr position = building.position(9.1, 6.2);
  // The nearest place is a node, so that nothing is counted.
  ASSERT_TRUE(snapper.perform(building.position(100, 100)));
  memory.previousIntersection() = held;
  EXPECT_EQ(memory.magneticSnapping(*position, onNode(b)), held);
  ASSERT_TRUE(held->foundNearestIntersectionWaypointOnSegment());
  const auto& place = *held->foundNearestIntersectionWaypointOnSegment();
  EXPECT_EQ(held->foundNearestIntersectionCoordinateOnSegment(), place.coordinate());
  EXPECT_LT(place.distanceFrom(*building.position(8.8, 6.6)), 0.1);
  EXPECT_EQ(held->foundEnclosingSegmentExtensionNode1(), a) << "the place lies ahead of the next";
  EXPECT_EQ(held->foundEnclosingSegmentExtensionNode2(), b) << "the walk goes past the place";
  EXPECT_EQ(held->enclosingNodeOne(), a) << "the rest of the held place stays";
}

TEST_F(MagneticPathSnapperTest, APositionBesideTheEndOfTheHeldSegmentLeavesIt) {
  open();
  const auto held = onSegment(building.position(4, 3), a, b);
  const PointPtr position = building.position(12, 9);
  ASSERT_TRUE(snapper.perform(position));
  memory.previousIntersection() = held;
  const IntersectionPtr current = onNode(c);
  EXPECT_EQ(memory.magneticSnapping(*position, current), current);
  EXPECT_FALSE(held->foundNearestIntersectionWaypointOnSegment());
}

TEST_F(MagneticPathSnapperTest, AHeldSegmentBehindAWallIsLeft) {
  join();
  building.wall(-10, 7, 30, 7);
  const PointPtr d = building.node(0, 14);
  const PointPtr e = building.node(16, 14.5);
  building.join(d, e);
  open();
  const PointPtr position = building.position(4, 8);
  const auto nearest = snapper.perform(position);
  ASSERT_TRUE(nearest);
  memory.previousIntersection() = onSegment(building.position(4, 3), a, b);
  config().setMagneticPathSnappingDistanceThreshold(100);
  const IntersectionPtr current = onNode(d);
  EXPECT_EQ(memory.magneticSnapping(*position, current), current);
}

TEST_F(MagneticPathSnapperTest, AHeldSegmentWithoutEndsIsAFatalError) {
  open();
  const PointPtr position = building.position(4, 4);
  ASSERT_TRUE(snapper.perform(position));
  memory.previousIntersection() =
      std::make_shared<EdgeIntersection>(0, 0, building.position(4, 3), a, b);
  EXPECT_DEATH(memory.magneticSnapping(*position, onNode(b)),
               "a place on an edge does not know the ends of its segment");
}

TEST_F(MagneticPathSnapperTest, AConfigurationThatIsGoneIsAFatalError) {
  open();
  auto lost =
      std::static_pointer_cast<ConfigDependents>(navigation().createNewConfigDependents("lost"));
  MagneticPathSnapper orphan(lost);
  guide(a, {c});
  lost.reset();
  EXPECT_DEATH(orphan.perform(building.position(1, 1)), "is gone");
}

TEST_F(MagneticPathSnapperTest, WhileARouteIsFollowedPositionsGoOntoThatRoute) {
  join();
  const PointPtr side = building.node(2, 7);
  building.join(side, b);
  open();
  const PointPtr position = building.position(1.5, 7.1);
  EXPECT_EQ(plainly(position)->node(), side);
  guide(a, {c});
  const auto onRoute = snapper.perform(position);
  ASSERT_TRUE(onRoute);
  EXPECT_NE(onRoute->node()->identifier(), side->identifier());
}

TEST_F(MagneticPathSnapperTest, ARouteOfAnotherConfigurationDoesNotCount) {
  join();
  const PointPtr side = building.node(2, 7);
  building.join(side, b);
  navigation().addConfig("second");
  open();
  guide(a, {c});
  MagneticPathSnapper second(*navigation().navigationConfigs().find("second"));
  const auto place = second.perform(building.position(1.5, 7.1));
  ASSERT_TRUE(place);
  EXPECT_EQ(place->node(), side);
}

}  // namespace
}  // namespace KorvaniNavigation
