// Reads a building file and makes the engine ready to guide through it. A program of its own, since
// the most memory that a process ever had is asked for.
//
//   korvani-benchmark-load FILE
//
// Prints the nanoseconds that reading took, then those up to the first route, then the greatest
// number of kilobytes in memory.

#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

#include "Building/BuildingGraph.hpp"
#include "Building/BuildingReader.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Support/Clock.hpp"
#include "Support/Facade.hpp"

namespace {

using KorvaniBenchmarks::nanoseconds;
using KorvaniNavigation::KRVNavGraph;
using KorvaniNavigation::Navigation;

/// As Linux says it; 0 elsewhere.
std::string mostKilobytes() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    if (word == "VmHWM:" && status >> word) return word;
  }
  return "0";
}

/// From a node to one nearby: the search itself is not what is measured.
bool findRoute(const std::shared_ptr<KRVNavGraph>& graph) {
  bool found = false;
  KorvaniBenchmarks::provide(graph);
  const auto task = Navigation::sharedInstance().routingTask(
      graph->nodeWithIdentifier(0), {graph->nodeWithIdentifier(20)},
      [&](auto, auto route, bool, auto) { found = route.has_value(); });
  task->run();
  KorvaniBenchmarks::pump();
  KorvaniBenchmarks::provide(nullptr);
  return found;
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 2) {
    std::cerr << "usage: korvani-benchmark-load FILE\n";
    return EXIT_FAILURE;
  }
  const double start = nanoseconds();
  const auto graph = KorvaniTools::makeGraph(KorvaniTools::readBuilding(argv[1]));
  const double read = nanoseconds();
  if (!findRoute(graph)) {
    std::cerr << "no route\n";
    return EXIT_FAILURE;
  }
  std::cout << std::fixed << read - start << ' ' << nanoseconds() - start << ' ' << mostKilobytes()
            << '\n';
  return EXIT_SUCCESS;
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return EXIT_FAILURE;
}
