#include "Navigation/Routing/Route.hpp"

namespace KorvaniNavigation {

namespace {

struct Lengths {
  double metres = 0;
  double weightedMetres = 0;

  void add(const Step& step) {
    metres += step.distance();
    weightedMetres += step.timeMultiplicator() * step.distance();
  }

  double seconds() const { return weightedMetres / Route::kWalkingSpeed; }
};

Lengths lengthsOf(const std::vector<Step>& steps) {
  Lengths lengths;
  for (const Step& step : steps) lengths.add(step);
  return lengths;
}

}  // namespace

Route::Route(std::vector<Step> steps) : steps_(std::move(steps)) {
  Totals totals = processSteps(steps_);
  points_ = std::move(totals.points);
  totalDistance_ = totals.totalDistance;
  travelTime_ = totals.travelTime;
}

double Route::remainingDistance() const { return lengthsOf(steps_).metres; }

double Route::remainingTravelTime() const { return lengthsOf(steps_).seconds(); }

Route::Totals Route::processSteps(const std::vector<Step>& steps) {
  Totals totals;
  if (steps.empty()) return totals;
  Lengths lengths;
  totals.points.reserve(steps.size() + 1);
  for (const Step& step : steps) {
    totals.points.push_back(step.start());
    lengths.add(step);
  }
  totals.points.push_back(steps.back().end());
  totals.totalDistance = lengths.metres;
  totals.travelTime = lengths.seconds();
  return totals;
}

}  // namespace KorvaniNavigation
