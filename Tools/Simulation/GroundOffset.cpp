#include "Simulation/GroundOffset.hpp"

#include <algorithm>
#include <cmath>

namespace KorvaniTools {
namespace {

using KorvaniPlatform::kEarthRadius;
using KorvaniPlatform::radians;

/// How much shorter a parallel is than the equator. At the poles, where east means nothing, it is
/// a number that can be divided by.
double parallelScale(double latitude) { return std::max(std::cos(radians(latitude)), 1e-6); }

double roundedDegrees(double degrees) { return std::round(degrees * 1e9) / 1e9; }

}  // namespace

double GroundOffset::length() const { return std::sqrt(east * east + north * north); }

GroundOffset offsetBetween(Coordinate from, Coordinate to) {
  return {radians(to.longitude - from.longitude) * kEarthRadius * parallelScale(from.latitude),
          radians(to.latitude - from.latitude) * kEarthRadius};
}

Coordinate rounded(Coordinate coordinate) {
  return {roundedDegrees(coordinate.latitude), roundedDegrees(coordinate.longitude)};
}

Coordinate movedBy(Coordinate from, GroundOffset offset) {
  const double latitude = from.latitude + KorvaniPlatform::degrees(offset.north / kEarthRadius);
  const double longitude = from.longitude + KorvaniPlatform::degrees(offset.east / kEarthRadius) /
                                                parallelScale(from.latitude);
  return rounded({std::clamp(latitude, -90.0, 90.0), longitude});
}

double distanceToLine(Coordinate place, Coordinate lineStart, Coordinate lineEnd) {
  const GroundOffset line = offsetBetween(lineStart, lineEnd);
  const GroundOffset way = offsetBetween(lineStart, place);
  const double squared = line.east * line.east + line.north * line.north;
  const double along =
      squared > 0 ? (way.east * line.east + way.north * line.north) / squared : 0.0;
  const double nearest = std::clamp(along, 0.0, 1.0);
  return GroundOffset{way.east - nearest * line.east, way.north - nearest * line.north}.length();
}

}  // namespace KorvaniTools
