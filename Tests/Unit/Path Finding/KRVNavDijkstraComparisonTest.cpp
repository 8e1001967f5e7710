// Both path finders on the same random graphs: they know nothing of each other, and must agree on
// what the cheapest way costs.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Path Finding/DijkstraImproved/DijkstraImproved.hpp"
#include "Navigation/Path Finding/KRVNavDijkstra.hpp"
#include "Support/Points.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::DijkstraImproved;
using KorvaniNavigation::KRVNavDijkstra;
using KorvaniNavigation::KRVNavEdge;
using KorvaniNavigation::KRVNavGraph;
using KorvaniNavigation::KRVNavRegion;

/// A random search. Starts are no destinations, since the finders differ about those on purpose.
class RandomSearch {
 public:
  explicit RandomSearch(std::uint32_t seed) : random_(seed) {
    addNodes();
    const std::size_t edges = below(4 * nodes_.size());
    for (std::size_t i = 0; i < edges; ++i) addEdge();
    starts = pick(1 + below(3), 0, nodes_.size() / 2);
    destinations = pick(1 + below(3), nodes_.size() / 2, nodes_.size());
    for (std::size_t i = 0; i < starts.size(); ++i) distances.push_back(cost());
  }

  std::shared_ptr<KRVNavGraph> graph = std::make_shared<KRVNavGraph>();
  std::vector<PointPtr> starts;
  std::vector<double> distances;
  std::vector<PointPtr> destinations;

 private:
  std::size_t below(std::size_t limit) { return random_() % limit; }

  // Small integers make ties, their halves and tenths make sums that are rounded.
  double cost() { return static_cast<double>(below(8)) / (below(2) == 0 ? 1 : 10); }

  // Numbers in no order, so that the graph's order and the numbers' order differ.
  void addNodes() {
    const auto region = std::make_shared<KRVNavRegion>(0);
    graph->add(region);
    const std::size_t count = 2 + below(30);
    for (std::size_t i = 0; i < count; ++i) {
      nodes_.push_back(at(kOrigin, 0, static_cast<std::int64_t>(i * 37 % 101)));
    }
    for (std::size_t i = count - 1; i > 0; --i) std::swap(nodes_[i], nodes_[below(i + 1)]);
    for (const auto& node : nodes_) region->addNode(node);
  }

  void addEdge() {
    const auto& from = nodes_[below(nodes_.size())];
    const auto& to = nodes_[below(nodes_.size())];
    const double multiplicator = below(3) == 0 ? 1.7 : 1;
    graph->addEdge(std::make_shared<KRVNavEdge>(from, to, cost(), multiplicator, below(4) != 0),
                   *from, *to);
  }

  std::vector<PointPtr> pick(std::size_t count, std::size_t first, std::size_t end) {
    std::vector<PointPtr> result;
    for (std::size_t i = 0; i < count; ++i) result.push_back(nodes_[first + below(end - first)]);
    return result;
  }

  std::mt19937 random_;
  std::vector<PointPtr> nodes_;
};

/// What walking this way costs, summed up as the finders do; a start that is listed several times
/// counts with its last distance.
double costOf(const std::vector<PointPtr>& way, const RandomSearch& search) {
  double cost = 0;
  for (std::size_t i = 0; i < search.starts.size(); ++i) {
    if (search.starts[i] == way.front()) cost = search.distances[i];
  }
  for (std::size_t i = 1; i < way.size(); ++i) {
    const auto edge = search.graph->edgeFromNode(*way[i - 1], *way[i]);
    if (!edge) return std::numeric_limits<double>::quiet_NaN();
    cost = edge->distance() * edge->multiplicator() + cost;
  }
  return cost;
}

bool holds(const std::vector<PointPtr>& points, const PointPtr& point) {
  return std::find(points.begin(), points.end(), point) != points.end();
}

TEST(KRVNavDijkstraComparison, CostsWhatTheImprovedFinderSays) {
  int found = 0;
  for (std::uint32_t seed = 1; seed <= 500; ++seed) {
    SCOPED_TRACE(seed);
    const RandomSearch search(seed);
    KRVNavDijkstra legacy;
    const auto way = legacy.findPathInGraph(search.graph, search.starts, search.distances,
                                            search.destinations, false);
    DijkstraImproved improved{std::weak_ptr<KorvaniNavigation::ConfigDependents>()};
    const auto other = improved.findPathInGraph(search.graph, search.starts, search.distances,
                                                search.destinations, false);
    ASSERT_EQ(way.empty(), other.empty());
    if (way.empty()) continue;
    ++found;
    EXPECT_TRUE(holds(search.starts, way.front()));
    EXPECT_TRUE(holds(search.destinations, way.back()));
    EXPECT_EQ(legacy.destination(), way.back());
    EXPECT_EQ(costOf(way, search), improved.bestPath()->distance);
    const auto distances = legacy.distancesFromSource();
    EXPECT_EQ(distances.find(way.back()->identifierNumber())->doubleValue(),
              improved.bestPath()->distance);
  }
  EXPECT_GT(found, 200);
}

}  // namespace
}  // namespace KorvaniTest
