// The cheapest way to the nearest of four nodes.

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Buildings/BuildingMaker.hpp"
#include "Buildings/EngineGraph.hpp"
#include "Buildings/PeerData.hpp"
#include "Buildings/SeededNumbers.hpp"
#include "Cases/Cases.hpp"
#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Path Finding/DijkstraImproved/DijkstraImproved.hpp"
#include "Peers/BoostPaths.hpp"
#include "Peers/LemonPaths.hpp"
#include "Support/Timing.hpp"

namespace KorvaniBenchmarks {

using KorvaniNavigation::ConfigDependents;
using KorvaniNavigation::DijkstraImproved;
using KorvaniNavigation::KRVNavGraph;
using KorvaniNavigation::KRVNavPoint;

namespace {

constexpr std::size_t kTargets = 4;

struct PathSize {
  std::size_t nodes;
  std::size_t levels;
  std::size_t queries;
};

constexpr PathSize kPathSizes[] = {
    {1000, 3, 200}, {10000, 5, 100}, {100000, 10, 30}, {1000000, 20, 10}};

/// A query as the engine is asked it.
struct EngineQuery {
  DijkstraImproved::Points starts;
  std::vector<double> distances;
  DijkstraImproved::Points targets;
};

/// A graph in everybody's form, with queries to which all give the same answers.
class PathCase {
 public:
  PathCase(const Row& row, const PlainBuilding& building, std::size_t queries, bool barrierFree)
      : PathCase(row, building, arcsOf(building, barrierFree), queries, barrierFree) {}

  std::size_t queries() const { return queries_.size(); }

  DijkstraImproved::Points askEngine(std::size_t i) {
    const EngineQuery& query = engineQueries_[i];
    finder_.restart();
    return finder_.findPathInGraph(graph_, query.starts, query.distances, query.targets, false);
  }
  FoundWay askLemon(std::size_t i) { return lemon_.find(queries_[i]); }
  FoundWay askBoost(std::size_t i) { return boost_.find(queries_[i]); }

 private:
  PathCase(const Row& row, const PlainBuilding& building, const Arcs& arcs, std::size_t queries,
           bool barrierFree)
      : row_(row),
        lemon_(arcs),
        boost_(arcs),
        graph_(makeEngineGraph(building)),
        finder_(std::weak_ptr<ConfigDependents>()) {
    finder_.setLookForBarrierFreeRoute(barrierFree);
    SeededNumbers numbers(row.size);
    while (queries_.size() < queries) addQuery(building, numbers);
    for (std::size_t i = 0; i < queries; ++i) check(i);
  }

  /// From a node, or from a place on an edge, in turn.
  void addQuery(const PlainBuilding& building, SeededNumbers& numbers) {
    PathQuery query;
    const bool onEdge = queries_.size() % 2 == 1;
    const PlainBuilding::Edge& edge = building.edges[numbers.below(building.edges.size())];
    const double along = numbers.between(0, edge.distance);
    query.starts.push_back({edge.from, along});
    if (onEdge) query.starts.push_back({edge.to, edge.distance - along});
    while (query.targets.size() < kTargets) {
      const auto target = static_cast<std::uint32_t>(numbers.below(building.nodes.size()));
      if (target != edge.from && target != edge.to) query.targets.push_back(target);
    }
    EngineQuery engine;
    for (const PathQuery::Start& start : query.starts) {
      engine.starts.push_back(graph_->nodeWithIdentifier(start.node));
      engine.distances.push_back(start.distance);
    }
    for (const std::uint32_t target : query.targets) {
      engine.targets.push_back(graph_->nodeWithIdentifier(target));
    }
    queries_.push_back(std::move(query));
    engineQueries_.push_back(std::move(engine));
  }

  /// The same sums in the same order, so costs are equal to the last bit.
  void check(std::size_t i) {
    const double cost = costOf(askEngine(i), engineQueries_[i]);
    if (askLemon(i).cost != cost) disagree(row_, "LEMON", "cost of query " + std::to_string(i));
    if (askBoost(i).cost != cost) disagree(row_, "Boost", "cost of query " + std::to_string(i));
  }

  double costOf(const DijkstraImproved::Points& way, const EngineQuery& query) const {
    double cost = 0;
    if (way.empty()) return cost;
    for (std::size_t i = 0; i < query.starts.size(); ++i) {
      if (query.starts[i] == way.front()) cost = query.distances[i];
    }
    for (std::size_t i = 0; i + 1 < way.size(); ++i) {
      const auto edge = graph_->edgeFromNode(*way[i], *way[i + 1]);
      cost = edge->multiplicator() * edge->distance() + cost;
    }
    return cost;
  }

  Row row_;
  LemonPaths lemon_;
  BoostPaths boost_;
  std::shared_ptr<KRVNavGraph> graph_;
  DijkstraImproved finder_;
  std::vector<PathQuery> queries_;
  std::vector<EngineQuery> engineQueries_;
};

void addRow(const Row& row, Shared<PathCase>::Make make) {
  const auto shared = std::make_shared<Shared<PathCase>>(std::move(make));
  measure(row, kEngine, [shared](benchmark::State& state) {
    PathCase& data = shared->get();
    timeEach(state, data.queries(),
             [&](std::size_t i) { benchmark::DoNotOptimize(data.askEngine(i)); });
  });
  measure(row, "Boost.Graph", [shared](benchmark::State& state) {
    PathCase& data = shared->get();
    timeEach(state, data.queries(),
             [&](std::size_t i) { benchmark::DoNotOptimize(data.askBoost(i)); });
  });
  measure(row, "LEMON", [shared](benchmark::State& state) {
    PathCase& data = shared->get();
    timeEach(state, data.queries(),
             [&](std::size_t i) { benchmark::DoNotOptimize(data.askLemon(i)); });
  });
}

void addOffices(const Row& row, const PathSize& size, bool barrierFree) {
  addRow(row, [row, size, barrierFree] {
    const PlainBuilding building = makeOffices(size.nodes, size.levels, size.nodes);
    return std::make_shared<PathCase>(row, building, size.queries, barrierFree);
  });
}

void addLattice(const Row& row, const PathSize& size) {
  addRow(row, [row, size] {
    return std::make_shared<PathCase>(row, makeLattice(size.nodes), size.queries, false);
  });
}

}  // namespace

void addPathSearches(const Extent& extent) {
  const char* table = "Path search";
  for (const char* data : {"offices", "offices, barrier-free", "lattice"}) {
    for (PathSize size : kPathSizes) {
      if (extent.quick && size.nodes > 100000) continue;
      if (extent.quick) size.queries /= 3;
      const Row row{table, data, size.nodes};
      const std::string kind = data;
      if (kind == "lattice") {
        addLattice(row, size);
      } else {
        addOffices(row, size, kind != "offices");
      }
    }
  }
}

}  // namespace KorvaniBenchmarks
