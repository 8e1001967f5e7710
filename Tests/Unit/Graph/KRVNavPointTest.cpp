#include "Navigation/Graph/KRVNavPoint.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "Navigation/Graph/GraphSettings.hpp"
#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Platform/ManualClock.hpp"
#include "Support/Points.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniNavigation {
namespace {

using namespace KorvaniTest;

double ground(const KRVNavPoint& a, const KRVNavPoint& b) {
  return KorvaniPlatform::greatCircleDistance(a.coordinate(), b.coordinate());
}

TEST(KRVNavPoint, WithoutIdentifierHasMinusOne) {
  const KRVNavPoint point({48, 11}, 2);
  EXPECT_EQ(point.identifier(), -1);
  EXPECT_EQ(point.identifierNumber(), -1);
  EXPECT_EQ(point.level(), 2);
}

TEST(KRVNavPoint, KeepsWhatItIsMadeWith) {
  const KRVNavPoint point({48.5, -11.25}, -3, 42);
  EXPECT_EQ(point.coordinate(), (CLLocationCoordinate2D{48.5, -11.25}));
  EXPECT_EQ(point.level(), -3);
  EXPECT_EQ(point.identifier(), 42);
  EXPECT_EQ(point.identifierNumber(), 42);
  EXPECT_EQ(point.region(), nullptr);
}

TEST(KRVNavPoint, LocationCarriesTheLevelNumberAsAltitudeAndWasTakenNow) {
  const auto clock = std::make_shared<KorvaniPlatform::ManualClock>();
  KorvaniPlatform::setClock(clock);
  clock->advance(std::chrono::seconds(90));
  const KRVNavPoint point({48.5, 11.5}, 7, 1);
  const Date made = clock->date();
  clock->advance(std::chrono::seconds(5));
  KorvaniPlatform::setClock(nullptr);

  const CLLocation location = point.location();
  EXPECT_EQ(location.coordinate(), point.coordinate());
  EXPECT_EQ(location.altitude(), 7.0);
  EXPECT_EQ(location.horizontalAccuracy(), 0.0);
  EXPECT_EQ(location.verticalAccuracy(), 0.0);
  EXPECT_EQ(location.timestamp(), made);
}

TEST(KRVNavPoint, LocationStaysWhereItWasMade) {
  KRVNavPoint point({48, 11}, 1);
  point.setCoordinate({50, 12});
  point.setLevel(5);
  EXPECT_EQ(point.coordinate(), (CLLocationCoordinate2D{50, 12}));
  EXPECT_EQ(point.location().coordinate(), (CLLocationCoordinate2D{48, 11}));
  EXPECT_EQ(point.location().altitude(), 1.0);
}

TEST(KRVNavPoint, DistancesAreMeasuredBetweenLocations) {
  KRVNavPoint point({48, 11}, 0);
  const KRVNavPoint other({48.001, 11}, 0);
  point.setLocation(CLLocation(CLLocationCoordinate2D{48.001, 11}));
  EXPECT_EQ(point.distanceFrom(other), graphSettings().levelHeight());
}

TEST(KRVNavPoint, PropertiesAreSetOneByOne) {
  KRVNavPoint point({48, 11}, 0, 3);
  point.setIdentifier(8);
  EXPECT_EQ(point.identifier(), 8);
  EXPECT_EQ(point.identifierNumber(), 3);
  point.setIdentifierNumber(8);
  EXPECT_EQ(point.identifierNumber(), 8);
}

TEST(KRVNavPoint, DistanceToItselfIsTheLevelHeight) {
  const KRVNavPoint point({48, 11}, 4, 1);
  EXPECT_EQ(point.distanceFrom(point), 3.0);
}

TEST(KRVNavPoint, DistanceJoinsGroundAndLevelHeightOnOneLevel) {
  const auto a = at(kOrigin);
  const auto b = at(metresNorth(kOrigin, 4));
  const double d = ground(*a, *b);
  EXPECT_EQ(a->distanceFrom(*b), std::sqrt(d * d + 9.0));
  EXPECT_NEAR(a->distanceFrom(*b), 5.0, 1e-6);
}

TEST(KRVNavPoint, DistanceCountsOneLevelHeightHoweverManyLevelsLieBetween) {
  const auto a = at(kOrigin, 0);
  const auto next = at(metresEast(kOrigin, 40), 1);
  const auto far = at(metresEast(kOrigin, 40), 9);
  const auto same = at(metresEast(kOrigin, 40), 0);
  EXPECT_EQ(a->distanceFrom(*next), a->distanceFrom(*same));
  EXPECT_EQ(a->distanceFrom(*far), a->distanceFrom(*same));
}

TEST(KRVNavPoint, IsNearBelowFourMetresOfGround) {
  const auto here = at(kOrigin);
  EXPECT_TRUE(here->locatedNearPoint(*here));
  EXPECT_TRUE(here->locatedNearPoint(*at(metresNorth(kOrigin, 3.99))));
  EXPECT_FALSE(here->locatedNearPoint(*at(metresNorth(kOrigin, 4.01))));
}

// A point on the meridian through (0, 0) whose distance from there is exactly five metres. Near
// the equator coordinates are fine enough to have one.
PointPtr exactlyFiveMetresAway(const KRVNavPoint& start) {
  double latitude = degreesOf(4);
  for (int step = 0; step < 2000; ++step) latitude = std::nextafter(latitude, 0.0);
  for (int step = 0; step < 4000; ++step) {
    const auto candidate = at(latitude, 0);
    if (start.distanceFrom(*candidate) == 5.0) return candidate;
    latitude = std::nextafter(latitude, 1.0);
  }
  return nullptr;
}

TEST(KRVNavPoint, IsNotNearAtExactlyTheProximityDistance) {
  const auto start = at(0, 0);
  const auto end = exactlyFiveMetresAway(*start);
  ASSERT_NE(end, nullptr);
  EXPECT_EQ(start->distanceFrom(*end), graphSettings().targetProximityDistance());
  EXPECT_FALSE(start->locatedNearPoint(*end));
}

TEST(KRVNavPoint, IsNotNearOnAnotherLevelEvenOnTopOfIt) {
  EXPECT_FALSE(at(kOrigin, 0)->locatedNearPoint(*at(kOrigin, 1)));
  EXPECT_TRUE(at(kOrigin, 1)->locatedNearPoint(*at(kOrigin, 1)));
}

TEST(KRVNavPoint, FirstNearPointInOrderIsTakenNotTheNearest) {
  const auto here = at(kOrigin);
  const auto far = at(metresNorth(kOrigin, 50));
  const auto near = at(metresNorth(kOrigin, 3));
  const auto nearest = at(metresNorth(kOrigin, 1));
  EXPECT_EQ(here->locatedNearPoints({far, near, nearest}), near);
  EXPECT_EQ(here->locatedNearPoints({far, nearest, near}), nearest);
}

TEST(KRVNavPoint, NoNearPointIsAbsent) {
  const auto here = at(kOrigin);
  EXPECT_EQ(here->locatedNearPoints({}), nullptr);
  EXPECT_EQ(here->locatedNearPoints({at(metresNorth(kOrigin, 50)), at(kOrigin, 1)}), nullptr);
}

TEST(KRVNavPoint, PointsWithoutIdentifierEqualThemselvesOnly) {
  const auto a = at(48, 11);
  const auto b = at(48, 11);
  EXPECT_TRUE(a->isEqual(*a));
  EXPECT_FALSE(a->isEqual(*b));
}

TEST(KRVNavPoint, PointsOfTheSameIdentifierAreEqualWhereverTheyLie) {
  const auto a = at(48, 11, 0, 7);
  const auto b = at(49, 12, 3, 7);
  EXPECT_TRUE(a->isEqual(*b));
  EXPECT_TRUE(b->isEqual(*a));
  EXPECT_FALSE(a->isEqual(*at(48, 11, 0, 8)));
  EXPECT_TRUE(at(48, 11, 0, 0)->isEqual(*at(48, 11, 0, 0)));
}

TEST(KRVNavPoint, ANegativeIdentifierOnEitherSideMeansIdentity) {
  const auto named = at(48, 11, 0, 7);
  const auto unnamed = at(48, 11, 0, -1);
  EXPECT_FALSE(named->isEqual(*unnamed));
  EXPECT_FALSE(unnamed->isEqual(*named));
  EXPECT_FALSE(at(48, 11, 0, -2)->isEqual(*at(48, 11, 0, -2)));
}

TEST(KRVNavPoint, NothingEqualsNoPoint) {
  const auto point = at(48, 11, 0, 7);
  EXPECT_FALSE(point->isEqual(nullptr));
  EXPECT_TRUE(point->isEqual(point.get()));
}

TEST(KRVNavPoint, EqualPointsHashByIdentity) {
  const auto a = at(48, 11, 0, 7);
  const auto b = at(48, 11, 0, 7);
  EXPECT_NE(a->hash(), b->hash());
  EXPECT_EQ(a->hash(), a->hash());
}

TEST(KRVNavPoint, NeighbourEdgesComeInTheGraphsOrder) {
  TextBuilding building("A B C D");
  building.connect("A", "C", {.oneWay = true}).connect("A", "B", {.oneWay = true});
  building.connect("A", "D").connect("A", "C", {.distance = 9, .oneWay = true});
  const auto edges = building.point("A")->neighbourEdges();
  ASSERT_EQ(edges.size(), 3u);
  EXPECT_EQ(edges[0]->end(), building.point("C"));
  EXPECT_EQ(edges[0]->distance(), 9);
  EXPECT_EQ(edges[1]->end(), building.point("B"));
  EXPECT_EQ(edges[2]->end(), building.point("D"));
}

TEST(KRVNavPoint, WithoutOutgoingEdgeHasNoNeighbourEdges) {
  TextBuilding building("A B");
  building.connect("A", "B", {.oneWay = true});
  EXPECT_TRUE(building.point("B")->neighbourEdges().empty());
}

TEST(KRVNavPoint, WithoutRegionHasNoNeighbourEdges) {
  TextBuilding building("A-B");
  const auto stranger = at(48, 11, 0, building.point("A")->identifier());
  EXPECT_TRUE(stranger->neighbourEdges().empty());
  EXPECT_EQ(building.point("A")->neighbourEdges().size(), 1u);
}

TEST(KRVNavPoint, WhoseGraphIsGoneHasNoNeighbourEdges) {
  auto graph = std::make_shared<KRVNavGraph>();
  const auto region = std::make_shared<KRVNavRegion>(0);
  graph->add(region);
  const auto a = at(48, 11, 0, 1);
  const auto b = at(48, 11, 0, 2);
  region->addNode(a);
  region->addNode(b);
  graph->addEdge(std::make_shared<KRVNavEdge>(a, b), *a, *b);
  EXPECT_EQ(a->neighbourEdges().size(), 1u);
  graph.reset();
  EXPECT_TRUE(a->neighbourEdges().empty());
}

TEST(KRVNavPoint, TakesItsEdgesFromTheGraphOfItsPresentRegion) {
  TextBuilding first("A-B");
  TextBuilding second("C-D\n|\nE");
  const auto point = first.point("A");
  ASSERT_EQ(point->identifier(), second.point("C")->identifier());
  point->setRegion(second.region(0));
  ASSERT_EQ(point->neighbourEdges().size(), 2u);
  EXPECT_EQ(point->neighbourEdges()[1]->end(), second.point("E"));
}

TEST(KRVNavPoint, DoesNotKeepItsRegionAlive) {
  const auto point = at(48, 11, 0, 1);
  auto region = std::make_shared<KRVNavRegion>(0);
  region->addNode(point);
  EXPECT_EQ(point->region(), region);
  region.reset();
  EXPECT_EQ(point->region(), nullptr);
}

}  // namespace
}  // namespace KorvaniNavigation
