#include "Navigation/Routing/RouteWrapping.hpp"

#include <limits>
#include <optional>
#include <utility>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Localisation/PositionMapper.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Navigation/Path Finding/Arrays/CompiledGraph.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

namespace {

/// A point of the same place and level, whose location is that of its coordinate.
KRVNavPoint copyOf(const KRVNavPoint& point) {
  return KRVNavPoint(point.coordinate(), point.level());
}

/// The straight edge from the person to the nearest destination, or to the person itself when
/// there is no destination.
RouteEdge directEdge(const std::shared_ptr<KRVNavPoint>& destination, const WrappingInput& input) {
  const auto& end = destination ? destination : input.point;
  return {input.point, end, input.point->distanceFrom(*end)};
}

/// The graph's edge between two nodes; absent when there is none. It is looked up where edges stand
/// side by side if the graph is compiled, else in its dictionaries.
std::optional<RouteEdge> edgeBetween(const KRVNavPoint& from, const KRVNavPoint& to,
                                     const KRVNavGraph& graph, const GraphStructure* filed) {
  const auto start = filed ? filed->nodeOf(from) : std::nullopt;
  const auto end = filed ? filed->nodeOf(to) : std::nullopt;
  if (start && end) {
    const KRVNavEdge* edge = filed->edgeBetween(*start, *end);
    return edge ? std::optional<RouteEdge>(*edge) : std::nullopt;
  }
  const auto edge = graph.edgeFromNode(from, to);
  return edge ? std::optional<RouteEdge>(*edge) : std::nullopt;
}

}  // namespace

Edges edgesFor(const Points& nodes, const KRVNavGraph& graph) {
  const auto compiled = GraphStructure::ready(graph);
  const GraphStructure* filed = compiled && compiled->isFiledByEnds() ? compiled.get() : nullptr;
  Edges edges;
  edges.reserve(nodes.size() + 1);  // with room for the ways onto the graph and off it
  for (std::size_t i = 0; i + 1 < nodes.size(); ++i) {
    if (auto edge = edgeBetween(*nodes[i], *nodes[i + 1], graph, filed)) {
      edges.push_back(std::move(*edge));
    }
  }
  return edges;
}

NearestDestination nearestDestinationPointResultFromReferencePoint(const KRVNavPoint& reference,
                                                                   const WrappingInput& input) {
  constexpr double none = std::numeric_limits<double>::max();
  NearestDestination sameLevel{nullptr, none};
  NearestDestination otherLevel{nullptr, none};
  for (const auto& destination : input.possibleDestinations) {
    if (destination->level() == reference.level()) {
      const double distance = reference.distanceFrom(*destination);
      if (distance < sameLevel.distance) sameLevel = {destination, distance};
    } else if (!sameLevel.point) {
      // A product, not a sum: it ranks the destinations of other levels among themselves only.
      const double score =
          reference.location().distanceFromLocation(destination->location()) * input.levelHeight;
      if (score < otherLevel.distance) otherLevel = {destination, score};
    }
  }
  return sameLevel.point ? sameLevel : otherLevel;
}

void wrapRouteEdgesWithEnd(const std::shared_ptr<KRVNavPoint>& viaNode, Edges& routeEdges,
                           const WrappingInput& input) {
  const NearestDestination nearest =
      nearestDestinationPointResultFromReferencePoint(copyOf(*viaNode), input);
  if (!nearest.point) return;
  const auto intersection = input.mapper.intersect(*nearest.point, viaNode);
  if (!intersection) {
    const auto end = std::make_shared<KRVNavPoint>(nearest.point->coordinate(), viaNode->level());
    routeEdges.emplace_back(viaNode, end, nearest.distance);
  } else if (intersection->kind() == IntersectionKind::edge) {
    const auto& foot = intersection->node();
    routeEdges.emplace_back(viaNode, foot, viaNode->distanceFrom(*foot));
  }
}

void createWrappedNonBarrierIntersectionRoute(
    Edges& edges, const Intersection& startIntersection,
    const std::shared_ptr<KRVNavPoint>& targetedDestination, const WrappingInput& input) {
  std::shared_ptr<KRVNavPoint> first;
  if (!edges.empty()) {
    first = edges.front().start;
  } else if (!targetedDestination) {
    const auto nearest =
        nearestDestinationPointResultFromReferencePoint(copyOf(*input.point), input);
    edges.push_back(directEdge(nearest.point, input));
    return;
  } else {
    const auto nearest =
        nearestDestinationPointResultFromReferencePoint(copyOf(*targetedDestination), input);
    const auto& end = nearest.point ? nearest.point : input.point;
    const auto& detector = input.mapper.obstacleDetector();
    if (!detector) KORVANI_FATAL("no walls are known to test a direct way against");
    if (!detector->isAnyBarrierInBetween(input.point->coordinate(), end->coordinate())) {
      edges.push_back(directEdge(nearest.point, input));
      return;
    }
    first = targetedDestination;
  }
  if (startIntersection.kind() != IntersectionKind::node) {
    const auto& foot = startIntersection.node();
    edges.emplace(edges.begin(), foot, first, foot->distanceFrom(*first));
  }
  if (!targetedDestination) KORVANI_FATAL("a path has no destination node");
  wrapRouteEdgesWithEnd(targetedDestination, edges, input);
}

}  // namespace KorvaniNavigation
