#pragma once

// Internal.

/// The search in waves on arrays: the same nodes, the same ties as `DijkstraImproved`.
///
/// Each wave relaxes the edges of the nodes that the wave before improved, in the order in which
/// it improved them. A way is kept as its last edge and the way that it prolongs, and stays as it
/// was found when a label on it improves later.
///
/// The search ends when every label that the next wave begins with costs at least as much as the
/// best way so far: costs only grow, and only a cheaper way could take its place.
///
/// Cost: in buildings about that of Dijkstra's algorithm with an early end, without its queue; at
/// worst every edge in every wave. Nothing is prepared.
///
/// The graph must outlive the searcher. Thread-safe.

#include <optional>

#include "Navigation/Path Finding/Arrays/ScratchPool.hpp"
#include "Navigation/Path Finding/Arrays/SearchGraph.hpp"

namespace KorvaniNavigation {

class WaveSearch {
 public:
  explicit WaveSearch(const SearchGraph& graph);
  ~WaveSearch();
  WaveSearch(const WaveSearch&) = delete;
  WaveSearch& operator=(const WaveSearch&) = delete;

  /// The way; absent when there is none, and when the search was interrupted.
  std::optional<FoundPath> find(const SearchQuery& query) const;

 private:
  struct Scratch;
  class Run;

  const SearchGraph& graph_;
  mutable ScratchPool<Scratch> pool_;
};

}  // namespace KorvaniNavigation
