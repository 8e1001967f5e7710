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

  /// The number that is on the doors: that of the map which the building was made from, such as
  /// "0.5", or else the level's own.
  std::string number(std::int64_t level) const;

  /// The level in words, by the number on the doors: "level 2", or "level 2, Departures" when it
  /// has a name that says more than that.
  std::string words(std::int64_t level) const;

  /// The level with that number or name (capitals do not matter), e.g. "-1" or "departures". A
  /// whole number is the building's own; "0.5" and "level 1" are what `words` says.
  std::optional<std::int64_t> find(std::string_view text) const;

 private:
  std::map<std::int64_t, std::string> names_;
  std::map<std::int64_t, std::string> numbers_;  ///< of levels whose map's number is known
};

}  // namespace KorvaniTools
