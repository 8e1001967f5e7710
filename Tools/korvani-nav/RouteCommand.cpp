#include <string>
#include <vector>

#include "Building/BuildingGraph.hpp"
#include "Building/BuildingReader.hpp"
#include "Json/EngineJson.hpp"
#include "Navigation/API/Config.hpp"
#include "Navigation/API/Navigation.hpp"
#include "Platform/Location.hpp"
#include "Support/ConfigSettings.hpp"
#include "Support/LevelNames.hpp"
#include "Support/PlaceFinder.hpp"
#include "Support/PlainText.hpp"
#include "Support/RouteSearch.hpp"
#include "Support/RouteText.hpp"
#include "Support/Text.hpp"
#include "korvani-nav/Commands.hpp"
#include "korvani-nav/GeoJson.hpp"
#include "korvani-nav/Output.hpp"
#include "korvani-nav/Terminal.hpp"

namespace KorvaniTools {
namespace {

using KorvaniNavigation::Navigation;
using KorvaniNavigation::Route;

/// A question and its answer, with what is needed to put them into words.
struct Result {
  const Building& building;
  const LevelNames& levels;
  const Spot& start;
  const std::vector<Spot>& destinations;
  const RouteAnswer& answer;

  const Spot& destination() const { return destinations[answer.destination]; }
  /// Whether what the engine takes for arrival is only a destination one level up or down.
  bool arrivedElsewhere() const { return answer.arrived && destination().level != start.level; }
  /// Whether nobody has to move. The engine may know a way all the same, out of the place and
  /// back into it.
  bool isAtDestination() const {
    const Spot& end = destination();
    const double apart = KorvaniPlatform::greatCircleDistance(start.coordinate, end.coordinate);
    return answer.arrived || (start.level == end.level && apart < 0.5);
  }
  bool foundNoWay() const {
    if (answer.direct) return !answer.arrived || arrivedElsewhere();
    return !answer.route && !answer.arrived;
  }
};

std::string spotWords(const Spot& spot, const LevelNames& levels) {
  return plainLine(spot.name + " (" + levels.words(spot.level) + ')');
}

std::string destinationsWords(const Result& result) {
  std::string text;
  for (const Spot& spot : result.destinations) {
    text += (text.empty() ? "" : " or ") + spotWords(spot, result.levels);
  }
  return text;
}

/// The configuration that the command searches with. Edges without a length take theirs from
/// it, so it must be complete before the graph is made.
void configure(const RouteOptions& options) {
  KorvaniNavigation::Config& config = Navigation::sharedInstance().config();
  // Walls of the start's level would hide places of other levels.
  config.setCheckDestinationsAgainstOwnWalls(true);
  if (options.optimise) config.setActivateRouteOptimisation(true);
  for (const std::string& setting : options.settings) applySetting(setting, config);
}

std::string instructionsText(const Result& result, const Style& style) {
  const Route& route = *result.answer.route;
  const std::string direction = setOffDirection(route);
  std::string text = direction.empty() ? "" : "set off to the " + direction + "\n";
  const auto told = routeInstructions(route, result.levels, result.destination().name);
  const std::size_t digits = std::to_string(told.size()).size();
  for (std::size_t i = 0; i < told.size(); ++i) {
    const std::string number = std::to_string(i + 1);
    const std::string indent(2 + digits - number.size(), ' ');
    text += style.faint(indent + number + '.') + ' ' + plainLine(told[i].text) + '\n';
  }
  return text;
}

std::string totalsText(const Result& result, const Style& style) {
  const Route& route = *result.answer.route;
  return style.faint("distance      ") + metres(route.totalDistance()) + '\n' +
         style.faint("walking time  ") + duration(route.travelTime()) + '\n' +
         style.faint("destination   ") + spotWords(result.destination(), result.levels) + '\n';
}

std::string noWayText(const Result& result, const Style& style) {
  std::string text = style.warning("no mapped way found");
  if (result.answer.route) {
    text += "; straight line of " + metres(result.answer.route->totalDistance());
  }
  if (!result.answer.direct) text += ": nothing of the map can be seen from the start";
  return text + '\n';
}

std::string arrivedText(const Result& result) {
  if (!result.arrivedElsewhere()) return "you are already there\n";
  const bool above = result.destination().level > result.start.level;
  return plainLine("you are already there but for the level: " + result.destination().name +
                   " is right " + (above ? "above" : "below") + ", on " +
                   result.levels.words(result.destination().level)) +
         '\n';
}

std::string routeText(const Result& result, const Style& style) {
  std::string text = style.heading("From " + spotWords(result.start, result.levels) + " to " +
                                   destinationsWords(result)) +
                     "\n\n";
  if (result.foundNoWay()) {
    text += noWayText(result, style);
  } else if (result.isAtDestination()) {
    text += arrivedText(result);
  } else {
    text += instructionsText(result, style) + '\n' + totalsText(result, style);
  }
  if (result.building.attribution) {
    text += '\n' + style.faint("map data: " + plainLine(*result.building.attribution)) + '\n';
  }
  return text;
}

std::string written(const Result& result, const RouteOptions& options) {
  if (options.format == "json") {
    return jsonText({{"route", routeJson(result.answer.route)},
                     {"direct", result.answer.isDirectRoute()}}) +
           '\n';
  }
  if (options.format == "geojson") {
    return jsonText(routeGeoJson(result.answer, result.start, result.destinations, result.building,
                                 result.levels)) +
           '\n';
  }
  const bool toTerminal = options.output.empty() || options.output == "-";
  return routeText(result, toTerminal ? Style::forStandardOutput() : Style());
}

}  // namespace

int runRoute(const RouteOptions& options) {
  configure(options);
  const Building building = readBuilding(options.file);
  requireRegions(building);
  const LevelNames levels(building);
  const PlaceFinder finder(building, levels);
  const Spot start = finder.find(options.from);
  std::vector<Spot> destinations;
  for (const std::string& to : options.to) destinations.push_back(finder.find(to));

  provideGraph(makeGraph(building));
  const RouteAnswer answer = searchRoute(start, destinations, options.barrierFree);
  const Result result{building, levels, start, destinations, answer};
  writeOutput(written(result, options), options.output);
  return result.foundNoWay() ? kExitNoRoute : kExitOk;
}

}  // namespace KorvaniTools
