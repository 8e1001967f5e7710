#include <string>

#include "Json/EngineJson.hpp"
#include "Support/ConfigSettings.hpp"
#include "korvani-nav/Commands.hpp"
#include "korvani-nav/Output.hpp"
#include "korvani-nav/Terminal.hpp"

namespace KorvaniTools {
namespace {

OrderedJson settingJson(const ConfigSetting& setting) {
  return {{"key", setting.key()},
          {"title", setting.title()},
          {"description", setting.description()},
          {"default", valueJson(setting.defaultValue())},
          {"type", setting.type()}};
}

std::string configJson() {
  OrderedJson items = OrderedJson::array();
  OrderedJson fields = OrderedJson::array();
  for (const ConfigSetting* setting : configSettings()) {
    (setting->isItem() ? items : fields).push_back(settingJson(*setting));
  }
  return jsonText({{"items", items}, {"fields", fields}}) + '\n';
}

std::string settingText(const ConfigSetting& setting, const Style& style) {
  std::string text = style.heading(setting.key()) + '\n';
  text += "  " + setting.title() + '\n';
  if (!setting.description().empty()) text += "  " + setting.description() + '\n';
  return text + "  " + setting.type() + ", default " + jsonText(valueJson(setting.defaultValue())) +
         '\n';
}

std::string configText(const Style& style) {
  std::string text = "Configuration items:\n";
  bool inItems = true;
  for (const ConfigSetting* setting : configSettings()) {
    if (inItems && !setting->isItem()) text += "\nFields that have no item:\n";
    inItems = setting->isItem();
    text += '\n' + settingText(*setting, style);
  }
  return text;
}

}  // namespace

int runConfig(const ConfigOptions& options) {
  const std::string text =
      options.format == "json" ? configJson() : configText(Style::forStandardOutput());
  writeOutput(text, "");
  return kExitOk;
}

}  // namespace KorvaniTools
