// A host's program in small that records what it does: it sees nothing but the public headers, and
// no JSON. Ends with 0 when the files are written.
//
//   recorder FOLDER

#include <cstdio>
#include <filesystem>
#include <memory>

#include "KorvaniNavigation.hpp"
#include "Recorder/Recorder.hpp"

using namespace KorvaniNavigation;

int main(int argc, char** argv) {
  if (argc != 2) return 2;
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

  Recorder recorder(argv[1], "consumer");
  recorder.provideGraph(graph);
  bool routed = false;
  const auto task = Navigation::sharedInstance().routingTask(
      here, {there}, [&](auto /*update*/, auto route, bool /*finished*/, auto /*destination*/) {
        routed = route.has_value();
        KorvaniPlatform::mainQueue().stop();
      });
  recorder.run(task);
  KorvaniPlatform::mainQueue().run();

  for (const auto& problem : recorder.problems()) std::puts(problem.c_str());
  const auto files = recorder.files();
  if (!routed || files.size() != 1 || !recorder.problems().empty()) return 1;
  const auto building = std::filesystem::file_size(files[0].building);
  const auto trace = std::filesystem::file_size(files[0].trace);
  std::printf("recorded: %d bytes of building, %d bytes of trace\n", static_cast<int>(building),
              static_cast<int>(trace));
  return building > 500 && trace > 100 ? 0 : 1;
}
