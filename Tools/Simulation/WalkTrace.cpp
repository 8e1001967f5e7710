#include "Simulation/WalkTrace.hpp"

#include <algorithm>
#include <string_view>
#include <utility>
#include <variant>

#include "Json/EngineJson.hpp"
#include "Platform/Value.hpp"
#include "Simulation/PositionNoise.hpp"
#include "Support/ConfigSettings.hpp"
#include "Support/PlainText.hpp"
#include "Support/Text.hpp"
#include "Trace/TraceWriter.hpp"

namespace KorvaniTools {
namespace {

using KorvaniNavigation::Config;

constexpr auto kOwnWalls = "checkDestinationsAgainstOwnWalls";

std::string keyOf(const std::string& setting) {
  return std::string(trimmed(std::string_view(setting).substr(0, setting.find('='))));
}

/// The number as it reads back to the same double.
std::string exactly(double number) { return jsonText(numberJson(number)); }

/// One line of comment, whatever is in `text`.
std::string comment(const std::string& text) { return "# " + plainLine(text) + '\n'; }

std::string spotWords(const Spot& spot, const LevelNames& levels) {
  return spot.name + " (" + levels.words(spot.level) + ')';
}

std::string optionWords(const WalkSource& source) {
  const WalkOptions& options = source.options;
  std::string text = "--noise " + exactly(options.noise) + " --speed " + exactly(options.speed) +
                     " --seed " + std::to_string(options.seed) + " --level-glitches " +
                     exactly(options.levelGlitches);
  if (options.detour) text += " --detour";
  if (options.barrierFree) text += " --barrier-free";
  for (const std::string& setting : source.settings) text += " --config " + setting;
  return text;
}

std::string head(const WalkSource& source, const std::vector<TraceOperation>& operations) {
  const auto readings = std::count_if(operations.begin(), operations.end(), [](const auto& it) {
    return std::holds_alternative<PositionOperation>(it);
  });
  const LevelNames& levels = source.levels;
  std::string text = comment("A simulated walk, made by korvani-nav simulate.");
  text += comment("building  " + source.file);
  text += comment("from      " + spotWords(source.options.from, levels));
  text += comment("to        " + spotWords(source.options.to, levels));
  text += comment("options   " + optionWords(source));
  text +=
      comment("readings  " + std::to_string(readings) + ", one a second; arrives with the last");
  text += comment("noise     " + exactly(source.options.noise) +
                  " m standard deviation to the east and to the north, first-order "
                  "autoregressive,");
  text += comment("          correlation time " + decimals(PositionNoise::kCorrelationTime) +
                  " s (assumed: about the time to walk past what shades a signal)");
  if (source.building.attribution) text += comment("map data  " + *source.building.attribution);
  return text;
}

}  // namespace

ConfigOperation configureWalk(const std::vector<std::string>& settings, Config& config) {
  std::vector<std::string> keys{kOwnWalls};
  config.setCheckDestinationsAgainstOwnWalls(true);
  for (const std::string& setting : settings) {
    applySetting(setting, config);
    const std::string key = keyOf(setting);
    if (std::find(keys.begin(), keys.end(), key) == keys.end()) keys.push_back(key);
  }
  ConfigOperation operation;
  for (const std::string& key : keys) {
    const ConfigSetting& setting = *configSettingNamed(key);
    auto& values = setting.isItem() ? operation.set : operation.fields;
    values.emplace_back(key, setting.value(config));
  }
  return operation;
}

std::string walkTrace(const WalkSource& source, const ConfigOperation& config,
                      const std::vector<TraceOperation>& operations) {
  std::string text = head(source, operations) + traceLine(config) + '\n';
  for (const TraceOperation& operation : operations) text += traceLine(operation) + '\n';
  return text;
}

}  // namespace KorvaniTools
