#pragma once

#include <cstdint>

#include "Simulation/GroundOffset.hpp"
#include "Simulation/RandomSource.hpp"

namespace KorvaniTools {

/// The errors of a positioning system, one for each second.
///
///     PositionNoise noise(2.0, seed);
///     const Coordinate measured = movedBy(where, noise.next());
///
/// To the east and to the north independently of each other, errors are normally distributed
/// with mean 0 and the given standard deviation, and correlated in time: a first-order
/// autoregressive (Gauss-Markov) process, which is what filters for positions commonly take
/// their errors for. After t seconds the correlation is exp(-t / kCorrelationTime).
///
/// The correlation time is an assumption, not a measurement. What spoils an indoor position, a
/// wall or a body that shades a signal, stays for as long as it takes to walk past it; 5 s are 7.5
/// m at the usual walking speed, about the width of a room.
class PositionNoise {
 public:
  static constexpr double kCorrelationTime = 5.0;  ///< seconds

  /// @param metres the standard deviation to the east, and to the north; 0: no errors
  PositionNoise(double metres, std::uint64_t seed);

  /// The error a second after the one before.
  GroundOffset next();

 private:
  double metres_;
  RandomSource random_;
  GroundOffset current_;  ///< of standard deviation 1
};

}  // namespace KorvaniTools
