#pragma once

// Internal.

/// The cheapest way through a graph whose costs stay the same for a while, by a contraction
/// hierarchy: from the starts and from the targets a search climbs to ever more important places
/// and meets at the top, having seen a few dozen nodes of a building with a hundred thousand.
///
/// The answer is the way that `WaveSearch` finds, or none. A hierarchy adds costs in another order
/// than a search that walks, so its sums are not the same to the last bit. It therefore keeps track
/// of ways whose costs lie within a margin of each other, one that is wider than all roundings
/// (`RoundingBound`). A way that no other one comes near is the cheapest however costs are added,
/// and what it costs is added up again in walking order. Otherwise the query is undecided, which in
/// buildings that are measured and not drawn with the ruler is rare.
///
///   const RoutingHierarchy hierarchy(graph, false);
///   auto answer = hierarchy.find(query);
///   if (answer.outcome == RoutingHierarchy::Outcome::undecided) path = waves.find(query);
///
/// Cost, measured on one core of a server: building takes 0.3 to 2 microseconds a node in
/// buildings, 5 on grids; a query 1 microsecond in a building of 1,000 nodes, 3 at 10,000, 20 at
/// 100,000 and 70 at a million. Memory: 40 to 60 bytes a node, and 12 for each hub of small graphs.
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
  static constexpr std::size_t kMostHubs = 14;

  /// Over all edges, or over those without barriers.
  /// @param mostHubs the graph gets hub labels, which make queries two to four times faster, if it
  ///     has no more hubs than so many for each node; 0: none
  RoutingHierarchy(const SearchGraph& graph, bool barrierFree, std::size_t mostHubs = kMostHubs);
  ~RoutingHierarchy();
  RoutingHierarchy(const RoutingHierarchy&) = delete;
  RoutingHierarchy& operator=(const RoutingHierarchy&) = delete;

  enum class Outcome {
    found,        ///< `path` is what `WaveSearch` finds
    unreachable,  ///< there is no way
    interrupted,
    undecided  ///< another way costs nearly the same: ask `WaveSearch`
  };
  struct Answer {
    Outcome outcome = Outcome::undecided;
    FoundPath path;
  };

  /// Whether it is worth keeping. Where many ways cost the same, as on a regular grid, it is not:
  /// it is empty then and leaves every query undecided.
  bool helps() const { return built_ != nullptr; }

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
