#pragma once

#include <vector>

#include "Platform/MapPoint.hpp"

namespace KorvaniBenchmarks {

using PlanePoint = KorvaniPlatform::MKMapPoint;

/// Walls on the map plane, a polyline each.
using PlaneLines = std::vector<std::vector<PlanePoint>>;

/// A straight line on the map plane.
struct PlaneSegment {
  PlanePoint a;
  PlanePoint b;
};

}  // namespace KorvaniBenchmarks
