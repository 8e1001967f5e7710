#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "Platform/Export.hpp"

namespace KorvaniNavigation {

/// What a walker is to do, as an instruction tells it.
///
/// The raw values are part of the interface: they travel in an instruction's dictionary, where
/// hosts read them as numbers, so cases are never renumbered.
///
///     if (directionsTypeFromRawValue(2) == DirectionsType::left) { ... }
enum class DirectionsType : std::int64_t {
  unknown = 0,      ///< no instruction known
  forward = 1,      ///< go straight on
  left = 2,         ///< turn left
  right = 3,        ///< turn right
  turnaround = 4,   ///< turn back
  bearLeft = 5,     ///< keep slightly left
  bearRight = 6,    ///< keep slightly right
  levelUp = 7,      ///< change to a higher level
  levelDown = 8,    ///< change to a lower level
  destination = 9,  ///< the destination is reached
};

/// The number of the case, 0...9.
constexpr std::int64_t rawValueOf(DirectionsType type) { return static_cast<std::int64_t>(type); }

/// The case of the number; absent for everything outside 0...9.
KORVANI_API std::optional<DirectionsType> directionsTypeFromRawValue(std::int64_t rawValue);

/// The case's name as written above ("bearLeft"); the text lives as long as the program.
KORVANI_API std::string_view nameOf(DirectionsType type);

}  // namespace KorvaniNavigation

/// A case hashes to its raw value, on every platform.
template <>
struct std::hash<KorvaniNavigation::DirectionsType> {
  std::size_t operator()(KorvaniNavigation::DirectionsType type) const noexcept {
    return static_cast<std::size_t>(KorvaniNavigation::rawValueOf(type));
  }
};
