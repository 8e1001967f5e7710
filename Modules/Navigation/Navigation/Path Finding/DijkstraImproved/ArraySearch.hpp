#pragma once

// Internal. A search in arrays: what it was asked, on which form of the graph, and what it found.
//
// It keeps the form of the graph, and so all its points. That way the labels which it did not make
// can still be made later, as they would have been, whatever has become of the graph and of its
// points since: which of them are starts and targets stays as it was found out.
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

  // A search that was to go on from this one's labels and was interrupted before it relaxed
  // anything. Its starts get labels and wait for the next wave, unless the interruption came after
  // it began.
  struct Successor {
    Points starts;
    std::vector<double> distances;
    bool hasBegun = false;
  };

  void run(const std::atomic<bool>& interrupted);

  // Notes a search that was interrupted. One that had begun takes the way that was found with it.
  void add(Successor successor);

  // The way that was found; absent when there is none.
  std::optional<PointPath> bestPath() const;

  std::shared_ptr<const CompiledGraph> compiled;
  std::vector<StartNode> starts;
  std::vector<std::uint32_t> targets;
  bool barrierFree = false;
  std::optional<FoundPath> path = std::nullopt;
  bool wasInterrupted = false;
  std::vector<Successor> successors;
};

}  // namespace KorvaniNavigation
