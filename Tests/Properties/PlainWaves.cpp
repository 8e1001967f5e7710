#include "PlainWaves.hpp"

#include <algorithm>
#include <memory>
#include <vector>

namespace KorvaniTest {

using KorvaniNavigation::FoundPath;
using KorvaniNavigation::SearchGraph;
using KorvaniNavigation::SearchQuery;
using KorvaniNavigation::StartNode;

namespace {

class PlainWaveSearch {
 public:
  PlainWaveSearch(const SearchGraph& graph, const SearchQuery& query)
      : graph_(graph), query_(query), paths_(graph.nodeCount()) {}

  std::optional<FoundPath> find() {
    std::vector<std::uint32_t> nodesToCheck;
    for (const StartNode& start : query_.starts) {
      paths_[start.node] = std::make_shared<FoundPath>(FoundPath{{start.node}, start.distance});
      nodesToCheck.push_back(start.node);
    }
    while (!nodesToCheck.empty()) nodesToCheck = wave(nodesToCheck);
    if (!best_) return std::nullopt;
    return *best_;
  }

 private:
  bool isTarget(std::uint32_t node) const {
    return std::find(query_.targets.begin(), query_.targets.end(), node) != query_.targets.end();
  }

  std::vector<std::uint32_t> wave(const std::vector<std::uint32_t>& nodesToCheck) {
    std::vector<std::uint32_t> next;
    for (const std::uint32_t node : nodesToCheck) {
      if (isTarget(node)) continue;
      for (std::uint32_t edge = graph_.firstEdge[node]; edge < graph_.firstEdge[node + 1]; ++edge) {
        if (!query_.barrierFree || graph_.barrierFree[edge] != 0) relax(node, edge, next);
      }
    }
    return next;
  }

  void relax(std::uint32_t node, std::uint32_t edge, std::vector<std::uint32_t>& next) {
    const std::uint32_t end = graph_.target[edge];
    const double cost = graph_.cost[edge] + paths_[node]->cost;
    if (paths_[end] && !(cost < paths_[end]->cost)) return;
    const auto path = std::make_shared<FoundPath>(FoundPath{paths_[node]->nodes, cost});
    path->nodes.push_back(end);
    if (std::find(next.begin(), next.end(), end) == next.end()) next.push_back(end);
    paths_[end] = path;
    if (isTarget(end) && (!best_ || cost < best_->cost)) best_ = path;
  }

  const SearchGraph& graph_;
  const SearchQuery& query_;
  std::vector<std::shared_ptr<const FoundPath>> paths_;
  std::shared_ptr<const FoundPath> best_;
};

}  // namespace

std::optional<FoundPath> plainWaves(const SearchGraph& graph, const SearchQuery& query) {
  return PlainWaveSearch(graph, query).find();
}

}  // namespace KorvaniTest
