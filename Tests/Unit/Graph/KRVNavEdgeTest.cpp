#include "Navigation/Graph/KRVNavEdge.hpp"

#include <gtest/gtest.h>

#include "Support/Points.hpp"

namespace KorvaniNavigation {
namespace {

using namespace KorvaniTest;

TEST(KRVNavEdge, BetweenTwoPointsIsAPlainBarrierFreeWayOfTheirDistance) {
  const auto a = at(kOrigin, 0, 1);
  const auto b = at(metresEast(kOrigin, 20), 0, 2);
  const KRVNavEdge edge(a, b);
  EXPECT_EQ(edge.start(), a);
  EXPECT_EQ(edge.end(), b);
  EXPECT_EQ(edge.distance(), a->distanceFrom(*b));
  EXPECT_EQ(edge.multiplicator(), 1.0);
  EXPECT_TRUE(edge.isBarrierFree());
  EXPECT_EQ(edge.type(), std::nullopt);
}

TEST(KRVNavEdge, FromAPointToItselfIsOneLevelHeightLong) {
  const auto a = at(kOrigin, 0, 1);
  EXPECT_EQ(KRVNavEdge(a, a).distance(), 3.0);
}

TEST(KRVNavEdge, KeepsTheGivenValuesAndHasNoTypeWithoutOne) {
  const auto a = at(kOrigin, 0, 1);
  const auto b = at(kOrigin, 1, 2);
  const KRVNavEdge edge(a, b, 12.5, 2.25, false);
  EXPECT_EQ(edge.start(), a);
  EXPECT_EQ(edge.end(), b);
  EXPECT_EQ(edge.distance(), 12.5);
  EXPECT_EQ(edge.multiplicator(), 2.25);
  EXPECT_FALSE(edge.isBarrierFree());
  EXPECT_EQ(edge.type(), std::nullopt);
}

TEST(KRVNavEdge, KeepsItsTypeUnchangedAnEmptyOneToo) {
  const auto a = at(kOrigin, 0, 1);
  EXPECT_EQ(KRVNavEdge(a, a, 1, 1, true, "stairs up").type(), "stairs up");
  EXPECT_EQ(KRVNavEdge(a, a, 1, 1, true, "").type(), "");
}

TEST(KRVNavEdge, ChecksNothingItIsGiven) {
  const auto a = at(kOrigin, 0, 1);
  const KRVNavEdge edge(a, nullptr, -4, 0, true);
  EXPECT_EQ(edge.end(), nullptr);
  EXPECT_EQ(edge.distance(), -4);
  EXPECT_EQ(edge.multiplicator(), 0);
}

TEST(KRVNavEdge, PropertiesAreSettable) {
  const auto a = at(kOrigin, 0, 1);
  const auto b = at(kOrigin, 0, 2);
  KRVNavEdge edge(a, b, 1, 1, true, "way");
  edge.setStart(b);
  edge.setEnd(a);
  edge.setDistance(7);
  edge.setMultiplicator(3);
  edge.setIsBarrierFree(false);
  edge.setType(std::nullopt);
  EXPECT_EQ(edge.start(), b);
  EXPECT_EQ(edge.end(), a);
  EXPECT_EQ(edge.distance(), 7);
  EXPECT_EQ(edge.multiplicator(), 3);
  EXPECT_FALSE(edge.isBarrierFree());
  EXPECT_EQ(edge.type(), std::nullopt);
}

TEST(KRVNavEdge, KeepsItsPointsAlive) {
  auto a = at(kOrigin, 0, 1);
  const std::weak_ptr<KRVNavPoint> watched = a;
  auto edge = std::make_unique<KRVNavEdge>(a, a);
  a.reset();
  EXPECT_FALSE(watched.expired());
  edge.reset();
  EXPECT_TRUE(watched.expired());
}

}  // namespace
}  // namespace KorvaniNavigation
