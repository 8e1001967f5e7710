#pragma once

#include "Platform/Export.hpp"
#include "Platform/Location.hpp"

/// The map plane: coordinates projected to a square, for plane geometry.
///
/// Projections onto edges and crossings with walls are computed in this plane. It is the spherical
/// Mercator projection, scaled so that the world is a square of `kMKMapWorldSize` units, x growing
/// to the east from the date line, y growing to the south from the northern edge. The projection
/// keeps angles, so a foot of a perpendicular in the plane is one on the ground, at the scale of a
/// building.
///
///     MKMapPoint p = MKMapPointForCoordinate({48.1372, 11.5756});
///     CLLocationCoordinate2D back = MKCoordinateForMapPoint(p);      // the same to 1e-9 degrees
///
/// Thread safety: values; the functions have no state.

namespace KorvaniPlatform {

/// Side of the square world in units: 2^28, tiles of 256 pixels at the twentieth zoom level.
inline constexpr double kMKMapWorldSize = 268435456;

/// The latitude at which the projected world becomes a square, in degrees: atan(sinh(pi)).
inline constexpr double kMKMapMaximumLatitude = 85.05112877980659;

/// A point of the plane, in units. Equality is exact.
struct MKMapPoint {
  double x = 0;
  double y = 0;

  friend bool operator==(const MKMapPoint&, const MKMapPoint&) = default;
};

/// Projects a coordinate: x = (lon + 180) / 360 * W and
/// y = (0.5 - ln((1 + sin lat) / (1 - sin lat)) / (4 pi)) * W. Latitudes beyond
/// `kMKMapMaximumLatitude` are brought to it first; longitudes are taken as they are.
KORVANI_API MKMapPoint MKMapPointForCoordinate(CLLocationCoordinate2D coordinate);

/// The inverse: lon = x / W * 360 - 180, k = (0.5 - y / W) * (4 pi),
/// lat = atan(sinh(k / 2)) in degrees.
KORVANI_API CLLocationCoordinate2D MKCoordinateForMapPoint(MKMapPoint point);

/// Great-circle distance in metres between the coordinates of two points of the plane.
KORVANI_API double MKMetersBetweenMapPoints(MKMapPoint a, MKMapPoint b);

}  // namespace KorvaniPlatform
