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
/// and what it costs is added up again in walking order. When only a way from another start comes
/// near, as happens to a position exactly on a node, the ways from each start are compared
/// (`StartWays`). Otherwise the query is undecided, which in buildings that are measured and not
/// drawn with the ruler is rare.
///
///   const RoutingHierarchy hierarchy(graph, false);
///   auto answer = hierarchy.find(query);
///   if (answer.outcome == RoutingHierarchy::Outcome::undecided) path = waves.find(query);
///
/// Cost, measured on one core of a server: building takes 0.3 to 3 microseconds a node in
/// buildings, 6 on uneven grids, 1 on others, where it gives up; a query 1 microsecond in a
/// building of 1,000 nodes, 3 at 10,000, 20 at 100,000 and 70 at a million, and up to twice that
/// where starts are compared. Memory: 40 to 60 bytes a node, and 12 for each hub of small graphs.
///
/// The graph must outlive the hierarchy. Thread-safe.

#include <atomic>
#include <cstddef>
#include <memory>
#include <optional>

#include "Navigation/Path Finding/Arrays/Interruption.hpp"
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
  /// @param interrupted read before each step of the preparation
  RoutingHierarchy(const SearchGraph& graph, bool barrierFree, std::size_t mostHubs = kMostHubs,
                   const std::atomic<bool>& interrupted = kNeverInterrupted);
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

  /// Whether its preparation was given up: it is empty then and to be thrown away.
  bool wasInterrupted() const { return wasInterrupted_; }

  /// Whether it is of use. Where many ways cost the same, as on a regular grid, and where
  /// `WaveSearch` is faster, as on most other grids, it is not: it is empty then and leaves every
  /// query undecided.
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

  void build(const SearchGraph& graph, bool barrierFree, std::size_t mostHubs,
             Interruption& interruption);

  RoundingBound bound_;
  bool wasInterrupted_ = false;
  std::unique_ptr<Built> built_;
  mutable ScratchPool<Scratch> pool_;
};

}  // namespace KorvaniNavigation
