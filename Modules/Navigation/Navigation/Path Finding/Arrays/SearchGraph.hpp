#pragma once

// Internal.

/// What the searches on arrays share: a graph, a query, an answer.
///
/// Nodes and edges are numbers. The outgoing edges of node n are those from firstEdge[n] to
/// firstEdge[n + 1] - 1, in the order in which the graph lists them: of two ways of equal cost the
/// one that is found first stays, so the order decides ties.
///
/// A query means what it means to `DijkstraImproved`: the cheapest way from one of the starts to
/// the nearest of the targets. A way costs the distance of its start plus the costs of its edges,
/// added in walking order. A target is never passed through, and a way has an edge at least, so a
/// start that is a target leads nowhere; a way that comes to a start only counts when it is cheaper
/// there than the start's own distance.
///
/// Costs and distances are metres, finite and not negative. Nothing here may change while somebody
/// searches; shared among threads it needs no lock.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace KorvaniNavigation {

/// Refers to arrays that others own.
struct SearchGraph {
  std::span<const std::uint32_t> firstEdge;   ///< one more than there are nodes
  std::span<const std::uint32_t> target;      ///< the node at an edge's end
  std::span<const double> cost;               ///< what an edge costs, rounded once
  std::span<const std::uint8_t> barrierFree;  ///< whether an edge is without barriers, 0 or 1

  std::uint32_t nodeCount() const {
    return firstEdge.empty() ? 0 : static_cast<std::uint32_t>(firstEdge.size() - 1);
  }
  std::uint32_t edgeCount() const { return static_cast<std::uint32_t>(target.size()); }
};

struct StartNode {
  std::uint32_t node = 0;
  double distance = 0;
};

/// Of a start that is listed twice the later distance counts. Targets may repeat.
struct SearchQuery {
  std::span<const StartNode> starts;
  std::span<const std::uint32_t> targets;
  bool barrierFree = false;              ///< only over edges without barriers
  const std::atomic<bool>& interrupted;  ///< read before each node and each edge
};

/// From a start to a target, both included.
struct FoundPath {
  std::vector<std::uint32_t> nodes;
  double cost = 0;
};

}  // namespace KorvaniNavigation
