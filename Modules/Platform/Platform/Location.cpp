#include "Platform/Location.hpp"

#include <algorithm>
#include <cmath>

namespace KorvaniPlatform {

double greatCircleDistance(CLLocationCoordinate2D a, CLLocationCoordinate2D b) {
  const double latitudeA = radians(a.latitude);
  const double latitudeB = radians(b.latitude);
  const double s1 = std::sin((latitudeB - latitudeA) / 2.0);
  const double s2 = std::sin((radians(b.longitude) - radians(a.longitude)) / 2.0);
  const double h = s1 * s1 + std::cos(latitudeA) * std::cos(latitudeB) * s2 * s2;
  // In this order std::min hands on what is not a number, instead of half the Earth's girth.
  return 2.0 * kEarthRadius * std::asin(std::min(std::sqrt(h), 1.0));
}

CLLocation::CLLocation() : CLLocation(CLLocationCoordinate2D{}) {}

CLLocation::CLLocation(CLLocationCoordinate2D coordinate)
    : CLLocation(coordinate, 0, 0, 0, clock()->date()) {}

CLLocation::CLLocation(CLLocationCoordinate2D coordinate, double altitude,
                       double horizontalAccuracy, double verticalAccuracy, Date timestamp)
    : coordinate_(coordinate),
      altitude_(altitude),
      horizontalAccuracy_(horizontalAccuracy),
      verticalAccuracy_(verticalAccuracy),
      timestamp_(timestamp) {}

double CLLocation::distanceFromLocation(const CLLocation& other) const {
  return greatCircleDistance(coordinate_, other.coordinate_);
}

}  // namespace KorvaniPlatform
