#pragma once

// Internal. A coordinate as the great-circle distance reads it, for who measures from one position
// to many places, or again and again to the same ones: half of the distance's work is done once.
//
//   const SpherePlace here(position);
//   metres = greatCircleDistance(there, here);   // the same number as for the coordinates

#include <algorithm>
#include <cmath>

#include "Platform/Location.hpp"

namespace KorvaniNavigation {

struct SpherePlace {
  double latitude;  // both in radians
  double longitude;
  double cosine;  // of the latitude

  explicit SpherePlace(KorvaniPlatform::CLLocationCoordinate2D coordinate)
      : latitude(KorvaniPlatform::radians(coordinate.latitude)),
        longitude(KorvaniPlatform::radians(coordinate.longitude)),
        cosine(std::cos(latitude)) {}
};

// `KorvaniPlatform::greatCircleDistance` of the two coordinates, to the last bit.
inline double greatCircleDistance(const SpherePlace& a, const SpherePlace& b) {
  const double s1 = std::sin((b.latitude - a.latitude) / 2.0);
  const double s2 = std::sin((b.longitude - a.longitude) / 2.0);
  const double h = s1 * s1 + a.cosine * b.cosine * s2 * s2;
  return 2.0 * KorvaniPlatform::kEarthRadius * std::asin(std::min(std::sqrt(h), 1.0));
}

}  // namespace KorvaniNavigation
