#include "Trace/ReplayEvents.hpp"

#include <algorithm>
#include <cstdint>

#include "Navigation/Localisation/EdgeIntersection.hpp"

namespace KorvaniTools {

using KorvaniNavigation::Intersection;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::Route;
using KorvaniPlatform::CLLocationCoordinate2D;
using KorvaniPlatform::Notification;

namespace {

OrderedJson newEvent(std::size_t line, const std::string& name) {
  return {{"line", line}, {"event", name}};
}

OrderedJson placeJson(const std::shared_ptr<KRVNavPoint>& point) {
  if (point == nullptr) return nullptr;
  OrderedJson place = pointJson(*point);
  place.erase("id");
  return place;
}

}  // namespace

OrderedJson intersectionEvent(std::size_t line, const std::shared_ptr<Intersection>& intersection) {
  OrderedJson event = newEvent(line, "intersection");
  if (intersection == nullptr) {
    event["kind"] = nullptr;
    return event;
  }
  const auto edge = asEdge(intersection);
  event["kind"] = edge == nullptr ? "node" : "edge";
  event["node"] = pointJson(*intersection->node());
  event["distance"] = numberJson(intersection->distance());
  event["delta"] = numberJson(intersection->delta());
  if (edge != nullptr) {
    event["enclosing"] = {pointJson(*edge->enclosingNodeOne())["id"],
                          pointJson(*edge->enclosingNodeTwo())["id"]};
  }
  return event;
}

OrderedJson routeEvent(std::size_t line, const std::optional<Route>& route) {
  OrderedJson event = newEvent(line, "route");
  event["route"] = routeJson(route);
  event["finished"] = false;
  return event;
}

OrderedJson arrivalEvent(std::size_t line, const std::shared_ptr<KRVNavPoint>& destination) {
  OrderedJson event = newEvent(line, "route");
  event["route"] = nullptr;
  event["finished"] = true;
  event["destination"] = placeJson(destination);
  return event;
}

OrderedJson notificationEvent(std::size_t line, const Notification& notification) {
  OrderedJson event = newEvent(line, "notification");
  event["name"] = notification.name;
  event["userInfo"] = valueJson(notification.userInfo);
  return event;
}

OrderedJson coordinateEvent(std::size_t line, const std::string& event,
                            CLLocationCoordinate2D coordinate) {
  OrderedJson json = newEvent(line, event);
  json["lat"] = numberJson(coordinate.latitude);
  json["lon"] = numberJson(coordinate.longitude);
  return json;
}

OrderedJson errorEvent(std::size_t line, const std::string& message) {
  OrderedJson event = newEvent(line, "error");
  event["message"] = message;
  return event;
}

}  // namespace KorvaniTools
