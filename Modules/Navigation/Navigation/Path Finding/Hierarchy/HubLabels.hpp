#pragma once

// Internal.

/// For each place of a small hierarchy all that a search upwards from there would find: the places
/// above it, its hubs, with what the way to them costs.
///
/// With them a query reads a few short lists instead of searching. In buildings of a thousand nodes
/// a list has about ten entries; it grows with the building, so that larger ones do without.
///
/// A place is a hub of its own, which is not listed. A place with one arc, a room behind its door,
/// has no list: it has the hubs of the place that the arc leads to. A hub is left out where the way
/// to it over a higher hub is cheaper by more than the margin. As with labels of a search, an entry
/// is tied when two ways to the hub cost nearly the same.
///
/// Nothing changes once it is built; shared among threads it needs no lock.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "Navigation/Path Finding/Hierarchy/HierarchyArcs.hpp"

namespace KorvaniNavigation {

class HubLabels {
 public:
  /// A hub, the arc that leads to it in the row of the place, and whether it is tied, in one word.
  struct Hub {
    static constexpr std::uint32_t kTied = 1U << 31;
    static constexpr std::uint32_t kArcShift = 24;
    static constexpr std::uint32_t kMostArcs = 1U << 7;
    static constexpr std::uint32_t kMostPlaces = 1U << kArcShift;

    std::uint32_t bits;

    std::uint32_t place() const { return bits & (kMostPlaces - 1); }
    std::uint32_t arc() const { return (bits & ~kTied) >> kArcShift; }
    std::uint32_t tie() const { return bits & kTied; }
  };

  /// The hubs of a place, lowest first, and what the ways to or from them cost.
  struct List {
    const Hub* hubs;
    const double* costs;
    std::uint32_t size;
  };

  /// Absent when the lists have more hubs than that for each place, and when the hierarchy is too
  /// large or has a core.
  static std::optional<HubLabels> build(const HierarchyArcs& arcs, double margin,
                                        std::size_t mostHubs);

  /// Ways up from a place.
  List forward(std::uint32_t place) const { return list(lists_[place].forward); }

  /// Ways down to it.
  List backward(std::uint32_t place) const { return list(lists_[place].backward); }

  std::size_t memory() const;

 private:
  struct Range {
    std::uint32_t begin = 0;
    std::uint32_t size = 0;
  };
  struct Ranges {
    Range forward;
    Range backward;  // the same entries where all ways can be walked in both directions
  };
  class Builder;

  List list(const Range& range) const {
    return {hubs_.data() + range.begin, costs_.data() + range.begin, range.size};
  }

  std::vector<Ranges> lists_;
  std::vector<Hub> hubs_;
  std::vector<double> costs_;
};

}  // namespace KorvaniNavigation
