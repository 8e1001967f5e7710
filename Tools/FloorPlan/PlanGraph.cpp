#include "FloorPlan/PlanGraph.hpp"

#include <algorithm>

namespace KorvaniTools {
std::size_t PlanGraph::addNode(std::int64_t level, GroundPoint at) {
  nodes_.push_back({level, at});
  return nodes_.size() - 1;
}

std::size_t PlanGraph::nodeAt(std::int64_t key, std::int64_t level, GroundPoint at) {
  if (key == 0) return addNode(level, at);
  if (const auto found = findAt(key, level)) return *found;
  const std::size_t node = addNode(level, at);
  name(key, level, node);
  return node;
}

std::optional<std::size_t> PlanGraph::findAt(std::int64_t key, std::int64_t level) const {
  const auto found = key == 0 ? keys_.end() : keys_.find({key, level});
  return found == keys_.end() ? std::nullopt : std::optional(found->second);
}

void PlanGraph::name(std::int64_t key, std::int64_t level, std::size_t node) {
  if (key != 0) keys_.emplace(std::pair(key, level), node);
}

bool PlanGraph::addDrawn(const Edge& edge) {
  const bool turned = !edge.oneway && edge.to < edge.from;
  const std::size_t low = turned ? edge.to : edge.from;
  const std::size_t high = turned ? edge.from : edge.to;
  if (!drawnOnce_.emplace(low, high, edge.kind, edge.oneway).second) return false;
  joined_.insert(std::minmax(edge.from, edge.to));
  drawn_.push_back(edge);
  used_.insert(edge.from);
  used_.insert(edge.to);
  return true;
}

std::size_t PlanGraph::stopOn(std::size_t drawn, double share) {
  const Edge& edge = drawn_[drawn];
  const GroundPoint at = between(nodes_[edge.from].at, nodes_[edge.to].at, share);
  for (const std::size_t stop : stopsOf(drawn)) {
    if (groundDistance(nodes_[stop].at, at) <= kSameSpot) return stop;
  }
  const std::size_t node = addNode(nodes_[edge.from].level, at);
  stops_[drawn].emplace(share, node);
  used_.insert(node);
  return node;
}

std::size_t PlanGraph::stopAt(std::size_t drawn, double share, std::size_t node) {
  for (const std::size_t stop : stopsOf(drawn)) {
    if (groundDistance(nodes_[stop].at, nodes_[node].at) <= kSameSpot) return stop;
  }
  stops_[drawn].emplace(share, node);
  used_.insert(node);
  return node;
}

std::vector<std::size_t> PlanGraph::stopsOf(std::size_t drawn) const {
  std::vector<std::size_t> result{drawn_[drawn].from};
  const auto stops = stops_.find(drawn);
  if (stops != stops_.end()) {
    for (const auto& [share, node] : stops->second) result.push_back(node);
  }
  result.push_back(drawn_[drawn].to);
  return result;
}

void PlanGraph::addMade(const Edge& edge) {
  if (edge.from == edge.to) return;
  if (!joined_.insert(std::minmax(edge.from, edge.to)).second) return;
  made_.push_back(edge);
  used_.insert(edge.from);
  used_.insert(edge.to);
}

std::vector<PlanGraph::Edge> PlanGraph::edges() const {
  std::vector<Edge> result;
  std::set<std::pair<std::size_t, std::size_t>> pieces;
  for (std::size_t i = 0; i < drawn_.size(); ++i) {
    const std::vector<std::size_t> stops = stopsOf(i);
    for (std::size_t k = 0; k + 1 < stops.size(); ++k) {
      Edge piece = drawn_[i];
      piece.from = stops[k];
      piece.to = stops[k + 1];
      result.push_back(piece);
      pieces.insert(std::minmax(stops[k], stops[k + 1]));
    }
  }
  for (const Edge& edge : made_) {
    if (!pieces.contains(std::minmax(edge.from, edge.to))) result.push_back(edge);
  }
  return result;
}

bool PlanGraph::hasEdges(std::size_t node) const { return used_.contains(node); }

}  // namespace KorvaniTools
