#include "Navigation/Directions/DirectionsHelpers.hpp"

#include <cmath>

#include "Common/EarthRadius.hpp"
#include "Common/KorvaniCommonHelpers.hpp"

namespace KorvaniNavigation {

using KorvaniPlatform::degrees;
using KorvaniPlatform::radians;

double DirectionsHelpers::bearingToLocation(const CLLocation& to, const CLLocation& fromLocation) {
  return KorvaniCommon::initialBearing(fromLocation.coordinate(), to.coordinate());
}

CLLocation DirectionsHelpers::location(const CLLocation& from, double withBearing,
                                       double distance) {
  const double latitude = radians(from.coordinate().latitude);
  const double longitude = radians(from.coordinate().longitude);
  const double bearing = radians(withBearing);
  const double angle = distance / KorvaniCommon::kKRV_EARTH_RADIUS;

  const double endLatitude = std::asin(std::sin(latitude) * std::cos(angle) +
                                       std::cos(latitude) * std::sin(angle) * std::cos(bearing));
  const double endLongitude =
      longitude + std::atan2(std::sin(bearing) * std::sin(angle) * std::cos(latitude),
                             std::cos(angle) - std::sin(latitude) * std::sin(endLatitude));

  return CLLocation(CLLocationCoordinate2D{degrees(endLatitude), degrees(endLongitude)},
                    from.altitude(), from.horizontalAccuracy(), from.verticalAccuracy(),
                    from.timestamp());
}

}  // namespace KorvaniNavigation
