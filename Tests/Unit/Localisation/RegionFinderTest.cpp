#include "Navigation/Localisation/RegionFinder.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Support/FacadeFixture.hpp"
#include "Support/Points.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::NavigationGraphCreatedNotification;
using KorvaniNavigation::RegionFinder;
using KorvaniPlatform::NotificationCenter;

using RegionPtr = std::shared_ptr<KRVNavRegion>;
using Regions = RegionFinder::Regions;

constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kHighest = std::numeric_limits<std::int64_t>::max();

/// A region with a rectangle between two corners.
RegionPtr region(std::int64_t level, CLLocationCoordinate2D southWest,
                 CLLocationCoordinate2D northEast) {
  auto made = std::make_shared<KRVNavRegion>(level);
  made->setSouthWestCoordinate(southWest);
  made->setNorthEastCoordinate(northEast);
  return made;
}

/// A region whose rectangle is a square of 10 m with its south-west corner there, in metres.
RegionPtr square(std::int64_t level, double north, double east) {
  return region(level, fromOrigin(north, east), fromOrigin(north + 10, east + 10));
}

std::shared_ptr<KRVNavGraph> graphOf(const Regions& regions) {
  auto graph = std::make_shared<KRVNavGraph>();
  for (const auto& each : regions) graph->add(each);
  return graph;
}

class RegionFinderTest : public FacadeFixture {
 protected:
  /// Searches these regions, on the original graph.
  RegionPtr containing(const Regions& regions, CLLocationCoordinate2D coordinate,
                       std::int64_t level = 0) {
    finder->setRegions(regions);
    return finder->findRegionContaining(coordinate, level, true);
  }
  RegionPtr closeTo(const Regions& regions, CLLocationCoordinate2D coordinate,
                    std::int64_t level = 0) {
    finder->setRegions(regions);
    return finder->findRegionCloseTo(coordinate, level, true);
  }

  static std::size_t observers() {
    return NotificationCenter::defaultCenter().observerCount(NavigationGraphCreatedNotification);
  }

  std::shared_ptr<RegionFinder> finder = std::make_shared<RegionFinder>(bundle());
};

// The list.

TEST_F(RegionFinderTest, HasNoRegionsAndFindsNoneBeforeThereIsAGraph) {
  EXPECT_TRUE(finder->regions().empty());
  finder->updateRegions();
  EXPECT_TRUE(finder->regions().empty());
  EXPECT_EQ(finder->findRegionContaining(kOrigin, 0, true), nullptr);
  EXPECT_EQ(finder->findRegionCloseTo(kOrigin, 0, true), nullptr);
}

TEST_F(RegionFinderTest, SeesTheGraphsRegionsAfterTheNotification) {
  const auto ground = square(0, 0, 0);
  finder->updateRegions();
  navigation().provideGraph(graphOf({ground}));
  EXPECT_TRUE(finder->regions().empty());
  announceGraph();
  EXPECT_EQ(finder->regions(), Regions{ground});
  EXPECT_EQ(finder->findRegionContaining(fromOrigin(5, 5), 0, true), ground);
  EXPECT_EQ(finder->findRegionCloseTo(fromOrigin(50, 50), 0, true), ground);
}

TEST_F(RegionFinderTest, ReadsTheRegionsAtOnceAndWaitsForNothingWhenThereIsAGraph) {
  const Regions regions{square(0, 0, 0), square(1, 0, 0)};
  provide(graphOf(regions));
  const std::size_t before = observers();
  finder->updateRegions();
  EXPECT_EQ(finder->regions(), regions);
  EXPECT_EQ(observers(), before);
}

TEST_F(RegionFinderTest, KeepsObservingSoThatALaterGraphReplacesTheRegions) {
  finder->updateRegions();
  provide(graphOf({square(0, 0, 0)}));
  const auto later = square(3, 0, 0);
  provide(graphOf({later}));
  EXPECT_EQ(finder->regions(), Regions{later});
}

TEST_F(RegionFinderTest, KeepsItsRegionsWhenANotificationComesWithoutAGraph) {
  const auto ground = square(0, 0, 0);
  finder->updateRegions();
  provide(graphOf({ground}));
  navigation().cancelAllTasks();
  announceGraph();
  EXPECT_EQ(finder->regions(), Regions{ground});
}

TEST_F(RegionFinderTest, ForgetsItsRegionsWhenItIsUpdatedWithoutAGraph) {
  finder->setRegions({square(0, 0, 0)});
  finder->updateRegions();
  EXPECT_TRUE(finder->regions().empty());
}

TEST_F(RegionFinderTest, KeepsAListOfItsOwn) {
  const auto ground = square(0, 0, 0);
  const auto graph = graphOf({ground});
  provide(graph);
  finder->updateRegions();
  graph->add(square(1, 0, 0));
  EXPECT_EQ(finder->regions(), Regions{ground});
}

TEST_F(RegionFinderTest, LeavesTheNotificationCentreWhenItIsDestroyed) {
  const std::size_t before = observers();
  finder->updateRegions();
  EXPECT_EQ(observers(), before + 1);
  finder.reset();
  EXPECT_EQ(observers(), before);
  announceGraph();
}

TEST_F(RegionFinderTest, DoesNotKeepItsConfigurationAlive) {
  auto other = std::make_shared<ConfigDependents>("other", std::make_shared<Config>());
  const RegionFinder its(other);
  EXPECT_EQ(its.configDependents(), other);
  other.reset();
  EXPECT_EQ(its.configDependents(), nullptr);
}

// The region that contains a coordinate.

TEST_F(RegionFinderTest, ContainingFindsTheRegionOfTheLevel) {
  const auto ground = square(0, 0, 0);
  const auto upper = square(1, 0, 0);
  EXPECT_EQ(containing({ground, upper}, fromOrigin(5, 5), 1), upper);
  EXPECT_EQ(containing({ground, upper}, fromOrigin(5, 5), 2), nullptr);
}

TEST_F(RegionFinderTest, ContainingFindsNothingOutsideEveryRectangle) {
  EXPECT_EQ(containing({square(0, 0, 0), square(0, 20, 0)}, fromOrigin(15, 5)), nullptr);
}

TEST_F(RegionFinderTest, ContainingCountsTheBorder) {
  const auto only = region(0, {48, 11}, {48.5, 11.5});
  EXPECT_EQ(containing({only}, {48, 11}), only);
  EXPECT_EQ(containing({only}, {48.5, 11.5}), only);
  EXPECT_EQ(containing({only}, {48.25, 11.5}), only);
  EXPECT_EQ(containing({only}, {48.25, std::nextafter(11.5, 12)}), nullptr);
}

TEST_F(RegionFinderTest, ContainingTakesTheRectangleThatTheCornersSpanWhicheverWayRound) {
  const auto swapped = region(0, {48.5, 11}, {48, 11.5});
  EXPECT_EQ(containing({swapped}, {48.25, 11.25}), swapped);
}

TEST_F(RegionFinderTest, ContainingTakesTheFirstOfOverlappingRegions) {
  const auto first = square(0, 0, 0);
  const auto second = square(0, 5, 5);
  EXPECT_EQ(containing({first, second}, fromOrigin(7, 7)), first);
  EXPECT_EQ(containing({second, first}, fromOrigin(7, 7)), second);
}

// The region nearest to a coordinate.

TEST_F(RegionFinderTest, CloseToFindsTheRegionOfTheLevelWithTheNearestCorner) {
  const auto west = square(0, 0, 0);
  const auto east = square(0, 0, 100);
  EXPECT_EQ(closeTo({west, east}, fromOrigin(20, 20)), west);
  EXPECT_EQ(closeTo({west, east}, fromOrigin(-10, 90)), east);
}

TEST_F(RegionFinderTest, CloseToLooksAtTheSouthWestAndNorthEastCornersOnly) {
  // The coordinate stands at the wide region's north-west corner.
  const auto wide = region(0, fromOrigin(0, 0), fromOrigin(40, 40));
  const auto small = square(0, 50, -30);
  EXPECT_EQ(closeTo({wide, small}, fromOrigin(41, -1)), small);
}

TEST_F(RegionFinderTest, CloseToSkipsTheNorthEastCornerWhenTheSouthWestOneIsAnImprovement) {
  // Its north-east corner is 1 m away, its south-west one 99 m.
  const auto wide = region(0, fromOrigin(0, 0), fromOrigin(0, 100));
  const auto small = region(0, fromOrigin(50, 99), fromOrigin(60, 109));
  EXPECT_EQ(closeTo({wide, small}, fromOrigin(0, 99)), small);
  EXPECT_EQ(closeTo({small, wide}, fromOrigin(0, 99)), wide);
}

TEST_F(RegionFinderTest, CloseToKeepsTheFirstOfEquallyNearRegions) {
  const auto first = square(0, 0, 0);
  const auto second = square(0, 0, 0);
  EXPECT_EQ(closeTo({first, second}, fromOrigin(-20, -20)), first);
  EXPECT_EQ(closeTo({second, first}, fromOrigin(-20, -20)), second);
}

TEST_F(RegionFinderTest, CloseToFindsTheRegionOfTheNearestLevelWhenTheLevelHasNone) {
  const auto third = square(3, 0, 0);
  const auto fifth = square(5, 100, 100);
  EXPECT_EQ(closeTo({third, fifth}, fromOrigin(0, 0), 6), fifth);
  EXPECT_EQ(closeTo({fifth, third}, fromOrigin(100, 100), -7), third);
}

TEST_F(RegionFinderTest, CloseToTakesTheFirstOfEqualLevelGaps) {
  const auto below = square(1, 0, 0);
  const auto above = square(3, 0, 0);
  EXPECT_EQ(closeTo({below, above}, fromOrigin(0, 0), 2), below);
  EXPECT_EQ(closeTo({above, below}, fromOrigin(0, 0), 2), above);
}

TEST_F(RegionFinderTest, CloseToPrefersADistantRegionOfTheLevelWhereverItStandsInTheList) {
  const auto near = square(1, 0, 0);
  const auto distant = square(0, 5000, 5000);
  EXPECT_EQ(closeTo({near, distant}, fromOrigin(5, 5)), distant);
  EXPECT_EQ(closeTo({distant, near}, fromOrigin(5, 5)), distant);
}

TEST_F(RegionFinderTest, CloseToStandsLevelsAtBothEndsOfTheIntegers) {
  const auto highest = square(kHighest, 0, 0);
  const auto ground = square(0, 0, 0);
  const auto lowest = square(kLowest, 0, 0);
  EXPECT_EQ(closeTo({highest}, kOrigin, kLowest), highest);
  EXPECT_EQ(closeTo({highest, ground}, kOrigin, kLowest), ground);
  EXPECT_EQ(closeTo({lowest, ground}, kOrigin, kHighest), ground);
  EXPECT_EQ(closeTo({ground, highest, lowest}, kOrigin, kLowest), lowest);
}

TEST_F(RegionFinderTest, StandsCoordinatesThatAreNotNumbers) {
  const auto ground = square(0, 0, 0);
  const auto upper = square(1, 0, 0);
  const CLLocationCoordinate2D nowhere{kNotANumber, kNotANumber};
  EXPECT_EQ(containing({ground, upper}, nowhere), nullptr);
  EXPECT_EQ(closeTo({ground}, nowhere), nullptr);
  EXPECT_EQ(closeTo({ground, upper}, nowhere, 2), upper);
  const auto broken = region(0, nowhere, nowhere);
  EXPECT_EQ(containing({broken}, kOrigin), nullptr);
  EXPECT_EQ(closeTo({broken, ground}, kOrigin), ground);
}

TEST_F(RegionFinderTest, ForPrefersTheRegionThatContainsTheCoordinateToNearerCorners) {
  const auto wide = region(0, fromOrigin(0, 0), fromOrigin(100, 100));
  const auto small = square(0, 60, 101);
  finder->setRegions({small, wide});
  EXPECT_EQ(finder->findRegionCloseTo(fromOrigin(60, 99), 0, true), small);
  EXPECT_EQ(finder->findRegionFor(fromOrigin(60, 99), 0, true), wide);
  EXPECT_EQ(finder->findRegionFor(fromOrigin(75, 115), 0, true), small);
}

// On the route that is being followed.

class RegionFinderOnARoute : public RegionFinderTest {
 protected:
  RegionFinderOnARoute() {
    building.addLevel(0, "A---------B").addLevel(1, "C---------D");
    provide(building.graph());
    finder->updateRegions();
  }

  TextBuilding building;
};

TEST_F(RegionFinderOnARoute, SearchesTheRoutesRegionsOnlyUnlessToldToUseTheOriginalGraph) {
  const auto task = guide(building.point("A"), {building.point("B")});
  const auto routeRegions = task->graphForRoute()->regions();
  ASSERT_EQ(routeRegions.size(), 1U);
  ASSERT_NE(routeRegions[0], building.region(0));
  const auto place = building.coordinate(1, 5, 0);
  EXPECT_EQ(finder->findRegionCloseTo(place, 1, false), routeRegions[0]);
  EXPECT_EQ(finder->findRegionContaining(place, 1, false), nullptr);
  EXPECT_EQ(finder->findRegionCloseTo(place, 1, true), building.region(1));
  EXPECT_EQ(finder->findRegionContaining(place, 1, true), building.region(1));
}

TEST_F(RegionFinderOnARoute, SearchesTheKeptRegionsWhenNoRouteIsActive) {
  const auto place = building.coordinate(1, 5, 0);
  EXPECT_EQ(finder->findRegionContaining(place, 1, false), building.region(1));
  EXPECT_EQ(finder->findRegionCloseTo(place, 1, false), building.region(1));
}

TEST_F(RegionFinderOnARoute, SearchesTheProvidedGraphBeforeTheFirstRoute) {
  finder->setRegions({});
  const auto task = navigation().routingTask(building.point("A"), {building.point("B")}, {});
  const auto place = building.coordinate(1, 5, 0);
  EXPECT_EQ(finder->findRegionContaining(place, 1, false), building.region(1));
  EXPECT_EQ(finder->findRegionContaining(place, 1, true), nullptr);
}

TEST_F(RegionFinderOnARoute, SearchesTheKeptRegionsWhenThereIsNeitherRouteNorGraph) {
  navigation().cancelAllTasks();
  const auto task = navigation().routingTask(building.point("A"), {building.point("B")}, {});
  EXPECT_EQ(finder->findRegionContaining(building.coordinate(1, 5, 0), 1, false),
            building.region(1));
}

}  // namespace
}  // namespace KorvaniTest
