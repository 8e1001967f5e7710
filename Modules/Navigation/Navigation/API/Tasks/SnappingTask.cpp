#include "Navigation/API/Tasks/SnappingTask.hpp"

#include <utility>

#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Snapping/ActiveRoute.hpp"
#include "Navigation/Snapping/MagneticPathSnapper.hpp"
#include "Navigation/Snapping/SnappedPlace.hpp"

namespace KorvaniNavigation {

SnappingTask::SnappingTask(std::weak_ptr<ConfigDependents> configDependents, bool async,
                           std::shared_ptr<KRVNavPoint> point, CompletionHandler completionHandler)
    : Task(std::move(configDependents), async),
      point_(std::move(point)),
      completionHandler_(std::move(completionHandler)),
      magneticPathSnapper_(std::make_unique<MagneticPathSnapper>(weakConfigDependents())) {}

SnappingTask::~SnappingTask() = default;

void SnappingTask::execute() {
  originalPoint_.store(point_);
  activeRoute().proceed(std::static_pointer_cast<SnappingTask>(shared_from_this()));
  place_.store(magneticPathSnapper_->snap(point_));
  finish();
}

std::shared_ptr<Intersection> SnappingTask::intersection() const {
  const auto place = place_.load();
  return place ? place->intersection() : nullptr;
}

void SnappingTask::done() {
  const auto place = place_.load();
  if (completionHandler_) completionHandler_(place ? place->coordinate() : point_->coordinate());
}

}  // namespace KorvaniNavigation
