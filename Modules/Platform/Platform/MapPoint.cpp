#include "Platform/MapPoint.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace KorvaniPlatform {

namespace {

constexpr double kFourPi = 4.0 * std::numbers::pi;

}  // namespace

MKMapPoint MKMapPointForCoordinate(CLLocationCoordinate2D coordinate) {
  const double latitude =
      std::clamp(coordinate.latitude, -kMKMapMaximumLatitude, kMKMapMaximumLatitude);
  const double sine = std::sin(radians(latitude));
  const double x = (coordinate.longitude + 180.0) / 360.0 * kMKMapWorldSize;
  const double y = (0.5 - std::log((1.0 + sine) / (1.0 - sine)) / kFourPi) * kMKMapWorldSize;
  return {x, y};
}

CLLocationCoordinate2D MKCoordinateForMapPoint(MKMapPoint point) {
  const double longitude = point.x / kMKMapWorldSize * 360.0 - 180.0;
  const double k = (0.5 - point.y / kMKMapWorldSize) * kFourPi;
  return {degrees(std::atan(std::sinh(k / 2.0))), longitude};
}

double MKMetersBetweenMapPoints(MKMapPoint a, MKMapPoint b) {
  return greatCircleDistance(MKCoordinateForMapPoint(a), MKCoordinateForMapPoint(b));
}

}  // namespace KorvaniPlatform
