#include "Navigation/Routing/Route.hpp"

#include "Navigation/Routing/RemainingSteps.hpp"

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

Lengths lengthsOf(const std::shared_ptr<const RemainingSteps>& remaining) {
  Lengths lengths;
  if (!remaining) return lengths;
  const StepsView steps = remaining->view();
  for (std::size_t i = 0; i < steps.size(); ++i) lengths.add(steps[i]);
  return lengths;
}

}  // namespace

Route::Route(std::vector<Step> steps)
    : totals_(std::make_shared<const Totals>(processSteps(steps))),
      steps_(std::make_shared<const RemainingSteps>(std::move(steps))) {}

const std::vector<Step>& Route::steps() const {
  static const auto* const none = new std::vector<Step>();
  return steps_ ? steps_->list() : *none;
}

const std::vector<std::shared_ptr<KRVNavPoint>>& Route::points() const {
  static const auto* const none = new std::vector<std::shared_ptr<KRVNavPoint>>();
  return totals_ ? totals_->points : *none;
}

double Route::totalDistance() const { return totals_ ? totals_->totalDistance : 0; }

double Route::travelTime() const { return totals_ ? totals_->travelTime : 0; }

const std::vector<Directions>& Route::directions() const {
  static const auto* const none = new std::vector<Directions>();
  return directions_ ? *directions_ : *none;
}

double Route::remainingDistance() const { return lengthsOf(steps_).metres; }

double Route::remainingTravelTime() const { return lengthsOf(steps_).seconds(); }

void Route::setSteps(std::vector<Step> steps) {
  steps_ = std::make_shared<const RemainingSteps>(std::move(steps));
}

std::shared_ptr<const RemainingSteps> Route::remainingSteps() const {
  return steps_ ? steps_ : std::make_shared<const RemainingSteps>(std::vector<Step>());
}

void Route::setDirections(std::vector<Directions> directions) {
  directions_ = std::make_shared<const std::vector<Directions>>(std::move(directions));
}

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
