#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace KorvaniBenchmarks {

// Plain C++17: one of the peers does not compile as C++20.

/// A way in one direction, and what it costs.
struct Arc {
  std::uint32_t from;
  std::uint32_t to;
  double cost;
};

/// A graph for a path search: nodes are numbered from 0.
struct Arcs {
  std::size_t nodes = 0;
  std::vector<Arc> arcs;
};

/// The cheapest way from any of the starts to any of the targets is looked for. No node is start
/// and target at once.
struct PathQuery {
  struct Start {
    std::uint32_t node;
    double distance;
  };
  std::vector<Start> starts;
  std::vector<std::uint32_t> targets;
};

/// What a search found: the nodes from the start to the target, and the cost, the start's distance
/// included. No nodes when no target can be reached.
struct FoundWay {
  std::vector<std::uint32_t> nodes;
  double cost = 0;
};

}  // namespace KorvaniBenchmarks
