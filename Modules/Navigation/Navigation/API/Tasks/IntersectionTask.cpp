#include "Navigation/API/Tasks/IntersectionTask.hpp"

#include <utility>

#include "Navigation/Localisation/EdgeIntersection.hpp"
#include "Navigation/Localisation/PositionMapper.hpp"

namespace KorvaniNavigation {

IntersectionTask::IntersectionTask(std::weak_ptr<ConfigDependents> configDependents,
                                   std::shared_ptr<KRVNavPoint> point,
                                   CompletionHandler completionHandler, bool onOriginalGraph)
    : Task(configDependents, false),
      completionHandler_(std::move(completionHandler)),
      navigationPoint_(std::move(point)),
      mapper_(std::make_unique<PositionMapper>(std::move(configDependents), onOriginalGraph)) {}

IntersectionTask::~IntersectionTask() = default;

bool IntersectionTask::onOriginalGraph() const { return mapper_->onOriginalGraph(); }

std::shared_ptr<ObstacleDetector> IntersectionTask::obstacleDetector() const {
  return mapper_->obstacleDetector();
}

void IntersectionTask::execute() {
  intersection_ = intersect(*navigationPoint_);
  finish();
}

void IntersectionTask::done() {
  if (completionHandler_) completionHandler_(intersection_);
}

std::shared_ptr<Intersection> IntersectionTask::intersect(const KRVNavPoint& point) {
  return mapper_->intersect(point);
}

std::shared_ptr<Intersection> IntersectionTask::intersect(
    const KRVNavPoint& point, const std::shared_ptr<KRVNavPoint>& graphNode) {
  return mapper_->intersect(point, graphNode);
}

std::shared_ptr<EdgeIntersection> IntersectionTask::findIntersectionOnSegmentBetween(
    const std::shared_ptr<KRVNavPoint>& start, const std::shared_ptr<KRVNavPoint>& andEnd,
    CLLocationCoordinate2D forCoordinate, bool ignoreWalls) const {
  return mapper_->findIntersectionOnSegmentBetween(start, andEnd, forCoordinate, ignoreWalls);
}

}  // namespace KorvaniNavigation
