#include "FloorPlan/LocalFrame.hpp"

#include <algorithm>
#include <cmath>

namespace KorvaniTools {
namespace {

constexpr double kRadiansPerDegree = 0.017453292519943295;

constexpr double kDecimals = 1e9;  // more than any source has, fewer than a double's noise

double rounded(double degrees) { return std::round(degrees * kDecimals) / kDecimals; }

}  // namespace

double groundDistance(GroundPoint a, GroundPoint b) { return std::hypot(b.x - a.x, b.y - a.y); }

GroundPoint between(GroundPoint a, GroundPoint b, double share) {
  return {a.x + share * (b.x - a.x), a.y + share * (b.y - a.y)};
}

double nearestShare(GroundPoint p, GroundPoint a, GroundPoint b) {
  const double x = b.x - a.x;
  const double y = b.y - a.y;
  const double square = x * x + y * y;
  if (!(square > 0)) return 0;
  return std::clamp(((p.x - a.x) * x + (p.y - a.y) * y) / square, 0.0, 1.0);
}

void BoundingBox::include(GroundPoint point) {
  const bool first = empty();
  low = first ? point : GroundPoint{std::min(low.x, point.x), std::min(low.y, point.y)};
  high = first ? point : GroundPoint{std::max(high.x, point.x), std::max(high.y, point.y)};
}

void BoundingBox::include(const GroundLine& line) {
  for (const GroundPoint& point : line) include(point);
}

BoundingBox boxOf(const GroundLine& line) {
  BoundingBox box;
  box.include(line);
  return box;
}

// At the poles all longitudes are one; a millimetre per degree keeps the way back defined.
LocalFrame::LocalFrame(Coordinate middle)
    : middle_(middle),
      metresNorth_(KorvaniPlatform::kEarthRadius * kRadiansPerDegree),
      metresEast_(std::max(metresNorth_ * std::cos(middle.latitude * kRadiansPerDegree), 1e-3)) {}

GroundPoint LocalFrame::metres(Coordinate coordinate) const {
  return {(coordinate.longitude - middle_.longitude) * metresEast_,
          (coordinate.latitude - middle_.latitude) * metresNorth_};
}

GroundLine LocalFrame::metres(const std::vector<Coordinate>& coordinates) const {
  GroundLine line;
  line.reserve(coordinates.size());
  for (const Coordinate& coordinate : coordinates) line.push_back(metres(coordinate));
  return line;
}

Coordinate LocalFrame::coordinate(GroundPoint point) const {
  return {std::clamp(rounded(middle_.latitude + point.y / metresNorth_), -90.0, 90.0),
          std::clamp(rounded(middle_.longitude + point.x / metresEast_), -180.0, 180.0)};
}

std::vector<Coordinate> LocalFrame::coordinates(const GroundLine& line) const {
  std::vector<Coordinate> coordinates;
  coordinates.reserve(line.size());
  for (const GroundPoint& point : line) coordinates.push_back(coordinate(point));
  return coordinates;
}

}  // namespace KorvaniTools
