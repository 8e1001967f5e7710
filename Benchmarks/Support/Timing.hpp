#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <utility>
#include <vector>

#include "Support/Clock.hpp"

namespace KorvaniBenchmarks {

/// The middle one of some numbers, the greater of the two for an even count; 0 for none.
double median(std::vector<double> numbers);

/// The counter that tables are made of: nanoseconds of one call.
inline constexpr const char* kTime = "ns";

/// Times `call(0)` to `call(count - 1)`, each alone; the time that counts is their median. For
/// calls that take longer than reading the clock, which is some 25 ns.
template <class Call>
void timeEach(benchmark::State& state, std::size_t count, Call call) {
  std::vector<double> times;
  for ([[maybe_unused]] auto _ : state) {
    for (std::size_t i = 0; i < count; ++i) {
      const double start = nanoseconds();
      call(i);
      times.push_back(nanoseconds() - start);
    }
  }
  state.counters[kTime] = median(std::move(times));
}

/// Times all of them together, again and again; the time that counts is the median of the rounds,
/// divided by `count`. For short calls.
template <class Call>
void timeTogether(benchmark::State& state, std::size_t count, Call call) {
  std::vector<double> times;
  for ([[maybe_unused]] auto _ : state) {
    const double start = nanoseconds();
    for (std::size_t i = 0; i < count; ++i) call(i);
    times.push_back((nanoseconds() - start) / static_cast<double>(count));
  }
  state.counters[kTime] = median(std::move(times));
}

}  // namespace KorvaniBenchmarks
