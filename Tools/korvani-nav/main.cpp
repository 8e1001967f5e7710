/// korvani-nav: looks into building files, asks the engine for routes through them, and lists
/// what can be configured.

#include <CLI/CLI.hpp>
#include <exception>
#include <functional>
#include <iostream>
#include <memory>
#include <string>

#include "korvani-nav/Commands.hpp"

namespace {

using KorvaniTools::ConfigOptions;
using KorvaniTools::kExitBadInput;
using KorvaniTools::kExitOk;
using KorvaniTools::RouteOptions;

constexpr auto kExamples =
    "Examples:\n"
    "  korvani-nav info terminal.building.geojson\n"
    "  korvani-nav route terminal.building.geojson --from \"Main entrance\" --to \"Gate B4\"\n"
    "  korvani-nav route hall.building.geojson --from 48.1402,11.5583,0 --to Kiosk@2 "
    "--barrier-free\n"
    "  korvani-nav route hall.building.geojson --from Lobby --to Toilet@0 --to Toilet@1 \\\n"
    "      --format geojson -o way.geojson\n"
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

int run(int argc, char** argv) {
  CLI::App app("Indoor routes from building files.", "korvani-nav");
  app.set_version_flag("--version", "korvani-nav " KORVANI_NAV_VERSION);
  app.footer(kExamples);
  app.require_subcommand(1);
  std::function<int()> command;
  addInfo(app, command);
  addRoute(app, command);
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
    std::cerr << "korvani-nav: " << error.what() << '\n';
    return kExitBadInput;
  }
}
