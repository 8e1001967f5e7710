#include "Drawing/Viewer/ReplayedRoute.hpp"

#include <cmath>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include "Navigation/Directions/TurnByTurnDirectionCalculator.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Routing/Step.hpp"
#include "Platform/Location.hpp"

namespace KorvaniTools {

using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::Route;
using KorvaniNavigation::Step;

namespace {

/// Metres within which two points are the same place.
constexpr double kSamePlace = 0.5;

bool isSamePlace(Coordinate a, std::int64_t levelOfA, Coordinate b, std::int64_t levelOfB) {
  return levelOfA == levelOfB && KorvaniPlatform::greatCircleDistance(a, b) < kSamePlace;
}

bool isSamePlace(const Instruction& a, const Instruction& b) {
  return isSamePlace(a.at, a.level, b.at, b.level);
}

std::shared_ptr<KRVNavPoint> pointOf(const OrderedJson& json) {
  if (!json["lat"].is_number() || !json["lon"].is_number()) return nullptr;
  const auto point = timelinePoint(json["lat"], json["lon"], json["level"]);
  if (!point) return nullptr;
  return std::make_shared<KRVNavPoint>(point->coordinate, point->level,
                                       json["id"].get<std::int64_t>());
}

std::optional<Step> stepOf(const OrderedJson& json) {
  auto start = pointOf(json["start"]);
  auto end = pointOf(json["end"]);
  for (const char* number : {"distance", "heading", "timeMultiplicator"}) {
    if (!json[number].is_number()) return {};
  }
  if (start == nullptr || end == nullptr) return {};
  return Step::withHeading(std::move(start), std::move(end), json["distance"], json["heading"],
                           json["barrierFree"], json["timeMultiplicator"], json["neighborType"]);
}

}  // namespace

std::optional<TimelinePoint> timelinePoint(double latitude, double longitude, std::int64_t level) {
  if (!(std::abs(latitude) <= 90) || !(std::abs(longitude) <= 180)) return {};
  return TimelinePoint{{latitude, longitude}, level};
}

std::optional<Route> replayedRoute(const OrderedJson& route) {
  if (route.is_null() || route["steps"].empty()) return {};
  std::vector<Step> steps;
  for (const OrderedJson& json : route["steps"]) {
    const auto step = stepOf(json);
    if (!step) return {};
    steps.push_back(*step);
  }
  Route read(std::move(steps));
  read.setDirections(
      KorvaniNavigation::TurnByTurnDirectionCalculator().directionsForRoute(read.steps(), false));
  return read;
}

std::vector<TimelinePoint> pointsAlong(const Route& route) {
  std::vector<TimelinePoint> points;
  for (const auto& point : route.points()) points.push_back({point->coordinate(), point->level()});
  return points;
}

Spot namedSpot(const TracePoint& point, const std::string& otherwise, const Building& building) {
  Spot spot{otherwise, {point.latitude, point.longitude}, point.level};
  for (const Place& place : building.places) {
    if (!isSamePlace(spot.coordinate, spot.level, place.coordinate, place.level)) continue;
    spot.name = place.name;
    break;
  }
  return spot;
}

std::vector<Spot> namedDestinations(const std::vector<TracePoint>& destinations,
                                    const Building& building) {
  std::vector<Spot> spots;
  spots.reserve(destinations.size());
  for (const TracePoint& point : destinations) {
    spots.push_back(namedSpot(point, "the destination", building));
  }
  return spots;
}

std::size_t instructionReached(const std::vector<Instruction>& instructions,
                               const std::vector<Instruction>& left) {
  // The walk straight on is told from where the person is, so that only what comes after it has
  // its place among the instructions.
  for (std::size_t skipped = 0; skipped < left.size(); ++skipped) {
    // A turn and the walk after it have one place; the search from the end finds the last of them.
    std::size_t last = skipped;
    while (last + 1 < left.size() && isSamePlace(left[skipped], left[last + 1])) ++last;
    for (std::size_t i = instructions.size(); i-- > 0;) {
      if (isSamePlace(instructions[i], left[skipped])) return i > last ? i - last : 0;
    }
  }
  return 0;
}

}  // namespace KorvaniTools
