#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "Building/Building.hpp"

namespace KorvaniTools {

/// What people call a building's levels.
class LevelNames {
 public:
  /// Levels without names.
  LevelNames() = default;

  /// The names that a building file gives; of several for one level the first.
  explicit LevelNames(const Building& building);

  /// The level's name, empty when it has none.
  std::string name(std::int64_t level) const;

  /// The level in words: "level 2", or "level 2, Departures" when it has a name that says
  /// more than its number.
  std::string words(std::int64_t level) const;

  /// The level with that number or name (capitals do not matter), e.g. "-1" or "departures".
  std::optional<std::int64_t> find(std::string_view text) const;

 private:
  std::map<std::int64_t, std::string> names_;
};

}  // namespace KorvaniTools
