#include "Navigation/Routing/RouteProgress.hpp"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "Navigation/Graph/KRVNavPoint.hpp"
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
  const auto& all = route.steps();
  const auto current = std::find_if(all.begin(), all.end(),
                                    [&](const Step& step) { return liesOnStep(*point, step); });
  std::vector<Step> left(current, all.end());
  const bool onRoute = !left.empty();
  if (onRoute) {
    const Step& first = left.front();
    left.front() = Step(point, first.end(), first.end()->distanceFrom(*point), first.barrierFree(),
                        first.timeMultiplicator(), first.neighborType());
  }
  route.setSteps(std::move(left));
  return onRoute;
}

}  // namespace KorvaniNavigation
