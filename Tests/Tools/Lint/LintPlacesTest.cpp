#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/Lint/DrawnBuilding.hpp"

namespace KorvaniTest {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// The names of the places that a rule finds.
std::vector<std::string> placesFound(const DrawnBuilding& drawn, const std::string& rule) {
  std::vector<std::string> names;
  for (const LintFinding& finding : found(drawn, rule)) names.push_back(finding.names.at(0));
  return names;
}

TEST(LintPlaces, OneInAClosedRoomSeesNoNode) {
  DrawnBuilding drawn;
  drawn.level(0, R"(
    #####
    #   #
    #   #  A--B
    #   #
    #####
  )");
  drawn.place("Vault", 0, 6, 2).place("Desk", 0, 12, 2);
  const auto findings = found(drawn, "place-out-of-sight");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::error);
  EXPECT_THAT(findings[0].names, ElementsAre("Vault"));
  EXPECT_EQ(findings[0].at.at(0), drawn.coordinate(6, 2));
  EXPECT_THAT(findings[0].features, ElementsAre(8));
  EXPECT_THAT(findings[0].sources, IsEmpty());
  EXPECT_THAT(findings[0].message,
              HasSubstr("Place \"Vault\" of level 0 (feature 8) sees no node"));
  EXPECT_THAT(placesFound(drawn, "place-unreachable"), IsEmpty());
}

TEST(LintPlaces, OnesOfTheSameNameAreToldApartAndNameTheirSource) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B").place("Shut", 7, 0, 0).place("Shut", 7, 1, 0);
  drawn.contents().places[1].further["source"] = "way/12";
  const auto findings = found(drawn, "place-on-empty-level");
  ASSERT_THAT(findings, SizeIs(2));
  EXPECT_THAT(findings[0].features, ElementsAre(4));
  EXPECT_THAT(findings[1].features, ElementsAre(5));
  EXPECT_THAT(findings[1].sources, ElementsAre("way/12"));
  EXPECT_THAT(findings[1].message, HasSubstr("Place \"Shut\" of level 7 (feature 5, way/12) is"));
}

TEST(LintPlaces, OneThatLooksThroughADoorIsFine) {
  DrawnBuilding drawn;
  drawn.level(0, R"(
    #####
    #   #
    #      A--B
    #   #
    #####
  )");
  drawn.place("Kiosk", 0, 6, 2);
  EXPECT_THAT(foundAtAll(drawn), IsEmpty());
}

TEST(LintPlaces, OneOnALevelWithoutNodesIsAnError) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B").place("Attic", 7, 0, 0);
  const auto findings = found(drawn, "place-on-empty-level");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::error);
  EXPECT_THAT(findings[0].levels, ElementsAre(7));
  EXPECT_THAT(placesFound(drawn, "place-out-of-sight"), IsEmpty());
  EXPECT_THAT(placesFound(drawn, "place-unreachable"), IsEmpty());
}

TEST(LintPlaces, OneOnAnIslandIsUnreachable) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B--C           D--E");
  drawn.place("Shop", 0, 1, 0).place("Desk", 0, 17, 0);
  const auto findings = found(drawn, "place-unreachable");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::error);
  EXPECT_THAT(findings[0].names, ElementsAre("Desk"));
  EXPECT_THAT(findings[0].nodes, ElementsAre(drawn.id("D")));
  EXPECT_THAT(placesFound(drawn, "place-without-way-out"), IsEmpty());
}

TEST(LintPlaces, OneThatSeesAnIslandAndTheMainNetworkIsReachable) {
  DrawnBuilding drawn;
  drawn.level(0, R"(
    A--B--C  D--E
  )");
  drawn.place("Between", 0, 11.6, 0);
  EXPECT_THAT(placesFound(drawn, "place-unreachable"), IsEmpty());
}

TEST(LintPlaces, OneBehindAOneWayDoorOutIsUnreachable) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B--C           D");
  drawn.join("D", "C", {.oneway = true}).place("Stage", 0, 18, 0);
  EXPECT_THAT(placesFound(drawn, "place-unreachable"), ElementsAre("Stage"));
}

TEST(LintPlaces, OneBehindAOneWayDoorInHasNoWayOut) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B--C           D");
  drawn.join("C", "D", {.oneway = true}).place("Stage", 0, 18, 1);
  drawn.place("Desk", 0, 1, 0);
  const auto findings = found(drawn, "place-without-way-out");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::error);
  EXPECT_THAT(findings[0].names, ElementsAre("Stage"));
  EXPECT_THAT(placesFound(drawn, "place-unreachable"), IsEmpty());
}

TEST(LintPlaces, OneUpTheStairsIsBehindABarrier) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B--C").level(1, "D--E");
  drawn.join("C", "D", {.barrierFree = false, .type = "stairs"});
  drawn.place("Desk", 0, 0, 0).place("Loft", 1, 3, 0);
  const auto findings = found(drawn, "place-behind-barrier");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::warning);
  EXPECT_THAT(findings[0].names, ElementsAre("Loft"));
  EXPECT_THAT(findings[0].message, HasSubstr("from the main barrier-free network"));
}

TEST(LintPlaces, ALiftBesideTheStairsTakesTheBarrierAway) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B--C").level(1, "D--E");
  drawn.join("C", "D", {.barrierFree = false, .type = "stairs"});
  drawn.join("A", "D", {.type = "elevator"}).place("Loft", 1, 3, 0);
  EXPECT_THAT(found(drawn, "place-behind-barrier"), IsEmpty());
}

TEST(LintPlaces, BarriersAreSeenFromTheEntrancesHoweverLargeTheRest) {
  DrawnBuilding drawn;
  drawn.level(0, "A--B").level(1, "C--D--E--F");
  drawn.join("B", "C", {.barrierFree = false, .type = "stairs"});
  drawn.place("Door", 0, 0, 0, true).place("Desk", 0, 3, 0).place("Loft", 1, 6, 0);
  EXPECT_THAT(placesFound(drawn, "place-behind-barrier"), ElementsAre("Loft"));
  EXPECT_THAT(found(drawn, "place-behind-barrier").at(0).message, HasSubstr("from any entrance"));
}

TEST(LintPlaces, AnEntranceIsNotReachedByBeingThere) {
  DrawnBuilding drawn(10);
  drawn.level(0, "A--B--C   D");
  drawn.join("C", "D", {.barrierFree = false, .type = "steps"});
  drawn.place("Main entrance", 0, 0, 0, true).place("Side entrance", 0, 10, 0, true);
  EXPECT_THAT(placesFound(drawn, "place-behind-barrier"), ElementsAre("Side entrance"));
}

TEST(LintPlaces, EntrancesThatReachEachOtherAreFineHoweverLargeTheRest) {
  DrawnBuilding drawn(10);
  drawn.level(0, "A--B   C").level(1, "D--E--F--G");
  drawn.join("B", "D", {.barrierFree = false, .type = "stairs"});
  drawn.join("C", "D", {.barrierFree = false, .type = "stairs"});
  drawn.place("North", 0, 0, 0, true).place("South", 0, 3, 0, true).place("Yard", 0, 7, 0, true);
  drawn.place("Loft", 1, 0, 0);
  EXPECT_THAT(placesFound(drawn, "place-behind-barrier"), ElementsAre("Yard", "Loft"));
}

TEST(LintPlaces, OneReachedFromThreeEntrancesIsReached) {
  DrawnBuilding drawn(10);
  drawn.level(0, "A  B  C  D  E");
  drawn.join("A", "D", {.oneway = true}).join("B", "D", {.oneway = true});
  drawn.join("C", "D", {.oneway = true}).join("D", "E");
  for (const char* way : {"A", "B", "C"}) {
    drawn.join("D", way, {.oneway = true, .barrierFree = false});
  }
  drawn.place("a", 0, 0, 0, true).place("b", 0, 3, 0, true).place("c", 0, 6, 0, true);
  drawn.place("Desk", 0, 12, 0);
  const auto findings = found(drawn, "place-behind-barrier");
  EXPECT_THAT(placesFound(drawn, "place-behind-barrier"), ElementsAre("a", "b", "c", "Desk"));
  EXPECT_THAT(findings.at(3).message, HasSubstr("can be reached without barriers, but not left"));
}

TEST(LintPlaces, OneThatNobodyLeavesWithoutBarriersIsLost) {
  DrawnBuilding drawn(10);
  drawn.level(0, "A--B").level(1, "C--D");
  drawn.join("B", "C", {.oneway = true, .type = "escalator"});
  drawn.join("C", "B", {.oneway = true, .barrierFree = false, .type = "stairs"});
  drawn.place("Loft", 1, 3, 0);
  drawn.place("Door", 0, 0, 0, true).place("Desk", 0, 3, 0);
  const auto findings = found(drawn, "place-behind-barrier");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].severity, LintSeverity::warning);
  EXPECT_THAT(findings[0].names, ElementsAre("Loft"));
  EXPECT_THAT(findings[0].message, HasSubstr("but not left again to any entrance"));
  drawn.join("D", "A", {.oneway = true, .type = "lift"});
  EXPECT_THAT(found(drawn, "place-behind-barrier"), IsEmpty());
}

TEST(LintPlaces, WithoutEntrancesTheWayBackLeadsToTheMainPart) {
  DrawnBuilding drawn(10);
  drawn.level(0, "A--B--E").level(1, "C--D");
  drawn.join("B", "C", {.oneway = true, .type = "escalator"});
  drawn.join("C", "B", {.oneway = true, .barrierFree = false, .type = "stairs"});
  drawn.place("Loft", 1, 3, 0).place("Desk", 0, 3, 0);
  const auto findings = found(drawn, "place-behind-barrier");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_THAT(findings[0].names, ElementsAre("Loft"));
  EXPECT_THAT(findings[0].message, HasSubstr("left again to the main barrier-free network"));
}

TEST(LintPlaces, AnEntranceThatNothingReachesSaysNothingAboutBarriers) {
  DrawnBuilding drawn(10);
  drawn.level(0, "A--B--C   D");
  drawn.place("Lost entrance", 0, 10, 0, true).place("Desk", 0, 3, 0);
  EXPECT_THAT(found(drawn, "place-behind-barrier"), IsEmpty());
}

TEST(LintPlaces, AreFineWithoutAnything) {
  DrawnBuilding drawn;
  EXPECT_THAT(foundAtAll(drawn), IsEmpty());
  drawn.place("Nowhere", 0, 0, 0);
  EXPECT_THAT(found(drawn, "place-on-empty-level"), SizeIs(1));
}

}  // namespace
}  // namespace KorvaniTest
