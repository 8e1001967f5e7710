#include "Navigation/Routing/RemainingSteps.hpp"

#include <utility>

namespace KorvaniNavigation {

RemainingSteps::RemainingSteps(std::vector<Step> steps)
    : computed_(std::make_shared<ComputedSteps>(std::move(steps))) {}

RemainingSteps::RemainingSteps(std::shared_ptr<ComputedSteps> computed, std::size_t gone,
                               Step first)
    : computed_(std::move(computed)), gone_(gone), first_(std::move(first)) {}

std::shared_ptr<const RemainingSteps> RemainingSteps::after(std::size_t dropped, Step first) const {
  return std::make_shared<const RemainingSteps>(computed_, gone_ + dropped, std::move(first));
}

StepsView RemainingSteps::view() const {
  const std::vector<Step>& all = computed_->steps;
  if (!first_) return StepsView(all);
  return {&*first_, all.data() + gone_, all.size() - gone_};
}

const std::vector<Step>& RemainingSteps::list() const {
  if (!first_) return computed_->steps;
  std::call_once(listing_, [this] {
    const StepsView steps = view();
    list_.reserve(steps.size());
    for (std::size_t i = 0; i < steps.size(); ++i) list_.push_back(steps[i]);
  });
  return list_;
}

}  // namespace KorvaniNavigation
