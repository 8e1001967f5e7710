#pragma once

/// Shorthands for the coordinates and points that tests are made of.
///
///     const auto here = at(48.0, 11.0);                    // a position on level 0
///     const auto node = at(48.0, 11.0, 2, 17);             // a node of a graph
///     const auto there = moved(here->coordinate(), 3, 4);  // 3 m north, 4 m east: 5 m away
///
/// Metres become degrees on the engine's sphere, along the meridian and along the parallel of
/// where they start. Over the size of a building the great-circle distance agrees with that to
/// well below a millimetre.

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>

#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Platform/Location.hpp"

namespace KorvaniTest {

using KorvaniNavigation::CLLocationCoordinate2D;
using KorvaniNavigation::KRVNavPoint;
using PointPtr = std::shared_ptr<KRVNavPoint>;

/// Where test buildings stand unless they say otherwise: 48 degrees north, 11 east.
inline constexpr CLLocationCoordinate2D kOrigin{48.0, 11.0};

inline constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

/// A point without identifier.
inline PointPtr at(CLLocationCoordinate2D coordinate, std::int64_t level = 0) {
  return std::make_shared<KRVNavPoint>(coordinate, level);
}

inline PointPtr at(double latitude, double longitude, std::int64_t level = 0) {
  return at(CLLocationCoordinate2D{latitude, longitude}, level);
}

/// A point with identifier.
inline PointPtr at(CLLocationCoordinate2D coordinate, std::int64_t level, std::int64_t identifier) {
  return std::make_shared<KRVNavPoint>(coordinate, level, identifier);
}

inline PointPtr at(double latitude, double longitude, std::int64_t level, std::int64_t identifier) {
  return at(CLLocationCoordinate2D{latitude, longitude}, level, identifier);
}

/// Degrees of latitude that `metres` on the sphere make.
inline double degreesOf(double metres) {
  return KorvaniPlatform::degrees(metres / KorvaniPlatform::kEarthRadius);
}

/// `start` moved by metres towards the north; a negative number is south.
inline CLLocationCoordinate2D metresNorth(CLLocationCoordinate2D start, double metres) {
  return {start.latitude + degreesOf(metres), start.longitude};
}

/// `start` moved by metres towards the east along its parallel; a negative number is west.
inline CLLocationCoordinate2D metresEast(CLLocationCoordinate2D start, double metres) {
  const double shrink = std::cos(KorvaniPlatform::radians(start.latitude));
  return {start.latitude, start.longitude + degreesOf(metres) / shrink};
}

/// `start` moved by both, the degrees of longitude being those of `start`'s parallel.
inline CLLocationCoordinate2D moved(CLLocationCoordinate2D start, double north, double east) {
  return {metresNorth(start, north).latitude, metresEast(start, east).longitude};
}

/// A coordinate in metres from kOrigin.
inline CLLocationCoordinate2D fromOrigin(double north, double east) {
  return moved(kOrigin, north, east);
}

/// A point without identifier, in metres from kOrigin.
inline PointPtr pointFromOrigin(double north, double east, std::int64_t level = 0) {
  return at(fromOrigin(north, east), level);
}

}  // namespace KorvaniTest
