#include "Navigation/Snapping/MagneticPathSnapper.hpp"

#include <cmath>
#include <limits>
#include <utility>

#include "Navigation/API/ConfigDependents.hpp"
#include "Navigation/API/Tasks/IntersectionTask.hpp"
#include "Navigation/Directions/DirectionsHelpers.hpp"
#include "Navigation/Graph/GraphSource.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Localisation/EdgeIntersection.hpp"
#include "Navigation/Localisation/IntersectionFinder.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Navigation/Snapping/ActiveRoute.hpp"
#include "Navigation/Snapping/SnappedPlace.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

namespace {

std::shared_ptr<ConfigDependents> bundleOf(const std::weak_ptr<ConfigDependents>& weak) {
  auto bundle = weak.lock();
  if (!bundle) KORVANI_FATAL("the configuration of a snapping task is gone");
  return bundle;
}

/// The two ends of the straight run of edges on which a place lies.
struct Segment {
  std::shared_ptr<KRVNavPoint> node1;
  std::shared_ptr<KRVNavPoint> node2;
};

Segment segmentOf(const EdgeIntersection& place) {
  Segment segment{place.foundEnclosingSegmentExtensionNode1(),
                  place.foundEnclosingSegmentExtensionNode2()};
  if (!segment.node1 || !segment.node2) {
    KORVANI_FATAL("a place on an edge does not know the ends of its segment");
  }
  return segment;
}

Segment segmentOf(const std::shared_ptr<Intersection>& place) {
  const auto edge = asEdge(place);
  if (!edge) KORVANI_FATAL("two places are compared that do not both lie on an edge");
  return segmentOf(*edge);
}

bool runAlongEachOther(const Segment& a, const Segment& b) {
  return IntersectionFinder::checkIfLineBetweenCoordinate(
      a.node1->coordinate(), a.node2->coordinate(), b.node1->coordinate(), b.node2->coordinate());
}

/// The last node before `place` on the straight way from `node` to it.
std::shared_ptr<KRVNavPoint> nodeBefore(const EdgeIntersection& place,
                                        const std::shared_ptr<KRVNavPoint>& node) {
  const KRVNavPoint& target = *place.node();
  const double bearing = DirectionsHelpers::bearingToLocation(target.location(), node->location());
  return place.enclosingPathSegmentGraphNodeFrom(node, target.location(), bearing, node,
                                                 node->distanceFrom(target));
}

}  // namespace

MagneticPathSnapper::MagneticPathSnapper(std::weak_ptr<ConfigDependents> configDependents)
    : configDependents_(std::move(configDependents)) {}

std::shared_ptr<Intersection> MagneticPathSnapper::perform(
    const std::shared_ptr<KRVNavPoint>& point) {
  const auto place = snap(point);
  return place ? place->intersection() : nullptr;
}

std::shared_ptr<const SnappedPlace> MagneticPathSnapper::snap(
    const std::shared_ptr<KRVNavPoint>& point) {
  const bool onOriginalGraph = isOnOriginalGraph();
  // A place that is held is compared with the nearest one as intersections.
  if (!onOriginalGraph && !previousIntersection_ && graphSource().graph()) {
    const auto track = activeRoute().track();
    if (track && track->canPlace(*point)) {
      auto place = track->place(*point, configDependents_);
      return place ? std::make_shared<const SnappedPlace>(*std::move(place), track) : nullptr;
    }
  }
  auto place = nearestPlace(point, onOriginalGraph);
  return place ? std::make_shared<const SnappedPlace>(std::move(place)) : nullptr;
}

std::shared_ptr<Intersection> MagneticPathSnapper::nearestPlace(
    const std::shared_ptr<KRVNavPoint>& point, bool onOriginalGraph) {
  intersectionTask_ = std::make_shared<IntersectionTask>(
      configDependents_, point, [](const auto&) {}, onOriginalGraph);
  intersectionTask_->runUnlessGraphIsMissing();
  std::shared_ptr<Intersection> nearest = intersectionTask_->intersection();
  if (!nearest) return nullptr;
  if (!bundleOf(configDependents_)->config().activateMagneticSnapping()) return nearest;
  if (!previousIntersection_) return nearest;
  return magneticSnapping(*point, nearest);
}

bool MagneticPathSnapper::isOnOriginalGraph() const {
  const auto followed = activeRoute().configName();
  return !followed || *followed != bundleOf(configDependents_)->configName();
}

std::shared_ptr<Intersection> MagneticPathSnapper::magneticSnapping(
    const KRVNavPoint& point, const std::shared_ptr<Intersection>& currentIntersection) {
  const std::optional<double> magneticDistance = magneticDistanceOf(point);
  const double currentDistance = point.distanceFrom(*currentIntersection->node());
  const auto bundle = bundleOf(configDependents_);
  const std::int64_t fallbackThreshold = bundle->config().magneticPathSnappingFallbackThreshold();
  const bool isCounted = magneticDistance && currentDistance != std::numeric_limits<double>::max();
  if (fallbackThreshold >= 1 && isCounted) countFallback(currentIntersection);
  const double distanceThreshold = bundle->config().magneticPathSnappingDistanceThreshold();
  const bool stays = fallbackCounter_ < fallbackThreshold && magneticDistance &&
                     std::abs(currentDistance - *magneticDistance) <= distanceThreshold;
  return stays ? previousIntersection_ : fallBackTo(currentIntersection);
}

/// How far the position is from the place that is held; absent when it cannot be held any more.
std::optional<double> MagneticPathSnapper::magneticDistanceOf(const KRVNavPoint& point) {
  const KRVNavPoint& node = *previousIntersection_->node();
  if (node.level() != point.level()) return std::nullopt;
  if (const auto edge = asEdge(previousIntersection_)) return followHeldSegment(*edge, point);
  if (!isHeldNodeInSight(point)) return std::nullopt;
  return point.distanceFrom(node);
}

bool MagneticPathSnapper::isHeldNodeInSight(const KRVNavPoint& point) const {
  const auto walls = bundleOf(configDependents_)->intersectionFinder()->obstacleDetector();
  if (!walls) KORVANI_FATAL("no walls are known to test a held node against");
  return !walls->isAnyBarrierInBetween(previousIntersection_->node()->coordinate(),
                                       point.coordinate());
}

/// Moves the held place along its segment to where the position is now, and the ends of the
/// segment with it. Gives the position's distance from there.
std::optional<double> MagneticPathSnapper::followHeldSegment(EdgeIntersection& held,
                                                             const KRVNavPoint& point) {
  const Segment segment = segmentOf(held);
  const auto place = intersectionTask_->findIntersectionOnSegmentBetween(
      segment.node1, segment.node2, point.coordinate(), false);
  if (!place) return std::nullopt;
  const Segment shortened{nodeBefore(*place, segment.node1), nodeBefore(*place, segment.node2)};
  held.setFoundNearestIntersectionCoordinateOnSegment(place->node()->coordinate());
  held.setFoundNearestIntersectionWaypointOnSegment(place->node());
  held.setFoundEnclosingSegmentExtensionNode1(shortened.node1);
  held.setFoundEnclosingSegmentExtensionNode2(shortened.node2);
  return place->distance();
}

void MagneticPathSnapper::countFallback(const std::shared_ptr<Intersection>& currentIntersection) {
  if (currentIntersection->kind() == IntersectionKind::node) {
    fallbackCounter_ = 0;
    return;
  }
  const Segment held = segmentOf(previousIntersection_);
  const Segment current = segmentOf(currentIntersection);
  if (!runAlongEachOther(held, current)) {
    fallbackCounter_ = 0;
    return;
  }
  auto& last = lastActuallyCalculatedNearestIntersectionIfDifferentFromMagneticallySnapped_;
  fallbackCounter_ = runAlongEachOther(segmentOf(last), current) ? fallbackCounter_ + 1 : 1;
  last = currentIntersection;
}

std::shared_ptr<Intersection> MagneticPathSnapper::fallBackTo(
    const std::shared_ptr<Intersection>& currentIntersection) {
  previousIntersection_ = currentIntersection;
  lastActuallyCalculatedNearestIntersectionIfDifferentFromMagneticallySnapped_ =
      currentIntersection;
  fallbackCounter_ = 0;
  return currentIntersection;
}

}  // namespace KorvaniNavigation
