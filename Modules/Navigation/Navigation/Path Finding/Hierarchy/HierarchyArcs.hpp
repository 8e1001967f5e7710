#pragma once

// Internal.

/// What a contraction hierarchy is made of: its arcs, and which places they connect.
///
/// A place is a node of the graph, or several nodes that links of length zero join (`ZeroLinks`).
/// Places are numbered in the order in which they are contracted, so a place with a higher number
/// matters to longer ways.

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace KorvaniNavigation {

/// Between a place, whose row it stands in, and another one. It can be for either direction or, if
/// both cost the same, for both.
struct HierarchyArc {
  static constexpr std::uint32_t kForward = 1U << 31;   ///< from the row's place
  static constexpr std::uint32_t kBackward = 1U << 30;  ///< to the row's place
  static constexpr std::uint32_t kTied = 1U << 29;      ///< two ways cost nearly the same
  static constexpr std::uint32_t kDirections = kForward | kBackward;
  static constexpr std::uint32_t kPlace = kTied - 1;
  static constexpr std::uint32_t kNoMiddle = std::numeric_limits<std::uint32_t>::max();

  double cost;
  std::uint32_t bits;    ///< the other place, and the flags above
  std::uint32_t middle;  ///< the place that a shortcut leads over; none for an edge of the graph

  std::uint32_t place() const { return bits & kPlace; }
  std::uint32_t directions() const { return bits & kDirections; }
  bool forward() const { return (bits & kForward) != 0; }
  bool backward() const { return (bits & kBackward) != 0; }
  bool tied() const { return (bits & kTied) != 0; }
};

/// Rows of arcs. The row of a contracted place holds its arcs to higher places; places from
/// `coreBegin` on are not contracted, and their rows hold their arcs to each other.
struct HierarchyArcs {
  std::vector<std::uint32_t> firstArc;  ///< one more than there are places
  std::vector<HierarchyArc> arcs;
  std::uint32_t coreBegin = 0;

  std::uint32_t placeCount() const {
    return firstArc.empty() ? 0 : static_cast<std::uint32_t>(firstArc.size() - 1);
  }
  std::span<const HierarchyArc> row(std::uint32_t place) const {
    return {arcs.data() + firstArc[place], arcs.data() + firstArc[place + 1]};
  }
};

}  // namespace KorvaniNavigation
