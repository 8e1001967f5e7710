#pragma once

// Internal.

/// The search in waves on arrays: the same nodes, the same ties as `DijkstraImproved`.
///
/// Each wave relaxes the edges of the nodes that the wave before improved, in the order in which
/// it improved them. A way is kept as its last edge and the way that it prolongs, and stays as it
/// was found when a label on it improves later.
///
/// Cost: at worst every edge in every wave; in buildings a few times the edges of the graph. The
/// other searches come here only when two ways cost the same.
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
  /// @param optimum what the cheapest way costs, where that is known, to the last bit. The search
  ///     then ends with the first way that costs no more: only a cheaper one could replace it.
  ///     Labels above it are kept all the same, since they have a say in the order of the waves.
  std::optional<FoundPath> find(const SearchQuery& query,
                                std::optional<double> optimum = std::nullopt) const;

 private:
  struct Scratch;
  class Run;

  const SearchGraph& graph_;
  mutable ScratchPool<Scratch> pool_;
};

}  // namespace KorvaniNavigation
