#include "Lint/Lint.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "Lint/LintJson.hpp"
#include "Support/InputError.hpp"
#include "Tools/Lint/DrawnBuilding.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::InputError;
using KorvaniTools::LintRule;
using KorvaniTools::lintRules;
using KorvaniTools::OrderedJson;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Property;
using testing::SizeIs;
using testing::Throws;

/// A building with faults on two levels.
DrawnBuilding faulty() {
  DrawnBuilding drawn;
  drawn.level(0, R"(
       #
    A  #  B   C
       #
  )");
  drawn.level(-1, "D--E").join("D", "A").join("E", "E").join("A", "B");
  drawn.contents().name = "Town Hall";
  drawn.contents().attribution = "Ann";
  return drawn;
}

std::vector<LintFinding> findingsOf(const DrawnBuilding& drawn, const LintOptions& options = {}) {
  return KorvaniTools::lintBuilding(drawn.building(), options);
}

TEST(Lint, ASoundBuildingHasNoFindings) {
  DrawnBuilding drawn;
  drawn.level(0, R"(
    ####
    #  #
    #A----B--C
    #  #
    ####
  )");
  drawn.level(1, "D--E").join("C", "D", {.barrierFree = false, .type = "stairs"});
  drawn.join("A", "D", {.distance = 8.0, .type = "elevator"}).place("Desk", 0, 5, 2);
  EXPECT_THAT(foundAtAll(drawn), IsEmpty());
}

TEST(Lint, ListsFindingsByLevelThenTheGravestFirstThenByRule) {
  EXPECT_THAT(foundAtAll(faulty()),
              ElementsAre("warning edge-to-itself", "warning level-change-without-type",
                          "error edge-through-wall", "warning unreachable-island"));
}

TEST(Lint, TriesOnlyTheRulesAskedFor) {
  LintOptions options;
  options.only = {"unreachable-island", "edge-to-itself"};
  EXPECT_THAT(findingsOf(faulty(), options), SizeIs(2));
  options.skip = {"edge-to-itself"};
  const auto findings = findingsOf(faulty(), options);
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].rule, "unreachable-island");
}

TEST(Lint, RefusesARuleThatThereIsNot) {
  LintOptions options;
  options.skip = {"edge-thru-wall"};
  EXPECT_THAT(
      [&] { findingsOf(faulty(), options); },
      Throws<InputError>(Property(&InputError::what, AllOf(HasSubstr("\"edge-thru-wall\""),
                                                           HasSubstr("edge-through-wall")))));
}

TEST(Lint, RulesHaveStableNamesOfTheirOwn) {
  std::set<std::string> names;
  for (const LintRule& rule : lintRules()) {
    EXPECT_THAT(rule.name, MatchesRegex("[a-z]+(-[a-z]+)+"));
    EXPECT_TRUE(names.insert(rule.name).second) << rule.name;
    EXPECT_FALSE(rule.finds.empty());
  }
}

TEST(Lint, NoFindingIsGraverThanItsRuleSays) {
  std::map<std::string, LintSeverity> severities;
  for (const LintRule& rule : lintRules()) severities[rule.name] = rule.severity;
  for (const LintFinding& finding : findingsOf(faulty())) {
    EXPECT_LE(finding.severity, severities.at(finding.rule)) << finding.rule;
  }
}

TEST(Lint, EveryMessageIsOneSentence) {
  for (const LintFinding& finding : findingsOf(faulty())) {
    EXPECT_THAT(finding.message, MatchesRegex("[A-Z].*: .*\\."));
  }
}

TEST(Lint, CountsFindingsBySeverity) {
  const auto counts = KorvaniTools::countFindings(findingsOf(faulty()));
  EXPECT_EQ(counts.errors, 1U);
  EXPECT_EQ(counts.warnings, 3U);
  EXPECT_EQ(counts.notes, 0U);
}

TEST(LintJson, HasEverythingOfAFinding) {
  const DrawnBuilding drawn = faulty();
  const auto json = KorvaniTools::lintJson(findingsOf(drawn), drawn.building());
  EXPECT_EQ(json["name"], "Town Hall");
  EXPECT_EQ(json["attribution"], "Ann");
  EXPECT_FALSE(json.contains("licence"));
  EXPECT_EQ(json["summary"], OrderedJson({{"errors", 1}, {"warnings", 3}, {"notes", 0}}));
  ASSERT_EQ(json["findings"].size(), 4U);
  const OrderedJson& finding = json["findings"][2];
  EXPECT_EQ(finding["rule"], "edge-through-wall");
  EXPECT_EQ(finding["severity"], "error");
  EXPECT_EQ(finding["level"], 0);
  EXPECT_EQ(finding["levels"], OrderedJson::array({0}));
  EXPECT_EQ(finding["edges"], OrderedJson::array({{{"from", 1}, {"to", 2}}}));
  EXPECT_EQ(finding["nodes"], OrderedJson::array({1, 2}));
  EXPECT_EQ(finding["at"].size(), 1U);
  EXPECT_NEAR(finding["at"][0]["lat"].get<double>(), drawn.coordinate(7, 1).latitude, 1e-9);
  EXPECT_EQ(finding["features"].size(), 2U);
  EXPECT_TRUE(finding["names"].empty());
  EXPECT_TRUE(finding["sources"].empty());
  EXPECT_EQ(json["findings"][0]["level"], -1);
}

TEST(LintGeoJson, DrawsEdgesAsLinesAndNodesAsPoints) {
  const DrawnBuilding drawn = faulty();
  const auto json = KorvaniTools::lintGeoJson(findingsOf(drawn), drawn.building());
  EXPECT_EQ(json["type"], "FeatureCollection");
  EXPECT_EQ(json["attribution"], "Ann");
  ASSERT_EQ(json["features"].size(), 4U);
  const OrderedJson& loop = json["features"][0];
  EXPECT_EQ(loop["type"], "Feature");
  EXPECT_EQ(loop["properties"]["kind"], "finding");
  EXPECT_EQ(loop["properties"]["rule"], "edge-to-itself");
  EXPECT_EQ(loop["geometry"]["type"], "Point");
  const OrderedJson& edge = json["features"][2];
  EXPECT_EQ(edge["properties"]["rule"], "edge-through-wall");
  EXPECT_EQ(edge["geometry"]["type"], "LineString");
  const Coordinate start = drawn.coordinate(4, 1);
  EXPECT_EQ(edge["geometry"]["coordinates"][0],
            OrderedJson::array({start.longitude, start.latitude}));
}

TEST(LintGeoJson, DrawsRegionsAsClosedPolygons) {
  DrawnBuilding drawn;
  drawn.contents().regions = {{0, "a", {drawn.coordinate(0, 4), drawn.coordinate(6, 0)}},
                              {0, "b", {drawn.coordinate(4, 6), drawn.coordinate(9, 2)}}};
  const auto json = KorvaniTools::lintGeoJson(findingsOf(drawn), drawn.building());
  const OrderedJson& ring = json["features"][0]["geometry"]["coordinates"][0];
  EXPECT_EQ(json["features"][0]["geometry"]["type"], "Polygon");
  ASSERT_EQ(ring.size(), 5U);
  EXPECT_EQ(ring.front(), ring.back());
  EXPECT_EQ(ring[2], OrderedJson::array(
                         {drawn.coordinate(6, 2).longitude, drawn.coordinate(6, 2).latitude}));
}

TEST(LintGeoJson, DrawsIslandsAsSeveralLinesOrPoints) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B--C--D   E--F--G");
  drawn.node("H", 0, 8, 0.4).node("I", 0, 8.005, 0.4);
  LintOptions options;
  options.only = {"unreachable-island", "duplicate-nodes"};
  const auto json = KorvaniTools::lintGeoJson(findingsOf(drawn, options), drawn.building());
  ASSERT_EQ(json["features"].size(), 4U);
  EXPECT_EQ(json["features"][0]["geometry"]["type"], "MultiPoint");
  EXPECT_EQ(json["features"][1]["geometry"]["type"], "MultiLineString");
  EXPECT_EQ(json["features"][2]["geometry"]["type"], "Point");
}

TEST(LintGeoJson, DrawsAWallThatNoRegionHolds) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B");
  drawn.wall(0, {drawn.coordinate(50, 0), drawn.coordinate(51, 0)});
  const auto json = KorvaniTools::lintGeoJson(findingsOf(drawn), drawn.building());
  ASSERT_EQ(json["features"].size(), 1U);
  EXPECT_EQ(json["features"][0]["geometry"]["type"], "LineString");
}

TEST(LintGeoJson, ALevelThatIsASpotOrALineIsDrawnAsOne) {
  DrawnBuilding drawn;
  drawn.place("Attic", 7, 3, 0).place("Sill", 8, 0, 0).place("Ledge", 8, 5, 0);
  LintOptions options;
  options.only = {"level-without-connection"};
  const auto json = KorvaniTools::lintGeoJson(findingsOf(drawn, options), drawn.building());
  ASSERT_EQ(json["features"].size(), 2U);
  const Coordinate attic = drawn.coordinate(3, 0);
  EXPECT_EQ(json["features"][0]["geometry"],
            OrderedJson({{"type", "Point"},
                         {"coordinates", OrderedJson::array({attic.longitude, attic.latitude})}}));
  EXPECT_EQ(json["features"][1]["geometry"]["type"], "LineString");
  EXPECT_EQ(json["features"][1]["geometry"]["coordinates"].size(), 2U);
}

TEST(LintGeoJson, WhatLiesNowhereHasNoGeometry) {
  LintFinding finding;
  finding.rule = "made-up";
  const auto json = KorvaniTools::lintGeoJson({finding}, DrawnBuilding().building());
  ASSERT_EQ(json["features"].size(), 1U);
  EXPECT_TRUE(json["features"][0]["geometry"].is_null());
}

}  // namespace
}  // namespace KorvaniTest
