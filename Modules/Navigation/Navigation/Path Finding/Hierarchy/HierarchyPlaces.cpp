#include "Navigation/Path Finding/Hierarchy/HierarchyPlaces.hpp"

#include <algorithm>
#include <limits>

namespace KorvaniNavigation {

namespace {

constexpr std::uint32_t kNoEdge = std::numeric_limits<std::uint32_t>::max();

}  // namespace

HierarchyPlaces::HierarchyPlaces(const SearchGraph& graph, bool barrierFree, const ZeroLinks& links,
                                 const std::vector<std::uint32_t>& rankOf)
    : graph_(graph), barrierFree_(barrierFree), next_(links.nextOf()) {
  placeOf_.reserve(next_.size());
  for (const std::uint32_t place : links.placeOf()) placeOf_.push_back(rankOf[place]);
  only_.assign(links.placeCount(), kSeveral);
  for (std::uint32_t node = 0; node < next_.size(); ++node) {
    if (next_[node] == node) only_[placeOf_[node]] = node;
  }
}

std::uint32_t HierarchyPlaces::cheapestEdge(std::uint32_t node, std::uint32_t place) const {
  std::uint32_t cheapest = kNoEdge;
  for (std::uint32_t edge = graph_.firstEdge[node]; edge != graph_.firstEdge[node + 1]; ++edge) {
    if (placeOf_[graph_.target[edge]] != place || !usable(edge)) continue;
    if (cheapest == kNoEdge || graph_.cost[edge] < graph_.cost[cheapest]) cheapest = edge;
  }
  return cheapest;
}

void HierarchyPlaces::walkOut(std::uint32_t place, std::vector<std::uint32_t>& nodes) const {
  const std::uint32_t from = nodes.back();
  std::uint32_t exit = from;
  std::uint32_t cheapest = cheapestEdge(from, place);
  for (std::uint32_t node = next_[from]; node != from; node = next_[node]) {
    const std::uint32_t edge = cheapestEdge(node, place);
    if (edge == kNoEdge) continue;
    if (cheapest != kNoEdge && !(graph_.cost[edge] < graph_.cost[cheapest])) continue;
    cheapest = edge;
    exit = node;
  }
  if (exit != from) walkInside(exit, nodes);
  nodes.push_back(graph_.target[cheapest]);
}

// Depth first through the tree of links; from the last node of `nodes`, which stays as it is when
// the goal is not found.
bool HierarchyPlaces::walkInside(std::uint32_t goal, std::vector<std::uint32_t>& nodes) const {
  const std::uint32_t node = nodes.back();
  if (node == goal) return true;
  const std::uint32_t before = nodes.size() > 1 ? nodes[nodes.size() - 2] : node;
  for (std::uint32_t edge = graph_.firstEdge[node]; edge != graph_.firstEdge[node + 1]; ++edge) {
    const std::uint32_t to = graph_.target[edge];
    const bool inside = graph_.cost[edge] == 0 && placeOf_[to] == placeOf_[node] && usable(edge);
    if (!inside || to == node || to == before) continue;
    nodes.push_back(to);
    if (walkInside(goal, nodes)) return true;
    nodes.pop_back();
  }
  return false;
}

bool HierarchyPlaces::walkToTarget(std::span<const std::uint32_t> targets,
                                   std::span<const std::uint32_t> ignored, FoundPath& path) const {
  const std::size_t entry = path.nodes.size();
  const std::uint32_t place = placeOf_[path.nodes.back()];
  if (only_[place] != kSeveral) return true;
  const auto isTarget = [&](std::uint32_t node) {
    return std::find(targets.begin(), targets.end(), node) != targets.end() &&
           std::find(ignored.begin(), ignored.end(), node) == ignored.end();
  };
  std::vector<std::uint32_t> best;
  for (const std::uint32_t target : targets) {
    if (placeOf_[target] != place || !isTarget(target)) continue;
    std::vector<std::uint32_t> nodes(path.nodes.end() - 1, path.nodes.end());
    walkInside(target, nodes);
    nodes.erase(std::find_if(nodes.begin(), nodes.end(), isTarget) + 1, nodes.end());
    if (!best.empty() && nodes.back() != best.back()) return false;
    best = std::move(nodes);
  }
  path.nodes.resize(entry - 1);
  path.nodes.insert(path.nodes.end(), best.begin(), best.end());
  return true;
}

double HierarchyPlaces::stepCost(std::uint32_t from, std::uint32_t to) const {
  double least = std::numeric_limits<double>::infinity();
  for (std::uint32_t edge = graph_.firstEdge[from]; edge != graph_.firstEdge[from + 1]; ++edge) {
    if (graph_.target[edge] == to && usable(edge)) least = std::min(least, graph_.cost[edge]);
  }
  return least;
}

std::size_t HierarchyPlaces::memory() const {
  return (placeOf_.capacity() + next_.capacity() + only_.capacity()) * sizeof(std::uint32_t);
}

}  // namespace KorvaniNavigation
