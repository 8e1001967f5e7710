#include "Lint/WalkGraph.hpp"

#include <algorithm>
#include <limits>
#include <map>
#include <utility>

namespace KorvaniTools {
namespace {

constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

/// What lies beyond `starts` along `next`, these included.
template <class Next>
NodeSet spread(const NodeSet& starts, Next next) {
  NodeSet reached = starts;
  NodeIndexes waiting;
  for (std::size_t i = 0; i < starts.size(); ++i) {
    if (starts[i]) waiting.push_back(i);
  }
  while (!waiting.empty()) {
    const std::size_t node = waiting.back();
    waiting.pop_back();
    next(node, [&](std::size_t neighbour) {
      if (reached[neighbour]) return;
      reached[neighbour] = true;
      waiting.push_back(neighbour);
    });
  }
  return reached;
}

/// Tarjan's search for strongly connected groups, with a stack of its own: chains of nodes are
/// longer than a program's stack is deep.
class StrongGroups {
 public:
  explicit StrongGroups(const WalkGraph& graph)
      : graph_(graph),
        order_(graph.size(), kNone),
        lowest_(graph.size(), 0),
        open_(graph.size(), false) {
    for (std::size_t node = 0; node < graph.size(); ++node) {
      if (order_[node] == kNone) visitFrom(node);
    }
  }

  const std::vector<NodeIndexes>& groups() const { return groups_; }

 private:
  struct Visit {
    std::size_t node;
    std::size_t next;  ///< which of the node's neighbours comes next
  };

  void begin(std::size_t node) {
    order_[node] = lowest_[node] = count_++;
    open_[node] = true;
    stack_.push_back(node);
    visits_.push_back({node, 0});
  }

  void visitFrom(std::size_t start) {
    begin(start);
    while (!visits_.empty()) {
      Visit& visit = visits_.back();
      const std::size_t node = visit.node;
      if (visit.next == graph_.after(node).size()) {
        end(node);
        continue;
      }
      const std::size_t neighbour = graph_.after(node)[visit.next++];
      if (order_[neighbour] == kNone) {
        begin(neighbour);
      } else if (open_[neighbour]) {
        lowest_[node] = std::min(lowest_[node], order_[neighbour]);
      }
    }
  }

  void end(std::size_t node) {
    visits_.pop_back();
    if (!visits_.empty()) {
      std::size_t& before = lowest_[visits_.back().node];
      before = std::min(before, lowest_[node]);
    }
    if (lowest_[node] != order_[node]) return;
    const auto first = std::find(stack_.rbegin(), stack_.rend(), node).base() - 1;
    groups_.emplace_back(first, stack_.end());
    stack_.erase(first, stack_.end());
    for (const std::size_t member : groups_.back()) open_[member] = false;
  }

  const WalkGraph& graph_;
  NodeIndexes order_;
  NodeIndexes lowest_;
  NodeSet open_;
  NodeIndexes stack_;
  std::vector<Visit> visits_;
  std::vector<NodeIndexes> groups_;
  std::size_t count_ = 0;
};

}  // namespace

std::unordered_map<std::int64_t, std::size_t> nodeIndexes(const Building& building) {
  std::unordered_map<std::int64_t, std::size_t> indexes;
  indexes.reserve(building.nodes.size());
  for (std::size_t i = 0; i < building.nodes.size(); ++i) indexes.emplace(building.nodes[i].id, i);
  return indexes;
}

WalkGraph::WalkGraph(const Building& building, Edges edges)
    : out_(building.nodes.size()), in_(building.nodes.size()) {
  const auto indexes = nodeIndexes(building);
  std::map<std::pair<std::size_t, std::size_t>, const BuildingEdge*> last;
  for (const BuildingEdge& edge : building.edges) {
    const std::size_t from = indexes.at(edge.from);
    const std::size_t to = indexes.at(edge.to);
    last[{from, to}] = &edge;
    if (!edge.oneway) last[{to, from}] = &edge;
  }
  for (const auto& [ends, edge] : last) {
    if (edges == Edges::barrierFree && !edge->barrierFree) continue;
    out_[ends.first].push_back(ends.second);
    in_[ends.second].push_back(ends.first);
  }
}

NodeSet WalkGraph::mainNetwork() const {
  const StrongGroups strong(*this);
  const NodeIndexes* main = nullptr;
  std::size_t mainFirst = 0;
  for (const NodeIndexes& group : strong.groups()) {
    const std::size_t first = *std::min_element(group.begin(), group.end());
    const bool larger = main == nullptr || group.size() > main->size();
    if (larger || (group.size() == main->size() && first < mainFirst)) {
      main = &group;
      mainFirst = first;
    }
  }
  NodeSet members(size(), false);
  if (main == nullptr) return members;
  for (const std::size_t node : *main) members[node] = true;
  return members;
}

NodeSet WalkGraph::reachedFrom(const NodeSet& starts) const {
  return spread(starts, [this](std::size_t node, const auto& visit) {
    std::for_each(out_[node].begin(), out_[node].end(), visit);
  });
}

NodeSet WalkGraph::leadingTo(const NodeSet& ends) const {
  return spread(ends, [this](std::size_t node, const auto& visit) {
    std::for_each(in_[node].begin(), in_[node].end(), visit);
  });
}

NodeSet WalkGraph::joinedTo(const NodeSet& nodes) const {
  return spread(nodes, [this](std::size_t node, const auto& visit) {
    std::for_each(out_[node].begin(), out_[node].end(), visit);
    std::for_each(in_[node].begin(), in_[node].end(), visit);
  });
}

std::vector<NodeIndexes> WalkGraph::groupsOf(const NodeSet& members) const {
  std::vector<NodeIndexes> groups;
  NodeSet done(size(), false);
  for (std::size_t node = 0; node < size(); ++node) {
    if (!members[node] || done[node]) continue;
    NodeIndexes group;
    NodeIndexes waiting{node};
    done[node] = true;
    const auto visit = [&](std::size_t neighbour) {
      if (!members[neighbour] || done[neighbour]) return;
      done[neighbour] = true;
      waiting.push_back(neighbour);
    };
    while (!waiting.empty()) {
      const std::size_t at = waiting.back();
      waiting.pop_back();
      group.push_back(at);
      std::for_each(out_[at].begin(), out_[at].end(), visit);
      std::for_each(in_[at].begin(), in_[at].end(), visit);
    }
    std::sort(group.begin(), group.end());
    groups.push_back(std::move(group));
  }
  return groups;
}

}  // namespace KorvaniTools
