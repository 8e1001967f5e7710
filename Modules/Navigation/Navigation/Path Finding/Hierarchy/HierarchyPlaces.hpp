#pragma once

// Internal.

/// Which nodes of a graph a place of the hierarchy stands for, and how a way goes through them.

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "Navigation/Path Finding/Arrays/SearchGraph.hpp"
#include "Navigation/Path Finding/Hierarchy/ZeroLinks.hpp"

namespace KorvaniNavigation {

class HierarchyPlaces {
 public:
  /// @param rankOf the number in the hierarchy of each place of `links`
  HierarchyPlaces(const SearchGraph& graph, bool barrierFree, const ZeroLinks& links,
                  const std::vector<std::uint32_t>& rankOf);

  std::uint32_t placeOf(std::uint32_t node) const { return placeOf_[node]; }

  /// Prolongs a way that stands at a node of one place by the cheapest edge to the next place, and
  /// by links of length zero before it where need be.
  /// @param cost what that edge costs
  void walk(std::uint32_t from, std::uint32_t to, double cost, FoundPath& path) const {
    const std::uint32_t node = only_[to];
    if (only_[from] == kSeveral || node == kSeveral) {
      walkOut(to, path.nodes);
    } else {
      path.nodes.push_back(node);
    }
    path.cost = cost + path.cost;
  }

  /// Prolongs a way to the target in its last place. False, the way then being of no use, when it
  /// comes to more than one without passing through another one. Targets that are `ignored` as well
  /// do not count.
  bool walkToTarget(std::span<const std::uint32_t> targets, std::span<const std::uint32_t> ignored,
                    FoundPath& path) const;

  /// What the cheapest edge from one node to another costs; there must be one.
  double stepCost(std::uint32_t from, std::uint32_t to) const;

  std::size_t memory() const;

 private:
  static constexpr std::uint32_t kSeveral = std::numeric_limits<std::uint32_t>::max();

  bool usable(std::uint32_t edge) const { return !barrierFree_ || graph_.barrierFree[edge] != 0; }
  std::uint32_t cheapestEdge(std::uint32_t node, std::uint32_t place) const;
  void walkOut(std::uint32_t place, std::vector<std::uint32_t>& nodes) const;
  bool walkInside(std::uint32_t goal, std::vector<std::uint32_t>& nodes) const;

  const SearchGraph& graph_;
  const bool barrierFree_;
  std::vector<std::uint32_t> placeOf_;
  std::vector<std::uint32_t> next_;  // the next node of the same place, in a circle
  std::vector<std::uint32_t> only_;  // the node of each place that has only one
};

}  // namespace KorvaniNavigation
