#pragma once

#include <memory>

#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class KRVNavPoint;
class RoutingTask;

/// The handle through which a host tells a routing task where the person is now. The routing
/// handler receives a new one with every route; all handles of a task do the same.
///
/// A handle does not keep its task alive; once the task is gone it does nothing. Any thread may
/// use it, also from inside a handler.
class KORVANI_API RoutingUpdateTask {
 public:
  explicit RoutingUpdateTask(std::weak_ptr<RoutingTask> routingTask);

  /// Replaces the task's position and runs the task again. The position is dropped while the
  /// task is running, and after the destination was reached; feed the next one.
  void updateStartPoint(std::shared_ptr<KRVNavPoint> point) const;

 private:
  std::weak_ptr<RoutingTask> routingTask_;
};

}  // namespace KorvaniNavigation
