#include "Navigation/Path Finding/KRVNavDijkstra.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <unordered_set>
#include <utility>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"

namespace KorvaniNavigation {

namespace {

constexpr std::int64_t kUnreached = -1;

// The marker is a number among the distances and told by its value alone. A distance of exactly -1
// is therefore taken for it; no edge and no start has one in practice.
bool isUnreached(double distance) { return distance == static_cast<double>(kUnreached); }

// What is not a number comes last, so that the order of the nodes does not decide what it spoils.
bool isSmaller(double distance, double other) {
  return distance < other || (std::isnan(other) && !std::isnan(distance));
}

}  // namespace

KRVNavDijkstra::KRVNavDijkstra() = default;

KRVNavDijkstra::~KRVNavDijkstra() = default;

// The barrier-free argument and the property of that name are both left unread: the hosts of this
// search get the ways that they always got.
KRVNavDijkstra::Points KRVNavDijkstra::findPathInGraph(
    const std::shared_ptr<KRVNavGraph>& graph, const Points& fromIntersections,
    const std::vector<double>& withIntersectionDistances, const Points& toDestinationNodes,
    bool /*lookForBarrierFreeRoute*/) {
  setDestination(nullptr);
  Identifiers nodes = graph ? std::as_const(*graph).nodes().keys() : Identifiers();
  prepareDistances(nodes, fromIntersections, withIntersectionDistances);
  if (!graph) return {};
  Predecessors predecessors;
  predecessors.reserve(nodes.size());
  const std::optional<std::int64_t> reached =
      visitNodes(*graph, std::move(nodes), toDestinationNodes, predecessors);
  // The flag stays set: only restart() makes the finder search again.
  if (!reached || interrupted()) return {};
  const std::shared_ptr<KRVNavPoint> target = graph->nodeWithIdentifier(*reached);
  if (!target || !isCloseToDestination(*target, toDestinationNodes)) return {};
  setDestination(target);
  return tracePredecessors(predecessors, target);
}

void KRVNavDijkstra::prepareDistances(const Identifiers& nodes, const Points& starts,
                                      const std::vector<double>& startDistances) {
  Distances distances;
  distances.reserve(nodes.size());
  for (const std::int64_t node : nodes) distances.set(node, Number::integer(kUnreached));
  const std::size_t count = std::min(starts.size(), startDistances.size());
  for (std::size_t i = 0; i < count; ++i) {
    if (starts[i]) distances.set(starts[i]->identifierNumber(), Number::real(startDistances[i]));
  }
  setDistancesFromSource(std::move(distances));
}

// Finding the nearest node and taking it off the list both go through the whole list. Keep it so:
// which of two nodes at equal distance comes first is decided by the list's order.
std::optional<std::int64_t> KRVNavDijkstra::visitNodes(const KRVNavGraph& graph,
                                                       Identifiers unvisited,
                                                       const Points& destinations,
                                                       Predecessors& predecessors) {
  while (!unvisited.empty()) {
    if (interrupted()) return std::nullopt;
    const std::optional<std::int64_t> current = nodeIdentifierWithSmallestDistanceIn(unvisited);
    if (!current) return std::nullopt;
    const std::shared_ptr<KRVNavPoint> point = graph.nodeWithIdentifier(*current);
    if (point && isCloseToDestination(*point, destinations)) return current;
    unvisited.erase(std::find(unvisited.begin(), unvisited.end(), *current));
    if (point) expand(graph, *current, predecessors);
  }
  return std::nullopt;
}

// Neighbours that were visited before are relaxed like the others. Only a negative cost can shorten
// the way to one of them; it is not visited again then, but ways traced through it change.
void KRVNavDijkstra::expand(const KRVNavGraph& graph, std::int64_t identifier,
                            Predecessors& predecessors) {
  const auto neighbours = graph.neighbourIdentifiersOfNodeWithIdentifier(identifier);
  if (!neighbours) return;
  for (const std::int64_t neighbour : *neighbours) {
    const auto edge = graph.edgeFromNodeWithIdentifier(identifier, neighbour);
    if (!edge || !graph.nodeWithIdentifier(neighbour)) continue;
    if (relax(identifier, neighbour, edge->distance() * edge->multiplicator())) {
      predecessors.set(neighbour, graph.nodeWithIdentifier(identifier));
    }
  }
}

bool KRVNavDijkstra::relax(std::int64_t identifier, std::int64_t neighbour, double cost) {
  std::lock_guard<std::mutex> lock(distancesMutex_);
  const double distance = cost + distanceOf(identifier);
  const double old = distanceOf(neighbour);
  if (!isUnreached(old) && !isSmaller(distance, old)) return false;
  distancesFromSource_.set(neighbour, Number::real(distance));
  return true;
}

// With the lock held. A host may put in a dictionary that lacks a node.
double KRVNavDijkstra::distanceOf(std::int64_t identifier) const {
  const Number* distance = distancesFromSource_.find(identifier);
  return distance ? distance->doubleValue() : static_cast<double>(kUnreached);
}

void KRVNavDijkstra::interrupt() { interrupted_.store(true); }

void KRVNavDijkstra::restart() { interrupted_.store(false); }

KRVNavDijkstra::Points KRVNavDijkstra::tracePredecessors(
    const Predecessors& predecessors, const std::shared_ptr<KRVNavPoint>& fromTarget) const {
  Points way;
  // Negative costs make circles of predecessors, which have no first point.
  std::unordered_set<std::int64_t> seen;
  std::shared_ptr<KRVNavPoint> point = fromTarget;
  while (point && seen.insert(point->identifierNumber()).second) {
    way.push_back(point);
    const auto* before = predecessors.find(point->identifierNumber());
    point = before ? *before : nullptr;
  }
  std::reverse(way.begin(), way.end());
  return way;
}

bool KRVNavDijkstra::isCloseToDestination(const KRVNavPoint& point, const Points& with) const {
  return std::any_of(with.begin(), with.end(), [&](const std::shared_ptr<KRVNavPoint>& other) {
    return other && other->identifier() == point.identifier();
  });
}

std::optional<std::int64_t> KRVNavDijkstra::nodeIdentifierWithSmallestDistanceIn(
    const Identifiers& identifiers) const {
  std::lock_guard<std::mutex> lock(distancesMutex_);
  std::optional<std::int64_t> nearest;
  double smallest = 0;
  for (const std::int64_t identifier : identifiers) {
    const double distance = distanceOf(identifier);
    if (isUnreached(distance) || (nearest && !isSmaller(distance, smallest))) continue;
    nearest = identifier;
    smallest = distance;
  }
  return nearest;
}

void KRVNavDijkstra::setDestination(const std::shared_ptr<KRVNavPoint>& destination) {
  destination_ = destination;
}

KRVNavDijkstra::Distances KRVNavDijkstra::distancesFromSource() const {
  std::lock_guard<std::mutex> lock(distancesMutex_);
  return distancesFromSource_;
}

void KRVNavDijkstra::setDistancesFromSource(Distances distances) {
  std::lock_guard<std::mutex> lock(distancesMutex_);
  std::swap(distancesFromSource_, distances);
}

}  // namespace KorvaniNavigation
