#include "Navigation/Path Finding/Arrays/PathSearch.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <thread>
#include <vector>

namespace KorvaniTest {
namespace {

using namespace KorvaniNavigation;

/// A corridor of nodes 0, 1, ... joined both ways.
class PathSearchTest : public testing::Test {
 protected:
  PathSearchTest() {
    for (std::uint32_t node = 0; node < kNodes; ++node) {
      firstEdge.push_back(static_cast<std::uint32_t>(target.size()));
      if (node > 0) addEdge(node - 1);
      if (node + 1 < kNodes) addEdge(node + 1);
    }
    firstEdge.push_back(static_cast<std::uint32_t>(target.size()));
  }

  void addEdge(std::uint32_t to) {
    target.push_back(to);
    cost.push_back(1.25);
    barrierFree.push_back(to % 50 == 49 ? 0 : 1);
  }

  std::size_t ask(const PathSearch& search, std::uint32_t from, std::uint32_t to,
                  bool onlyBarrierFree = false) const {
    const std::vector<StartNode> starts{{from, 0}};
    const std::vector<std::uint32_t> targets{to};
    const auto path = search.find({starts, targets, onlyBarrierFree, interrupted});
    return path ? path->nodes.size() : 0;
  }

  void askOften(const PathSearch& search, int times) const {
    for (int i = 0; i < times; ++i) EXPECT_EQ(ask(search, 1, 20), 20U);
  }

  static constexpr std::uint32_t kNodes = 200;
  std::vector<std::uint32_t> firstEdge;
  std::vector<std::uint32_t> target;
  std::vector<double> cost;
  std::vector<std::uint8_t> barrierFree;
  std::atomic<bool> interrupted{false};
  SearchHistory history;
};

TEST_F(PathSearchTest, PreparesNothingForTheFirstSearches) {
  const SearchGraph graph{firstEdge, target, cost, barrierFree};
  const PathSearch search(graph, history);
  const std::size_t before = search.bytes();
  askOften(search, SearchHistory::kLeastPatience);
  EXPECT_EQ(search.bytes(), before);
  askOften(search, 1);
  EXPECT_GT(search.bytes(), before);
}

TEST_F(PathSearchTest, PreparesBarrierFreeSearchesApart) {
  const SearchGraph graph{firstEdge, target, cost, barrierFree};
  const PathSearch search(graph, history);
  askOften(search, 20);
  const std::size_t before = search.bytes();
  for (int i = 0; i < 20; ++i) {
    EXPECT_EQ(ask(search, 1, 48, true), 48U);
    EXPECT_EQ(ask(search, 1, 60, true), 0U);
  }
  EXPECT_GT(search.bytes(), before);
}

TEST_F(PathSearchTest, FindsNothingWhileItIsInterrupted) {
  const SearchGraph graph{firstEdge, target, cost, barrierFree};
  const PathSearch search(graph, history);
  interrupted = true;
  for (int i = 0; i < 20; ++i) EXPECT_EQ(ask(search, 1, 20), 0U);
  interrupted = false;
  askOften(search, 1);
}

TEST_F(PathSearchTest, PreparesNothingWhileItIsInterruptedAndAllAfterTwiceAsManySearches) {
  const SearchGraph graph{firstEdge, target, cost, barrierFree};
  const PathSearch search(graph, history);
  askOften(search, SearchHistory::kLeastPatience);
  const std::size_t before = search.bytes();
  interrupted = true;
  EXPECT_EQ(ask(search, 1, 20), 0U);
  EXPECT_EQ(search.bytes(), before);
  interrupted = false;
  askOften(search, 2 * SearchHistory::kLeastPatience);
  EXPECT_EQ(search.bytes(), before);
  askOften(search, 1);
  EXPECT_GT(search.bytes(), before);
}

TEST_F(PathSearchTest, WaitsLongerAfterAHierarchyThatDidNotPay) {
  const SearchGraph graph{firstEdge, target, cost, barrierFree};
  {
    const PathSearch search(graph, history);
    askOften(search, SearchHistory::kLeastPatience + 2);
  }
  EXPECT_EQ(history.patience(), 2 * SearchHistory::kLeastPatience);
  for (int i = 0; i < 20; ++i) history.dropped(0);
  EXPECT_EQ(history.patience(), SearchHistory::kMostPatience);
}

TEST_F(PathSearchTest, WaitsNoLongerAfterAHierarchyThatWasWorthItsCost) {
  const SearchGraph graph{firstEdge, target, cost, barrierFree};
  history.dropped(0);
  {
    const PathSearch search(graph, history);
    askOften(search, history.patience() + SearchHistory::kWorthwhile + 1);
  }
  EXPECT_EQ(history.patience(), SearchHistory::kLeastPatience);
}

TEST_F(PathSearchTest, AFewSearchesAtATimeLeaveThePatienceAlone) {
  const SearchGraph graph{firstEdge, target, cost, barrierFree};
  for (int change = 0; change < 10; ++change) {
    const PathSearch search(graph, history);
    askOften(search, 2);
  }
  EXPECT_EQ(history.patience(), SearchHistory::kLeastPatience);
}

TEST_F(PathSearchTest, AnswersManyThreadsAtOnce) {
  const SearchGraph graph{firstEdge, target, cost, barrierFree};
  const PathSearch search(graph, history);
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (std::uint32_t t = 0; t < 4; ++t) {
    threads.emplace_back([&, t] {
      for (std::uint32_t i = 0; i < 100; ++i) {
        const std::uint32_t to = (i * 7 + t * 31) % kNodes;
        const std::size_t expected = to == 0 ? 0 : to + 1;
        if (ask(search, 0, to) != expected) ++wrong;
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace KorvaniTest
