#include "Common/GeoPolygonChecker.hpp"

#include <limits>

namespace KorvaniCommon {

using KorvaniPlatform::CLLocationCoordinate2D;

namespace {

/// The smallest closed interval around the values added; contains nothing before the first.
struct Interval {
  double smallest = std::numeric_limits<double>::infinity();
  double largest = -std::numeric_limits<double>::infinity();

  void add(double value) {
    if (value < smallest) smallest = value;
    if (value > largest) largest = value;
  }

  bool contains(double value) const { return smallest <= value && value <= largest; }
};

}  // namespace

bool GeoPolygonChecker::isCoordinate(
    CLLocationCoordinate2D coordinate,
    std::span<const CLLocationCoordinate2D> insideBoundingRectangleFor) {
  Interval latitudes;
  Interval longitudes;
  for (const CLLocationCoordinate2D& corner : insideBoundingRectangleFor) {
    latitudes.add(corner.latitude);
    longitudes.add(corner.longitude);
  }
  return latitudes.contains(coordinate.latitude) && longitudes.contains(coordinate.longitude);
}

bool GeoPolygonChecker::isCoordinate(
    CLLocationCoordinate2D coordinate,
    const std::vector<CLLocationCoordinate2D>& insideBoundingRectangleFor) {
  return isCoordinate(coordinate,
                      std::span<const CLLocationCoordinate2D>(insideBoundingRectangleFor));
}

}  // namespace KorvaniCommon
