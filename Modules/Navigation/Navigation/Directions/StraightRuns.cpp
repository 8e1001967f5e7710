#include "Navigation/Directions/StraightRuns.hpp"

#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "Navigation/Directions/AngleDifference.hpp"
#include "Navigation/Directions/DirectionsHelpers.hpp"
#include "Navigation/Directions/StraightSegment.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

namespace {

constexpr double kSharpTurnDegrees = 50.0;
constexpr double kArrowOffsetBehindTurn = 0.5;

std::int64_t levelOf(const CLLocation& location) {
  if (!hasLevel(location)) {
    KORVANI_FATAL("the level in a location's altitude is not a 64-bit integer");
  }
  return static_cast<std::int64_t>(location.altitude());
}

bool endsRun(const Step& step, std::int64_t runLevel, double referenceBearing) {
  if (step.end()->level() != runLevel) return true;
  return absoluteAngleDifference(referenceBearing, step.heading()) >
         kKRVNavigationTurnDirectionDegreesThreshold;
}

DirectionsType turnType(double reference, double bearing) {
  const double turn = signedAngleDifference(reference, bearing);
  if (std::abs(turn) > kSharpTurnDegrees) {
    return turn >= 0 ? DirectionsType::left : DirectionsType::right;
  }
  return turn >= 0 ? DirectionsType::bearLeft : DirectionsType::bearRight;
}

bool isLast(const StepsView& steps, const Run& run) { return run.next == steps.size(); }

const Step& lastOwnStep(const StepsView& steps, const Run& run) {
  if (run.next == run.start) KORVANI_FATAL("a straight segment without steps");
  return steps[run.next - 1];
}

const Step& turnStepOf(const StepsView& steps, const Run& run) {
  return isLast(steps, run) ? lastOwnStep(steps, run) : steps[run.next];
}

bool isAnnouncedStraight(const Run& run) {
  return run.distance > kKRVNavigationStraightAheadDirectionDistanceThreshold;
}

// The arrow waits until the walker has gone a few metres into the run.
const Step& forwardArrowStep(const StepsView& steps, const Run& run) {
  const Step& last = lastOwnStep(steps, run);
  double before = 0;
  for (std::size_t i = run.start; i < run.next; ++i) {
    if (before > kKRVNavigationMinimumSegmentLength) return steps[i];
    before += steps[i].distance();
  }
  return last;
}

std::optional<std::string> typeNameOf(const Run& run) {
  return run.typeName ? std::optional(*run.typeName) : std::nullopt;
}

Directions levelChangeInstruction(const StepsView& steps, const Run& run) {
  const Step& turnStep = turnStepOf(steps, run);
  const CLLocation place = turnStep.end()->location();
  return Directions(run.levelChange, run.distance, turnStep.end(),
                    DirectionsArrow{place.coordinate(), 0, levelOf(place)},
                    typeNameOf(run).value_or(""));
}

Directions forwardInstruction(const StepsView& steps, const Run& run) {
  const Step& step = forwardArrowStep(steps, run);
  const CLLocation start = step.start()->location();
  const double heading = DirectionsHelpers::bearingToLocation(step.end()->location(), start);
  return Directions(DirectionsType::forward, run.distance,
                    isLast(steps, run) ? nullptr : steps[run.next].start(),
                    DirectionsArrow{start.coordinate(), heading, levelOf(start)}, typeNameOf(run));
}

Directions turnInstruction(const StepsView& steps, const Run& run, const Run& following) {
  const Step& turnStep = turnStepOf(steps, run);
  const CLLocation start = turnStep.start()->location();
  const double heading = DirectionsHelpers::bearingToLocation(turnStep.end()->location(), start);
  const CLLocation peak = DirectionsHelpers::location(start, heading, kArrowOffsetBehindTurn);
  const std::int64_t level = levelOf(start);
  const bool isShort = run.distance <= kKRVNavigationStraightAheadDirectionDistanceThreshold;
  return Directions(turnType(run.bearing, following.bearing),
                    isShort ? run.distance : following.distance,
                    std::make_shared<KRVNavPoint>(start.coordinate(), level),
                    DirectionsArrow{peak.coordinate(), heading, level}, typeNameOf(run));
}

DirectionsType levelChangeBetween(std::int64_t fromLevel, std::int64_t toLevel) {
  if (toLevel > fromLevel) return DirectionsType::levelUp;
  if (toLevel < fromLevel) return DirectionsType::levelDown;
  return DirectionsType::unknown;
}

}  // namespace

Run runAt(const StepsView& steps, std::size_t start) {
  const Step& first = steps[start];
  const std::int64_t level = first.end()->level();
  Run run{start, steps.size(), first.heading()};
  double total = first.distance();
  run.distance = total;
  for (std::size_t i = start + 1; i < steps.size(); ++i) {
    const Step& step = steps[i];
    total += step.distance();
    run.distance = total;
    if (!endsRun(step, level, run.bearing)) continue;
    run.next = i;
    run.distance = total - step.distance();
    run.levelChange = levelChangeBetween(level, step.end()->level());
    run.typeName = &step.neighborType();
    break;
  }
  run.distanceWithNext = total;
  return run;
}

// The bounds are -2^63 and 2^63, both exact as doubles; the condition is written so that it fails
// for NaN.
bool hasLevel(const CLLocation& location) {
  constexpr double kBound = 9223372036854775808.0;
  const double altitude = location.altitude();
  return altitude >= -kBound && altitude < kBound;
}

void appendInstructions(const StepsView& steps, const Run& run, const Run& following,
                        std::vector<Directions>& instructions) {
  if (run.levelChange != DirectionsType::unknown) {
    instructions.push_back(levelChangeInstruction(steps, run));
    return;
  }
  if (isAnnouncedStraight(run)) instructions.push_back(forwardInstruction(steps, run));
  instructions.push_back(turnInstruction(steps, run, following));
}

void appendDestination(const Run& run, std::vector<Directions>& instructions) {
  instructions.emplace_back(DirectionsType::destination, run.distance, nullptr, std::nullopt,
                            std::nullopt);
}

}  // namespace KorvaniNavigation
