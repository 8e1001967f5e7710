#pragma once

#include <span>
#include <vector>

#include "Platform/Export.hpp"
#include "Platform/Location.hpp"

namespace KorvaniCommon {

/// Tests of coordinates against lists of coordinates.
///
///     const std::array corners{northEast, southWest};
///     if (GeoPolygonChecker::isCoordinate(position, corners)) ...
///
/// Degrees are compared as they are: a rectangle never reaches across the 180th meridian, but
/// around the Earth the other way. Thread safety: functions without state.
class KORVANI_API GeoPolygonChecker {
 public:
  /// Whether `coordinate` lies in the closed rectangle that the smallest and largest latitudes
  /// and longitudes of the list span: its border belongs to it, any two opposite corners
  /// describe it, in either order, and a single coordinate contains itself alone. An empty
  /// list contains nothing. A coordinate that is not a number lies nowhere, and in the list it
  /// adds nothing. Linear in the length of the list, nothing is allocated.
  static bool isCoordinate(
      KorvaniPlatform::CLLocationCoordinate2D coordinate,
      std::span<const KorvaniPlatform::CLLocationCoordinate2D> insideBoundingRectangleFor);

  /// The same for a list that is written out in the call.
  static bool isCoordinate(
      KorvaniPlatform::CLLocationCoordinate2D coordinate,
      const std::vector<KorvaniPlatform::CLLocationCoordinate2D>& insideBoundingRectangleFor);
};

}  // namespace KorvaniCommon
