#include "Trace/ConfigChange.hpp"

#include "Building/JsonText.hpp"
#include "Json/EngineJson.hpp"
#include "Support/InputError.hpp"

namespace KorvaniTools {

ConfigChange::ConfigChange(const ConfigOperation& operation) {
  add(operation.set, true);
  add(operation.fields, false);
}

void ConfigChange::add(const ConfigOperation::Settings& settings, bool items) {
  for (const auto& [name, value] : settings) {
    const ConfigSetting* setting = configSettingNamed(name);
    if (setting == nullptr || setting->isItem() != items) {
      throw InputError((items ? "set: no configuration item is called "
                              : "fields: no field without an item is called ") +
                       inQuotes(name));
    }
    if (!setting->accepts(value)) {
      throw InputError(name + ": found " + jsonText(valueJson(value)) + ", expected " +
                       setting->expectedValue());
    }
    settings_.emplace_back(setting, value);
  }
}

void ConfigChange::applyTo(KorvaniNavigation::Config& config) const {
  for (const auto& [setting, value] : settings_) setting->set(value, config);
}

}  // namespace KorvaniTools
