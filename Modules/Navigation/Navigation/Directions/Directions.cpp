#include "Navigation/Directions/Directions.hpp"

#include <cstdint>
#include <iomanip>
#include <locale>
#include <sstream>
#include <utility>

#include "Navigation/API/Constants.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"

namespace KorvaniNavigation {

namespace {

// The altitude entry carries the level number: maps place a waypoint by level, not by height.
Dictionary placeDictionary(CLLocationCoordinate2D coordinate, std::int64_t level) {
  return Dictionary{
      {kKRVIndoorTurnByTurnLocationLatitude, coordinate.latitude},
      {kKRVIndoorTurnByTurnLocationLongitude, coordinate.longitude},
      {kKRVIndoorTurnByTurnLocationAltitude, level},
  };
}

Dictionary emptyInstructionDictionary() {
  return Dictionary{
      {kKRVIndoorTurnByTurnRouteDirection, rawValueOf(DirectionsType::unknown)},
      {kKRVIndoorTurnByTurnDistanceUntilForNextTurnDirection, 0.0},
  };
}

Dictionary instructionDictionary(const Directions& instruction) {
  const DirectionsArrow arrow = instruction.arrow().value_or(DirectionsArrow{});
  const Dictionary arrowPlace = placeDictionary(arrow.peak, arrow.level);
  const auto& waypoint = instruction.nextWaypoint();
  const Dictionary waypointPlace =
      waypoint ? placeDictionary(waypoint->coordinate(), waypoint->level()) : arrowPlace;
  return Dictionary{
      {kKRVIndoorTurnByTurnRouteDirection, rawValueOf(instruction.type())},
      {kKRVIndoorTurnByTurnDistanceUntilForNextTurnDirection, instruction.distance()},
      {kKRVIndoorTurnByTurnLevelNumberForNextDirection, arrow.level},
      {kKRVIndoorTurnByTurnWaypointInRouteForNextTurnDirection, waypointPlace},
      {kKRVIndoorTurnByTurnDirectionsArrowDisplayLocation, arrowPlace},
      {kKRVIndoorTurnByTurnHeadingForDirectionsArrow, arrow.heading},
      {kKRVIndoorTurnByTurnNeighbourType, instruction.levelChangeTypeName().value_or("")},
  };
}

// Digits only: "inf" and "nan" stay as they are.
bool looksLikeWholeNumber(const std::string& text) {
  return text.find_first_not_of("-0123456789") == std::string::npos;
}

}  // namespace

Directions::Directions()
    : directionsJson_(std::make_shared<const Dictionary>(emptyInstructionDictionary())) {}

Directions::Directions(DirectionsType type, double distance,
                       std::shared_ptr<KRVNavPoint> nextWaypoint,
                       std::optional<DirectionsArrow> arrow,
                       std::optional<std::string> levelChangeTypeName)
    : type_(type),
      distance_(distance),
      nextWaypoint_(std::move(nextWaypoint)),
      arrow_(arrow),
      levelChangeTypeName_(std::move(levelChangeTypeName)),
      directionsJson_(std::make_shared<const Dictionary>(instructionDictionary(*this))) {}

std::string Directions::description() const {
  std::ostringstream text;
  text.imbue(std::locale::classic());  // a host's locale must not turn the point into a comma
  text << std::setprecision(15) << distance_;
  std::string number = text.str();
  if (looksLikeWholeNumber(number)) number += ".0";
  return number + "," + std::string(nameOf(type_));
}

}  // namespace KorvaniNavigation
