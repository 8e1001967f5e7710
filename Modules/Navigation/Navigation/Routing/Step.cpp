#include "Navigation/Routing/Step.hpp"

#include <utility>

#include "Navigation/Directions/DirectionsHelpers.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

Step::Step(std::shared_ptr<KRVNavPoint> start, std::shared_ptr<KRVNavPoint> end, double distance,
           bool barrierFree, double timeMultiplicator, std::string neighborType)
    : Step(Heading{0}, std::move(start), std::move(end), distance, barrierFree, timeMultiplicator,
           std::move(neighborType)) {
  heading_ = DirectionsHelpers::bearingToLocation(end_->location(), start_->location());
}

Step::Step(Heading heading, std::shared_ptr<KRVNavPoint> start, std::shared_ptr<KRVNavPoint> end,
           double distance, bool barrierFree, double timeMultiplicator, std::string neighborType)
    : start_(std::move(start)),
      end_(std::move(end)),
      distance_(distance),
      timeMultiplicator_(timeMultiplicator),
      barrierFree_(barrierFree),
      heading_(heading.degrees),
      neighborType_(std::move(neighborType)) {
  if (!start_ || !end_) KORVANI_FATAL("a step needs two points");
  levelChange_ = start_->level() != end_->level();
}

Step Step::withHeading(std::shared_ptr<KRVNavPoint> start, std::shared_ptr<KRVNavPoint> end,
                       double distance, double heading, bool barrierFree, double timeMultiplicator,
                       std::string neighborType) {
  return Step(Heading{heading}, std::move(start), std::move(end), distance, barrierFree,
              timeMultiplicator, std::move(neighborType));
}

}  // namespace KorvaniNavigation
