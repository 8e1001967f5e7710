#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/Lint/DrawnBuilding.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::LintEdge;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

TEST(LintEdges, OneThroughAWallIsAnErrorThatNamesTheEdgeAndTheWall) {
  DrawnBuilding drawn;
  drawn.level(0, R"(
      #
    A #  B
      #
  )");
  drawn.join("A", "B");
  const auto findings = found(drawn, "edge-through-wall");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::error);
  EXPECT_THAT(findings[0].levels, ElementsAre(0));
  EXPECT_THAT(findings[0].edges, ElementsAre(LintEdge{1, 2}));
  EXPECT_THAT(findings[0].features, ElementsAre(4, 3));
  EXPECT_THAT(findings[0].lines, SizeIs(1));
  EXPECT_EQ(findings[0].message,
            "Edge 1-2 runs through a wall (feature 3): lead it through a door, or leave a gap in "
            "the wall.");
  ASSERT_THAT(findings[0].at, SizeIs(1));
  EXPECT_NEAR(KorvaniPlatform::greatCircleDistance(findings[0].at[0], drawn.coordinate(6, 1)), 0,
              1e-3);
}

TEST(LintEdges, OneThroughTwoWallsIsOneFinding) {
  DrawnBuilding drawn;
  drawn.level(0, R"(
      #   #
    A #   #  B
      #   #
  )");
  drawn.join("A", "B", {.oneway = true});
  const auto findings = found(drawn, "edge-through-wall");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_THAT(findings[0].at, SizeIs(2));
  EXPECT_THAT(findings[0].message, HasSubstr("2 walls (features 3 and 4)"));
}

TEST(LintEdges, OfVeryManyWallsTheFirstAreTold) {
  DrawnBuilding drawn;
  drawn.level(0, "A                  B").join("A", "B");
  for (int i = 0; i < 60; ++i) {
    drawn.wall(0, {drawn.coordinate(1 + i / 10.0, -1), drawn.coordinate(1 + i / 10.0, 1)});
  }
  const auto findings = found(drawn, "edge-through-wall");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_THAT(findings[0].at, SizeIs(50));
  EXPECT_THAT(findings[0].features, SizeIs(51));
  EXPECT_THAT(findings[0].message,
              HasSubstr("runs through at least 50 walls (features 4, 5, 6 and 47 more)"));
}

TEST(LintEdges, OneThroughADoorIsFine) {
  DrawnBuilding drawn;
  drawn.level(0, R"(
      #
      #
    A----B
      #
      #
  )");
  EXPECT_THAT(found(drawn, "edge-through-wall"), SizeIs(0));
}

TEST(LintEdges, TouchingTheJambOfADoorIsRunningThroughIt) {
  DrawnBuilding drawn;
  drawn.level(0, "A    B");
  drawn.wall(0, {drawn.coordinate(2, -1), drawn.coordinate(2, 0)});
  drawn.join("A", "B");
  EXPECT_THAT(found(drawn, "edge-through-wall"), SizeIs(1));
}

TEST(LintEdges, ANodeOnAWallIsToldFromAnEdgeThroughIt) {
  DrawnBuilding drawn;
  drawn.level(0, "A----B");
  drawn.wall(0, {drawn.coordinate(5, -1), drawn.coordinate(5, 1)});
  const auto findings = found(drawn, "edge-through-wall");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_THAT(findings[0].message,
              AllOf(HasSubstr("touches a wall (feature 4) at node 2"), HasSubstr("move the node")));
}

TEST(LintEdges, OneThatRunsAlongInAWallIsAnError) {
  DrawnBuilding drawn(10);
  drawn.level(0, "A         B");
  drawn.wall(0, {drawn.coordinate(4, 0), drawn.coordinate(8, 0)});
  drawn.join("A", "B");
  const auto findings = found(drawn, "edge-through-wall");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::error);
  EXPECT_THAT(findings[0].message, HasSubstr("Edge 1-2 runs along in a wall (feature 3)"));
  ASSERT_THAT(findings[0].at, SizeIs(1));
  EXPECT_NEAR(KorvaniPlatform::greatCircleDistance(findings[0].at[0], drawn.coordinate(6, 0)), 0,
              1e-3);
}

TEST(LintEdges, OneWhollyInAWallIsAnErrorHoweverItLies) {
  DrawnBuilding drawn(10);
  drawn.level(0, "A  B").node("C", 0, 7, 5);
  drawn.wall(0, {drawn.coordinate(-5, 0), drawn.coordinate(9, 0)});
  drawn.wall(0, {drawn.coordinate(3.0002, 0.0006), drawn.coordinate(6.9998, 4.9994)});
  drawn.join("A", "B").join("C", "B");
  EXPECT_THAT(found(drawn, "edge-through-wall"), SizeIs(2));
}

TEST(LintEdges, OneBesideAWallOrBehindItsEndIsFine) {
  DrawnBuilding drawn;
  drawn.level(0, "A         B");
  drawn.wall(0, {drawn.coordinate(0, 0.02), drawn.coordinate(10, 0.02)});
  drawn.wall(0, {drawn.coordinate(10.1, 0), drawn.coordinate(15, 0)});
  drawn.wall(0, {drawn.coordinate(5, 0.005), drawn.coordinate(5, 1)});
  drawn.join("A", "B");
  EXPECT_THAT(found(drawn, "edge-through-wall"), IsEmpty());
}

TEST(LintEdges, AWallOfAnotherLevelAndAnEdgeBetweenLevelsAreFine) {
  DrawnBuilding drawn;
  drawn.level(0, "A    B");
  drawn.level(1, R"(
      #
    C #
      #
  )");
  drawn.join("A", "B").join("B", "C");
  EXPECT_THAT(found(drawn, "edge-through-wall"), IsEmpty());
}

TEST(LintEdges, WallsOfEveryRegionThatAnEdgePassesCount) {
  DrawnBuilding drawn;
  drawn.level(0, "A");
  drawn.node("B", 0, 8, 0);
  drawn.contents().regions.push_back(
      {0, "East", {drawn.coordinate(0.5, 0.5), drawn.coordinate(9, -0.5)}});
  drawn.wall(0, {drawn.coordinate(4, 0.4), drawn.coordinate(4, -0.4)});
  drawn.join("A", "B");
  EXPECT_THAT(found(drawn, "edge-through-wall"), SizeIs(1));
}

TEST(LintEdges, ADistanceBelowTheGroundBetweenTheNodesIsAnError) {
  DrawnBuilding drawn(10);
  drawn.level(0, "A B").join("A", "B", {.distance = 19.0});
  const auto findings = found(drawn, "edge-too-short");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::error);
  EXPECT_THAT(findings[0].message,
              HasSubstr("Edge 1-2 is 19.00 m long, but its nodes are 20.00 m"));
}

TEST(LintEdges, ADistanceMayBeRounded) {
  DrawnBuilding drawn(10);
  drawn.level(0, "A B C").join("A", "B", {.distance = 19.85}).join("B", "C");
  EXPECT_THAT(found(drawn, "edge-too-short"), IsEmpty());
  DrawnBuilding small(0.1);
  small.level(0, "A B").join("A", "B", {.distance = 0.11});
  EXPECT_THAT(found(small, "edge-too-short"), IsEmpty());
}

TEST(LintEdges, BelowTheGroundBetweenItsNodesOneBetweenLevelsIsAnErrorToo) {
  DrawnBuilding drawn(10);
  drawn.level(0, "A");
  drawn.level(1, "B C");
  drawn.join("A", "C", {.distance = 12.0});
  const auto findings = found(drawn, "edge-too-short");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::error);
  EXPECT_THAT(findings[0].edges, ElementsAre(LintEdge{1, 3}));
  EXPECT_THAT(findings[0].levels, ElementsAre(0, 1));
}

TEST(LintEdges, ALiftThatHardlyRisesIsAWarning) {
  DrawnBuilding drawn;
  drawn.level(0, "A").level(1, "B").level(3, "C");
  drawn.join("A", "B", {.distance = 0.5}).join("B", "A", {.distance = 1.5});
  drawn.join("A", "C", {.distance = 3.0}).join("C", "A");
  const auto findings = found(drawn, "edge-too-short");
  ASSERT_THAT(findings, SizeIs(2));
  EXPECT_EQ(findings[0].severity, LintSeverity::warning);
  EXPECT_THAT(findings[0].message,
              HasSubstr("Edge 1-2 is 0.50 m long, but from level 0 to level 1 it is 1.50 m"));
  EXPECT_THAT(findings[1].edges, ElementsAre(LintEdge{1, 3}));
}

TEST(LintEdges, AStairsRiseAndGroundCountTogether) {
  DrawnBuilding drawn;
  drawn.level(0, "A").level(1, "  B").join("A", "B", {.distance = 2.2});
  EXPECT_THAT(found(drawn, "edge-too-short"), SizeIs(1));
  drawn.contents().edges[0].distance = 2.45;
  EXPECT_THAT(found(drawn, "edge-too-short"), IsEmpty());
}

TEST(LintEdges, ADistanceFarAboveTheStraightLineIsAWarning) {
  DrawnBuilding drawn;
  drawn.level(0, "A    B    C");
  drawn.join("A", "B", {.distance = 15.5}).join("B", "C", {.distance = 14.5});
  const auto findings = found(drawn, "edge-too-long");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::warning);
  EXPECT_THAT(findings[0].edges, ElementsAre(LintEdge{1, 2}));
}

TEST(LintEdges, AFewMetresMoreAreNotTooLong) {
  DrawnBuilding drawn;
  drawn.level(0, "A B").join("A", "B", {.distance = 11.5});
  EXPECT_THAT(found(drawn, "edge-too-long"), IsEmpty());
  LintOptions strict;
  strict.longMetres = 5;
  EXPECT_THAT(found(drawn, "edge-too-long", strict), SizeIs(1));
}

TEST(LintEdges, TheHeightOfLevelsIsPartOfTheStraightLine) {
  DrawnBuilding drawn;
  drawn.level(0, "A").level(4, "B").join("A", "B", {.distance = 30.0});
  EXPECT_THAT(found(drawn, "edge-too-long"), IsEmpty());
  drawn.join("B", "A", {.distance = 40.0});
  EXPECT_THAT(found(drawn, "edge-too-long"), SizeIs(1));
}

TEST(LintEdges, OneFromANodeToItselfIsAWarning) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B").join("B", "B");
  const auto findings = found(drawn, "edge-to-itself");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::warning);
  EXPECT_THAT(findings[0].nodes, ElementsAre(2));
  EXPECT_THAT(findings[0].lines, IsEmpty());
}

TEST(LintEdges, OneThatReplacesAnotherIsAWarningThatNamesBothFeatures) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B").join("B", "A", {.oneway = true});
  const auto findings = found(drawn, "duplicate-edge");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::warning);
  EXPECT_THAT(findings[0].features, ElementsAre(4, 3));
  EXPECT_THAT(findings[0].message, HasSubstr("Edge 2-1 (feature 4)"));
}

TEST(LintEdges, TwoOneWayEdgesMakeAWayInBothDirections) {
  DrawnBuilding drawn;
  drawn.level(0, "A  B").join("A", "B", {.oneway = true}).join("B", "A", {.oneway = true});
  EXPECT_THAT(found(drawn, "duplicate-edge"), IsEmpty());
}

TEST(LintEdges, ATwoWayEdgeDrawnTwiceIsOneFinding) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B").join("B", "A");
  EXPECT_THAT(found(drawn, "duplicate-edge"), SizeIs(1));
}

TEST(LintEdges, OneToAnotherLevelNeedsAType) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B").level(1, "C--D");
  drawn.join("A", "C", {.type = "stairs"}).join("B", "D").join("A", "D", {.type = ""});
  const auto findings = found(drawn, "level-change-without-type");
  ASSERT_THAT(findings, SizeIs(2));
  EXPECT_EQ(findings[0].severity, LintSeverity::warning);
  EXPECT_THAT(findings[0].edges, ElementsAre(LintEdge{2, 4}));
  EXPECT_THAT(findings[1].edges, ElementsAre(LintEdge{1, 4}));
}

TEST(LintEdges, OneThatPassesALevelIsANote) {
  DrawnBuilding drawn;
  drawn.level(0, "A").level(1, "B").level(2, "C");
  drawn.join("A", "B", {.type = "lift"}).join("A", "C", {.type = "lift"});
  const auto findings = found(drawn, "edge-over-levels");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::note);
  EXPECT_THAT(findings[0].message, HasSubstr("Edge 1-3 passes level 1 without a stop"));
}

TEST(LintEdges, OfManyLevelsPassedTheNumberIsTold) {
  DrawnBuilding drawn;
  for (int level = 0; level <= 6; ++level)
    drawn.level(level, std::string(1, static_cast<char>('A' + level)));
  drawn.join("G", "A", {.type = "lift"});
  const auto findings = found(drawn, "edge-over-levels");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_THAT(findings[0].message, HasSubstr("passes 5 levels without a stop"));
}

TEST(LintEdges, LevelsThatDoNotExistArePassedWithoutANote) {
  DrawnBuilding drawn;
  drawn.level(0, "A").level(5, "B").join("A", "B");
  EXPECT_THAT(found(drawn, "edge-over-levels"), IsEmpty());
}

}  // namespace
}  // namespace KorvaniTest
