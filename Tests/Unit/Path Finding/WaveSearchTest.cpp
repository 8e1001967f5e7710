#include "Navigation/Path Finding/Arrays/WaveSearch.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <vector>

#include "EdgeNet.hpp"

namespace KorvaniTest {
namespace {

using namespace KorvaniNavigation;
using WayNodes = std::vector<std::uint32_t>;

const std::atomic<bool> goesOn{false};

WayNodes wavesFind(EdgeNet& net, const std::vector<StartNode>& starts, const WayNodes& targets) {
  const WaveSearch search(net.graph());
  const auto path = search.find({starts, targets, false, goesOn});
  return path ? path->nodes : WayNodes{};
}

TEST(WaveSearch, KeepsOfTwoEqualWaysTheOneOfFewerEdges) {
  EdgeNet net(4);
  net.link(0, 1, 1);
  net.link(1, 2, 1);
  net.link(2, 3, 1);
  net.link(0, 3, 3);
  EXPECT_EQ(wavesFind(net, {{0, 0}}, {3}), (WayNodes{0, 3}));
}

TEST(WaveSearch, KeepsOfTwoEqualWaysTheOneOverTheEdgeThatIsListedFirst) {
  EdgeNet net(4);
  net.edge(0, 2, 1);
  net.edge(0, 1, 1);
  net.edge(1, 3, 1);
  net.edge(2, 3, 1);
  EXPECT_EQ(wavesFind(net, {{0, 0}}, {3}), (WayNodes{0, 2, 3}));
}

TEST(WaveSearch, GoesOnForACheaperWayOfMoreEdges) {
  EdgeNet net(5);
  net.edge(0, 4, 10);
  for (std::uint32_t node = 0; node < 4; ++node) net.edge(node, node + 1, 2.4);
  EXPECT_EQ(wavesFind(net, {{0, 0}}, {4}), (WayNodes{0, 1, 2, 3, 4}));
}

TEST(WaveSearch, PassesThroughNoTarget) {
  EdgeNet net(3);
  net.link(0, 1, 1);
  net.link(1, 2, 0);
  EXPECT_EQ(wavesFind(net, {{0, 0}}, {2, 1}), (WayNodes{0, 1}));
}

TEST(WaveSearch, KeepsTheWayThatItFoundWhenALabelOnItImproves) {
  // The way over 1 and 2 is cheaper to 2 by so little that the sum to 3 does not show it.
  EdgeNet net(4);
  net.edge(0, 2, 1);
  net.edge(0, 1, 0.5);
  net.edge(1, 2, 0.5 - 0x1p-53);
  net.edge(2, 3, 0x1p40);
  EXPECT_EQ(wavesFind(net, {{0, 0}}, {3}), (WayNodes{0, 2, 3}));
}

TEST(WaveSearch, StartsAnewEachTime) {
  EdgeNet net(3);
  net.link(0, 1, 1);
  net.link(1, 2, 1);
  const WaveSearch search(net.graph());
  const std::vector<StartNode> starts{{0, 7}};
  for (const std::uint32_t target : {2U, 1U, 2U}) {
    const WayNodes targets{target};
    const auto path = search.find({starts, targets, false, goesOn});
    ASSERT_TRUE(path);
    EXPECT_EQ(path->nodes.back(), target);
    EXPECT_EQ(path->cost, 7.0 + target);
  }
}

}  // namespace
}  // namespace KorvaniTest
