#include "Navigation/Graph/GraphAccess.hpp"

#include <algorithm>

#include "Navigation/Graph/GraphChanges.hpp"
#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"

namespace KorvaniNavigation {

void GraphAccess::watch(const KRVNavEdge& edge) { edge.isWatched_.set(); }
void GraphAccess::watch(const KRVNavObstacle& obstacle) { obstacle.isWatched_.set(); }
void GraphAccess::watch(const KRVNavPoint& point) { point.isWatched_.set(); }
void GraphAccess::watch(const KRVNavRegion& region) { region.isWatched_.set(); }

std::uint32_t GraphAccess::place(const KRVNavPoint& point) {
  return point.place_.load(std::memory_order_relaxed);
}

void GraphAccess::setPlace(const KRVNavPoint& point, std::uint32_t place) {
  point.place_.store(place, std::memory_order_relaxed);
}

const Derived& GraphAccess::derivedOf(const KRVNavGraph& graph) { return graph.derived_; }
const Derived& GraphAccess::derivedOf(const KRVNavRegion& region) { return region.derived_; }

RevisionStamp GraphAccess::structureStamp(const KRVNavGraph& graph) {
  const GraphChanges& changes = graphChanges();
  return std::max({graph.revision_->stamp(), changes.points.stamp(), changes.regions.stamp(),
                   changes.edgeEnds.stamp()});
}

RevisionStamp GraphAccess::costStamp(const KRVNavGraph& graph) {
  return std::max(structureStamp(graph), graphChanges().edgeCosts.stamp());
}

RevisionStamp GraphAccess::nodesStamp(const KRVNavRegion& region) {
  return std::max(region.nodesRevision_->stamp(), graphChanges().points.stamp());
}

RevisionStamp GraphAccess::pointsStamp() { return graphChanges().points.stamp(); }

RevisionStamp GraphAccess::obstaclesStamp() { return graphChanges().obstacles.stamp(); }

}  // namespace KorvaniNavigation
