#pragma once

#include <functional>
#include <memory>

#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class KRVNavPoint;
class RoutingTask;

/// The handle through which a host tells a routing task where the person is now. The routing
/// handler receives a new one with every route; all handles of a task do the same.
///
/// A handle does not keep its task alive; once the task is gone, or the host has had the facade let
/// it go, it does nothing. Any thread may use it, also from inside a handler.
class KORVANI_API RoutingUpdateTask {
 public:
  explicit RoutingUpdateTask(std::weak_ptr<RoutingTask> routingTask);

  /// Replaces the task's position and runs the task again. The position is dropped while the
  /// task is running, and after the destination was reached; feed the next one. Without a graph the
  /// task waits for one.
  ///
  /// For who keeps a protocol of what was asked: whether a position was taken, and when.
  /// @param taken called, unless it is empty, when the position is taken: the task has been
  ///     claimed and knows the position, and nothing has been done with it yet
  /// @return whether the position was taken
  bool updateStartPoint(std::shared_ptr<KRVNavPoint> point,
                        const std::function<void()>& taken = {}) const;

  /// The task that positions go to; absent once it is gone.
  std::shared_ptr<RoutingTask> routingTask() const { return routingTask_.lock(); }

 private:
  std::weak_ptr<RoutingTask> routingTask_;
};

}  // namespace KorvaniNavigation
