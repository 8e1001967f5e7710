#pragma once

#include <memory>
#include <optional>

#include "Navigation/Localisation/Intersection.hpp"
#include "Navigation/Names.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

/// Degrees: a node whose bearing from the end of a path segment deviates less than this from
/// the segment's own bearing lies straight on.
inline constexpr double kKRVHeadingDeviationTresholdForStraightLines = 5.0;

/// The place of a position that was put on an edge, between two nodes of the graph.
///
/// Besides the new point on the edge it knows the two nodes that enclose it, with their
/// distances, so that a search can start from both. The `found...` fields are for
/// whoever keeps a position on the straight run of edges it was on before: the ends of that
/// run, and the nearest place found on it. They are written into the object that is held on
/// to, so whoever shares the object sees them. The engine itself leaves them empty
/// as long as it holds on to nothing, see Snapping/MagneticPathSnapper.hpp.
///
/// Thread safety: all but the `found...` fields never change. Those are not guarded: one thread
/// at a time may use them.
class KORVANI_API EdgeIntersection : public Intersection {
 public:
  /// `delta` (degrees) and `distance` (metres) lead from the position to `node`, the point on
  /// the edge from `enclosingNodeOne` to `enclosingNodeTwo`. The distances of the two nodes to
  /// `node` are measured here, great-circle metres between their coordinates. No point may be
  /// null (fatal error). The `found...` fields start absent.
  EdgeIntersection(double delta, double distance, std::shared_ptr<KRVNavPoint> node,
                   std::shared_ptr<KRVNavPoint> enclosingNodeOne,
                   std::shared_ptr<KRVNavPoint> enclosingNodeTwo);
  ~EdgeIntersection() override;

  IntersectionKind kind() const override { return IntersectionKind::edge; }

  /// First node of the edge.
  const std::shared_ptr<KRVNavPoint>& enclosingNodeOne() const { return enclosingNodeOne_; }

  /// Second node of the edge.
  const std::shared_ptr<KRVNavPoint>& enclosingNodeTwo() const { return enclosingNodeTwo_; }

  /// Metres from `enclosingNodeOne` to `node`.
  double distanceEnclosingNodeOne() const { return distanceEnclosingNodeOne_; }

  /// Metres from `enclosingNodeTwo` to `node`.
  double distanceEnclosingNodeTwo() const { return distanceEnclosingNodeTwo_; }

  /// First end of the straight run of edges that holds the point; null until somebody sets it.
  const std::shared_ptr<KRVNavPoint>& foundEnclosingSegmentExtensionNode1() const {
    return foundEnclosingSegmentExtensionNode1_;
  }
  void setFoundEnclosingSegmentExtensionNode1(std::shared_ptr<KRVNavPoint> node);

  /// Second end of that run; null until somebody sets it.
  const std::shared_ptr<KRVNavPoint>& foundEnclosingSegmentExtensionNode2() const {
    return foundEnclosingSegmentExtensionNode2_;
  }
  void setFoundEnclosingSegmentExtensionNode2(std::shared_ptr<KRVNavPoint> node);

  /// Coordinate of the nearest place on that run; absent until somebody sets it.
  const std::optional<CLLocationCoordinate2D>& foundNearestIntersectionCoordinateOnSegment() const {
    return foundNearestIntersectionCoordinateOnSegment_;
  }
  void setFoundNearestIntersectionCoordinateOnSegment(
      std::optional<CLLocationCoordinate2D> coordinate);

  /// The nearest place itself; null until somebody sets it.
  const std::shared_ptr<KRVNavPoint>& foundNearestIntersectionWaypointOnSegment() const {
    return foundNearestIntersectionWaypointOnSegment_;
  }
  void setFoundNearestIntersectionWaypointOnSegment(std::shared_ptr<KRVNavPoint> waypoint);

  /// Walks the graph straight on from `node` towards `thatLiesBefore` (the location) and
  /// returns the last node before the location lies sideways or behind.
  ///
  /// An edge continues the walk when its end M is on the current node's level, no farther from
  /// the location than `withClosestDistance` metres, and seen from `andOriginalEndGraphNode`
  /// deviates from `withOriginalBearing` (degrees) by less than
  /// `kKRVHeadingDeviationTresholdForStraightLines`. The first such edge decides, in the order
  /// of `neighbourEdges`: when the location lies ahead of M (within 30 degrees of the bearing)
  /// the current node is the answer, otherwise the walk goes on from M, with M's distance as
  /// the new limit. Without such an edge the current node is the answer.
  ///
  /// Nodes at equal distance from the location could pass the walk round for ever; it ends on
  /// the node where it stands when the next one would only repeat what was walked already.
  ///
  /// Reads no field of the object. Fatal error when a node is null or an edge has no end.
  std::shared_ptr<KRVNavPoint> enclosingPathSegmentGraphNodeFrom(
      const std::shared_ptr<KRVNavPoint>& node, const CLLocation& thatLiesBefore,
      double withOriginalBearing, const std::shared_ptr<KRVNavPoint>& andOriginalEndGraphNode,
      double withClosestDistance) const;

 private:
  std::shared_ptr<KRVNavPoint> enclosingNodeOne_;
  std::shared_ptr<KRVNavPoint> enclosingNodeTwo_;
  double distanceEnclosingNodeOne_;
  double distanceEnclosingNodeTwo_;
  std::shared_ptr<KRVNavPoint> foundEnclosingSegmentExtensionNode1_;
  std::shared_ptr<KRVNavPoint> foundEnclosingSegmentExtensionNode2_;
  std::optional<CLLocationCoordinate2D> foundNearestIntersectionCoordinateOnSegment_;
  std::shared_ptr<KRVNavPoint> foundNearestIntersectionWaypointOnSegment_;
};

/// The same object as an edge intersection; null when it is null or of another kind.
KORVANI_API std::shared_ptr<EdgeIntersection> asEdge(
    const std::shared_ptr<Intersection>& intersection);

}  // namespace KorvaniNavigation
