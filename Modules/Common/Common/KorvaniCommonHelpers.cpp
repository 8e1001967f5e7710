#include "Common/KorvaniCommonHelpers.hpp"

#include <cmath>

namespace KorvaniCommon {

using KorvaniPlatform::CLLocationCoordinate2D;
using KorvaniPlatform::degrees;
using KorvaniPlatform::radians;

double initialBearing(CLLocationCoordinate2D from, CLLocationCoordinate2D to) {
  const double lat1 = radians(from.latitude);
  const double lat2 = radians(to.latitude);
  const double dlon = radians(to.longitude) - radians(from.longitude);
  const double y = std::sin(dlon) * std::cos(lat2);
  const double x =
      std::cos(lat1) * std::sin(lat2) - std::cos(lat2) * std::sin(lat1) * std::cos(dlon);
  double angle = std::atan2(y, x);
  if (angle < 0.0) angle += 6.283185307179586;
  const double bearing = degrees(angle);
  // A hair west of north rounds up to a full turn, and north may come out as -0.
  return bearing >= 360.0 || bearing == 0.0 ? 0.0 : bearing;
}

double KorvaniCommonHelpers::clockwiseAngleBetweenLines(CLLocationCoordinate2D firstStart,
                                                        CLLocationCoordinate2D firstEnd,
                                                        CLLocationCoordinate2D secondStart,
                                                        CLLocationCoordinate2D secondEnd) {
  const double angle =
      initialBearing(secondStart, secondEnd) - initialBearing(firstStart, firstEnd);
  if (angle > 180.0) return angle - 360.0;
  if (angle <= -180.0) return angle + 360.0;
  return angle;
}

}  // namespace KorvaniCommon
