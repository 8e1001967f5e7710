#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace KorvaniTools {

/// Random numbers that are the same on every machine.
///
///     RandomSource random(seed, 0);
///     const double error = 2.0 * random.gaussian();   // standard deviation 2
///
/// The C++ standard fixes what `std::mt19937_64` gives, but not what the standard distributions
/// make of it, so numbers are made of its output here: by additions, multiplications and divisions,
/// whose results are the same wherever doubles are those of IEEE 754.
///
/// Sources of one seed and different streams are independent of each other: what one of them is
/// used for does not change what another gives. Not thread-safe.
class RandomSource {
 public:
  RandomSource(std::uint64_t seed, std::uint32_t stream);

  /// Between 0 and 1, never either of them; a multiple of 2^-53.
  double uniform();

  /// Of the normal distribution with mean 0 and standard deviation 1.
  ///
  /// The quotient of two uniform numbers, accepted or drawn again (Kinderman and Monahan, 1977).
  /// The logarithm, which differs between C libraries in its last bit, decides about acceptance
  /// only and never enters the number.
  double gaussian();

  /// One of the numbers from 0 to `count` - 1, all equally likely; 0 when `count` is 0.
  std::size_t index(std::size_t count);

 private:
  std::mt19937_64 engine_;
};

}  // namespace KorvaniTools
