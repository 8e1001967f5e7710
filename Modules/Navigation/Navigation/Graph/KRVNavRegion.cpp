#include "Navigation/Graph/KRVNavRegion.hpp"

#include <utility>

#include "Navigation/Graph/GraphChanges.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/StripedMutexes.hpp"

namespace KorvaniNavigation {

KRVNavRegion::KRVNavRegion(std::int64_t level)
    : level_(level), nodesRevision_(std::make_shared<KorvaniCommon::Revision>()) {
  nodes_.reportTo(nodesRevision_);
}

// Its points belong to no region from now on, and nobody sets that.
KRVNavRegion::~KRVNavRegion() { noteChange(isWatched_, &GraphChanges::regions); }

void KRVNavRegion::setNodes(Nodes nodes) { nodes_ = std::move(nodes); }

void KRVNavRegion::setObstacles(Obstacles obstacles) { obstacles_ = std::move(obstacles); }

std::shared_ptr<KRVNavGraph> KRVNavRegion::graph() const {
  return readGuarded(this, graph_).lock();
}

void KRVNavRegion::setGraph(const std::shared_ptr<KRVNavGraph>& graph) {
  writeGuarded(this, graph_, std::weak_ptr<KRVNavGraph>(graph));
  noteChange(isWatched_, &GraphChanges::regions);
}

void KRVNavRegion::addNode(const std::shared_ptr<KRVNavPoint>& point) {
  point->setRegion(weak_from_this().lock());
  nodes_.set(point->identifierNumber(), point);
  if (const std::shared_ptr<KRVNavGraph> owner = graph()) {
    owner->nodes().set(point->identifierNumber(), point);
  }
}

void KRVNavRegion::addObstacle(std::shared_ptr<KRVNavObstacle> obstacle) {
  obstacles_.push_back(std::move(obstacle));
}

}  // namespace KorvaniNavigation
