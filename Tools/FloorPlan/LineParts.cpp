#include "FloorPlan/LineParts.hpp"

#include <algorithm>

namespace KorvaniTools {

bool isWalkedOn(ConnectionKind kind) {
  return kind == ConnectionKind::path || kind == ConnectionKind::door ||
         kind == ConnectionKind::ramp || kind == ConnectionKind::travelator;
}

LineParts::LineParts(const PlanGraph& graph, std::int64_t level) {
  for (const PlanGraph::Edge& edge : graph.drawn()) {
    const bool fromHere = graph.nodes()[edge.from].level == level;
    const bool toHere = graph.nodes()[edge.to].level == level;
    if (fromHere) parts_.emplace(edge.from, edge.from);
    if (toHere) parts_.emplace(edge.to, edge.to);
    if (!fromHere || !toHere) continue;
    const auto [low, high] = std::minmax({first(edge.from), first(edge.to)});
    parts_[high] = low;
  }
  for (auto& [node, part] : parts_) part = first(node);
  findAmid(graph);
}

std::size_t LineParts::first(std::size_t node) {
  while (parts_.at(node) != node) node = parts_[node] = parts_.at(parts_.at(node));
  return node;
}

// Where stairs go on as they came, and no floor is drawn.
void LineParts::findAmid(const PlanGraph& graph) {
  std::map<std::size_t, std::size_t> pieces;
  std::set<std::size_t> floor;
  for (const PlanGraph::Edge& edge : graph.drawn()) {
    for (const std::size_t node : {edge.from, edge.to}) {
      if (!parts_.contains(node)) continue;
      if (isWalkedOn(edge.kind)) {
        floor.insert(node);
      } else {
        ++pieces[node];
      }
    }
  }
  for (const auto& [node, count] : pieces) {
    if (count == 2 && !graph.isLineEnd(node) && !floor.contains(node)) amid_.insert(node);
  }
}

}  // namespace KorvaniTools
