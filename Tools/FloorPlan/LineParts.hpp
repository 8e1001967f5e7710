#pragma once

/// Internal. How the drawn lines of a level hang together.

#include <cstddef>
#include <map>
#include <set>

#include "FloorPlan/PlanGraph.hpp"

namespace KorvaniTools {

/// Whether people step on and off at any point of a line of this kind, as on plain floor.
bool isWalkedOn(ConnectionKind kind);

/// Which nodes of drawn lines are joined by lines of their level alone, and at which of them
/// people come from the floor beside.
///
/// Ways by other levels do not count: who wants to cross a platform does not take the stairs down
/// and up again for it.
class LineParts {
 public:
  LineParts(const PlanGraph& graph, std::int64_t level);

  /// The part that the node of a drawn line of the level belongs to.
  std::size_t of(std::size_t node) const { return parts_.at(node); }
  bool knows(std::size_t node) const { return parts_.contains(node); }

  /// Whether the node lies amid stairs or an escalator, where nobody steps off: not at the ends of
  /// their line, even where it goes on from there on further levels.
  bool amidStairs(std::size_t node) const { return amid_.contains(node); }

 private:
  std::size_t first(std::size_t node);
  void findAmid(const PlanGraph& graph);

  std::map<std::size_t, std::size_t> parts_;  ///< node -> the first node of its part
  std::set<std::size_t> amid_;
};

}  // namespace KorvaniTools
