#include "Recorder/KnownConfigs.hpp"

#include <cmath>
#include <utility>

#include "Common/CommonModule.hpp"
#include "Support/ConfigSettings.hpp"

namespace KorvaniRecorder {

using KorvaniCommon::kMainConfigName;
using KorvaniNavigation::Config;
using KorvaniNavigation::Navigation;
using KorvaniPlatform::Number;
using KorvaniTools::ConfigOperation;
using KorvaniTools::configSettings;

namespace {

/// Equal, or both not a number.
bool same(const Number& a, const Number& b) {
  return a == b || (std::isnan(a.doubleValue()) && std::isnan(b.doubleValue()));
}

}  // namespace

KnownConfigs::Values KnownConfigs::defaults() {
  const Config fresh;
  Values values;
  for (const auto* setting : configSettings()) values[setting->key()] = setting->value(fresh);
  return values;
}

std::vector<ConfigOperation> KnownConfigs::changes(const Navigation::Configs& configs,
                                                   std::vector<std::string>& problems) {
  std::vector<ConfigOperation> operations;
  for (const auto& [name, bundle] : configs) {
    const auto [known, isNew] = known_.try_emplace(name, defaults());
    ConfigOperation operation = change(bundle->config(), name, known->second, problems);
    const bool changed = !operation.set.empty() || !operation.fields.empty();
    // An operation without settings still makes the configuration.
    if (changed || (isNew && name != kMainConfigName)) operations.push_back(std::move(operation));
  }
  return operations;
}

ConfigOperation KnownConfigs::change(const Config& config, const std::string& name, Values& known,
                                     std::vector<std::string>& problems) {
  ConfigOperation operation;
  if (name != kMainConfigName) operation.config = name;
  for (const auto* setting : configSettings()) {
    const Number value = setting->value(config);
    Number& before = known[setting->key()];
    if (same(value, before)) continue;
    before = value;
    if (!std::isfinite(value.doubleValue())) {
      problems.push_back("configuration " + name + ": " + setting->key() +
                         " is not finite and was left out");
      continue;
    }
    (setting->isItem() ? operation.set : operation.fields).emplace_back(setting->key(), value);
  }
  return operation;
}

}  // namespace KorvaniRecorder
