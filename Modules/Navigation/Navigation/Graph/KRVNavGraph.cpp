#include "Navigation/Graph/KRVNavGraph.hpp"

#include <utility>

#include "Navigation/Graph/GraphChanges.hpp"
#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"

namespace KorvaniNavigation {

KRVNavGraph::KRVNavGraph()
    : revision_(std::make_shared<KorvaniCommon::Revision>()), watcher_(nextWatcher()) {
  regions_.reportTo(revision_);
  edges_.reportTo(revision_);
  nodes_.reportTo(revision_);
}

KRVNavGraph::~KRVNavGraph() = default;

void KRVNavGraph::setRegions(Regions regions) { regions_ = std::move(regions); }

void KRVNavGraph::setEdges(Edges edges) { edges_ = std::move(edges); }

void KRVNavGraph::setNodes(Nodes nodes) { nodes_ = std::move(nodes); }

std::shared_ptr<KRVNavPoint> KRVNavGraph::nodeWithIdentifier(std::int64_t identifierNumber) const {
  const auto* node = nodes_.find(identifierNumber);
  return node ? *node : nullptr;
}

std::optional<std::vector<std::int64_t>> KRVNavGraph::neighbourIdentifiersOfNode(
    const KRVNavPoint& node) const {
  return neighbourIdentifiersOfNodeWithIdentifier(node.identifierNumber());
}

std::optional<std::vector<std::int64_t>> KRVNavGraph::neighbourIdentifiersOfNodeWithIdentifier(
    std::int64_t identifierNumber) const {
  const EdgeRow* row = edges_.find(identifierNumber);
  if (!row || row->empty()) return std::nullopt;
  return row->keys();
}

std::shared_ptr<KRVNavEdge> KRVNavGraph::edgeFromNode(const KRVNavPoint& from,
                                                      const KRVNavPoint& toNeighbourNode) const {
  return edgeFromNodeWithIdentifier(from.identifierNumber(), toNeighbourNode.identifierNumber());
}

std::shared_ptr<KRVNavEdge> KRVNavGraph::edgeFromNodeWithIdentifier(
    std::int64_t from, std::int64_t toNeighbourNodeWithIdentifier) const {
  const EdgeRow* row = edges_.find(from);
  const auto* edge = row ? row->find(toNeighbourNodeWithIdentifier) : nullptr;
  return edge ? *edge : nullptr;
}

void KRVNavGraph::addEdge(std::shared_ptr<KRVNavEdge> edge, const KRVNavPoint& fromNode,
                          const KRVNavPoint& toNode) {
  edges_.row(fromNode.identifierNumber()).set(toNode.identifierNumber(), std::move(edge));
}

void KRVNavGraph::add(const std::shared_ptr<KRVNavRegion>& region) {
  region->setGraph(weak_from_this().lock());
  regions_.push_back(region);
}

}  // namespace KorvaniNavigation
