#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/Import/Osm/OsmDrawing.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::ConnectionKind;
using KorvaniTools::FloorPlan;
using KorvaniTools::PlanLevelSet;
using KorvaniTools::PlanShaft;
using KorvaniTools::StepFree;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A square within a larger one, beside a third; a point in the middle.
const std::vector<std::string> kShafts{"a------b  i--j", "| e--f |  |  |", "| |m | |  |  |",
                                       "| h--g |  |  |", "d------c  l--k"};

PlanShaft onlyShaft(const OsmDrawing& map) {
  const FloorPlan plan = planOf(map);
  EXPECT_THAT(plan.shafts, SizeIs(1));
  return plan.shafts.empty() ? PlanShaft() : plan.shafts.front();
}

TEST(OsmShafts, AreLiftAreasWithSeveralLevels) {
  OsmDrawing map(kShafts);
  map.way("abcda", {{"highway", "elevator"}, {"level", "0-2"}, {"wheelchair", "yes"}});
  const PlanShaft shaft = onlyShaft(map);
  EXPECT_EQ(shaft.source, "way/1");
  EXPECT_EQ(shaft.kind, ConnectionKind::elevator);
  EXPECT_EQ(shaft.levels, PlanLevelSet({0, 1, 2}));
  EXPECT_THAT(shaft.cells, ElementsAre(0));
  EXPECT_EQ(shaft.stepFree, StepFree::yes);
  EXPECT_FALSE(shaft.vertex.has_value());
}

TEST(OsmShafts, AreNotMadeOfASingleLevel) {
  OsmDrawing map(kShafts);
  map.way("abcda", {{"highway", "elevator"}, {"level", "0"}});
  map.node('i', {{"highway", "elevator"}, {"level", "0"}});
  EXPECT_THAT(planOf(map).shafts, IsEmpty());
}

TEST(OsmShafts, AreMadeOfAreasAboveEachOther) {
  OsmDrawing map(kShafts);
  map.way("abcda", {{"indoor", "yes"}, {"building:part", "elevator"}, {"level", "0"}});
  map.way("ijkli", {{"indoor", "yes"}, {"building:part", "elevator"}, {"level", "0"}});
  map.way("efghe", {{"indoor", "yes"}, {"building:part", "elevator"}, {"level", "2"}});
  const PlanShaft shaft = onlyShaft(map);
  EXPECT_EQ(shaft.levels, PlanLevelSet({0, 2}));
  EXPECT_THAT(shaft.cells, ElementsAre(0, 2));
}

TEST(OsmShafts, OfStairsAreMadeOfNeighbouringLevelsOnly) {
  OsmDrawing map(kShafts);
  map.way("abcda", {{"indoor", "room"}, {"stairs", "yes"}, {"level", "0-1"}});
  map.way("efghe", {{"indoor", "room"}, {"stairs", "yes"}, {"level", "4-5"}});
  EXPECT_THAT(planOf(map).shafts, SizeIs(2));
}

TEST(OsmShafts, TakeTheLiftNodeInside) {
  OsmDrawing map(kShafts);
  map.way("abcda", {{"highway", "elevator"}, {"level", "0-1"}});
  map.node('m', {{"highway", "elevator"}, {"level", "0;1;2"}});
  const PlanShaft shaft = onlyShaft(map);
  EXPECT_EQ(shaft.source, "way/1");
  EXPECT_EQ(shaft.levels, PlanLevelSet({0, 1, 2}));
  ASSERT_TRUE(shaft.vertex.has_value());
  EXPECT_EQ(shaft.vertex->node, 'm');
}

TEST(OsmShafts, TakeTheLiftNodeOnTheirOutline) {
  OsmDrawing map(kShafts);
  map.way("abcda", {{"highway", "elevator"}, {"level", "0-1"}});
  map.node('b', {{"highway", "elevator"}, {"level", "0;1"}});
  EXPECT_EQ(onlyShaft(map).vertex.value().node, 'b');
}

TEST(OsmShafts, AreLiftNodesWithTheirOwnLevels) {
  OsmDrawing map(kShafts);
  map.node('m', {{"highway", "elevator"}, {"level", "-2;-1;0"}, {"wheelchair", "no"}});
  map.way("em", {{"highway", "footway"}, {"level", "-2"}});
  const PlanShaft shaft = onlyShaft(map);
  EXPECT_EQ(shaft.source, "node/109");
  EXPECT_EQ(shaft.levels, PlanLevelSet({-2, -1, 0}));
  EXPECT_THAT(shaft.cells, IsEmpty());
  EXPECT_EQ(shaft.stepFree, StepFree::no);
}

TEST(OsmShafts, OfALiftNodeWithoutLevelsStopWhereWaysMeetIt) {
  OsmDrawing map(kShafts);
  map.node('m', {{"highway", "elevator"}});
  map.way("em", {{"highway", "footway"}, {"level", "0"}});
  map.way("fm", {{"highway", "footway"}, {"level", "1"}});
  map.way("gm", {{"highway", "steps"}, {"level", "1;5"}});
  EXPECT_EQ(onlyShaft(map).levels, PlanLevelSet({0, 1}));
}

TEST(OsmShafts, OfALiftNodeWithOneLevelStopWhereWaysMeetItAsWell) {
  OsmDrawing map(kShafts);
  map.node('m', {{"highway", "elevator"}, {"level", "0"}});
  map.way("fm", {{"highway", "footway"}, {"level", "1"}});
  EXPECT_EQ(onlyShaft(map).levels, PlanLevelSet({0, 1}));
}

TEST(OsmShafts, AreNotClosedToPeople) {
  OsmDrawing map(kShafts);
  map.way("abcda", {{"highway", "elevator"}, {"level", "0-1"}, {"access", "private"}});
  map.node('i', {{"highway", "elevator"}, {"level", "0;1"}, {"access", "no"}});
  const FloorPlan plan = planOf(map);
  EXPECT_THAT(plan.shafts, IsEmpty());
  EXPECT_THAT(plan.cells, SizeIs(1));
  EXPECT_THAT(plan.remarks.sentences(),
              ElementsAre("1 lift is closed to people and was left out: node/105"));
}

TEST(OsmShafts, AreStairAreasWithoutALine) {
  OsmDrawing map(kShafts);
  map.way("abcda", {{"indoor", "room"}, {"stairs", "yes"}, {"level", "-1-1"}});
  const PlanShaft shaft = onlyShaft(map);
  EXPECT_EQ(shaft.kind, ConnectionKind::stairs);
  EXPECT_EQ(shaft.levels, PlanLevelSet({-1, 0, 1}));
}

TEST(OsmShafts, AreNotStairAreasWhoseLevelsLinesOfStepsJoin) {
  OsmDrawing map(kShafts);
  map.way("abcda", {{"indoor", "room"}, {"stairs", "yes"}, {"level", "0-2"}});
  map.way("eg", {{"highway", "steps"}, {"level", "0;1"}});
  map.way("gf", {{"highway", "steps"}, {"level", "1;2"}});
  EXPECT_THAT(planOf(map).shafts, IsEmpty());
}

TEST(OsmShafts, AreStairAreasThatLinesOfStepsServeInPart) {
  OsmDrawing map(kShafts);
  map.way("abcda", {{"indoor", "room"}, {"stairs", "yes"}, {"level", "0-2"}});
  map.way("eg", {{"highway", "steps"}, {"level", "0;1"}});
  map.way("ik", {{"highway", "steps"}, {"level", "1;2"}});
  EXPECT_EQ(onlyShaft(map).levels, PlanLevelSet({0, 1, 2}));
}

TEST(OsmShafts, AreNotStairAreasThatOneLineServesFromTheLowestToTheHighest) {
  OsmDrawing map(kShafts);
  map.way("abcda", {{"indoor", "room"}, {"stairs", "yes"}, {"level", "0-2"}});
  map.way("eg", {{"highway", "steps"}, {"level", "0-2"}});
  EXPECT_THAT(planOf(map).shafts, IsEmpty());
}

TEST(OsmShafts, AreStairAreasThatALineLeavesBetweenItsLowestAndItsHighestLevel) {
  OsmDrawing map(kShafts);
  map.way("abcda", {{"indoor", "room"}, {"stairs", "yes"}, {"level", "0-2"}});
  map.way("hfi", {{"highway", "steps"}, {"level", "0-2"}});
  EXPECT_EQ(onlyShaft(map).levels, PlanLevelSet({0, 1, 2}));
}

}  // namespace
}  // namespace KorvaniTest
