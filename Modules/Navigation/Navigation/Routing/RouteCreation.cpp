#include "Navigation/Routing/RouteCreation.hpp"

#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "Common/KorvaniCommonHelpers.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"

namespace KorvaniNavigation {

namespace {

using KorvaniCommon::BearingPlace;

constexpr double kReversalTolerance = 1.0;  // degrees

/// The headings of the edges of a way, most of which start where the one before ends.
class Headings {
 public:
  double of(const RouteEdge& edge) {
    const bool goesOn = edge.start.get() == end_;
    const BearingPlace from = goesOn ? *place_ : placeOf(*edge.start);
    end_ = edge.end.get();
    place_ = placeOf(*edge.end);
    return KorvaniCommon::initialBearing(from, *place_);
  }

 private:
  static BearingPlace placeOf(const KRVNavPoint& point) {
    return BearingPlace(point.location().coordinate());
  }

  const KRVNavPoint* end_ = nullptr;  // of the last edge
  std::optional<BearingPlace> place_;
};

Step stepOf(RouteEdge&& edge, double heading) {
  return Step::withHeading(std::move(edge.start), std::move(edge.end), edge.distance, heading,
                           edge.isBarrierFree, edge.multiplicator,
                           std::move(edge.type).value_or(std::string()));
}

/// A heading, brought into (-180, 180] degrees; without rounding, as the IEEE remainder has it.
double withinHalfATurn(double heading) { return heading > 180.0 ? heading - 360.0 : heading; }

/// Whether `next` runs back on `last`. Going back south after going due north is not seen as
/// such, because the two headings come out as -180 and 180.
bool runsBack(const Step& last, const Step& next) {
  if (last.levelChange()) return false;
  const double turned = last.heading() - 180.0;
  return std::abs(turned - withinHalfATurn(next.heading())) <= kReversalTolerance;
}

/// One straight step from where `last` starts to where `next` ends, otherwise like `next`.
Step merged(const Step& last, const Step& next) {
  return Step(last.start(), next.end(), last.start()->distanceFrom(*next.end()), next.barrierFree(),
              next.timeMultiplicator(), next.neighborType());
}

}  // namespace

Route createRoute(Edges edges) {
  std::vector<Step> steps;
  steps.reserve(edges.size());
  Headings headings;
  for (RouteEdge& edge : edges) {
    const double heading = headings.of(edge);
    Step step = stepOf(std::move(edge), heading);
    if (!steps.empty() && runsBack(steps.back(), step)) {
      steps.back() = merged(steps.back(), step);
    } else {
      steps.push_back(std::move(step));
    }
  }
  return Route(std::move(steps));
}

}  // namespace KorvaniNavigation
