#pragma once

// Internal. The steps of a route while somebody walks it.

#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "Common/Guarded.hpp"
#include "Navigation/Routing/Step.hpp"
#include "Navigation/Routing/StepsView.hpp"

namespace KorvaniNavigation {

class RouteNotes;

/// The steps of a route as they were computed, and what has been noted of their points.
///
/// The steps are constant, so every stretch of the walk shares them. Any number of threads may use
/// it.
struct ComputedSteps {
  explicit ComputedSteps(std::vector<Step> computed) : steps(std::move(computed)) {}

  const std::vector<Step> steps;
  KorvaniCommon::Guarded<std::shared_ptr<const RouteNotes>> notes;  ///< see RouteNotes::of
};

/// What is left of them: those from some step on, the first of them shortened to where the person
/// is.
///
/// A walk shortens its route many times a second, and most of what is left stays as it was. So
/// nothing of it is copied: what is left refers to the steps as they were computed, and adds its
/// first one. The list of it is made when somebody asks for a list.
///
///     auto left = std::make_shared<const RemainingSteps>(std::move(steps));
///     left = left->after(3, Step(person, left->view()[3].end(), 4.5));
///
/// Constant once made. Any number of threads may read it.
class RemainingSteps {
 public:
  /// All of them.
  explicit RemainingSteps(std::vector<Step> steps);

  /// Those from the one at `dropped` on, with `first` in its place. There is such a step.
  std::shared_ptr<const RemainingSteps> after(std::size_t dropped, Step first) const;

  /// The steps, valid as long as the object.
  StepsView view() const;

  /// The same as a list.
  const std::vector<Step>& list() const;

  /// The steps that these are left of.
  const std::shared_ptr<ComputedSteps>& computed() const { return computed_; }

  /// How many of those are gone; the step at i is the computed one at i + gone(), but for a first
  /// one that was shortened.
  std::size_t gone() const { return gone_; }

  /// Whether the first step is another one than was computed.
  bool isShortened() const { return first_.has_value(); }

  RemainingSteps(std::shared_ptr<ComputedSteps> computed, std::size_t gone, Step first);

 private:
  const std::shared_ptr<ComputedSteps> computed_;
  const std::size_t gone_ = 0;
  const std::optional<Step> first_;
  mutable std::once_flag listing_;
  mutable std::vector<Step> list_;  ///< made on demand
};

}  // namespace KorvaniNavigation
