#include "Import/Osm/OsmReader.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "Support/InputError.hpp"
#include "Tools/Import/Osm/OsmDrawing.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::FloorPlan;
using KorvaniTools::InputError;
using KorvaniTools::OsmOptions;
using KorvaniTools::readOsm;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr double kMetre = 1.0 / 111195;

/// A corridor at 'a', and a path that leads away from it: 50 m, 90 m, 200 m and 300 m.
OsmDrawing corridorWithPath() {
  OsmDrawing map({"a--b"});
  map.place('p', 0, 0);
  map.place('q', -50 * kMetre, 0);
  map.place('r', -90 * kMetre, 0);
  map.place('s', -200 * kMetre, 0);
  map.place('t', -300 * kMetre, 0);
  map.place('u', -310 * kMetre, 0);
  map.way("ab", {{"highway", "corridor"}, {"level", "0"}});
  return map;
}

TEST(OsmReader, NamesSourceAndLicence) {
  const FloorPlan plan = planOf(corridorWithPath());
  EXPECT_EQ(plan.attribution, "© OpenStreetMap contributors, ODbL 1.0");
  EXPECT_EQ(plan.licence, "ODbL-1.0");
}

TEST(OsmReader, KeepsWaysOutdoorsAsFarAsTheyAreNear) {
  OsmDrawing map = corridorWithPath();
  map.way("apqrst", {{"highway", "path"}});
  map.way("st", {{"highway", "footway"}});
  const FloorPlan plan = planOf(map);
  ASSERT_THAT(plan.lines, SizeIs(2));
  EXPECT_EQ(plan.lines[1].source, "way/2");
  ASSERT_THAT(plan.lines[1].vertices, SizeIs(4));
  EXPECT_EQ(plan.lines[1].vertices.back().node, 'r');
}

TEST(OsmReader, KeepsFloorOutdoorsWholeWhenItIsNear) {
  OsmDrawing map = corridorWithPath();
  map.place('v', -300 * kMetre, 100 * kMetre);
  map.way("qtvq", {{"highway", "pedestrian"}, {"area", "yes"}});
  map.way("tuvt", {{"highway", "pedestrian"}, {"area", "yes"}});
  const FloorPlan plan = planOf(map);
  ASSERT_THAT(plan.cells, SizeIs(1));
  EXPECT_THAT(plan.cells[0].polygons.at(0).at(0), SizeIs(4));
  EXPECT_THAT(plan.remarks.sentences(), IsEmpty());
}

TEST(OsmReader, KeepsSquaresOutdoorsWithHoles) {
  OsmDrawing map = corridorWithPath();
  map.place('v', -300 * kMetre, 100 * kMetre);
  map.relation({{map.way("qtvq", {}), "outer"}}, {{"highway", "pedestrian"}});
  map.relation({{map.way("tuvt", {}), "outer"}}, {{"highway", "pedestrian"}});
  const FloorPlan plan = planOf(map);
  ASSERT_THAT(plan.cells, SizeIs(1));
  EXPECT_EQ(plan.cells[0].source, "relation/1");
}

TEST(OsmReader, KeepsDoorsOfWaysOutdoors) {
  OsmDrawing map = corridorWithPath();
  map.way("apq", {{"highway", "path"}});
  map.node('q', {{"barrier", "gate"}});
  map.node('r', {{"barrier", "gate"}});
  const FloorPlan plan = planOf(map);
  ASSERT_THAT(plan.doors, SizeIs(1));
  EXPECT_EQ(plan.doors[0].node, 'q');
}

TEST(OsmReader, TakesTheNameOfTheBuildingAround) {
  OsmDrawing map({"k--------------l  i---j", "|  a---------b |  |   |", "|  |         | |  |   |",
                  "|  d---------c |  |   |", "n--------------m  h---g"});
  map.way("abcda", {{"indoor", "room"}, {"level", "0"}});
  map.way("ijghi", {{"building", "yes"}, {"name", "Kiosk"}});
  map.way("klmnk", {{"building", "yes"}, {"name", "Station"}});
  EXPECT_EQ(planOf(map).name, "Station");
}

TEST(OsmReader, TakesTheNameOfABuildingThatIsARelation) {
  OsmDrawing map({"k----------l", "|  a----b  |", "|  d----c  |", "n----------m"});
  map.way("abcda", {{"indoor", "room"}, {"level", "0"}});
  map.relation({{map.way("klm", {}), "outer"}, {map.way("mnk", {}), "outer"}},
               {{"building", "yes"}, {"name", "Station"}});
  EXPECT_EQ(planOf(map).name, "Station");
}

TEST(OsmReader, TakesTheNameThatIsGiven) {
  const OsmFile file(corridorWithPath().xml());
  OsmOptions options;
  EXPECT_EQ(readOsm(file.path(), options).name, std::nullopt);
  options.name = "Museum";
  EXPECT_EQ(readOsm(file.path(), options).name, "Museum");
}

TEST(OsmReader, KeepsWhatTouchesTheBox) {
  OsmDrawing map({"a----b----c      e----f", "                  g     "});
  map.way("abc", {{"highway", "corridor"}, {"level", "0"}});
  map.way("ef", {{"highway", "corridor"}, {"level", "0"}});
  map.way("eg", {{"highway", "footway"}});
  map.node('f', {{"highway", "elevator"}, {"level", "0;1"}});
  const OsmFile file(map.xml());
  OsmOptions options;
  options.box = KorvaniTools::Rectangle{map.at('b'), map.at('c')};
  const FloorPlan plan = readOsm(file.path(), options);
  ASSERT_THAT(plan.lines, SizeIs(1));
  EXPECT_EQ(plan.lines[0].source, "way/1");
  EXPECT_THAT(plan.lines[0].vertices, SizeIs(3));
  EXPECT_THAT(plan.shafts, IsEmpty());
  options.box = KorvaniTools::Rectangle{{10, 10}, {20, 20}};
  EXPECT_THROW(readOsm(file.path(), options), InputError);
}

TEST(OsmReader, KeepsLevelsApartOnASharedNode) {
  OsmDrawing map({"a--m--b", "   c   "});
  map.way("amb", {{"highway", "footway"}, {"level", "0"}});
  map.way("mc", {{"highway", "footway"}, {"level", "-1"}});
  const FloorPlan plan = planOf(map);
  ASSERT_THAT(plan.lines, SizeIs(2));
  EXPECT_EQ(plan.lines[0].vertices[1].node, plan.lines[1].vertices[0].node);
  EXPECT_FALSE(plan.lines[0].levels == plan.lines[1].levels);
}

TEST(OsmReader, ReadsObjectsInAnyOrder) {
  const std::string xml = corridorWithPath().xml();
  const std::size_t way = xml.find("<way");
  const std::size_t node = xml.find("<node");
  const std::size_t end = xml.find("</osm>");
  const OsmFile turned(xml.substr(0, node) + xml.substr(way, end - way) +
                       xml.substr(node, way - node) + xml.substr(end));
  EXPECT_THAT(readOsm(turned.path(), {}).lines, SizeIs(1));
}

TEST(OsmReader, ReadsAWayOnceThatTheFileRepeats) {
  std::string xml = corridorWithPath().xml();
  const std::size_t way = xml.find("<way");
  const std::size_t end = xml.find("</osm>");
  xml.insert(end, xml.substr(way, end - way));
  const OsmFile file(xml);
  EXPECT_THAT(readOsm(file.path(), {}).lines, SizeIs(1));
}

TEST(OsmReader, LeavesDeletedObjectsOut) {
  std::string xml = corridorWithPath().xml();
  xml.insert(xml.find("<way") + 4, " visible=\"false\"");
  const OsmFile file(xml);
  EXPECT_THROW(readOsm(file.path(), {}), InputError);
}

TEST(OsmReader, RefusesAFileWithoutAnythingIndoors) {
  OsmDrawing map({"a--b"});
  map.way("ab", {{"highway", "footway"}});
  const OsmFile file(map.xml());
  try {
    readOsm(file.path(), {});
    FAIL() << "read";
  } catch (const InputError& error) {
    EXPECT_EQ(std::string(error.what()),
              file.path().string() +
                  ": found nothing indoors, expected features with the tag indoor or level");
  }
}

}  // namespace
}  // namespace KorvaniTest
