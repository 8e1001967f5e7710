#include "Peers/LemonPaths.hpp"

#include <lemon/dijkstra.h>
#include <lemon/quad_heap.h>
#include <lemon/static_graph.h>

#include <algorithm>
#include <utility>

namespace KorvaniBenchmarks {

namespace {

using Graph = lemon::StaticDigraph;
using Costs = Graph::ArcMap<double>;
// Of LEMON's heaps the quickest one for these searches.
using Heap = lemon::QuadHeap<double, Graph::NodeMap<int>>;
using Dijkstra = lemon::Dijkstra<Graph, Costs>::SetStandardHeap<Heap>::Create;

}  // namespace

struct LemonPaths::Search {
  Graph graph;
  Costs costs{graph};
  std::vector<char> isTarget;
  std::unique_ptr<Dijkstra> dijkstra;

  explicit Search(Arcs arcs) : isTarget(arcs.nodes, 0) {
    std::stable_sort(arcs.arcs.begin(), arcs.arcs.end(),
                     [](const Arc& a, const Arc& b) { return a.from < b.from; });
    std::vector<std::pair<int, int>> ends;
    ends.reserve(arcs.arcs.size());
    for (const Arc& arc : arcs.arcs) {
      ends.emplace_back(static_cast<int>(arc.from), static_cast<int>(arc.to));
    }
    graph.build(static_cast<int>(arcs.nodes), ends.begin(), ends.end());
    for (std::size_t i = 0; i < arcs.arcs.size(); ++i) {
      costs[Graph::arc(static_cast<int>(i))] = arcs.arcs[i].cost;
    }
    dijkstra = std::make_unique<Dijkstra>(graph, costs);
  }

  void mark(const PathQuery& query, char value) {
    for (const std::uint32_t target : query.targets) isTarget[target] = value;
  }

  Graph::Node settleFirstTarget(const PathQuery& query) {
    dijkstra->init();
    for (const PathQuery::Start& start : query.starts) {
      dijkstra->addSource(Graph::node(static_cast<int>(start.node)), start.distance);
    }
    while (!dijkstra->emptyQueue()) {
      const Graph::Node settled = dijkstra->processNextNode();
      if (isTarget[static_cast<std::size_t>(Graph::index(settled))]) return settled;
    }
    return lemon::INVALID;
  }

  FoundWay wayTo(Graph::Node target) const {
    FoundWay way;
    way.cost = dijkstra->dist(target);
    for (Graph::Node node = target; node != lemon::INVALID; node = dijkstra->predNode(node)) {
      way.nodes.push_back(static_cast<std::uint32_t>(Graph::index(node)));
    }
    std::reverse(way.nodes.begin(), way.nodes.end());
    return way;
  }
};

LemonPaths::LemonPaths(const Arcs& arcs) : search_(std::make_unique<Search>(arcs)) {}

LemonPaths::~LemonPaths() = default;

FoundWay LemonPaths::find(const PathQuery& query) {
  search_->mark(query, 1);
  const Graph::Node target = search_->settleFirstTarget(query);
  search_->mark(query, 0);
  return target == lemon::INVALID ? FoundWay{} : search_->wayTo(target);
}

}  // namespace KorvaniBenchmarks
