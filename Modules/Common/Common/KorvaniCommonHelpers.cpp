#include "Common/KorvaniCommonHelpers.hpp"

#include <cmath>

namespace KorvaniCommon {

using KorvaniPlatform::CLLocationCoordinate2D;
using KorvaniPlatform::degrees;
using KorvaniPlatform::radians;

BearingPlace::BearingPlace(CLLocationCoordinate2D coordinate)
    : sine(std::sin(radians(coordinate.latitude))),
      cosine(std::cos(radians(coordinate.latitude))),
      longitude(radians(coordinate.longitude)) {}

double initialBearing(CLLocationCoordinate2D from, CLLocationCoordinate2D to) {
  return initialBearing(BearingPlace(from), BearingPlace(to));
}

double initialBearing(const BearingPlace& from, const BearingPlace& to) {
  const double dlon = to.longitude - from.longitude;
  const double y = std::sin(dlon) * to.cosine;
  const double x = from.cosine * to.sine - to.cosine * from.sine * std::cos(dlon);
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
