#pragma once

#include <memory>

#include "Peers/PathQuery.hpp"

namespace KorvaniBenchmarks {

/// LEMON's Dijkstra on its static graph, which stops at the first target that it settles. The graph
/// and the search's maps are made once. Plain C++17 (LEMON does not compile as C++20).
class LemonPaths {
 public:
  explicit LemonPaths(const Arcs& arcs);
  ~LemonPaths();
  LemonPaths(const LemonPaths&) = delete;
  LemonPaths& operator=(const LemonPaths&) = delete;

  FoundWay find(const PathQuery& query);

 private:
  struct Search;
  std::unique_ptr<Search> search_;
};

}  // namespace KorvaniBenchmarks
