#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/Lint/DrawnBuilding.hpp"

namespace KorvaniTest {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// A region without name between two corners.
KorvaniTools::BuildingRegion regionOfLevel(std::int64_t level, Coordinate southWest,
                                           Coordinate northEast) {
  return {level, {}, {southWest, northEast}};
}

TEST(LintRegions, ANodeOutsideEveryRegionIsAnError) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B").level(1, "       C").node("D", 0, 6, 0);
  const auto findings = found(drawn, "node-outside-regions");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::error);
  EXPECT_THAT(findings[0].nodes, ElementsAre(drawn.id("D")));
  EXPECT_THAT(findings[0].levels, ElementsAre(0));
  EXPECT_EQ(findings[0].at.at(0), drawn.coordinate(6, 0));
}

TEST(LintRegions, ANodeOnTheBorderIsInside) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B").node("C", 0, 3.5, 0);
  EXPECT_THAT(found(drawn, "node-outside-regions"), IsEmpty());
}

TEST(LintRegions, ANodeOfARegionInWhichNobodyLooksForItIsAWarning) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B").level(1, "C");
  drawn.contents().regions.push_back(
      {0, "Annexe", {drawn.coordinate(0, 1), drawn.coordinate(9, -1)}});
  drawn.contents().nodes[1].regionName = "Annexe";
  const auto findings = found(drawn, "node-in-other-region");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::warning);
  EXPECT_THAT(findings[0].nodes, ElementsAre(2));
  EXPECT_THAT(findings[0].names, ElementsAre("Annexe", "Level 0"));
}

TEST(LintRegions, RegionsThatOverlapAreAWarningWithWhatTheyShare) {
  DrawnBuilding drawn;
  drawn.contents().regions = {
      regionOfLevel(0, drawn.coordinate(0, 4), drawn.coordinate(6, 0)),
      regionOfLevel(0, drawn.coordinate(4, 6), drawn.coordinate(9, 2)),
      regionOfLevel(1, drawn.coordinate(0, 4), drawn.coordinate(6, 0)),
  };
  const auto findings = found(drawn, "overlapping-regions");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::warning);
  ASSERT_TRUE(findings[0].area);
  EXPECT_EQ(findings[0].area->southWest, drawn.coordinate(4, 4));
  EXPECT_EQ(findings[0].area->northEast, drawn.coordinate(6, 2));
  EXPECT_THAT(findings[0].message,
              HasSubstr("Region number 1 of level 0 overlaps region number 2 of level 0"));
}

TEST(LintRegions, RegionsThatShareABorderDoNotOverlap) {
  DrawnBuilding drawn;
  drawn.contents().regions = {
      regionOfLevel(0, drawn.coordinate(0, 4), drawn.coordinate(6, 0)),
      regionOfLevel(0, drawn.coordinate(6, 4), drawn.coordinate(9, 0)),
      regionOfLevel(0, drawn.coordinate(0, 8), drawn.coordinate(9, 4)),
  };
  EXPECT_THAT(found(drawn, "overlapping-regions"), IsEmpty());
}

TEST(LintRegions, EveryPairThatOverlapsIsFound) {
  DrawnBuilding drawn;
  drawn.contents().regions = {
      regionOfLevel(0, drawn.coordinate(5, 4), drawn.coordinate(9, 0)),
      regionOfLevel(0, drawn.coordinate(0, 4), drawn.coordinate(9, 0)),
      regionOfLevel(0, drawn.coordinate(2, 2), drawn.coordinate(6, 1)),
  };
  drawn.contents().regions[0].name = "a";
  drawn.contents().regions[1].name = "b";
  drawn.contents().regions[2].name = "c";
  const auto findings = found(drawn, "overlapping-regions");
  ASSERT_THAT(findings, SizeIs(3));
  EXPECT_THAT(findings[0].names, ElementsAre("a", "b"));
  EXPECT_THAT(findings[1].names, ElementsAre("a", "c"));
  EXPECT_THAT(findings[2].names, ElementsAre("b", "c"));
}

TEST(LintRegions, OfAHeapOfRegionsEachIsToldWithTheFirstFew) {
  DrawnBuilding drawn;
  for (int i = 0; i < 100; ++i) {
    drawn.contents().regions.push_back(
        regionOfLevel(0, drawn.coordinate(0, 4), drawn.coordinate(6, 0)));
  }
  EXPECT_THAT(found(drawn, "overlapping-regions"), SizeIs(45 + 90 * 10));
}

TEST(LintNodes, InTheSamePlaceAreAWarning) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B--C").node("D", 0, 3.005, 0).node("E", 0, 3, 0.009).node("F", 0, 3, 0.03);
  const auto findings = found(drawn, "duplicate-nodes");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::warning);
  EXPECT_THAT(findings[0].nodes, ElementsAre(2, 4, 5));
  EXPECT_THAT(findings[0].at, SizeIs(3));
  EXPECT_THAT(findings[0].message, HasSubstr("Nodes 2, 4 and 5 of level 0"));
}

TEST(LintNodes, AboveEachOtherOrTwoCentimetresApartAreFine) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B").level(1, "C--D").node("E", 0, 0.02, 0);
  EXPECT_THAT(found(drawn, "duplicate-nodes"), IsEmpty());
}

TEST(LintNodes, AreComparedAcrossTheDateLineAndAtThePoles) {
  DrawnBuilding drawn;
  auto& nodes = drawn.contents().nodes;
  nodes.push_back({0, 1, 0, {10, 180}, {}, 0});
  nodes.push_back({1, 2, 0, {10, -180}, {}, 0});
  nodes.push_back({2, 3, 0, {90, 0}, {}, 0});
  nodes.push_back({3, 4, 0, {90, 77}, {}, 0});
  const auto findings = found(drawn, "duplicate-nodes");
  ASSERT_THAT(findings, SizeIs(2));
  EXPECT_THAT(findings[0].nodes, ElementsAre(1, 2));
  EXPECT_THAT(findings[1].nodes, ElementsAre(3, 4));
}

TEST(LintObstacles, ASingleSpotIsANote) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B");
  drawn.wall(0, {drawn.coordinate(1, 0), drawn.coordinate(1, 0)});
  drawn.wall(0, {drawn.coordinate(2, 0)});
  drawn.wall(0, {drawn.coordinate(0, 0.5), drawn.coordinate(1, 0.5)});
  const auto findings = found(drawn, "obstacle-without-extent");
  ASSERT_THAT(findings, SizeIs(2));
  EXPECT_EQ(findings[0].severity, LintSeverity::note);
  EXPECT_THAT(findings[0].features, ElementsAre(4));
  EXPECT_THAT(findings[1].features, ElementsAre(5));
}

TEST(LintObstacles, OneThatNoRegionHoldsIsAWarning) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B");
  drawn.wall(0, {drawn.coordinate(50, 0), drawn.coordinate(51, 0)});
  const auto findings = found(drawn, "obstacle-outside-regions");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::warning);
  EXPECT_THAT(findings[0].features, ElementsAre(4));
  EXPECT_THAT(findings[0].levels, ElementsAre(0));
  EXPECT_THAT(findings[0].at, ElementsAre(drawn.coordinate(50, 0)));
  EXPECT_THAT(findings[0].lines,
              ElementsAre(ElementsAre(drawn.coordinate(50, 0), drawn.coordinate(51, 0))));
}

TEST(LintObstacles, ARingOfOneThatNoRegionHoldsIsShown) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B");
  drawn.wall(0, {drawn.coordinate(0, 0.2), drawn.coordinate(1, 0.2)});
  drawn.contents().obstacles[0].lines.push_back({{drawn.coordinate(50, 0)}, {}});
  const auto findings = found(drawn, "obstacle-outside-regions");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_THAT(findings[0].message, HasSubstr("A part of the obstacle of feature 4 lies outside"));
  EXPECT_THAT(findings[0].at, ElementsAre(drawn.coordinate(50, 0)));
  EXPECT_THAT(findings[0].lines, SizeIs(0));
}

TEST(LintRegions, UnnamedOnesThatOverlapAreToldByTheirFeatures) {
  DrawnBuilding drawn;
  drawn.contents().regions = {{0, {}, {drawn.coordinate(0, 4), drawn.coordinate(6, 0)}, false, 3},
                              {0, {}, {drawn.coordinate(4, 6), drawn.coordinate(9, 2)}, false, 8}};
  const auto findings = found(drawn, "overlapping-regions");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_THAT(findings[0].features, ElementsAre(3, 8));
  EXPECT_THAT(findings[0].message,
              HasSubstr("Region number 1 of level 0 (feature 3) overlaps region number 2 of level "
                        "0 (feature 8)"));
}

}  // namespace
}  // namespace KorvaniTest
