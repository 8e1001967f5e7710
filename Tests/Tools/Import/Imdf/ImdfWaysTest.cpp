#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/Import/Imdf/TestArchive.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::ConnectionKind;
using KorvaniTools::PlanLevelSet;
using testing::IsEmpty;
using testing::SizeIs;

void addPoint(TestArchive& archive, const std::string& id, Metres at, const Json& level,
              const std::vector<std::string>& neighbours) {
  archive.add("navPath", id, pointOf(at), {{"level_id", level}, {"neighbours", neighbours}});
}

TEST(ImdfWays, OutdoorsAreLinesOnOrdinalZero) {
  TestArchive archive = smallArchive();
  addPoint(archive, "a", {10, 0}, nullptr, {"b"});
  addPoint(archive, "b", {20, 0}, nullptr, {"a", "c"});
  addPoint(archive, "c", {30, 0}, nullptr, {});
  const FloorPlan plan = archive.read();
  ASSERT_THAT(plan.lines, SizeIs(2));
  EXPECT_EQ(plan.lines[0].levels, PlanLevelSet{0});
  EXPECT_EQ(plan.lines[0].kind, ConnectionKind::path);
  EXPECT_FALSE(plan.lines[0].oneway);
  EXPECT_TRUE(plan.lines[1].oneway);
  ASSERT_THAT(plan.lines[1].vertices, SizeIs(2));
  EXPECT_EQ(plan.lines[0].vertices.at(1).node, plan.lines[1].vertices[0].node);
  EXPECT_EQ(plan.lines[1].vertices[1].coordinate.longitude, positionOf({30, 0})[0].get<double>());
}

TEST(ImdfWays, IntoABuildingMayChangeTheLevel) {
  TestArchive archive;
  archive.floor(1, {"HHHH"}, {{'H', "lobby"}});
  addPoint(archive, "inside", {1, 0.5}, "level1", {"outside"});
  addPoint(archive, "outside", {-5, 0.5}, nullptr, {"inside"});
  const FloorPlan plan = archive.read();
  ASSERT_THAT(plan.lines, SizeIs(1));
  EXPECT_EQ(plan.lines[0].levels, (PlanLevelSet{0, 1}));
  EXPECT_EQ(plan.lines[0].kind, ConnectionKind::door);
  EXPECT_EQ(plan.lines[0].incline, -1);
}

TEST(ImdfWays, IndoorsAreLeftToUnitsAndOpeningsButForTheFirstStep) {
  TestArchive archive = smallArchive();
  addPoint(archive, "outside", {10, 1}, nullptr, {"threshold"});
  addPoint(archive, "threshold", {7, 1}, "level0", {"outside", "a"});
  addPoint(archive, "a", {6, 1}, "level0", {"threshold", "b"});
  addPoint(archive, "b", {5, 1}, "level0", {"a"});
  const FloorPlan plan = archive.read();
  ASSERT_THAT(plan.lines, SizeIs(2));
  EXPECT_EQ(plan.lines[1].vertices.at(1).coordinate.longitude, positionOf({6, 1})[0].get<double>());
}

TEST(ImdfWays, ToNowhereAreNoted) {
  TestArchive archive = smallArchive();
  addPoint(archive, "a", {10, 0}, nullptr, {"gone", "a", "b"});
  addPoint(archive, "b", {20, 0}, "attic", {"a"});
  const FloorPlan plan = archive.read();
  EXPECT_THAT(plan.lines, IsEmpty());
  EXPECT_EQ(remarkWith(plan, "neighbours"),
            "navPath.geojson: neighbours that do not exist, ignored: \"gone\", \"b\"");
  EXPECT_EQ(remarkWith(plan, "level_id"),
            "navPath.geojson: no level has the level_id, left out: \"b\"");
}

}  // namespace
}  // namespace KorvaniTest
