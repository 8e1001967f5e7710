#pragma once

// Internal.

/// The edges that leave a node of a graph, with the nodes where they end.
///
///   const NodeEdges edges(*node);
///   for (std::size_t i = 0; i < edges.count(); ++i) use(*edges.end(i));
///
/// What `KRVNavPoint::neighbourEdges` gives, in its order. Where the node's graph is compiled, and
/// has not changed since, they are taken from there: no tables are searched and no lists made.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "Navigation/Path Finding/Arrays/CompiledGraph.hpp"

namespace KorvaniNavigation {

class KRVNavGraph;
class KRVNavPoint;

class NodeEdges {
 public:
  /// As they are now. Fatal error for an edge without end.
  explicit NodeEdges(const KRVNavPoint& node);

  std::size_t count() const { return count_; }

  /// Where an edge ends; never null.
  const std::shared_ptr<KRVNavPoint>& end(std::size_t index) const;

  /// Metres, of the edge that `graph` has filed from the node to that end; absent when it has none.
  std::optional<double> lengthIn(const KRVNavGraph& graph, std::size_t index) const;

 private:
  const KRVNavPoint& node_;
  std::shared_ptr<const KRVNavGraph> graph_;  // that of the node
  std::shared_ptr<const GraphStructure> compiled_;
  std::uint32_t first_ = 0;                         // of the edges in the compiled form,
  std::vector<std::shared_ptr<KRVNavPoint>> ends_;  // or where it is not compiled
  std::size_t count_ = 0;
};

}  // namespace KorvaniNavigation
