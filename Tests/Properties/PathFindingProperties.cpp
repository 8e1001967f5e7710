// What holds for every search, tried on random graphs: 2500 a property, since each case is a batch
// of 25. A failing case is printed with the means to run it again.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <utility>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Path Finding/DijkstraImproved/DijkstraImproved.hpp"
#include "PathFindingCase.hpp"
#include "PathFindingPlainSearch.hpp"
#include "PathFindingTextbook.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::ConfigDependents;
using KorvaniNavigation::DijkstraImproved;
using KorvaniNavigation::KRVNavPoint;

constexpr std::size_t kBatch = 25;

// Whole numbers and halves, whose sums are exact in any order; few of them, so that many costs tie
// and many are nothing.
double coarseLength() { return *rc::gen::element(0.0, 0.0, 1.0, 1.0, 2.0, 3.0, 5.5, 8.0); }

// Any length; sums depend on their order in the last bit.
double fineLength() { return static_cast<double>(*rc::gen::inRange(0, 1000)) / 7.0; }

struct Kind {
  double (*length)();
  bool otherObjects;  // whether edges also end at twins and at points without identifier
};

constexpr Kind kCoarse{coarseLength, false};
constexpr Kind kFine{fineLength, true};

PathFindingCase::Edge anyEdge(const Kind& kind, std::size_t nodeCount) {
  using End = PathFindingCase::End;
  PathFindingCase::Edge edge;
  edge.from = *rc::gen::inRange<std::size_t>(0, nodeCount);
  edge.to = *rc::gen::inRange<std::size_t>(0, nodeCount);
  edge.distance = kind.length();
  edge.multiplicator = *rc::gen::element(1.0, 1.0, 0.5, 2.0, 3.0);
  edge.isBarrierFree = *rc::gen::weightedElement<bool>({{4, true}, {1, false}});
  if (kind.otherObjects) {
    edge.end = *rc::gen::weightedElement<End>({{4, End::node}, {1, End::twin}, {1, End::unnamed}});
  }
  return edge;
}

PathFindingCase anyCase(const Kind& kind) {
  PathFindingCase problem;
  problem.nodeCount = *rc::gen::inRange<std::size_t>(1, 13);
  const std::size_t edges = *rc::gen::inRange<std::size_t>(0, 4 * problem.nodeCount);
  for (std::size_t i = 0; i < edges; ++i) {
    problem.edges.push_back(anyEdge(kind, problem.nodeCount));
  }
  const auto anyNode = rc::gen::inRange<std::size_t>(0, problem.nodeCount);
  const auto few = rc::gen::weightedElement<int>({{1, 0}, {6, 1}, {6, 2}, {3, 3}});
  for (int i = *few; i > 0; --i) problem.starts.push_back({*anyNode, kind.length()});
  for (int i = *few; i > 0; --i) problem.destinations.push_back(*anyNode);
  problem.lookForBarrierFreeRoute = *rc::gen::arbitrary<bool>();
  return problem;
}

std::vector<PathFindingCase> batch(const Kind& kind) {
  // Full size from the first batch on: small graphs are among its graphs anyway.
  return *rc::gen::resize(rc::kNominalSize,
                          rc::gen::container<std::vector<PathFindingCase>>(
                              kBatch, rc::gen::exec([kind] { return anyCase(kind); })));
}

Points search(DijkstraImproved& finder, const PathFindingCase& problem,
              const PathFindingWorld& world) {
  finder.setLookForBarrierFreeRoute(problem.lookForBarrierFreeRoute);
  return finder.findPathInGraph(world.graph, world.starts, world.startDistances, world.destinations,
                                false);
}

DijkstraImproved newFinder() { return DijkstraImproved(std::weak_ptr<ConfigDependents>()); }

bool holds(const Points& points, const std::shared_ptr<KRVNavPoint>& wanted) {
  return std::find(points.begin(), points.end(), wanted) != points.end();
}

// Cost of walking the way from its start on, which is to have cost as much as it says.
double walkedCost(const PathFindingCase& problem, const PathFindingWorld& world,
                  const Points& way) {
  double cost = 0;
  for (std::size_t i = 0; i < world.starts.size(); ++i) {
    if (world.starts[i] == way.front()) cost = world.startDistances[i];
  }
  for (std::size_t i = 0; i + 1 < way.size(); ++i) {
    const auto edge = world.graph->edgeFromNode(*way[i], *way[i + 1]);
    RC_ASSERT(edge != nullptr);
    RC_ASSERT(edge->isBarrierFree() || !problem.lookForBarrierFreeRoute);
    RC_ASSERT(!holds(world.destinations, way[i]));
    cost += edge->multiplicator() * edge->distance();
  }
  return cost;
}

RC_GTEST_PROP(PathFindingProperties, CostIsThatOfTheTextbooksSearch, ()) {
  std::size_t found = 0;
  for (const PathFindingCase& problem : batch(kCoarse)) {
    const PathFindingWorld world(problem);
    auto finder = newFinder();
    const Points way = search(finder, problem, world);
    const auto expected = textbookCost(problem);
    RC_LOG() << problem << "\n";
    RC_ASSERT(way.empty() == !expected.has_value());
    RC_ASSERT(finder.bestPath().has_value() == expected.has_value());
    if (expected) RC_ASSERT(finder.bestPath()->distance == *expected);
    found += way.empty() ? 0 : 1;
  }
  RC_TAG(found > kBatch / 3 ? "more than a third with a way" : "fewer");
}

RC_GTEST_PROP(PathFindingProperties, WayLeadsOverEdgesFromAStartToTheDestinationItNames, ()) {
  for (const PathFindingCase& problem : batch(kCoarse)) {
    const PathFindingWorld world(problem);
    auto finder = newFinder();
    const Points way = search(finder, problem, world);
    RC_LOG() << problem << "\n";
    if (way.empty()) {
      RC_ASSERT(finder.destination() == nullptr);
      continue;
    }
    RC_ASSERT(way.size() >= 2u);
    RC_ASSERT(holds(world.starts, way.front()));
    RC_ASSERT(holds(world.destinations, way.back()));
    RC_ASSERT(finder.destination() == way.back());
    RC_ASSERT(walkedCost(problem, world, way) == finder.bestPath()->distance);
  }
}

void assertSameLabels(const DijkstraImproved& finder, const PlainSearch& plain,
                      const Points& points) {
  for (const auto& point : points) {
    const auto expected = plain.pathTo(*point);
    const auto actual = finder.pathTo(*point);
    RC_ASSERT(actual.has_value() == (expected != nullptr));
    if (!expected) continue;
    RC_ASSERT(actual->distance == expected->distance);
    RC_ASSERT(actual->nodes == expected->nodes);
  }
}

void assertAgree(DijkstraImproved& finder, PlainSearch& plain, const PathFindingCase& problem,
                 const PathFindingWorld& world) {
  const Points way = search(finder, problem, world);
  const Points expected = plain.find(world.starts, world.startDistances, world.destinations,
                                     problem.lookForBarrierFreeRoute);
  RC_ASSERT(way == expected);
  assertSameLabels(finder, plain, world.nodes);
  assertSameLabels(finder, plain, world.twins);
  assertSameLabels(finder, plain, world.unnamed);
  RC_ASSERT(finder.nodesToCheck().empty());
}

RC_GTEST_PROP(PathFindingProperties, EveryLabelIsThatOfThePlainSearch, ()) {
  for (const PathFindingCase& problem : batch(kFine)) {
    const PathFindingWorld world(problem);
    auto finder = newFinder();
    PlainSearch plain;
    RC_LOG() << problem << "\n";
    assertAgree(finder, plain, problem, world);
  }
}

RC_GTEST_PROP(PathFindingProperties, TiesGoToTheSameWayAsInThePlainSearch, ()) {
  constexpr Kind kTies{coarseLength, true};
  for (const PathFindingCase& problem : batch(kTies)) {
    const PathFindingWorld world(problem);
    auto finder = newFinder();
    PlainSearch plain;
    RC_LOG() << problem << "\n";
    assertAgree(finder, plain, problem, world);
  }
}

// The way back: from the destinations, but with the old labels, to the starts.
RC_GTEST_PROP(PathFindingProperties, SearchingAgainWithoutRestartAgreesWithThePlainSearchToo, ()) {
  for (const PathFindingCase& problem : batch(kFine)) {
    const PathFindingWorld world(problem);
    PathFindingWorld reversed = world;
    std::swap(reversed.starts, reversed.destinations);
    reversed.startDistances.assign(reversed.starts.size(), 1.5);
    auto finder = newFinder();
    PlainSearch plain;
    RC_LOG() << problem << "\n";
    assertAgree(finder, plain, problem, world);
    assertAgree(finder, plain, problem, reversed);
  }
}

RC_GTEST_PROP(PathFindingProperties, ARestartedFinderIsLikeANewOne, ()) {
  auto used = newFinder();
  for (const PathFindingCase& problem : batch(kFine)) {
    const PathFindingWorld world(problem);
    auto fresh = newFinder();
    used.restart();
    RC_LOG() << problem << "\n";
    RC_ASSERT(search(used, problem, world) == search(fresh, problem, world));
    RC_ASSERT(used.destination() == fresh.destination());
  }
}

}  // namespace
}  // namespace KorvaniTest
