#include "Navigation/API/Tasks/RoutingTask.hpp"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

#include "Common/Benchmark.hpp"
#include "Common/Logging.hpp"
#include "Navigation/API/ConfigDependents.hpp"
#include "Navigation/API/Constants.hpp"
#include "Navigation/API/Tasks/IntersectionTask.hpp"
#include "Navigation/API/Tasks/RoutingUpdateTask.hpp"
#include "Navigation/API/Tasks/SnappingTask.hpp"
#include "Navigation/Directions/RouteInstructions.hpp"
#include "Navigation/Graph/GraphSource.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Localisation/PositionMapper.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Navigation/Path Finding/DijkstraImproved/DijkstraImproved.hpp"
#include "Navigation/Routing/RemainingSteps.hpp"
#include "Navigation/Routing/RouteCreation.hpp"
#include "Navigation/Routing/RouteOptimisation.hpp"
#include "Navigation/Routing/RouteProgress.hpp"
#include "Navigation/Routing/RouteSearch.hpp"
#include "Navigation/Routing/RouteTrack.hpp"
#include "Navigation/Routing/RouteWrapping.hpp"
#include "Navigation/Snapping/ActiveRoute.hpp"
#include "Platform/FatalError.hpp"
#include "Platform/NotificationCenter.hpp"

namespace KorvaniNavigation {

using KorvaniCommon::Benchmark;
using KorvaniPlatform::NotificationCenter;

namespace {

Config& configOf(const Task& task) {
  const auto bundle = task.configDependents();
  if (!bundle) KORVANI_FATAL("the configuration of a routing task is gone");
  return bundle->config();
}

/// The distance from a point to the nearest of several; the largest double for none.
double smallestDistance(const KRVNavPoint& point, const RoutingTask::Points& others) {
  double smallest = std::numeric_limits<double>::max();
  for (const auto& other : others) smallest = std::min(smallest, point.distanceFrom(*other));
  return smallest;
}

}  // namespace

std::shared_ptr<RoutingTask> RoutingTask::create(std::weak_ptr<ConfigDependents> configDependents,
                                                 std::shared_ptr<KRVNavPoint> point,
                                                 Points possibleDestinations,
                                                 CompletionHandler completionHandler) {
  if (possibleDestinations.empty()) return nullptr;
  return std::shared_ptr<RoutingTask>(new RoutingTask(std::move(configDependents), std::move(point),
                                                      std::move(possibleDestinations),
                                                      std::move(completionHandler)));
}

RoutingTask::RoutingTask(std::weak_ptr<ConfigDependents> configDependents,
                         std::shared_ptr<KRVNavPoint> point, Points possibleDestinations,
                         CompletionHandler completionHandler)
    : Task(std::move(configDependents), true),
      pathFinder_(std::make_shared<DijkstraImproved>(weakConfigDependents())),
      completionHandler_(std::move(completionHandler)),
      barrierFree_(configOf(*this).activateBarrierFreeNavigation()),
      state_(State{std::move(point),
                   std::make_shared<const Points>(std::move(possibleDestinations))}) {}

RoutingTask::~RoutingTask() { disarmTimeLimit(); }

std::vector<CLLocation> RoutingTask::possibleDestinationLocations() const {
  std::vector<CLLocation> locations;
  for (const auto& destination : possibleDestinations()) {
    locations.push_back(destination->location());
  }
  return locations;
}

bool RoutingTask::proceedTo(std::shared_ptr<KRVNavPoint> point, const std::function<void()>& taken,
                            std::shared_ptr<Task>& own) {
  if (isLetGo() || state_.load().destination) return false;
  return runAfter(
      [&] {
        // Looked at again with the task claimed: an arrival that is being announced just now
        // counts.
        const bool stored = state_.update([&](State& state) {
          if (state.destination) return false;
          state.point = std::move(point);
          return true;
        });
        if (stored && taken) taken();
        return stored;
      },
      own);
}

void RoutingTask::updateDestinations(const Points& destinations) {
  const double proximity = configOf(*this).targetProximityDistance();
  state_.update([&](State& state) {
    const bool changed = std::any_of(destinations.begin(), destinations.end(), [&](auto& point) {
      return smallestDistance(*point, *state.possibleDestinations) > proximity;
    });
    if (!changed) return;
    if (running()) {
      state.tempPossibleDestinations = std::make_shared<const Points>(destinations);
    } else {
      state.route.reset();
      state.possibleDestinations = std::make_shared<const Points>(destinations);
    }
  });
}

RoutingTask::Followed RoutingTask::followed() const {
  return state_.read([](const State& state) {
    return state.route ? Followed{true, state.calculatedGraphForRoute} : Followed();
  });
}

std::shared_ptr<KRVNavGraph> RoutingTask::Followed::graph() const {
  if (!hasRoute) return graphSource().graph();
  return track ? track->graph() : nullptr;
}

std::shared_ptr<KRVNavGraph> RoutingTask::graphForRoute() const { return followed().graph(); }

void RoutingTask::setSnappingTask(std::shared_ptr<SnappingTask> task) {
  exchangeSnappingTask(std::move(task));
}

std::shared_ptr<SnappingTask> RoutingTask::exchangeSnappingTask(
    std::shared_ptr<SnappingTask> task) {
  return snappingTask_.update(
      [&](std::shared_ptr<SnappingTask>& held) { return std::exchange(held, std::move(task)); });
}

std::shared_ptr<KRVNavPoint> RoutingTask::point() const {
  return state_.read([](const State& state) { return state.point; });
}

RoutingTask::Points RoutingTask::possibleDestinations() const {
  return state_.read([](const State& state) { return *state.possibleDestinations; });
}

void RoutingTask::execute() { updateRoute(true); }

void RoutingTask::proceedWithSnappingTask() {
  // Somebody who has arrived is not guided any further.
  if (!state_.load().destination) updateRoute(false);
}

void RoutingTask::updateRoute(bool publishRoute) {
  const Benchmark benchmark = Benchmark::start();
  current_ = state_.load();
  // Without a reference of its own: the last one to a task must not end on this thread.
  originalPoint_ = snappingTask_.read([](const std::shared_ptr<SnappingTask>& task) {
    return task ? task->originalPoint() : nullptr;
  });
  arrived_ = false;
  if (!routeProceedOnPath(publishRoute)) {
    findRoute();
    completedRouteCalculation(publishRoute);
  }
  lastExecutionDuration_ = benchmark.stop();
}

void RoutingTask::executionEnded() {
  // Under the lock, so that destinations which come now either are seen here or see that the
  // task does not run any more.
  state_.update([&](State& state) {
    // What came during one execution stays set, so that every later one searches anew.
    if (state.tempPossibleDestinations) {
      state.possibleDestinations = state.tempPossibleDestinations;
      state.route.reset();
    }
    // A task that has arrived stays marked until it has said so, lest it says so twice.
    if (!arrived_) release();
  });
}

/// Where the person is on the route; null when the person has left it.
std::shared_ptr<KRVNavPoint> RoutingTask::placeOnRoute() {
  auto onRoute = mapOntoRoute(current_.point);
  return !originalPoint_ || isStillOnRoute(onRoute) ? onRoute : nullptr;
}

/// The snapped position says that the person is on the route as long as the raw one is near it,
/// or the place of the graph nearest to the raw one.
bool RoutingTask::isStillOnRoute(const std::shared_ptr<KRVNavPoint>& onRoute) {
  if (!onRoute) return false;
  const double snappingDistance = configOf(*this).navigationPathSnappingDistance();
  if (onRoute->distanceFrom(*originalPoint_) <= snappingDistance) return true;
  const auto onGraph = mapOntoGraph(originalPoint_, true);
  return onGraph && onGraph->node()->distanceFrom(*onRoute) < snappingDistance / 2;
}

bool RoutingTask::routeProceedOnPath(bool publishRoute) {
  if (!current_.route) return false;
  const auto place = placeOnRoute();
  if (!place) return false;
  auto trimmed = std::make_shared<Route>(*current_.route);
  const bool onRoute = trimRoute(*trimmed, place);
  current_.route = std::move(trimmed);
  if (onRoute) completedRouteCalculation(publishRoute);
  return onRoute;
}

/// The route is the one that the active routing task follows, which in most cases is this task.
std::shared_ptr<KRVNavPoint> RoutingTask::mapOntoRoute(const std::shared_ptr<KRVNavPoint>& point) {
  if (!graphSource().graph()) return nullptr;
  const auto track = activeRoute().track();
  if (track && track->canPlace(*point)) {
    const auto place = track->place(*point, weakConfigDependents());
    return place ? place->node : nullptr;
  }
  const auto onRoute = mapOntoGraph(point, false);
  return onRoute ? onRoute->node() : nullptr;
}

std::shared_ptr<Intersection> RoutingTask::mapOntoGraph(const std::shared_ptr<KRVNavPoint>& point,
                                                        bool onOriginalGraph) {
  intersectionTask_ = std::make_shared<IntersectionTask>(
      weakConfigDependents(), point, [](const auto&) {}, onOriginalGraph);
  intersectionTask_->runUnlessGraphIsMissing();
  return intersectionTask_->intersection();
}

void RoutingTask::findRoute() {
  if (!graphSource().graph()) return;
  const auto start = mapOntoGraph(originalPoint_ ? originalPoint_ : current_.point, true);
  const auto walls = configOf(*this).checkDestinationsAgainstOwnWalls() ? DestinationWalls::own
                                                                        : DestinationWalls::held;
  const auto targets = destinationNodes(*current_.possibleDestinations, weakConfigDependents(),
                                        intersectionTask_->mapper(), walls);
  disarmTimeLimit();
  // A first route takes as long as it takes; only where an older one can stay is there a limit.
  if (current_.route) armTimeLimit();
  pathFinder_->setLookForBarrierFreeRoute(barrierFree_);
  pathFinder_->restart();
  const auto graph = graphSource().graph();
  if (!graph || !start) return;
  const Points nodes = searchPath(graph, start, targets);
  if (!pathFinder_->interrupted()) current_.route = routeAlong(nodes, *graph, *start);
  disarmTimeLimit();
  pathFinderInterruptionTimer_.reset();
  pathFinder_->restart();  // lest it keeps a building alive that is not searched any more
}

void RoutingTask::armTimeLimit() {
  pathFinderInterruptionTimer_ =
      SearchTimeLimit::arm([finder = std::weak_ptr<DijkstraImproved>(pathFinder_)] {
        if (const auto alive = finder.lock()) alive->interrupt();
      });
}

void RoutingTask::disarmTimeLimit() {
  if (pathFinderInterruptionTimer_) pathFinderInterruptionTimer_->invalidate();
}

RoutingTask::Points RoutingTask::searchPath(const std::shared_ptr<KRVNavGraph>& graph,
                                            const std::shared_ptr<Intersection>& start,
                                            const Points& destinationNodes) {
  const Benchmark benchmark = Benchmark::start();
  const SearchStart from = searchStartOf(start);
  Points nodes = pathFinder_->findPathInGraph(graph, from.nodes, from.distances, destinationNodes,
                                              barrierFree_);
  const double seconds = benchmark.stop();
  KorvaniCommon::KRVDDLogTest(
      [&] { return "RoutingTask: Dijkstra took " + std::to_string(seconds) + "s"; },
      kKRVNavigationModuleName);
  return nodes;
}

std::shared_ptr<const Route> RoutingTask::routeAlong(const Points& nodes, const KRVNavGraph& graph,
                                                     const Intersection& start) {
  const Config& config = configOf(*this);
  const auto destination = pathFinder_->destination();
  Edges edges = edgesFor(nodes, graph);
  directLine_ = edges.empty() && !destination;
  createWrappedNonBarrierIntersectionRoute(edges, start, destination,
                                           {current_.point, *current_.possibleDestinations,
                                            config.levelHeight(), intersectionTask_->mapper()});
  if (config.activateRouteOptimisation()) {
    edges = cutCorners(std::move(edges), *intersectionTask_->obstacleDetector());
  }
  return std::make_shared<Route>(createRoute(std::move(edges)));
}

void RoutingTask::completedRouteCalculation(bool publishRoute) {
  completeRoute();
  if (publishRoute && current_.route) lookForArrival(*current_.route);
  storeCurrent();
  if (!publishRoute) return;
  if (arrived_) {
    finish();
  } else {
    publish();
  }
}

void RoutingTask::lookForArrival(const Route& route) {
  const auto left = route.remainingSteps();
  if (left->view().empty()) return;
  arrived_ = route.remainingDistance() < configOf(*this).targetProximityDistance();
  if (arrived_) current_.destination = left->view().back().end();
}

void RoutingTask::completeRoute() {
  current_.calculatedGraphForRoute.reset();
  if (!current_.route) return;
  auto route = std::make_shared<Route>(*current_.route);
  const auto steps = route->remainingSteps();
  route->setDirections(directions_ ? RouteInstructions::of(*steps) : std::vector<Directions>());
  current_.route = std::move(route);
  current_.calculatedGraphForRoute = std::make_shared<RouteTrack>(steps);
}

void RoutingTask::storeCurrent() {
  state_.update([&](State& state) {
    state.route = current_.route;
    state.calculatedGraphForRoute = current_.calculatedGraphForRoute;
    state.destination = current_.destination;
  });
}

void RoutingTask::publish() {
  const auto self = std::static_pointer_cast<RoutingTask>(shared_from_this());
  auto update = std::make_shared<RoutingUpdateTask>(self);
  auto route = current_.route ? std::optional<Route>(*current_.route) : std::nullopt;
  // What is delivered is fixed now: by the time of the delivery the task may have moved on.
  afterExecution([this, update = std::move(update), route = std::move(route),
                  destination = current_.destination] {
    if (completionHandler_ && !isLetGo()) completionHandler_(update, route, false, destination);
  });
}

void RoutingTask::done() {
  if (isLetGo()) return;
  const auto destination = state_.load().destination;
  if (completionHandler_) completionHandler_(nullptr, std::nullopt, true, destination);
  if (!destination) return;
  using KorvaniPlatform::Number;
  NotificationCenter::defaultCenter().post(
      NavigationRoutingTaskDestinationReachedNotification, shared_from_this(),
      {{kNavigationRoutingTaskDestinationReachedLatitude,
        Number::real(destination->coordinate().latitude)},
       {kNavigationRoutingTaskDestinationReachedLongitude,
        Number::real(destination->coordinate().longitude)},
       {kNavigationRoutingTaskDestinationReachedLevel, Number::integer(destination->level())}});
}

}  // namespace KorvaniNavigation
