#pragma once

// Internal.

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "Navigation/Localisation/ClosestNode.hpp"
#include "Navigation/Localisation/Intersection.hpp"
#include "Navigation/Names.hpp"

namespace KorvaniNavigation {

class ConfigDependents;
class EdgeIntersection;
class KRVNavGraph;
class KRVNavPoint;
class KRVNavRegion;
class ObstacleDetector;
class RegionFinder;
struct MapPlace;

/// The region finder of a configuration. Fatal error when the configuration is gone. Defined
/// with the configuration bundles, which lie above localisation.
std::shared_ptr<RegionFinder> regionFinderOf(const std::weak_ptr<ConfigDependents>& configuration);

/// Maps positions onto the graph: the work of an `IntersectionTask`.
///
/// A position goes to the nearest node it can see, or to the foot of the perpendicular on an
/// edge of such a node where that is nearer. Nodes and feet behind a wall do not count.
///
/// Two measures of distance are used: metres (great circle), and the plain distance of latitude
/// and longitude in degrees, which is cheap and decides which nodes are looked at.
///
/// The mapper holds the walls it tests against. `intersect(point)` takes those of the
/// position's region; the other operations use what is held, so that their callers decide.
///
/// One thread at a time.
class PositionMapper {
 public:
  /// @param onOriginalGraph true: map onto the provided graph; false: onto the route that is
  ///     being followed, where there is one
  PositionMapper(std::weak_ptr<ConfigDependents> configDependents, bool onOriginalGraph);

  bool onOriginalGraph() const { return onOriginalGraph_; }

  /// The walls that are tested against; absent until `intersect(point)` or a projection set it.
  const std::shared_ptr<ObstacleDetector>& obstacleDetector() const { return obstacleDetector_; }
  void setObstacleDetector(std::shared_ptr<ObstacleDetector> detector);

  /// Tests against the walls of that region from now on.
  void useWallsOf(const std::shared_ptr<KRVNavRegion>& region);

  /// The place of the graph nearest to a position; absent without a region, a graph or a node
  /// in sight.
  std::shared_ptr<Intersection> intersect(const KRVNavPoint& point);

  /// The same, restricted to one node and its edges. Tests the node against the walls held;
  /// fatal error when there are none.
  std::shared_ptr<Intersection> intersect(const KRVNavPoint& point,
                                          const std::shared_ptr<KRVNavPoint>& graphNode);

  /// The foot of a coordinate on one segment; absent when the foot lies outside the box of the
  /// segment's ends on the map plane, or (unless walls are ignored) behind a wall.
  std::shared_ptr<EdgeIntersection> findIntersectionOnSegmentBetween(
      const std::shared_ptr<KRVNavPoint>& start, const std::shared_ptr<KRVNavPoint>& andEnd,
      CLLocationCoordinate2D forCoordinate, bool ignoreWalls) const;

  /// The nodes of a region in sight of a position, nearest first in metres: those at most 2.5
  /// times as far as the nearest of them, in degrees. None while no walls are held.
  std::vector<ClosestNode> findClosestNodes(const KRVNavRegion& region,
                                            const KRVNavPoint& navigationPoint) const;

  /// The same list cut down: only the nearest node when that is more than 10 m away; otherwise
  /// at most `maximumCount` nodes, none farther than 1.2 times the nearest.
  std::vector<std::shared_ptr<KRVNavPoint>> findClosestNodes(const KRVNavRegion& region,
                                                             const KRVNavPoint& navigationPoint,
                                                             std::size_t maximumCount) const;

  /// The best of the first candidate node and the feet on the candidates' edges, as far as
  /// `graph` has these edges; absent without a graph.
  std::shared_ptr<Intersection> findIntersection(const std::shared_ptr<KRVNavRegion>& region,
                                                 const KRVNavPoint& navigationPoint,
                                                 const std::vector<ClosestNode>& closestNodes,
                                                 const std::shared_ptr<KRVNavGraph>& graph);

  /// The foot of a position on the line through two nodes; absent when it does not lie between
  /// them or is behind a wall of the region.
  std::optional<MKMapPoint> findIntersectionPointOnEdge(const std::shared_ptr<KRVNavRegion>& region,
                                                        const KRVNavPoint& nodeOne,
                                                        const KRVNavPoint& nodeTwo,
                                                        const KRVNavPoint& navigationPoint);

 private:
  struct PlacedNode;
  struct SightedFoot {
    MKMapPoint point;
    CLLocationCoordinate2D coordinate;
    double distance = 0;  ///< metres from the position
  };

  std::shared_ptr<KRVNavGraph> routeGraph() const;
  std::shared_ptr<KRVNavRegion> regionFor(const KRVNavPoint& point,
                                          const std::shared_ptr<KRVNavGraph>& routeGraph) const;
  std::optional<SightedFoot> footInSight(const std::shared_ptr<KRVNavRegion>& region,
                                         const MapPlace& nodeOne, const MapPlace& nodeTwo,
                                         const MapPlace& position, double limit);
  std::shared_ptr<EdgeIntersection> projectOntoEdge(const std::shared_ptr<KRVNavRegion>& region,
                                                    const PlacedNode& nodeOne,
                                                    const std::shared_ptr<KRVNavPoint>& nodeTwo,
                                                    const MapPlace& position, double limit);

  std::weak_ptr<ConfigDependents> configDependents_;
  bool onOriginalGraph_;
  std::shared_ptr<ObstacleDetector> obstacleDetector_;
};

}  // namespace KorvaniNavigation
