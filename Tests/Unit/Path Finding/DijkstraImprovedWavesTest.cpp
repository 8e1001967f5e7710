// The search looked at wave by wave.

#include "SearchFixture.hpp"

namespace KorvaniTest {
namespace {

class DijkstraImprovedWavesTest : public SearchTest {};

TEST_F(DijkstraImprovedWavesTest, TheFirstWaveIsTheStarts) {
  prepare("BA", {2, 3}, "D");
  EXPECT_EQ(waiting(), "BA");
  EXPECT_EQ(way("B"), "B");
  EXPECT_EQ(cost("B"), 2);
  EXPECT_EQ(cost("A"), 3);
}

TEST_F(DijkstraImprovedWavesTest, AStartListedTwiceWaitsTwiceWithItsLaterDistance) {
  prepare("ABA", {1, 2, 3}, "D");
  EXPECT_EQ(waiting(), "ABA");
  EXPECT_EQ(cost("A"), 3);
}

TEST_F(DijkstraImprovedWavesTest, EachWaveRelaxesThePointsThatTheLastOneImproved) {
  edge("A", "C", 1);
  edge("A", "B", 1);
  edge("C", "D", 1);
  edge("B", "E", 1);
  prepare("A", {0}, "F");
  wave();
  EXPECT_EQ(waiting(), "CB");
  wave();
  EXPECT_EQ(waiting(), "DE");
  EXPECT_EQ(way("E"), "ABE");
  wave();
  EXPECT_EQ(waiting(), "");
}

TEST_F(DijkstraImprovedWavesTest, ALaterWaveReplacesALabelAndQueuesThePointAgain) {
  edge("A", "B", 10);
  edge("A", "C", 1);
  edge("C", "B", 1);
  edge("B", "D", 1);
  prepare("A", {0}, "F");
  wave();
  EXPECT_EQ(cost("B"), 10);
  wave();
  EXPECT_EQ(cost("B"), 2);
  EXPECT_EQ(cost("D"), 11);
  EXPECT_EQ(waiting(), "DB");
  wave();
  EXPECT_EQ(cost("D"), 3);
  EXPECT_EQ(way("D"), "ACBD");
  EXPECT_EQ(waiting(), "D");
}

TEST_F(DijkstraImprovedWavesTest, APointThatSeveralEdgesImproveWaitsOnce) {
  edge("A", "B", 1);
  edge("A", "C", 1);
  edge("B", "D", 5);
  edge("C", "D", 3);
  prepare("A", {0}, "F");
  wave();
  wave();
  EXPECT_EQ(waiting(), "D");
  EXPECT_EQ(way("D"), "ACD");
}

TEST_F(DijkstraImprovedWavesTest, AnEqualCostDoesNotQueueThePointAgain) {
  edge("A", "B", 1);
  edge("B", "A", 0);
  edge("A", "C", 2);
  edge("B", "C", 1);
  prepare("A", {0}, "F");
  wave();
  EXPECT_EQ(waiting(), "BC");
  wave();
  EXPECT_EQ(waiting(), "");
  EXPECT_EQ(way("C"), "AC");
}

TEST_F(DijkstraImprovedWavesTest, ALabelImprovedWithinTheWaveCountsForTheEdgesThatFollow) {
  edge("A", "B", 3);
  edge("B", "C", 1);
  prepare("AB", {0, 9}, "F");
  wave();
  EXPECT_EQ(way("C"), "ABC");
  EXPECT_EQ(cost("C"), 4);
}

TEST_F(DijkstraImprovedWavesTest, WaysStayAsTheyWereWhenTheirPointsImprove) {
  edge("A", "B", 10);
  edge("B", "D", 1);
  edge("A", "C", 2);
  edge("C", "E", 2);
  edge("E", "B", 2);
  prepare("A", {0}, "F");
  wave();
  wave();
  EXPECT_EQ(way("D"), "ABD");
  wave();
  EXPECT_EQ(way("B"), "ACEB");
  EXPECT_EQ(way("D"), "ABD");
  EXPECT_EQ(cost("D"), 11);
  wave();
  EXPECT_EQ(way("D"), "ACEBD");
}

TEST_F(DijkstraImprovedWavesTest, AReachedDestinationBecomesTheBestPathButDoesNotEndTheSearch) {
  edge("A", "D", 10);
  edge("A", "B", 1);
  edge("B", "C", 1);
  edge("C", "D", 1);
  prepare("A", {0}, "D");
  wave();
  ASSERT_TRUE(finder.bestPath().has_value());
  EXPECT_EQ(finder.bestPath()->distance, 10);
  EXPECT_EQ(waiting(), "DB");
  wave();
  wave();
  EXPECT_EQ(finder.bestPath()->distance, 3);
  EXPECT_EQ(building.names(finder.bestPath()->nodes), "ABCD");
}

TEST_F(DijkstraImprovedWavesTest, AMoreExpensiveDestinationDoesNotReplaceTheBestPath) {
  edge("A", "C", 2);
  edge("A", "D", 7);
  prepare("A", {0}, "CD");
  wave();
  EXPECT_EQ(building.names(finder.bestPath()->nodes), "AC");
  EXPECT_EQ(way("D"), "AD");
}

TEST_F(DijkstraImprovedWavesTest, EqualPointsHaveALabelEachButWaitOnce) {
  const auto& a = building.point("A");
  const auto& b = building.point("B");
  const auto twin = at(0, 0, 0, b->identifier());
  edge("A", "B", 5);
  // Filed under C's number, it ends at the twin of B.
  building.graph()->addEdge(std::make_shared<KRVNavEdge>(a, twin, 1, 1, true), *a,
                            *building.point("C"));
  prepare("A", {0}, "F");
  wave();
  EXPECT_EQ(finder.nodesToCheck(), (std::vector<PointPtr>{b}));
  EXPECT_EQ(cost("B"), 5);
  ASSERT_TRUE(finder.pathTo(*twin).has_value());
  EXPECT_EQ(finder.pathTo(*twin)->distance, 1);
}

TEST_F(DijkstraImprovedWavesTest, PointsWithoutIdentifierWaitEachForItself) {
  const auto& a = building.point("A");
  const auto x = at(0, 0);
  const auto y = at(0, 0);
  building.graph()->addEdge(std::make_shared<KRVNavEdge>(a, x, 1, 1, true), *a,
                            *building.point("B"));
  building.graph()->addEdge(std::make_shared<KRVNavEdge>(a, y, 1, 1, true), *a,
                            *building.point("C"));
  prepare("A", {0}, "F");
  wave();
  EXPECT_EQ(finder.nodesToCheck(), (std::vector<PointPtr>{x, y}));
}

}  // namespace
}  // namespace KorvaniTest
