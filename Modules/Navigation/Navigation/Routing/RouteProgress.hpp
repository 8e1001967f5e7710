#pragma once

// Internal. Shortens a route to where the person is.

#include <memory>

namespace KorvaniNavigation {

class KRVNavPoint;
class Route;
class Step;

/// Whether a point lies on a step: the way through it is longer than the step by less than a
/// thousandth of the step and less than half a metre, or the point is less than half a metre
/// from one of the step's ends. The latter distance carries the level height, so with levels
/// higher than that it never decides.
bool liesOnStep(const KRVNavPoint& point, const Step& step);

/// Drops the steps before the first one on which `point` lies, and lets the route start at
/// `point`. The route's points and totals stay those of the whole route.
///
/// @return false when `point` lies on no step; the route has no steps then
bool trimRoute(Route& route, const std::shared_ptr<KRVNavPoint>& point);

}  // namespace KorvaniNavigation
