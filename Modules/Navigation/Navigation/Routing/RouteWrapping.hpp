#pragma once

// Internal. From the points of a path to the edges that a person walks: the graph's edges between
// the points, the way from the person onto the graph, and the way from the graph to the
// destination.

#include <memory>
#include <vector>

#include "Navigation/Localisation/Intersection.hpp"
#include "Navigation/Routing/RouteEdge.hpp"

namespace KorvaniNavigation {

class KRVNavGraph;
class KRVNavPoint;
class PositionMapper;

using Points = std::vector<std::shared_ptr<KRVNavPoint>>;

/// What the wrapping of one search works with. Refers to its parts; they must outlive it.
struct WrappingInput {
  const std::shared_ptr<KRVNavPoint>& point;  ///< where the person is
  const Points& possibleDestinations;
  double levelHeight;      ///< metres, of the task's configuration
  PositionMapper& mapper;  ///< the one that mapped the person onto the graph
};

/// A destination with its distance or score; the point is absent when there is no destination.
struct NearestDestination {
  std::shared_ptr<KRVNavPoint> point;
  double distance;
};

/// The graph's edges between successive nodes, as they are now. Pairs that no edge joins are left
/// out.
Edges edgesFor(const Points& nodes, const KRVNavGraph& graph);

/// The destination nearest to a point: of those on its level the one nearest by `distanceFrom`,
/// and when there is none on its level the one of the lowest score, which is the ground distance
/// times the level height. The first of equals wins.
NearestDestination nearestDestinationPointResultFromReferencePoint(const KRVNavPoint& reference,
                                                                   const WrappingInput& input);

/// Appends the way from the node `viaNode` to the destination nearest to it: an edge to the
/// destination's foot on one of the node's edges; an edge to the destination itself, kept on the
/// node's level, when it sees neither the node nor such a foot; nothing when it is the node that
/// is nearest.
void wrapRouteEdgesWithEnd(const std::shared_ptr<KRVNavPoint>& viaNode, Edges& routeEdges,
                           const WrappingInput& input);

/// Turns a path's edges into a whole way, in place: puts the edge from the person's foot on the
/// graph in front, and the way to the destination behind.
///
/// Without a path the way is one straight edge to the nearest destination: always when the
/// search reached no destination (`targetedDestination` absent), otherwise unless a wall is in
/// between. Fatal error for a path without a destination.
void createWrappedNonBarrierIntersectionRoute(
    Edges& edges, const Intersection& startIntersection,
    const std::shared_ptr<KRVNavPoint>& targetedDestination, const WrappingInput& input);

}  // namespace KorvaniNavigation
