#include "Navigation/API/Tasks/RoutingUpdateTask.hpp"

#include <utility>

#include "Navigation/API/Tasks/RoutingTask.hpp"
#include "Platform/MainQueue.hpp"

namespace KorvaniNavigation {

RoutingUpdateTask::RoutingUpdateTask(std::weak_ptr<RoutingTask> routingTask)
    : routingTask_(std::move(routingTask)) {}

bool RoutingUpdateTask::updateStartPoint(std::shared_ptr<KRVNavPoint> point,
                                         const std::function<void()>& taken) const {
  auto task = routingTask_.lock();
  if (!task) return false;
  RoutingTask& routing = *task;
  std::shared_ptr<Task> own = std::move(task);
  const bool isTaken = routing.proceedTo(std::move(point), taken, own);
  // Somebody may have let go of the task meanwhile: it must not end on this thread.
  if (own && !KorvaniPlatform::isMainThread()) {
    KorvaniPlatform::mainQueue().async([own = std::move(own)] {});
  }
  return isTaken;
}

}  // namespace KorvaniNavigation
