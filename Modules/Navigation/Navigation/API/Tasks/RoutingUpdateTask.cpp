#include "Navigation/API/Tasks/RoutingUpdateTask.hpp"

#include <utility>

#include "Navigation/API/Tasks/RoutingTask.hpp"

namespace KorvaniNavigation {

RoutingUpdateTask::RoutingUpdateTask(std::weak_ptr<RoutingTask> routingTask)
    : routingTask_(std::move(routingTask)) {}

void RoutingUpdateTask::updateStartPoint(std::shared_ptr<KRVNavPoint> point) const {
  if (const auto task = routingTask_.lock()) task->proceedTo(std::move(point));
}

}  // namespace KorvaniNavigation
