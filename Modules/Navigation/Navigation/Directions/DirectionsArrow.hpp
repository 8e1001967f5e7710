#pragma once

#include <cstdint>

#include "Navigation/Names.hpp"

namespace KorvaniNavigation {

/// Where a map draws the arrow of an instruction. A plain value.
struct DirectionsArrow {
  /// The point of the arrow: the turning point, degrees.
  CLLocationCoordinate2D peak;

  /// The direction in which the arrow points, degrees clockwise from north.
  double heading = 0;

  /// The level on which the arrow is drawn.
  std::int64_t level = 0;
};

}  // namespace KorvaniNavigation
