#pragma once

#include <concepts>
#include <cstdint>
#include <limits>
#include <utility>

#include "Platform/Export.hpp"

/// A boxed number that remembers what it was.
///
/// Configuration values and dictionary entries carry numbers whose kind matters to who reads them:
/// a switch is not a 1, and a single-precision distance is not its double. A `Number` keeps the
/// kind and converts to any other:
///
///     Number height = 3.0;
///     height.kind();            // Number::Kind::real
///     height.integerValue();    // 3
///
/// Thread safety: a value.

namespace KorvaniPlatform {

/// The built-in integers of any size; a truth value is none.
template <class T>
concept IntegralNumber = std::integral<T> && !std::same_as<T, bool>;

class KORVANI_API Number {
 public:
  /// What the number was made from: a truth value, an integer (64 bits, signed), a number of single
  /// precision, or one of double precision.
  enum class Kind { boolean, integer, floating, real };

  /// The integer 0.
  Number() = default;

  /// Conversions, so that numbers can be written where a `Number` is expected. They are constrained
  /// on the exact type: a pointer is no truth value, and an `int` is not ambiguous. Integers beyond
  /// 64 signed bits become the nearest one.
  // NOLINTBEGIN(google-explicit-constructor): the conversions are wanted.
  template <std::same_as<bool> T>
  Number(T value) : kind_(Kind::boolean), integer_(value ? 1 : 0) {}
  template <IntegralNumber T>
  Number(T value) : integer_(clamped(value)) {}
  template <std::same_as<float> T>
  Number(T value) : kind_(Kind::floating), real_(static_cast<double>(value)) {}
  template <std::same_as<double> T>
  Number(T value) : kind_(Kind::real), real_(value) {}
  // NOLINTEND(google-explicit-constructor)

  static Number boolean(bool value) { return Number(value); }
  static Number integer(std::int64_t value) { return Number(value); }
  static Number single(float value) { return Number(value); }
  static Number real(double value) { return Number(value); }

  Kind kind() const { return kind_; }

  /// False for zero and for what is not a number, true for everything else.
  bool boolValue() const;

  /// A truth value is 0 or 1; integers beyond 53 bits are rounded to nearest.
  double doubleValue() const;

  /// As `doubleValue`, rounded to single precision; infinite beyond its range.
  float floatValue() const;

  /// Fractions are cut off towards zero; beyond the range of 64 bits, infinity included, it is the
  /// least or greatest integer; 0 for what is not a number.
  std::int64_t integerValue() const;

  /// Equal when kind and value are: the integer 1, the real 1 and true are three different numbers.
  /// As ever, what is not a number equals nothing, not even itself.
  friend KORVANI_API bool operator==(const Number& a, const Number& b);

 private:
  template <std::integral T>
  static std::int64_t clamped(T value) {
    using Limits = std::numeric_limits<std::int64_t>;
    if constexpr (std::numeric_limits<T>::digits > Limits::digits) {
      if (value > static_cast<T>(Limits::max())) return Limits::max();
    }
    return static_cast<std::int64_t>(value);
  }

  bool holdsInteger() const { return kind_ == Kind::boolean || kind_ == Kind::integer; }

  Kind kind_ = Kind::integer;
  std::int64_t integer_ = 0;
  double real_ = 0;
};

}  // namespace KorvaniPlatform
