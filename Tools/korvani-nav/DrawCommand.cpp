#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Building/BuildingGraph.hpp"
#include "Building/BuildingReader.hpp"
#include "Drawing/DrawnRoute.hpp"
#include "Drawing/Scene.hpp"
#include "Drawing/SceneSvg.hpp"
#include "Drawing/Viewer/DrawnWalk.hpp"
#include "Drawing/Viewer/Timeline.hpp"
#include "Drawing/Viewer/ViewerPage.hpp"
#include "Navigation/API/Config.hpp"
#include "Navigation/API/Navigation.hpp"
#include "Navigation/Routing/Route.hpp"
#include "Support/ConfigSettings.hpp"
#include "Support/InputError.hpp"
#include "Support/LevelNames.hpp"
#include "Support/PlaceFinder.hpp"
#include "Support/RouteSearch.hpp"
#include "Support/Text.hpp"
#include "korvani-nav/Commands.hpp"
#include "korvani-nav/Output.hpp"

namespace KorvaniTools {
namespace {

enum class Picture { svg, html };

Picture pictureOf(const DrawOptions& options) {
  const std::string expected =
      "expected -o with a name that ends in .svg (a picture) or .html (a "
      "page to look around in)";
  if (options.output.empty()) throw InputError("no output file: " + expected);
  const std::string ending = foldedCase(std::filesystem::path(options.output).extension().string());
  if (ending == ".svg") return Picture::svg;
  if (ending == ".html" || ending == ".htm") return Picture::html;
  throw InputError("cannot draw " + options.output + ": found " +
                   (ending.empty() ? "no ending" : "the ending " + ending) + ", " + expected);
}

/// A page has switches for what a picture needs options for.
void refuseForPage(const DrawOptions& options) {
  for (const auto& [option, value] :
       {std::make_pair("--level", options.level), std::make_pair("--theme", options.theme)}) {
    if (value.empty()) continue;
    throw InputError(std::string(option) + " is for pictures (.svg): a page shows all levels and " +
                     "has light and dark colours");
  }
}

std::optional<std::int64_t> levelOf(const std::string& text, const LevelNames& levels) {
  if (text.empty()) return {};
  if (const auto level = levels.find(text)) return level;
  throw InputError("--level: found " + text + ", expected a level's number or name");
}

/// Edges without a length take theirs from the configuration, so it must be complete before the
/// graph is made.
void configure(const DrawOptions& options) {
  KorvaniNavigation::Config& config = KorvaniNavigation::Navigation::sharedInstance().config();
  if (!options.route.empty()) config.setCheckDestinationsAgainstOwnWalls(true);
  if (options.optimise) config.setActivateRouteOptimisation(true);
  for (const std::string& setting : options.settings) applySetting(setting, config);
}

/// The asked-for route in the scene's frame; none when the engine finds no way.
std::optional<DrawnRoute> findRoute(const DrawOptions& options, const Building& building,
                                    const LevelNames& levels, const SceneFrame& frame) {
  requireRegions(building);
  const PlaceFinder finder(building, levels);
  const Spot start = finder.find(options.route.front());
  std::vector<Spot> destinations;
  for (std::size_t i = 1; i < options.route.size(); ++i) {
    destinations.push_back(finder.find(options.route[i]));
  }
  provideGraph(makeGraph(building));
  const RouteAnswer answer = searchRoute(start, destinations, options.barrierFree);
  const Spot& destination = destinations[answer.destination];
  const bool arrived = answer.arrived && destination.level == start.level;
  if (!arrived && (answer.direct || !answer.route)) return {};
  return drawnRoute(answer.route.value_or(KorvaniNavigation::Route()), start, destination, levels,
                    frame);
}

std::string written(const DrawOptions& options, Picture picture, const Building& building,
                    Scene& scene) {
  std::optional<Timeline> timeline;
  if (!options.trace.empty()) {
    requireRegions(building);
    timeline = makeTimeline(building, std::filesystem::path(options.trace));
  }
  if (picture == Picture::html) {
    refuseForPage(options);
    return viewerPage(scene, timeline, {options.graph});
  }
  if (timeline) {
    scene.tracks = tracksOf(*timeline, scene.frame);
    scene.route = firstRoute(*timeline, scene.frame);
  }
  SceneSvgOptions drawing;
  drawing.level = levelOf(options.level, LevelNames(building));
  drawing.graph = options.graph;
  if (options.theme == "dark") drawing.theme = DrawingTheme::dark;
  return sceneSvg(scene, drawing);
}

}  // namespace

int runDraw(const DrawOptions& options) {
  const Picture picture = pictureOf(options);
  configure(options);
  const Building building = readBuilding(options.file);
  Scene scene = makeScene(building);
  if (!options.route.empty()) {
    scene.route = findRoute(options, building, LevelNames(building), scene.frame);
    if (!scene.route) {
      std::cerr << "korvani-nav: no way found from " << options.route.front() << " to "
                << (options.route.size() == 2 ? options.route.back() : "any of the destinations")
                << "; nothing was drawn\n";
      return kExitNoRoute;
    }
  }
  writeOutput(written(options, picture, building, scene), options.output);
  return kExitOk;
}

}  // namespace KorvaniTools
