#pragma once

// Internal.

#include <cstddef>
#include <vector>

#include "Navigation/Routing/Step.hpp"

namespace KorvaniNavigation {

/// Steps to read, in walking order: those of a list, of which the first may be another one.
///
/// A plain value that refers to its steps; they must outlive it.
class StepsView {
 public:
  /// The steps of a list.
  explicit StepsView(const std::vector<Step>& steps)
      : StepsView(steps.data(), steps.data(), steps.size()) {}

  /// The `size` steps at `steps`, with `*first` in place of the first of them.
  StepsView(const Step* first, const Step* steps, std::size_t size)
      : first_(first), steps_(steps), size_(size) {}

  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }

  /// The step at `index`, which is less than `size()`.
  const Step& operator[](std::size_t index) const { return index == 0 ? *first_ : steps_[index]; }

  /// The last one; there is one.
  const Step& back() const { return (*this)[size_ - 1]; }

 private:
  const Step* first_;
  const Step* steps_;
  std::size_t size_;
};

}  // namespace KorvaniNavigation
