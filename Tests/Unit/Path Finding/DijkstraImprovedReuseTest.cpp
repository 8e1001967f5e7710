// What a finder carries from one search to the next.

#include "SearchFixture.hpp"

namespace KorvaniTest {
namespace {

class DijkstraImprovedReuseTest : public SearchTest {};

TEST_F(DijkstraImprovedReuseTest, SearchingAgainWithoutRestartReusesLabelsAndBestPath) {
  edge("A", "B", 1);
  edge("A", "C", 5);
  EXPECT_EQ(find("A", {0}, "B"), "AB");
  // C was labelled already, so no edge improves it; the old best path is the answer.
  EXPECT_EQ(find("A", {0}, "C"), "AB");
  EXPECT_EQ(destination(), "B");
  EXPECT_EQ(find("", {}, "C"), "AB");
}

TEST_F(DijkstraImprovedReuseTest, OldLabelsKeepANearerStartsCosts) {
  edge("A", "B", 1);
  edge("B", "C", 1);
  edge("D", "B", 1);
  EXPECT_EQ(find("A", {0}, "F"), "");
  EXPECT_EQ(find("D", {3}, "C"), "");
  EXPECT_EQ(way("C"), "ABC");
  EXPECT_EQ(cost("D"), 3);
}

TEST_F(DijkstraImprovedReuseTest, SearchingAfterRestartBeginsAnew) {
  edge("A", "B", 1);
  edge("A", "C", 5);
  find("A", {0}, "B");
  finder.restart();
  EXPECT_EQ(find("A", {0}, "C"), "AC");
  EXPECT_EQ(destination(), "C");
}

TEST_F(DijkstraImprovedReuseTest, ASearchBeginsByForgettingTheReachedDestination) {
  edge("A", "B", 1);
  find("A", {0}, "B");
  finder.restart();
  EXPECT_EQ(destination(), "B");
  EXPECT_EQ(find("A", {0}, "F"), "");
  EXPECT_EQ(finder.destination(), nullptr);
}

TEST_F(DijkstraImprovedReuseTest, RestartClearsInterruptionLabelsWaitingPointsAndBestPath) {
  edge("A", "B", 1);
  edge("B", "C", 1);
  prepare("A", {0}, "B");
  wave();
  finder.interrupt();
  ASSERT_EQ(waiting(), "B");
  ASSERT_TRUE(finder.bestPath().has_value());
  finder.restart();
  EXPECT_FALSE(finder.interrupted());
  EXPECT_EQ(waiting(), "");
  EXPECT_FALSE(finder.bestPath().has_value());
  EXPECT_EQ(way("A"), "");
  EXPECT_EQ(way("B"), "");
}

TEST_F(DijkstraImprovedReuseTest, RestartLeavesDestinationsReachedDestinationAndBarrierProperty) {
  edge("A", "B", 1);
  finder.setLookForBarrierFreeRoute(true);
  find("A", {0}, "BC");
  finder.restart();
  EXPECT_EQ(building.names(finder.destinationNodes()), "BC");
  EXPECT_TRUE(finder.isDestination(*building.point("C")));
  EXPECT_EQ(destination(), "B");
  EXPECT_TRUE(finder.lookForBarrierFreeRoute());
}

TEST_F(DijkstraImprovedReuseTest, TheReachedDestinationIsWritable) {
  finder.setDestination(building.point("D"));
  EXPECT_EQ(destination(), "D");
}

TEST_F(DijkstraImprovedReuseTest, PointsItHasLabelledStayAliveUntilRestart) {
  const auto& a = building.point("A");
  auto stranger = at(0, 0);
  const std::weak_ptr<KRVNavPoint> watched = stranger;
  building.graph()->addEdge(std::make_shared<KRVNavEdge>(a, stranger, 1, 1, true), *a,
                            *building.point("B"));
  find("A", {0}, "F");
  building.graph()->edges().clear();
  stranger.reset();
  EXPECT_FALSE(watched.expired());
  finder.restart();
  EXPECT_TRUE(watched.expired());
}

}  // namespace
}  // namespace KorvaniTest
