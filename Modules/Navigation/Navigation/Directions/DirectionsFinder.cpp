#include "Navigation/Directions/DirectionsFinder.hpp"

namespace KorvaniNavigation {

DirectionsFinder::~DirectionsFinder() = default;

std::optional<Directions> DirectionsFinder::firstDirectionForRoute(const std::vector<Step>& steps,
                                                                   bool andHistoryUsage) const {
  const std::vector<Directions> directions = directionsForRoute(steps, andHistoryUsage);
  if (directions.empty()) return std::nullopt;
  return directions.front();
}

}  // namespace KorvaniNavigation
