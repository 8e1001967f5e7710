#include "Import/Osm/OsmPlatforms.hpp"

#include <algorithm>
#include <cmath>
#include <map>

#include "Import/Osm/LevelText.hpp"
#include "Import/Osm/OsmNames.hpp"
#include "Import/Osm/OsmRoles.hpp"

namespace KorvaniTools {
namespace {

using PlatformCorners = std::vector<PlanVertex>;

constexpr double kAtCorner = 1;    // metres from halfway to a corner that does as well
constexpr double kOnPlatform = 1;  // metres from the end of stairs to the line of a platform
constexpr double kRadians = 0.0174532925199432958;  // in a degree

double groundBetween(Coordinate a, Coordinate b) {
  return KorvaniPlatform::greatCircleDistance(a, b);
}

Coordinate betweenEnds(Coordinate a, Coordinate b, double share) {
  Coordinate point;
  point.latitude = a.latitude + share * (b.latitude - a.latitude);
  point.longitude = a.longitude + share * (b.longitude - a.longitude);
  return point;
}

/// Where the piece from `a` to `b` is nearest to `point`, 0 to 1.
double shareNearest(Coordinate a, Coordinate b, Coordinate point) {
  const double narrow = std::cos(a.latitude * kRadians);
  const double east = (b.longitude - a.longitude) * narrow;
  const double north = b.latitude - a.latitude;
  const double along =
      (point.longitude - a.longitude) * narrow * east + (point.latitude - a.latitude) * north;
  const double square = east * east + north * north;
  return square > 0 ? std::clamp(along / square, 0.0, 1.0) : 0;
}

/// The corner before which one at `point` belongs; absent when the line is too far away.
std::optional<std::size_t> cornerAfter(const PlatformCorners& corners, Coordinate point) {
  std::optional<std::size_t> best;
  double reach = kOnPlatform;
  for (std::size_t i = 1; i < corners.size(); ++i) {
    const Coordinate a = corners[i - 1].coordinate;
    const Coordinate b = corners[i].coordinate;
    const double away = groundBetween(betweenEnds(a, b, shareNearest(a, b, point)), point);
    if (away > reach || (best && away >= reach)) continue;
    best = i;
    reach = away;
  }
  return best;
}

void insertCorner(PlatformCorners& corners, std::size_t before, const PlanVertex& corner) {
  corners.insert(corners.begin() + static_cast<std::ptrdiff_t>(before), corner);
}

/// The coordinate of the corner halfway along the line, which is added where there is none.
Coordinate middleOfLine(PlatformCorners& corners) {
  double left = 0;
  for (std::size_t i = 1; i < corners.size(); ++i) {
    left += groundBetween(corners[i - 1].coordinate, corners[i].coordinate) / 2;
  }
  for (std::size_t i = 1; i < corners.size(); ++i) {
    const Coordinate from = corners[i - 1].coordinate;
    const Coordinate to = corners[i].coordinate;
    const double length = groundBetween(from, to);
    if (left <= kAtCorner) return from;
    if (left < length - kAtCorner) {
      const Coordinate middle = betweenEnds(from, to, left / length);
      insertCorner(corners, i, {0, middle});
      return middle;
    }
    left = std::max(left - length, 0.0);
  }
  return corners.back().coordinate;
}

class PlatformJoiner {
 public:
  explicit PlatformJoiner(FloorPlan& plan) : plan_(plan) {
    for (const PlanLine& line : plan.lines) {
      for (const PlanVertex& corner : line.vertices) ++uses_[corner.node];
    }
  }

  void joinTo(std::size_t platform) {
    PlanLine& drawn = plan_.lines[platform];
    for (std::size_t i = 0; i < plan_.lines.size(); ++i) {
      const PlanLine& line = plan_.lines[i];
      if (i == platform || !shareLevel(line.levels, drawn.levels)) continue;
      const PlanVertex& first = line.vertices.front();
      const PlanVertex& last = line.vertices.back();
      const auto atFirst = cornerAfter(drawn.vertices, first.coordinate);
      const auto atLast = cornerAfter(drawn.vertices, last.coordinate);
      if (atFirst.has_value() == atLast.has_value()) continue;
      const PlanVertex& end = atFirst ? first : last;
      if (isLoose(end)) insertCorner(drawn.vertices, atFirst ? *atFirst : *atLast, end);
    }
  }

 private:
  bool isLoose(const PlanVertex& end) const { return end.node != 0 && uses_.at(end.node) == 1; }

  FloorPlan& plan_;
  std::map<std::int64_t, std::size_t> uses_;  ///< of nodes, by lines
};

}  // namespace

std::optional<PlatformLine> platformOf(const OsmWay& way, const FloorPlan& plan, std::size_t line) {
  const PlanLine& drawn = plan.lines[line];
  if (!isPlatform(way.tags) || drawn.kind != ConnectionKind::path) return std::nullopt;
  PlatformLine platform{line, std::nullopt};
  if (const auto name = ownName(way.tags)) {
    platform.place =
        PlanPlace{way.source(), *name, drawn.levels, {}, false, furtherOf(way.source(), way.tags)};
  }
  return platform;
}

void addPlatforms(const std::vector<PlatformLine>& platforms, FloorPlan& plan) {
  PlatformJoiner joiner(plan);
  for (const PlatformLine& platform : platforms) {
    joiner.joinTo(platform.line);
    if (!platform.place) continue;
    plan.places.push_back(*platform.place);
    plan.places.back().coordinate = middleOfLine(plan.lines[platform.line].vertices);
  }
}

}  // namespace KorvaniTools
