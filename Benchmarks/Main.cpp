// Measures the engine beside others that do the same work, and prints tables.
//
//   korvani-benchmarks [--quick] [Google Benchmark's options, e.g. --benchmark_filter=Walls]

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "Cases/Cases.hpp"
#include "Support/Tables.hpp"

int main(int argc, char** argv) {
  std::vector<char*> arguments(argv, argv + argc);
  const auto isQuick = [](const char* argument) { return std::string_view(argument) == "--quick"; };
  KorvaniBenchmarks::Extent extent;
  extent.quick = std::any_of(arguments.begin(), arguments.end(), isQuick);
  arguments.erase(std::remove_if(arguments.begin(), arguments.end(), isQuick), arguments.end());

  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return EXIT_FAILURE;
  KorvaniBenchmarks::addPathSearches(extent);
  KorvaniBenchmarks::addWalls(extent);
  KorvaniBenchmarks::addNearestNodes(extent);
  KorvaniBenchmarks::addRoutes(extent);
  KorvaniBenchmarks::addUpdates(extent);
  KorvaniBenchmarks::addSetUp(extent);
  KorvaniBenchmarks::addLoading(extent);

  KorvaniBenchmarks::Tables tables;
  const std::size_t measured = benchmark::RunSpecifiedBenchmarks(&tables);
  return measured == 0 || tables.failed() ? EXIT_FAILURE : EXIT_SUCCESS;
}
