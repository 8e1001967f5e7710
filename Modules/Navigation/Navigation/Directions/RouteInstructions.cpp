#include "Navigation/Directions/RouteInstructions.hpp"

#include <algorithm>
#include <iterator>

#include "Navigation/Directions/StraightRuns.hpp"
#include "Navigation/Graph/GraphAccess.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Routing/RemainingSteps.hpp"

namespace KorvaniNavigation {

namespace {

void watchPoints(const std::vector<Step>& steps) {
  for (const Step& step : steps) {
    GraphAccess::watch(*step.start());
    GraphAccess::watch(*step.end());
  }
}

}  // namespace

RouteInstructions::RouteInstructions(const StepsView& steps) {
  if (steps.empty()) {
    all_.emplace_back();
    return;
  }
  runs_.reserve(steps.size());
  all_.reserve(steps.size() + 1);
  Run run = runAt(steps, 0);
  for (;;) {
    runs_.push_back({run.start, run.bearing, run.distance, all_.size()});
    if (run.next == steps.size()) break;
    const Run following = runAt(steps, run.next);
    appendInstructions(steps, run, following, all_);
    run = following;
  }
  appendDestination(run, all_);
}

std::vector<Directions> RouteInstructions::of(const RemainingSteps& left) {
  const ComputedSteps& computed = *left.computed();
  const auto whole =
      computed.derived.get<RouteInstructions>(GraphAccess::pointsStamp(), [&computed] {
        watchPoints(computed.steps);
        return std::make_shared<const RouteInstructions>(StepsView(computed.steps));
      });
  return left.isShortened() ? whole->forRest(left.view(), left.gone()) : whole->all();
}

const RouteInstructions::Place* RouteInstructions::runFrom(std::size_t start) const {
  const auto place =
      std::lower_bound(runs_.begin(), runs_.end(), start,
                       [](const Place& run, std::size_t index) { return run.start < index; });
  return place != runs_.end() && place->start == start ? &*place : nullptr;
}

/// The runs are sought anew until one begins where one of the whole route does.
std::vector<Directions> RouteInstructions::forRest(const StepsView& steps, std::size_t gone) const {
  std::vector<Directions> instructions;
  Run run = runAt(steps, 0);
  while (run.next < steps.size()) {
    if (const Place* const known = runFrom(gone + run.next)) {
      Run following;
      following.bearing = known->bearing;
      following.distance = known->distance;
      instructions.reserve(2 + all_.size() - known->instruction);
      appendInstructions(steps, run, following, instructions);
      instructions.insert(instructions.end(),
                          all_.begin() + static_cast<std::ptrdiff_t>(known->instruction),
                          all_.end());
      return instructions;
    }
    const Run following = runAt(steps, run.next);
    appendInstructions(steps, run, following, instructions);
    run = following;
  }
  appendDestination(run, instructions);
  return instructions;
}

}  // namespace KorvaniNavigation
