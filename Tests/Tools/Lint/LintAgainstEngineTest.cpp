// What lint says about walls, sight and reach, compared with the engine on random buildings.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <utility>

#include "Building/BuildingGraph.hpp"
#include "Lint/PlaceSight.hpp"
#include "Lint/WalkGraph.hpp"
#include "Lint/WallIndex.hpp"
#include "Navigation/API/Tasks/IntersectionTask.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Navigation/Localisation/PositionMapper.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Navigation/Path Finding/DijkstraImproved/DijkstraImproved.hpp"
#include "Navigation/Routing/RouteSearch.hpp"
#include "Platform/MapPoint.hpp"
#include "Support/FacadeFixture.hpp"
#include "Tools/Lint/DrawnBuilding.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::KRVNavObstacle;
using KorvaniNavigation::ObstacleDetector;
using KorvaniNavigation::PositionMapper;
using KorvaniPlatform::MKMapPointForCoordinate;
using KorvaniTools::NodeIndexes;
using KorvaniTools::NodeSet;
using KorvaniTools::PlaceSight;
using KorvaniTools::WalkGraph;
using KorvaniTools::WallIndex;

/// Small whole numbers, so that lines touch, run along each other and end in the same places.
class Chance {
 public:
  explicit Chance(unsigned seed) : engine_(seed) {}

  /// From 0 to `end` - 1. The same numbers with every standard library.
  int below(int end) { return static_cast<int>(engine_() % static_cast<unsigned>(end)); }
  bool oneIn(int count) { return below(count) == 0; }

  /// On a grid of half metres.
  Coordinate spot(const DrawnBuilding& drawn) { return drawn.coordinate(half(), half()); }

  double half() { return below(20) / 2.0; }

 private:
  std::mt19937 engine_;
};

std::vector<Coordinate> anyWall(const DrawnBuilding& drawn, Chance& chance) {
  std::vector<Coordinate> positions{chance.spot(drawn)};
  const int more = chance.below(4);
  for (int i = 0; i < more; ++i) positions.push_back(chance.spot(drawn));
  return positions;
}

/// Two levels of which the lower has two regions that overlap, with walls, nodes and edges.
DrawnBuilding anyBuilding(Chance& chance) {
  DrawnBuilding drawn;
  auto& contents = drawn.contents();
  contents.regions.push_back({0, "West", {drawn.coordinate(0, 10), drawn.coordinate(5, 0)}});
  contents.regions.push_back({0, "East", {drawn.coordinate(4, 10), drawn.coordinate(10, 0)}});
  contents.regions.push_back({1, "Up", {drawn.coordinate(0, 10), drawn.coordinate(10, 0)}});
  const int nodes = 1 + chance.below(12);
  for (int i = 1; i <= nodes; ++i) {
    drawn.node(std::to_string(i), chance.oneIn(4) ? 1 : 0, chance.half(), chance.half());
  }
  for (int i = chance.below(2 * nodes); i > 0; --i) {
    Join join{.oneway = chance.oneIn(3), .barrierFree = !chance.oneIn(4)};
    if (chance.oneIn(4)) join.distance = 1 + chance.below(20);
    drawn.join(std::to_string(1 + chance.below(nodes)), std::to_string(1 + chance.below(nodes)),
               join);
  }
  for (int i = chance.below(8); i > 0; --i) {
    drawn.wall(chance.oneIn(4) ? 1 : 0, anyWall(drawn, chance));
  }
  return drawn;
}

TEST(LintAgainstEngine, ALineMeetsTheWallsThatTheObstacleDetectorFinds) {
  for (unsigned seed = 0; seed < 400; ++seed) {
    Chance chance(seed);
    DrawnBuilding drawn;
    std::vector<std::shared_ptr<KRVNavObstacle>> obstacles;
    for (int i = chance.below(30); i >= 0; --i) {
      drawn.wall(0, anyWall(drawn, chance));
      obstacles.push_back(std::make_shared<KRVNavObstacle>(
          drawn.contents().obstacles.back().lines.front().positions));
    }
    const ObstacleDetector detector(obstacles, {});
    const WallIndex index(
        KorvaniTools::wallPieces(drawn.contents(), [](const auto&, const auto&) { return true; }));
    for (int line = 0; line < 20; ++line) {
      const Coordinate a = chance.spot(drawn);
      const Coordinate b = chance.spot(drawn);
      std::vector<std::shared_ptr<KRVNavObstacle>> met;
      for (const std::size_t piece :
           index.met(MKMapPointForCoordinate(a), MKMapPointForCoordinate(b))) {
        const auto& obstacle = obstacles[index.pieces()[piece].obstacle];
        if (met.empty() || met.back() != obstacle) met.push_back(obstacle);
      }
      ASSERT_EQ(met, detector.detectBarriersBetween(a, b)) << "seed " << seed;
      ASSERT_EQ(index.anyMet(MKMapPointForCoordinate(a), MKMapPointForCoordinate(b)).has_value(),
                detector.isAnyBarrierInBetween(a, b))
          << "seed " << seed;
    }
  }
}

TEST(LintAgainstEngine, AnEdgeIsFoundWhenItsLineIsBlockedByWallsOfItsLevel) {
  for (unsigned seed = 0; seed < 400; ++seed) {
    Chance chance(seed);
    const DrawnBuilding drawn = anyBuilding(chance);
    const Building building = drawn.building();
    std::vector<KorvaniTools::LintEdge> expected;
    for (const auto& edge : building.edges) {
      const auto& from = building.nodes[static_cast<std::size_t>(edge.from - 1)];
      const auto& to = building.nodes[static_cast<std::size_t>(edge.to - 1)];
      std::vector<std::shared_ptr<KRVNavObstacle>> walls;
      for (const auto& obstacle : building.obstacles) {
        if (obstacle.level != from.level || from.level != to.level) continue;
        for (const auto& line : obstacle.lines) {
          walls.push_back(std::make_shared<KRVNavObstacle>(line.positions));
        }
      }
      if (ObstacleDetector(walls, {}).isAnyBarrierInBetween(from.coordinate, to.coordinate)) {
        expected.push_back({edge.from, edge.to});
      }
    }
    std::vector<KorvaniTools::LintEdge> edges;
    for (const LintFinding& finding : found(drawn, "edge-through-wall")) {
      edges.push_back(finding.edges.front());
    }
    const auto byEnds = [](const auto& a, const auto& b) {
      return std::pair(a.from, a.to) < std::pair(b.from, b.to);
    };
    std::sort(expected.begin(), expected.end(), byEnds);
    std::sort(edges.begin(), edges.end(), byEnds);
    ASSERT_EQ(edges, expected) << "seed " << seed;
  }
}

class LintAgainstEngineSight : public FacadeFixture {
 protected:
  /// What the engine makes of a position in the graph provided.
  KorvaniTools::PlaceNodes engineNodes(const PointPtr& position) {
    KorvaniTools::PlaceNodes nodes;
    PositionMapper mapper(bundle(), true);
    for (const auto& node : KorvaniNavigation::destinationNodes(
             {position}, bundle(), mapper, KorvaniNavigation::DestinationWalls::own)) {
      nodes.arrival.push_back(indexOf(*node));
    }
    if (const auto place = mapper.intersect(*position)) {
      for (const auto& node : KorvaniNavigation::searchStartOf(place).nodes) {
        nodes.departure.push_back(indexOf(*node));
      }
    }
    return nodes;
  }

  static std::size_t indexOf(const KRVNavPoint& node) {
    return static_cast<std::size_t>(node.identifier() - 1);
  }
};

TEST_F(LintAgainstEngineSight, APositionIsMappedOntoTheSameNodes) {
  std::size_t seen = 0;
  std::size_t onEdges = 0;
  for (unsigned seed = 0; seed < 600; ++seed) {
    Chance chance(seed);
    const DrawnBuilding drawn = anyBuilding(chance);
    const Building building = drawn.building();
    provide(KorvaniTools::makeGraph(building));
    PlaceSight sight(building);
    for (int i = 0; i < 10; ++i) {
      const Coordinate spot = drawn.coordinate(chance.half() - 0.25 * chance.below(3),
                                               chance.half() - 0.25 * chance.below(3));
      const std::int64_t level = chance.below(3);
      const auto expected = engineNodes(at(spot, level));
      const auto nodes = sight.nodesFor(spot, level);
      ASSERT_EQ(nodes.arrival, expected.arrival) << "seed " << seed << ", position " << i;
      ASSERT_EQ(nodes.departure, expected.departure) << "seed " << seed << ", position " << i;
      if (!nodes.arrival.empty()) ++seen;
      if (nodes.departure.size() > 1) ++onEdges;
    }
  }
  EXPECT_GT(seen, 1000U);
  EXPECT_GT(onEdges, 300U);
}

class LintAgainstEngineReach : public FacadeFixture {
 protected:
  /// Whether the engine's search gets from one node to another; both by index.
  bool findsWay(const std::shared_ptr<KRVNavGraph>& graph, std::size_t start, std::size_t end,
                bool barrierFree) {
    const auto node = [&](std::size_t index) {
      return graph->nodeWithIdentifier(static_cast<std::int64_t>(index) + 1);
    };
    KorvaniNavigation::DijkstraImproved finder(bundle());
    finder.setLookForBarrierFreeRoute(barrierFree);
    return !finder.findPathInGraph(graph, {node(start)}, {0.0}, {node(end)}, barrierFree).empty();
  }
};

TEST_F(LintAgainstEngineReach, ANodeIsReachedWhenThePathFinderGetsThere) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    Chance chance(seed);
    const Building building = anyBuilding(chance).building();
    const auto graph = KorvaniTools::makeGraph(building);
    for (const bool barrierFree : {false, true}) {
      const WalkGraph ways(building,
                           barrierFree ? WalkGraph::Edges::barrierFree : WalkGraph::Edges::all);
      const auto start = static_cast<std::size_t>(chance.below(static_cast<int>(ways.size())));
      NodeSet starts(ways.size(), false);
      starts[start] = true;
      const NodeSet reached = ways.reachedFrom(starts);
      for (std::size_t end = 0; end < ways.size(); ++end) {
        if (end == start) continue;
        ASSERT_EQ(reached[end], findsWay(graph, start, end, barrierFree))
            << "seed " << seed << ", from " << start << " to " << end;
      }
    }
  }
}

/// The largest group of nodes that reach each other, by asking for every pair.
NodeSet plainMainNetwork(const WalkGraph& ways) {
  std::vector<NodeSet> reached;
  for (std::size_t node = 0; node < ways.size(); ++node) {
    NodeSet start(ways.size(), false);
    start[node] = true;
    reached.push_back(ways.reachedFrom(start));
  }
  NodeSet best(ways.size(), false);
  for (std::size_t one = 0; one < ways.size(); ++one) {
    NodeSet group(ways.size(), false);
    for (std::size_t two = 0; two < ways.size(); ++two) {
      group[two] = reached[one][two] && reached[two][one];
    }
    const auto size = [](const NodeSet& set) { return std::count(set.begin(), set.end(), true); };
    if (size(group) > size(best)) best = group;
  }
  return best;
}

TEST(LintAgainstEngine, TheMainNetworkIsTheLargestGroupInWhichEverybodyGetsEverywhere) {
  for (unsigned seed = 0; seed < 500; ++seed) {
    Chance chance(seed);
    const WalkGraph ways(anyBuilding(chance).building(), WalkGraph::Edges::all);
    ASSERT_EQ(ways.mainNetwork(), plainMainNetwork(ways)) << "seed " << seed;
    const NodeSet main = ways.mainNetwork();
    const NodeSet leading = ways.leadingTo(main);
    for (std::size_t node = 0; node < ways.size(); ++node) {
      NodeSet start(ways.size(), false);
      start[node] = true;
      const NodeSet reached = ways.reachedFrom(start);
      bool reachesMain = false;
      for (std::size_t i = 0; i < main.size(); ++i) reachesMain |= reached[i] && main[i];
      ASSERT_EQ(leading[node], reachesMain) << "seed " << seed;
    }
  }
}

}  // namespace
}  // namespace KorvaniTest
