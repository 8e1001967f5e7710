// From a position and four destinations to a route with instructions.

#include <memory>

#include "Cases/Cases.hpp"
#include "Cases/RouteCase.hpp"
#include "Support/Timing.hpp"

namespace KorvaniBenchmarks {

void addRoutes(const Extent& extent) {
  for (const RouteSize& size : routeSizes(extent)) {
    const Row row{"Whole route", "offices", size.nodes};
    const auto shared = std::make_shared<Shared<RouteCase>>(routeCaseOf(row, size));
    measure(row, kEngine, [shared](benchmark::State& state) {
      RouteCase& data = shared->get();
      timeEach(state, data.queries(), [&](std::size_t i) { data.askEngine(i); });
    });
    measure(row, "Boost R-trees, LEMON", [shared](benchmark::State& state) {
      RouteCase& data = shared->get();
      timeEach(state, data.queries(),
               [&](std::size_t i) { benchmark::DoNotOptimize(data.askPeers(i)); });
    });
  }
}

}  // namespace KorvaniBenchmarks
