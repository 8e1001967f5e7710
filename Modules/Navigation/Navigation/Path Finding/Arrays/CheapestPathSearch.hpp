#pragma once

// Internal.

/// The cheapest way by Dijkstra's algorithm, proved to be the only one of its cost.
///
/// Dijkstra's algorithm settles nodes in the order of their labels and ends at the nearest target.
/// The search in waves has the same labels in the end, to the last bit: adding a cost and rounding
/// is monotone, so either way the label of a node is the least of all sums that lead there. What
/// differs is which of several equally cheap ways is found. So every way of the same cost is looked
/// for, backwards from the target over the edges that cost nearly nothing beyond the labels they
/// connect; they are few unless there are ties. When there is no second one, the way found is the
/// answer. When there is, or when looking takes too long, `WaveSearch` answers, which is told what
/// the way costs.
///
/// Cost: like Dijkstra's algorithm with a heap up to the target, and nothing is prepared. With a
/// tie, that of `WaveSearch` on top.
///
/// The graph must outlive the searcher. Thread-safe.

#include <optional>

#include "Navigation/Path Finding/Arrays/ScratchPool.hpp"
#include "Navigation/Path Finding/Arrays/SearchGraph.hpp"
#include "Navigation/Path Finding/Arrays/WaveSearch.hpp"

namespace KorvaniNavigation {

class CheapestPathSearch {
 public:
  explicit CheapestPathSearch(const SearchGraph& graph);
  ~CheapestPathSearch();
  CheapestPathSearch(const CheapestPathSearch&) = delete;
  CheapestPathSearch& operator=(const CheapestPathSearch&) = delete;

  /// How an answer came about; for tests and benchmarks.
  enum class Proof { unique, tied };

  /// The way that `WaveSearch` finds; absent when there is none, and when the search was
  /// interrupted. `proof` is set when it is given.
  std::optional<FoundPath> find(const SearchQuery& query, Proof* proof = nullptr) const;

 private:
  struct Scratch;
  class Run;

  const SearchGraph& graph_;
  WaveSearch waves_;
  mutable ScratchPool<Scratch> pool_;
};

}  // namespace KorvaniNavigation
