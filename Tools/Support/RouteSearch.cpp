#include "Support/RouteSearch.hpp"

#include <limits>
#include <utility>

#include "Navigation/API/Constants.hpp"
#include "Navigation/API/Navigation.hpp"
#include "Navigation/API/Tasks/RoutingTask.hpp"
#include "Navigation/API/Tasks/RoutingUpdateTask.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Platform/Location.hpp"
#include "Platform/MainQueue.hpp"
#include "Platform/NotificationCenter.hpp"
#include "Support/InputError.hpp"

namespace KorvaniTools {

using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::Navigation;
using KorvaniNavigation::Route;
using KorvaniNavigation::RoutingUpdateTask;
using KorvaniPlatform::mainQueue;

namespace {

std::shared_ptr<KRVNavPoint> pointAt(const Spot& spot) {
  return std::make_shared<KRVNavPoint>(spot.coordinate, spot.level);
}

}  // namespace

void provideGraph(const std::shared_ptr<KorvaniNavigation::KRVNavGraph>& graph) {
  Navigation::sharedInstance().provideGraph(graph);
  KorvaniPlatform::NotificationCenter::defaultCenter().post(
      KorvaniNavigation::NavigationGraphCreatedNotification);
}

RouteAnswer searchRoute(const Spot& start, const std::vector<Spot>& destinations,
                        bool barrierFree) {
  Navigation& navigation = Navigation::sharedInstance();
  Navigation::Points points;
  for (const Spot& destination : destinations) points.push_back(pointAt(destination));
  RouteAnswer answer;
  std::shared_ptr<KRVNavPoint> reached;
  const auto task = navigation.routingTask(
      pointAt(start), points,
      [&](const std::shared_ptr<RoutingUpdateTask>&, std::optional<Route> route, bool finished,
          const std::shared_ptr<KRVNavPoint>& destination) {
        answer.route = std::move(route);
        answer.arrived = finished;
        reached = destination;
        mainQueue().stop();
      });
  if (task == nullptr) throw InputError("a route needs at least one destination");
  if (barrierFree) task->setBarrierFree(true);
  task->setDirections(true);
  task->run();
  mainQueue().run();
  answer.direct = task->isDirectLine();
  navigation.removeTask(task);
  if (answer.route && answer.route->steps().empty()) answer.route.reset();
  if (answer.route) reached = answer.route->steps().back().end();
  if (reached != nullptr) {
    answer.destination = destinationAt(reached->coordinate(), reached->level(), destinations);
  }
  return answer;
}

std::size_t destinationAt(Coordinate end, std::int64_t level,
                          const std::vector<Spot>& destinations) {
  std::size_t nearest = 0;
  bool nearestOnLevel = false;
  double shortest = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < destinations.size(); ++i) {
    const bool onLevel = destinations[i].level == level;
    if (nearestOnLevel && !onLevel) continue;
    const double distance = KorvaniPlatform::greatCircleDistance(end, destinations[i].coordinate);
    if (distance < shortest || (onLevel && !nearestOnLevel)) {
      nearest = i;
      nearestOnLevel = onLevel;
      shortest = distance;
    }
  }
  return nearest;
}

void requireRegions(const Building& building) {
  if (!building.regions.empty()) return;
  throw InputError("the building has no region, node or obstacle: nothing to walk on");
}

}  // namespace KorvaniTools
