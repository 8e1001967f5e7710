#include "Navigation/Localisation/EdgeIntersection.hpp"

#include <unordered_map>
#include <utility>

#include "Navigation/Directions/AngleDifference.hpp"
#include "Navigation/Directions/DirectionsHelpers.hpp"
#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

namespace {

// Within this of the bearing, the location still lies ahead.
constexpr double kLiesAheadDegrees = 30.0;

double metresBetween(const std::shared_ptr<KRVNavPoint>& from,
                     const std::shared_ptr<KRVNavPoint>& to) {
  if (!from || !to) KORVANI_FATAL("an edge intersection needs three points");
  return KorvaniPlatform::greatCircleDistance(from->coordinate(), to->coordinate());
}

/// The walk along one straight run of edges: what stays the same from node to node.
class StraightWalk {
 public:
  StraightWalk(const CLLocation& target, double bearing, const CLLocation& endLocation)
      : target_(target), bearing_(bearing), endLocation_(endLocation) {}

  struct Move {
    std::shared_ptr<KRVNavPoint> node;
    double distance;  // metres from the node to the target
    bool targetLiesAhead;
  };

  /// The first edge that continues the run decides; an empty node when none does.
  Move moveFrom(const KRVNavPoint& node, double closestDistance) const {
    for (const auto& edge : node.neighbourEdges()) {
      const std::shared_ptr<KRVNavPoint> next = edge->end();
      if (!next) KORVANI_FATAL("an edge without an end node");
      if (next->level() != node.level()) continue;
      const CLLocation place(next->coordinate());
      const double distance = place.distanceFromLocation(target_);
      if (distance > closestDistance) continue;
      if (!deviatesLessThan(kKRVHeadingDeviationTresholdForStraightLines, place, endLocation_)) {
        continue;
      }
      return {next, distance, deviatesLessThan(kLiesAheadDegrees, target_, place)};
    }
    return {nullptr, 0, false};
  }

 private:
  bool deviatesLessThan(double degrees, const CLLocation& to, const CLLocation& from) const {
    return absoluteAngleDifference(bearing_, DirectionsHelpers::bearingToLocation(to, from)) <
           degrees;
  }

  CLLocation target_;
  double bearing_;
  CLLocation endLocation_;
};

/// Recognises a walk that has begun to repeat itself.
///
/// What a node decides depends on the limit with which it is entered, and limits only shrink.
/// So coming back repeats the past unless the limit has meanwhile fallen below the distance
/// at which the node was left, which can happen once, for the node where the walk began.
class WalkedNodes {
 public:
  void leave(const KRVNavPoint& node, double towardsDistance) { left_[&node] = towardsDistance; }

  bool wouldRepeat(const KRVNavPoint& node, double limit) const {
    const auto found = left_.find(&node);
    return found != left_.end() && !(limit < found->second);
  }

 private:
  std::unordered_map<const KRVNavPoint*, double> left_;
};

}  // namespace

EdgeIntersection::EdgeIntersection(double delta, double distance, std::shared_ptr<KRVNavPoint> node,
                                   std::shared_ptr<KRVNavPoint> enclosingNodeOne,
                                   std::shared_ptr<KRVNavPoint> enclosingNodeTwo)
    : Intersection(std::move(node), distance, delta),
      enclosingNodeOne_(std::move(enclosingNodeOne)),
      enclosingNodeTwo_(std::move(enclosingNodeTwo)),
      distanceEnclosingNodeOne_(metresBetween(enclosingNodeOne_, this->node())),
      distanceEnclosingNodeTwo_(metresBetween(enclosingNodeTwo_, this->node())) {}

EdgeIntersection::~EdgeIntersection() = default;

void EdgeIntersection::setFoundEnclosingSegmentExtensionNode1(std::shared_ptr<KRVNavPoint> node) {
  foundEnclosingSegmentExtensionNode1_ = std::move(node);
}

void EdgeIntersection::setFoundEnclosingSegmentExtensionNode2(std::shared_ptr<KRVNavPoint> node) {
  foundEnclosingSegmentExtensionNode2_ = std::move(node);
}

void EdgeIntersection::setFoundNearestIntersectionCoordinateOnSegment(
    std::optional<CLLocationCoordinate2D> coordinate) {
  foundNearestIntersectionCoordinateOnSegment_ = coordinate;
}

void EdgeIntersection::setFoundNearestIntersectionWaypointOnSegment(
    std::shared_ptr<KRVNavPoint> waypoint) {
  foundNearestIntersectionWaypointOnSegment_ = std::move(waypoint);
}

std::shared_ptr<KRVNavPoint> EdgeIntersection::enclosingPathSegmentGraphNodeFrom(
    const std::shared_ptr<KRVNavPoint>& node, const CLLocation& thatLiesBefore,
    double withOriginalBearing, const std::shared_ptr<KRVNavPoint>& andOriginalEndGraphNode,
    double withClosestDistance) const {
  if (!node || !andOriginalEndGraphNode) KORVANI_FATAL("a walk needs a start and an end node");
  const StraightWalk walk(thatLiesBefore, withOriginalBearing,
                          CLLocation(andOriginalEndGraphNode->coordinate()));
  WalkedNodes walked;
  std::shared_ptr<KRVNavPoint> current = node;
  double limit = withClosestDistance;
  for (;;) {
    const StraightWalk::Move move = walk.moveFrom(*current, limit);
    if (!move.node || move.targetLiesAhead) return current;
    walked.leave(*current, move.distance);
    if (walked.wouldRepeat(*move.node, move.distance)) return current;
    current = move.node;
    limit = move.distance;
  }
}

std::shared_ptr<EdgeIntersection> asEdge(const std::shared_ptr<Intersection>& intersection) {
  if (!intersection || intersection->kind() != IntersectionKind::edge) return nullptr;
  return std::static_pointer_cast<EdgeIntersection>(intersection);
}

}  // namespace KorvaniNavigation
