#pragma once

// Internal.

/// The cheapest way through a graph whose costs stay the same for a while, by a contraction
/// hierarchy.
///
/// The graph must outlive the hierarchy. Thread-safe.

#include <cstddef>
#include <memory>
#include <optional>

#include "Navigation/Path Finding/Arrays/ScratchPool.hpp"
#include "Navigation/Path Finding/Arrays/SearchGraph.hpp"
#include "Navigation/Path Finding/Hierarchy/RoundingBound.hpp"

namespace KorvaniNavigation {

class RoutingHierarchy {
 public:
  /// Builds the hierarchy over all edges, or over those without barriers. A few microseconds a
  /// node.
  RoutingHierarchy(const SearchGraph& graph, bool barrierFree);
  ~RoutingHierarchy();
  RoutingHierarchy(const RoutingHierarchy&) = delete;
  RoutingHierarchy& operator=(const RoutingHierarchy&) = delete;

  enum class Outcome {
    found,        ///< `path` is what `WaveSearch` finds
    unreachable,  ///< there is no way
    interrupted,
    undecided  ///< another way costs nearly the same: ask `CheapestPathSearch`
  };
  struct Answer {
    Outcome outcome = Outcome::undecided;
    FoundPath path;
  };

  /// The query's `barrierFree` must be that of the hierarchy.
  Answer find(const SearchQuery& query) const;

  /// Bytes that the hierarchy holds, working memory of searches not included.
  std::size_t memory() const;

  /// How many places were not contracted.
  std::uint32_t coreSize() const;

 private:
  struct Built;
  struct Scratch;
  class Run;

  RoundingBound bound_;
  std::unique_ptr<Built> built_;
  mutable ScratchPool<Scratch> pool_;
};

}  // namespace KorvaniNavigation
