#include "Navigation/API/Navigation.hpp"

#include <gtest/gtest.h>

#include "Common/Logging.hpp"
#include "Navigation/API/NavigationObjCWrapper.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniNavigation {
namespace {

using KorvaniTest::at;
using KorvaniTest::fromOrigin;
using KorvaniTest::TextBuilding;

class NavigationTest : public KorvaniTest::FacadeFixture {
 protected:
  /// A task of the given configuration whose handler does nothing.
  static std::shared_ptr<RoutingTask> taskOn(const std::string& name) {
    return navigation().routingTask(at(48, 11), {at(48, 12)}, name, {});
  }
};

TEST_F(NavigationTest, IsOneInstanceThatStartsWithoutGraphAndActiveTask) {
  EXPECT_EQ(&Navigation::sharedInstance(), &navigation());
  EXPECT_FALSE(navigation().graph());
  EXPECT_FALSE(navigation().activeRoutingTask());
}

TEST_F(NavigationTest, SwitchesLoggingOnForItsModule) {
  navigation();
  EXPECT_TRUE(KorvaniCommon::KRVSwiftLogging::loggingEnabled("Navigation"));
}

TEST_F(NavigationTest, HasAMainConfigurationNamedMainWithTheDefaults) {
  EXPECT_EQ(navigation().defaultConfig()->configName(), "main");
  EXPECT_EQ(navigation().config().levelHeight(), 3.0);
  ASSERT_TRUE(navigation().navigationConfigs().contains("main"));
}

TEST_F(NavigationTest, ListsFurtherConfigurationsInTheOrderTheyWereMade) {
  navigation().addConfig("wheelchair");
  navigation().addConfig("audio");
  navigation().addConfig("wheelchair");
  const auto names = navigation().navigationConfigs().keys();
  ASSERT_GE(names.size(), 3U);
  EXPECT_EQ(names.front(), "main");
  EXPECT_EQ(names[names.size() - 2], "wheelchair");
  EXPECT_EQ(names.back(), "audio");
}

TEST_F(NavigationTest, FactoriesMakeUnregisteredConfigurationsAndBundles) {
  const auto made = navigation().createNewConfigDependents("unregistered");
  EXPECT_EQ(made->configName(), "unregistered");
  EXPECT_FALSE(navigation().configFor("unregistered"));
  EXPECT_NE(navigation().createNewConfig(), navigation().createNewConfig());
}

TEST_F(NavigationTest, AFactoryWithAnUnknownConfigurationNameMakesNoTask) {
  EXPECT_FALSE(taskOn("nobody knows this one"));
  EXPECT_FALSE(navigation().activeRoutingTask());
}

TEST_F(NavigationTest, ARoutingTaskWithoutDestinationsIsNotMade) {
  EXPECT_FALSE(navigation().routingTask(at(48, 11), {}, [](auto...) {}));
  EXPECT_FALSE(navigation().activeRoutingTask());
}

TEST_F(NavigationTest, TheLatestRoutingTaskOfTheMainConfigurationIsTheActiveOne) {
  const auto first = navigation().routingTask(at(48, 11), {at(48, 12)}, {});
  EXPECT_EQ(navigation().activeRoutingTask(), first);
  const auto second = taskOn("main");
  EXPECT_EQ(navigation().activeRoutingTask(), second);
  EXPECT_TRUE(second->async());
  EXPECT_FALSE(second->running());
}

TEST_F(NavigationTest, ARoutingTaskOfAnotherConfigurationNeverBecomesActive) {
  navigation().addConfig("second");
  EXPECT_TRUE(taskOn("second"));
  EXPECT_FALSE(navigation().activeRoutingTask());
}

TEST_F(NavigationTest, RemovingTheActiveRoutingTaskClearsIt) {
  const auto task = taskOn("main");
  navigation().removeTask(task);
  EXPECT_FALSE(navigation().activeRoutingTask());
}

TEST_F(NavigationTest, RemovingATaskThatIsNotKeptChangesNothing) {
  const TextBuilding building("A----B", 5);
  provide(building.graph());
  const std::weak_ptr<RoutingTask> active = guide(building.point("A"), {building.point("B")});
  const auto other = RoutingTask::create(bundle(), at(48, 11), {at(48, 12)}, {});
  navigation().removeTask(other);
  navigation().removeTask(nullptr);
  ASSERT_TRUE(active.lock());
  EXPECT_EQ(navigation().activeRoutingTask(), active.lock());
  navigation().setActiveRoutingTask(nullptr);
  EXPECT_TRUE(active.lock()) << "still kept as a task that goes on";
}

TEST_F(NavigationTest, CancellingDropsGraphTasksAndTheActiveTask) {
  const TextBuilding building("A----B", 5);
  provide(building.graph());
  std::weak_ptr<RoutingTask> weak = guide(building.point("A"), {building.point("B")});
  ASSERT_TRUE(weak.lock()) << "the facade keeps a task that guides";
  navigation().cancelAllTasks();
  EXPECT_FALSE(navigation().graph());
  EXPECT_FALSE(navigation().activeRoutingTask());
  EXPECT_TRUE(weak.expired());
}

TEST_F(NavigationTest, ATaskRunAfterCancellingWaitsForTheNextGraphAndItsAnnouncement) {
  const TextBuilding building("A----B", 5);
  provide(building.graph());
  navigation().cancelAllTasks();
  const auto task = guide(building.point("A"), {building.point("B")});
  EXPECT_TRUE(deliveries().empty());
  navigation().provideGraph(building.graph());
  pump();
  EXPECT_TRUE(deliveries().empty());
  announceGraph();
  pump();
  ASSERT_EQ(deliveries().size(), 1U);
  EXPECT_TRUE(lastRoute());
}

TEST_F(NavigationTest, ASecondGraphReplacesTheRegionsOfEveryConfigurationsFinder) {
  navigation().addConfig("second");
  const TextBuilding first("A--B");
  TextBuilding second("A--B");
  second.addLevel(1, "C--D");
  std::vector<std::shared_ptr<RegionFinder>> finders;
  for (const auto& entry : navigation().navigationConfigs()) {
    finders.push_back(entry.second->intersectionFinder()->regionFinder());
  }
  ASSERT_EQ(finders.size(), 2U);
  for (const auto& graph : {first.graph(), second.graph()}) {
    navigation().provideGraph(graph);
    EXPECT_EQ(navigation().graph(), graph);
    for (const auto& finder : finders) {
      EXPECT_EQ(finder->regions(), std::as_const(*graph).regions());
    }
  }
}

TEST_F(NavigationTest, DirectionsForARouteAreTheFirstInstruction) {
  const auto a = at(fromOrigin(0, 0));
  const auto b = at(fromOrigin(20, 0));
  const auto c = at(fromOrigin(20, 30));
  const auto first = navigation().directionsForRoute({Step(a, b, 20.0), Step(b, c, 30.0)}, false);
  ASSERT_TRUE(first);
  EXPECT_EQ(first->type(), DirectionsType::forward);
  EXPECT_EQ(first->distance(), 20.0);
}

TEST_F(NavigationTest, DirectionsForNoStepsAreOneEmptyInstruction) {
  const auto first = navigation().directionsForRoute({}, true);
  ASSERT_TRUE(first);
  EXPECT_EQ(first->type(), DirectionsType::unknown);
}

TEST_F(NavigationTest, TheWrapperReadsTheMainConfigurationAnewAtEveryCall) {
  EXPECT_EQ(NavigationObjCWrapper::defaultLevelHeight(), 3.0);
  EXPECT_EQ(KRVNavigationObjCWrapper::targetProximityDistance(), 5.0);
  config().setLevelHeight(2.5);
  config().setTargetProximityDistance(7.0);
  EXPECT_EQ(NavigationObjCWrapper::defaultLevelHeight(), 2.5);
  EXPECT_EQ(NavigationObjCWrapper::targetProximityDistance(), 7.0);
  const NavigationObjCWrapper wrapper;
  static_cast<void>(wrapper);
}

TEST_F(NavigationTest, WithALevelHeightOf0DistancesArePlainGroundDistances) {
  const auto a = at(fromOrigin(0, 0));
  const auto b = at(fromOrigin(40, 0));
  EXPECT_NEAR(a->distanceFrom(*b), std::sqrt(40.0 * 40.0 + 9.0), 1e-6);
  config().setLevelHeight(0);
  EXPECT_EQ(a->distanceFrom(*b), a->location().distanceFromLocation(b->location()));
}

}  // namespace
}  // namespace KorvaniNavigation
