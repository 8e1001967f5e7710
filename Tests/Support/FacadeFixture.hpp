#pragma once

/// Tests that need the facade: a building to provide, a route to follow.
///
///     class Arrival : public FacadeFixture {};
///
///     TEST_F(Arrival, IsSaidOnce) {
///       const TextBuilding building("A----B");
///       provide(building.graph());
///       const auto task = guide(building.point("A"), {building.point("B")});
///       EXPECT_EQ(deliveries().size(), 1U);
///       EXPECT_TRUE(lastRoute());
///     }
///
/// Background work is done on the test's own thread, by `pump()`, unless the test asks for
/// `useThreads()`. The facade lives as long as the process does, so every test leaves it as it
/// found it: without graph and tasks, with the default settings. (CTest runs each test in a
/// process of its own; this is for those who run several in one.)

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "Navigation/API/Config.hpp"
#include "Navigation/API/ConfigDependents.hpp"
#include "Navigation/API/Constants.hpp"
#include "Navigation/API/Navigation.hpp"
#include "Navigation/API/Tasks/RoutingTask.hpp"
#include "Navigation/API/Tasks/RoutingUpdateTask.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Localisation/IntersectionFinder.hpp"
#include "Navigation/Localisation/RegionFinder.hpp"
#include "Navigation/Routing/Route.hpp"
#include "Platform/GlobalQueue.hpp"
#include "Platform/MainQueue.hpp"
#include "Platform/NotificationCenter.hpp"
#include "Support/Points.hpp"

namespace KorvaniTest {

using KorvaniNavigation::Config;
using KorvaniNavigation::ConfigDependents;
using KorvaniNavigation::KRVNavGraph;
using KorvaniNavigation::Navigation;
using KorvaniNavigation::Route;
using KorvaniNavigation::RoutingTask;
using KorvaniNavigation::RoutingUpdateTask;

/// One call of a routing task's handler.
struct Delivery {
  std::shared_ptr<RoutingUpdateTask> update;
  std::optional<Route> route;
  bool finished = false;
  PointPtr destination;
};

class FacadeFixture : public testing::Test {
 protected:
  FacadeFixture() {
    KorvaniPlatform::setGlobalExecutor(std::make_shared<KorvaniPlatform::MainQueueExecutor>());
  }

  /// Whoever overrides this calls it last.
  void TearDown() override {
    KorvaniPlatform::joinGlobalQueue();
    navigation().cancelAllTasks();
    pump();
    deliveries_->clear();
    const Config defaults;
    for (const auto& entry : navigation().navigationConfigs()) {
      restore(entry.second->config(), defaults);
      entry.second->intersectionFinder()->regionFinder()->setRegions({});
    }
    KorvaniPlatform::setGlobalExecutor(nullptr);
  }

  static Navigation& navigation() { return Navigation::sharedInstance(); }

  /// The main configuration and its bundle.
  static Config& config() { return navigation().config(); }
  static std::shared_ptr<ConfigDependents> bundle() {
    return *navigation().navigationConfigs().find(navigation().defaultConfig()->configName());
  }

  /// The region finder of the main configuration.
  static std::shared_ptr<KorvaniNavigation::RegionFinder> regionFinder() {
    return bundle()->intersectionFinder()->regionFinder();
  }

  /// Provides a graph and announces it, as a host does.
  static void provide(const std::shared_ptr<KRVNavGraph>& graph) {
    navigation().provideGraph(graph);
    announceGraph();
  }
  static void announceGraph() {
    KorvaniPlatform::NotificationCenter::defaultCenter().post(
        KorvaniNavigation::NavigationGraphCreatedNotification);
  }

  /// Does what waits in the main queue, and with it the tasks' background work.
  static void pump() { KorvaniPlatform::mainQueue().runUntilIdle(); }

  /// From here on background work is done by the engine's threads. Wait for it with
  /// `joinGlobalQueue()`, then `pump()`.
  static void useThreads() { KorvaniPlatform::setGlobalExecutor(nullptr); }

  /// A routing task on the main configuration, which is the active one now and has published its
  /// first route (or arrived). What its handler gets is kept in `deliveries()`.
  std::shared_ptr<RoutingTask> guide(const PointPtr& from, const std::vector<PointPtr>& to) {
    auto task = navigation().routingTask(from, to, recorder());
    if (task) task->run();
    pump();
    return task;
  }

  /// A handler that keeps what it gets.
  RoutingTask::CompletionHandler recorder() {
    return [kept = deliveries_](auto update, auto route, bool finished, auto destination) {
      kept->push_back({std::move(update), std::move(route), finished, std::move(destination)});
    };
  }

  const std::vector<Delivery>& deliveries() const { return *deliveries_; }

  /// The route delivered last; absent without a delivery, and when that had none.
  std::optional<Route> lastRoute() const {
    return deliveries_->empty() ? std::nullopt : deliveries_->back().route;
  }

 private:
  static void restore(Config& config, const Config& from) {
    config.setLevelHeight(from.levelHeight());
    config.setTargetProximityDistance(from.targetProximityDistance());
    config.setActivateNavigationPathSnapping(from.activateNavigationPathSnapping());
    config.setActivateObstacleChecking(from.activateObstacleChecking());
    config.setNavigationPathSnappingDistance(from.navigationPathSnappingDistance());
    config.setActivateMagneticSnapping(from.activateMagneticSnapping());
    config.setActivateBarrierFreeNavigation(from.activateBarrierFreeNavigation());
    config.setActivateRouteOptimisation(from.activateRouteOptimisation());
    config.setMagneticPathSnappingDistanceThreshold(from.magneticPathSnappingDistanceThreshold());
    config.setMagneticPathSnappingFallbackThreshold(from.magneticPathSnappingFallbackThreshold());
    config.setWalkingSpeed(from.walkingSpeed());
    config.setCheckDestinationsAgainstOwnWalls(from.checkDestinationsAgainstOwnWalls());
  }

  std::shared_ptr<std::vector<Delivery>> deliveries_ = std::make_shared<std::vector<Delivery>>();
};

/// The same without level height, so that drawn metres are metres: every distance of two points
/// carries the level height, also on one level. For fixtures with a building of their own, whose
/// edges are measured when it is made.
class FlatFacadeFixture : public FacadeFixture {
 protected:
  FlatFacadeFixture() { config().setLevelHeight(0); }
};

}  // namespace KorvaniTest
