#pragma once

// Internal. What snapping asks of the facade, so that it need not know routing.

#include <memory>
#include <optional>
#include <string>

namespace KorvaniNavigation {

class RouteTrack;
class SnappingTask;

/// The route that the active routing task follows. Any thread may call it.
class ActiveRoute {
 public:
  /// Name of the configuration that the active routing task works with; absent without one.
  /// Fatal error when that configuration is gone.
  virtual std::optional<std::string> configName() const = 0;

  /// What is left of the route that the active routing task follows; null without an active routing
  /// task, or while it has no route.
  virtual std::shared_ptr<const RouteTrack> track() const = 0;

  /// Drives the active routing task on with a position, if it is of the same configuration: it
  /// takes `snappingTask` as its own and, unless it is running, brings its route up to date
  /// without publishing it. Does nothing otherwise. Fatal error when a configuration is gone.
  virtual void proceed(const std::shared_ptr<SnappingTask>& snappingTask) = 0;

 protected:
  ~ActiveRoute() = default;
};

/// The facade in this role. Defined by the facade.
ActiveRoute& activeRoute();

}  // namespace KorvaniNavigation
