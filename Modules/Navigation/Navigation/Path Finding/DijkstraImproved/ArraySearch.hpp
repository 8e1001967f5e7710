#pragma once

// Internal. A search in arrays: what it was asked, on which form of the graph, and what it found.
//
// It keeps the form of the graph, and so all its points. That way the labels which it did not make
// can still be made later, as they would have been, whatever has become of the graph since.
//
// Belongs to one thread, but for the flag that interrupts.

#include <atomic>
#include <memory>
#include <optional>
#include <vector>

#include "Navigation/Path Finding/Arrays/CompiledGraph.hpp"
#include "Navigation/Path Finding/Arrays/SearchGraph.hpp"
#include "Navigation/Path Finding/DijkstraImproved/PointPath.hpp"

namespace KorvaniNavigation {

struct ArraySearch {
  using Points = std::vector<std::shared_ptr<KRVNavPoint>>;

  // The search that a finder is asked for; null when it must be made object by object: when the
  // graph is not ordinary, when a start is no node of it, and when a distance is none. Null as well
  // when it was interrupted, as if that had come before the search: the other one gives up at once.
  static std::unique_ptr<ArraySearch> prepare(const Points& starts,
                                              const std::vector<double>& distances,
                                              const Points& destinations, bool barrierFree,
                                              const std::atomic<bool>& interrupted);

  void run(const std::atomic<bool>& interrupted);

  // The way that was found; empty when there is none.
  Points points() const;
  std::optional<PointPath> bestPath() const;

  std::shared_ptr<const CompiledGraph> compiled;
  std::vector<StartNode> starts;
  std::vector<std::uint32_t> targets;
  bool barrierFree = false;
  std::optional<FoundPath> path = std::nullopt;
  bool wasInterrupted = false;
};

}  // namespace KorvaniNavigation
