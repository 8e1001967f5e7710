#include "Navigation/Directions/Directions.hpp"

#include <cstdint>
#include <iomanip>
#include <locale>
#include <mutex>
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

// Digits only: "inf" and "nan" stay as they are.
bool looksLikeWholeNumber(const std::string& text) {
  return text.find_first_not_of("-0123456789") == std::string::npos;
}

}  // namespace

struct Directions::Contents {
  DirectionsType type = DirectionsType::unknown;
  double distance = 0;
  std::shared_ptr<KRVNavPoint> nextWaypoint = nullptr;
  std::optional<DirectionsArrow> arrow = std::nullopt;
  std::optional<std::string> levelChangeTypeName = std::nullopt;
  CLLocationCoordinate2D waypointCoordinate = {};  // as they were when the instruction was made
  std::int64_t waypointLevel = 0;
  bool isEmpty = false;

  Dictionary dictionary() const {
    if (isEmpty) return emptyInstructionDictionary();
    const DirectionsArrow drawn = arrow.value_or(DirectionsArrow{});
    const Dictionary arrowPlace = placeDictionary(drawn.peak, drawn.level);
    const Dictionary waypointPlace =
        nextWaypoint ? placeDictionary(waypointCoordinate, waypointLevel) : arrowPlace;
    return Dictionary{
        {kKRVIndoorTurnByTurnRouteDirection, rawValueOf(type)},
        {kKRVIndoorTurnByTurnDistanceUntilForNextTurnDirection, distance},
        {kKRVIndoorTurnByTurnLevelNumberForNextDirection, drawn.level},
        {kKRVIndoorTurnByTurnWaypointInRouteForNextTurnDirection, waypointPlace},
        {kKRVIndoorTurnByTurnDirectionsArrowDisplayLocation, arrowPlace},
        {kKRVIndoorTurnByTurnHeadingForDirectionsArrow, drawn.heading},
        {kKRVIndoorTurnByTurnNeighbourType, levelChangeTypeName.value_or("")},
    };
  }

  const Dictionary& madeDictionary() const {
    const std::lock_guard lock(making);
    if (!made) made = std::make_unique<const Dictionary>(dictionary());
    return *made;
  }

  mutable std::mutex making = {};
  mutable std::unique_ptr<const Dictionary> made = nullptr;
};

Directions::Directions() = default;

Directions::Directions(DirectionsType type, double distance,
                       std::shared_ptr<KRVNavPoint> nextWaypoint,
                       std::optional<DirectionsArrow> arrow,
                       std::optional<std::string> levelChangeTypeName) {
  const auto contents = std::make_shared<Contents>();
  contents->type = type;
  contents->distance = distance;
  if (nextWaypoint) {
    contents->waypointCoordinate = nextWaypoint->coordinate();
    contents->waypointLevel = nextWaypoint->level();
  }
  contents->nextWaypoint = std::move(nextWaypoint);
  contents->arrow = arrow;
  contents->levelChangeTypeName = std::move(levelChangeTypeName);
  contents_ = contents;
}

const Directions::Contents& Directions::contents() const {
  static const auto* const empty = [] {
    auto* const contents = new Contents();
    contents->isEmpty = true;
    return contents;
  }();
  return contents_ ? *contents_ : *empty;
}

DirectionsType Directions::type() const { return contents().type; }

double Directions::distance() const { return contents().distance; }

const std::shared_ptr<KRVNavPoint>& Directions::nextWaypoint() const {
  return contents().nextWaypoint;
}

const std::optional<DirectionsArrow>& Directions::arrow() const { return contents().arrow; }

const std::optional<std::string>& Directions::levelChangeTypeName() const {
  return contents().levelChangeTypeName;
}

const Dictionary& Directions::directionsJson() const { return contents().madeDictionary(); }

std::string Directions::description() const {
  std::ostringstream text;
  text.imbue(std::locale::classic());  // a host's locale must not turn the point into a comma
  text << std::setprecision(15) << distance();
  std::string number = text.str();
  if (looksLikeWholeNumber(number)) number += ".0";
  return number + "," + std::string(nameOf(type()));
}

}  // namespace KorvaniNavigation
