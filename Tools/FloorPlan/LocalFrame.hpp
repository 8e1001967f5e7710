#pragma once

/// Internal. A building's floor in metres.

#include <vector>

#include "Building/Rectangle.hpp"

namespace KorvaniTools {

/// A point on the floor, in metres east (x) and north (y) of the building's middle.
struct GroundPoint {
  double x = 0;
  double y = 0;
};

using GroundLine = std::vector<GroundPoint>;

double groundDistance(GroundPoint a, GroundPoint b);
GroundPoint between(GroundPoint a, GroundPoint b, double share);  ///< 0: a, 1: b

/// Of the segment from `a` to `b` the share at which it is nearest to `p`, from 0 to 1.
double nearestShare(GroundPoint p, GroundPoint a, GroundPoint b);

/// The box around points; empty until one is included.
struct BoundingBox {
  GroundPoint low{1, 1};
  GroundPoint high{0, 0};

  bool empty() const { return low.x > high.x; }
  void include(GroundPoint point);
  void include(const GroundLine& line);
};

BoundingBox boxOf(const GroundLine& line);

/// Turns WGS 84 into metres and back.
///
/// A plane that touches the engine's Earth, a sphere, at the middle: within 10 km of it lengths
/// are right to one in a thousand, and straight lines stay as straight as a map shows them. A
/// coordinate turned there and back is the same to nine decimals.
class LocalFrame {
 public:
  explicit LocalFrame(Coordinate middle);

  GroundPoint metres(Coordinate coordinate) const;
  GroundLine metres(const std::vector<Coordinate>& coordinates) const;
  Coordinate coordinate(GroundPoint point) const;
  std::vector<Coordinate> coordinates(const GroundLine& line) const;

 private:
  Coordinate middle_;
  double metresNorth_;  ///< per degree
  double metresEast_;   ///< per degree
};

}  // namespace KorvaniTools
