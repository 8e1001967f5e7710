#include "Navigation/Directions/TurnByTurnDirectionCalculator.hpp"

#include <iterator>
#include <utility>

#include "Navigation/Directions/RouteInstructions.hpp"
#include "Navigation/Directions/StraightRuns.hpp"

namespace KorvaniNavigation {

namespace {

std::vector<Step>::const_iterator stepAt(const std::vector<Step>& steps, std::size_t index) {
  return std::next(steps.begin(), static_cast<std::ptrdiff_t>(index));
}

}  // namespace

std::vector<Directions> TurnByTurnDirectionCalculator::directionsForRoute(
    const std::vector<Step>& steps, bool /*andHistoryUsage*/) const {
  return RouteInstructions(StepsView(steps)).all();
}

std::vector<StraightSegment> TurnByTurnDirectionCalculator::findAllStraightSegments(
    const std::vector<Step>& steps) const {
  std::vector<StraightSegment> segments;
  const StepsView view(steps);
  for (std::size_t start = 0; start < steps.size();) {
    const Run run = runAt(view, start);
    StraightSegment segment;
    segment.startIndex = start;
    segment.bearing = run.bearing;
    segment.distance = run.distance;
    segment.intermediateSteps.assign(stepAt(steps, start), stepAt(steps, run.next));
    if (run.next < steps.size()) segment.nextStep = steps[run.next];
    segment.levelChangeDirection = run.levelChange;
    if (run.typeName) segment.neighbourType = *run.typeName;
    segments.push_back(std::move(segment));
    start = run.next;
  }
  return segments;
}

StraightSegmentExtent TurnByTurnDirectionCalculator::extendLongestStraightSegment(
    const std::vector<Step>& steps, std::size_t startingFrom, bool allSegments) const {
  StraightSegmentExtent extent;
  extent.nextStartIndex = startingFrom;
  if (startingFrom >= steps.size()) return extent;
  const Run run = runAt(StepsView(steps), startingFrom);
  extent.referenceBearing = run.bearing;
  // The limit is on the length with the step that ended the run.
  const bool isTooShort = !(run.distanceWithNext > kKRVNavigationMinimumSegmentLength);
  if (!allSegments && isTooShort && run.next < steps.size()) return extent;
  extent.segmentDistance = run.distance;
  extent.nextStartIndex = run.next;
  extent.levelChangeDirection = run.levelChange;
  if (run.typeName) extent.neighbourType = *run.typeName;
  return extent;
}

std::vector<Directions> TurnByTurnDirectionCalculator::directions(
    const StraightSegment& segment, const StraightSegment* following) const {
  std::vector<Step> steps = segment.intermediateSteps;
  Run run{0, steps.size(), segment.bearing, segment.distance, segment.distance};
  run.levelChange = segment.levelChangeDirection;
  run.typeName = segment.neighbourType ? &*segment.neighbourType : nullptr;
  if (segment.nextStep) steps.push_back(*segment.nextStep);
  std::vector<Directions> instructions;
  if (following == nullptr) {
    appendDestination(run, instructions);
  } else {
    Run next;
    next.bearing = following->bearing;
    next.distance = following->distance;
    appendInstructions(StepsView(steps), run, next, instructions);
  }
  return instructions;
}

}  // namespace KorvaniNavigation
