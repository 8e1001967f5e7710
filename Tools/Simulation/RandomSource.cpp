#include "Simulation/RandomSource.hpp"

#include <algorithm>
#include <cmath>

namespace KorvaniTools {
namespace {

constexpr double kQuotientWidth = 1.7155277699214135;  // 2 sqrt(2 / e)

std::mt19937_64 seeded(std::uint64_t seed, std::uint32_t stream) {
  std::seed_seq parts{static_cast<std::uint32_t>(seed), static_cast<std::uint32_t>(seed >> 32U),
                      stream};
  return std::mt19937_64(parts);
}

}  // namespace

RandomSource::RandomSource(std::uint64_t seed, std::uint32_t stream)
    : engine_(seeded(seed, stream)) {}

double RandomSource::uniform() {
  constexpr double kStep = 0x1p-52;
  return (static_cast<double>(engine_() >> 12U) + 0.5) * kStep;
}

double RandomSource::gaussian() {
  for (;;) {
    const double divisor = uniform();
    const double quotient = kQuotientWidth * (uniform() - 0.5) / divisor;
    if (quotient * quotient <= -4.0 * std::log(divisor)) return quotient;
  }
}

std::size_t RandomSource::index(std::size_t count) {
  if (count == 0) return 0;
  const auto chosen = static_cast<std::size_t>(uniform() * static_cast<double>(count));
  return std::min(chosen, count - 1);
}

}  // namespace KorvaniTools
