#pragma once

#include <memory>

#include "Platform/Clock.hpp"
#include "Platform/Export.hpp"

namespace KorvaniCommon {

/// Measures how long something takes.
///
///     const Benchmark benchmark = Benchmark::start();
///     search();
///     double seconds = benchmark.stop();
///
/// It reads the uptime of the process-wide clock, so a change of the wall clock does not show,
/// and tests that install a clock of their own decide what is measured. Both readings come
/// from the clock that was installed at the start, even if it was replaced meanwhile.
///
/// A benchmark is a value: copies go on from the same start. Thread safety: constant after
/// the start, so any number of threads may read one.
class KORVANI_API Benchmark {
 public:
  /// Begins a measurement now.
  static Benchmark start();

  /// Seconds since the start, at least 0. The measurement can be read again later, and then
  /// gives the longer time: nothing is frozen.
  double stop() const { return elapsedSeconds(); }

  /// Seconds since the start, at least 0, for a look while the work is still going on.
  double elapsedSeconds() const;

 private:
  explicit Benchmark(std::shared_ptr<KorvaniPlatform::Clock> clock);

  std::shared_ptr<KorvaniPlatform::Clock> clock_;
  KorvaniPlatform::Duration start_;
};

}  // namespace KorvaniCommon
