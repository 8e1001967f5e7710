#include "Navigation/Localisation/PositionMapper.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "Navigation/Graph/GraphSource.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Localisation/EdgeFoot.hpp"
#include "Navigation/Localisation/EdgeIntersection.hpp"
#include "Navigation/Localisation/IntersectionFinder.hpp"
#include "Navigation/Localisation/NodeEdges.hpp"
#include "Navigation/Localisation/RegionFinder.hpp"
#include "Navigation/Localisation/RegionNodes.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Platform/FatalError.hpp"
#include "Platform/MapPoint.hpp"

namespace KorvaniNavigation {

using KorvaniPlatform::greatCircleDistance;

namespace {

/// When the nearest node is farther away than this, in metres, only that one is taken.
constexpr double kFarNodeDistance = 10.0;
constexpr double kAnyDistance = std::numeric_limits<double>::infinity();

/// Less-than that puts what is not a number last, so that sorting stands any input.
bool nearer(double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); }

bool isBetween(double value, double a, double b) {
  return value >= std::min(a, b) && value <= std::max(a, b);
}

/// Whether a position may lie beside one of the edges of a node near it.
bool passesDetourTests(const ClosestNode& candidate, const NodeEdges& edges, std::size_t index,
                       const KRVNavGraph& graph, CLLocationCoordinate2D position) {
  const CLLocationCoordinate2D far = edges.end(index)->coordinate();
  if (leadsElsewhere(position, candidate.node->coordinate(), far)) return false;
  const auto length = edges.lengthIn(graph, index);
  if (!length) return false;
  return !isPastNearEnd(candidate.distance, greatCircleDistance(far, position), *length);
}

}  // namespace

/// A node with its place, which all of its edges share.
struct PositionMapper::PlacedNode {
  explicit PlacedNode(const std::shared_ptr<KRVNavPoint>& point)
      : node(point), place(point->coordinate()) {}

  const std::shared_ptr<KRVNavPoint>& node;
  MapPlace place;
};

PositionMapper::PositionMapper(std::weak_ptr<ConfigDependents> configDependents,
                               bool onOriginalGraph)
    : configDependents_(std::move(configDependents)), onOriginalGraph_(onOriginalGraph) {}

void PositionMapper::setObstacleDetector(std::shared_ptr<ObstacleDetector> detector) {
  obstacleDetector_ = std::move(detector);
}

void PositionMapper::useWallsOf(const std::shared_ptr<KRVNavRegion>& region) {
  if (configDependents_.expired()) KORVANI_FATAL("the configuration of a running task is gone");
  const auto& walls = std::as_const(*region).obstacles();
  // One position tests many edges against the same walls. A mapper may live long, though, and the
  // region get other walls between two positions.
  if (obstacleDetector_ && obstacleDetector_->obstacles().sharesWith(walls)) return;
  obstacleDetector_ = std::make_shared<ObstacleDetector>(walls, configDependents_);
}

std::shared_ptr<KRVNavGraph> PositionMapper::routeGraph() const {
  return onOriginalGraph_ ? nullptr : graphSource().graphForActiveRoute();
}

std::shared_ptr<KRVNavRegion> PositionMapper::regionFor(
    const KRVNavPoint& point, const std::shared_ptr<KRVNavGraph>& routeGraph) const {
  return regionFinderOf(configDependents_)
      ->findRegionFor(point.coordinate(), point.level(), routeGraph);
}

std::shared_ptr<Intersection> PositionMapper::intersect(const KRVNavPoint& point) {
  // One graph for the whole mapping: the route that is followed may change meanwhile.
  const auto onRoute = routeGraph();
  const auto region = regionFor(point, onRoute);
  if (!region) return nullptr;
  useWallsOf(region);
  const auto candidates = findClosestNodes(*region, point);
  if (candidates.empty()) return nullptr;
  return findIntersection(region, point, candidates, onRoute ? onRoute : graphSource().graph());
}

std::vector<ClosestNode> PositionMapper::findClosestNodes(
    const KRVNavRegion& region, const KRVNavPoint& navigationPoint) const {
  if (!obstacleDetector_) return {};
  auto closest =
      RegionNodes::of(region)->visibleFrom(navigationPoint.coordinate(), *obstacleDetector_);
  const auto isNearer = [](const ClosestNode& a, const ClosestNode& b) {
    return nearer(a.distance, b.distance);
  };
  // Mostly they are in this order already, and to sort takes an allocation.
  if (!std::is_sorted(closest.begin(), closest.end(), isNearer)) {
    std::stable_sort(closest.begin(), closest.end(), isNearer);
  }
  return closest;
}

std::vector<std::shared_ptr<KRVNavPoint>> PositionMapper::findClosestNodes(
    const KRVNavRegion& region, const KRVNavPoint& navigationPoint,
    std::size_t maximumCount) const {
  std::vector<std::shared_ptr<KRVNavPoint>> nodes;
  const auto closest = findClosestNodes(region, navigationPoint);
  if (closest.empty()) return nodes;
  const double nearest = closest.front().distance;
  const double limit = nearest * 1.2;
  nodes.push_back(closest.front().node);
  for (auto candidate = closest.begin() + 1; candidate != closest.end(); ++candidate) {
    const bool remove =
        nearest > kFarNodeDistance || nodes.size() >= maximumCount || candidate->distance > limit;
    if (!remove) nodes.push_back(candidate->node);
  }
  return nodes;
}

std::shared_ptr<Intersection> PositionMapper::findIntersection(
    const std::shared_ptr<KRVNavRegion>& region, const KRVNavPoint& navigationPoint,
    const std::vector<ClosestNode>& closestNodes, const std::shared_ptr<KRVNavGraph>& graph) {
  if (!graph) return nullptr;

  const MapPlace place(navigationPoint.coordinate());
  const CLLocationCoordinate2D position = place.coordinate;
  std::shared_ptr<Intersection> best;
  for (const auto& candidate : closestNodes) {
    if (!best) {
      const double delta = degreeDistance(position, candidate.node->coordinate());
      best = std::make_shared<SingleNodeIntersection>(candidate.node, candidate.distance, delta);
    }
    const PlacedNode near(candidate.node);
    const NodeEdges edges(*candidate.node);
    for (std::size_t i = 0; i < edges.count(); ++i) {
      const auto& neighbour = edges.end(i);
      if (neighbour->level() != candidate.node->level()) continue;
      if (!passesDetourTests(candidate, edges, i, *graph, position)) continue;
      const auto projected = projectOntoEdge(region, near, neighbour, place, best->distance());
      if (projected) best = projected;
    }
  }
  return best;
}

/// The foot of a position on the line through two nodes, if it lies between them, nearer than
/// `limit` metres, and not behind a wall of the region. That region's walls are held from the first
/// foot on, be it nearer or not; they are compared last, as that is the dearest.
std::optional<PositionMapper::SightedFoot> PositionMapper::footInSight(
    const std::shared_ptr<KRVNavRegion>& region, const MapPlace& nodeOne, const MapPlace& nodeTwo,
    const MapPlace& position, double limit) {
  const auto foot = footBetween(nodeOne, nodeTwo, position);
  if (!foot) return std::nullopt;
  useWallsOf(region);
  const CLLocationCoordinate2D from = position.coordinate;
  const double distance = greatCircleDistance(foot->coordinate, from);
  if (!(distance < limit)) return std::nullopt;
  if (obstacleDetector_->isAnyBarrierInBetween(foot->coordinate, from)) return std::nullopt;
  return SightedFoot{foot->point, foot->coordinate, distance};
}

std::shared_ptr<EdgeIntersection> PositionMapper::projectOntoEdge(
    const std::shared_ptr<KRVNavRegion>& region, const PlacedNode& nodeOne,
    const std::shared_ptr<KRVNavPoint>& nodeTwo, const MapPlace& position, double limit) {
  const MapPlace placeTwo(nodeTwo->coordinate());
  const auto foot = footInSight(region, nodeOne.place, placeTwo, position, limit);
  if (!foot) return nullptr;
  // Both ends lie on one level, which is the foot's as well.
  const auto point = std::make_shared<KRVNavPoint>(foot->coordinate, nodeOne.node->level());
  return std::make_shared<EdgeIntersection>(degreeDistance(foot->coordinate, position.coordinate),
                                            foot->distance, point, nodeOne.node, nodeTwo);
}

std::optional<MKMapPoint> PositionMapper::findIntersectionPointOnEdge(
    const std::shared_ptr<KRVNavRegion>& region, const KRVNavPoint& nodeOne,
    const KRVNavPoint& nodeTwo, const KRVNavPoint& navigationPoint) {
  const auto foot =
      footInSight(region, MapPlace(nodeOne.coordinate()), MapPlace(nodeTwo.coordinate()),
                  MapPlace(navigationPoint.coordinate()), kAnyDistance);
  if (!foot) return std::nullopt;
  return foot->point;
}

std::shared_ptr<Intersection> PositionMapper::intersect(
    const KRVNavPoint& point, const std::shared_ptr<KRVNavPoint>& graphNode) {
  const auto onRoute = routeGraph();
  const auto region = regionFor(point, onRoute);
  if (!region) return nullptr;
  if (!obstacleDetector_) KORVANI_FATAL("no walls are known to test a graph node against");

  std::shared_ptr<Intersection> best;
  if (!obstacleDetector_->isAnyBarrierInBetween(point.coordinate(), graphNode->coordinate())) {
    best = std::make_shared<SingleNodeIntersection>(
        graphNode, greatCircleDistance(graphNode->coordinate(), point.coordinate()),
        degreeDistance(graphNode->coordinate(), point.coordinate()));
  }
  const MapPlace place(point.coordinate());
  const PlacedNode node(graphNode);
  const NodeEdges edges(*graphNode);
  for (std::size_t i = 0; i < edges.count(); ++i) {
    const auto& neighbour = edges.end(i);
    if (neighbour->level() != graphNode->level()) continue;
    const auto projected =
        projectOntoEdge(region, node, neighbour, place, best ? best->distance() : kAnyDistance);
    if (projected) best = projected;
  }
  return best;
}

std::shared_ptr<EdgeIntersection> PositionMapper::findIntersectionOnSegmentBetween(
    const std::shared_ptr<KRVNavPoint>& start, const std::shared_ptr<KRVNavPoint>& andEnd,
    CLLocationCoordinate2D forCoordinate, bool ignoreWalls) const {
  const MKMapPoint from = MKMapPointForCoordinate(start->coordinate());
  const MKMapPoint to = MKMapPointForCoordinate(andEnd->coordinate());
  const MKMapPoint position = MKMapPointForCoordinate(forCoordinate);
  const MKMapPoint foot =
      IntersectionFinder::findIntersectionPointForPointOnLine(position, from, to);
  const double distance = MKMetersBetweenMapPoints(foot, position);
  if (!isBetween(foot.x, from.x, to.x) || !isBetween(foot.y, from.y, to.y)) return nullptr;
  const CLLocationCoordinate2D coordinate = MKCoordinateForMapPoint(foot);
  const auto point = std::make_shared<KRVNavPoint>(coordinate, start->level());
  if (!ignoreWalls) {
    if (!obstacleDetector_) KORVANI_FATAL("no walls are known to test a segment against");
    if (obstacleDetector_->isAnyBarrierInBetween(coordinate, forCoordinate)) return nullptr;
  }
  return std::make_shared<EdgeIntersection>(0, distance, point, start, andEnd);
}

}  // namespace KorvaniNavigation
