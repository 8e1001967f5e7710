#include "Drawing/RoomSpot.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

namespace KorvaniTools {
namespace {

/// Heights at which a room is looked through, as parts of its own; the middle is preferred.
constexpr std::array kHeights{0.5, 0.42, 0.58, 0.33, 0.67, 0.2, 0.8};

/// How much wider a stretch off the middle must be to be taken.
constexpr double kWorthLeavingTheMiddle = 1.15;

/// Where the line at that height enters and leaves the rings, ascending.
std::vector<double> crossings(const std::vector<SceneLine>& rings, double height) {
  std::vector<double> result;
  for (const SceneLine& ring : rings) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const ScenePoint& a = ring[i];
      const ScenePoint& b = ring[(i + 1) % ring.size()];
      if ((a.y <= height) == (b.y <= height)) continue;
      result.push_back(a.x + (b.x - a.x) * ((height - a.y) / (b.y - a.y)));
    }
  }
  std::sort(result.begin(), result.end());
  return result;
}

void widen(RoomSpot& spot, const std::vector<double>& ends, double height) {
  for (std::size_t i = 0; i + 1 < ends.size(); i += 2) {
    const double width = ends[i + 1] - ends[i];
    const double least = spot.width * (spot.at.y == height ? 1 : kWorthLeavingTheMiddle);
    if (!(width > least)) continue;
    spot.at = {(ends[i] + ends[i + 1]) / 2, height};
    spot.width = width;
  }
}

}  // namespace

RoomSpot roomSpotOf(const std::vector<SceneLine>& rings) {
  RoomSpot spot;
  if (rings.empty() || rings.front().empty()) return spot;
  spot.top = std::numeric_limits<double>::infinity();
  spot.bottom = -spot.top;
  for (const ScenePoint& point : rings.front()) {
    spot.top = std::min(spot.top, point.y);
    spot.bottom = std::max(spot.bottom, point.y);
  }
  spot.at = rings.front().front();
  for (const double part : kHeights) {
    const double height = spot.top + (spot.bottom - spot.top) * part;
    widen(spot, crossings(rings, height), height);
  }
  return spot;
}

}  // namespace KorvaniTools
