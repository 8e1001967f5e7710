#include "Navigation/Directions/RouteInstructions.hpp"

#include <algorithm>
#include <iterator>

#include "Navigation/Directions/StraightRuns.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Routing/RemainingSteps.hpp"
#include "Navigation/Routing/RouteNotes.hpp"

namespace KorvaniNavigation {

namespace {

bool allHaveLevels(const std::vector<Step>& steps) {
  const KRVNavPoint* known = nullptr;
  return std::all_of(steps.begin(), steps.end(), [&](const Step& step) {
    const bool startHas = step.start().get() == known || hasLevel(step.start()->location());
    known = step.end().get();
    return startHas && hasLevel(known->location());
  });
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

/// Those of the whole route are made for their own sake only if that cannot stop the process for a
/// place that the person has passed; otherwise they are none.
std::vector<Directions> RouteInstructions::of(const RemainingSteps& left) {
  ComputedSteps& computed = *left.computed();
  const auto notes = RouteNotes::of(computed);
  const auto whole = notes->derived().get<RouteInstructions>(0, [&computed] {
    const std::vector<Step> none;
    const bool isSafe = allHaveLevels(computed.steps);
    return std::make_shared<const RouteInstructions>(StepsView(isSafe ? computed.steps : none));
  });
  if (whole->runs_.empty()) return RouteInstructions(left.view()).all();
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
