#include "Support/RouteStretches.hpp"

#include "Navigation/Graph/KRVNavPoint.hpp"

namespace KorvaniTools {
namespace {

using KorvaniNavigation::Directions;
using KorvaniNavigation::DirectionsType;
using KorvaniNavigation::Route;
using KorvaniNavigation::Step;

bool isChange(const Directions& instruction) {
  return instruction.type() == DirectionsType::levelUp ||
         instruction.type() == DirectionsType::levelDown;
}

/// Whether a stretch that ends with `instruction` ends where `step` begins.
bool endsBefore(const Step& step, const Directions& instruction) {
  const auto& waypoint = instruction.nextWaypoint();
  if (waypoint == nullptr) return false;
  if (isChange(instruction)) return step.levelChange() && step.end() == waypoint;
  return step.start()->level() == waypoint->level() &&
         step.start()->coordinate() == waypoint->coordinate();
}

/// The instructions by stretch: a go-straight instruction belongs to the one that follows it.
std::vector<RouteStretch> pairInstructions(const std::vector<Directions>& directions) {
  std::vector<RouteStretch> stretches;
  const Directions* forward = nullptr;
  for (const Directions& instruction : directions) {
    const bool straight = instruction.type() == DirectionsType::forward;
    if (straight && forward == nullptr) {
      forward = &instruction;
      continue;
    }
    stretches.push_back({forward, &instruction, nullptr, 0});
    forward = nullptr;
  }
  return stretches;
}

}  // namespace

const Step* RouteStretch::change() const {
  return stepCount > 0 && firstStep->levelChange() ? firstStep : nullptr;
}

double RouteStretch::walked() const {
  if (stepCount == 0) return forward != nullptr ? forward->distance() : ending->distance();
  double metres = 0;
  for (const Step& step : *this) metres += step.levelChange() ? 0 : step.distance();
  return metres;
}

bool RouteStretch::endsWithChange() const { return isChange(*ending); }

std::vector<RouteStretch> stretchesOf(const Route& route) {
  const std::vector<Step>& steps = route.steps();
  if (steps.empty()) return {};
  std::vector<RouteStretch> stretches = pairInstructions(route.directions());
  std::size_t next = 0;
  for (RouteStretch& stretch : stretches) {
    if (next == steps.size()) break;
    std::size_t end = next + 1;
    while (end < steps.size() && !endsBefore(steps[end], *stretch.ending)) ++end;
    stretch.firstStep = &steps[next];
    stretch.stepCount = end - next;
    next = end;
  }
  return stretches;
}

}  // namespace KorvaniTools
