#include "Navigation/Directions/TurnByTurnDirectionCalculator.hpp"

#include <cmath>
#include <cstdint>
#include <iterator>
#include <memory>
#include <utility>

#include "Navigation/Directions/AngleDifference.hpp"
#include "Navigation/Directions/DirectionsHelpers.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

namespace {

constexpr double kSharpTurnDegrees = 50.0;
constexpr double kArrowOffsetBehindTurn = 0.5;

// A location's altitude carries the level of its point. The bounds are -2^63 and 2^63, both
// exact as doubles; the condition is written so that it fails for NaN.
std::int64_t levelOf(const CLLocation& location) {
  constexpr double kBound = 9223372036854775808.0;
  const double altitude = location.altitude();
  if (!(altitude >= -kBound && altitude < kBound)) {
    KORVANI_FATAL("the level in a location's altitude is not a 64-bit integer");
  }
  return static_cast<std::int64_t>(altitude);
}

bool endsRun(const Step& step, std::int64_t runLevel, double referenceBearing) {
  if (step.end()->level() != runLevel) return true;
  return absoluteAngleDifference(referenceBearing, step.heading()) >
         kKRVNavigationTurnDirectionDegreesThreshold;
}

DirectionsType levelChangeBetween(std::int64_t fromLevel, std::int64_t toLevel) {
  if (toLevel > fromLevel) return DirectionsType::levelUp;
  if (toLevel < fromLevel) return DirectionsType::levelDown;
  return DirectionsType::unknown;
}

DirectionsType turnType(double reference, double bearing) {
  const double turn = signedAngleDifference(reference, bearing);
  if (std::abs(turn) > kSharpTurnDegrees) {
    return turn >= 0 ? DirectionsType::left : DirectionsType::right;
  }
  return turn >= 0 ? DirectionsType::bearLeft : DirectionsType::bearRight;
}

const std::vector<Step>& stepsOf(const StraightSegment& segment) {
  if (segment.intermediateSteps.empty()) KORVANI_FATAL("a straight segment without steps");
  return segment.intermediateSteps;
}

const Step& turnStepOf(const StraightSegment& segment) {
  return segment.nextStep ? *segment.nextStep : stepsOf(segment).back();
}

bool isAnnouncedStraight(const StraightSegment& segment) {
  return segment.distance > kKRVNavigationStraightAheadDirectionDistanceThreshold;
}

// The arrow waits until the walker has gone a few metres into the segment.
const Step& forwardArrowStep(const StraightSegment& segment) {
  const std::vector<Step>& steps = stepsOf(segment);
  double before = 0;
  for (const Step& step : steps) {
    if (before > kKRVNavigationMinimumSegmentLength) return step;
    before += step.distance();
  }
  return steps.back();
}

Directions levelChangeInstruction(const StraightSegment& segment) {
  const Step& turnStep = turnStepOf(segment);
  const CLLocation place = turnStep.end()->location();
  return Directions(segment.levelChangeDirection, segment.distance, turnStep.end(),
                    DirectionsArrow{place.coordinate(), 0, levelOf(place)},
                    segment.neighbourType.value_or(""));
}

Directions forwardInstruction(const StraightSegment& segment) {
  const Step& step = forwardArrowStep(segment);
  const CLLocation start = step.start()->location();
  const double heading = DirectionsHelpers::bearingToLocation(step.end()->location(), start);
  return Directions(DirectionsType::forward, segment.distance,
                    segment.nextStep ? segment.nextStep->start() : nullptr,
                    DirectionsArrow{start.coordinate(), heading, levelOf(start)},
                    segment.neighbourType);
}

Directions turnInstruction(const StraightSegment& segment, const StraightSegment& following) {
  const Step& turnStep = turnStepOf(segment);
  const CLLocation start = turnStep.start()->location();
  const double heading = DirectionsHelpers::bearingToLocation(turnStep.end()->location(), start);
  const CLLocation peak = DirectionsHelpers::location(start, heading, kArrowOffsetBehindTurn);
  const std::int64_t level = levelOf(start);
  return Directions(turnType(segment.bearing, following.bearing),
                    segment.distance <= kKRVNavigationStraightAheadDirectionDistanceThreshold
                        ? segment.distance
                        : following.distance,
                    std::make_shared<KRVNavPoint>(start.coordinate(), level),
                    DirectionsArrow{peak.coordinate(), heading, level}, segment.neighbourType);
}

}  // namespace

std::vector<Directions> TurnByTurnDirectionCalculator::directionsForRoute(
    const std::vector<Step>& steps, bool /*andHistoryUsage*/) const {
  if (steps.empty()) return {Directions()};
  const std::vector<StraightSegment> segments = findAllStraightSegments(steps);
  std::vector<Directions> instructions;
  for (std::size_t i = 0; i < segments.size(); ++i) {
    const StraightSegment* following = i + 1 < segments.size() ? &segments[i + 1] : nullptr;
    for (Directions& each : directions(segments[i], following)) {
      instructions.push_back(std::move(each));
    }
  }
  return instructions;
}

std::vector<StraightSegment> TurnByTurnDirectionCalculator::findAllStraightSegments(
    const std::vector<Step>& steps) const {
  std::vector<StraightSegment> segments;
  for (std::size_t start = 0; start < steps.size();) {
    const StraightSegmentExtent extent = extendLongestStraightSegment(steps, start, true);
    if (!extent.referenceBearing || !extent.segmentDistance) break;
    const std::size_t next = extent.nextStartIndex;
    StraightSegment segment;
    segment.startIndex = start;
    segment.bearing = *extent.referenceBearing;
    segment.distance = *extent.segmentDistance;
    segment.intermediateSteps.assign(std::next(steps.begin(), static_cast<std::ptrdiff_t>(start)),
                                     std::next(steps.begin(), static_cast<std::ptrdiff_t>(next)));
    if (next < steps.size()) segment.nextStep = steps[next];
    segment.levelChangeDirection = extent.levelChangeDirection;
    segment.neighbourType = extent.neighbourType;
    segments.push_back(std::move(segment));
    start = next;
  }
  return segments;
}

StraightSegmentExtent TurnByTurnDirectionCalculator::extendLongestStraightSegment(
    const std::vector<Step>& steps, std::size_t startingFrom, bool allSegments) const {
  StraightSegmentExtent extent;
  extent.nextStartIndex = startingFrom;
  if (startingFrom >= steps.size()) return extent;

  const Step& first = steps[startingFrom];
  const std::int64_t level = first.end()->level();
  const double bearing = first.heading();
  extent.referenceBearing = bearing;
  double total = first.distance();
  for (std::size_t i = startingFrom + 1; i < steps.size(); ++i) {
    const Step& step = steps[i];
    total += step.distance();
    if (!endsRun(step, level, bearing)) continue;
    // The limit is on the length with the step that ended the run.
    if (!allSegments && !(total > kKRVNavigationMinimumSegmentLength)) return extent;
    extent.segmentDistance = total - step.distance();
    extent.nextStartIndex = i;
    extent.levelChangeDirection = levelChangeBetween(level, step.end()->level());
    extent.neighbourType = step.neighborType();
    return extent;
  }
  extent.segmentDistance = total;
  extent.nextStartIndex = steps.size();
  return extent;
}

std::vector<Directions> TurnByTurnDirectionCalculator::directions(
    const StraightSegment& segment, const StraightSegment* following) const {
  if (following == nullptr) {
    return {Directions(DirectionsType::destination, segment.distance, nullptr, std::nullopt,
                       std::nullopt)};
  }
  if (segment.levelChangeDirection != DirectionsType::unknown) {
    return {levelChangeInstruction(segment)};
  }
  std::vector<Directions> instructions;
  if (isAnnouncedStraight(segment)) instructions.push_back(forwardInstruction(segment));
  instructions.push_back(turnInstruction(segment, *following));
  return instructions;
}

}  // namespace KorvaniNavigation
