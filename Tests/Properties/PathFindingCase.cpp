#include "PathFindingCase.hpp"

#include <ostream>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Support/Points.hpp"

namespace KorvaniTest {

using KorvaniNavigation::KRVNavEdge;
using KorvaniNavigation::KRVNavGraph;
using KorvaniNavigation::KRVNavRegion;

std::ostream& operator<<(std::ostream& out, const PathFindingCase& problem) {
  out << problem.nodeCount << " nodes" << (problem.lookForBarrierFreeRoute ? ", barrier-free" : "");
  for (const auto& start : problem.starts) {
    out << "; start " << start.node << " after " << start.distance;
  }
  for (const std::size_t destination : problem.destinations) out << "; to " << destination;
  for (const auto& edge : problem.edges) {
    out << "; " << edge.from << "->" << edge.to << " " << edge.distance << "*" << edge.multiplicator
        << (edge.isBarrierFree ? "" : " barrier");
    if (edge.end == PathFindingCase::End::twin) out << " twin";
    if (edge.end == PathFindingCase::End::unnamed) out << " unnamed";
  }
  return out;
}

PathFindingWorld::PathFindingWorld(const PathFindingCase& problem)
    : graph(std::make_shared<KRVNavGraph>()) {
  addNodes(problem);
  addEdges(problem);
  for (const auto& start : problem.starts) {
    starts.push_back(nodes[start.node]);
    startDistances.push_back(start.distance);
  }
  for (const std::size_t destination : problem.destinations) {
    destinations.push_back(nodes[destination]);
  }
}

void PathFindingWorld::addNodes(const PathFindingCase& problem) {
  const auto region = std::make_shared<KRVNavRegion>(0);
  graph->add(region);
  for (std::size_t i = 0; i < problem.nodeCount; ++i) {
    const auto identifier = static_cast<std::int64_t>(i);
    nodes.push_back(at(48, 11, 0, identifier));
    region->addNode(nodes.back());
    // The other objects find the node's edges, since those are filed by number.
    twins.push_back(at(48, 11, 0, identifier));
    twins.back()->setRegion(region);
    unnamed.push_back(at(48, 11, 0, -1));
    unnamed.back()->setIdentifierNumber(identifier);
    unnamed.back()->setRegion(region);
  }
}

void PathFindingWorld::addEdges(const PathFindingCase& problem) {
  for (const auto& edge : problem.edges) {
    const auto& from = nodes[edge.from];
    const auto& end = endsOfKind(edge.end)[edge.to];
    graph->addEdge(std::make_shared<KRVNavEdge>(from, end, edge.distance, edge.multiplicator,
                                                edge.isBarrierFree),
                   *from, *end);
  }
}

const Points& PathFindingWorld::endsOfKind(PathFindingCase::End end) const {
  switch (end) {
    case PathFindingCase::End::twin:
      return twins;
    case PathFindingCase::End::unnamed:
      return unnamed;
    case PathFindingCase::End::node:
      break;
  }
  return nodes;
}

}  // namespace KorvaniTest
