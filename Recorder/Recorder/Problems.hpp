#pragma once

// Internal. What went wrong, for whoever asks later.

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace KorvaniRecorder {

// A list that stays short: a recorder that lives for weeks must not fill the memory with what its
// folder lacks. One thread at a time.
class Problems {
 public:
  static constexpr std::size_t kMost = 100;

  void add(std::string problem) {
    if (kept_.size() < kMost) {
      kept_.push_back(std::move(problem));
    } else {
      ++further_;
    }
  }

  // In the order they came; the last entry counts those beyond the first hundred.
  std::vector<std::string> list() const {
    std::vector<std::string> all = kept_;
    if (further_ > 0) all.push_back("and " + std::to_string(further_) + " more");
    return all;
  }

 private:
  std::vector<std::string> kept_;
  std::size_t further_ = 0;
};

}  // namespace KorvaniRecorder
