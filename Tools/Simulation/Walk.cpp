#include "Simulation/Walk.hpp"

#include <algorithm>
#include <utility>

#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Simulation/GroundOffset.hpp"

namespace KorvaniTools {
namespace {

using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::Route;
using KorvaniNavigation::Step;
using KorvaniPlatform::greatCircleDistance;

constexpr double kBesideANode = 1.0;  // metres

bool isNode(const KRVNavPoint& point) { return point.identifier() >= 0; }

/// Nodes stand where they are; all else is told as finely as a trace writes it.
Whereabouts placeOnWalk(const KRVNavPoint& point) {
  return {isNode(point) ? point.coordinate() : rounded(point.coordinate()), point.level()};
}

double groundLength(const Step& step) {
  return greatCircleDistance(step.start()->coordinate(), step.end()->coordinate());
}

double metresToWalk(const Step& step) {
  const double ground = groundLength(step);
  const double metres = step.levelChange() ? std::max(ground, step.distance()) : ground;
  return metres * step.timeMultiplicator();
}

double between(double a, double b, double fraction) { return a + fraction * (b - a); }

}  // namespace

Walk::Walk(Whereabouts start, double speed) : start_(start), speed_(speed) {}

void Walk::add(const Whereabouts& to, double metres) {
  const double departure = seconds();
  legs_.push_back({end(), to, departure, departure + metres / speed_});
}

void Walk::goTo(const Whereabouts& place) {
  add(place, greatCircleDistance(end().coordinate, place.coordinate));
}

void Walk::follow(const Route& route, std::size_t steps) {
  if (route.steps().empty()) return;
  goTo(placeOnWalk(*route.steps().front().start()));
  for (std::size_t i = 0; i < std::min(steps, route.steps().size()); ++i) {
    const Step& step = route.steps()[i];
    add(placeOnWalk(*step.end()), metresToWalk(step));
  }
}

void Walk::follow(const Route& route) {
  const auto& steps = route.steps();
  const bool endsBesideANode = !steps.empty() && isNode(*steps.back().start()) &&
                               !steps.back().levelChange() &&
                               groundLength(steps.back()) <= kBesideANode;
  follow(route, endsBesideANode ? steps.size() - 1 : steps.size());
}

Whereabouts Walk::at(double seconds) const {
  const auto leg =
      std::find_if(legs_.begin(), legs_.end(), [&](const Leg& it) { return seconds < it.arrival; });
  if (leg == legs_.end()) return end();
  const double fraction = std::max(0.0, seconds - leg->departure) / (leg->arrival - leg->departure);
  const auto [from, to] = std::pair(leg->from, leg->to);
  return {{between(from.coordinate.latitude, to.coordinate.latitude, fraction),
           between(from.coordinate.longitude, to.coordinate.longitude, fraction)},
          fraction < 0.5 ? from.level : to.level};
}

std::optional<Whereabouts> lastNodeOf(const Route& route) {
  std::optional<Whereabouts> last;
  for (const Step& step : route.steps()) {
    if (isNode(*step.start())) last = placeOnWalk(*step.start());
    if (isNode(*step.end())) last = placeOnWalk(*step.end());
  }
  return last;
}

}  // namespace KorvaniTools
