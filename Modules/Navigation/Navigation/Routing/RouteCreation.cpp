#include "Navigation/Routing/RouteCreation.hpp"

#include <cmath>
#include <utility>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"

namespace KorvaniNavigation {

namespace {

constexpr double kReversalTolerance = 1.0;  // degrees

Step stepOf(const KRVNavEdge& edge) {
  return Step(edge.start(), edge.end(), edge.distance(), edge.isBarrierFree(), edge.multiplicator(),
              edge.type().value_or(""));
}

/// Whether `next` runs back on `last`. Going back south after going due north is not seen as
/// such, because the two headings come out as -180 and 180.
bool runsBack(const Step& last, const Step& next) {
  if (last.levelChange()) return false;
  const double turned = std::remainder(last.heading() - 180.0, 360.0);
  return std::abs(turned - std::remainder(next.heading(), 360.0)) <= kReversalTolerance;
}

/// One straight step from where `last` starts to where `next` ends, otherwise like `next`.
Step merged(const Step& last, const Step& next) {
  return Step(last.start(), next.end(), last.start()->distanceFrom(*next.end()), next.barrierFree(),
              next.timeMultiplicator(), next.neighborType());
}

}  // namespace

Route createRoute(const std::vector<std::shared_ptr<KRVNavEdge>>& edges) {
  std::vector<Step> steps;
  steps.reserve(edges.size());
  for (const auto& edge : edges) {
    Step step = stepOf(*edge);
    if (!steps.empty() && runsBack(steps.back(), step)) {
      steps.back() = merged(steps.back(), step);
    } else {
      steps.push_back(std::move(step));
    }
  }
  return Route(std::move(steps));
}

}  // namespace KorvaniNavigation
