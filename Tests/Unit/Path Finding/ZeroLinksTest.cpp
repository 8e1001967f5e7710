#include "Navigation/Path Finding/Hierarchy/ZeroLinks.hpp"

#include <gtest/gtest.h>

#include "EdgeNet.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::Interruption;
using KorvaniNavigation::kNeverInterrupted;
using KorvaniNavigation::ZeroLinks;

constexpr double kLeastCost = 1e-6;

ZeroLinks linksOf(EdgeNet& net, bool barrierFree, double least) {
  Interruption never(kNeverInterrupted);
  return {net.graph(), barrierFree, least, never};
}

std::uint32_t places(EdgeNet& net, bool barrierFree = false) {
  return linksOf(net, barrierFree, kLeastCost).placeCount();
}

TEST(ZeroLinks, JoinTheTwoSidesOfADoor) {
  EdgeNet net(4);
  net.link(0, 1, 3);
  net.link(1, 2, 0);
  net.link(2, 3, 3);
  const ZeroLinks links = linksOf(net, false, kLeastCost);
  EXPECT_EQ(links.placeCount(), 3U);
  EXPECT_EQ(links.placeOf()[1], links.placeOf()[2]);
  EXPECT_EQ(links.nextOf()[1], 2U);
  EXPECT_EQ(links.nextOf()[2], 1U);
  EXPECT_EQ(links.nextOf()[3], 3U);
}

TEST(ZeroLinks, JoinATreeOfSeveralNodes) {
  EdgeNet net(5);
  net.link(0, 1, 0);
  net.link(1, 2, 0);
  net.link(1, 3, 0);
  net.link(3, 4, 1);
  EXPECT_EQ(places(net), 2U);
}

TEST(ZeroLinks, LeaveACircleAlone) {
  EdgeNet net(3);
  net.link(0, 1, 0);
  net.link(1, 2, 0);
  net.link(2, 0, 0);
  EXPECT_EQ(places(net), 3U);
}

TEST(ZeroLinks, LeaveALinkOfOneDirectionAlone) {
  EdgeNet net(2);
  net.edge(0, 1, 0);
  EXPECT_EQ(places(net), 2U);
}

TEST(ZeroLinks, LeaveNodesAloneThatAnEdgeOfNextToNothingLeaves) {
  EdgeNet tiny(3);
  tiny.link(0, 1, 0);
  tiny.link(1, 2, kLeastCost / 2);
  EXPECT_EQ(places(tiny), 3U);
  EdgeNet oneWay(3);
  oneWay.link(0, 1, 0);
  oneWay.edge(1, 2, 0);
  EXPECT_EQ(places(oneWay), 3U);
}

TEST(ZeroLinks, CountNothingAsLongEnoughWhenNothingHasALength) {
  EdgeNet net(3);
  net.link(0, 1, 0);
  net.edge(1, 2, 0);
  net.edge(2, 0, 0);
  EXPECT_EQ(linksOf(net, false, 0).placeCount(), 3U);
}

TEST(ZeroLinks, LookOnlyAtEdgesWithoutBarriersWhenOnlyTheseCount) {
  EdgeNet net(2);
  net.link(0, 1, 0, false);
  EXPECT_EQ(places(net), 1U);
  EXPECT_EQ(places(net, true), 2U);
}

TEST(ZeroLinks, LeaveLargeGroupsAlone) {
  EdgeNet net(100);
  for (std::uint32_t node = 1; node < 100; ++node) net.link(node - 1, node, 0);
  EXPECT_EQ(places(net), 100U);
}

}  // namespace
}  // namespace KorvaniTest
