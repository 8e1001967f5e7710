// The next positions of somebody who is guided.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Cases/Cases.hpp"
#include "Cases/RouteCase.hpp"
#include "Navigation/API/Tasks/SnappingTask.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Support/Allocations.hpp"
#include "Support/Facade.hpp"
#include "Support/Timing.hpp"

namespace KorvaniBenchmarks {

using KorvaniNavigation::CLLocationCoordinate2D;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::Navigation;
using KorvaniNavigation::Route;
using KorvaniNavigation::Step;

namespace {

constexpr std::size_t kWalks = 5;
constexpr double kLongestWalk = 60.0;  // metres
constexpr double kEndOfWalk = 20.0;    // metres

using Positions = std::vector<std::shared_ptr<KRVNavPoint>>;

/// Where somebody is who walks along a route: a position every metre and a half, a few centimetres
/// beside it, on the level that a step leads from. No farther than the walk is to last, nor to the
/// route's end.
Positions positionsAlong(const Route& route) {
  constexpr double kStride = 1.5;   // metres
  constexpr double kBeside = 5e-7;  // degrees
  const double last = std::min(kLongestWalk, route.totalDistance() - kEndOfWalk);
  Positions positions;
  double before = 0;  // metres up to the step
  for (const Step& step : route.steps()) {
    const CLLocationCoordinate2D a = step.start()->coordinate();
    const CLLocationCoordinate2D b = step.end()->coordinate();
    for (double along = 0; along < step.distance() && before + along < last; along += kStride) {
      const double part = along / step.distance();
      const CLLocationCoordinate2D place{
          a.latitude + (b.latitude - a.latitude) * part + kBeside,
          a.longitude + (b.longitude - a.longitude) * part - kBeside};
      positions.push_back(std::make_shared<KRVNavPoint>(place, step.start()->level()));
    }
    before += step.distance();
  }
  return positions;
}

/// Times single calls and counts what they allocate.
class Meter {
 public:
  template <class Call>
  void add(Call call) {
    const std::int64_t before = allocations();
    const double start = nanoseconds();
    call();
    times_.push_back(nanoseconds() - start);
    counts_.push_back(static_cast<double>(allocations() - before));
  }

  void report(benchmark::State& state) {
    state.counters["allocations"] = median(std::move(counts_));
    state.counters[kTime] = median(std::move(times_));
  }

 private:
  std::vector<double> times_;
  std::vector<double> counts_;
};

using Feed = void (*)(RouteCase&, const std::shared_ptr<KRVNavPoint>&, Meter&);

void feedUpdate(RouteCase& data, const std::shared_ptr<KRVNavPoint>& position, Meter& meter) {
  meter.add([&] {
    data.update()->updateStartPoint(position);
    pump();
  });
}

/// As hosts do that snap: what a snapping task shows is the next position of the route.
void feedSnapped(RouteCase& data, const std::shared_ptr<KRVNavPoint>& position, Meter& meter) {
  CLLocationCoordinate2D shown{};
  meter.add([&] {
    Navigation::sharedInstance()
        .snappingTask(position, [&](CLLocationCoordinate2D place) { shown = place; })
        ->run();
    pump();
  });
  data.update()->updateStartPoint(std::make_shared<KRVNavPoint>(shown, position->level()));
  pump();
}

/// Follows some routes.
void walk(benchmark::State& state, RouteCase& data, Feed feed) {
  Meter meter;
  for ([[maybe_unused]] auto _ : state) {
    for (std::size_t i = 0; i < std::min(kWalks, data.queries()); ++i) {
      data.guide(i);
      for (const auto& position : positionsAlong(*data.route())) {
        if (data.update()) feed(data, position, meter);
      }
      data.stopGuiding();
    }
  }
  meter.report(state);
}

}  // namespace

void addUpdates(const Extent& extent) {
  const std::pair<std::string, Feed> feeds[] = {{"updateStartPoint", feedUpdate},
                                                {"SnappingTask", feedSnapped}};
  for (const auto& [name, feed] : feeds) {
    for (RouteSize size : routeSizes(extent)) {
      size.queries = kWalks;
      const Row row{"A position while guided", name, size.nodes};
      const auto shared = std::make_shared<Shared<RouteCase>>(routeCaseOf(row, size));
      measure(row, kEngine,
              [shared, feed = feed](benchmark::State& state) { walk(state, shared->get(), feed); });
    }
  }
}

}  // namespace KorvaniBenchmarks
