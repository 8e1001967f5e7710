#include "Navigation/Path Finding/Hierarchy/RoutingHierarchy.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <random>
#include <vector>

#include "EdgeNet.hpp"
#include "Navigation/Path Finding/Arrays/WaveSearch.hpp"

namespace KorvaniTest {
namespace {

using namespace KorvaniNavigation;
using PlaceNodes = std::vector<std::uint32_t>;

const std::atomic<bool> notInterrupted{false};

RoutingHierarchy::Answer askHierarchy(EdgeNet& net, const std::vector<StartNode>& starts,
                                      const PlaceNodes& targets, bool barrierFree = false) {
  const RoutingHierarchy hierarchy(net.graph(), barrierFree);
  return hierarchy.find({starts, targets, barrierFree, notInterrupted});
}

/// A grid of nodes, numbered row by row, whose links differ in length by up to `jitter` metres.
EdgeNet gridOf(std::uint32_t side, double jitter, unsigned seed) {
  std::mt19937 random(seed);
  const auto length = [&] { return 5 + jitter * static_cast<double>(random()) / 0x1p32; };
  EdgeNet net(side * side);
  for (std::uint32_t node = 0; node < side * side; ++node) {
    if (node % side + 1 < side) net.link(node, node + 1, length());
    if (node + side < side * side) net.link(node, node + side, length());
  }
  return net;
}

void expectAnswersOfWaves(EdgeNet& net, std::uint32_t nodeCount, std::size_t mostHubs) {
  const RoutingHierarchy hierarchy(net.graph(), false, mostHubs);
  const WaveSearch waves(net.graph());
  std::mt19937 random(5);
  const auto node = [&] { return static_cast<std::uint32_t>(random()) % nodeCount; };
  int decided = 0;
  for (int i = 0; i < 300; ++i) {
    const std::vector<StartNode> starts{{node(), 1.25}, {node(), 0.5}};
    const PlaceNodes targets{node(), node()};
    const SearchQuery query{starts, targets, false, notInterrupted};
    const auto answer = hierarchy.find(query);
    if (answer.outcome == RoutingHierarchy::Outcome::undecided) continue;
    const auto expected = waves.find(query);
    ASSERT_EQ(answer.outcome == RoutingHierarchy::Outcome::found, expected.has_value());
    if (!expected) continue;
    ASSERT_EQ(answer.path.nodes, expected->nodes);
    ASSERT_EQ(answer.path.cost, expected->cost);
    ++decided;
  }
  EXPECT_GT(decided, 280);
}

TEST(RoutingHierarchy, FindsTheCheaperOfTwoWays) {
  EdgeNet net(4);
  net.link(0, 1, 2);
  net.link(1, 3, 2);
  net.link(0, 2, 1);
  net.link(2, 3, 2.5);
  const auto answer = askHierarchy(net, {{0, 10}}, {3});
  ASSERT_EQ(answer.outcome, RoutingHierarchy::Outcome::found);
  EXPECT_EQ(answer.path.nodes, (PlaceNodes{0, 2, 3}));
  EXPECT_EQ(answer.path.cost, 13.5);
}

TEST(RoutingHierarchy, DoesNotDecideBetweenTwoWaysOfTheSameCost) {
  EdgeNet net(4);
  net.link(0, 1, 2);
  net.link(1, 3, 1);
  net.link(0, 2, 1);
  net.link(2, 3, 2);
  EXPECT_EQ(askHierarchy(net, {{0, 0}}, {3}).outcome, RoutingHierarchy::Outcome::undecided);
}

TEST(RoutingHierarchy, DoesNotDecideBetweenTwoTargetsThatAreEquallyNear) {
  EdgeNet net(3);
  net.link(0, 1, 2);
  net.link(0, 2, 2);
  EXPECT_EQ(askHierarchy(net, {{0, 0}}, {1, 2}).outcome, RoutingHierarchy::Outcome::undecided);
}

TEST(RoutingHierarchy, DoesNotDecideWhereOnlyRoundingTellsTwoWaysApart) {
  EdgeNet net(5);
  net.link(0, 1, 0.1);
  net.link(1, 2, 0.2);
  net.link(2, 4, 0.3);
  net.link(0, 3, 0.3);
  net.link(3, 4, 0.3);
  EXPECT_EQ(askHierarchy(net, {{0, 0}}, {4}).outcome, RoutingHierarchy::Outcome::undecided);
}

TEST(RoutingHierarchy, TakesNoTieFromLinksOfLengthZero) {
  EdgeNet net(6);
  net.link(0, 1, 3);
  net.link(1, 2, 0);
  net.link(2, 3, 4);
  net.link(1, 4, 7);
  net.link(4, 5, 0);
  const auto through = askHierarchy(net, {{0, 0}}, {3});
  ASSERT_EQ(through.outcome, RoutingHierarchy::Outcome::found);
  EXPECT_EQ(through.path.nodes, (PlaceNodes{0, 1, 2, 3}));
  const auto past = askHierarchy(net, {{3, 0}}, {5});
  ASSERT_EQ(past.outcome, RoutingHierarchy::Outcome::found);
  EXPECT_EQ(past.path.nodes, (PlaceNodes{3, 2, 1, 4, 5}));
}

TEST(RoutingHierarchy, StopsAtTheFirstOfTwoTargetsThatALinkOfLengthZeroJoins) {
  EdgeNet net(3);
  net.link(0, 1, 3);
  net.link(1, 2, 0);
  const auto answer = askHierarchy(net, {{0, 0}}, {2, 1});
  ASSERT_EQ(answer.outcome, RoutingHierarchy::Outcome::found);
  EXPECT_EQ(answer.path.nodes, (PlaceNodes{0, 1}));
}

TEST(RoutingHierarchy, ComesToAStartThatIsATargetOnlyIfThatIsCheaper) {
  EdgeNet net(3);
  net.link(0, 1, 3);
  net.link(0, 2, 8);
  const auto nearer = askHierarchy(net, {{0, 1}, {1, 5}}, {1, 2});
  ASSERT_EQ(nearer.outcome, RoutingHierarchy::Outcome::found);
  EXPECT_EQ(nearer.path.nodes, (PlaceNodes{0, 1}));
  const auto farther = askHierarchy(net, {{0, 1}, {1, 3}}, {1, 2});
  ASSERT_EQ(farther.outcome, RoutingHierarchy::Outcome::found);
  EXPECT_EQ(farther.path.nodes, (PlaceNodes{0, 2}));
}

TEST(RoutingHierarchy, CountsTheLaterDistanceOfAStartThatIsListedTwice) {
  EdgeNet net(2);
  net.link(0, 1, 3);
  EXPECT_EQ(askHierarchy(net, {{0, 9}, {0, 1}}, {1}).path.cost, 4);
  EXPECT_EQ(askHierarchy(net, {{0, 1}, {0, 9}}, {1}).path.cost, 12);
}

TEST(RoutingHierarchy, FindsNoWayAgainstTheOnlyDirection) {
  EdgeNet net(3);
  net.edge(0, 1, 1);
  net.edge(1, 2, 1);
  EXPECT_EQ(askHierarchy(net, {{0, 0}}, {2}).outcome, RoutingHierarchy::Outcome::found);
  EXPECT_EQ(askHierarchy(net, {{2, 0}}, {0}).outcome, RoutingHierarchy::Outcome::unreachable);
}

TEST(RoutingHierarchy, FindsNoWayFromANodeToItself) {
  EdgeNet net(2);
  net.link(0, 1, 1);
  EXPECT_EQ(askHierarchy(net, {{0, 0}}, {0}).outcome, RoutingHierarchy::Outcome::unreachable);
}

TEST(RoutingHierarchy, FindsNothingWithoutStartsTargetsOrNodes) {
  EdgeNet net(2);
  net.link(0, 1, 1);
  EXPECT_EQ(askHierarchy(net, {}, {1}).outcome, RoutingHierarchy::Outcome::unreachable);
  EXPECT_EQ(askHierarchy(net, {{0, 0}}, {}).outcome, RoutingHierarchy::Outcome::unreachable);
  EdgeNet empty(0);
  EXPECT_FALSE(RoutingHierarchy(empty.graph(), false).helps());
}

TEST(RoutingHierarchy, AvoidsBarriersWhenItIsMadeForEdgesWithoutThem) {
  EdgeNet net(3);
  net.link(0, 2, 1, false);
  net.link(0, 1, 5);
  net.link(1, 2, 5);
  EXPECT_EQ(askHierarchy(net, {{0, 0}}, {2}).path.nodes, (PlaceNodes{0, 2}));
  EXPECT_EQ(askHierarchy(net, {{0, 0}}, {2}, true).path.nodes, (PlaceNodes{0, 1, 2}));
}

TEST(RoutingHierarchy, GivesUpWhenItIsInterruptedAndAnswersAfterwards) {
  EdgeNet net = gridOf(8, 2, 3);
  for (const std::size_t mostHubs : {std::size_t{0}, RoutingHierarchy::kMostHubs}) {
    const RoutingHierarchy hierarchy(net.graph(), false, mostHubs);
    std::atomic<bool> interrupted{true};
    const std::vector<StartNode> starts{{0, 0}};
    const PlaceNodes targets{63};
    const SearchQuery query{starts, targets, false, interrupted};
    EXPECT_EQ(hierarchy.find(query).outcome, RoutingHierarchy::Outcome::interrupted);
    interrupted = false;
    EXPECT_EQ(hierarchy.find(query).outcome, RoutingHierarchy::Outcome::found);
  }
}

TEST(RoutingHierarchy, AnswersLikeTheWavesWithHubLabelsAndWithout) {
  EdgeNet net = gridOf(8, 2, 1);
  expectAnswersOfWaves(net, 64, 64);
  expectAnswersOfWaves(net, 64, 0);
}

TEST(RoutingHierarchy, KeepsTheMiddleOfAGridAsItIs) {
  EdgeNet net = gridOf(66, 40, 2);
  const RoutingHierarchy hierarchy(net.graph(), false);
  EXPECT_GT(hierarchy.coreSize(), 0U);
  EXPECT_LT(hierarchy.memory(), 4356U * 200U);
  expectAnswersOfWaves(net, 4356, 0);
}

TEST(RoutingHierarchy, IsEmptyOnAGridThatIsSmallOrWhoseLengthsAreNearlyAlike) {
  EdgeNet small = gridOf(31, 30, 2);
  EXPECT_FALSE(RoutingHierarchy(small.graph(), false).helps());
  EdgeNet even = gridOf(80, 2, 2);
  EXPECT_FALSE(RoutingHierarchy(even.graph(), false).helps());
}

TEST(RoutingHierarchy, IsEmptyOnARegularGrid) {
  EdgeNet net = gridOf(30, 0, 1);
  const RoutingHierarchy hierarchy(net.graph(), false);
  EXPECT_FALSE(hierarchy.helps());
  EXPECT_EQ(hierarchy.memory(), 0U);
  const std::vector<StartNode> starts{{0, 0}};
  const PlaceNodes targets{5};
  EXPECT_EQ(hierarchy.find({starts, targets, false, notInterrupted}).outcome,
            RoutingHierarchy::Outcome::undecided);
}

TEST(RoutingHierarchy, TakesLessMemoryWithoutHubLabels) {
  EdgeNet net = gridOf(8, 2, 4);
  const RoutingHierarchy bare(net.graph(), false, 0);
  const RoutingHierarchy labelled(net.graph(), false, 64);
  EXPECT_LT(bare.memory(), labelled.memory());
}

TEST(RoutingHierarchy, SpellsOutLongDeadEnds) {
  constexpr std::uint32_t kLength = 5000;
  std::mt19937 random(6);
  EdgeNet net(kLength);
  PlaceNodes all{0};
  double sum = 0.5;
  for (std::uint32_t node = 1; node < kLength; ++node) {
    const double length = 1 + static_cast<double>(random()) / 0x1p32;
    net.link(node - 1, node, length);
    all.push_back(node);
    sum = length + sum;
  }
  const auto answer = askHierarchy(net, {{0, 0.5}}, {kLength - 1});
  ASSERT_EQ(answer.outcome, RoutingHierarchy::Outcome::found);
  EXPECT_EQ(answer.path.nodes, all);
  EXPECT_EQ(answer.path.cost, sum);
}

// As when a host closes a corridor by making it dear.
TEST(RoutingHierarchy, DecidesWaysThatAvoidAnEdgeWhichIsDearBeyondMeasure) {
  EdgeNet net = gridOf(8, 2, 5);
  net.link(0, 63, 1e12);
  expectAnswersOfWaves(net, 64, 0);
  expectAnswersOfWaves(net, 64, 64);
}

TEST(RoutingHierarchy, LeavesAWayUndecidedThatNeedsAnEdgeDearBeyondMeasure) {
  EdgeNet apart(65);
  for (std::uint32_t node = 0; node < 63; ++node) apart.link(node, node + 1, 5);
  apart.link(63, 64, 1e12);
  EXPECT_EQ(askHierarchy(apart, {{0, 0}}, {64}).outcome, RoutingHierarchy::Outcome::undecided);
  EXPECT_EQ(askHierarchy(apart, {{0, 0}}, {63}).outcome, RoutingHierarchy::Outcome::found);
}

TEST(RoutingHierarchy, LeavesCostsUndecidedThatAreTooFarApartForItsMargin) {
  EdgeNet net(3);
  net.link(0, 1, 1e-12);
  net.link(1, 2, 1e12);
  EXPECT_EQ(askHierarchy(net, {{0, 1e30}}, {2}).outcome, RoutingHierarchy::Outcome::undecided);
}

}  // namespace
}  // namespace KorvaniTest
