// Graphs, starts and costs that no sound host makes.

#include <limits>

#include "KRVNavDijkstraFixture.hpp"
#include "Support/Points.hpp"

namespace KorvaniTest {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

class KRVNavDijkstraUnusualInputTest : public LegacySearchTest {};

TEST_F(KRVNavDijkstraUnusualInputTest, ANullGraphIsOneWithoutNodes) {
  finder.setDestination(building.point("B"));
  EXPECT_TRUE(finder.findPathInGraph(nullptr, points("A"), {2}, points("A"), false).empty());
  EXPECT_EQ(finder.destination(), nullptr);
  EXPECT_EQ(finder.distancesFromSource().keys(), ids("A"));
  const auto empty = std::make_shared<KRVNavGraph>();
  EXPECT_TRUE(finder.findPathInGraph(empty, points("A"), {2}, points("A"), false).empty());
  EXPECT_EQ(finder.distancesFromSource().keys(), ids("A"));
}

TEST_F(KRVNavDijkstraUnusualInputTest, ANullStartIsLeftOut) {
  edge("A", "B", 1);
  const std::vector<PointPtr> starts{nullptr, building.point("A"), nullptr};
  const auto way = finder.findPathInGraph(building.graph(), starts, {0, 3, 0}, points("B"), false);
  EXPECT_EQ(building.names(way), "AB");
  EXPECT_EQ(entry("B"), Number(4.0));
}

TEST_F(KRVNavDijkstraUnusualInputTest, AStartThatIsNoNodeLeadsNowhere) {
  edge("A", "B", 1);
  const auto position = building.position(0, 0, 0);
  const auto stranger = at(kOrigin, 0, 99);
  const auto way = finder.findPathInGraph(building.graph(), {position, stranger}, {1, 2},
                                          {building.point("B"), position, stranger}, false);
  EXPECT_TRUE(way.empty());
  auto expected = ids("ABCDEF");
  expected.push_back(-1);
  expected.push_back(99);
  EXPECT_EQ(finder.distancesFromSource().keys(), expected);
}

TEST_F(KRVNavDijkstraUnusualInputTest, AStartThatIsNoNodeLeavesTheOthersTheirWays) {
  edge("A", "B", 1);
  const std::vector<PointPtr> starts{at(kOrigin, 0, 99), building.point("A")};
  const auto way = finder.findPathInGraph(building.graph(), starts, {0, 3}, points("B"), false);
  EXPECT_EQ(building.names(way), "AB");
}

TEST_F(KRVNavDijkstraUnusualInputTest, AStartWithoutDistanceIsLeftOut) {
  edge("A", "C", 5);
  edge("B", "C", 1);
  EXPECT_EQ(find("AB", {0}, "C"), "AC");
  EXPECT_EQ(find("AB", {}, "C"), "");
  EXPECT_EQ(entry("A"), kUnreachedMark);
}

TEST_F(KRVNavDijkstraUnusualInputTest, MoreDistancesThanStartsDoNotMatter) {
  edge("A", "B", 1);
  EXPECT_EQ(find("A", {2, 5, 9}, "B"), "AB");
  EXPECT_EQ(entry("B"), Number(3.0));
}

TEST_F(KRVNavDijkstraUnusualInputTest, NullDestinationsAreLeftOut) {
  edge("A", "B", 1);
  const std::vector<PointPtr> destinations{nullptr, building.point("B")};
  const auto way = finder.findPathInGraph(building.graph(), points("A"), {0}, destinations, false);
  EXPECT_EQ(building.names(way), "AB");
  EXPECT_FALSE(finder.isCloseToDestination(*at(0, 0, 0, 0), {nullptr}));
}

TEST_F(KRVNavDijkstraUnusualInputTest, AnEdgeToANodeThatTheGraphDoesNotKnowIsSkipped) {
  const auto& a = building.point("A");
  const auto stranger = at(kOrigin, 0, 99);
  building.graph()->addEdge(std::make_shared<KRVNavEdge>(a, stranger, 1, 1, true), *a, *stranger);
  edge("A", "B", 5);
  EXPECT_EQ(find("A", {0}, "B"), "AB");
  EXPECT_EQ(finder.distancesFromSource().keys(), ids("ABCDEF"));
}

TEST_F(KRVNavDijkstraUnusualInputTest, AnEdgeToAStartThatTheGraphDoesNotKnowIsSkipped) {
  const auto& a = building.point("A");
  const auto stranger = at(kOrigin, 0, 99);
  building.graph()->addEdge(std::make_shared<KRVNavEdge>(a, stranger, 1, 1, true), *a, *stranger);
  finder.findPathInGraph(building.graph(), {a, stranger}, {0, 50}, points("F"), false);
  EXPECT_EQ(*finder.distancesFromSource().find(99), Number(50.0));
}

TEST_F(KRVNavDijkstraUnusualInputTest, ANullEdgeIsSkipped) {
  const auto& a = building.point("A");
  building.graph()->addEdge(nullptr, *a, *building.point("B"));
  edge("A", "C", 1);
  edge("C", "B", 1);
  EXPECT_EQ(find("A", {0}, "B"), "ACB");
}

TEST_F(KRVNavDijkstraUnusualInputTest, ANullNodeIsNeverWalked) {
  edge("A", "B", 1);
  edge("B", "C", 1);
  building.graph()->nodes().set(id("B"), nullptr);
  EXPECT_EQ(find("A", {0}, "C"), "");
  EXPECT_EQ(find("B", {0}, "BC"), "");
  EXPECT_EQ(find("BA", {0, 4}, "A"), "A");
}

TEST_F(KRVNavDijkstraUnusualInputTest, EdgesAreFiledByNumberWhateverTheirOwnEndsSay) {
  const auto& a = building.point("A");
  const auto& c = building.point("C");
  building.graph()->addEdge(std::make_shared<KRVNavEdge>(c, c, 2, 1, true), *a,
                            *building.point("B"));
  EXPECT_EQ(find("A", {0}, "B"), "AB");
}

TEST_F(KRVNavDijkstraUnusualInputTest, AStartDistanceThatIsNoNumberIsTheLongest) {
  edge("A", "C", 1);
  edge("B", "C", 1000);
  EXPECT_EQ(find("AB", {kNotANumber, 0}, "C"), "BC");
  EXPECT_EQ(find("AB", {kNotANumber, kInfinity}, "C"), "BC");
  EXPECT_EQ(find("A", {kNotANumber}, "C"), "AC");
}

TEST_F(KRVNavDijkstraUnusualInputTest, ACostThatIsNoNumberIsTheLongest) {
  edge("A", "B", kNotANumber);
  edge("B", "A", 1);
  edge("A", "C", 2);
  edge("C", "B", 1);
  EXPECT_EQ(find("A", {0}, "B"), "ACB");
  edge("B", "D", kInfinity, 0);
  EXPECT_EQ(find("A", {0}, "D"), "ACBD");
}

TEST_F(KRVNavDijkstraUnusualInputTest, WhatIsNoNumberIsNearestOnlyWhenNothingElseIsReached) {
  setEntries("ABC", {kNotANumber, kInfinity, -1});
  EXPECT_EQ(nearest("ABC"), "B");
  EXPECT_EQ(nearest("BAC"), "B");
  EXPECT_EQ(nearest("CA"), "A");
}

TEST_F(KRVNavDijkstraUnusualInputTest, AnInfiniteCostIsWalked) {
  edge("A", "B", kInfinity);
  EXPECT_EQ(find("A", {0}, "B"), "AB");
}

TEST_F(KRVNavDijkstraUnusualInputTest, ACircleThatPaysForWalkingItEndsTheTrace) {
  edge("A", "B", -5);
  edge("B", "A", -5);
  edge("B", "C", 1);
  EXPECT_EQ(find("A", {0}, "C"), "ABC");
}

TEST_F(KRVNavDijkstraUnusualInputTest, ATraceNeverComesToANodeTwice) {
  KRVNavDijkstra::Predecessors before;
  before.set(id("C"), building.point("B"));
  before.set(id("B"), building.point("A"));
  before.set(id("A"), building.point("C"));
  before.set(id("D"), building.point("A"));
  before.set(id("E"), building.point("E"));
  const auto trace = [&](const char* name) {
    return building.names(finder.tracePredecessors(before, building.point(name)));
  };
  EXPECT_EQ(trace("D"), "BCAD");
  EXPECT_EQ(trace("C"), "ABC");
  EXPECT_EQ(trace("E"), "E");
}

TEST_F(KRVNavDijkstraUnusualInputTest, ATraceEndsAtANullPredecessorAndOfANullTargetIsEmpty) {
  KRVNavDijkstra::Predecessors before;
  before.set(id("B"), nullptr);
  EXPECT_EQ(building.names(finder.tracePredecessors(before, building.point("B"))), "B");
  EXPECT_TRUE(finder.tracePredecessors(before, nullptr).empty());
}

}  // namespace
}  // namespace KorvaniTest
