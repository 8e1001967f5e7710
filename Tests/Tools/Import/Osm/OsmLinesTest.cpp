#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/Import/Osm/OsmDrawing.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::ConnectionKind;
using KorvaniTools::FloorPlan;
using KorvaniTools::PlanLevelSet;
using KorvaniTools::PlanLine;
using KorvaniTools::StepFree;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// The one line that a way with those tags becomes.
PlanLine lineWith(const TagList& tags) {
  OsmDrawing map({"a---b---c"});
  map.way("abc", tags);
  const FloorPlan plan = planOf(map);
  EXPECT_THAT(plan.lines, SizeIs(1)) << testing::PrintToString(tags);
  return plan.lines.empty() ? PlanLine() : plan.lines.front();
}

bool hasLines(const TagList& tags) {
  OsmDrawing map({"a---b---c"});
  map.way("abc", tags);
  map.way("ac", {{"highway", "corridor"}, {"level", "7"}});
  return planOf(map).lines.size() > 1;
}

TEST(OsmLines, KeepTheirNodesInOrder) {
  const PlanLine line = lineWith({{"highway", "footway"}, {"level", "1"}});
  ASSERT_THAT(line.vertices, SizeIs(3));
  EXPECT_EQ(line.source, "way/1");
  EXPECT_EQ(line.levels, PlanLevelSet{1});
  EXPECT_EQ(line.vertices[0].node, 'a');
  EXPECT_EQ(line.vertices[2].node, 'c');
  EXPECT_NEAR(line.vertices[1].coordinate.longitude, 11.00012, 1e-7);
}

TEST(OsmLines, AreWaysForPeople) {
  for (const char* highway : {"footway", "corridor", "pedestrian", "path", "steps"}) {
    EXPECT_TRUE(hasLines({{"highway", highway}, {"indoor", "yes"}, {"level", "0"}})) << highway;
  }
  EXPECT_TRUE(hasLines({{"indoor", "pathway"}, {"level", "0"}}));
  EXPECT_TRUE(hasLines({{"indoor", "corridor"}, {"level", "0"}}));
  for (const char* highway : {"service", "living_street", "residential", "cycleway"}) {
    EXPECT_FALSE(hasLines({{"highway", highway}, {"indoor", "yes"}, {"level", "0"}})) << highway;
  }
  EXPECT_FALSE(hasLines({{"railway", "rail"}, {"level", "0"}}));
}

TEST(OsmLines, OfPlatformsArePlacesHalfway) {
  const TagList tags{{"railway", "platform"}, {"level", "1"}, {"ref", "3; 4"}};
  OsmDrawing map({"a-------b"});
  map.way("ab", tags);
  const FloorPlan plan = planOf(map);
  ASSERT_THAT(plan.lines, SizeIs(1));
  EXPECT_EQ(plan.lines[0].kind, ConnectionKind::path);
  ASSERT_THAT(plan.lines[0].vertices, SizeIs(3));
  ASSERT_THAT(plan.places, SizeIs(1));
  EXPECT_EQ(plan.places[0].name, "Platform 3/4");
  EXPECT_EQ(plan.places[0].source, "way/1");
  EXPECT_EQ(plan.places[0].levels, PlanLevelSet{1});
  EXPECT_EQ(plan.places[0].coordinate, plan.lines[0].vertices[1].coordinate);
  EXPECT_NEAR(plan.places[0].coordinate.longitude,
              (map.at('a').longitude + map.at('b').longitude) / 2, 1e-9);
}

TEST(OsmLines, OfPlatformsArePlacesAtACornerThatIsHalfway) {
  OsmDrawing map({"a---b---c"});
  map.way("abc", {{"public_transport", "platform"}, {"level", "0"}, {"name", "North"}});
  const FloorPlan plan = planOf(map);
  ASSERT_THAT(plan.lines, SizeIs(1));
  EXPECT_THAT(plan.lines[0].vertices, SizeIs(3));
  ASSERT_THAT(plan.places, SizeIs(1));
  EXPECT_EQ(plan.places[0].coordinate, map.at('b'));
}

TEST(OsmLines, OfPlatformsHaveACornerWhereStairsEndBesideThem) {
  OsmDrawing map({"a--s----b", "   |     ", "   t--u--"});
  map.way("ab", {{"railway", "platform"}, {"level", "1"}});
  map.way("st", {{"highway", "steps"}, {"level", "0;1"}});
  map.way("tu", {{"highway", "footway"}, {"level", "0"}});
  const FloorPlan plan = planOf(map);
  ASSERT_THAT(plan.lines, SizeIs(3));
  ASSERT_THAT(plan.lines[0].vertices, SizeIs(3));
  EXPECT_EQ(plan.lines[0].vertices[1].node, 's');
}

TEST(OsmLines, OfPlatformsHaveNoCornerWhereStairsBelowThemEnd) {
  OsmDrawing map({"a--s--t--u--b", "   |         ", "   v         "});
  map.way("asb", {{"railway", "platform"}, {"level", "1"}});
  map.way("st", {{"highway", "steps"}, {"level", "0;1"}});
  map.way("uv", {{"highway", "steps"}, {"level", "0;1"}});
  map.way("uv", {{"highway", "footway"}, {"level", "0"}});
  EXPECT_THAT(planOf(map).lines.at(0).vertices, SizeIs(3)) << "used elsewhere, or below";
}

TEST(OsmLines, OfPlatformsWithoutANameAreWaysOnly) {
  OsmDrawing map({"a---b---c"});
  map.way("abc", {{"railway", "platform"}, {"level", "0"}});
  const FloorPlan plan = planOf(map);
  ASSERT_THAT(plan.lines, SizeIs(1));
  EXPECT_THAT(plan.lines[0].vertices, SizeIs(3));
  EXPECT_THAT(plan.places, IsEmpty());
}

TEST(OsmLines, AreNotWaysThatAreClosedToPeople) {
  EXPECT_FALSE(hasLines({{"highway", "footway"}, {"level", "0"}, {"foot", "no"}}));
  EXPECT_FALSE(hasLines({{"highway", "footway"}, {"level", "0"}, {"access", "private"}}));
  EXPECT_FALSE(hasLines({{"highway", "footway"}, {"level", "0"}, {"access", "no"}}));
  EXPECT_TRUE(
      hasLines({{"highway", "footway"}, {"level", "0"}, {"access", "no"}, {"foot", "yes"}}));
  EXPECT_TRUE(hasLines({{"highway", "footway"}, {"level", "0"}, {"access", "customers"}}));
}

TEST(OsmLines, HaveAKindByTheirTags) {
  const struct {
    TagList tags;
    ConnectionKind kind;
  } cases[] = {{{{"highway", "footway"}}, ConnectionKind::path},
               {{{"highway", "steps"}}, ConnectionKind::stairs},
               {{{"highway", "steps"}, {"conveying", "forward"}}, ConnectionKind::escalator},
               {{{"highway", "steps"}, {"conveying", "no"}}, ConnectionKind::stairs},
               {{{"highway", "footway"}, {"conveying", "yes"}}, ConnectionKind::travelator},
               {{{"highway", "footway"}, {"ramp", "yes"}}, ConnectionKind::ramp},
               {{{"highway", "footway"}, {"ramp", "no"}}, ConnectionKind::path},
               {{{"highway", "elevator"}}, ConnectionKind::elevator},
               {{{"highway", "ladder"}}, ConnectionKind::ladder}};
  for (const auto& each : cases) {
    TagList tags = each.tags;
    tags.emplace_back("level", "0");
    EXPECT_EQ(lineWith(tags).kind, each.kind) << testing::PrintToString(tags);
  }
}

TEST(OsmLines, OnSeveralLevelsThatAreNoStepsStayPaths) {
  EXPECT_EQ(lineWith({{"highway", "footway"}, {"level", "0;1"}}).kind, ConnectionKind::path);
  EXPECT_EQ(lineWith({{"highway", "steps"}, {"level", "0;1"}}).kind, ConnectionKind::stairs);
}

TEST(OsmLines, OnSeveralLevelsWithinAStairwellAreStairs) {
  OsmDrawing map({"a-------b", "|  e-f  |", "d-------c"});
  map.way("abcda", {{"indoor", "room"}, {"stairs", "yes"}, {"level", "0-1"}});
  map.way("ef", {{"indoor", "pathway"}, {"level", "0-1"}});
  EXPECT_EQ(planOf(map).lines.at(0).kind, ConnectionKind::stairs);
}

TEST(OsmLines, ThatConveyHaveADirectionRelativeToTheWay) {
  const auto direction = [](const char* conveying) {
    const PlanLine line =
        lineWith({{"highway", "steps"}, {"level", "0;1"}, {"conveying", conveying}});
    return std::pair(line.oneway, line.backward);
  };
  EXPECT_EQ(direction("forward"), std::pair(true, false));
  EXPECT_EQ(direction("backward"), std::pair(true, true));
  EXPECT_EQ(direction("reversible"), std::pair(false, false));
  EXPECT_EQ(direction("yes"), std::pair(false, false));
}

TEST(OsmLines, AreOneWayWhereThatIsMeantForPeople) {
  const auto direction = [](const char* highway, const char* key, const char* value) {
    const PlanLine line = lineWith({{"highway", highway}, {"level", "0"}, {key, value}});
    return std::pair(line.oneway, line.backward);
  };
  EXPECT_EQ(direction("footway", "oneway", "yes"), std::pair(true, false));
  EXPECT_EQ(direction("steps", "oneway", "-1"), std::pair(true, true));
  EXPECT_EQ(direction("footway", "oneway", "no"), std::pair(false, false));
  EXPECT_EQ(direction("path", "oneway", "yes"), std::pair(false, false));
  EXPECT_EQ(direction("pedestrian", "oneway", "yes"), std::pair(false, false));
  EXPECT_EQ(direction("path", "oneway:foot", "yes"), std::pair(true, false));
}

TEST(OsmLines, TakeTheDirectionForPeopleBeforeThatForAll) {
  const PlanLine line =
      lineWith({{"highway", "footway"}, {"level", "0"}, {"oneway", "yes"}, {"oneway:foot", "no"}});
  EXPECT_FALSE(line.oneway);
}

TEST(OsmLines, SayWhoGetsAlong) {
  const auto stepFree = [](const char* highway, const char* key, const char* value) {
    return lineWith({{"highway", highway}, {"level", "0"}, {key, value}}).stepFree;
  };
  EXPECT_EQ(stepFree("footway", "wheelchair", "yes"), StepFree::yes);
  EXPECT_EQ(stepFree("footway", "wheelchair", "no"), StepFree::no);
  EXPECT_EQ(stepFree("footway", "wheelchair", "limited"), StepFree::unknown);
  EXPECT_EQ(stepFree("steps", "ramp:wheelchair", "yes"), StepFree::yes);
  EXPECT_EQ(stepFree("steps", "ramp", "yes"), StepFree::unknown);
}

TEST(OsmLines, SayWhichEndIsHigher) {
  const auto incline = [](const char* value) {
    return lineWith({{"highway", "steps"}, {"level", "0;1"}, {"incline", value}}).incline;
  };
  EXPECT_EQ(incline("up"), 1);
  EXPECT_EQ(incline("down"), -1);
  EXPECT_EQ(incline("6%"), 1);
  EXPECT_EQ(incline("-4%"), -1);
  EXPECT_EQ(incline("steep"), 0);
}

TEST(OsmLines, AreThereOncePerRepetition) {
  OsmDrawing map({"a---b"});
  map.way("ab", {{"highway", "steps"}, {"level", "0-1"}, {"repeat_on", "1;2"}});
  const FloorPlan plan = planOf(map);
  ASSERT_THAT(plan.lines, SizeIs(3));
  EXPECT_EQ(plan.lines[0].levels, PlanLevelSet({0, 1}));
  EXPECT_EQ(plan.lines[1].levels, PlanLevelSet({1, 2}));
  EXPECT_EQ(plan.lines[2].levels, PlanLevelSet({2, 3}));
}

TEST(OsmLines, WithoutALevelAreOnTheGround) {
  OsmDrawing map({"a---b---c"});
  map.way("ab", {{"highway", "footway"}, {"indoor", "yes"}});
  map.way("bc", {{"highway", "footway"}});
  const FloorPlan plan = planOf(map);
  EXPECT_EQ(plan.lines.at(0).levels, PlanLevelSet{0});
  EXPECT_EQ(plan.lines.at(1).levels, PlanLevelSet{0});
  EXPECT_THAT(plan.remarks.sentences(),
              ElementsAre("1 feature indoors has no level and was put on level 0: way/1"));
}

TEST(OsmLines, WithoutALevelAreOnTheOneThatTheirNeighboursShare) {
  OsmDrawing map({"a---b---c---d"});
  map.way("ab", {{"highway", "footway"}, {"level", "-1"}, {"indoor", "yes"}});
  map.way("bc", {{"highway", "footway"}, {"indoor", "yes"}});
  map.way("cd", {{"highway", "footway"}, {"level", "-1"}, {"indoor", "yes"}});
  const FloorPlan plan = planOf(map);
  EXPECT_EQ(plan.lines.at(1).levels, PlanLevelSet{-1});
  EXPECT_THAT(plan.remarks.sentences(), IsEmpty());
}

TEST(OsmLines, WithoutALevelBetweenDifferentOnesAreOnTheGround) {
  OsmDrawing map({"a---b---c---d"});
  map.way("ab", {{"highway", "footway"}, {"level", "-1"}});
  map.way("bc", {{"highway", "footway"}, {"indoor", "yes"}});
  map.way("cd", {{"highway", "footway"}, {"level", "-2"}});
  EXPECT_EQ(planOf(map).lines.at(1).levels, PlanLevelSet{0});
}

TEST(OsmLines, WithALevelThatCannotBeReadAreOnTheGroundAndRemarked) {
  OsmDrawing map({"a---b"});
  map.way("ab", {{"highway", "footway"}, {"level", "upstairs"}});
  const FloorPlan plan = planOf(map);
  EXPECT_EQ(plan.lines.at(0).levels, PlanLevelSet{0});
  EXPECT_THAT(plan.remarks.sentences(),
              ElementsAre("1 feature has a level that cannot be read: way/1"));
}

TEST(OsmLines, OfStepsWithoutALevelJoinWhatTheyMeet) {
  OsmDrawing map({"a---b---c---d"});
  map.way("ab", {{"highway", "footway"}});
  map.way("bc", {{"highway", "steps"}});
  map.way("cd", {{"highway", "footway"}, {"level", "-1"}});
  const FloorPlan plan = planOf(map);
  ASSERT_THAT(plan.lines, SizeIs(3));
  EXPECT_EQ(plan.lines[2].source, "way/2") << "ways outdoors are behind the others";
  EXPECT_EQ(plan.lines[2].levels, PlanLevelSet({-1, 0}));
  EXPECT_THAT(plan.remarks.sentences(), IsEmpty());
}

TEST(OsmLines, AreCutWhereTheFileLacksNodes) {
  OsmDrawing map({"a--b--c--d"});
  map.way("abXcd", {{"highway", "footway"}, {"level", "0"}});
  const FloorPlan plan = planOf(map);
  ASSERT_THAT(plan.lines, SizeIs(2));
  EXPECT_EQ(plan.lines[0].vertices.back().node, 'b');
  EXPECT_EQ(plan.lines[1].vertices.front().node, 'c');
  EXPECT_THAT(plan.remarks.sentences(),
              ElementsAre("1 way has corners that are not in the file: way/1"));
}

TEST(OsmLines, DoNotRepeatACorner) {
  OsmDrawing map({"a--b--c"});
  map.way("abbc", {{"highway", "footway"}, {"level", "0"}});
  EXPECT_THAT(planOf(map).lines.at(0).vertices, SizeIs(3));
}

/// A room on level 0 that a way crosses, from e over f and g to h.
OsmDrawing crossedRoom(const TagList& tags) {
  OsmDrawing map({"   a--------b", "e--f---g----|--h", "   d--------c"});
  map.way("abcdfa", {{"indoor", "room"}, {"level", "0"}});
  map.way("efgh", tags);
  return map;
}

TEST(OsmLines, ThatPassOverOrUnderARoomAreLeftOutThere) {
  for (const TagList& tags : {TagList{{"highway", "footway"}, {"layer", "-1"}},
                              TagList{{"highway", "footway"}, {"tunnel", "yes"}},
                              TagList{{"highway", "footway"}, {"bridge", "viaduct"}}}) {
    const FloorPlan plan = planOf(crossedRoom(tags));
    ASSERT_THAT(plan.lines, SizeIs(1)) << testing::PrintToString(tags);
    ASSERT_THAT(plan.lines[0].vertices, SizeIs(2));
    EXPECT_EQ(plan.lines[0].vertices[0].node, 'e');
    EXPECT_EQ(plan.lines[0].vertices[1].node, 'f');
    EXPECT_THAT(plan.remarks.sentences(),
                ElementsAre("1 way passes over or under what is on level 0 and was left out there: "
                            "way/2"));
  }
}

TEST(OsmLines, ThatPassOverOrUnderAWallAreLeftOutThere) {
  OsmDrawing map({"  a  ", "e---f---g", "  b  "});
  map.way("ab", {{"indoor", "wall"}, {"level", "0"}});
  map.way("efg", {{"highway", "footway"}, {"bridge", "yes"}});
  const FloorPlan plan = planOf(map);
  ASSERT_THAT(plan.lines, SizeIs(1));
  EXPECT_EQ(plan.lines[0].vertices.front().node, 'f');
}

TEST(OsmLines, ThatPassARoomOnTheGroundAreKeptWhole) {
  for (const TagList& tags :
       {TagList{{"highway", "footway"}},
        TagList{{"highway", "footway"}, {"tunnel", "building_passage"}, {"layer", "1"}},
        TagList{{"highway", "footway"}, {"layer", "0"}},
        TagList{{"highway", "footway"}, {"layer", "-1"}, {"level", "0"}},
        TagList{{"highway", "footway"}, {"layer", "-1"}, {"indoor", "yes"}}}) {
    const FloorPlan plan = planOf(crossedRoom(tags));
    ASSERT_THAT(plan.lines, SizeIs(1)) << testing::PrintToString(tags);
    EXPECT_THAT(plan.lines[0].vertices, SizeIs(4));
  }
}

TEST(OsmLines, ThatPassOverARoomOfAnotherLevelAreKeptWhole) {
  OsmDrawing map({"   a--------b", "e--f---g----|--h", "   d--------c"});
  map.way("abcdfa", {{"indoor", "room"}, {"level", "1"}});
  map.way("egh", {{"highway", "footway"}, {"bridge", "yes"}});
  EXPECT_THAT(planOf(map).lines.at(0).vertices, SizeIs(3));
}

}  // namespace
}  // namespace KorvaniTest
