// Records a short walk through the demo building, as an app does for its bug reports.
//
//   recording BUILDING [FOLDER]
//
// What the recorder writes is replayed with `korvani-nav replay`.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>
#include <string>

#include "Building/BuildingGraph.hpp"
#include "Building/BuildingReader.hpp"
#include "KorvaniNavigation.hpp"
#include "Recorder/Recorder.hpp"
#include "Support/LevelNames.hpp"
#include "Support/PlaceFinder.hpp"

namespace {

using namespace KorvaniNavigation;
using KorvaniPlatform::mainQueue;

constexpr std::size_t kPositions = 5;

std::shared_ptr<KRVNavPoint> pointAt(const KorvaniTools::Spot& spot) {
  return std::make_shared<KRVNavPoint>(spot.coordinate, spot.level);
}

/// Follows the route from the main entrance to a gate for a few steps, then stops guiding.
void walk(Recorder& recorder, const KorvaniTools::PlaceFinder& places) {
  auto& navigation = Navigation::sharedInstance();
  std::size_t positions = 0;
  const auto handler = [&](auto update, auto route, bool finished, auto /*destination*/) {
    if (finished || !route || positions == kPositions) return mainQueue().stop();
    ++positions;
    const auto& steps = route->steps();
    recorder.updateStartPoint(*update, steps[steps.size() > 1 ? 1 : 0].end());
  };
  const auto task = navigation.routingTask(pointAt(places.find("Main entrance")),
                                           {pointAt(places.find("Gate B4"))}, handler);
  task->setDirections(true);
  recorder.run(task);
  mainQueue().run();
  recorder.removeTask(task);
  std::printf("%zu positions on the way\n", positions);
}

int record(const std::string& file, const std::filesystem::path& folder) {
  const auto building = KorvaniTools::readBuilding(file);
  const KorvaniTools::LevelNames levels(building);
  const KorvaniTools::PlaceFinder places(building, levels);

  Navigation::sharedInstance().config().setCheckDestinationsAgainstOwnWalls(true);
  Recorder recorder(folder, "walk");
  recorder.provideGraph(makeGraph(building));
  KorvaniPlatform::NotificationCenter::defaultCenter().post(NavigationGraphCreatedNotification);
  walk(recorder, places);

  for (const auto& problem : recorder.problems()) std::fprintf(stderr, "%s\n", problem.c_str());
  for (const auto& files : recorder.files()) {
    std::printf("Recorded. Replay it with\n  korvani-nav replay %s %s\n",
                files.building.string().c_str(), files.trace.string().c_str());
  }
  return recorder.problems().empty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 && argc != 3) {
    std::fprintf(stderr, "usage: %s BUILDING [FOLDER]\n", argv[0]);
    return 2;
  }
  try {
    return record(argv[1], argc == 3 ? argv[2] : ".");
  } catch (const std::exception& error) {
    std::fprintf(stderr, "recording: %s\n", error.what());
    return 2;
  }
}
