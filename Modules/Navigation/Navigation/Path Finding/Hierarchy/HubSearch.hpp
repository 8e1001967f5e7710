#pragma once

// Internal.

/// The search of a hierarchy that has hub labels: the hub over which a start and a target are
/// nearest.
///
/// It answers like `HierarchySearch`, ties included, and uses the same working memory.

#include <cstdint>
#include <limits>
#include <vector>

#include "Navigation/Path Finding/Hierarchy/HierarchyArcs.hpp"
#include "Navigation/Path Finding/Hierarchy/HierarchySearch.hpp"
#include "Navigation/Path Finding/Hierarchy/HubLabels.hpp"

namespace KorvaniNavigation {

class HubSearch {
 public:
  HubSearch(const HierarchyArcs& arcs, const HubLabels& labels, double margin,
            HierarchySearch::Scratch& scratch);

  /// All starts come before the first target.
  void addStart(std::uint32_t place, double cost);
  void addTarget(std::uint32_t place);

  bool found() const { return hub_ != kNoHub; }
  double cost() const { return best_; }

  /// Whether another way costs nearly the same.
  bool tied() const { return tied_; }

  /// The places of the way, from the start's to the target's; those inside shortcuts left out.
  void gatherChain(std::vector<std::uint32_t>& chain) const;

 private:
  static constexpr std::uint32_t kNoHub = HierarchySearch::kNone;

  void reach(std::uint32_t hub, double cost, std::uint32_t from);
  void meet(std::uint32_t hub, double cost, std::uint32_t tie, std::uint32_t target);
  template <HubLabels::Direction direction>
  void climb(std::uint32_t place, std::vector<std::uint32_t>& chain) const;

  const HierarchyArcs& arcs_;
  const HubLabels& labels_;
  const double margin_;
  HierarchySearch::Scratch& scratch_;
  double best_ = std::numeric_limits<double>::infinity();
  double limit_ = std::numeric_limits<double>::max();  // the margin above the best one
  std::uint32_t hub_ = kNoHub;
  std::uint32_t target_ = kNoHub;
  bool tied_ = false;
};

}  // namespace KorvaniNavigation
