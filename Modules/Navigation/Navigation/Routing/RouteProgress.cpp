#include "Navigation/Routing/RouteProgress.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Routing/RemainingSteps.hpp"
#include "Navigation/Routing/Route.hpp"

namespace KorvaniNavigation {

namespace {

constexpr double kRelativeTolerance = 0.001;
constexpr double kTolerance = 0.5;  // metres

}  // namespace

bool liesOnStep(const KRVNavPoint& point, const Step& step) {
  const KRVNavPoint& a = *step.start();
  const KRVNavPoint& b = *step.end();
  const double length = a.location().distanceFromLocation(b.location());
  const double detour = point.location().distanceFromLocation(a.location()) +
                        point.location().distanceFromLocation(b.location());
  return std::abs(length - detour) < std::min(length * kRelativeTolerance, kTolerance) ||
         point.distanceFrom(a) < kTolerance || point.distanceFrom(b) < kTolerance;
}

bool trimRoute(Route& route, const std::shared_ptr<KRVNavPoint>& point) {
  const auto left = route.remainingSteps();
  const StepsView steps = left->view();
  std::size_t current = 0;
  while (current < steps.size() && !liesOnStep(*point, steps[current])) ++current;
  if (current == steps.size()) {
    route.setSteps({});
    return false;
  }
  const Step& walked = steps[current];
  route.setRemainingSteps(left->after(
      current, Step(point, walked.end(), walked.end()->distanceFrom(*point), walked.barrierFree(),
                    walked.timeMultiplicator(), walked.neighborType())));
  return true;
}

}  // namespace KorvaniNavigation
