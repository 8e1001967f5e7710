#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Navigation/API/Config.hpp"
#include "Platform/Value.hpp"

namespace KorvaniTools {

/// Everything about a configuration that can be set by name from outside: the items, by their
/// keys, and the fields that have no item, by their names.
///
///     applySetting("navigationTargetProximityDistance=3", config);
///     applySetting("levelHeight=4.5", config);
class ConfigSetting {
 public:
  using Config = KorvaniNavigation::Config;
  using Number = KorvaniPlatform::Number;

  virtual ~ConfigSetting() = default;

  virtual std::string key() const = 0;
  virtual std::string title() const = 0;
  /// One sentence, or empty.
  virtual std::string description() const = 0;
  virtual Number defaultValue() const = 0;
  /// The value in `config`, of the field's own kind.
  virtual Number value(const Config& config) const = 0;
  virtual void set(const Number& number, Config& config) const = 0;
  /// Whether this is one of the configuration items rather than a field without item.
  virtual bool isItem() const = 0;

  /// The field's type in a word: "boolean", "integer", "float" or "double".
  std::string type() const;

  /// Whether the field can hold `number`: only a boolean is one, an integer is a whole number, and
  /// no number is infinite in the field.
  bool accepts(const Number& number) const;

  /// What the field can hold, for error messages: "a whole number".
  std::string expectedValue() const;
};

/// All settings: the items in their order, then the fields without item.
const std::vector<const ConfigSetting*>& configSettings();

/// The setting of that key; null when there is none.
const ConfigSetting* configSettingNamed(std::string_view key);

/// Sets what `text` ("KEY=VALUE") says. Booleans are true, false, 1 or 0; other values are
/// finite numbers, whole ones for an integer.
/// @throws InputError naming the key and what is expected
void applySetting(std::string_view text, KorvaniNavigation::Config& config);

}  // namespace KorvaniTools
