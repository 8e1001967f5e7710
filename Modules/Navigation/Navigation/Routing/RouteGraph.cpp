#include "Navigation/Routing/RouteGraph.hpp"

#include <cstdint>
#include <map>
#include <unordered_map>
#include <utility>

#include "Navigation/Graph/GraphSource.hpp"
#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Localisation/RegionFinder.hpp"
#include "Navigation/Routing/Route.hpp"

namespace KorvaniNavigation {

namespace {

class RouteGraphBuilder {
 public:
  RouteGraphBuilder(const std::weak_ptr<ConfigDependents>& configuration,
                    RegionFinder::Regions regions)
      : regionFinder_(std::make_shared<RegionFinder>(configuration)),
        graph_(std::make_shared<KRVNavGraph>()) {
    regionFinder_->setRegions(std::move(regions));
  }

  std::shared_ptr<KRVNavGraph> build(const std::vector<Step>& steps) {
    for (std::size_t i = 0; i < steps.size(); ++i) {
      const Step& step = steps[i];
      addNode(*step.start());
      if (i + 1 == steps.size()) addNode(*step.end());
      addEdge(step);
    }
    return std::move(graph_);
  }

 private:
  void addNode(const KRVNavPoint& point) { regionAt(point)->addNode(copyOf(point)); }

  void addEdge(const Step& step) {
    const auto start = copyOf(*step.start());
    const auto end = copyOf(*step.end());
    const auto edge =
        std::make_shared<KRVNavEdge>(start, end, step.distance(), step.timeMultiplicator(),
                                     step.barrierFree(), step.neighborType());
    graph_->addEdge(edge, *start, *end);
  }

  /// The region of the point's level, made with the building's walls around the point when the
  /// level is met for the first time.
  std::shared_ptr<KRVNavRegion> regionAt(const KRVNavPoint& point) {
    auto& region = regions_[point.level()];
    if (region) return region;
    region = std::make_shared<KRVNavRegion>(point.level());
    graph_->add(region);
    const auto source = regionFinder_->findRegionFor(point.coordinate(), point.level(), true);
    if (source) region->setObstacles(std::as_const(*source).obstacles());
    return region;
  }

  std::shared_ptr<KRVNavPoint> copyOf(const KRVNavPoint& point) {
    auto& copy = copies_[&point];
    if (!copy) {
      const bool hasIdentifier = point.identifier() >= 0;
      copy = std::make_shared<KRVNavPoint>(point.coordinate(), point.level(),
                                           hasIdentifier ? point.identifier() : nextIdentifier_);
      if (!hasIdentifier) --nextIdentifier_;
    }
    return copy;
  }

  std::shared_ptr<RegionFinder> regionFinder_;
  std::shared_ptr<KRVNavGraph> graph_;
  std::map<std::int64_t, std::shared_ptr<KRVNavRegion>> regions_;
  std::unordered_map<const KRVNavPoint*, std::shared_ptr<KRVNavPoint>> copies_;
  std::int64_t nextIdentifier_ = -2;
};

RegionFinder::Regions regionsOfBuilding() {
  const auto building = graphSource().graph();
  return building ? std::as_const(*building).regions() : RegionFinder::Regions();
}

}  // namespace

std::shared_ptr<KRVNavGraph> buildRouteGraph(const Route& route,
                                             const std::weak_ptr<ConfigDependents>& configuration) {
  return RouteGraphBuilder(configuration, regionsOfBuilding()).build(route.steps());
}

RouteGraphOnDemand::RouteGraphOnDemand(std::shared_ptr<const Route> route,
                                       std::weak_ptr<ConfigDependents> configuration)
    : route_(std::move(route)),
      configuration_(std::move(configuration)),
      regions_(regionsOfBuilding()) {}

std::shared_ptr<KRVNavGraph> RouteGraphOnDemand::graph() const {
  const std::lock_guard lock(building_);
  if (!graph_) graph_ = RouteGraphBuilder(configuration_, regions_).build(route_->steps());
  return graph_;
}

}  // namespace KorvaniNavigation
