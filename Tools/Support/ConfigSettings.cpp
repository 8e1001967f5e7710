#include "Support/ConfigSettings.hpp"

#include <algorithm>
#include <cmath>
#include <concepts>
#include <limits>
#include <optional>
#include <utility>

#include "Navigation/API/KRVNavigationConfigItem.hpp"
#include "Support/InputError.hpp"
#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

using KorvaniNavigation::Config;
using KorvaniNavigation::KRVNavigationConfigItem;
using KorvaniPlatform::Number;

class ItemSetting final : public ConfigSetting {
 public:
  explicit ItemSetting(KRVNavigationConfigItem item) : item_(item) {}

  std::string key() const override { return std::string(item_.rawValue()); }
  std::string title() const override { return item_.title(); }
  std::string description() const override { return item_.shortDescription(); }
  Number defaultValue() const override { return item_.defaultValue(); }
  Number value(const Config& config) const override { return item_.value(config); }
  void set(const Number& number, Config& config) const override { item_.setValue(number, config); }
  bool isItem() const override { return true; }

 private:
  KRVNavigationConfigItem item_;
};

/// A field that only its accessors reach.
template <class T>
class FieldSetting final : public ConfigSetting {
 public:
  using Getter = T (Config::*)() const;
  using Setter = void (Config::*)(T);

  FieldSetting(std::string key, std::string title, std::string description, Getter getter,
               Setter setter)
      : key_(std::move(key)),
        title_(std::move(title)),
        description_(std::move(description)),
        get_(getter),
        set_(setter) {}

  std::string key() const override { return key_; }
  std::string title() const override { return title_; }
  std::string description() const override { return description_; }
  Number defaultValue() const override { return value(Config()); }
  Number value(const Config& config) const override { return Number((config.*get_)()); }
  void set(const Number& number, Config& config) const override {
    if constexpr (std::same_as<T, bool>) {
      (config.*set_)(number.boolValue());
    } else {
      (config.*set_)(number.doubleValue());
    }
  }
  bool isItem() const override { return false; }

 private:
  std::string key_;
  std::string title_;
  std::string description_;
  Getter get_;
  Setter set_;
};

std::vector<const ConfigSetting*> makeSettings() {
  std::vector<const ConfigSetting*> settings;
  settings.reserve(KRVNavigationConfigItem::allCases.size() + 3);
  for (const KRVNavigationConfigItem item : KRVNavigationConfigItem::allCases) {
    settings.push_back(new ItemSetting(item));
  }
  settings.push_back(new FieldSetting<double>(
      "levelHeight", "Level Height", "Metres that every distance between two points includes",
      &Config::levelHeight, &Config::setLevelHeight));
  settings.push_back(new FieldSetting<double>(
      "walkingSpeed", "Walking Speed",
      "Metres per second; routes are timed at the default speed all the same",
      &Config::walkingSpeed, &Config::setWalkingSpeed));
  settings.push_back(new FieldSetting<bool>(
      "checkDestinationsAgainstOwnWalls", "Check Destinations Against Own Walls",
      "Look for the way to a destination past the walls of its own region; the route command "
      "switches this on",
      &Config::checkDestinationsAgainstOwnWalls, &Config::setCheckDestinationsAgainstOwnWalls));
  return settings;
}

std::optional<Number> parseBoolean(const std::string& text) {
  if (text == "true" || text == "1") return Number::boolean(true);
  if (text == "false" || text == "0") return Number::boolean(false);
  return {};
}

std::optional<Number> parseValue(std::string_view text, Number::Kind kind) {
  if (kind == Number::Kind::boolean) return parseBoolean(foldedCase(trimmed(text)));
  if (kind == Number::Kind::integer) {
    const auto whole = parseWholeNumber(text);
    return whole ? std::optional<Number>(Number::integer(*whole)) : std::nullopt;
  }
  const auto number = parseNumber(text);
  return number ? std::optional<Number>(Number::real(*number)) : std::nullopt;
}

bool isWhole(double number) {
  return number == std::trunc(number) && number >= -0x1p63 && number < 0x1p63;
}

[[noreturn]] void refuseKey(std::string_view key) {
  std::string message = "--config: unknown key \"" + std::string(key) + "\"; expected one of";
  for (const ConfigSetting* setting : configSettings()) message += "\n  " + setting->key();
  throw InputError(message);
}

}  // namespace

std::string ConfigSetting::type() const {
  switch (value(Config()).kind()) {
    case Number::Kind::boolean:
      return "boolean";
    case Number::Kind::integer:
      return "integer";
    case Number::Kind::floating:
      return "float";
    case Number::Kind::real:
      break;
  }
  return "double";
}

bool ConfigSetting::accepts(const Number& number) const {
  const Number::Kind kind = value(Config()).kind();
  const bool isBoolean = number.kind() == Number::Kind::boolean;
  if (isBoolean || kind == Number::Kind::boolean) {
    return isBoolean && kind == Number::Kind::boolean;
  }
  const double real = number.doubleValue();
  if (kind == Number::Kind::integer) {
    return number.kind() == Number::Kind::integer || isWhole(real);
  }
  constexpr double kLargestFloat = std::numeric_limits<float>::max();
  return std::isfinite(real) && (kind != Number::Kind::floating || std::abs(real) <= kLargestFloat);
}

std::string ConfigSetting::expectedValue() const {
  switch (value(Config()).kind()) {
    case Number::Kind::boolean:
      return "true or false";
    case Number::Kind::integer:
      return "a whole number";
    case Number::Kind::floating:
      return "a number that single precision holds";
    case Number::Kind::real:
      break;
  }
  return "a number";
}

const std::vector<const ConfigSetting*>& configSettings() {
  // Kept for the life of the process.
  static const auto& settings = *new std::vector<const ConfigSetting*>(makeSettings());
  return settings;
}

const ConfigSetting* configSettingNamed(std::string_view key) {
  const auto& settings = configSettings();
  const auto found = std::find_if(settings.begin(), settings.end(),
                                  [&](const ConfigSetting* it) { return it->key() == key; });
  return found == settings.end() ? nullptr : *found;
}

void applySetting(std::string_view text, Config& config) {
  const auto equals = text.find('=');
  if (equals == std::string_view::npos) {
    throw InputError("--config: \"" + std::string(text) + "\" has no value; expected KEY=VALUE");
  }
  const std::string_view key = trimmed(text.substr(0, equals));
  const ConfigSetting* setting = configSettingNamed(key);
  if (setting == nullptr) refuseKey(key);
  const std::string_view value = text.substr(equals + 1);
  const auto number = parseValue(value, setting->value(Config()).kind());
  if (!number || !setting->accepts(*number)) {
    throw InputError("--config: " + std::string(key) + ": found \"" + std::string(value) +
                     "\", expected " + setting->expectedValue());
  }
  setting->set(*number, config);
}

}  // namespace KorvaniTools
