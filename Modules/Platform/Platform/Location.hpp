#pragma once

#include <numbers>

#include "Platform/Clock.hpp"
#include "Platform/Export.hpp"

/// Coordinates, locations, and the distance between them.
///
/// The Earth is one sphere here and everywhere in the engine. Distances are great-circle distances
/// by the haversine formula, which stays exact for the few metres that matter inside a building:
///
///     CLLocation door({48.1372, 11.5756});
///     double metres = door.distanceFromLocation(CLLocation({48.1373, 11.5756}));   // 11.12
///
/// Formulas are evaluated in double precision, left to right as they are written in the contracts,
/// without fused multiply-add, because results hang on last bits (a foot on an edge, a wall touched
/// at its end).
///
/// Thread safety: values; the functions have no state.

namespace KorvaniPlatform {

/// Radius of the sphere in metres: the mean Earth radius of the International Union of Geodesy and
/// Geophysics, (2 a + b) / 3 of its reference ellipsoid.
inline constexpr double kEarthRadius = 6371008.8;

/// A position on the sphere. Latitude in degrees, north positive; longitude in degrees, east
/// positive. Equality is exact.
struct CLLocationCoordinate2D {
  double latitude = 0;
  double longitude = 0;

  friend bool operator==(const CLLocationCoordinate2D&, const CLLocationCoordinate2D&) = default;
};

/// Degrees to radians: angle * pi / 180.
inline double radians(double angle) { return angle * std::numbers::pi / 180.0; }

/// Radians to degrees: angle * 180 / pi.
inline double degrees(double angle) { return angle * 180.0 / std::numbers::pi; }

/// Great-circle distance in metres, by the haversine formula, angles in radians:
/// 2 R asin(min(1, sqrt(h))) with h = s1 * s1 + cos(latA) * cos(latB) * s2 * s2,
/// s1 = sin((latB - latA) / 2) and s2 = sin((lonB - lonA) / 2). Never negative; 0 for equal
/// coordinates; not a number when a coordinate is not.
KORVANI_API double greatCircleDistance(CLLocationCoordinate2D a, CLLocationCoordinate2D b);

/// A place as a positioning system reports it: a coordinate, an altitude, how accurate both are,
/// and when it was measured. Immutable. The engine keeps a point's level in the altitude.
class KORVANI_API CLLocation {
 public:
  /// The coordinate (0, 0), measured now.
  CLLocation();

  /// Altitude 0, both accuracies 0, measured now by the process's clock.
  explicit CLLocation(CLLocationCoordinate2D coordinate);

  /// Everything given. Altitude and accuracies in metres; they are kept as they are.
  CLLocation(CLLocationCoordinate2D coordinate, double altitude, double horizontalAccuracy,
             double verticalAccuracy, Date timestamp);

  CLLocationCoordinate2D coordinate() const { return coordinate_; }
  double altitude() const { return altitude_; }
  double horizontalAccuracy() const { return horizontalAccuracy_; }
  double verticalAccuracy() const { return verticalAccuracy_; }
  Date timestamp() const { return timestamp_; }

  /// `greatCircleDistance` of the two coordinates, in metres. Altitude never enters.
  double distanceFromLocation(const CLLocation& other) const;

 private:
  CLLocationCoordinate2D coordinate_;
  double altitude_ = 0;
  double horizontalAccuracy_ = 0;
  double verticalAccuracy_ = 0;
  Date timestamp_;
};

}  // namespace KorvaniPlatform
