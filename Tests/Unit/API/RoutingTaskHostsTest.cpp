// Positions on a route of which the host has more than the latest publication, or whose building
// the host has changed.

#include <gtest/gtest.h>

#include <chrono>
#include <utility>

#include "Navigation/Snapping/MagneticPathSnapper.hpp"
#include "Platform/ManualClock.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniNavigation {
namespace {

using KorvaniTest::PointPtr;
using KorvaniTest::TextBuilding;

/// A corridor A-B-C of 100 m, and behind a wall one from D to E, which is joined with it at both
/// ends. Behind another wall a yard from which nothing is seen.
class RoutingTaskHostsTest : public KorvaniTest::FlatFacadeFixture {
 protected:
  RoutingTaskHostsTest() {
    building.connect("D", "A").connect("E", "C");
    provide(building.graph());
  }

  void walkTo(const PointPtr& position) {
    deliveries().back().update->updateStartPoint(position);
    pump();
  }

  /// Whether the last publication is the first route, shortened, and not a new one.
  bool isFirstRoute() const {
    return lastRoute()->points() == deliveries().front().route->points();
  }

  std::shared_ptr<KRVNavObstacle> wall(double column, double row, double toColumn, double toRow) {
    return std::make_shared<KRVNavObstacle>(std::vector<CLLocationCoordinate2D>{
        building.coordinate(0, column, row), building.coordinate(0, toColumn, toRow)});
  }

  const PointPtr& point(const char* name) const { return building.point(name); }

  TextBuilding building{R"(
A---------B---------C

#####################

D-------------------E

#####################

.....................)",
                        5};
};

TEST_F(RoutingTaskHostsTest, AWallThatTheHostPutsIntoTheRoutesGraphHidesTheRoute) {
  const auto task = guide(point("A"), {point("C")});
  const PointPtr position = building.position(0, 4, 1);
  const auto graph = task->graphForRoute();
  std::as_const(*graph).regions()[0]->addObstacle(wall(-3, 0.5, 24, 0.5));
  walkTo(position);
  EXPECT_FALSE(isFirstRoute());
}

TEST_F(RoutingTaskHostsTest, AWallInTheGraphOfAnEarlierRouteDoesNotCount) {
  const auto task = guide(point("A"), {point("C")});
  const auto graph = task->graphForRoute();
  walkTo(building.position(0, 2, 0));
  std::as_const(*graph).regions()[0]->addObstacle(wall(-3, 0.5, 24, 0.5));
  walkTo(building.position(0, 4, 1));
  EXPECT_TRUE(isFirstRoute());
  EXPECT_NEAR(lastRoute()->remainingDistance(), 80, 0.01);
}

TEST_F(RoutingTaskHostsTest, AShortenedRouteStartsAtTheNodeOfTheGraphThatTheHostHolds) {
  const auto task = guide(point("A"), {point("C")});
  const auto graph = task->graphForRoute();
  walkTo(point("B"));
  EXPECT_TRUE(isFirstRoute());
  const auto start = lastRoute()->steps()[0].start();
  EXPECT_EQ(start, graph->nodeWithIdentifier(point("B")->identifierNumber()));
  EXPECT_NE(start, point("B"));
}

// D and B count as one point, of which the route's graph has the later one: from where the route
// begins, A is the only one in sight.
TEST_F(RoutingTaskHostsTest, ARouteThatMeetsAPointTwiceIsFollowedOnItsGraph) {
  point("B")->setIdentifier(point("D")->identifier());
  guide(point("D"), {point("C")});
  ASSERT_EQ(building.names(lastRoute()->points()), "DABC");
  walkTo(building.position(0, -1, 4));
  EXPECT_TRUE(isFirstRoute());
  EXPECT_NEAR(lastRoute()->remainingDistance(), 100, 0.01);
  walkTo(building.position(0, 12, 0));
  EXPECT_TRUE(isFirstRoute());
  EXPECT_NEAR(lastRoute()->remainingDistance(), 40, 0.01);
}

// What the position before it has started must not end the search of the next one.
TEST_F(RoutingTaskHostsTest, TheTimeOfAPositionThatSeesNothingIsNotTakenFromTheNextOne) {
  const auto clock = std::make_shared<KorvaniPlatform::ManualClock>();
  KorvaniPlatform::setClock(clock);
  guide(point("A"), {point("C")});
  walkTo(building.position(0, 4, 8));
  EXPECT_TRUE(isFirstRoute());
  clock->advance(std::chrono::seconds(11));
  pump();
  walkTo(point("D"));
  EXPECT_EQ(building.names(lastRoute()->points()), "DABC");
  KorvaniPlatform::setClock(nullptr);
}

TEST_F(RoutingTaskHostsTest, WithoutAGraphARouteStaysAsItIs) {
  guide(point("A"), {point("C")});
  deliveries().back().update->updateStartPoint(building.position(0, 4, 0));
  navigation().provideGraph(nullptr);
  pump();
  ASSERT_EQ(deliveries().size(), 2U);
  EXPECT_TRUE(isFirstRoute());
  EXPECT_NEAR(lastRoute()->remainingDistance(), 100, 0.01);
}

TEST_F(RoutingTaskHostsTest, WithoutAGraphNothingIsSnappedToTheRoute) {
  guide(point("A"), {point("C")});
  MagneticPathSnapper snapper(bundle());
  const PointPtr position = building.position(0, 4, 0.1);
  EXPECT_TRUE(snapper.perform(position));
  deliveries().back().update->updateStartPoint(position);
  pump();
  navigation().provideGraph(nullptr);
  EXPECT_FALSE(snapper.perform(position));
}

// The distances to a point are measured from its location, which its coordinate need not be: so a
// place on the route can lie on no step. And no other route is found where nothing is seen.
TEST_F(RoutingTaskHostsTest, ARouteThatIsLostInPlaceIsEmptyAndNoArrival) {
  guide(point("A"), {point("B")});
  point("A")->setLocation(CLLocation(building.coordinate(0, 0, -100)));
  for (const double row : {-0.5, 0.5}) building.region(0)->addObstacle(wall(-3, row, 24, row));
  building.region(0)->addObstacle(wall(3.9, -0.5, 3.9, 0.5));
  building.region(0)->addObstacle(wall(4.1, -0.5, 4.1, 0.5));
  walkTo(building.position(0, 4, 0));
  ASSERT_EQ(deliveries().size(), 2U);
  EXPECT_FALSE(deliveries().back().finished);
  ASSERT_TRUE(lastRoute());
  EXPECT_TRUE(lastRoute()->steps().empty());
  EXPECT_TRUE(isFirstRoute());
}

}  // namespace
}  // namespace KorvaniNavigation
