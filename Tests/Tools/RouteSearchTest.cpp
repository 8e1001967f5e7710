#include "Support/RouteSearch.hpp"

#include <gtest/gtest.h>

#include "Building/BuildingGraph.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/InputError.hpp"
#include "Tools/BuildingText.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::destinationAt;
using KorvaniTools::InputError;
using KorvaniTools::makeGraph;
using KorvaniTools::requireRegions;
using KorvaniTools::searchRoute;
using KorvaniTools::Spot;

Spot spot(double latitude, double longitude, std::int64_t level = 0) {
  return {"spot", {latitude, longitude}, level};
}

class RouteSearch : public FacadeFixture {
 protected:
  /// Three nodes 111 m apart on a meridian, the last way with a barrier.
  void SetUp() override {
    useThreads();
    KorvaniTools::provideGraph(
        makeGraph(parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48.001), nodeAt(3, 0, 11, 48.002),
                          edgeOf(1, 2), edgeOf(2, 3, "\"barrierFree\":false")})));
  }
};

TEST_F(RouteSearch, GivesTheRouteWithItsInstructions) {
  const auto answer = searchRoute(spot(48, 11), {spot(48.001, 11)}, false);
  ASSERT_TRUE(answer.route);
  EXPECT_FALSE(answer.direct);
  EXPECT_FALSE(answer.arrived);
  EXPECT_FALSE(answer.route->directions().empty());
  EXPECT_FALSE(navigation().activeRoutingTask());
}

TEST_F(RouteSearch, SaysWhichDestinationWasChosen) {
  const auto answer = searchRoute(spot(48, 11), {spot(48.002, 11), spot(48.001, 11)}, false);
  EXPECT_EQ(answer.destination, 1U);
}

TEST_F(RouteSearch, WithoutBarriersGivesADirectLineWhereThereIsNoWay) {
  const auto answer = searchRoute(spot(48, 11), {spot(48.002, 11)}, true);
  ASSERT_TRUE(answer.route);
  EXPECT_TRUE(answer.direct);
  EXPECT_EQ(answer.route->steps().size(), 1U);
}

TEST_F(RouteSearch, DoesWhatTheConfigurationSaysAboutBarriers) {
  config().setActivateBarrierFreeNavigation(true);
  EXPECT_TRUE(searchRoute(spot(48, 11), {spot(48.002, 11)}, false).direct);
}

TEST_F(RouteSearch, KnowsWhenOneIsThereAlready) {
  config().setTargetProximityDistance(500);
  const auto answer = searchRoute(spot(48, 11), {spot(49, 11), spot(48.001, 11)}, false);
  EXPECT_TRUE(answer.arrived);
  EXPECT_FALSE(answer.route);
  EXPECT_EQ(answer.destination, 1U);
}

TEST_F(RouteSearch, NeedsADestination) {
  EXPECT_THROW(searchRoute(spot(48, 11), {}, false), InputError);
}

TEST_F(RouteSearch, CanBeAskedAgain) {
  EXPECT_TRUE(searchRoute(spot(48, 11), {spot(48.002, 11)}, true).direct);
  EXPECT_FALSE(searchRoute(spot(48, 11), {spot(48.002, 11)}, false).direct);
}

TEST(DestinationAt, IsTheNearestOnTheLevel) {
  EXPECT_EQ(destinationAt({48, 11}, 1, {spot(48, 11, 0), spot(49, 11, 1), spot(48.5, 11, 1)}), 2U);
}

TEST(DestinationAt, IsTheNearestOfAllWhenNoneIsOnTheLevel) {
  EXPECT_EQ(destinationAt({48, 11}, 5, {spot(49, 11, 0), spot(48.1, 11, 1)}), 1U);
}

TEST(DestinationAt, OfEquallyNearOnesIsTheFirst) {
  EXPECT_EQ(destinationAt({48, 11}, 0, {spot(49, 11), spot(49, 11)}), 0U);
}

TEST(RequireRegions, RefusesABuildingWithout) {
  EXPECT_THROW(requireRegions(parsed({placeAt("Desk", 0, 11, 48)})), InputError);
  EXPECT_NO_THROW(requireRegions(parsed({nodeAt(1, 0, 11, 48)})));
}

}  // namespace
}  // namespace KorvaniTest
