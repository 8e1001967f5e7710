#pragma once

#include "Platform/Export.hpp"
#include "Platform/Location.hpp"

/// Directions of lines on the sphere.
///
/// Bearings and angles are in degrees and grow clockwise, as on a compass. Coordinates are in
/// degrees. The formulas are evaluated in double precision in the order in which they are
/// written, so that equal input gives equal output everywhere. Thread safety: functions without
/// state.
namespace KorvaniCommon {

/// Bearing with which a great circle leaves `from` for `to`: degrees clockwise from north, in
/// [0, 360). Two equal coordinates give 0. A bearing that rounds up to 360 is 0.
///
/// Source: spherical trigonometry, tan(bearing) = sin(dlon) cos(lat2) /
/// (cos(lat1) sin(lat2) - cos(lat2) sin(lat1) cos(dlon)).
KORVANI_API double initialBearing(KorvaniPlatform::CLLocationCoordinate2D from,
                                  KorvaniPlatform::CLLocationCoordinate2D to);

/// A coordinate as bearings read it, for who walks from place to place: half of a bearing's sines
/// are those of the one before.
struct BearingPlace {
  double sine;  ///< of the latitude
  double cosine;
  double longitude;  ///< radians

  KORVANI_API explicit BearingPlace(KorvaniPlatform::CLLocationCoordinate2D coordinate);
};

/// The same number as for the two coordinates.
KORVANI_API double initialBearing(const BearingPlace& from, const BearingPlace& to);

/// Helpers that modules share.
///
///     // Walking north and then east is a right turn:
///     KorvaniCommonHelpers::clockwiseAngleBetweenLines(a, north, north, east);  // about 90
class KORVANI_API KorvaniCommonHelpers {
 public:
  /// Angle by which the second line is turned against the first: bearing of the second minus
  /// bearing of the first, each from its start to its end, brought into (-180, 180] degrees.
  /// Positive is clockwise (a right turn), 180 a reversal. The lines need not meet. A line
  /// of no length has bearing 0.
  static double clockwiseAngleBetweenLines(KorvaniPlatform::CLLocationCoordinate2D firstStart,
                                           KorvaniPlatform::CLLocationCoordinate2D firstEnd,
                                           KorvaniPlatform::CLLocationCoordinate2D secondStart,
                                           KorvaniPlatform::CLLocationCoordinate2D secondEnd);
};

}  // namespace KorvaniCommon
