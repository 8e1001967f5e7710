#include "Common/Benchmark.hpp"

#include <algorithm>
#include <chrono>
#include <utility>

namespace KorvaniCommon {

Benchmark::Benchmark(std::shared_ptr<KorvaniPlatform::Clock> clock)
    : clock_(std::move(clock)), start_(clock_->uptime()) {}

Benchmark Benchmark::start() { return Benchmark(KorvaniPlatform::clock()); }

double Benchmark::elapsedSeconds() const {
  const std::chrono::duration<double> elapsed = clock_->uptime() - start_;
  return std::max(0.0, elapsed.count());
}

}  // namespace KorvaniCommon
