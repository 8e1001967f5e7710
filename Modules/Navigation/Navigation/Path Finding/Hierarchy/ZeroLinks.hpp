#pragma once

// Internal.

/// Joins nodes that links of length zero connect both ways, as the two sides of a door often are.
///
/// Walking to and fro over such a link costs nothing, so that seen from outside a way and the same
/// way with a detour over the link cost the same. A hierarchy would take that for a tie everywhere.
/// Joined to one place the link is out of sight; how a way goes inside a place is looked up when it
/// is spelled out, and there is only one way: only trees of links are joined. A group is left alone
/// when it is large, has a circle, or has an edge to a node outside that costs next to nothing:
/// then a detour out of the place and back would cost as little.

#include <cstdint>
#include <vector>

#include "Navigation/Path Finding/Arrays/Interruption.hpp"
#include "Navigation/Path Finding/Arrays/SearchGraph.hpp"

namespace KorvaniNavigation {

class ZeroLinks {
 public:
  /// @param barrierFree look only at edges without barriers
  /// @param least edges that lead out of a place cost more than this
  /// @param interruption leaves the object of no use when it is seen
  ZeroLinks(const SearchGraph& graph, bool barrierFree, double least, Interruption& interruption);

  std::uint32_t placeCount() const { return placeCount_; }

  /// The place of each node, counted from 0 in the order of the places' first nodes.
  const std::vector<std::uint32_t>& placeOf() const { return placeOf_; }

  /// For each node the next one of its place, in a circle; itself when it is alone.
  const std::vector<std::uint32_t>& nextOf() const { return next_; }

 private:
  bool usable(std::uint32_t edge) const { return !barrierFree_ || graph_.barrierFree[edge] != 0; }
  bool linked(std::uint32_t from, std::uint32_t to) const;
  void gather(std::uint32_t first, std::vector<std::uint32_t>& group);
  bool joinable(const std::vector<std::uint32_t>& group, double least) const;
  void join(const std::vector<std::uint32_t>& group);
  void numberPlaces();

  const SearchGraph& graph_;
  const bool barrierFree_;
  std::vector<std::uint32_t> group_;  // of each node, 0 until it is looked at
  std::uint32_t groupCount_ = 0;
  std::vector<std::uint32_t> next_;
  std::vector<std::uint32_t> placeOf_;
  std::uint32_t placeCount_ = 0;
};

}  // namespace KorvaniNavigation
