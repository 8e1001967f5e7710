#include "Simulation/PositionNoise.hpp"

#include <cmath>

#include "Simulation/RandomStreams.hpp"

namespace KorvaniTools {
namespace {

/// What is left of an error after a second: exp(-1 / kCorrelationTime), as a number that does not
/// hang on the C library.
constexpr double kPersistence = 0.81873075307798182;

}  // namespace

PositionNoise::PositionNoise(double metres, std::uint64_t seed)
    : metres_(metres), random_(seed, kNoiseStream) {
  current_ = {random_.gaussian(), random_.gaussian()};
}

GroundOffset PositionNoise::next() {
  const GroundOffset error{metres_ * current_.east, metres_ * current_.north};
  const double renewal = std::sqrt(1 - kPersistence * kPersistence);
  const double east = random_.gaussian();
  const double north = random_.gaussian();
  current_ = {kPersistence * current_.east + renewal * east,
              kPersistence * current_.north + renewal * north};
  return error;
}

}  // namespace KorvaniTools
