#pragma once

#include "Navigation/Names.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

/// Bearings and destination points on the sphere.
///
/// The two functions are each other's inverse: the location reached from A along the bearing
/// to B, over the distance between them, is B again (up to rounding, poles and antipodes
/// aside). They give the heading of every route step, the direction in which an arrow points
/// and the place where it is drawn.
///
///     const double heading = DirectionsHelpers::bearingToLocation(door, hall);
///     const CLLocation arrow = DirectionsHelpers::location(hall, heading, 0.5);
///
/// Thread safety: both are pure functions.
class KORVANI_API DirectionsHelpers {
 public:
  DirectionsHelpers() = delete;

  /// Initial bearing of the great circle from `fromLocation` to `to`, degrees clockwise from
  /// north, in [0, 360). 0 when both are at the same coordinate; altitudes do not enter.
  /// With y = sin(dLon) cos(lat2) and x = cos(lat1) sin(lat2) - cos(lat2) sin(lat1) cos(dLon)
  /// it is atan2(y, x), brought into the range by adding a full turn to negative values.
  static double bearingToLocation(const CLLocation& to, const CLLocation& fromLocation);

  /// The location reached from `from` by going `distance` metres along the great circle that
  /// starts with `withBearing` (degrees clockwise from north, any number of turns).
  ///
  /// Altitude, accuracies and timestamp are those of `from`. The longitude is not brought back
  /// into [-180, 180]: walking east over the antimeridian gives a value above 180.
  static CLLocation location(const CLLocation& from, double withBearing, double distance);
};

}  // namespace KorvaniNavigation
