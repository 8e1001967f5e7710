#include "Navigation/Path Finding/DijkstraImproved/ArraySearch.hpp"

#include <cmath>
#include <cstddef>
#include <utility>

#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Path Finding/Arrays/PathSearch.hpp"

namespace KorvaniNavigation {

namespace {

/// The graph whose edges a search from the point follows, in arrays; null where it has none, and
/// when it was to be made and that was interrupted.
std::shared_ptr<const CompiledGraph> compiledGraphAround(const KRVNavPoint& point,
                                                         const std::atomic<bool>& interrupted) {
  const auto region = point.region();
  const auto graph = region ? region->graph() : nullptr;
  if (!graph) return nullptr;
  auto compiled = CompiledGraph::of(*graph, interrupted);
  return compiled && compiled->isOrdinary() ? std::move(compiled) : nullptr;
}

}  // namespace

std::unique_ptr<ArraySearch> ArraySearch::prepare(const Points& starts,
                                                  const std::vector<double>& distances,
                                                  const Points& destinations, bool barrierFree,
                                                  const std::atomic<bool>& interrupted) {
  if (starts.empty()) return nullptr;
  auto search = std::make_unique<ArraySearch>();
  search->compiled = compiledGraphAround(*starts.front(), interrupted);
  if (!search->compiled) return nullptr;
  search->barrierFree = barrierFree;
  const GraphStructure& structure = search->compiled->structure();
  search->starts.reserve(starts.size());
  for (std::size_t i = 0; i < starts.size(); ++i) {
    const auto node = structure.nodeOf(*starts[i]);
    if (!node || !(distances[i] >= 0)) return nullptr;
    if (!std::isfinite(distances[i] + search->compiled->totalCost())) return nullptr;
    search->starts.push_back({*node, distances[i]});
  }
  search->targets.reserve(destinations.size());
  for (const auto& destination : destinations) {
    if (const auto node = structure.equalNode(*destination)) search->targets.push_back(*node);
  }
  return search;
}

void ArraySearch::run(const std::atomic<bool>& interrupted) {
  path = compiled->search().find({starts, targets, barrierFree, interrupted});
  wasInterrupted = !path && interrupted;
}

void ArraySearch::add(Successor successor) {
  if (successor.hasBegun) path.reset();
  successors.push_back(std::move(successor));
}

std::optional<PointPath> ArraySearch::bestPath() const {
  if (!path) return std::nullopt;
  PointPath way;
  way.nodes.reserve(path->nodes.size());
  for (const std::uint32_t node : path->nodes)
    way.nodes.push_back(compiled->structure().points()[node]);
  way.distance = path->cost;
  return way;
}

}  // namespace KorvaniNavigation
