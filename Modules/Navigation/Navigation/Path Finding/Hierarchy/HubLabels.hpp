#pragma once

// Internal.

/// For each place of a small hierarchy all that a search upwards from there would find: the places
/// above it, its hubs, with what the way to them costs.
///
/// With them a query reads a few short lists instead of searching. In buildings of some hundred
/// nodes a list has about five entries; it grows with the building, so that larger ones do without.
///
/// A place is a hub of its own, which is not listed. Places with one arc, such as a room behind its
/// door, and those with two arcs to places that have a list, have none themselves: their hubs are
/// those at the ends of their arcs. That saves half of the memory. A hub is left out where the way
/// to it over a higher hub is cheaper by more than the margin. As with labels of a search, an entry
/// is tied when two ways to the hub cost nearly the same.
///
/// Nothing changes once it is built; shared among threads it needs no lock.

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "Navigation/Path Finding/Arrays/Interruption.hpp"
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

  enum class Direction { forward, backward };

  /// Absent when the lists have more hubs than that for each place, and when the hierarchy is too
  /// large or has a core; and when it is interrupted.
  static std::optional<HubLabels> build(const HierarchyArcs& arcs, double margin,
                                        std::size_t mostHubs, Interruption& interruption);

  /// Calls `visit(hub, cost, tie)` for the hubs above a place, those at the ends of its arcs
  /// included; for one hub several times where there is no list. `cost` and `tie` (Hub::kTied or 0)
  /// are those of the way to the place, and are passed on with what the way from there adds; or to
  /// there, for the direction `backward`.
  template <Direction direction, typename Visit>
  void visitAbove(const HierarchyArcs& arcs, std::uint32_t place, double cost, std::uint32_t tie,
                  const Visit& visit) const;

  /// The arc, in the row of the place, over which the hub above it is nearest.
  template <Direction direction>
  std::uint32_t arcTowards(const HierarchyArcs& arcs, std::uint32_t place, std::uint32_t hub) const;

  std::size_t memory() const;

 private:
  struct Range {
    static constexpr std::uint32_t kNoList = ~0U;

    std::uint32_t begin = kNoList;
    std::uint32_t size = 0;
  };
  struct Ranges {
    Range forward;
    Range backward;  // the same entries where all ways can be walked in both directions
  };
  class Builder;

  template <Direction direction>
  static bool leads(const HierarchyArc& arc) {
    return direction == Direction::forward ? arc.forward() : arc.backward();
  }

  bool listed(std::uint32_t place) const { return ranges_[place].forward.begin != Range::kNoList; }

  template <Direction direction>
  const Range& rangeOf(std::uint32_t place) const {
    return direction == Direction::forward ? ranges_[place].forward : ranges_[place].backward;
  }

  std::vector<Ranges> ranges_;
  std::vector<Hub> hubs_;
  std::vector<double> costs_;
};

// The last arc is followed without recursion: there can be a long row of places with one arc.
template <HubLabels::Direction direction, typename Visit>
void HubLabels::visitAbove(const HierarchyArcs& arcs, std::uint32_t place, double cost,
                           std::uint32_t tie, const Visit& visit) const {
  while (!listed(place)) {
    const std::span<const HierarchyArc> row = arcs.row(place);
    for (const HierarchyArc& arc : row) {
      const bool last = &arc == &row.back();
      if (!leads<direction>(arc)) {
        if (last) return;
        continue;
      }
      const std::uint32_t arcTie = tie | (arc.tied() ? Hub::kTied : 0U);
      visit(arc.place(), cost + arc.cost, arcTie);
      if (!last) {
        visitAbove<direction>(arcs, arc.place(), cost + arc.cost, arcTie, visit);
        continue;
      }
      place = arc.place();
      cost += arc.cost;
      tie = arcTie;
    }
  }
  const Range& range = rangeOf<direction>(place);
  for (std::uint32_t i = range.begin; i < range.begin + range.size; ++i) {
    visit(hubs_[i].place(), cost + costs_[i], tie | hubs_[i].tie());
  }
}

template <HubLabels::Direction direction>
std::uint32_t HubLabels::arcTowards(const HierarchyArcs& arcs, std::uint32_t place,
                                    std::uint32_t hub) const {
  if (listed(place)) {
    const Hub* entry = hubs_.data() + rangeOf<direction>(place).begin;
    while (entry->place() != hub) ++entry;
    return entry->arc();
  }
  const std::span<const HierarchyArc> row = arcs.row(place);
  std::uint32_t nearest = 0;
  double least = std::numeric_limits<double>::infinity();
  for (std::uint32_t i = 0; i < row.size() && row.size() > 1; ++i) {
    if (!leads<direction>(row[i])) continue;
    const auto compare = [&](std::uint32_t reached, double cost, std::uint32_t) {
      if (reached != hub || !(cost < least)) return;
      least = cost;
      nearest = i;
    };
    compare(row[i].place(), row[i].cost, 0);
    visitAbove<direction>(arcs, row[i].place(), row[i].cost, 0, compare);
  }
  return nearest;
}

}  // namespace KorvaniNavigation
