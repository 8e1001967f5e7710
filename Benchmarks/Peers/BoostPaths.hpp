#pragma once

#include <memory>

#include "Peers/PathQuery.hpp"

namespace KorvaniBenchmarks {

/// Boost.Graph's Dijkstra on a compressed sparse row graph, which stops at the first target that it
/// settles. The graph and the search's maps are made once; of the maps only what a search has
/// touched is cleared after it.
class BoostPaths {
 public:
  explicit BoostPaths(const Arcs& arcs);
  ~BoostPaths();
  BoostPaths(const BoostPaths&) = delete;
  BoostPaths& operator=(const BoostPaths&) = delete;

  FoundWay find(const PathQuery& query);

 private:
  struct Search;
  std::unique_ptr<Search> search_;
};

}  // namespace KorvaniBenchmarks
