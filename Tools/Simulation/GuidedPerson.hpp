#pragma once

#include <memory>
#include <optional>

#include "Navigation/API/Tasks/RoutingTask.hpp"
#include "Navigation/Routing/Route.hpp"
#include "Trace/TraceOperation.hpp"

namespace KorvaniTools {

/// Somebody whom the engine guides, position by position, just as a replayed trace would have it:
/// each position is snapped first and handed to the routing task then, and nothing happens before
/// everything that came of it has been delivered.
///
///     GuidedPerson person(routeOperation);
///     while (!person.hasArrived()) person.moveTo(nextPosition());
///
/// Works on the main configuration, with the graph that the engine has. To be used on the main
/// thread, which serves the main queue meanwhile. The guiding ends with the object.
class GuidedPerson {
 public:
  /// Asks for the first route and waits for it.
  /// @param how with at least one destination; its `config` is not looked at
  explicit GuidedPerson(const RouteOperation& how);
  ~GuidedPerson();
  GuidedPerson(const GuidedPerson&) = delete;
  GuidedPerson& operator=(const GuidedPerson&) = delete;

  /// Snaps `position` and hands it to the routing task. Does nothing after the arrival.
  void moveTo(const TracePoint& position);

  /// Whether the engine has said that a destination is reached.
  bool hasArrived() const { return arrived_; }

  /// What is left of the route, as the engine sees it; absent without one, and after the arrival.
  const std::optional<KorvaniNavigation::Route>& route() const { return route_; }

 private:
  void serveUntil(const bool& done);

  std::shared_ptr<KorvaniNavigation::RoutingTask> task_;
  std::shared_ptr<KorvaniNavigation::RoutingUpdateTask> update_;
  std::optional<KorvaniNavigation::Route> route_;
  bool delivered_ = false;
  bool arrived_ = false;
};

}  // namespace KorvaniTools
