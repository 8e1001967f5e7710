#include "Navigation/API/Tasks/SnappingTask.hpp"

#include <utility>

#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Localisation/Intersection.hpp"
#include "Navigation/Snapping/ActiveRoute.hpp"
#include "Navigation/Snapping/MagneticPathSnapper.hpp"

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
  intersection_.store(magneticPathSnapper_->perform(point_));
  finish();
}

void SnappingTask::done() {
  const auto place = intersection();
  if (completionHandler_) completionHandler_((place ? place->node() : point_)->coordinate());
}

}  // namespace KorvaniNavigation
