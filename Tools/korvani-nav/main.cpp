/// korvani-nav: imports maps, looks into building files, asks the engine for routes through them,
/// makes and replays traces, and lists what can be configured.

#include <CLI/CLI.hpp>
#include <charconv>
#include <cstdint>
#include <exception>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <system_error>

#include "Support/PlainText.hpp"
#include "korvani-nav/Commands.hpp"

namespace {

using KorvaniTools::ConfigOptions;
using KorvaniTools::DrawOptions;
using KorvaniTools::ImportOptions;
using KorvaniTools::kExitBadInput;
using KorvaniTools::kExitOk;
using KorvaniTools::LintCommandOptions;
using KorvaniTools::ReplayOptions;
using KorvaniTools::RouteOptions;
using KorvaniTools::SimulateOptions;

constexpr auto kExamples =
    "Examples:\n"
    "  korvani-nav import osm station.osm.pbf -o station.building.geojson\n"
    "  korvani-nav info terminal.building.geojson\n"
    "  korvani-nav route terminal.building.geojson --from \"Main entrance\" --to \"Gate B4\"\n"
    "  korvani-nav route hall.building.geojson --from 48.1402,11.5583,0 --to Kiosk@2 "
    "--barrier-free\n"
    "  korvani-nav route hall.building.geojson --from Lobby --to Toilet@0 --to Toilet@1 \\\n"
    "      --format geojson -o way.geojson\n"
    "  korvani-nav simulate terminal.building.geojson --from \"Main entrance\" --to \"Gate B4\" "
    "\\\n"
    "      --noise 2 -o walk.trace.ndjson\n"
    "  korvani-nav replay terminal.building.geojson walk.trace.ndjson\n"
    "  korvani-nav draw terminal.building.geojson --trace walk.trace.ndjson -o walk.html\n"
    "  korvani-nav lint terminal.building.geojson\n"
    "  korvani-nav config --format json\n"
    "\n"
    "Exit status: 0 done, 1 no route found, 2 bad input or usage.\n";

constexpr auto kRouteNotes =
    "A and B are LAT,LON,LEVEL, the name of a place, or NAME@LEVEL when several places bear\n"
    "the name. With several --to, the route leads to the one that is cheapest to reach.\n"
    "\n"
    "Examples:\n"
    "  korvani-nav route terminal.building.geojson --from \"Main entrance\" --to \"Gate B4\"\n"
    "  korvani-nav route terminal.building.geojson --from \"Gate B4\" --to 54.32013,10.13043,-1 "
    "\\\n"
    "      --barrier-free --config navigationTargetProximityDistance=3 --config levelHeight=4\n";

constexpr auto kSimulateNotes =
    "A and B are LAT,LON,LEVEL, the name of a place, or NAME@LEVEL when several places bear\n"
    "the name. The person walks the route from A to B and is seen once a second. The same options\n"
    "give the same trace. 'korvani-nav replay' of it arrives.\n"
    "\n"
    "Examples:\n"
    "  korvani-nav simulate terminal.building.geojson --from \"Main entrance\" --to \"Gate B4\"\n"
    "  korvani-nav simulate terminal.building.geojson --from \"Gate B4\" --to \"Taxi rank\" \\\n"
    "      --noise 2.5 --level-glitches 0.02 --detour --seed 7 -o walk.trace.ndjson\n"
    "\n"
    "Exit status: 0 done, 1 no way, no detour or no arrival, 2 bad input or usage.\n";

constexpr auto kReplayNotes =
    "The trace says, a JSON object a line, what a host asked of the engine. What the engine\n"
    "delivers is written as it comes, a JSON object a line. The same trace gives the same output.\n"
    "A line that cannot be carried out gives an error event; a malformed one ends the replay.\n"
    "\n"
    "Examples:\n"
    "  korvani-nav replay terminal.building.geojson walk.trace.ndjson\n"
    "  korvani-nav replay terminal.building.geojson walk.trace.ndjson -o walk.expected.ndjson\n"
    "\n"
    "Exit status: 0 done, 2 bad input (a malformed line as well) or usage.\n";

constexpr auto kLintNotes =
    "Tries rules (see --list-rules) and tells what they find: errors send people astray, warnings\n"
    "make routes or instructions worse, notes are worth a look. As GeoJSON the findings can be\n"
    "dropped on a map.\n"
    "\n"
    "Examples:\n"
    "  korvani-nav lint terminal.building.geojson\n"
    "  korvani-nav lint hall.building.geojson --skip duplicate-nodes --strict\n"
    "  korvani-nav lint hall.building.geojson --format geojson -o findings.geojson\n"
    "\n"
    "Exit status: 0 no errors (with --strict: no warnings either), 1 errors, 2 bad input or "
    "usage.\n";

constexpr auto kDrawNotes =
    "A picture (.svg) shows all levels, the highest first. A page (.html) shows them one by one,\n"
    "to zoom and look around in, and plays the walk of a trace; it needs no network.\n"
    "A and B are LAT,LON,LEVEL, the name of a place, or NAME@LEVEL when several places bear\n"
    "the name.\n"
    "\n"
    "Examples:\n"
    "  korvani-nav draw terminal.building.geojson -o terminal.svg\n"
    "  korvani-nav draw terminal.building.geojson --level Departures --graph -o graph.svg\n"
    "  korvani-nav draw terminal.building.geojson --route \"Main entrance\" \"Gate B4\" -o "
    "way.html\n"
    "  korvani-nav draw terminal.building.geojson --trace walk.trace.ndjson -o walk.html\n"
    "\n"
    "Exit status: 0 done, 1 no route found (there is no file then), 2 bad input or usage.\n";

constexpr auto kImportOsmNotes =
    "FILE ends in .osm, .osm.gz, .osm.bz2 or .osm.pbf. What is indoors is kept: features with the\n"
    "tags indoor or level, lifts, and the doors and entrances that belong to them. Ways outdoors\n"
    "are kept as far as they are within 100 m of something indoors, so that an extract of a city\n"
    "becomes a building with its surroundings. A table of connections says what stairs, lifts and\n"
    "doors cost:\n"
    "  {\"stairs\": {\"multiplicator\": 2.5, \"barrierFree\": false, \"type\": \"stairs\"}}\n"
    "\n"
    "Examples:\n"
    "  korvani-nav import osm station.osm.pbf -o station.building.geojson\n"
    "  korvani-nav import osm city.osm.pbf --bbox 13.367,52.523,13.373,52.527 --name Station \\\n"
    "      -o station.building.geojson\n"
    "\n"
    "Exit status: 0 done, 2 bad input or usage.\n";

constexpr auto kImportImdfNotes =
    "ARCHIVE is a folder or a zip file of IMDF 1.0 files. A table of connections says what\n"
    "stairs, lifts and doors cost:\n"
    "  {\"stairs\": {\"multiplicator\": 2.5, \"barrierFree\": false, \"type\": \"stairs\"}}\n"
    "\n"
    "Example:\n"
    "  korvani-nav import imdf terminal.zip --attribution \"Terminal Ltd\" \\\n"
    "      -o terminal.building.geojson\n"
    "\n"
    "Exit status: 0 done, 2 bad input or usage.\n";

void addInfo(CLI::App& app, std::function<int()>& command) {
  auto* info = app.add_subcommand("info", "Show what is in a building file");
  const auto file = std::make_shared<std::string>();
  info->add_option("FILE", *file, "A building file, NAME.building.geojson")->required();
  info->callback([file, &command] { command = [file] { return KorvaniTools::runInfo(*file); }; });
}

void addConfig(CLI::App& app, std::function<int()>& command) {
  auto* config = app.add_subcommand("config", "List everything that can be configured");
  const auto options = std::make_shared<ConfigOptions>();
  config->add_option("--format", options->format, "text (default) or json")
      ->check(CLI::IsMember({"text", "json"}));
  config->callback(
      [options, &command] { command = [options] { return KorvaniTools::runConfig(*options); }; });
}

void addRoute(CLI::App& app, std::function<int()>& command) {
  auto* route = app.add_subcommand("route", "Show the route between two places");
  const auto options = std::make_shared<RouteOptions>();
  route->add_option("FILE", options->file, "A building file, NAME.building.geojson")->required();
  route->add_option("--from", options->from, "Where the route starts")->required()->type_name("A");
  route->add_option("--to", options->to, "Where it ends; may be given several times")
      ->required()
      ->allow_extra_args(false)
      ->type_name("B");
  route->add_flag("--barrier-free", options->barrierFree, "Use barrier-free ways only");
  route->add_flag("--optimise", options->optimise, "Cut corners where nothing is in the way");
  route
      ->add_option("--config", options->settings,
                   "Change the configuration; may be given several times (see 'config')")
      ->allow_extra_args(false)
      ->type_name("KEY=VALUE");
  route->add_option("--format", options->format, "text (default), json or geojson")
      ->check(CLI::IsMember({"text", "json", "geojson"}));
  route->add_option("-o,--output", options->output, "Write to this file")->type_name("PATH");
  route->footer(kRouteNotes);
  route->callback(
      [options, &command] { command = [options] { return KorvaniTools::runRoute(*options); }; });
}

/// What is wrong with `text` as a seed; empty when nothing is. CLI11 alone would wrap negative
/// numbers around and cut large ones.
std::string refusalOfSeed(const std::string& text) {
  std::uint64_t seed = 0;
  const char* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, seed);
  if (read.ec == std::errc() && read.ptr == end) return "";
  return "found " + text + ", expected a whole number from 0 to 18446744073709551615";
}

void addSimulate(CLI::App& app, std::function<int()>& command) {
  auto* simulate = app.add_subcommand("simulate", "Write the trace of somebody who walks a route");
  const auto options = std::make_shared<SimulateOptions>();
  simulate->add_option("FILE", options->file, "A building file, NAME.building.geojson")->required();
  simulate->add_option("--from", options->from, "Where the walk starts")
      ->required()
      ->type_name("A");
  simulate->add_option("--to", options->to, "Where it ends")->required()->type_name("B");
  simulate
      ->add_option("--noise", options->noise,
                   "Standard deviation of positions to the east and to the north (default 0)")
      ->type_name("METRES");
  simulate->add_option("--speed", options->speed, "How fast to walk (default 1.5)")
      ->type_name("M_S");
  simulate->add_option("--seed", options->seed, "Chooses the random numbers (default 1)")
      ->check(refusalOfSeed)
      ->type_name("N");
  simulate
      ->add_option("--level-glitches", options->levelGlitches,
                   "Probability that a position is on the wrong level (default 0)")
      ->type_name("P");
  simulate->add_flag("--detour", options->detour, "Leave the route once");
  simulate->add_flag("--barrier-free", options->barrierFree, "Use barrier-free ways only");
  simulate
      ->add_option("--config", options->settings,
                   "Change the configuration; may be given several times (see 'config')")
      ->allow_extra_args(false)
      ->type_name("KEY=VALUE");
  simulate->add_option("-o,--output", options->output, "Write to this file")->type_name("TRACE");
  simulate->footer(kSimulateNotes);
  simulate->callback(
      [options, &command] { command = [options] { return KorvaniTools::runSimulate(*options); }; });
}

void addReplay(CLI::App& app, std::function<int()>& command) {
  auto* replay = app.add_subcommand("replay", "Do what a trace says, and write what is delivered");
  const auto options = std::make_shared<ReplayOptions>();
  replay->add_option("BUILDING", options->building, "A building file, NAME.building.geojson")
      ->required();
  replay->add_option("TRACE", options->trace, "A trace file, NAME.trace.ndjson")->required();
  replay->add_option("-o,--output", options->output, "Write to this file")->type_name("PATH");
  replay->footer(kReplayNotes);
  replay->callback(
      [options, &command] { command = [options] { return KorvaniTools::runReplay(*options); }; });
}

void addLint(CLI::App& app, std::function<int()>& command) {
  auto* lint = app.add_subcommand("lint", "Show what has to be mended in a building");
  const auto options = std::make_shared<LintCommandOptions>();
  lint->add_option("FILE", options->file, "A building file, NAME.building.geojson");
  lint->add_option("--rule", options->rules, "Try only this rule; may be given several times")
      ->allow_extra_args(false)
      ->type_name("NAME");
  lint->add_option("--skip", options->skip, "Do not try this rule; may be given several times")
      ->allow_extra_args(false)
      ->type_name("NAME");
  lint->add_flag("--strict", options->strict, "Warnings count as errors");
  lint->add_flag("--list-rules", options->listRules, "List the rules");
  lint->add_option("--format", options->format, "text (default), json or geojson")
      ->check(CLI::IsMember({"text", "json", "geojson"}));
  lint->add_option("-o,--output", options->output, "Write to this file")->type_name("PATH");
  lint->footer(kLintNotes);
  lint->callback(
      [options, &command] { command = [options] { return KorvaniTools::runLint(*options); }; });
}

void addDraw(CLI::App& app, std::function<int()>& command) {
  auto* draw = app.add_subcommand("draw", "Draw a building, with a route or a walk");
  const auto options = std::make_shared<DrawOptions>();
  draw->add_option("FILE", options->file, "A building file, NAME.building.geojson")->required();
  auto* route = draw->add_option("--route", options->route,
                                 "The way from A to B, or to the cheapest of several")
                    ->expected(2, 1000)
                    ->type_name("A B...");
  draw->add_option("--trace", options->trace, "A recorded walk, NAME.trace.ndjson")
      ->excludes(route)
      ->type_name("TRACE");
  draw->add_flag("--barrier-free", options->barrierFree, "Use barrier-free ways only");
  draw->add_flag("--optimise", options->optimise, "Cut corners where nothing is in the way");
  draw->add_option("--config", options->settings,
                   "Change the configuration; may be given several times (see 'config')")
      ->allow_extra_args(false)
      ->type_name("KEY=VALUE");
  draw->add_option("--level", options->level, "Only this level, by its number or name")
      ->type_name("N");
  draw->add_flag("--graph", options->graph, "Show nodes and edges as well");
  draw->add_option("--theme", options->theme, "light (default) or dark")
      ->check(CLI::IsMember({"light", "dark"}));
  draw->add_option("-o,--output", options->output, "Write to this file, NAME.svg or NAME.html")
      ->type_name("PATH");
  draw->footer(kDrawNotes);
  draw->callback(
      [options, &command] { command = [options] { return KorvaniTools::runDraw(*options); }; });
}

/// What all maps are imported with.
void addImportOptions(CLI::App& format, ImportOptions& options) {
  format.add_option("-o,--output", options.output, "Write the building to this file")
      ->required()
      ->type_name("PATH");
  format.add_option("--name", options.name, "The building's name");
  format
      .add_option("--connections", options.connections,
                  "A JSON file that says what stairs, lifts and the like cost")
      ->type_name("TABLE");
  format.add_flag("--assume-doors", options.assumeDoors,
                  "Give each room without a door one where it is nearest to other floor");
  format.add_flag("--all-remarks", options.allRemarks,
                  "Name every feature that a remark is about, not only the first");
  format.add_flag("--quiet", options.quiet, "Show neither progress nor summary");
}

void addImport(CLI::App& app, std::function<int()>& command) {
  auto* import = app.add_subcommand("import", "Make a building file of a map");
  import->require_subcommand(1);
  const auto options = std::make_shared<ImportOptions>();
  const auto finish = [&command, options](CLI::App& format) {
    addImportOptions(format, *options);
    format.callback([options, name = format.get_name(), &command] {
      options->format = name;
      command = [options] { return KorvaniTools::runImport(*options); };
    });
  };
  auto* osm = import->add_subcommand("osm", "Import an OpenStreetMap file");
  osm->add_option("FILE", options->file, "NAME.osm, .osm.gz, .osm.bz2 or .osm.pbf")->required();
  osm->add_option("--bbox", options->box, "Keep only what touches this box")->type_name("W,S,E,N");
  osm->footer(kImportOsmNotes);
  finish(*osm);
  auto* imdf = import->add_subcommand("imdf", "Import an IMDF archive");
  imdf->add_option("ARCHIVE", options->file, "A folder or a zip file")->required();
  imdf->add_option("--language", options->language, "Language of names (default en)")
      ->type_name("TAG");
  imdf->add_option("--attribution", options->attribution, "Who must be named with the data");
  imdf->add_option("--licence", options->licence, "The data's licence");
  imdf->footer(kImportImdfNotes);
  finish(*imdf);
}

int run(int argc, char** argv) {
  CLI::App app("Indoor routes from building files.", "korvani-nav");
  app.set_version_flag("--version", "korvani-nav " KORVANI_NAV_VERSION);
  app.footer(kExamples);
  app.require_subcommand(1);
  std::function<int()> command;
  addImport(app, command);
  addInfo(app, command);
  addRoute(app, command);
  addSimulate(app, command);
  addReplay(app, command);
  addDraw(app, command);
  addLint(app, command);
  addConfig(app, command);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? kExitOk : kExitBadInput;
  }
  return command();
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "korvani-nav: " << KorvaniTools::plainLines(error.what()) << '\n';
    return kExitBadInput;
  }
}
