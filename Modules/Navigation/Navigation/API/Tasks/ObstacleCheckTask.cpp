#include "Navigation/API/Tasks/ObstacleCheckTask.hpp"

#include <utility>

#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Obstacles/ObstacleDenier.hpp"

namespace KorvaniNavigation {

ObstacleCheckTask::ObstacleCheckTask(std::weak_ptr<ConfigDependents> configDependents, bool async,
                                     std::shared_ptr<KRVNavPoint> point,
                                     std::shared_ptr<ObstacleDenier> obstacleDenier,
                                     CompletionHandler completionHandler)
    : Task(std::move(configDependents), async),
      point_(std::move(point)),
      completionHandler_(std::move(completionHandler)),
      obstacleDenier_(std::move(obstacleDenier)) {}

ObstacleCheckTask::~ObstacleCheckTask() = default;

void ObstacleCheckTask::execute() {
  checkedPoint_.store(obstacleDenier_->check(*point()));
  finish();
}

void ObstacleCheckTask::done() {
  if (completionHandler_) completionHandler_(*checkedPoint());
}

}  // namespace KorvaniNavigation
