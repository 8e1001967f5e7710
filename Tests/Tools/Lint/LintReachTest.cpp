#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/Lint/DrawnBuilding.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::LintEdge;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

TEST(LintReach, AnIslandWithoutPlacesIsAWarning) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B--C    D--E");
  const auto findings = found(drawn, "unreachable-island");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::warning);
  EXPECT_THAT(findings[0].nodes, ElementsAre(4, 5));
  EXPECT_THAT(findings[0].edges, ElementsAre(LintEdge{4, 5}));
  EXPECT_THAT(findings[0].lines, SizeIs(1));
  EXPECT_THAT(findings[0].levels, ElementsAre(0));
  EXPECT_THAT(findings[0].message, HasSubstr("A part of 2 nodes on level 0 (with node 4)"));
}

TEST(LintReach, AnIslandThatHoldsPlacesIsAnErrorThatNamesThem) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B--C    D--E");
  drawn.place("Desk", 0, 14, 0).place("Shop", 0, 0, 0);
  const auto findings = found(drawn, "unreachable-island");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::error);
  EXPECT_THAT(findings[0].names, ElementsAre("Desk"));
  EXPECT_THAT(findings[0].message, HasSubstr(", and with it \"Desk\""));
}

TEST(LintReach, EveryIslandIsOneFindingWithAllItsLevels) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B--C  D  F").level(1, "E");
  drawn.join("D", "E", {.type = "stairs"});
  const auto findings = found(drawn, "unreachable-island");
  ASSERT_THAT(findings, SizeIs(2));
  EXPECT_THAT(findings[0].levels, ElementsAre(0, 1));
  EXPECT_THAT(findings[0].message, HasSubstr("on levels 0 and 1"));
  EXPECT_THAT(findings[1].message, HasSubstr("Node 5 of level 0"));
}

TEST(LintReach, OfEqualPartsTheEarlierIsTheMainOne) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B   C--D");
  const auto findings = found(drawn, "unreachable-island");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_THAT(findings[0].nodes, ElementsAre(3, 4));
}

TEST(LintReach, ABuildingThatHangsTogetherHasNoIslandTrapOrClosedPart) {
  DrawnBuilding drawn;
  drawn.level(0, "A  B  C");
  drawn.join("A", "B", {.oneway = true});
  drawn.join("B", "C", {.oneway = true});
  drawn.join("C", "A", {.oneway = true});
  EXPECT_THAT(foundAtAll(drawn), IsEmpty());
}

TEST(LintReach, APartThatIsNeverLeftIsATrap) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B--C  D--E");
  drawn.join("C", "D", {.oneway = true});
  const auto findings = found(drawn, "one-way-trap");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::warning);
  EXPECT_THAT(findings[0].nodes, ElementsAre(4, 5));
  EXPECT_THAT(findings[0].edges, ElementsAre(LintEdge{4, 5}, LintEdge{3, 4}));
  EXPECT_THAT(found(drawn, "no-way-in"), IsEmpty());
  EXPECT_THAT(found(drawn, "unreachable-island"), IsEmpty());
}

TEST(LintReach, ATrapThatHoldsPlacesIsAnError) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B--C  D--E");
  drawn.join("C", "D", {.oneway = true}).place("Desk", 0, 12, 0);
  const auto findings = found(drawn, "one-way-trap");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::error);
  EXPECT_THAT(findings[0].names, ElementsAre("Desk"));
}

TEST(LintReach, APartThatIsNeverEnteredHasNoWayIn) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B--C  D--E");
  drawn.join("D", "C", {.oneway = true});
  const auto findings = found(drawn, "no-way-in");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::warning);
  EXPECT_THAT(findings[0].nodes, ElementsAre(4, 5));
  EXPECT_THAT(found(drawn, "one-way-trap"), IsEmpty());
  drawn.place("Desk", 0, 12, 0);
  EXPECT_EQ(found(drawn, "no-way-in").at(0).severity, LintSeverity::error);
}

TEST(LintReach, ANodeThatIsNeitherEnteredNorLeftIsBoth) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B--C  D  E");
  drawn.join("D", "C", {.oneway = true}).join("D", "E", {.oneway = true});
  EXPECT_THAT(found(drawn, "no-way-in").at(0).nodes, ElementsAre(4, 5));
  EXPECT_THAT(found(drawn, "one-way-trap").at(0).nodes, ElementsAre(5));
  EXPECT_THAT(found(drawn, "unreachable-island"), IsEmpty());
}

TEST(LintReach, TheLastOfSeveralEdgesCounts) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B--C  D");
  drawn.join("C", "D").join("C", "D", {.barrierFree = false}).place("Desk", 0, 9, 0);
  EXPECT_THAT(found(drawn, "place-behind-barrier"), SizeIs(1));
}

TEST(LintReach, LongOneWayRingsAreWalkedToTheirEnd) {
  DrawnBuilding drawn;
  constexpr int kNodes = 50000;
  auto& contents = drawn.contents();
  for (int i = 1; i <= kNodes; ++i) {
    contents.nodes.push_back({0, i, 0, drawn.coordinate(i, 0), {}, 0});
    contents.edges.push_back({0, i, i % kNodes + 1, true, {}, 1.0, true, {}});
  }
  EXPECT_THAT(found(drawn, "one-way-trap"), IsEmpty());
  contents.edges.pop_back();
  EXPECT_THAT(found(drawn, "one-way-trap"), SizeIs(1));
}

TEST(LintLevels, OneWithNodesThatNothingConnectsIsAnError) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B").level(1, "C--D").level(2, "E--F").join("A", "C", {.type = "stairs"});
  const auto findings = found(drawn, "level-without-connection");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::error);
  EXPECT_THAT(findings[0].levels, ElementsAre(2));
  EXPECT_TRUE(findings[0].area);
  EXPECT_THAT(findings[0].message, HasSubstr("Level 2 has no way to any other level"));
}

TEST(LintLevels, OneWithoutNodesIsAWarning) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B");
  drawn.wall(1, {drawn.coordinate(0, 0), drawn.coordinate(1, 0)});
  const auto findings = found(drawn, "level-without-connection");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::warning);
  EXPECT_THAT(findings[0].levels, ElementsAre(1));
}

TEST(LintLevels, TheOnlyOneNeedsNoConnection) {
  DrawnBuilding drawn;
  drawn.level(3, "A--B");
  EXPECT_THAT(found(drawn, "level-without-connection"), IsEmpty());
}

}  // namespace
}  // namespace KorvaniTest
