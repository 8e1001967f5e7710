#include "Navigation/Graph/GraphAccess.hpp"

#include <algorithm>

#include "Navigation/Graph/GraphChanges.hpp"
#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Graph/StripedMutexes.hpp"

namespace KorvaniNavigation {

namespace {

GraphChanges& everybodysChanges() { return graphChanges(WatchFlag::kEverybody); }

}  // namespace

void GraphAccess::watch(const KRVNavObstacle& obstacle) {
  obstacle.isWatched_.set(WatchFlag::kEverybody);
}

void GraphAccess::watch(const KRVNavPoint& point) { point.isWatched_.set(WatchFlag::kEverybody); }

void GraphAccess::watch(const KRVNavEdge& edge, const KRVNavGraph& graph) {
  edge.isWatched_.set(graph.watcher_);
}

void GraphAccess::watch(const KRVNavPoint& point, const KRVNavGraph& graph) {
  point.isWatched_.set(graph.watcher_);
}

void GraphAccess::watch(const KRVNavRegion& region, const KRVNavGraph& graph) {
  region.isWatched_.set(graph.watcher_);
}

GraphAccess::EdgeParts GraphAccess::partsOf(const KRVNavEdge& edge) {
  const std::lock_guard lock(mutexOf(&edge));
  return {edge.start_, edge.end_, edge.type_};
}

bool GraphAccess::hasRegion(const KRVNavPoint& point) {
  const std::lock_guard lock(mutexOf(&point));
  return !point.region_.expired();
}

std::uint32_t GraphAccess::place(const KRVNavPoint& point) {
  return point.place_.load(std::memory_order_relaxed);
}

void GraphAccess::setPlace(const KRVNavPoint& point, std::uint32_t place) {
  point.place_.store(place, std::memory_order_relaxed);
}

const Derived& GraphAccess::derivedOf(const KRVNavGraph& graph) { return graph.derived_; }
const Derived& GraphAccess::derivedOf(const KRVNavRegion& region) { return region.derived_; }

RevisionStamp GraphAccess::structureStamp(const KRVNavGraph& graph) {
  const GraphChanges& own = graphChanges(graph.watcher_);
  const GraphChanges& shared = everybodysChanges();
  return std::max({graph.revision_->stamp(), own.points.stamp(), own.regions.stamp(),
                   own.edgeEnds.stamp(), shared.points.stamp(), shared.regions.stamp(),
                   shared.edgeEnds.stamp()});
}

RevisionStamp GraphAccess::costStamp(const KRVNavGraph& graph) {
  return std::max({structureStamp(graph), graphChanges(graph.watcher_).edgeCosts.stamp(),
                   everybodysChanges().edgeCosts.stamp()});
}

RevisionStamp GraphAccess::nodesStamp(const KRVNavRegion& region) {
  return std::max(region.nodesRevision_->stamp(), everybodysChanges().points.stamp());
}

RevisionStamp GraphAccess::pointsStamp() { return everybodysChanges().points.stamp(); }

RevisionStamp GraphAccess::obstaclesStamp() { return everybodysChanges().obstacles.stamp(); }

}  // namespace KorvaniNavigation
