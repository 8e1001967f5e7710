#include "Peers/BoostPaths.hpp"

#include <algorithm>
#include <boost/graph/compressed_sparse_row_graph.hpp>
#include <boost/graph/dijkstra_shortest_paths.hpp>
#include <functional>
#include <limits>
#include <optional>
#include <utility>

namespace KorvaniBenchmarks {

namespace {

struct WayCost {
  double cost = 0;
};

using BoostGraph = boost::compressed_sparse_row_graph<boost::directedS, boost::no_property, WayCost,
                                                      boost::no_property, std::uint32_t>;

constexpr double kUnreached = std::numeric_limits<double>::infinity();

/// Boost's way to leave a search early is to throw.
struct TargetSettled {
  std::uint32_t node;
};

class EarlyExit : public boost::default_dijkstra_visitor {
 public:
  EarlyExit(const std::vector<char>& isTarget, std::vector<std::uint32_t>& touched)
      : isTarget_(&isTarget), touched_(&touched) {}

  void discover_vertex(std::uint32_t node, const BoostGraph&) { touched_->push_back(node); }
  void examine_vertex(std::uint32_t node, const BoostGraph&) {
    if ((*isTarget_)[node]) throw TargetSettled{node};
  }

 private:
  const std::vector<char>* isTarget_;
  std::vector<std::uint32_t>* touched_;
};

BoostGraph makeGraph(const Arcs& arcs) {
  std::vector<std::pair<std::uint32_t, std::uint32_t>> ends;
  std::vector<WayCost> costs;
  for (const Arc& arc : arcs.arcs) {
    ends.emplace_back(arc.from, arc.to);
    costs.push_back({arc.cost});
  }
  return {boost::edges_are_unsorted_multi_pass, ends.begin(), ends.end(), costs.begin(),
          static_cast<std::uint32_t>(arcs.nodes)};
}

}  // namespace

struct BoostPaths::Search {
  BoostGraph graph;
  std::vector<double> distance;
  std::vector<std::uint32_t> before;
  std::vector<boost::default_color_type> colour;
  std::vector<char> isTarget;
  std::vector<std::uint32_t> touched;

  explicit Search(const Arcs& arcs)
      : graph(makeGraph(arcs)),
        distance(arcs.nodes, kUnreached),
        before(arcs.nodes, 0),
        colour(arcs.nodes, boost::white_color),
        isTarget(arcs.nodes, 0) {}

  void clear() {
    for (const std::uint32_t node : touched) {
      distance[node] = kUnreached;
      colour[node] = boost::white_color;
    }
    touched.clear();
  }

  std::optional<std::uint32_t> settleFirstTarget(const PathQuery& query) {
    std::vector<std::uint32_t> sources;
    for (const PathQuery::Start& start : query.starts) {
      distance[start.node] = start.distance;
      before[start.node] = start.node;
      sources.push_back(start.node);
    }
    const auto index = boost::get(boost::vertex_index, graph);
    try {
      boost::dijkstra_shortest_paths_no_init(
          graph, sources.begin(), sources.end(),
          boost::make_iterator_property_map(before.begin(), index),
          boost::make_iterator_property_map(distance.begin(), index),
          boost::get(&WayCost::cost, graph), index, std::less<>(), std::plus<>(), 0.0,
          EarlyExit(isTarget, touched), boost::make_iterator_property_map(colour.begin(), index));
    } catch (const TargetSettled& settled) {
      return settled.node;
    }
    return std::nullopt;
  }

  FoundWay wayTo(std::uint32_t target) const {
    FoundWay way;
    way.cost = distance[target];
    std::uint32_t node = target;
    for (; before[node] != node; node = before[node]) way.nodes.push_back(node);
    way.nodes.push_back(node);
    std::reverse(way.nodes.begin(), way.nodes.end());
    return way;
  }
};

BoostPaths::BoostPaths(const Arcs& arcs) : search_(std::make_unique<Search>(arcs)) {}

BoostPaths::~BoostPaths() = default;

FoundWay BoostPaths::find(const PathQuery& query) {
  for (const std::uint32_t target : query.targets) search_->isTarget[target] = 1;
  const std::optional<std::uint32_t> target = search_->settleFirstTarget(query);
  for (const std::uint32_t node : query.targets) search_->isTarget[node] = 0;
  FoundWay way = target ? search_->wayTo(*target) : FoundWay{};
  search_->clear();
  return way;
}

}  // namespace KorvaniBenchmarks
