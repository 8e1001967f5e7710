#include "FloorPlan/LevelLines.hpp"

#include <algorithm>

namespace KorvaniTools {

LevelLines::LevelLines(const PlanGraph& graph, std::int64_t level, const Geos& geos)
    : graph_(graph), index_(geos) {
  for (std::size_t i = 0; i < graph.drawn().size(); ++i) {
    const PlanGraph::Node& from = graph.nodes()[graph.drawn()[i].from];
    const PlanGraph::Node& to = graph.nodes()[graph.drawn()[i].to];
    if (from.level == level && to.level == level) index_.insert(i, from.at, to.at);
  }
}

std::vector<LevelLines::Spot> LevelLines::near(GroundPoint at, double distance) const {
  std::vector<Spot> spots;
  for (const std::size_t i : index_.near(at, at, distance)) {
    const GroundPoint a = graph_.nodes()[graph_.drawn()[i].from].at;
    const GroundPoint b = graph_.nodes()[graph_.drawn()[i].to].at;
    const double share = nearestShare(at, a, b);
    const double away = groundDistance(at, between(a, b, share));
    if (away <= distance) spots.push_back({away, i, share});
  }
  std::stable_sort(spots.begin(), spots.end(),
                   [](const Spot& a, const Spot& b) { return a.distance < b.distance; });
  return spots;
}

}  // namespace KorvaniTools
