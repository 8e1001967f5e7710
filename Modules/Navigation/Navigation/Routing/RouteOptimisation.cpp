#include "Navigation/Routing/RouteOptimisation.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

#include "Common/KorvaniCommonHelpers.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"

namespace KorvaniNavigation {

namespace {

constexpr double kMaximumShortcutLength = 20.0;  // metres
constexpr double kMinimumTurn = 20.0;            // degrees

/// Where a line leads on a flat map, in degrees of latitude.
struct Course {
  double east;
  double north;
};

Course courseBetween(CLLocationCoordinate2D from, CLLocationCoordinate2D to, double shrinking) {
  return {(to.longitude - from.longitude) * shrinking, to.latitude - from.latitude};
}

/// Whether a course is long enough for its direction to have digits, and short enough for a flat
/// map: from a centimetre to a kilometre.
bool isPlain(Course course) {
  constexpr double kShortestCourse = 1e-7;
  constexpr double kLongestCourse = 1e-2;
  const double longer = std::max(std::abs(course.east), std::abs(course.north));
  return longer > kShortestCourse && longer < kLongestCourse;
}

/// Whether a corner turns enough to be cut, at a tenth of what the bearings cost; absent when that
/// has to be looked at closely. On the flat map around the corner such courses, short of 80 degrees
/// of latitude, are wrong by less than a fifth of a degree, and a whole one is left.
std::optional<bool> surelyTurns(CLLocationCoordinate2D start, CLLocationCoordinate2D corner,
                                CLLocationCoordinate2D end) {
  constexpr double kTangentOf19Degrees = 0.34432761328966527;
  constexpr double kTangentOf21Degrees = 0.38386403503541577;
  constexpr double kCosineOf80Degrees = 0.17364817766693041;
  const double shrinking = std::cos(KorvaniPlatform::radians(corner.latitude));
  const Course in = courseBetween(start, corner, shrinking);
  const Course out = courseBetween(corner, end, shrinking);
  if (shrinking < kCosineOf80Degrees || !isPlain(in) || !isPlain(out)) return std::nullopt;
  const double cross = std::abs(in.east * out.north - in.north * out.east);
  const double dot = in.east * out.east + in.north * out.north;
  if (cross < kTangentOf19Degrees * dot) return false;
  if (cross > kTangentOf21Degrees * dot) return true;
  return std::nullopt;
}

bool turns(CLLocationCoordinate2D start, CLLocationCoordinate2D corner,
           CLLocationCoordinate2D end) {
  if (const auto surely = surelyTurns(start, corner, end)) return *surely;
  const double turn =
      KorvaniCommon::KorvaniCommonHelpers::clockwiseAngleBetweenLines(start, corner, corner, end);
  return !(std::abs(turn) < kMinimumTurn);
}

/// How long the line past the corner between two successive edges is, in metres; absent where it
/// may not be cut.
std::optional<double> shortcutLength(const RouteEdge& edge, const RouteEdge& next,
                                     const ObstacleDetector& detector) {
  const KRVNavPoint& start = *edge.start;
  const KRVNavPoint& end = *next.end;
  if (start.level() != end.level()) return std::nullopt;
  if (!turns(start.coordinate(), next.start->coordinate(), end.coordinate())) return std::nullopt;
  const double distance = start.location().distanceFromLocation(end.location());
  if (distance > kMaximumShortcutLength) return std::nullopt;
  if (detector.isAnyBarrierInBetween(start.coordinate(), end.coordinate())) return std::nullopt;
  return distance;
}

}  // namespace

// What is done already stands at the end of the list; `last` is the first edge of it.
Edges cutCorners(Edges edges, const ObstacleDetector& detector) {
  if (edges.size() < 2) return edges;
  std::size_t last = edges.size() - 1;
  for (std::size_t i = last; i-- > 0;) {
    RouteEdge& edge = edges[i];
    if (const auto length = shortcutLength(edge, edges[last], detector)) {
      edge.end = std::move(edges[last].end);
      edge.distance = *length;
    } else {
      --last;
    }
    if (last != i) edges[last] = std::move(edge);
  }
  edges.erase(edges.begin(), edges.begin() + static_cast<std::ptrdiff_t>(last));
  return edges;
}

}  // namespace KorvaniNavigation
