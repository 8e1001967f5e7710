#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/Import/Imdf/TestArchive.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::ConnectionKind;
using KorvaniTools::PlanLevelSet;
using KorvaniTools::PlanShaft;
using KorvaniTools::StepFree;
using testing::IsEmpty;
using testing::SizeIs;

/// The sources of the shaft's cells.
std::vector<std::string> cellsOf(const FloorPlan& plan, const PlanShaft& shaft) {
  std::vector<std::string> sources;
  for (const std::size_t cell : shaft.cells) sources.push_back(plan.cells.at(cell).source);
  return sources;
}

/// The same floor on each of the ordinals.
TestArchive stacked(const std::vector<int>& ordinals, const std::vector<std::string>& rows,
                    const std::map<char, std::string>& categories) {
  TestArchive archive;
  for (const int ordinal : ordinals) archive.floor(ordinal, rows, categories);
  return archive;
}

const std::map<char, std::string> kCategories = {
    {'S', "stairs"}, {'E', "elevator"}, {'U', "escalator"},  {'D', "escalator"},
    {'R', "ramp"},   {'W', "walkway"},  {'V', "opentobelow"}};

TEST(ImdfShafts, JoinWhatLiesAboveEachOther) {
  const FloorPlan plan = stacked({0, 1, 2}, {"SSWWEE"}, kCategories).read();
  ASSERT_THAT(plan.shafts, SizeIs(2));
  EXPECT_EQ(plan.shafts[0].kind, ConnectionKind::elevator);
  EXPECT_EQ(cellsOf(plan, plan.shafts[0]), (std::vector<std::string>{"E0", "E1", "E2"}));
  EXPECT_EQ(plan.shafts[1].kind, ConnectionKind::stairs);
  EXPECT_EQ(cellsOf(plan, plan.shafts[1]), (std::vector<std::string>{"S0", "S1", "S2"}));
  EXPECT_EQ(plan.shafts[1].levels, (PlanLevelSet{0, 1, 2}));
  EXPECT_FALSE(plan.shafts[1].oneway);
}

TEST(ImdfShafts, NeedHalfOfTheSmallerOneInCommon) {
  TestArchive archive;
  archive.floor(0, {"SSSS      "}, kCategories);
  archive.floor(1, {"  SSSS    "}, kCategories);
  archive.floor(2, {"     SSSS "}, kCategories);
  const FloorPlan plan = archive.read();
  ASSERT_THAT(plan.shafts, SizeIs(1));
  EXPECT_EQ(plan.shafts[0].levels, (PlanLevelSet{0, 1}));
}

TEST(ImdfShafts, DoNotJoinDifferentKinds) {
  TestArchive archive;
  archive.floor(0, {"SS"}, kCategories);
  archive.floor(1, {"EE"}, kCategories);
  EXPECT_THAT(archive.read().shafts, IsEmpty());
}

TEST(ImdfShafts, ElevatorsPassLevelsBy) {
  TestArchive archive;
  archive.floor(0, {"EEWW"}, kCategories);
  archive.floor(1, {"WWWW"}, kCategories);
  archive.floor(2, {"EEWW"}, kCategories);
  const FloorPlan plan = archive.read();
  ASSERT_THAT(plan.shafts, SizeIs(1));
  EXPECT_EQ(plan.shafts[0].levels, (PlanLevelSet{0, 2}));
}

TEST(ImdfShafts, StairsDoNotLeadThroughAFloor) {
  TestArchive archive;
  archive.floor(0, {"SSWW"}, kCategories);
  archive.floor(1, {"WWWW"}, kCategories);
  archive.floor(2, {"SSWW"}, kCategories);
  EXPECT_THAT(archive.read().shafts, IsEmpty());
}

TEST(ImdfShafts, StairsLeadPastALevelThatHasNoFloorThere) {
  TestArchive archive;
  archive.floor(0, {"SSWW"}, kCategories);
  archive.floor(1, {"VVWW"}, kCategories);
  archive.floor(2, {"SSWW"}, kCategories);
  const FloorPlan plan = archive.read();
  ASSERT_THAT(plan.shafts, SizeIs(1));
  EXPECT_EQ(plan.shafts[0].levels, (PlanLevelSet{0, 2}));
}

TEST(ImdfShafts, AreStepFreeWhenAllTheirUnitsAre) {
  TestArchive archive = stacked({0, 1}, {"EE"}, kCategories);
  archive.properties("unit", "E0")["accessibility"] = Json::array({"wheelchair"});
  EXPECT_EQ(archive.read().shafts.at(0).stepFree, StepFree::unknown);
  archive.properties("unit", "E1")["accessibility"] = Json::array({"wheelchair"});
  EXPECT_EQ(archive.read().shafts.at(0).stepFree, StepFree::yes);
}

TEST(ImdfShafts, EscalatorsOfUnknownDirectionAreNoted) {
  const FloorPlan plan = stacked({0, 1}, {"UUWW"}, kCategories).read();
  ASSERT_THAT(plan.shafts, SizeIs(1));
  EXPECT_FALSE(plan.shafts[0].oneway);
  EXPECT_EQ(remarkWith(plan, "escalators"),
            "unit.geojson: escalators of unknown direction, usable both ways: \"U0\"");
}

Json referenceTo(const std::string& kind, const std::string& id) {
  return {{"feature_type", kind}, {"id", id}};
}

TEST(ImdfRelationships, GiveEscalatorsTheirDirection) {
  TestArchive archive = stacked({0, 1}, {"WUUDDW"}, kCategories);
  archive.add("relationship", "up", nullptr,
              {{"category", "escalator"},
               {"direction", "directed"},
               {"origin", referenceTo("unit", "U0")},
               {"destination", referenceTo("unit", "U1")}});
  archive.add("relationship", "down", nullptr,
              {{"category", "escalator"},
               {"direction", "directed"},
               {"intermediary", {referenceTo("unit", "D1"), referenceTo("unit", "D0")}}});
  const FloorPlan plan = archive.read();
  ASSERT_THAT(plan.shafts, SizeIs(2));
  EXPECT_EQ(plan.shafts[0].source, "up");
  EXPECT_TRUE(plan.shafts[0].oneway);
  EXPECT_FALSE(plan.shafts[0].backward);
  EXPECT_EQ(cellsOf(plan, plan.shafts[0]), (std::vector<std::string>{"U0", "U1"}));
  EXPECT_TRUE(plan.shafts[1].oneway);
  EXPECT_TRUE(plan.shafts[1].backward);
  EXPECT_EQ(plan.shafts[1].levels, (PlanLevelSet{0, 1}));
  EXPECT_EQ(remarkWith(plan, "escalators"), "");
}

TEST(ImdfRelationships, FollowTheOpeningsAtTheirEnds) {
  TestArchive archive = stacked({0, 1}, {"WUUDDW"}, kCategories);
  archive.opening("below", 0, {1, 0.2}, {1, 0.8});
  archive.opening("above", 1, {1, 0.2}, {1, 0.8});
  archive.add("relationship", "down", nullptr,
              {{"category", "escalator"},
               {"direction", "directed"},
               {"origin", referenceTo("opening", "above")},
               {"intermediary", {referenceTo("unit", "U0"), referenceTo("unit", "U1")}},
               {"destination", referenceTo("opening", "below")}});
  const FloorPlan plan = archive.read();
  EXPECT_TRUE(plan.shafts.at(0).oneway);
  EXPECT_TRUE(plan.shafts.at(0).backward);
}

TEST(ImdfRelationships, JoinUnitsThatDoNotLieAboveEachOther) {
  TestArchive archive;
  archive.floor(0, {"SSWWWW"}, kCategories);
  archive.floor(1, {"WWWWSS"}, kCategories);
  archive.floor(2, {"WWWWSS"}, kCategories);
  archive.add("relationship", "turn", nullptr,
              {{"category", "stairs"},
               {"direction", "undirected"},
               {"origin", referenceTo("unit", "S0")},
               {"destination", referenceTo("unit", "S1")}});
  const FloorPlan plan = archive.read();
  ASSERT_THAT(plan.shafts, SizeIs(1));
  EXPECT_EQ(cellsOf(plan, plan.shafts[0]), (std::vector<std::string>{"S0", "S1", "S2"}));
}

TEST(ImdfRelationships, OfLessThanTwoWaysUpAreLines) {
  TestArchive archive;
  archive.floor(0, {"WWSS"}, kCategories);
  archive.floor(1, {"WWWW"}, kCategories);
  archive.opening("foot", 0, {2, 0.2}, {2, 0.8});
  archive.opening("head", 1, {4, 0.2}, {4, 0.8});
  archive.add("relationship", "flight", nullptr,
              {{"category", "stairs"},
               {"direction", "directed"},
               {"origin", referenceTo("opening", "foot")},
               {"intermediary", {referenceTo("unit", "S0")}},
               {"destination", referenceTo("opening", "head")}});
  const FloorPlan plan = archive.read();
  EXPECT_THAT(plan.shafts, IsEmpty());
  ASSERT_THAT(plan.lines, SizeIs(1));
  const auto& line = plan.lines[0];
  EXPECT_EQ(line.kind, ConnectionKind::stairs);
  EXPECT_EQ(line.levels, (PlanLevelSet{0, 1}));
  EXPECT_TRUE(line.oneway);
  EXPECT_EQ(line.incline, 1);
  ASSERT_THAT(line.vertices, SizeIs(2));
  EXPECT_NEAR(line.vertices[0].coordinate.longitude, positionOf({2, 0.5})[0].get<double>(), 1e-9);
  EXPECT_NEAR(line.vertices[1].coordinate.longitude, positionOf({4, 0.5})[0].get<double>(), 1e-9);
}

TEST(ImdfRelationships, ThatNameNothingKnownAreNoted) {
  TestArchive archive = stacked({0, 1}, {"WW"}, kCategories);
  archive.add("relationship", "lost", nullptr,
              {{"category", "stairs"},
               {"direction", "sideways"},
               {"origin", referenceTo("unit", "nowhere")},
               {"destination", "W1"}});
  const FloorPlan plan = archive.read();
  EXPECT_THAT(plan.lines, IsEmpty());
  EXPECT_EQ(remarkWith(plan, "neither units nor openings"),
            "relationship.geojson: names features that are neither units nor openings of the "
            "archive, ignored: \"lost\"");
  EXPECT_NE(remarkWith(plan, "otherwise than by id"), "");
  EXPECT_NE(remarkWith(plan, "taken as undirected"), "");
  EXPECT_NE(remarkWith(plan, "joins nothing"), "");
}

TEST(ImdfRelationships, TakeTheUnitAboveTheOneThatTheyName) {
  TestArchive archive = stacked({0, 1}, {"WUUDDW"}, kCategories);
  archive.opening("foot", 0, {1, 0.2}, {1, 0.8});
  archive.opening("head", 1, {3, 0.2}, {3, 0.8});
  archive.add("relationship", "up", nullptr,
              {{"category", "escalator"},
               {"direction", "directed"},
               {"origin", referenceTo("opening", "foot")},
               {"intermediary", {referenceTo("unit", "U0")}},
               {"destination", referenceTo("opening", "head")}});
  archive.add("relationship", "down", nullptr,
              {{"category", "escalator"},
               {"direction", "directed"},
               {"origin", referenceTo("unit", "W1")},
               {"intermediary", {referenceTo("unit", "D0")}},
               {"destination", referenceTo("unit", "W0")}});
  const FloorPlan plan = archive.read();
  EXPECT_THAT(plan.lines, IsEmpty());
  ASSERT_THAT(plan.shafts, SizeIs(2));
  EXPECT_EQ(cellsOf(plan, plan.shafts[0]), (std::vector<std::string>{"U0", "U1"}));
  EXPECT_TRUE(plan.shafts[0].oneway);
  EXPECT_FALSE(plan.shafts[0].backward);
  EXPECT_EQ(cellsOf(plan, plan.shafts[1]), (std::vector<std::string>{"D0", "D1"}));
  EXPECT_TRUE(plan.shafts[1].oneway);
  EXPECT_TRUE(plan.shafts[1].backward);
  EXPECT_EQ(remarkWith(plan, "escalators"), "");
}

TEST(ImdfRelationships, BetweenWalkwaysAreLinesWhereTheStairsAreDrawn) {
  TestArchive archive;
  archive.floor(0, {"WWWWWWWWWWSSVVVV"}, kCategories);
  archive.floor(1, {"VVVVVVVVVVVVWWWW"}, kCategories);
  archive.add("relationship", "flight", nullptr,
              {{"category", "stairs"},
               {"direction", "undirected"},
               {"origin", referenceTo("unit", "W0")},
               {"intermediary", {referenceTo("unit", "S0")}},
               {"destination", referenceTo("unit", "W1")}});
  const FloorPlan plan = archive.read();
  ASSERT_THAT(plan.lines, SizeIs(1));
  const auto longitude = [](double x) { return positionOf({x, 0.5})[0].get<double>(); };
  EXPECT_NEAR(plan.lines[0].vertices[0].coordinate.longitude, longitude(9.75), 1e-6);
  EXPECT_NEAR(plan.lines[0].vertices[1].coordinate.longitude, longitude(12.25), 1e-6);
}

}  // namespace
}  // namespace KorvaniTest
