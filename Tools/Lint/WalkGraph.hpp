#pragma once

/// Internal. Who gets where in a building.

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "Building/Building.hpp"

namespace KorvaniTools {

/// One truth value a node, by the node's index in `Building::nodes`.
using NodeSet = std::vector<bool>;
using NodeIndexes = std::vector<std::size_t>;

/// Which nodes lead to which, by index into `Building::nodes`.
///
/// Of several edges from one node to another only the last counts, as in the engine's graph.
/// Immutable.
class WalkGraph {
 public:
  /// Which edges count.
  enum class Edges { all, barrierFree };

  WalkGraph(const Building& building, Edges edges);

  std::size_t size() const { return out_.size(); }

  /// The nodes that edges lead to from that one, and those from which edges lead to it.
  const NodeIndexes& after(std::size_t node) const { return out_[node]; }
  const NodeIndexes& before(std::size_t node) const { return in_[node]; }

  /// The nodes of the largest group in which everybody gets from everywhere to everywhere; of
  /// equal ones that with the earliest node.
  NodeSet mainNetwork() const;

  /// The nodes that can be reached from `starts`, these included.
  NodeSet reachedFrom(const NodeSet& starts) const;

  /// The nodes from which one of `ends` can be reached, these included.
  NodeSet leadingTo(const NodeSet& ends) const;

  /// The nodes that edges join to one of `nodes`, in whatever direction, these included.
  NodeSet joinedTo(const NodeSet& nodes) const;

  /// The groups that `members` fall into when only edges among them count, in any direction: each
  /// ascending, in the order of their first nodes.
  std::vector<NodeIndexes> groupsOf(const NodeSet& members) const;

 private:
  std::vector<NodeIndexes> out_;
  std::vector<NodeIndexes> in_;
};

/// The index of every node by its id.
std::unordered_map<std::int64_t, std::size_t> nodeIndexes(const Building& building);

}  // namespace KorvaniTools
