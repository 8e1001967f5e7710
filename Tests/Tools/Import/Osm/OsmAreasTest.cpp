#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Import/Osm/AreaAssembly.hpp"
#include "Tools/Import/Osm/OsmDrawing.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::CellKind;
using KorvaniTools::FloorPlan;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::vector<std::string> kNested{"a--------b  i--j", "| e----f |  |  |", "| |    | |  |  |",
                                       "| h----g |  |  |", "d--------c  l--k"};

const TagList kArea{{"indoor", "area"}, {"level", "0"}, {"name", "Foyer"}};

TEST(OsmAreas, HaveHoles) {
  OsmDrawing map(kNested);
  map.relation({{map.way("abcda", {}), "outer"}, {map.way("efghe", {}), "inner"}}, kArea);
  const FloorPlan plan = planOf(map);
  ASSERT_THAT(plan.cells, SizeIs(1));
  EXPECT_EQ(plan.cells[0].source, "relation/1");
  EXPECT_EQ(plan.cells[0].kind, CellKind::area);
  EXPECT_EQ(plan.cells[0].name, "Foyer");
  ASSERT_THAT(plan.cells[0].polygons, SizeIs(1));
  EXPECT_THAT(plan.cells[0].polygons[0], ElementsAre(SizeIs(5), SizeIs(5)));
  EXPECT_THAT(plan.remarks.sentences(), IsEmpty());
}

TEST(OsmAreas, ArePutTogetherOfWaysInAnyOrderAndDirection) {
  OsmDrawing map(kNested);
  map.relation({{map.way("da", {}), ""}, {map.way("ba", {}), "outer"}, {map.way("dcb", {}), ""}},
               kArea);
  const FloorPlan plan = planOf(map);
  ASSERT_THAT(plan.cells, SizeIs(1));
  EXPECT_THAT(plan.cells[0].polygons.at(0), ElementsAre(SizeIs(5)));
}

TEST(OsmAreas, MayHaveSeveralOutlines) {
  OsmDrawing map(kNested);
  map.relation({{map.way("abcda", {}), "outer"}, {map.way("ijkli", {}), "outer"}}, kArea);
  EXPECT_THAT(planOf(map).cells.at(0).polygons, SizeIs(2));
}

TEST(OsmAreas, UseTheRingsThatCloseWhenMembersAreMissing) {
  OsmDrawing map(kNested);
  map.relation({{map.way("abcda", {}), "outer"}, {map.way("ij", {}), "outer"}, {99, "outer"}},
               kArea);
  const FloorPlan plan = planOf(map);
  EXPECT_THAT(plan.cells.at(0).polygons, SizeIs(1));
  EXPECT_THAT(plan.remarks.sentences(),
              ElementsAre("1 multipolygon is incomplete and was put together of the "
                          "rings that close: relation/1"));
}

TEST(OsmAreas, WithoutAnOutlineThatClosesAreLeftOut) {
  OsmDrawing map(kNested);
  map.relation({{map.way("abc", {}), "outer"}, {map.way("efghe", {}), "inner"}, {99, "outer"}},
               kArea);
  map.way("ij", {{"indoor", "wall"}, {"level", "0"}});
  const FloorPlan plan = planOf(map);
  EXPECT_THAT(plan.cells, IsEmpty());
  EXPECT_THAT(plan.remarks.sentences(),
              ElementsAre("1 multipolygon has no outline that closes and was left "
                          "out: relation/1"));
}

TEST(OsmAreas, WithoutAnyMemberInTheFileAreLeftOut) {
  OsmDrawing map(kNested);
  map.relation({{98, "outer"}, {99, "inner"}}, kArea);
  map.way("ij", {{"indoor", "wall"}, {"level", "0"}});
  EXPECT_THAT(planOf(map).cells, IsEmpty());
}

TEST(OsmAreas, AreFloorToWalkOnWithoutAnAreaTag) {
  OsmDrawing map(kNested);
  map.relation({{map.way("abcda", {}), "outer"}}, {{"highway", "footway"}, {"level", "0"}});
  const FloorPlan plan = planOf(map);
  EXPECT_THAT(plan.lines, IsEmpty());
  EXPECT_THAT(plan.cells, SizeIs(1));
}

TEST(OsmAreas, OfWallsAreTheirRings) {
  OsmDrawing map(kNested);
  map.relation({{map.way("abcda", {}), "outer"}, {map.way("efghe", {}), "inner"}},
               {{"indoor", "wall"}, {"level", "0"}});
  EXPECT_THAT(planOf(map).walls, SizeIs(2));
}

TEST(OsmAreas, KeepTheFeaturesThatTheirMembersAre) {
  OsmDrawing map(kNested);
  const auto inner = map.way("efghe", {{"indoor", "room"}, {"level", "0"}});
  map.relation({{map.way("abcda", {}), "outer"}, {inner, "inner"}}, kArea);
  EXPECT_THAT(planOf(map).cells, SizeIs(2));
}

TEST(OsmAreas, StandForAnOutlineThatIsDrawnAsTheSameRoom) {
  OsmDrawing map(kNested);
  const auto outer = map.way("abcda", {{"indoor", "room"}, {"name", "Hall"}, {"room", "hall"}});
  map.relation({{outer, "outer"}, {map.way("efghe", {}), "inner"}},
               {{"indoor", "room"}, {"level", "0"}});
  const FloorPlan plan = planOf(map);
  ASSERT_THAT(plan.cells, SizeIs(1));
  EXPECT_EQ(plan.cells[0].source, "relation/1");
  EXPECT_EQ(plan.cells[0].name, "Hall");
  EXPECT_EQ(plan.cells[0].category, "hall");
}

TEST(OsmAreas, LeaveAnOutlineThatIsSomethingElse) {
  for (const TagList& tags :
       {TagList{{"indoor", "area"}, {"level", "0"}}, TagList{{"indoor", "room"}, {"level", "1"}},
        TagList{{"indoor", "room"}, {"level", "0"}, {"name", "Annexe"}}}) {
    OsmDrawing map(kNested);
    map.relation({{map.way("abcda", tags), "outer"}},
                 {{"indoor", "room"}, {"level", "0"}, {"name", "Hall"}});
    EXPECT_THAT(planOf(map).cells, SizeIs(2)) << testing::PrintToString(tags);
  }
}

TEST(OsmAreas, ThatDoNotCloseLeaveTheirOutlines) {
  OsmDrawing map(kNested);
  const auto outer = map.way("abcda", {{"indoor", "room"}, {"level", "0"}});
  map.relation({{outer, "inner"}}, {{"indoor", "room"}, {"level", "0"}});
  EXPECT_THAT(planOf(map).cells, SizeIs(1));
}

TEST(AreaAssembly, SurvivesWaysThatCrossEachOther) {
  using KorvaniTools::AreaMember;
  const std::vector<AreaMember> bowTie{
      {{{1, {0, 0}}, {2, {1, 1}}, {3, {1, 0}}, {4, {0, 1}}, {1, {0, 0}}}, false},
      {{{5, {5, 5}}, {6, {5, 6}}, {7, {6, 6}}, {5, {5, 5}}}, false}};
  EXPECT_TRUE(KorvaniTools::assembleArea(bowTie).incomplete);
  EXPECT_THAT(KorvaniTools::assembleArea({}).polygons, IsEmpty());
}

}  // namespace
}  // namespace KorvaniTest
