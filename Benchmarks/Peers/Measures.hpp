#pragma once

#include <algorithm>
#include <cmath>

#include "Buildings/PlainBuilding.hpp"
#include "Peers/PlaneLines.hpp"

namespace KorvaniBenchmarks {

/// Distances and feet as the engine defines them, for peers that have to give its answers.

/// The plain distance of latitude and longitude.
inline double degreeDistance(Coordinate a, Coordinate b) {
  const double latitude = a.latitude - b.latitude;
  const double longitude = a.longitude - b.longitude;
  return std::sqrt(latitude * latitude + longitude * longitude);
}

/// Metres from point to point, in which the engine always counts the height of one level.
inline double pointDistance(Coordinate a, Coordinate b) {
  constexpr double kLevelHeight = 3.0;
  const double ground = KorvaniPlatform::greatCircleDistance(a, b);
  return std::sqrt(ground * ground + kLevelHeight * kLevelHeight);
}

/// The foot of a perpendicular on the line through `a` and `b`: the engine's formula, whose
/// rounding shows in the tenth of a millimetre.
inline PlanePoint footOn(PlanePoint point, PlanePoint a, PlanePoint b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double c = a.y * b.x - a.x * b.y;
  const double n = dx * dx + dy * dy;
  return {((-dx * point.x - dy * point.y) * (-dx) - dy * c) / n,
          (dy * (dx * point.x + dy * point.y) + c * dx) / n};
}

/// Whether a place on the line through `a` and `b` counts as between them.
inline bool isBetween(Coordinate place, Coordinate a, Coordinate b) {
  const double length = KorvaniPlatform::greatCircleDistance(a, b);
  const double over = KorvaniPlatform::greatCircleDistance(place, a) +
                      KorvaniPlatform::greatCircleDistance(place, b);
  return std::abs(length - over) < std::min(length * 0.001, 0.5);
}

}  // namespace KorvaniBenchmarks
