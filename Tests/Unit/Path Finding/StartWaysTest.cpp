// Queries whose starts lie on each other's ways, as those of a position exactly on a node do.

#include "Navigation/Path Finding/Hierarchy/StartWays.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstdint>
#include <vector>

#include "EdgeNet.hpp"
#include "Navigation/Path Finding/Arrays/WaveSearch.hpp"
#include "Navigation/Path Finding/Hierarchy/RoutingHierarchy.hpp"

namespace KorvaniTest {
namespace {

using namespace KorvaniNavigation;

constexpr double kUp = 1e300;
constexpr double kDown = 0;

/// A corridor 0-1-2-3-4 with links of 3, 4, 5 and 6 metres.
class StartWaysTest : public testing::Test {
 protected:
  StartWaysTest() {
    for (std::uint32_t node = 0; node < 4; ++node) net.link(node, node + 1, 3.0 + node);
  }

  using Nodes = std::vector<std::uint32_t>;

  /// The way that the hierarchy finds, with hub labels and without; empty when it does not decide.
  /// It must be the one of the waves.
  Nodes decided(const std::vector<StartNode>& starts, const Nodes& targets) {
    const SearchQuery query{starts, targets, false, kNeverInterrupted};
    const auto expected = WaveSearch(net.graph()).find(query);
    Nodes nodes;
    for (const std::size_t mostHubs : {std::size_t{0}, RoutingHierarchy::kMostHubs}) {
      const auto answer = RoutingHierarchy(net.graph(), false, mostHubs).find(query);
      nodes = answer.path.nodes;
      if (answer.outcome != RoutingHierarchy::Outcome::found) continue;
      EXPECT_EQ(nodes, expected->nodes);
      EXPECT_EQ(answer.path.cost, expected->cost);
    }
    return nodes;
  }

  EdgeNet net{5};
};

TEST_F(StartWaysTest, FromANodeItselfTheWayBeginsWhereItLeavesTheEdge) {
  EXPECT_EQ(decided({{1, 0}, {2, 4}}, {4}), (Nodes{2, 3, 4}));
  EXPECT_EQ(decided({{2, 4}, {1, 0}}, {4}), (Nodes{2, 3, 4}));
  EXPECT_EQ(decided({{1, 0}, {2, 4}}, {0}), (Nodes{1, 0}));
  EXPECT_EQ(decided({{1, 4}, {2, 0}}, {0}), (Nodes{1, 0}));
}

TEST_F(StartWaysTest, ALinkOfLengthZeroIsNotWalkedFromItsOtherEnd) {
  net.link(4, 3, 0);
  EXPECT_EQ(decided({{3, 0}, {4, 0}}, {1}), (Nodes{3, 2, 1}));
}

TEST_F(StartWaysTest, AStartThatIsFartherByALastBitIsReplacedWhenItsEdgeIsWalkedFirst) {
  EXPECT_EQ(decided({{1, 0.25}, {2, std::nextafter(4.25, kUp)}}, {4}), (Nodes{1, 2, 3, 4}));
  EXPECT_EQ(decided({{1, 0.25}, {2, std::nextafter(4.25, kDown)}}, {4}), (Nodes{2, 3, 4}));
}

// The sum after the edge of 5 metres is rounded to the same number for both.
TEST_F(StartWaysTest, AStartThatIsFartherByALastBitStaysWhenItHasGoneAheadAndRoundingHidesTheBit) {
  EXPECT_EQ(decided({{2, std::nextafter(4.25, kUp)}, {1, 0.25}}, {3}), (Nodes{2, 3}));
}

TEST_F(StartWaysTest, AStartThatIsFartherByMoreIsReplacedEvenIfItHasGoneAhead) {
  EXPECT_EQ(decided({{2, 4.25 + 0x1p-40}, {1, 0.25}}, {3}), (Nodes{1, 2, 3}));
}

TEST_F(StartWaysTest, OfSeveralStartsOnOneWayTheLastOneCounts) {
  EXPECT_EQ(decided({{0, 0}, {1, 3}, {2, 7}}, {4}), (Nodes{2, 3, 4}));
  EXPECT_EQ(decided({{2, 7}, {0, 0}, {1, 3}}, {4}), (Nodes{2, 3, 4}));
}

TEST_F(StartWaysTest, WaysThatOnlyMeetAtTheTargetStayUndecided) {
  EXPECT_EQ(decided({{1, 2}, {4, 0}}, {3}), (Nodes{4, 3}));
  EXPECT_EQ(decided({{2, 1}, {4, 0}}, {3}), Nodes{});
}

TEST_F(StartWaysTest, AWayThatIsTiedInItselfStaysUndecided) {
  net.link(2, 4, 11);
  EXPECT_EQ(decided({{1, 0}, {2, 4}}, {4}), Nodes{});
}

TEST_F(StartWaysTest, AStartThatIsListedTwiceStaysUndecided) {
  EXPECT_EQ(decided({{1, 0}, {2, 4}, {1, 0}}, {4}), Nodes{});
}

}  // namespace
}  // namespace KorvaniTest
