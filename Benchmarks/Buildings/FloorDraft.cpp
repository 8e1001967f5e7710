#include "Buildings/FloorDraft.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace KorvaniBenchmarks {

std::uint32_t FloorDraft::addNode(Metres place) {
  const auto node = static_cast<std::uint32_t>(building_.nodes.size());
  building_.nodes.push_back({site_.at(place), level_});
  places_.push_back(place);
  return node;
}

double FloorDraft::lengthBetween(std::uint32_t a, std::uint32_t b) {
  const double x = placeOf(a).x - placeOf(b).x;
  const double y = placeOf(a).y - placeOf(b).y;
  return std::sqrt(x * x + y * y) * numbers_.between(1.0, 1.02);
}

void FloorDraft::join(std::uint32_t a, std::uint32_t b, double multiplicator, bool barrierFree) {
  const double length = lengthBetween(a, b);
  building_.edges.push_back({a, b, length, multiplicator, barrierFree});
  building_.edges.push_back({b, a, length, multiplicator, barrierFree});
}

void FloorDraft::joinOneWay(std::uint32_t from, std::uint32_t to) {
  building_.edges.push_back({from, to, lengthBetween(from, to), 1.0, true});
}

void FloorDraft::addWall(const std::vector<Metres>& line) {
  PlainBuilding::Wall wall{level_, {}};
  wall.line.reserve(line.size());
  for (const Metres& place : line) wall.line.push_back(site_.at(place));
  building_.walls.push_back(std::move(wall));
}

void FloorDraft::finish(Metres southWest, Metres northEast) {
  constexpr double kFar = std::numeric_limits<double>::infinity();
  PlainBuilding::Level level{level_, {kFar, kFar}, {-kFar, -kFar}};
  for (const Metres& corner :
       {southWest, northEast, Metres{southWest.x, northEast.y}, Metres{northEast.x, southWest.y}}) {
    const Coordinate place = site_.at(corner);
    level.southWest.latitude = std::min(level.southWest.latitude, place.latitude);
    level.southWest.longitude = std::min(level.southWest.longitude, place.longitude);
    level.northEast.latitude = std::max(level.northEast.latitude, place.latitude);
    level.northEast.longitude = std::max(level.northEast.longitude, place.longitude);
  }
  building_.levels.push_back(level);
}

}  // namespace KorvaniBenchmarks
