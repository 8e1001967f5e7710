#include "Navigation/Routing/RouteGraph.hpp"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Localisation/RegionFinder.hpp"
#include "Navigation/Routing/Route.hpp"

namespace KorvaniNavigation {

namespace {

using End = RouteGraphOnDemand::End;
using Level = RouteGraphOnDemand::Level;

End endAt(const KRVNavPoint& point) {
  return {&point, point.coordinate(), point.level(), point.identifier()};
}

std::vector<End> endsOf(const std::vector<Step>& steps) {
  std::vector<End> ends;
  ends.reserve(2 * steps.size());
  for (const Step& step : steps) {
    ends.push_back(endAt(*step.start()));
    ends.push_back(endAt(*step.end()));
  }
  return ends;
}

/// The levels in the order in which the route comes to them, each with the walls around the point
/// where it does. The points are the starts of the steps and the end of the last one.
std::vector<Level> levelsOf(const std::vector<End>& ends,
                            const std::weak_ptr<ConfigDependents>& configuration) {
  const auto finder = std::make_shared<RegionFinder>(configuration);
  finder->updateRegions();
  std::vector<Level> levels;
  for (std::size_t i = 0; i < ends.size(); i += i + 2 == ends.size() ? 1 : 2) {
    const End& end = ends[i];
    const bool isKnown = std::any_of(levels.begin(), levels.end(),
                                     [&](const Level& level) { return level.level == end.level; });
    if (isKnown) continue;
    const auto region = finder->findRegionFor(end.coordinate, end.level, true);
    levels.push_back(
        {end.level, region ? std::as_const(*region).obstacles() : KRVNavRegion::Obstacles()});
  }
  return levels;
}

class RouteGraphBuilder {
 public:
  RouteGraphBuilder(const std::vector<End>& ends, const std::vector<Level>& levels)
      : ends_(ends), levels_(levels), graph_(std::make_shared<KRVNavGraph>()) {}

  std::shared_ptr<KRVNavGraph> build(const std::vector<Step>& steps) {
    for (std::size_t i = 0; i < steps.size(); ++i) {
      addNode(ends_[2 * i]);
      if (i + 1 == steps.size()) addNode(ends_[2 * i + 1]);
      addEdge(steps[i], ends_[2 * i], ends_[2 * i + 1]);
    }
    return std::move(graph_);
  }

 private:
  void addNode(const End& end) { regionAt(end.level)->addNode(copyOf(end)); }

  void addEdge(const Step& step, const End& from, const End& to) {
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
                                    [&](const Level& known) { return known.level == level; });
    if (noted != levels_.end()) region->setObstacles(noted->obstacles);
    return region;
  }

  std::shared_ptr<KRVNavPoint> copyOf(const End& end) {
    auto& copy = copies_[end.point];
    if (!copy) {
      const bool hasIdentifier = end.identifier >= 0;
      copy = std::make_shared<KRVNavPoint>(end.coordinate, end.level,
                                           hasIdentifier ? end.identifier : nextIdentifier_);
      if (!hasIdentifier) --nextIdentifier_;
    }
    return copy;
  }

  const std::vector<End>& ends_;
  const std::vector<Level>& levels_;
  std::shared_ptr<KRVNavGraph> graph_;
  std::unordered_map<std::int64_t, std::shared_ptr<KRVNavRegion>> regions_;
  std::unordered_map<const KRVNavPoint*, std::shared_ptr<KRVNavPoint>> copies_;
  std::int64_t nextIdentifier_ = -2;
};

}  // namespace

std::shared_ptr<KRVNavGraph> buildRouteGraph(const Route& route,
                                             const std::weak_ptr<ConfigDependents>& configuration) {
  const std::vector<End> ends = endsOf(route.steps());
  return RouteGraphBuilder(ends, levelsOf(ends, configuration)).build(route.steps());
}

RouteGraphOnDemand::RouteGraphOnDemand(std::shared_ptr<const Route> route,
                                       const std::weak_ptr<ConfigDependents>& configuration)
    : route_(std::move(route)),
      ends_(endsOf(route_->steps())),
      levels_(levelsOf(ends_, configuration)) {}

std::shared_ptr<KRVNavGraph> RouteGraphOnDemand::graph() const {
  const std::lock_guard lock(building_);
  if (!graph_) graph_ = RouteGraphBuilder(ends_, levels_).build(route_->steps());
  return graph_;
}

}  // namespace KorvaniNavigation
