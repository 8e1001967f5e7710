// Preparations that are told to give up.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <random>
#include <thread>
#include <vector>

#include "EdgeNet.hpp"
#include "Navigation/Path Finding/Hierarchy/HierarchyBuilder.hpp"
#include "Navigation/Path Finding/Hierarchy/HierarchySearch.hpp"
#include "Navigation/Path Finding/Hierarchy/HubLabels.hpp"
#include "Navigation/Path Finding/Hierarchy/RoutingHierarchy.hpp"

namespace KorvaniTest {
namespace {

using namespace KorvaniNavigation;

/// Corridors that branch again and again.
EdgeNet branchingNet(std::uint32_t nodeCount) {
  std::mt19937 random(8);
  EdgeNet net(nodeCount);
  for (std::uint32_t node = 1; node < nodeCount; ++node) {
    const std::uint32_t back = 1 + static_cast<std::uint32_t>(random()) % std::min(node, 20U);
    net.link(node, node - back, 1 + static_cast<double>(random()) / 0x1p32);
  }
  return net;
}

HierarchyArcs pairOfPlaces(Interruption& interruption) {
  HierarchyBuilder builder(2, 1e-9, interruption);
  builder.addEdge(0, 1, 3);
  builder.addEdge(1, 0, 3);
  std::vector<std::uint32_t> rankOf;
  return builder.build(rankOf);
}

TEST(HierarchyInterruption, EveryStepOfThePreparationLooksAtTheFlag) {
  const std::atomic<bool> flag{true};
  Interruption before(flag);
  EXPECT_EQ(pairOfPlaces(before).placeCount(), 0U);
  EXPECT_TRUE(before.seen());
  Interruption never(kNeverInterrupted);
  const HierarchyArcs arcs = pairOfPlaces(never);
  EXPECT_EQ(arcs.placeCount(), 2U);
  EXPECT_TRUE(HubLabels::build(arcs, 1e-9, 64, never));
  Interruption during(flag);
  EXPECT_FALSE(HubLabels::build(arcs, 1e-9, 64, during));
  EXPECT_TRUE(during.seen());
}

/// Two places that no arc joins.
HierarchyArcs apart(std::uint32_t coreBegin) { return {{0, 0, 0}, {}, coreBegin}; }

bool runsThrough(const HierarchyArcs& arcs, const std::atomic<bool>& flag) {
  HierarchySearch::Scratch scratch(arcs.placeCount());
  HierarchySearch search(arcs, 1e-9, flag, scratch);
  search.addStart(0, 0);
  search.addTarget(1);
  return search.run();
}

TEST(HierarchyInterruption, ASearchLooksAtTheFlagBeforeEachPlaceBelowAndInTheCore) {
  const std::atomic<bool> flag{true};
  for (const std::uint32_t coreBegin : {2U, 0U}) {
    EXPECT_FALSE(runsThrough(apart(coreBegin), flag));
    EXPECT_TRUE(runsThrough(apart(coreBegin), kNeverInterrupted));
  }
}

TEST(HierarchyInterruption, NothingHalfMadeIsLeft) {
  EdgeNet net = branchingNet(50);
  const std::atomic<bool> flag{true};
  const RoutingHierarchy hierarchy(net.graph(), false, RoutingHierarchy::kMostHubs, flag);
  EXPECT_TRUE(hierarchy.wasInterrupted());
  EXPECT_FALSE(hierarchy.helps());
  EXPECT_EQ(hierarchy.memory(), 0U);
  EXPECT_FALSE(RoutingHierarchy(net.graph(), false).wasInterrupted());
}

// The flag is raised at ever other moments of the preparation until one of them has stopped it.
TEST(HierarchyInterruption, APreparationUnderWayIsGivenUpWhole) {
  using Watch = std::chrono::steady_clock;
  EdgeNet net = branchingNet(20000);
  const SearchGraph& graph = net.graph();
  const auto begin = Watch::now();
  const std::size_t whole = RoutingHierarchy(graph, false).memory();
  const auto time = Watch::now() - begin;
  bool wasStopped = false;
  constexpr int kRounds = 100;
  for (int round = 0; round < kRounds && !wasStopped; ++round) {
    std::atomic<bool> flag{false};
    std::atomic<bool> isPreparing{false};
    std::thread other([&] {
      while (!isPreparing.load()) std::this_thread::yield();
      const auto until = Watch::now() + time * (kRounds - round) / (2 * kRounds);
      while (Watch::now() < until) std::this_thread::yield();
      flag.store(true);
    });
    isPreparing.store(true);
    const RoutingHierarchy hierarchy(graph, false, RoutingHierarchy::kMostHubs, flag);
    other.join();
    wasStopped = hierarchy.wasInterrupted();
    EXPECT_EQ(hierarchy.memory(), wasStopped ? 0U : whole);
  }
  EXPECT_TRUE(wasStopped);
}

}  // namespace
}  // namespace KorvaniTest
