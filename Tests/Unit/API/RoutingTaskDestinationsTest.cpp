#include <gtest/gtest.h>

#include <cmath>

#include "Navigation/API/Tasks/RoutingTask.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniNavigation {
namespace {

using KorvaniTest::PointPtr;
using KorvaniTest::TextBuilding;

/// Destinations that change while a corridor of 100 m is walked.
class RoutingTaskDestinationsTest : public KorvaniTest::FlatFacadeFixture {
 protected:
  RoutingTaskDestinationsTest() { provide(building.graph()); }

  /// Feeds a position through the newest handle and does the work.
  void walkTo(const PointPtr& position) {
    deliveries().back().update->updateStartPoint(position);
    pump();
  }

  std::size_t calls() const { return deliveries().size(); }

  TextBuilding building{"A---------B---------C", 5};
};

TEST_F(RoutingTaskDestinationsTest, DestinationsNearThePresentOnesChangeNothing) {
  const auto task = guide(building.point("A"), {building.point("C")});
  task->updateDestinations({building.position(0, 19.5, 0), building.position(0, 20, 0.5)});
  task->updateDestinations({});
  walkTo(building.position(0, 1, 0));
  EXPECT_EQ(lastRoute()->steps().back().end()->identifier(), building.point("C")->identifier());
  EXPECT_EQ(task->possibleDestinationLocations().size(), 1U);
}

TEST_F(RoutingTaskDestinationsTest, OneFarDestinationReplacesTheWholeList) {
  const auto task = guide(building.point("A"), {building.point("C")});
  task->updateDestinations({building.position(0, 19.5, 0), building.point("B")});
  EXPECT_EQ(calls(), 1U) << "nothing is run";
  EXPECT_EQ(task->possibleDestinationLocations().size(), 2U);
  walkTo(building.position(0, 1, 0));
  EXPECT_EQ(building.names(lastRoute()->points()), "?B") << "a new route, to the nearer of both";
}

TEST_F(RoutingTaskDestinationsTest,
       DestinationsThatComeDuringAnExecutionMakeEveryLaterOneSearchAnew) {
  const auto task =
      navigation().routingTask(building.point("A"), {building.point("C")}, recorder());
  task->run();
  ASSERT_TRUE(task->running());
  task->updateDestinations({building.point("B")});
  pump();
  EXPECT_EQ(building.names(lastRoute()->points()), "ABC") << "this execution had begun before";
  walkTo(building.position(0, 1, 0));
  EXPECT_EQ(building.names(lastRoute()->points()), "?B");
  walkTo(building.position(0, 2, 0));
  EXPECT_NEAR(lastRoute()->totalDistance(), 40, 0.01) << "not shortened but searched anew";
}

TEST_F(RoutingTaskDestinationsTest, ADestinationExactlyAsFarAsTheProximityChangesNothing) {
  const auto task = guide(building.point("A"), {building.point("C")});
  const PointPtr near = building.position(0, 19, 0);
  const double distance = near->distanceFrom(*building.point("C"));
  config().setTargetProximityDistance(distance);
  task->updateDestinations({near});
  EXPECT_EQ(task->possibleDestinations(), std::vector<PointPtr>{building.point("C")});
  config().setTargetProximityDistance(std::nextafter(distance, 0));
  task->updateDestinations({near});
  EXPECT_EQ(task->possibleDestinations(), std::vector<PointPtr>{near});
}

TEST_F(RoutingTaskDestinationsTest, NewOnesAreComparedWithThePresentOnesNotWithThoseThatWait) {
  const auto task = guide(building.point("A"), {building.point("C")});
  deliveries().back().update->updateStartPoint(building.position(0, 1, 0));
  ASSERT_TRUE(task->running());
  task->updateDestinations({building.point("B")});
  task->updateDestinations({building.point("C")});  // as at present: changes nothing
  task->updateDestinations({building.position(0, 10.5, 0)});
  pump();
  EXPECT_EQ(task->possibleDestinations().front()->coordinate(), building.coordinate(0, 10.5, 0))
      << "near the one that waited, but far from the present one";
}

}  // namespace
}  // namespace KorvaniNavigation
