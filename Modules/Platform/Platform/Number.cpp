#include "Platform/Number.hpp"

#include <cmath>

namespace KorvaniPlatform {

namespace {

// 2^63, the first double beyond the integers of 64 signed bits.
constexpr double kIntegerLimit = 9223372036854775808.0;

}  // namespace

bool Number::boolValue() const {
  if (holdsInteger()) return integer_ != 0;
  return real_ != 0 && !std::isnan(real_);
}

double Number::doubleValue() const {
  return holdsInteger() ? static_cast<double>(integer_) : real_;
}

float Number::floatValue() const {
  return holdsInteger() ? static_cast<float>(integer_) : static_cast<float>(real_);
}

std::int64_t Number::integerValue() const {
  if (holdsInteger()) return integer_;
  if (std::isnan(real_)) return 0;
  if (real_ >= kIntegerLimit) return std::numeric_limits<std::int64_t>::max();
  if (real_ < -kIntegerLimit) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(real_);
}

bool operator==(const Number& a, const Number& b) {
  if (a.kind_ != b.kind_) return false;
  return a.holdsInteger() ? a.integer_ == b.integer_ : a.real_ == b.real_;
}

}  // namespace KorvaniPlatform
