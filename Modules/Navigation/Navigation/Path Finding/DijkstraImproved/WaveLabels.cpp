#include "Navigation/Path Finding/DijkstraImproved/WaveLabels.hpp"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

// The points that a wave improves, each once however many edges improve it.
struct WaveLabels::Wave {
  explicit Wave(PointSet::Telling telling) : members(telling) {}

  Points points;
  PointSet members;

  void add(const std::shared_ptr<KRVNavPoint>& point) {
    if (members.insert(*point)) points.push_back(point);
  }
};

WaveLabels::CompiledEdges::CompiledEdges(const CompiledGraph& compiled, Interruption& interruption)
    : graph(compiled) {
  const auto& points = compiled.structure().points();
  nodes.reserve(points.size());
  for (std::uint32_t node = 0; node < points.size(); ++node) {
    if (interruption.now()) return;
    nodes[points[node].get()] = node;
  }
}

void WaveLabels::addStart(const std::shared_ptr<KRVNavPoint>& point, double distance) {
  appendPath({point, std::nullopt, distance});
  nodesToCheck_.push_back(point);
}

// An interruption between two waves is for the next one to see: it gives up. Stopping here instead
// would hand out a best path that need not be the cheapest.
bool WaveLabels::run(const Rules& rules) {
  while (!nodesToCheck_.empty()) {
    if (!wave(rules)) return false;
  }
  return true;
}

bool WaveLabels::wave(const Rules& rules) {
  Interruption interruption(rules.interrupted);
  Wave next(rules.compiled ? PointSet::Telling::objects : PointSet::Telling::equality);
  for (const auto& point : nodesToCheck_) {
    if (interruption.now()) break;
    if (rules.destinations.contains(*point)) continue;
    if (rules.compiled) {
      expandInArrays(*point, rules, interruption, next);
    } else {
      expand(*point, rules, interruption, next);
    }
  }
  if (interruption.now()) {
    giveUp();
    return false;
  }
  nodesToCheck_ = std::move(next.points);
  return true;
}

void WaveLabels::giveUp() {
  bestPath_.reset();
  nodesToCheck_.clear();
}

void WaveLabels::expand(const KRVNavPoint& point, const Rules& rules, Interruption& interruption,
                        Wave& next) {
  for (const auto& edge : point.neighbourEdges()) {
    if (interruption.now()) return;
    if (rules.lookForBarrierFreeRoute && !edge->isBarrierFree()) continue;
    const std::shared_ptr<KRVNavPoint> end = edge->end();
    if (!end) KORVANI_FATAL("an edge of the graph has no end node");
    relax(point, end, edge->multiplicator() * edge->distance(), rules, next);
  }
}

void WaveLabels::expandInArrays(const KRVNavPoint& point, const Rules& rules,
                                Interruption& interruption, Wave& next) {
  const GraphStructure& structure = rules.compiled->graph.structure();
  const SearchGraph& graph = rules.compiled->graph.arrays();
  const std::uint32_t node = rules.compiled->nodes.at(&point);
  for (std::uint32_t edge = graph.firstEdge[node]; edge < graph.firstEdge[node + 1]; ++edge) {
    if (interruption.now()) return;
    if (rules.lookForBarrierFreeRoute && graph.barrierFree[edge] == 0) continue;
    relax(point, structure.points()[graph.target[edge]], graph.cost[edge], rules, next);
  }
}

void WaveLabels::relax(const KRVNavPoint& point, const std::shared_ptr<KRVNavPoint>& end,
                       double cost, const Rules& rules, Wave& next) {
  const std::optional<PathIndex> old = find(*end);
  const std::optional<PathIndex> current = find(point);
  if (!current) KORVANI_FATAL("Point to check without label");
  const double distance = cost + paths_[*current].distance;
  if (old && !(distance < paths_[*old].distance)) return;  // written so that NaN never improves
  next.add(end);
  const PathIndex candidate = appendPath({end, current, distance});
  if (!rules.destinations.contains(*end)) return;
  if (!bestPath_ || distance < paths_[*bestPath_].distance) bestPath_ = candidate;
}

void WaveLabels::clear() {
  pathStore_.clear();
  nodesToCheck_.clear();
  bestPath_.reset();
  paths_.clear();  // last: keys of the store are addresses of points that these entries hold
}

std::optional<WaveLabels::Path> WaveLabels::bestPath() const {
  if (!bestPath_) return std::nullopt;
  return spelledOut(*bestPath_);
}

std::optional<WaveLabels::Path> WaveLabels::pathTo(const KRVNavPoint& point) const {
  const std::optional<PathIndex> index = find(point);
  if (!index) return std::nullopt;
  return spelledOut(*index);
}

WaveLabels::PathIndex WaveLabels::appendPath(PathEnd path) {
  const PathIndex index = paths_.size();
  pathStore_[path.node.get()] = index;
  paths_.push_back(std::move(path));
  return index;
}

std::optional<WaveLabels::PathIndex> WaveLabels::find(const KRVNavPoint& point) const {
  const auto found = pathStore_.find(&point);
  if (found == pathStore_.end()) return std::nullopt;
  return found->second;
}

WaveLabels::Path WaveLabels::spelledOut(PathIndex index) const {
  Path path;
  path.distance = paths_[index].distance;
  for (std::optional<PathIndex> at = index; at; at = paths_[*at].before) {
    path.nodes.push_back(paths_[*at].node);
  }
  std::reverse(path.nodes.begin(), path.nodes.end());
  return path;
}

}  // namespace KorvaniNavigation
