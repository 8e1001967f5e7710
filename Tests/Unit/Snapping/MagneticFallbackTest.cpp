#include "Unit/Snapping/SnapperFixture.hpp"

namespace KorvaniNavigation {
namespace {

using KorvaniTest::IntersectionPtr;
using KorvaniTest::PointPtr;

/// A long straight way to the north-east, on which a place is held, and one that crosses it.
/// Nearest places come ready-made, since those that the engine finds do not know their segment.
/// No edges lead on from the ends of the ways, so that the held segment stays as long as it is.
class MagneticFallbackTest : public KorvaniTest::SnapperFixture {
 protected:
  MagneticFallbackTest() {
    config().setMagneticPathSnappingDistanceThreshold(50);
    open();
    static_cast<void>(snapper.perform(position));  // it maps with the walls of this position
    hold();
  }

  /// Holds a place on the whole way; counted last was one on it, too.
  void hold() {
    held = onSegment(building.position(4, 3), a, c);
    memory.previousIntersection() = held;
    memory.lastCounted() = onWay();
    memory.fallbackCounter() = 0;
  }

  IntersectionPtr onWay() const { return onSegment(building.position(12, 9), a, c); }
  IntersectionPtr onCrossing() const { return onSegment(building.position(8, 7), left, right); }

  /// Whether the held place is kept when this one is the nearest.
  bool keepsAgainst(const IntersectionPtr& current) {
    return memory.magneticSnapping(*position, current) == held;
  }

  const PointPtr a = building.node(0, 0);
  const PointPtr b = building.node(8, 6);
  const PointPtr c = building.node(16, 12);
  const PointPtr left = building.node(12, 2);
  const PointPtr right = building.node(4, 12);
  const PointPtr position = building.position(8.5, 6);
  std::shared_ptr<EdgeIntersection> held;
};

TEST_F(MagneticFallbackTest, ByDefaultFourCountedPlacesInARowAreSurvivedAndTheFifthIsNot) {
  for (int count = 1; count <= 4; ++count) {
    EXPECT_TRUE(keepsAgainst(onWay()));
    EXPECT_EQ(memory.fallbackCounter(), count);
  }
  const IntersectionPtr fifth = onWay();
  EXPECT_FALSE(keepsAgainst(fifth));
  EXPECT_EQ(memory.previousIntersection(), fifth);
  EXPECT_EQ(memory.lastCounted(), fifth);
  EXPECT_EQ(memory.fallbackCounter(), 0);
}

TEST_F(MagneticFallbackTest, AThresholdOfOneIsReachedByTheFirstCountedPlace) {
  config().setMagneticPathSnappingFallbackThreshold(1);
  EXPECT_FALSE(keepsAgainst(onWay()));
}

TEST_F(MagneticFallbackTest, ANodeStartsTheCountAnew) {
  memory.fallbackCounter() = 4;
  EXPECT_TRUE(keepsAgainst(onNode(b)));
  EXPECT_EQ(memory.fallbackCounter(), 0);
}

TEST_F(MagneticFallbackTest, APlaceOffTheHeldLineStartsTheCountAnewAndIsNotRemembered) {
  memory.fallbackCounter() = 4;
  const IntersectionPtr counted = memory.lastCounted();
  EXPECT_TRUE(keepsAgainst(onCrossing()));
  EXPECT_EQ(memory.fallbackCounter(), 0);
  EXPECT_EQ(memory.lastCounted(), counted);
}

TEST_F(MagneticFallbackTest, AnotherLineThanTheOneCountedLastCountsAsTheFirst) {
  memory.fallbackCounter() = 3;
  memory.lastCounted() = onCrossing();
  const IntersectionPtr current = onWay();
  EXPECT_TRUE(keepsAgainst(current));
  EXPECT_EQ(memory.fallbackCounter(), 1);
  EXPECT_EQ(memory.lastCounted(), current);
}

TEST_F(MagneticFallbackTest, NothingIsCountedWhileTheHeldPlaceCannotBeReached) {
  memory.previousIntersection() = onNode(building.node(4, 3, 1));
  memory.fallbackCounter() = 2;
  const IntersectionPtr current = std::make_shared<EdgeIntersection>(0, 0, position, a, b);
  EXPECT_FALSE(keepsAgainst(current)) << "it does not even have to know its segment";
  EXPECT_EQ(memory.fallbackCounter(), 0);
}

TEST_F(MagneticFallbackTest, ANearestPlaceThatDoesNotKnowItsSegmentIsAFatalError) {
  EXPECT_DEATH(keepsAgainst(std::make_shared<EdgeIntersection>(0, 0, position, a, b)),
               "a place on an edge does not know the ends of its segment");
}

TEST_F(MagneticFallbackTest, AHeldNodeAgainstAPlaceOnAnEdgeIsAFatalError) {
  knowWalls();
  memory.previousIntersection() = onNode(b);
  EXPECT_DEATH(keepsAgainst(onWay()), "two places are compared that do not both lie on an edge");
}

TEST_F(MagneticFallbackTest, APlaceThatIsNeitherNodeNorEdgeIsAFatalError) {
  EXPECT_DEATH(keepsAgainst(std::make_shared<Intersection>(b, 0, 0)),
               "two places are compared that do not both lie on an edge");
}

TEST_F(MagneticFallbackTest, AMissingCountedPlaceIsAFatalError) {
  memory.lastCounted() = nullptr;
  EXPECT_DEATH(keepsAgainst(onWay()), "two places are compared that do not both lie on an edge");
}

}  // namespace
}  // namespace KorvaniNavigation
