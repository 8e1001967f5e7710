// A host's program in small: it replaces a part of the platform, builds a graph and asks for a
// route. It sees nothing but the public headers. Ends with 0 when the route is the expected one.

#include <cmath>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

#include "KorvaniNavigation.hpp"

namespace {

using KorvaniNavigation::CLLocationCoordinate2D;
using KorvaniNavigation::KRVNavEdge;
using KorvaniNavigation::KRVNavGraph;
using KorvaniNavigation::KRVNavObstacle;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::KRVNavRegion;

// A class of the host's, derived from one of the engine's: works across the library's border.
class CountingExecutor : public KorvaniPlatform::Executor {
 public:
  void execute(KorvaniPlatform::Job job) override {
    ++jobs_;
    KorvaniPlatform::mainQueue().async(std::move(job));
  }
  int jobs() const { return jobs_; }

 private:
  int jobs_ = 0;
};

// An exception thrown inside the library has the same type outside.
bool exceptionsArrive() {
  try {
    KRVNavObstacle({{48.0, 11.0}}).coordinateAt(1);
  } catch (const std::out_of_range&) {
    return true;
  }
  return false;
}

}  // namespace

int main() {
  auto graph = std::make_shared<KRVNavGraph>();
  auto region = std::make_shared<KRVNavRegion>(0);
  region->setSouthWestCoordinate({47.99, 10.99});
  region->setNorthEastCoordinate({48.01, 11.01});
  graph->add(region);
  auto here = std::make_shared<KRVNavPoint>(CLLocationCoordinate2D{48.0, 11.0}, 0, 1);
  auto there = std::make_shared<KRVNavPoint>(CLLocationCoordinate2D{48.001, 11.0}, 0, 2);
  region->addNode(here);
  region->addNode(there);
  graph->addEdge(std::make_shared<KRVNavEdge>(here, there), *here, *there);
  graph->addEdge(std::make_shared<KRVNavEdge>(there, here), *there, *here);

  auto executor = std::make_shared<CountingExecutor>();
  KorvaniPlatform::setGlobalExecutor(executor);
  auto& navigation = KorvaniNavigation::Navigation::sharedInstance();
  navigation.provideGraph(graph);

  double distance = 0.0;
  const auto task = navigation.routingTask(
      here, {there}, [&](auto /*update*/, auto route, bool /*finished*/, auto /*destination*/) {
        if (route) distance = route->totalDistance();
      });
  if (!task) return 1;
  task->run();
  KorvaniPlatform::mainQueue().runUntilIdle();

  std::printf("%.2f m, %d background jobs\n", distance, executor->jobs());
  const double expected = here->distanceFrom(*there);
  return std::abs(distance - expected) < 1e-6 && executor->jobs() > 0 && exceptionsArrive() ? 0 : 1;
}
