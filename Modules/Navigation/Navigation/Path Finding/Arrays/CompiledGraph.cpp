#include "Navigation/Path Finding/Arrays/CompiledGraph.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "Navigation/Graph/GraphAccess.hpp"
#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"

namespace KorvaniNavigation {

namespace {

bool belongsTo(const KRVNavGraph& graph, const KRVNavPoint& point) {
  const std::shared_ptr<KRVNavRegion> region = point.region();
  if (!region) return false;
  GraphAccess::watch(*region, graph);
  return region->graph().get() == &graph;
}

// A form that `make(interruption)` makes, or null when it was interrupted.
template <class Form, class Make>
std::shared_ptr<const Form> formUnlessInterrupted(const Derived& derived, RevisionStamp stamp,
                                                  Interruption& interruption, const Make& make) {
  const auto whole = [&] {
    std::shared_ptr<const Form> form = make();
    return interruption.seen() ? nullptr : form;
  };
  return derived.get<Form>(stamp, whole, [&] { return interruption.now(); });
}

}  // namespace

GraphStructure::GraphStructure(const KRVNavGraph& graph, Interruption& interruption)
    : isOrdinary_(addNodes(graph, interruption) && addEdges(graph, interruption)) {}

bool GraphStructure::addNodes(const KRVNavGraph& graph, Interruption& interruption) {
  if (graph.nodes().size() >= std::numeric_limits<std::uint32_t>::max()) return false;
  points_.reserve(graph.nodes().size());
  for (const auto& [number, point] : graph.nodes()) {
    if (!point || interruption.now()) return false;
    GraphAccess::watch(*point, graph);
    if (point->identifier() != number || point->identifierNumber() != number) return false;
    if (!belongsTo(graph, *point)) return false;
    GraphAccess::setPlace(*point, static_cast<std::uint32_t>(points_.size()));
    points_.push_back(point);
  }
  return true;
}

bool GraphStructure::addEdges(const KRVNavGraph& graph, Interruption& interruption) {
  firstEdge_.reserve(points_.size() + 1);
  firstEdge_.push_back(0);
  for (const auto& point : points_) {
    if (interruption.now() || !addRow(graph, *point)) return false;
    firstEdge_.push_back(static_cast<std::uint32_t>(target_.size()));
  }
  return true;
}

bool GraphStructure::addRow(const KRVNavGraph& graph, const KRVNavPoint& point) {
  const auto* row = graph.edges().find(point.identifierNumber());
  if (!row) return true;
  for (const auto& [number, edge] : *row) {
    if (!edge) continue;
    GraphAccess::watch(*edge, graph);
    const std::shared_ptr<KRVNavPoint> end = edge->end();
    const auto node = end ? nodeOf(*end) : std::nullopt;
    if (!node || target_.size() == std::numeric_limits<std::uint32_t>::max()) return false;
    target_.push_back(*node);
    edges_.push_back(edge.get());
    isFiledByEnds_ = isFiledByEnds_ && end->identifierNumber() == number;
  }
  return true;
}

std::shared_ptr<const GraphStructure> GraphStructure::ready(const KRVNavGraph& graph) {
  auto structure =
      GraphAccess::derivedOf(graph).ready<GraphStructure>(GraphAccess::structureStamp(graph));
  return structure && structure->isOrdinary() ? std::move(structure) : nullptr;
}

const KRVNavEdge* GraphStructure::edgeBetween(std::uint32_t from, std::uint32_t to) const {
  for (std::uint32_t edge = firstEdge_[from]; edge != firstEdge_[from + 1]; ++edge) {
    if (target_[edge] == to) return edges_[edge];
  }
  return nullptr;
}

// Few ask for other points than the nodes themselves, and sorting takes as long as all the rest.
void GraphStructure::sortByIdentifier() const {
  byIdentifier_.resize(points_.size());
  for (std::uint32_t node = 0; node < byIdentifier_.size(); ++node) byIdentifier_[node] = node;
  std::sort(byIdentifier_.begin(), byIdentifier_.end(), [this](std::uint32_t a, std::uint32_t b) {
    return points_[a]->identifier() < points_[b]->identifier();
  });
}

std::optional<std::uint32_t> GraphStructure::nodeOf(const KRVNavPoint& point) const {
  const std::uint32_t place = GraphAccess::place(point);
  if (place < points_.size() && points_[place].get() == &point) return place;
  return std::nullopt;
}

std::optional<std::uint32_t> GraphStructure::equalNode(const KRVNavPoint& point) const {
  if (const auto node = nodeOf(point)) return node;
  const std::int64_t identifier = point.identifier();
  if (identifier < 0) return std::nullopt;
  std::call_once(sorted_, [this] { sortByIdentifier(); });
  const auto found = std::lower_bound(byIdentifier_.begin(), byIdentifier_.end(), identifier,
                                      [this](std::uint32_t node, std::int64_t wanted) {
                                        return points_[node]->identifier() < wanted;
                                      });
  if (found == byIdentifier_.end() || points_[*found]->identifier() != identifier) {
    return std::nullopt;
  }
  return *found;
}

std::size_t GraphStructure::bytes() const {
  return sizeof *this + points_.capacity() * sizeof points_[0] +
         (points_.size() + firstEdge_.capacity() + target_.capacity()) * sizeof(std::uint32_t) +
         edges_.capacity() * sizeof(void*);
}

std::shared_ptr<const CompiledGraph> CompiledGraph::of(const KRVNavGraph& graph,
                                                       const std::atomic<bool>& interrupted) {
  Interruption interruption(interrupted);
  const RevisionStamp structureStamp = GraphAccess::structureStamp(graph);
  const RevisionStamp costStamp = GraphAccess::costStamp(graph);
  const Derived& derived = GraphAccess::derivedOf(graph);
  auto structure = formUnlessInterrupted<GraphStructure>(
      derived, structureStamp, interruption,
      [&] { return std::make_shared<const GraphStructure>(graph, interruption); });
  if (!structure) return nullptr;
  auto history =
      derived.get<SearchHistory>(0, [] { return std::make_shared<const SearchHistory>(); });
  return formUnlessInterrupted<CompiledGraph>(derived, costStamp, interruption, [&] {
    return std::make_shared<const CompiledGraph>(std::move(structure), std::move(history),
                                                 interruption);
  });
}

CompiledGraph::CompiledGraph(std::shared_ptr<const GraphStructure> structure,
                             std::shared_ptr<const SearchHistory> history,
                             Interruption& interruption)
    : structure_(std::move(structure)),
      isOrdinary_(structure_->isOrdinary() && readCosts(interruption)),
      arrays_(isOrdinary_
                  ? SearchGraph{structure_->firstEdge(), structure_->target(), cost_, barrierFree_}
                  : SearchGraph()),
      history_(std::move(history)),
      search_(arrays_, *history_) {}

bool CompiledGraph::readCosts(Interruption& interruption) {
  const auto& edges = structure_->edges();
  cost_.reserve(edges.size());
  barrierFree_.reserve(edges.size());
  for (const KRVNavEdge* edge : edges) {
    const double cost = edge->multiplicator() * edge->distance();
    if (!(cost >= 0) || interruption.now()) return false;
    totalCost_ += cost;
    cost_.push_back(cost);
    barrierFree_.push_back(edge->isBarrierFree() ? 1 : 0);
  }
  return std::isfinite(totalCost_);
}

std::size_t CompiledGraph::bytes() const {
  return sizeof *this + structure_->bytes() + cost_.capacity() * sizeof(double) +
         barrierFree_.capacity() + search_.bytes();
}

}  // namespace KorvaniNavigation
