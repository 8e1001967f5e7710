#include "Navigation/Localisation/NodeEdges.hpp"

#include <utility>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

NodeEdges::NodeEdges(const KRVNavPoint& node) : node_(node) {
  const auto region = node.region();
  graph_ = region ? region->graph() : nullptr;
  compiled_ = graph_ ? GraphStructure::ready(*graph_) : nullptr;
  if (const auto place = compiled_ ? compiled_->nodeOf(node) : std::nullopt) {
    first_ = compiled_->firstEdge()[*place];
    count_ = compiled_->firstEdge()[*place + 1] - first_;
    return;
  }
  compiled_.reset();
  for (const auto& edge : node.neighbourEdges()) {
    auto end = edge->end();
    // An edge without one is broken beyond repair.
    if (!end) KORVANI_FATAL("an edge of the graph has no end node");
    ends_.push_back(std::move(end));
  }
  count_ = ends_.size();
}

const std::shared_ptr<KRVNavPoint>& NodeEdges::end(std::size_t index) const {
  return compiled_ ? compiled_->points()[compiled_->target()[first_ + index]] : ends_[index];
}

std::optional<double> NodeEdges::lengthIn(const KRVNavGraph& graph, std::size_t index) const {
  if (compiled_ && compiled_->isFiledByEnds() && graph_.get() == &graph) {
    return compiled_->edges()[first_ + index]->distance();
  }
  const auto edge = graph.edgeFromNode(node_, *end(index));
  return edge ? std::optional(edge->distance()) : std::nullopt;
}

}  // namespace KorvaniNavigation
