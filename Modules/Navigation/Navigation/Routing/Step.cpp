#include "Navigation/Routing/Step.hpp"

#include <utility>

#include "Navigation/Directions/DirectionsHelpers.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

Step::Step(std::shared_ptr<KRVNavPoint> start, std::shared_ptr<KRVNavPoint> end, double distance,
           bool barrierFree, double timeMultiplicator, std::string neighborType)
    : start_(std::move(start)),
      end_(std::move(end)),
      distance_(distance),
      timeMultiplicator_(timeMultiplicator),
      barrierFree_(barrierFree),
      neighborType_(std::move(neighborType)) {
  if (!start_ || !end_) KORVANI_FATAL("a step needs two points");
  levelChange_ = start_->level() != end_->level();
  heading_ = DirectionsHelpers::bearingToLocation(end_->location(), start_->location());
}

Step Step::withHeading(std::shared_ptr<KRVNavPoint> start, std::shared_ptr<KRVNavPoint> end,
                       double distance, double heading, bool barrierFree, double timeMultiplicator,
                       std::string neighborType) {
  Step step(std::move(start), std::move(end), distance, barrierFree, timeMultiplicator,
            std::move(neighborType));
  step.heading_ = heading;
  return step;
}

}  // namespace KorvaniNavigation
