#include "Navigation/Obstacles/PlaneEstimate.hpp"

#include <algorithm>
#include <numbers>

namespace KorvaniNavigation {

namespace {

using KorvaniPlatform::kMKMapMaximumLatitude;
using KorvaniPlatform::kMKMapWorldSize;
using KorvaniPlatform::MKCoordinateForMapPoint;
using KorvaniPlatform::MKMapPointForCoordinate;
using KorvaniPlatform::radians;

// Degrees. Within them x is at most one and a half times the size of the world.
constexpr double kFarthestLongitude = 360;
constexpr double kRoundingOfAStep = 0x1p-53;

}  // namespace

PlaneEstimate::PlaneEstimate(MKMapPoint low, MKMapPoint high) {
  const CLLocationCoordinate2D northWest = MKCoordinateForMapPoint(low);
  const CLLocationCoordinate2D southEast = MKCoordinateForMapPoint(high);
  middle_ = {(northWest.latitude + southEast.latitude) / 2,
             (northWest.longitude + southEast.longitude) / 2};
  // Beyond the greatest latitude the map ends, and the formula takes another.
  reach_ = {std::min((northWest.latitude - southEast.latitude) / 2,
                     kMKMapMaximumLatitude - std::abs(middle_.latitude)),
            std::min((southEast.longitude - northWest.longitude) / 2,
                     kFarthestLongitude - std::abs(middle_.longitude))};
  if (!(reach_.latitude > 0 && reach_.longitude > 0)) {
    *this = PlaneEstimate();
    return;
  }
  origin_ = MKMapPointForCoordinate(middle_);
  const double secant = 1 / std::cos(radians(middle_.latitude));
  const double tangent = std::tan(radians(middle_.latitude));
  const double degree = radians(1);
  xPerDegree_ = kMKMapWorldSize / 360;
  yPerDegree_ = -xPerDegree_ * secant;
  ySquare_ = yPerDegree_ * tangent * degree / 2;
  yCube_ = yPerDegree_ * (2 * tangent * tangent + 1) * degree * degree / 6;
  error_ = errorWithin(std::max(high.x - low.x, high.y - low.y));
}

double PlaneEstimate::errorWithin(double extent) const {
  const double farthest = radians(std::abs(middle_.latitude) + reach_.latitude);
  const double secant = 1 / std::cos(farthest);
  const double tangent = std::tan(farthest);
  const double fourth = secant * tangent * (6 * tangent * tangent + 5);
  const double distance = radians(reach_.latitude);
  const double leftOut = kMKMapWorldSize / (2 * std::numbers::pi) * fourth * distance * distance *
                         distance * distance / 24;
  // The formula is wrong by a third of the first summand at most; it gave the origin as well.
  return leftOut + kRoundingOfAStep * kMKMapWorldSize * 4 * (4 + secant * secant) +
         kRoundingOfAStep * 16 * extent;
}

}  // namespace KorvaniNavigation
