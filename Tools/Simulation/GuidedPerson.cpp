#include "Simulation/GuidedPerson.hpp"

#include <utility>

#include "Building/Rectangle.hpp"
#include "Navigation/API/Navigation.hpp"
#include "Navigation/API/Tasks/RoutingUpdateTask.hpp"
#include "Navigation/API/Tasks/SnappingTask.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Platform/MainQueue.hpp"
#include "Support/InputError.hpp"

namespace KorvaniTools {
namespace {

using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::Navigation;
using KorvaniNavigation::Route;
using KorvaniNavigation::RoutingUpdateTask;
using KorvaniPlatform::mainQueue;

std::shared_ptr<KRVNavPoint> pointAt(const TracePoint& point) {
  return std::make_shared<KRVNavPoint>(Coordinate{point.latitude, point.longitude}, point.level);
}

}  // namespace

GuidedPerson::GuidedPerson(const RouteOperation& how) {
  Navigation::Points destinations;
  for (const TracePoint& point : how.to) destinations.push_back(pointAt(point));
  task_ = Navigation::sharedInstance().routingTask(
      pointAt(how.from), destinations,
      [this](std::shared_ptr<RoutingUpdateTask> update, std::optional<Route> route, bool finished,
             const std::shared_ptr<KRVNavPoint>& destination) {
        if (update) update_ = std::move(update);
        route_ = std::move(route);
        arrived_ = finished && destination != nullptr;
        delivered_ = true;
        mainQueue().stop();
      });
  if (task_ == nullptr) throw InputError("a route needs at least one destination");
  if (how.barrierFree) task_->setBarrierFree(*how.barrierFree);
  task_->setDirections(how.directions);
  task_->run();
  serveUntil(delivered_);
}

GuidedPerson::~GuidedPerson() { Navigation::sharedInstance().removeTask(task_); }

void GuidedPerson::moveTo(const TracePoint& position) {
  if (arrived_) return;
  bool snapped = false;
  const auto snapping =
      Navigation::sharedInstance().snappingTask(pointAt(position), [&](const Coordinate&) {
        snapped = true;
        mainQueue().stop();
      });
  snapping->run();
  serveUntil(snapped);
  delivered_ = false;
  update_->updateStartPoint(pointAt(position));
  serveUntil(delivered_);
}

void GuidedPerson::serveUntil(const bool& done) {
  while (!done) mainQueue().run();
}

}  // namespace KorvaniTools
