#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/Import/Osm/OsmDrawing.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::CellKind;
using KorvaniTools::FloorPlan;
using KorvaniTools::PlanCell;
using KorvaniTools::PlanLevelSet;
using KorvaniTools::StepFree;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::vector<std::string> kSquare{"a----b", "|    |", "d----c"};

FloorPlan planWith(const TagList& tags, const std::string& letters = "abcda") {
  OsmDrawing map(kSquare);
  map.way(letters, tags);
  map.way("ab", {{"indoor", "wall"}, {"level", "9"}});
  return planOf(map);
}

PlanCell cellWith(const TagList& tags) {
  const FloorPlan plan = planWith(tags);
  EXPECT_THAT(plan.cells, SizeIs(1)) << testing::PrintToString(tags);
  return plan.cells.empty() ? PlanCell() : plan.cells.front();
}

TEST(OsmCells, KeepTheirOutlineAndLevels) {
  const PlanCell cell =
      cellWith({{"indoor", "room"}, {"level", "1"}, {"repeat_on", "2-3"}, {"wheelchair", "yes"}});
  EXPECT_EQ(cell.source, "way/1");
  EXPECT_EQ(cell.levels, PlanLevelSet({1, 2, 3}));
  EXPECT_EQ(cell.stepFree, StepFree::yes);
  ASSERT_THAT(cell.polygons, SizeIs(1));
  ASSERT_THAT(cell.polygons[0], SizeIs(1));
  ASSERT_THAT(cell.polygons[0][0], SizeIs(5));
  EXPECT_EQ(cell.polygons[0][0].front(), cell.polygons[0][0].back());
}

TEST(OsmCells, HaveAKindAndWallsByTheirTags) {
  const struct {
    TagList tags;
    CellKind kind;
    bool walled;
  } cases[] = {
      {{{"indoor", "room"}}, CellKind::room, true},
      {{{"indoor", "corridor"}}, CellKind::corridor, false},
      {{{"indoor", "area"}}, CellKind::area, false},
      {{{"indoor", "yes"}, {"area", "yes"}}, CellKind::area, false},
      {{{"highway", "footway"}, {"area", "yes"}}, CellKind::area, false},
      {{{"highway", "pedestrian"}, {"area", "yes"}}, CellKind::area, false},
      {{{"indoor", "yes"}, {"shop", "books"}}, CellKind::room, true},
      {{{"shop", "books"}}, CellKind::room, true},
      {{{"room", "office"}}, CellKind::room, true},
      {{{"indoor", "room"}, {"stairs", "yes"}}, CellKind::stairs, true},
      {{{"indoor", "area"}, {"stairs", "yes"}}, CellKind::stairs, false},
      {{{"indoor", "room"}, {"room", "stairs"}}, CellKind::stairs, true},
      {{{"highway", "steps"}, {"area", "yes"}}, CellKind::stairs, false},
      {{{"indoor", "yes"}, {"area", "yes"}, {"stairwell", "flight_of_stairs"}},
       CellKind::stairs,
       false},
      {{{"indoor", "yes"}, {"area", "yes"}, {"stairwell", "stair_landing"}}, CellKind::area, false},
      {{{"indoor", "room"}, {"highway", "elevator"}}, CellKind::elevator, true},
      {{{"indoor", "room"}, {"room", "elevator"}}, CellKind::elevator, true},
      {{{"indoor", "yes"}, {"building:part", "elevator"}}, CellKind::elevator, true},
      {{{"indoor", "area"}, {"ramp", "yes"}}, CellKind::ramp, false},
      {{{"indoor", "room"}, {"room", "shaft"}}, CellKind::closed, true},
      {{{"railway", "platform"}}, CellKind::area, false}};
  for (const auto& each : cases) {
    TagList tags = each.tags;
    tags.emplace_back("level", "0");
    const PlanCell cell = cellWith(tags);
    EXPECT_EQ(cell.kind, each.kind) << testing::PrintToString(tags);
    EXPECT_EQ(cell.walled, each.walled) << testing::PrintToString(tags);
  }
}

TEST(OsmCells, AreNotWholeBuildingsNorLoopsToWalkAlong) {
  EXPECT_THAT(planWith({{"building", "yes"}, {"level", "0"}, {"shop", "books"}}).cells, IsEmpty());
  const FloorPlan loop = planWith({{"highway", "footway"}, {"level", "0"}});
  EXPECT_THAT(loop.cells, IsEmpty());
  EXPECT_THAT(loop.lines, SizeIs(1));
  EXPECT_THAT(planWith({{"building:part", "elevator"}, {"level", "0"}}).cells, IsEmpty());
}

TEST(OsmCells, ThatAreNotClosedAreLeftOutWithARemark) {
  const FloorPlan plan = planWith({{"indoor", "room"}, {"level", "0"}}, "abcd");
  EXPECT_THAT(plan.cells, IsEmpty());
  EXPECT_THAT(plan.remarks.sentences(),
              ElementsAre("1 outline is not closed and was left out: way/1"));
}

TEST(OsmCells, AreNamedByNameBeforeNumber) {
  const PlanCell named = cellWith(
      {{"indoor", "room"}, {"level", "0"}, {"name", "Aula"}, {"ref", "E01"}, {"room", "hall"}});
  EXPECT_EQ(named.name, "Aula");
  EXPECT_TRUE(named.isPlace);
  EXPECT_EQ(named.category, "hall");
  EXPECT_EQ(named.further, (nlohmann::json{{"source", "way/1"}, {"ref", "E01"}, {"room", "hall"}}));
  const PlanCell numbered = cellWith({{"indoor", "room"}, {"level", "0"}, {"ref", "E02"}});
  EXPECT_EQ(numbered.name, "E02");
  EXPECT_TRUE(numbered.isPlace);
}

TEST(OsmCells, WithoutANameArePlacesWhenPeopleLookForThem) {
  const struct {
    TagList tags;
    const char* name;
    const char* category;
  } cases[] = {{{{"amenity", "toilets"}, {"female", "yes"}}, "Toilets", "toilets"},
               {{{"room", "toilets"}}, "Toilets", "toilets"},
               {{{"amenity", "fast_food"}}, "Fast food", "fast_food"},
               {{{"shop", "mobile_phone"}}, "Mobile phone", "shop"},
               {{{"shop", "yes"}}, "Shop", "shop"},
               {{{"room", "shop"}, {"brand", "Books & Co"}}, "Books & Co", "shop"}};
  for (const auto& each : cases) {
    TagList tags = each.tags;
    tags.insert(tags.end(), {{"level", "0"}, {"indoor", "room"}});
    const PlanCell cell = cellWith(tags);
    EXPECT_TRUE(cell.isPlace) << each.name;
    EXPECT_EQ(cell.name, each.name);
    EXPECT_EQ(cell.category, each.category);
  }
  EXPECT_EQ(cellWith({{"indoor", "room"}, {"level", "0"}, {"amenity", "toilets"}, {"male", "yes"}})
                .further["male"],
            "yes");
}

TEST(OsmCells, ThatNobodyLooksForAreNoPlaces) {
  for (const TagList& tags :
       {TagList{{"indoor", "room"}}, TagList{{"indoor", "room"}, {"room", "kitchen"}},
        TagList{{"indoor", "corridor"}, {"ref", "F06"}},
        TagList{{"indoor", "room"}, {"shop", "vacant"}},
        TagList{{"indoor", "room"}, {"stairs", "yes"}, {"ref", "TR01"}}}) {
    EXPECT_FALSE(cellWith(tags).isPlace) << testing::PrintToString(tags);
  }
  EXPECT_TRUE(cellWith({{"indoor", "corridor"}, {"name", "Foyer"}}).isPlace);
}

TEST(OsmCells, WithoutALevelAreOnTheGround) {
  const FloorPlan plan = planWith({{"indoor", "room"}});
  EXPECT_EQ(plan.cells.at(0).levels, PlanLevelSet{0});
  EXPECT_THAT(plan.remarks.sentences(),
              ElementsAre("1 feature indoors has no level and was put on level 0: way/1"));
}

TEST(OsmCells, AreOnTheLevelsThatCanBeRead) {
  const FloorPlan plan = planWith({{"indoor", "room"}, {"level", "0;roof"}, {"repeat_on", "2, 3"}});
  EXPECT_EQ(plan.cells.at(0).levels, PlanLevelSet({0, 2, 3}));
  EXPECT_THAT(plan.remarks.sentences(),
              ElementsAre("1 feature has a level that cannot be read: way/1"));
}

TEST(OsmCells, MayNameALevelAsItsOutlineDoes) {
  OsmDrawing map(kSquare);
  map.way("abcda", {{"indoor", "room"}, {"level", "EG;1. OG"}});
  map.way("abcda", {{"indoor", "level"}, {"level", "0.5"}, {"level:ref", "EG"}});
  map.way("abcda", {{"indoor", "level"}, {"level", "1"}, {"name", "1. OG"}});
  const FloorPlan plan = planOf(map);
  EXPECT_EQ(plan.cells.at(0).levels, PlanLevelSet({0.5, 1}));
  EXPECT_THAT(plan.remarks.sentences(), IsEmpty());
}

TEST(OsmCells, ThatArePlatformsArePlacesByTheirNumber) {
  const PlanCell island = cellWith({{"railway", "platform"}, {"level", "1"}, {"ref", "3; 4"}});
  EXPECT_EQ(island.name, "Platform 3/4");
  EXPECT_TRUE(island.isPlace);
  EXPECT_EQ(island.further["ref"], "3; 4");
  EXPECT_EQ(
      cellWith({{"railway", "platform"}, {"level", "1"}, {"ref", "3"}, {"name", "North"}}).name,
      "North");
  EXPECT_FALSE(cellWith({{"railway", "platform"}, {"level", "1"}}).isPlace);
}

TEST(OsmCells, OfLevelOutlinesAreNamesOfLevels) {
  const FloorPlan plan =
      planWith({{"indoor", "level"}, {"level", "0.5"}, {"name", "Mezzanine"}, {"level:ref", "M"}});
  EXPECT_THAT(plan.cells, IsEmpty());
  ASSERT_THAT(plan.levels, SizeIs(1));
  EXPECT_EQ(plan.levels[0].level, 0.5);
  EXPECT_EQ(plan.levels[0].name, "Mezzanine");
  EXPECT_EQ(plan.levels[0].source, "M");
}

TEST(OsmWalls, AreWaysClosedOrNot) {
  OsmDrawing map({"a----b-e", "|    |", "d----c"});
  map.way("be", {{"indoor", "wall"}, {"level", "0"}, {"repeat_on", "1"}});
  map.way("abcda", {{"indoor", "wall"}, {"level", "0"}});
  map.way("ab", {{"barrier", "wall"}, {"level", "1"}});
  map.way("bc", {{"barrier", "fence"}});
  map.node('e', {{"indoor", "wall"}, {"level", "0"}});
  const FloorPlan plan = planOf(map);
  ASSERT_THAT(plan.walls, SizeIs(3));
  EXPECT_THAT(plan.walls[0].positions, SizeIs(2));
  EXPECT_EQ(plan.walls[0].levels, PlanLevelSet({0, 1}));
  EXPECT_THAT(plan.walls[1].positions, SizeIs(5));
  EXPECT_EQ(plan.walls[2].source, "way/3");
  EXPECT_THAT(plan.cells, IsEmpty());
}

}  // namespace
}  // namespace KorvaniTest
