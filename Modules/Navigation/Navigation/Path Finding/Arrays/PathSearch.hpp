#pragma once

// Internal. The cheapest way through a graph that does not change, by the search that fits.
//
// All searches give the same answer, to the last bit and with the same choice among equally cheap
// ways; they differ in what they cost. While few have searched, the search in waves answers, for
// which nothing is prepared. Once some have, a contraction hierarchy is made, which answers in a
// hundredth of the time on a large building. Where it finds two ways of nearly the same cost, the
// waves decide.
//
// Making the hierarchy costs as much as a few searches. A host that changes costs often would pay
// that each time for nothing, so the graph remembers: whenever a hierarchy was dropped before it
// had paid, the next one waits for twice as many searches. So it does when the search that it was
// made for was interrupted meanwhile, which leaves nothing of it.
//
//   const PathSearch search(graph, history);
//   if (const auto path = search.find({starts, targets, barrierFree, interrupted})) use(*path);
//
// Any number of threads may search at a time. One of them makes the hierarchy; the others go on
// without it until it is there.

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>

#include "Navigation/Path Finding/Arrays/SearchGraph.hpp"
#include "Navigation/Path Finding/Arrays/WaveSearch.hpp"

namespace KorvaniNavigation {

class RoutingHierarchy;

// How long the searches of one graph wait for a hierarchy; outlives each compiled form of it.
class SearchHistory {
 public:
  static constexpr int kLeastPatience = 4;
  static constexpr int kMostPatience = 1024;
  // From so many searches on a hierarchy has paid for itself.
  static constexpr int kWorthwhile = 64;

  // Searches to be made without hierarchy before it is made.
  int patience() const { return patience_.load(std::memory_order_relaxed); }

  // A hierarchy was dropped that has answered so many searches.
  void dropped(int searches) const;

 private:
  mutable std::atomic<int> patience_{kLeastPatience};
};

class PathSearch {
 public:
  // Both must outlive the object.
  PathSearch(const SearchGraph& graph, const SearchHistory& history);
  ~PathSearch();
  PathSearch(const PathSearch&) = delete;
  PathSearch& operator=(const PathSearch&) = delete;

  // The way that the search in waves finds; absent when there is none, and when the search was
  // interrupted.
  std::optional<FoundPath> find(const SearchQuery& query) const;

  // Memory of what is prepared.
  std::size_t bytes() const;

 private:
  // For all edges, and for those without barriers.
  struct Prepared {
    std::atomic<int> searches{0};
    std::atomic<const RoutingHierarchy*> ready{nullptr};
    std::unique_ptr<const RoutingHierarchy> hierarchy;
  };

  const RoutingHierarchy* hierarchyFor(const SearchQuery& query) const;
  void make(Prepared& prepared, const SearchQuery& query) const;
  std::size_t mostHubs() const;

  const SearchGraph& graph_;
  const SearchHistory& history_;
  WaveSearch waves_;
  mutable std::mutex making_;
  mutable std::array<Prepared, 2> prepared_;
};

}  // namespace KorvaniNavigation
