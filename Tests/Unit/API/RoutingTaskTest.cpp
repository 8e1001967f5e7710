#include "Navigation/API/Tasks/RoutingTask.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <regex>

#include "Common/Logging.hpp"
#include "Navigation/Directions/Directions.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniNavigation {
namespace {

using KorvaniPlatform::NotificationCenter;
using KorvaniTest::Connection;
using KorvaniTest::PointPtr;
using KorvaniTest::TextBuilding;

/// Distances are plain ground distances here, so that drawn metres are metres.
class RoutingTaskTest : public KorvaniTest::FacadeFixture {
 protected:
  RoutingTaskTest() { config().setLevelHeight(0); }

  /// Feeds a position through the newest handle and does the work.
  void walkTo(const PointPtr& position) {
    deliveries().back().update->updateStartPoint(position);
    pump();
  }

  std::size_t calls() const { return deliveries().size(); }
};

/// Two rooms along a corridor of 100 m: A in the west, B in the middle, C in the east. A wall
/// hides the corridor from the yard in the south, where D stands.
TextBuilding corridor() {
  TextBuilding building(R"(
A---------B---------C

#####################

D                    )",
                        5);
  return building;
}

TEST_F(RoutingTaskTest, WithoutDestinationsThereIsNoTask) {
  EXPECT_FALSE(RoutingTask::create(bundle(), KorvaniTest::at(48, 11), {}, recorder()));
}

TEST_F(RoutingTaskTest, StartsIdleWithoutDirectionsAndWithTheConfigurationsBarrierFreeness) {
  config().setActivateBarrierFreeNavigation(true);
  const auto task =
      RoutingTask::create(bundle(), KorvaniTest::at(48, 11), {KorvaniTest::at(48, 12)}, recorder());
  EXPECT_TRUE(task->barrierFree());
  EXPECT_FALSE(task->directions());
  EXPECT_FALSE(task->running());
  EXPECT_TRUE(task->async());
  EXPECT_FALSE(task->isDirectLine());
  EXPECT_EQ(task->lastExecutionDuration(), 0.0);
  EXPECT_EQ(task->configDependents(), bundle());
  EXPECT_EQ(task->description().rfind("KorvaniNavigation.RoutingTask, identifier: ", 0), 0U);
}

TEST_F(RoutingTaskTest, ListsTheLocationsOfItsDestinationsInOrder) {
  const auto task =
      RoutingTask::create(bundle(), KorvaniTest::at(48, 11),
                          {KorvaniTest::at(48, 12, 1), KorvaniTest::at(49, 13, 2)}, recorder());
  const auto locations = task->possibleDestinationLocations();
  ASSERT_EQ(locations.size(), 2U);
  EXPECT_EQ(locations[0].coordinate().longitude, 12);
  EXPECT_EQ(locations[1].altitude(), 2);
}

TEST_F(RoutingTaskTest, KeepsTheHostsInformationUntouched) {
  const auto task =
      RoutingTask::create(bundle(), KorvaniTest::at(48, 11), {KorvaniTest::at(48, 12)}, recorder());
  EXPECT_FALSE(task->taskUserInfo());
  const auto info = std::make_shared<int>(7);
  task->setTaskUserInfo(info);
  EXPECT_EQ(task->taskUserInfo(), info);
}

TEST_F(RoutingTaskTest, TheFirstPublicationCarriesAHandleTheRouteAndNoDestination) {
  const TextBuilding building = corridor();
  provide(building.graph());
  const auto task = guide(building.point("A"), {building.point("C")});
  ASSERT_EQ(calls(), 1U);
  const auto& delivery = deliveries().back();
  EXPECT_TRUE(delivery.update);
  EXPECT_FALSE(delivery.finished);
  EXPECT_FALSE(delivery.destination);
  ASSERT_TRUE(delivery.route);
  EXPECT_EQ(building.names(delivery.route->points()), "ABC");
  EXPECT_NEAR(delivery.route->totalDistance(), 100, 0.01);
  EXPECT_TRUE(delivery.route->directions().empty());
  EXPECT_FALSE(task->running());
  EXPECT_GT(task->lastExecutionDuration(), 0.0);
  EXPECT_EQ(navigation().activeRoutingTask(), task) << "it goes on guiding";
}

TEST_F(RoutingTaskTest, WithDirectionsEveryPublicationCarriesInstructions) {
  const TextBuilding building = corridor();
  provide(building.graph());
  const auto task = guide(building.point("A"), {building.point("C")});
  task->setDirections(true);
  walkTo(building.position(0, 2, 0));
  ASSERT_EQ(calls(), 2U);
  ASSERT_FALSE(lastRoute()->directions().empty());
  EXPECT_EQ(lastRoute()->directions().back().type(), DirectionsType::destination);
  task->setDirections(false);
  walkTo(building.position(0, 3, 0));
  EXPECT_TRUE(lastRoute()->directions().empty());
}

TEST_F(RoutingTaskTest, LeadsToTheCheapestOfSeveralDestinations) {
  const TextBuilding building = corridor();
  provide(building.graph());
  guide(building.point("A"), {building.point("C"), building.point("B")});
  EXPECT_EQ(building.names(lastRoute()->points()), "AB");
}

TEST_F(RoutingTaskTest, StartsAtThePlaceOnTheEdgeThatThePositionIsMappedTo) {
  const TextBuilding building = corridor();
  provide(building.graph());
  guide(building.position(0, 4, 0.2), {building.point("C")});
  const auto points = lastRoute()->points();
  EXPECT_EQ(building.names(points), "?BC");
  EXPECT_NEAR(points.front()->coordinate().latitude, building.point("A")->coordinate().latitude,
              1e-9);
  EXPECT_NEAR(lastRoute()->totalDistance(), 80, 0.01);
}

TEST_F(RoutingTaskTest, ShortensTheRouteWhileThePersonStaysOnItButKeepsItsPointsAndTotals) {
  const TextBuilding building = corridor();
  provide(building.graph());
  guide(building.point("A"), {building.point("C")});
  walkTo(building.position(0, 4, 0));
  ASSERT_EQ(calls(), 2U);
  const Route route = *lastRoute();
  ASSERT_EQ(route.steps().size(), 2U);
  EXPECT_NEAR(route.steps()[0].distance(), 30, 0.01);
  EXPECT_NEAR(route.remainingDistance(), 80, 0.01);
  EXPECT_NEAR(route.totalDistance(), 100, 0.01);
  EXPECT_EQ(building.names(route.points()), "ABC");
  walkTo(building.position(0, 16, 0));
  EXPECT_EQ(lastRoute()->steps().size(), 1U);
  EXPECT_NEAR(lastRoute()->remainingDistance(), 20, 0.01);
}

TEST_F(RoutingTaskTest, APositionNearTheEndOfTheFirstStepKeepsThatStep) {
  const TextBuilding building = corridor();
  provide(building.graph());
  guide(building.point("A"), {building.point("C")});
  walkTo(building.position(0, 9.95, 0));
  const Route route = *lastRoute();
  ASSERT_EQ(route.steps().size(), 2U);
  // The route's own graph leads forwards only, so the nearest place on it is the node itself.
  EXPECT_EQ(route.steps()[0].distance(), 0.0);
  EXPECT_EQ(route.steps()[0].end()->identifier(), building.point("B")->identifier());
}

TEST_F(RoutingTaskTest, APositionThatSeesNothingOfTheRouteGetsANewRoute) {
  TextBuilding building = corridor();
  building.connect("D", "A", {.distance = 20});
  provide(building.graph());
  guide(building.point("A"), {building.point("C")});
  walkTo(building.point("D"));
  ASSERT_EQ(calls(), 2U);
  EXPECT_EQ(building.names(lastRoute()->points()), "DABC");
}

TEST_F(RoutingTaskTest, APositionBeyondEveryStepOfTheRouteGetsANewRoute) {
  // The route of a task that is not the active one is compared with places of the whole graph.
  const TextBuilding building = corridor();
  navigation().addConfig("second");
  provide(building.graph());
  const auto task =
      navigation().routingTask(building.point("B"), {building.point("C")}, "second", recorder());
  task->run();
  pump();
  ASSERT_EQ(building.names(lastRoute()->points()), "BC");
  walkTo(building.point("A"));
  EXPECT_EQ(building.names(lastRoute()->points()), "ABC");
}

TEST_F(RoutingTaskTest, ARouteExactlyAsLongAsTheProximityIsStillPublished) {
  const TextBuilding building("A--B", 5);
  provide(building.graph());
  guide(building.point("A"), {building.point("B")});
  const double length = lastRoute()->remainingDistance();
  config().setTargetProximityDistance(length);
  guide(building.point("A"), {building.point("B")});
  EXPECT_FALSE(deliveries().back().finished);
  config().setTargetProximityDistance(std::nextafter(length, 1e9));
  guide(building.point("A"), {building.point("B")});
  EXPECT_TRUE(deliveries().back().finished) << "the least bit shorter is reached";
}

TEST_F(RoutingTaskTest, ArrivalIsTheLastCallWithNothingButTheDestination) {
  const TextBuilding building = corridor();
  provide(building.graph());
  const auto task = guide(building.point("A"), {building.point("C")});
  const auto update = deliveries().back().update;
  walkTo(building.position(0, 19.5, 0));
  ASSERT_EQ(calls(), 2U);
  const auto& arrival = deliveries().back();
  EXPECT_FALSE(arrival.update);
  EXPECT_FALSE(arrival.route);
  EXPECT_TRUE(arrival.finished);
  ASSERT_TRUE(arrival.destination);
  EXPECT_EQ(arrival.destination->identifier(), building.point("C")->identifier());
  EXPECT_FALSE(navigation().activeRoutingTask());
  EXPECT_FALSE(task->running());
  update->updateStartPoint(building.point("A"));
  pump();
  EXPECT_EQ(calls(), 2U) << "positions after the arrival are dropped";
}

TEST_F(RoutingTaskTest, ArrivalIsAnnouncedAfterTheLastCallWithTaskAndPlace) {
  const TextBuilding building = corridor();
  provide(building.graph());
  const auto observer = std::make_shared<int>();
  std::vector<KorvaniPlatform::Notification> heard;
  std::size_t callsBefore = 0;
  NotificationCenter::defaultCenter().addObserver(
      observer, "NavigationRoutingDestinationReachedNotification", [&](const auto& notification) {
        heard.push_back(notification);
        callsBefore = calls();
      });
  const auto task = guide(building.position(0, 19.5, 0), {building.point("C")});
  ASSERT_EQ(heard.size(), 1U);
  EXPECT_EQ(callsBefore, 1U);
  EXPECT_EQ(heard[0].object.get(), static_cast<Task*>(task.get()));
  const auto& place = *building.point("C");
  EXPECT_EQ(heard[0].userInfo, (KorvaniPlatform::Dictionary{
                                   {"kNavigationRoutingDestinationReachedLatitude",
                                    KorvaniPlatform::Number::real(place.coordinate().latitude)},
                                   {"kNavigationRoutingDestinationReachedLongitude",
                                    KorvaniPlatform::Number::real(place.coordinate().longitude)},
                                   {"kNavigationRoutingDestinationReachedLevel",
                                    KorvaniPlatform::Number::integer(place.level())}}));
}

TEST_F(RoutingTaskTest, AStartThatIsTheDestinationIsReachedByADirectLineOfNoLength) {
  const TextBuilding building = corridor();
  provide(building.graph());
  const auto task = guide(building.point("A"), {building.point("A")});
  ASSERT_EQ(calls(), 1U);
  EXPECT_TRUE(deliveries().back().finished);
  EXPECT_TRUE(task->isDirectLine()) << "a search never ends where it starts";
}

TEST_F(RoutingTaskTest, APositionBeyondTheRouteWithoutAWayBackGetsTheDirectLine) {
  // Only the route of a task that is not the active one is compared with places of the whole
  // graph, and only then can a person be beyond all its steps. The new search must fail too.
  TextBuilding building("A----B    C----D", 5);
  navigation().addConfig("second");
  provide(building.graph());
  const auto task =
      navigation().routingTask(building.point("A"), {building.point("B")}, "second", recorder());
  task->run();
  pump();
  ASSERT_EQ(building.names(lastRoute()->points()), "AB");
  walkTo(building.point("C"));
  ASSERT_EQ(calls(), 2U);
  EXPECT_FALSE(deliveries().back().finished);
  EXPECT_TRUE(task->isDirectLine()) << "no way leads from the other end";
}

TEST_F(RoutingTaskTest, WithoutAWayTheRouteIsTheStraightLineAndSaysSo) {
  const TextBuilding building = corridor();
  provide(building.graph());
  const auto task = guide(building.point("A"), {building.point("D")});
  ASSERT_TRUE(lastRoute());
  ASSERT_EQ(lastRoute()->steps().size(), 1U);
  EXPECT_TRUE(task->isDirectLine());
  EXPECT_NEAR(lastRoute()->totalDistance(), 20, 0.01);
  EXPECT_EQ(lastRoute()->steps()[0].end(), building.point("D"));
}

TEST_F(RoutingTaskTest, AWayOnTheGraphIsNoDirectLine) {
  const TextBuilding building = corridor();
  provide(building.graph());
  EXPECT_FALSE(guide(building.point("A"), {building.point("C")})->isDirectLine());
}

TEST_F(RoutingTaskTest, APositionThatSeesNoNodeGetsNoRoute) {
  const TextBuilding building(R"(
A----B   ###
         # #
         ###)",
                              5);
  provide(building.graph());
  guide(building.position(0, 10, 1), {building.point("B")});
  ASSERT_EQ(calls(), 1U);
  EXPECT_FALSE(deliveries().back().route);
  EXPECT_FALSE(deliveries().back().finished);
  EXPECT_TRUE(deliveries().back().update);
}

TEST_F(RoutingTaskTest, APositionThatSeesNoNodeKeepsTheRouteThereWas) {
  const TextBuilding building(R"(
A----B   ###
         # #
         ###)",
                              5);
  provide(building.graph());
  guide(building.point("A"), {building.point("B")});
  walkTo(building.position(0, 10, 1));
  ASSERT_EQ(calls(), 2U);
  ASSERT_TRUE(lastRoute());
  EXPECT_EQ(building.names(lastRoute()->points()), "AB");
}

TEST_F(RoutingTaskTest, WithoutAGraphAtTheTimeOfTheWorkThereIsNoRoute) {
  const TextBuilding building = corridor();
  provide(building.graph());
  const auto task =
      navigation().routingTask(building.point("A"), {building.point("C")}, recorder());
  task->run();
  navigation().cancelAllTasks();
  pump();
  ASSERT_EQ(calls(), 1U);
  EXPECT_FALSE(deliveries().back().route);
}

TEST_F(RoutingTaskTest, BarrierFreeRoutesAvoidStairs) {
  TextBuilding building(R"(
A----B
|
C----D)",
                        5);
  building.connect("B", "D", {.isBarrierFree = false, .type = "stairs"});
  provide(building.graph());
  const auto task = guide(building.point("B"), {building.point("D")});
  EXPECT_EQ(building.names(lastRoute()->points()), "BD");
  EXPECT_EQ(lastRoute()->steps()[0].neighborType(), "stairs");
  navigation().removeTask(task);
  config().setActivateBarrierFreeNavigation(true);
  guide(building.point("B"), {building.point("D")});
  EXPECT_EQ(building.names(lastRoute()->points()), "BACD");
}

TEST_F(RoutingTaskTest, BarrierFreenessSetOnTheTaskTakesEffectWithTheNextSearch) {
  TextBuilding building(R"(
A----B
|
C----D)",
                        5);
  building.connect("B", "D", {.isBarrierFree = false});
  provide(building.graph());
  const auto task =
      navigation().routingTask(building.point("B"), {building.point("D")}, recorder());
  task->setBarrierFree(true);
  task->run();
  pump();
  EXPECT_EQ(building.names(lastRoute()->points()), "BACD");
}

TEST_F(RoutingTaskTest, CutsCornersOnlyWhenTheConfigurationSaysSo) {
  const TextBuilding building(R"(
A--B
   |
   C----D)",
                              4);
  provide(building.graph());
  navigation().removeTask(guide(building.point("A"), {building.point("D")}));
  EXPECT_EQ(building.names(lastRoute()->points()), "ABCD");
  config().setActivateRouteOptimisation(true);
  guide(building.point("A"), {building.point("D")});
  EXPECT_EQ(building.names(lastRoute()->points()), "ACD");
}

TEST_F(RoutingTaskTest, WallsOfTheStartsLevelHideDestinationsElsewhereUnlessTheirOwnWallsCount) {
  TextBuilding building(5);
  building.addLevel(0, R"(
A---B
     #######
         )");
  building.addLevel(1, R"(
    C------D

          )");
  building.connect("B", "C", {.distance = 6});
  provide(building.graph());
  // On level 1 the goal sees D; level 0 has a wall there, drawn between the two.
  const auto goal = building.position(1, 11, 2);
  const auto hidden = guide(building.point("A"), {goal});
  EXPECT_TRUE(hidden->isDirectLine());
  navigation().removeTask(hidden);
  config().setCheckDestinationsAgainstOwnWalls(true);
  const auto seen = guide(building.point("A"), {goal});
  EXPECT_FALSE(seen->isDirectLine());
  EXPECT_EQ(building.names(lastRoute()->points()).substr(0, 4), "ABCD");
}

TEST_F(RoutingTaskTest, APositionDuringAnExecutionIsDroppedAndTheNextOneHonoured) {
  const TextBuilding building = corridor();
  provide(building.graph());
  const auto task = guide(building.point("A"), {building.point("C")});
  const auto update = deliveries().back().update;
  update->updateStartPoint(building.position(0, 2, 0));
  ASSERT_TRUE(task->running());
  update->updateStartPoint(building.position(0, 15, 0));
  pump();
  EXPECT_EQ(calls(), 2U);
  EXPECT_NEAR(lastRoute()->remainingDistance(), 90, 0.01);
  update->updateStartPoint(building.position(0, 15, 0));
  pump();
  EXPECT_NEAR(lastRoute()->remainingDistance(), 25, 0.01);
}

TEST_F(RoutingTaskTest, AHandleOfATaskThatIsGoneDoesNothing) {
  const TextBuilding building = corridor();
  provide(building.graph());
  auto task = guide(building.point("A"), {building.point("C")});
  const auto update = deliveries().back().update;
  navigation().removeTask(task);
  task.reset();
  update->updateStartPoint(building.point("B"));
  pump();
  EXPECT_EQ(calls(), 1U);
}

TEST_F(RoutingTaskTest, OneRemovalLetsATaskGoThatWasRunSeveralTimes) {
  const TextBuilding building = corridor();
  provide(building.graph());
  auto task = guide(building.point("A"), {building.point("C")});
  walkTo(building.position(0, 1, 0));
  walkTo(building.position(0, 2, 0));
  navigation().removeTask(task);
  const std::weak_ptr<RoutingTask> weak = task;
  task.reset();
  EXPECT_TRUE(weak.expired());
}

TEST_F(RoutingTaskTest, ArrivalIsNotAnnouncedUnderTheNameOfTheConstant) {
  const TextBuilding building = corridor();
  provide(building.graph());
  const auto observer = std::make_shared<int>();
  int heard = 0;
  NotificationCenter::defaultCenter().addObserver(
      observer, "NavigationRoutingTaskDestinationReachedNotification",
      [&](const auto&) { ++heard; });
  guide(building.position(0, 19.5, 0), {building.point("C")});
  ASSERT_TRUE(deliveries().back().finished);
  EXPECT_EQ(heard, 0);
}

TEST_F(RoutingTaskTest, AHandlerMayFeedTheNextPositionItself) {
  const TextBuilding building = corridor();
  provide(building.graph());
  int routes = 0;
  int arrivals = 0;
  const auto task = navigation().routingTask(
      building.point("A"), {building.point("C")},
      [&](const auto& update, const auto& route, bool finished, const auto&) {
        if (finished) {
          ++arrivals;
          return;
        }
        ++routes;
        update->updateStartPoint(building.position(0, 3.0 * routes, 0));
        EXPECT_TRUE(route);
      });
  task->run();
  pump();
  EXPECT_EQ(arrivals, 1);
  EXPECT_EQ(routes, 7) << "20 columns of 5 m, 3 a time, until less than 5 m are left";
}

TEST_F(RoutingTaskTest, AFinishedTaskThatIsRunAgainSaysSoAgainAndDoesNotHang) {
  const TextBuilding building = corridor();
  provide(building.graph());
  const auto task = guide(building.position(0, 19.5, 0), {building.point("C")});
  ASSERT_TRUE(deliveries().back().finished);
  task->run();
  pump();
  EXPECT_EQ(calls(), 2U);
  EXPECT_FALSE(task->running());
  task->updateDestinations({building.point("A")});
  task->run();
  pump();
  EXPECT_EQ(calls(), 3U);
  EXPECT_FALSE(deliveries().back().finished);
  ASSERT_TRUE(deliveries().back().destination) << "the one that was reached";
  EXPECT_EQ(deliveries().back().destination->identifier(), building.point("C")->identifier());
  EXPECT_FALSE(task->running());
}

TEST_F(RoutingTaskTest, TheGraphOfTheRouteIsTheWholeGraphWhileThereIsNoRoute) {
  const TextBuilding building = corridor();
  provide(building.graph());
  const auto task =
      navigation().routingTask(building.point("A"), {building.point("C")}, recorder());
  EXPECT_EQ(task->graphForRoute(), building.graph());
  task->run();
  pump();
  const auto routeGraph = task->graphForRoute();
  ASSERT_TRUE(routeGraph);
  EXPECT_NE(routeGraph, building.graph());
  EXPECT_EQ(std::as_const(*routeGraph).nodes().size(), 3U);
  EXPECT_EQ(task->graphForRoute(), routeGraph) << "made once";
}

TEST_F(RoutingTaskTest, LogsHowLongThePathSearchTook) {
  const TextBuilding building = corridor();
  provide(building.graph());
  std::vector<std::string> lines;
  KorvaniCommon::setLogSink([&](auto level, auto module, auto text) {
    if (level == KorvaniCommon::LogLevel::test && module == kKRVNavigationModuleName) {
      lines.emplace_back(text);
    }
  });
  KorvaniCommon::setLogThreshold(KorvaniCommon::LogLevel::test);
  guide(building.point("A"), {building.point("C")});
  KorvaniCommon::setLogThreshold(KorvaniCommon::LogLevel::info);
  KorvaniCommon::setLogSink(nullptr);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_TRUE(std::regex_match(lines[0], std::regex("RoutingTask: Dijkstra took [0-9.e+-]+s")))
      << lines[0];
}

TEST_F(RoutingTaskTest, ADestinationWithoutAnyRegionEndsTheProcess) {
  const auto graph = std::make_shared<KRVNavGraph>();
  EXPECT_DEATH(
      {
        provide(graph);
        guide(KorvaniTest::at(48, 11), {KorvaniTest::at(48, 12)});
      },
      "fatal error: a destination has no region");
}

}  // namespace
}  // namespace KorvaniNavigation
