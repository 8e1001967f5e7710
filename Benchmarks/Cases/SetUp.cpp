// What the engine makes of a graph before it can answer quickly: time and memory.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "Buildings/BuildingMaker.hpp"
#include "Buildings/EngineGraph.hpp"
#include "Cases/Cases.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Localisation/PositionMapper.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Navigation/Path Finding/DijkstraImproved/DijkstraImproved.hpp"
#include "Support/Allocations.hpp"
#include "Support/Facade.hpp"
#include "Support/Timing.hpp"

namespace KorvaniBenchmarks {

using KorvaniNavigation::DijkstraImproved;
using KorvaniNavigation::KRVNavGraph;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::PositionMapper;

namespace {

constexpr int kQuestions = 8;

struct Size {
  std::size_t nodes;
  std::size_t levels;
};

constexpr Size kSizes[] = {{1000, 3}, {10000, 5}, {100000, 10}, {1000000, 20}};

/// Between two nodes that are near each other, since the search itself is not what is measured.
void searchNearby(const std::shared_ptr<KRVNavGraph>& graph) {
  DijkstraImproved finder(mainConfiguration());
  benchmark::DoNotOptimize(finder.findPathInGraph(graph, {graph->nodeWithIdentifier(0)}, {0.0},
                                                  {graph->nodeWithIdentifier(5)}, false));
}

/// From the first node of each level.
void mapOnEveryLevel(const std::shared_ptr<KRVNavGraph>& graph) {
  for (const auto& region : std::as_const(*graph).regions()) {
    const auto& node = std::as_const(*region).nodes().begin()->second;
    PositionMapper mapper(mainConfiguration(), true);
    benchmark::DoNotOptimize(mapper.intersect(KRVNavPoint(node->coordinate(), region->level())));
  }
}

/// A question that needs what is to be made.
using Question = void (*)(const std::shared_ptr<KRVNavGraph>&);

/// What the first questions take longer than the same ones later, and what they leave behind. There
/// are several, since what pays for many questions only need not be made for the very first.
void compareFirstWithLater(benchmark::State& state, const PlainBuilding& building,
                           Question question) {
  std::vector<double> times;
  std::vector<double> bytes;
  // What other rows have left behind would be freed while this one counts.
  keepOnly(nullptr);
  provide(nullptr);
  for ([[maybe_unused]] auto _ : state) {
    const auto graph = makeEngineGraph(building);
    const std::int64_t before = heapBytes();
    const double start = nanoseconds();
    provide(graph);
    for (int i = 0; i < kQuestions; ++i) question(graph);
    const double first = nanoseconds();
    bytes.push_back(static_cast<double>(heapBytes() - before));
    const double again = nanoseconds();
    for (int i = 0; i < kQuestions; ++i) question(graph);
    times.push_back((first - start) - (nanoseconds() - again));
    provide(nullptr);
  }
  const auto nodes = static_cast<double>(building.nodes.size());
  state.counters[kTime] = median(std::move(times));
  state.counters["ns a node"] = state.counters[kTime] / nodes;
  state.counters["bytes a node"] = median(std::move(bytes)) / nodes;
  state.counters["wall segments a node"] = static_cast<double>(building.wallSegments()) / nodes;
}

}  // namespace

void addSetUp(const Extent& extent) {
  const std::pair<const char*, Question> questions[] = {{"first path search", searchNearby},
                                                        {"first position", mapOnEveryLevel}};
  for (const auto& [name, question] : questions) {
    for (const Size& size : kSizes) {
      if (extent.quick && size.nodes > 100000) continue;
      measure({"Set-up", name, size.nodes}, kEngine,
              [size, question = question](benchmark::State& state) {
                const PlainBuilding building = makeOffices(size.nodes, size.levels, size.nodes);
                compareFirstWithLater(state, building, question);
              });
    }
  }
}

}  // namespace KorvaniBenchmarks
