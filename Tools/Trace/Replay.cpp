#include "Trace/Replay.hpp"

#include <cstdint>
#include <limits>
#include <variant>

#include "Building/JsonText.hpp"
#include "Navigation/API/Constants.hpp"
#include "Navigation/API/Tasks/IntersectionTask.hpp"
#include "Navigation/API/Tasks/SnappingTask.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Localisation/IntersectionFinder.hpp"
#include "Navigation/Localisation/RegionFinder.hpp"
#include "Navigation/Obstacles/DefaultObstacleDenier.hpp"
#include "Navigation/Routing/Route.hpp"
#include "Platform/GlobalQueue.hpp"
#include "Platform/MainQueue.hpp"
#include "Platform/NotificationCenter.hpp"
#include "Support/InputError.hpp"
#include "Support/RouteSearch.hpp"
#include "Trace/ConfigChange.hpp"
#include "Trace/ReplayEvents.hpp"

namespace KorvaniTools {

using KorvaniNavigation::ConfigDependents;
using KorvaniNavigation::DefaultObstacleDenier;
using KorvaniNavigation::IntersectionTask;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::Navigation;
using KorvaniNavigation::ObstacleCheckTask;
using KorvaniNavigation::Route;
using KorvaniNavigation::RoutingTask;
using KorvaniNavigation::RoutingUpdateTask;
using KorvaniPlatform::CLLocationCoordinate2D;
using KorvaniPlatform::Executor;
using KorvaniPlatform::mainQueue;
using KorvaniPlatform::Notification;
using KorvaniPlatform::NotificationCenter;

namespace {

std::shared_ptr<Executor> newWorkers() {
#ifdef KORVANI_SINGLE_THREADED
  return std::make_shared<KorvaniPlatform::MainQueueExecutor>();
#else
  return std::make_shared<KorvaniPlatform::ThreadPool>(2);
#endif
}

Navigation& navigation() { return Navigation::sharedInstance(); }

std::string nameOf(const std::optional<std::string>& config) {
  return config ? *config : navigation().defaultConfig()->configName();
}

std::shared_ptr<ConfigDependents> bundleNamed(const std::string& config) {
  const auto configs = navigation().navigationConfigs();
  const auto* bundle = configs.find(config);
  if (bundle == nullptr) throw InputError("no configuration is called " + inQuotes(config));
  return *bundle;
}

/// The engine reads levels from locations, whose altitude is a double, and takes one that is no
/// 64-bit integer any more for a broken invariant.
void requireLevelThatADoubleHolds(std::int64_t level) {
  // What is greater rounds to 2^63.
  constexpr std::int64_t kHighest = std::numeric_limits<std::int64_t>::max() - 512;
  if (level <= kHighest) return;
  throw InputError("found level " + std::to_string(level) + ", expected at most " +
                   std::to_string(kHighest));
}

std::shared_ptr<KRVNavPoint> pointAt(const TracePoint& point) {
  requireLevelThatADoubleHolds(point.level);
  return std::make_shared<KRVNavPoint>(CLLocationCoordinate2D{point.latitude, point.longitude},
                                       point.level);
}

/// A route search insists on a region for each destination. A building without regions has none
/// for anything, others have none for places so far out that they are at no distance.
RoutingTask::Points destinationsAt(const std::vector<TracePoint>& places,
                                   ConfigDependents& bundle) {
  const auto regions = bundle.intersectionFinder()->regionFinder();
  RoutingTask::Points points;
  for (const TracePoint& place : places) {
    points.push_back(pointAt(place));
    const KRVNavPoint& point = *points.back();
    if (regions->findRegionFor(point.coordinate(), point.level(), true)) continue;
    throw InputError("to[" + std::to_string(points.size() - 1) +
                     "]: no region of the building is near");
  }
  return points;
}

}  // namespace

Replay::Replay(Graph graph) : Replay(std::move(graph), newWorkers()) {}

Replay::Replay(Graph graph, std::shared_ptr<Executor> workers)
    : graph_(std::move(graph)), work_(std::make_shared<CountedExecutor>(std::move(workers))) {
  KorvaniPlatform::setGlobalExecutor(work_);
  observeNotifications();
  provideGraph(graph_);
}

Replay::~Replay() {
  forgetRouting();
  checks_.clear();
  navigation().cancelAllTasks();
  settle();
  NotificationCenter::defaultCenter().removeObserver(observer_.get());
  KorvaniPlatform::setGlobalExecutor(nullptr);
}

Replay::Events Replay::carryOut(const TraceLine& line) {
  line_ = line.number;
  try {
    std::visit([this](const auto& operation) { perform(operation); }, line.operation);
  } catch (const InputError& error) {
    events_.push_back(errorEvent(line_, error.what()));
  }
  settle();
  return std::exchange(events_, {});
}

void Replay::perform(const ConfigOperation& operation) {
  const ConfigChange change(operation);
  const std::string name = nameOf(operation.config);
  navigation().addConfig(name);
  change.applyTo(bundleNamed(name)->config());
}

void Replay::perform(const IntersectOperation& operation) {
  const auto task = std::make_shared<IntersectionTask>(
      bundleNamed(nameOf({})), pointAt(operation.at),
      [this](const auto& intersection) {
        events_.push_back(intersectionEvent(line_, intersection));
      },
      operation.onOriginalGraph);
  task->run();
}

void Replay::perform(const RouteOperation& operation) {
  const std::string config = nameOf(operation.config);
  const auto bundle = bundleNamed(config);
  if (operation.to.empty()) throw InputError("to: found no points, expected at least one");
  auto from = pointAt(operation.from);
  auto destinations = destinationsAt(operation.to, *bundle);
  if (routing_) navigation().removeTask(routing_);
  forgetRouting();
  routing_ =
      navigation().routingTask(std::move(from), std::move(destinations), config, routingHandler());
  if (operation.barrierFree) routing_->setBarrierFree(*operation.barrierFree);
  routing_->setDirections(operation.directions);
  routing_->run();
}

void Replay::perform(const PositionOperation& operation) {
  requireRouting();
  handle_->updateStartPoint(pointAt(operation.at));
}

void Replay::perform(const DestinationsOperation& operation) {
  requireRouting();
  routing_->updateDestinations(destinationsAt(operation.to, *routing_->configDependents()));
}

void Replay::perform(const SnapOperation& operation) {
  const std::string config = nameOf(operation.config);
  static_cast<void>(bundleNamed(config));
  const auto task = navigation().snappingTask(
      true, pointAt(operation.at), config, [this](CLLocationCoordinate2D coordinate) {
        events_.push_back(coordinateEvent(line_, "snapped", coordinate));
      });
  task->run();
}

void Replay::perform(const CheckOperation& operation) {
  const std::string config = nameOf(operation.config);
  const auto bundle = bundleNamed(config);
  auto point = pointAt(operation.at);
  auto& task = checks_[{config, operation.denier}];
  if (task == nullptr) {
    task = newCheck(operation, bundle, std::move(point));
  } else {
    task->updatePoint(std::move(point));
  }
  task->run();
}

void Replay::perform(const CancelOperation&) {
  forgetRouting();
  navigation().cancelAllTasks();
  provideGraph(graph_);
}

RoutingTask::CompletionHandler Replay::routingHandler() {
  return [this](std::shared_ptr<RoutingUpdateTask> handle, const std::optional<Route>& route,
                bool finished, const std::shared_ptr<KRVNavPoint>& destination) {
    if (finished) {
      events_.push_back(arrivalEvent(line_, destination));
      forgetRouting();
    } else {
      events_.push_back(routeEvent(line_, route));
      handle_ = std::move(handle);
    }
  };
}

std::shared_ptr<ObstacleCheckTask> Replay::newCheck(const CheckOperation& operation,
                                                    const Bundle& bundle,
                                                    std::shared_ptr<KRVNavPoint> point) {
  auto handler = [this](CLLocationCoordinate2D coordinate) {
    events_.push_back(coordinateEvent(line_, "checked", coordinate));
  };
  if (operation.denier == TraceDenier::strength) {
    return navigation().obstacleCheckTask(true, std::move(point), bundle->configName(), handler);
  }
  return std::make_shared<ObstacleCheckTask>(
      bundle, true, std::move(point), std::make_shared<DefaultObstacleDenier>(bundle), handler);
}

void Replay::observeNotifications() {
  NotificationCenter::defaultCenter().addObserver(
      observer_, KorvaniNavigation::NavigationRoutingTaskDestinationReachedNotification,
      [this](const Notification& notification) {
        events_.push_back(notificationEvent(line_, notification));
      });
}

void Replay::requireRouting() const {
  if (handle_ == nullptr) throw InputError("no routing goes on");
}

void Replay::forgetRouting() {
  handle_.reset();
  routing_.reset();
}

void Replay::settle() {
  do {
    mainQueue().runUntilIdle();
  } while (work_->waitForJobs());
}

}  // namespace KorvaniTools
