#include "Support/Timing.hpp"

#include <algorithm>

namespace KorvaniBenchmarks {

double median(std::vector<double> numbers) {
  if (numbers.empty()) return 0;
  const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
  std::nth_element(numbers.begin(), middle, numbers.end());
  return *middle;
}

}  // namespace KorvaniBenchmarks
