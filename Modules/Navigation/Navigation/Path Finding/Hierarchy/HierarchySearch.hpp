#pragma once

// Internal.

/// The search of a contraction hierarchy: upwards from the starts, upwards against the arcs from
/// the targets, and across the core. Where the two meet at the least cost is the top of the way.
///
/// Arcs lead upwards, so places are expanded in the order of their numbers: each once, with labels
/// that are final, and without a queue by cost. What is not reached costs infinitely much, so that
/// the innermost loop has few branches: how a search goes on is hard for a processor to foretell.
///
/// Two labels of a place, or two meetings, whose costs lie within the margin are a tie: another way
/// may cost as much to the last bit. The label is marked, and so is all that follows from it.

#include <atomic>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "Navigation/Path Finding/Hierarchy/FourHeap.hpp"
#include "Navigation/Path Finding/Hierarchy/HierarchyArcs.hpp"
#include "Navigation/Path Finding/Hierarchy/RankFrontier.hpp"

namespace KorvaniNavigation {

class HierarchySearch {
 public:
  static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

  /// How a place is reached from one side.
  struct Side {
    static constexpr std::uint32_t kTied = 1U << 31;
    static constexpr std::uint32_t kBegin = kTied - 1;

    double cost = std::numeric_limits<double>::infinity();  ///< infinite when it is not
    std::uint32_t from = kBegin;  ///< the place before, or kBegin; and whether there is a tie

    bool reached() const { return cost < std::numeric_limits<double>::infinity(); }
    bool tied() const { return (from & kTied) != 0; }

    /// Another way: keeps the cheaper one, and marks it when they cost nearly the same.
    /// @param otherFrom the place before, with the mark of a tie where the way has one
    void relax(double other, std::uint32_t otherFrom, double margin) {
      const bool better = other < cost;
      const bool close = std::abs(other - cost) <= margin;  // false where both are infinite
      cost = better ? other : cost;
      from = (better ? otherFrom : from) | (close ? kTied : 0U);
    }

    /// The place before; none where the side begins.
    std::uint32_t before() const {
      const std::uint32_t place = from & ~kTied;
      return place == kBegin ? kNone : place;
    }
  };
  struct Label {
    Side forward;
    Side backward;
  };

  /// What a search leaves behind; reused by the next one. All its labels are clean in between.
  struct Scratch {
    explicit Scratch(std::uint32_t placeCount) : labels(placeCount), frontier(placeCount) {}

    /// Cleans up after the last search.
    void begin();

    std::vector<Label> labels;
    std::vector<std::uint32_t> touched;
    RankFrontier frontier;
    FourHeap heap;
  };

  HierarchySearch(const HierarchyArcs& arcs, double margin, const std::atomic<bool>& interrupted,
                  Scratch& scratch);

  void addStart(std::uint32_t place, double cost);
  void addTarget(std::uint32_t place);

  /// False when it was interrupted.
  bool run();

  bool found() const { return meeting_ != kNone; }
  double cost() const { return best_; }

  /// Whether another way costs nearly the same.
  bool tied() const { return tied_ || lateTie_; }

  /// The places of the way, from the start's to the target's; those inside shortcuts left out.
  void gatherChain(std::vector<std::uint32_t>& chain) const;

 private:
  void add(std::uint32_t place, const Label& label);
  bool expand(std::uint32_t place);
  template <std::uint32_t kDirection>
  bool expandOne(std::uint32_t place, const Side& side, Side Label::*which);
  bool expandBoth(std::uint32_t place, const Label& label);
  void meet(std::uint32_t place, const Label& label);
  bool crossCore();
  bool expandInCore(std::uint32_t place);
  bool interrupted() const { return interrupted_.load(std::memory_order_relaxed); }

  const HierarchyArcs& arcs_;
  const double margin_;
  const std::atomic<bool>& interrupted_;
  Scratch& scratch_;
  double best_ = std::numeric_limits<double>::infinity();
  double limit_ = std::numeric_limits<double>::max();  // the margin above the best one
  std::uint32_t meeting_ = kNone;
  bool tied_ = false;
  bool lateTie_ = false;
};

}  // namespace KorvaniNavigation
