#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>
#include <vector>

#include "Building/BuildingReader.hpp"
#include "Building/BuildingText.hpp"
#include "FloorPlan/ConnectionTable.hpp"
#include "FloorPlan/PlanBuilding.hpp"
#include "Import/Imdf/ImdfReader.hpp"
#include "Import/Osm/OsmReader.hpp"
#include "Support/InputError.hpp"
#include "Support/PlainText.hpp"
#include "Support/Remarks.hpp"
#include "Support/Text.hpp"
#include "korvani-nav/Commands.hpp"
#include "korvani-nav/Output.hpp"

namespace KorvaniTools {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void refuseBox(const std::string& text) {
  throw InputError("--bbox: found " + text +
                   ", expected W,S,E,N in degrees: the longitude of the western border, the "
                   "latitude of the southern one, then east and north");
}

std::optional<Rectangle> boxOf(const std::string& text) {
  if (text.empty()) return std::nullopt;
  std::vector<double> borders;
  for (const std::string_view part : split(text, ',')) {
    const auto number = parseNumber(part);
    if (!number) refuseBox(text);
    borders.push_back(*number);
  }
  if (borders.size() != 4) refuseBox(text);
  const Rectangle box{{borders[1], borders[0]}, {borders[3], borders[2]}};
  const bool sound = borders[0] >= -180 && borders[2] <= 180 && borders[0] <= borders[2] &&
                     borders[1] >= -90 && borders[3] <= 90 && borders[1] <= borders[3];
  if (!sound) refuseBox(text);
  return box;
}

std::optional<std::string> given(const std::string& text) {
  if (text.empty()) return std::nullopt;
  return text;
}

FloorPlan readPlan(const ImportOptions& options) {
  if (options.format == "imdf") {
    ImdfOptions imdf;
    if (!options.language.empty()) imdf.language = options.language;
    imdf.attribution = given(options.attribution);
    imdf.licence = given(options.licence);
    FloorPlan plan = readImdf(options.file, imdf);
    if (!options.name.empty()) plan.name = options.name;
    return plan;
  }
  OsmOptions osm;
  osm.box = boxOf(options.box);
  osm.name = given(options.name);
  osm.progress = !options.quiet && isatty(STDERR_FILENO) == 1;
  return readOsm(options.file, osm);
}

std::string fact(const std::string& name, const std::string& value) {
  return "  " + name + std::string(13 - std::min<std::size_t>(12, name.size()), ' ') +
         plainLine(value) + '\n';
}

/// "-1 to 3", or what each level became when that is not itself.
std::string levelsText(const std::vector<PlanReport::Level>& levels) {
  std::string mapping;
  bool same = true;
  for (const PlanReport::Level& level : levels) {
    same = same && level.source == static_cast<double>(level.level);
    mapping += (mapping.empty() ? "" : ", ") + decimals(level.source) + " -> " +
               std::to_string(level.level);
  }
  std::string count = std::to_string(levels.size());
  if (!same) return count + ": " + mapping;
  if (levels.empty()) return count;
  return count + ", " + std::to_string(levels.front().level) + " to " +
         std::to_string(levels.back().level);
}

/// What reading and building remarked, alike remarks in one line.
std::string remarksText(const FloorPlan& plan, const PlanReport& report, std::size_t named) {
  Remarks remarks = plan.remarks;
  for (const std::string& remark : report.remarks) remarks.addSentence(remark);
  std::string text;
  for (const std::string& sentence : remarks.sentences(named)) text += fact("remark", sentence);
  return text;
}

std::string shutRoomsText(const PlanReport& report, std::size_t named) {
  constexpr Remarks::Kind kShut{"room", "rooms"};
  Remarks rooms;
  for (const std::string& room : report.roomsWithoutDoor) rooms.add(kShut, room);
  std::string text;
  for (const std::string& sentence : rooms.sentences(named)) text += fact("no door", sentence);
  return text;
}

std::string placesText(const Building& building) {
  const auto entrances = std::count_if(building.places.begin(), building.places.end(),
                                       [](const Place& place) { return place.entrance; });
  return std::to_string(building.places.size()) + " (" +
         counted(static_cast<std::size_t>(entrances), "entrance", "entrances") + ")";
}

std::string summary(const FloorPlan& plan, const Building& building, const PlanReport& report,
                    std::size_t named) {
  std::string text = plainLine(building.name.value_or("A building without a name")) + '\n';
  text += fact("levels", levelsText(report.levels));
  text += fact("nodes", std::to_string(building.nodes.size()) + " (" +
                            std::to_string(report.lineNodes) + " of lines, " +
                            std::to_string(report.areaNodes) + " of floor)");
  text += fact("edges", std::to_string(building.edges.size()));
  text += fact("walls", std::to_string(building.obstacles.size()));
  text += fact("doors", std::to_string(report.doors) +
                            (report.assumedDoors == 0
                                 ? ""
                                 : " and " + std::to_string(report.assumedDoors) + " assumed"));
  text += fact("places", placesText(building));
  text += fact("rooms", std::to_string(building.rooms.size()));
  return text + shutRoomsText(report, named) + remarksText(plan, report, named);
}

/// A slip of the hand must not cost the map.
void refuseInputAsOutput(const ImportOptions& options) {
  std::error_code ignored;
  if (fs::equivalent(options.file, options.output, ignored)) {
    throw InputError("-o: found the file to import, expected another one");
  }
}

}  // namespace

int runImport(const ImportOptions& options) {
  refuseInputAsOutput(options);
  const ConnectionTable table = options.connections.empty()
                                    ? ConnectionTable::standard()
                                    : ConnectionTable::withFile(options.connections);
  const FloorPlan plan = readPlan(options);
  PlanOptions planOptions;
  planOptions.assumeDoors = options.assumeDoors;
  PlanReport report;
  const std::string text = buildingText(makeBuilding(plan, table, planOptions, report));
  // What cannot be read again is not worth a file.
  const Building building = parseBuilding(text, options.output);
  writeOutput(text, options.output);
  const std::size_t named = options.allRemarks ? Remarks::kAll : Remarks::kNamed;
  if (!options.quiet) std::cerr << summary(plan, building, report, named);
  return kExitOk;
}

}  // namespace KorvaniTools
