#pragma once

#include "Building/Rectangle.hpp"

namespace KorvaniTools {

/// Metres to the east and to the north of some coordinate. Within a building the ground is taken
/// as flat; over a kilometre that is wrong by centimetres, except next to the poles.
struct GroundOffset {
  double east = 0;
  double north = 0;

  double length() const;
};

/// The way from one coordinate to another.
GroundOffset offsetBetween(Coordinate from, Coordinate to);

/// The coordinate with 9 decimals, a tenth of a millimetre. What is computed with sines, which
/// differ in the last bit between machines, is the same on all of them when it is rounded.
Coordinate rounded(Coordinate coordinate);

/// The coordinate that far away from `from`, rounded. The latitude stays within -90 and 90.
Coordinate movedBy(Coordinate from, GroundOffset offset);

/// Metres from `place` to the straight line between two coordinates.
double distanceToLine(Coordinate place, Coordinate lineStart, Coordinate lineEnd);

}  // namespace KorvaniTools
