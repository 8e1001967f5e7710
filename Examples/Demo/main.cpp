// Walks a person through a building and prints what they would be told on the way.
//
//   demo BUILDING [FROM TO]
//
// An app does the same in the same order: read the building, provide the graph, make a routing
// task, run it, and feed it the positions that come in; everything is told by the handler, on
// the main queue. Only the positions are made up here: a walk along the first route, at a
// steady pace, a little beside the line.

#include <cmath>
#include <cstdio>
#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "Building/BuildingGraph.hpp"
#include "Building/BuildingReader.hpp"
#include "KorvaniNavigation.hpp"
#include "Support/LevelNames.hpp"
#include "Support/PlaceFinder.hpp"
#include "Support/RouteSearch.hpp"
#include "Support/RouteText.hpp"
#include "Support/Text.hpp"

namespace {

using namespace KorvaniNavigation;
using namespace KorvaniTools;
using KorvaniPlatform::mainQueue;

constexpr double kStride = 8.0;     // metres between two positions
constexpr double kDeviation = 0.2;  // metres beside the line, now left, now right

using PointPtr = std::shared_ptr<KRVNavPoint>;

PointPtr pointAt(const Spot& spot) {
  return std::make_shared<KRVNavPoint>(spot.coordinate, spot.level);
}

/// Where the person is on the way along a step: `metres` from its start, a little to one side.
PointPtr besideTheLine(const Step& step, double metres, int side) {
  const CLLocation onLine =
      DirectionsHelpers::location(step.start()->location(), step.heading(), metres);
  const CLLocation beside =
      DirectionsHelpers::location(onLine, step.heading() + 90.0 * side, kDeviation);
  return std::make_shared<KRVNavPoint>(beside.coordinate(), step.start()->level());
}

/// The positions of a person who walks along a route and ends at its very end.
std::vector<PointPtr> positionsAlong(const Route& route) {
  std::vector<PointPtr> positions;
  int side = 1;
  double next = kStride;  // from the start of the step at hand
  for (const Step& step : route.steps()) {
    const double length = step.start()->location().distanceFromLocation(step.end()->location());
    if (step.levelChange()) {
      positions.push_back(step.end());
      next = kStride;
      continue;
    }
    while (next < length) {
      positions.push_back(besideTheLine(step, next, side));
      side = -side;
      next += kStride;
    }
    next -= length;
  }
  positions.push_back(route.steps().back().end());
  return positions;
}

/// The walk: owns the routing task, feeds it positions and prints what it answers.
class Walk {
 public:
  Walk(const LevelNames& levels, Spot from, Spot to)
      : levels_(levels), from_(std::move(from)), to_(std::move(to)) {}

  /// Returns when the destination is reached.
  /// @return whether there was a way
  bool run() {
    task_ = Navigation::sharedInstance().routingTask(
        pointAt(from_), {pointAt(to_)},
        [this](const auto& update, const auto& route, bool finished, const auto&) {
          if (finished) return arrive();
          if (!route || task_->isDirectLine()) return giveUp();
          if (positions_.empty()) begin(*route);
          tell(*route);
          feed(*update);
        });
    task_->setDirections(true);
    task_->run();
    mainQueue().run();
    Navigation::sharedInstance().removeTask(task_);
    return arrived_;
  }

 private:
  void begin(const Route& route) {
    std::printf("From %s, %s, to %s, %s\n\n", from_.name.c_str(),
                levels_.words(from_.level).c_str(), to_.name.c_str(),
                levels_.words(to_.level).c_str());
    std::printf("The way: %s, about %s\n", metres(route.totalDistance()).c_str(),
                duration(route.travelTime()).c_str());
    int number = 0;
    for (const Instruction& instruction : routeInstructions(route, levels_, to_.name)) {
      std::printf("%4d. %s\n", ++number, instruction.text.c_str());
    }
    std::printf("\nThe walk, a position every %.0f m:\n", kStride);
    positions_ = positionsAlong(route);
    total_ = route.totalDistance();
  }

  /// One line a position: how far the person has come and has to go, and what comes next.
  void tell(const Route& route) {
    const std::int64_t level = route.steps().front().start()->level();
    if (level != level_ || next_ == 0) {
      std::printf("  %s\n", levels_.words(level).c_str());
      level_ = level;
    }
    const auto instructions = routeInstructions(route, levels_, to_.name);
    const std::string now = instructions.empty() ? "" : instructions.front().text;
    const std::string left = metres(route.remainingDistance());
    const char* news = route.totalDistance() == total_ ? "" : "  (a new route)";
    total_ = route.totalDistance();
    std::printf("%9s to go, %2zu steps: %s%s\n", left.c_str(), route.steps().size(), now.c_str(),
                news);
  }

  void feed(const RoutingUpdateTask& update) {
    if (next_ < positions_.size()) {
      update.updateStartPoint(positions_[next_++]);
    } else {
      mainQueue().stop();
    }
  }

  void arrive() {
    std::printf("You have arrived: %s, %s.\n", to_.name.c_str(), levels_.words(to_.level).c_str());
    arrived_ = true;
    mainQueue().stop();
  }

  void giveUp() {
    std::printf("No mapped way leads from %s to %s.\n", from_.name.c_str(), to_.name.c_str());
    mainQueue().stop();
  }

  const LevelNames& levels_;
  const Spot from_;
  const Spot to_;
  std::shared_ptr<RoutingTask> task_;
  std::vector<PointPtr> positions_;
  std::size_t next_ = 0;
  std::int64_t level_ = 0;
  double total_ = 0;
  bool arrived_ = false;
};

int demo(const std::string& file, const std::string& from, const std::string& to) {
  // Walls of the level one starts on should not hide places of other levels.
  Navigation::sharedInstance().config().setCheckDestinationsAgainstOwnWalls(true);
  const Building building = readBuilding(file);
  requireRegions(building);
  provideGraph(makeGraph(building));
  const LevelNames levels(building);
  const PlaceFinder places(building, levels);
  if (building.name) std::printf("%s\n", building.name->c_str());
  return Walk(levels, places.find(from), places.find(to)).run() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 && argc != 4) {
    std::fprintf(stderr, "usage: %s BUILDING [FROM TO]\n", argv[0]);
    return 2;
  }
  try {
    return demo(argv[1], argc == 4 ? argv[2] : "Main entrance", argc == 4 ? argv[3] : "Gate B4");
  } catch (const std::exception& error) {
    std::fprintf(stderr, "demo: %s\n", error.what());
    return 2;
  }
}
