#include "Navigation/Directions/DirectionsType.hpp"

namespace KorvaniNavigation {

std::optional<DirectionsType> directionsTypeFromRawValue(std::int64_t rawValue) {
  if (rawValue < rawValueOf(DirectionsType::unknown)) return std::nullopt;
  if (rawValue > rawValueOf(DirectionsType::destination)) return std::nullopt;
  return static_cast<DirectionsType>(rawValue);
}

std::string_view nameOf(DirectionsType type) {
  switch (type) {
    case DirectionsType::unknown:
      break;
    case DirectionsType::forward:
      return "forward";
    case DirectionsType::left:
      return "left";
    case DirectionsType::right:
      return "right";
    case DirectionsType::turnaround:
      return "turnaround";
    case DirectionsType::bearLeft:
      return "bearLeft";
    case DirectionsType::bearRight:
      return "bearRight";
    case DirectionsType::levelUp:
      return "levelUp";
    case DirectionsType::levelDown:
      return "levelDown";
    case DirectionsType::destination:
      return "destination";
  }
  return "unknown";
}

}  // namespace KorvaniNavigation
