#include "Navigation/Routing/RouteOptimisation.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <optional>
#include <utility>

#include "Common/KorvaniCommonHelpers.hpp"
#include "Navigation/Graph/KRVNavEdge.hpp"
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

/// An edge of the way with its ends, which are asked for once.
struct Leg {
  explicit Leg(std::shared_ptr<KRVNavEdge> whole)
      : edge(std::move(whole)), start(edge->start()), end(edge->end()) {}

  std::shared_ptr<KRVNavEdge> edge;
  std::shared_ptr<KRVNavPoint> start;
  std::shared_ptr<KRVNavPoint> end;
};

/// The line past the corner between two successive edges; absent where it may not be cut.
std::shared_ptr<KRVNavEdge> shortcut(const Leg& leg, const Leg& next,
                                     const ObstacleDetector& detector) {
  const KRVNavPoint& start = *leg.start;
  const KRVNavPoint& end = *next.end;
  if (start.level() != end.level()) return nullptr;
  if (!turns(start.coordinate(), next.start->coordinate(), end.coordinate())) return nullptr;
  const double distance = start.location().distanceFromLocation(end.location());
  if (distance > kMaximumShortcutLength) return nullptr;
  if (detector.isAnyBarrierInBetween(start.coordinate(), end.coordinate())) return nullptr;
  const KRVNavEdge& edge = *leg.edge;
  return std::make_shared<KRVNavEdge>(leg.start, next.end, distance, edge.multiplicator(),
                                      edge.isBarrierFree(), edge.type());
}

}  // namespace

std::vector<std::shared_ptr<KRVNavEdge>> cutCorners(
    const std::vector<std::shared_ptr<KRVNavEdge>>& edges, const ObstacleDetector& detector) {
  if (edges.size() < 2) return edges;
  std::vector<Leg> backwards;
  backwards.reserve(edges.size());
  for (std::size_t i = edges.size(); i-- > 0;) {
    Leg leg(edges[i]);
    if (!backwards.empty()) {
      if (auto cut = shortcut(leg, backwards.back(), detector)) {
        backwards.back() = Leg(std::move(cut));
        continue;
      }
    }
    backwards.push_back(std::move(leg));
  }
  std::vector<std::shared_ptr<KRVNavEdge>> left;
  left.reserve(backwards.size());
  std::transform(backwards.rbegin(), backwards.rend(), std::back_inserter(left),
                 [](Leg& leg) { return std::move(leg.edge); });
  return left;
}

}  // namespace KorvaniNavigation
