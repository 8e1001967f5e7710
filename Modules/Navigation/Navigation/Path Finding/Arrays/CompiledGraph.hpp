#pragma once

// Internal. A graph in arrays, as path searches want it: nodes by number, their edges side by side.
//
//   const auto compiled = CompiledGraph::of(*graph);
//   if (compiled->isOrdinary()) {
//     const auto path = compiled->search().find({starts, targets, barrierFree, interrupted});
//   }
//
// It is made once and kept with the graph until the graph changes; everybody who searches shares
// it. When only costs have changed, only the costs are read again.
//
// Only an ordinary graph has arrays. In it, numbers say the same as objects: every point is filed
// under its own identifier and belongs to a region of this graph, every edge ends at such a point,
// every cost is a number of at least 0, and no way costs more than a number can hold. In any other
// graph labels that belong to objects and equality that goes by identifiers come apart, and it is
// searched object by object.
//
// Immutable; any number of threads may read it. It keeps the points alive, not the edges.
//
// Cost of making one: about a microsecond a node. Memory: below 40 bytes a node and 13 an edge.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "Navigation/Path Finding/Arrays/Interruption.hpp"
#include "Navigation/Path Finding/Arrays/PathSearch.hpp"
#include "Navigation/Path Finding/Arrays/SearchGraph.hpp"

namespace KorvaniNavigation {

class KRVNavEdge;
class KRVNavGraph;
class KRVNavPoint;

// Which nodes there are and which edges join them; what an edge costs is left open.
class GraphStructure {
 public:
  // Of no use when the interruption is seen.
  GraphStructure(const KRVNavGraph& graph, Interruption& interruption);

  // The structure of the graph as it is now, if it is ordinary and made already; null otherwise.
  // For who can as well ask the graph.
  static std::shared_ptr<const GraphStructure> ready(const KRVNavGraph& graph);

  bool isOrdinary() const { return isOrdinary_; }

  // The number of that very object; absent when it is none of the graph's nodes.
  std::optional<std::uint32_t> nodeOf(const KRVNavPoint& point) const;

  // The number of the node that equals the point; absent when none does. The first question about a
  // point that is no node itself has the nodes sorted.
  std::optional<std::uint32_t> equalNode(const KRVNavPoint& point) const;

  const std::vector<std::shared_ptr<KRVNavPoint>>& points() const { return points_; }
  const std::vector<std::uint32_t>& firstEdge() const { return firstEdge_; }
  const std::vector<std::uint32_t>& target() const { return target_; }

  // The edges in the order of `target()`. For as long as the graph has not changed since.
  const std::vector<const KRVNavEdge*>& edges() const { return edges_; }

  // The edge that the graph has filed from one of its nodes to another; null when there is none.
  const KRVNavEdge* edgeBetween(std::uint32_t from, std::uint32_t to) const;

  // Whether every edge is filed under the number of the node where it ends, as `edgeBetween` needs.
  bool isFiledByEnds() const { return isFiledByEnds_; }

  std::size_t bytes() const;

 private:
  bool addNodes(const KRVNavGraph& graph, Interruption& interruption);
  bool addEdges(const KRVNavGraph& graph, Interruption& interruption);
  bool addRow(const KRVNavGraph& graph, const KRVNavPoint& point);
  void sortByIdentifier() const;

  std::vector<std::shared_ptr<KRVNavPoint>> points_;
  mutable std::once_flag sorted_;
  mutable std::vector<std::uint32_t> byIdentifier_;  // nodes, ascending, once somebody asked
  std::vector<std::uint32_t> firstEdge_;
  std::vector<std::uint32_t> target_;
  std::vector<const KRVNavEdge*> edges_;
  bool isFiledByEnds_ = true;
  bool isOrdinary_;  // last: found out while the others are filled
};

class CompiledGraph {
 public:
  // The form of the graph as it is now. When it has to be made, or is being made by somebody else,
  // and the flag is set meanwhile, there is none: null. What was begun is dropped.
  static std::shared_ptr<const CompiledGraph> of(
      const KRVNavGraph& graph, const std::atomic<bool>& interrupted = kNeverInterrupted);

  // Reads the costs of the structure's edges, whose graph must be unchanged. Of no use when the
  // interruption is seen.
  CompiledGraph(std::shared_ptr<const GraphStructure> structure,
                std::shared_ptr<const SearchHistory> history, Interruption& interruption);

  bool isOrdinary() const { return isOrdinary_; }

  const GraphStructure& structure() const { return *structure_; }

  // What all edges cost together: no way costs more.
  double totalCost() const { return totalCost_; }

  // What searches work on, and the search, which all threads share; valid as long as this object.
  const SearchGraph& arrays() const { return arrays_; }
  const PathSearch& search() const { return search_; }

  // Memory of everything that is prepared.
  std::size_t bytes() const;

 private:
  bool readCosts(Interruption& interruption);

  std::shared_ptr<const GraphStructure> structure_;
  std::vector<double> cost_;
  std::vector<std::uint8_t> barrierFree_;
  double totalCost_ = 0;
  bool isOrdinary_;
  SearchGraph arrays_;
  std::shared_ptr<const SearchHistory> history_;
  PathSearch search_;
};

}  // namespace KorvaniNavigation
