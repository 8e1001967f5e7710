#include "Navigation/Routing/RouteGraph.hpp"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"

namespace KorvaniNavigation {

namespace {

class RouteGraphBuilder {
 public:
  RouteGraphBuilder(const std::vector<NotedPoint>& ends, const std::vector<RouteLevel>& levels)
      : ends_(ends), levels_(levels), graph_(std::make_shared<KRVNavGraph>()) {}

  std::shared_ptr<KRVNavGraph> build(const StepsView& steps) {
    for (std::size_t i = 0; i < steps.size(); ++i) {
      addNode(ends_[2 * i]);
      if (i + 1 == steps.size()) addNode(ends_[2 * i + 1]);
      addEdge(steps[i], ends_[2 * i], ends_[2 * i + 1]);
    }
    return std::move(graph_);
  }

 private:
  void addNode(const NotedPoint& end) { regionAt(end.level)->addNode(copyOf(end)); }

  void addEdge(const Step& step, const NotedPoint& from, const NotedPoint& to) {
    const auto start = copyOf(from);
    const auto end = copyOf(to);
    const auto edge =
        std::make_shared<KRVNavEdge>(start, end, step.distance(), step.timeMultiplicator(),
                                     step.barrierFree(), step.neighborType());
    graph_->addEdge(edge, *start, *end);
  }

  /// Made with the building's walls when the level is met for the first time.
  std::shared_ptr<KRVNavRegion> regionAt(std::int64_t level) {
    auto& region = regions_[level];
    if (region) return region;
    region = std::make_shared<KRVNavRegion>(level);
    graph_->add(region);
    const auto noted = std::find_if(levels_.begin(), levels_.end(),
                                    [&](const RouteLevel& known) { return known.level == level; });
    if (noted != levels_.end()) region->setObstacles(noted->obstacles);
    return region;
  }

  std::shared_ptr<KRVNavPoint> copyOf(const NotedPoint& end) {
    auto& copy = copies_[end.object];
    if (!copy) {
      copy = std::make_shared<KRVNavPoint>(end.coordinate, end.level,
                                           end.hasIdentifier() ? end.identifier : nextIdentifier_);
      if (!end.hasIdentifier()) --nextIdentifier_;
    }
    return copy;
  }

  const std::vector<NotedPoint>& ends_;
  const std::vector<RouteLevel>& levels_;
  std::shared_ptr<KRVNavGraph> graph_;
  std::unordered_map<std::int64_t, std::shared_ptr<KRVNavRegion>> regions_;
  std::unordered_map<const KRVNavPoint*, std::shared_ptr<KRVNavPoint>> copies_;
  std::int64_t nextIdentifier_ = kFirstOwnIdentifier;
};

}  // namespace

std::shared_ptr<KRVNavGraph> buildRouteGraph(const StepsView& steps,
                                             const std::vector<NotedPoint>& ends,
                                             const std::vector<RouteLevel>& levels) {
  return RouteGraphBuilder(ends, levels).build(steps);
}

}  // namespace KorvaniNavigation
