#pragma once

#include <memory>

#include "Navigation/Names.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class KRVNavPoint;

/// What kind of place on the graph an intersection is.
enum class IntersectionKind {
  plain,  ///< an `Intersection` and nothing more
  node,   ///< a `SingleNodeIntersection`: an existing graph node
  edge,   ///< an `EdgeIntersection`: a new point on an edge between two nodes
};

/// The place on the graph onto which a position was mapped.
///
/// Intersections are shared by reference. Ask `kind()` which of the derived types one is, and
/// `asEdge` (Localisation/EdgeIntersection.hpp) for the edge form.
///
/// Thread safety: the fields of this class never change; see `EdgeIntersection` for its own.
class KORVANI_API Intersection {
 public:
  /// `node` is an existing graph node or a new point on an edge, `distance` the great-circle
  /// metres from the position to it, and `delta` the same as a plain distance in degrees.
  Intersection(std::shared_ptr<KRVNavPoint> node, double distance, double delta);
  virtual ~Intersection();

  Intersection(const Intersection&) = delete;
  Intersection& operator=(const Intersection&) = delete;

  /// Which of the derived types this is.
  virtual IntersectionKind kind() const { return IntersectionKind::plain; }

  /// The place on the graph.
  const std::shared_ptr<KRVNavPoint>& node() const { return node_; }

  /// Metres from the position to `node`, along the great circle.
  double distance() const { return distance_; }

  /// sqrt(dLat^2 + dLon^2) between the position and `node`, in degrees: cheap to compare, no
  /// length. 0 for intersections made on one given segment.
  double delta() const { return delta_; }

 private:
  std::shared_ptr<KRVNavPoint> node_;
  double distance_;
  double delta_;
};

/// An intersection at an existing node of the graph.
class KORVANI_API SingleNodeIntersection : public Intersection {
 public:
  using Intersection::Intersection;
  ~SingleNodeIntersection() override;

  IntersectionKind kind() const override { return IntersectionKind::node; }
};

}  // namespace KorvaniNavigation
