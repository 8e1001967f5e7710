#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/Import/Imdf/TestArchive.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::CellKind;
using KorvaniTools::StepFree;
using testing::HasSubstr;

TEST(ImdfUnits, OfAnyCategoryHaveWallsAround) {
  const FloorPlan plan = smallArchive().read();
  ASSERT_EQ(plan.cells.size(), 2U);
  for (const auto& cell : plan.cells) EXPECT_TRUE(cell.walled) << cell.source;
  EXPECT_EQ(cellOf(plan, "O0").category, "office");
}

TEST(ImdfUnits, AreWhatTheirCategorySays) {
  TestArchive archive;
  archive.floor(0, {"REASMLWVNGX"},
                {{'R', "room"},
                 {'E', "elevator"},
                 {'A', "escalator"},
                 {'S', "stairs"},
                 {'M', "ramp"},
                 {'L', "lobby"},
                 {'W', "walkway"},
                 {'V', "opentobelow"},
                 {'N', "nonpublic"},
                 {'G', "glass"},
                 {'X', "brewery"}});
  const FloorPlan plan = archive.read();
  const std::map<std::string, CellKind> expected = {
      {"R0", CellKind::room},     {"E0", CellKind::elevator}, {"A0", CellKind::escalator},
      {"S0", CellKind::stairs},   {"M0", CellKind::ramp},     {"L0", CellKind::corridor},
      {"W0", CellKind::corridor}, {"V0", CellKind::closed},   {"N0", CellKind::closed},
      {"G0", CellKind::closed},   {"X0", CellKind::room}};
  for (const auto& [source, kind] : expected) {
    EXPECT_EQ(cellOf(plan, source).kind, kind) << source;
  }
}

TEST(ImdfUnits, WithANameArePlaces) {
  TestArchive archive = smallArchive();
  archive.properties("unit", "O0")["name"] = {{"de", "Kasse"}, {"en", " Ticket office "}};
  archive.properties("unit", "O0")["display_point"] = pointOf({1, 1});
  const FloorPlan plan = archive.read();
  const auto& office = cellOf(plan, "O0");
  EXPECT_EQ(office.name, "Ticket office");
  EXPECT_TRUE(office.isPlace);
  EXPECT_EQ(office.further.at("name:de"), "Kasse");
  ASSERT_TRUE(office.displayPoint);
  EXPECT_EQ(office.displayPoint->longitude, positionOf({1, 1})[0].get<double>());
  EXPECT_FALSE(cellOf(plan, "H0").isPlace);
  EXPECT_FALSE(cellOf(plan, "H0").name);
}

TEST(ImdfUnits, ThatNobodyStaysInAreNoPlaces) {
  TestArchive archive;
  archive.floor(0, {"SV"}, {{'S', "stairs"}, {'V', "opentobelow"}});
  for (const char* unit : {"S0", "V0"}) {
    archive.properties("unit", unit)["name"] = {{"en", "Main stairs"}};
  }
  const FloorPlan plan = archive.read();
  EXPECT_FALSE(cellOf(plan, "S0").isPlace);
  EXPECT_FALSE(cellOf(plan, "V0").isPlace);
}

TEST(ImdfUnits, ForWheelchairsAreStepFree) {
  TestArchive archive = smallArchive();
  archive.properties("unit", "O0")["accessibility"] = {"assisted.listening", "wheelchair"};
  const FloorPlan plan = archive.read();
  EXPECT_EQ(cellOf(plan, "O0").stepFree, StepFree::yes);
  EXPECT_EQ(cellOf(plan, "H0").stepFree, StepFree::unknown);
}

TEST(ImdfUnits, StepsWithinALevelAreFloorThatIsNotStepFree) {
  TestArchive archive;
  archive.floor(0, {"AABB"}, {{'A', "steps"}, {'B', "walkway"}});
  const FloorPlan plan = archive.read();
  EXPECT_EQ(cellOf(plan, "A0").kind, CellKind::corridor);
  EXPECT_EQ(cellOf(plan, "A0").stepFree, StepFree::no);
}

TEST(ImdfUnits, KeepTheirHolesAndAllTheirPolygons) {
  TestArchive archive = smallArchive();
  const Json hole = boxOf({4, 0.5}, {5, 1})["coordinates"][0];
  archive.feature("unit", "H0")["geometry"]["coordinates"].push_back(hole);
  const Json one = boxOf({0, 0}, {1, 1})["coordinates"];
  const Json other = boxOf({2, 0}, {3, 1})["coordinates"];
  archive.feature("unit", "O0")["geometry"] = {{"type", "MultiPolygon"},
                                               {"coordinates", {one, other}}};
  const FloorPlan plan = archive.read();
  EXPECT_EQ(cellOf(plan, "H0").polygons.at(0).size(), 2U);
  EXPECT_EQ(cellOf(plan, "O0").polygons.size(), 2U);
}

TEST(ImdfUnits, OpenRingsAreClosed) {
  TestArchive archive = smallArchive();
  Json& ring = archive.feature("unit", "O0")["geometry"]["coordinates"][0];
  ring.erase(4);
  const FloorPlan plan = archive.read();
  EXPECT_EQ(cellOf(plan, "O0").polygons.at(0).at(0).size(), 5U);
}

TEST(ImdfUnits, WithoutACategoryAreRoomsAndNoted) {
  TestArchive archive = smallArchive();
  archive.properties("unit", "O0").erase("category");
  archive.properties("unit", "H0")["category"] = 7;
  const FloorPlan plan = archive.read();
  EXPECT_EQ(cellOf(plan, "O0").kind, CellKind::room);
  EXPECT_EQ(cellOf(plan, "H0").kind, CellKind::room);
  EXPECT_EQ(remarkWith(plan, "no category"),
            "unit.geojson: no category, taken as rooms: \"H0\", \"O0\"");
  EXPECT_EQ(remarkWith(plan, "not a string"),
            "unit.geojson: category is not a string, ignored: \"H0\"");
}

TEST(ImdfUnits, OnNoLevelAreLeftOutAndNoted) {
  TestArchive archive = smallArchive();
  archive.properties("unit", "O0")["level_id"] = "attic";
  const FloorPlan plan = archive.read();
  EXPECT_EQ(plan.cells.size(), 1U);
  EXPECT_EQ(remarkWith(plan, "level_id"),
            "unit.geojson: no level has the level_id, left out: \"O0\"");
}

TEST(ImdfUnits, OfAnIdThatIsTakenAreLeftOutAndNoted) {
  TestArchive archive = smallArchive();
  archive.add("unit", "O0", boxOf({0, 2}, {1, 3}), {{"category", "room"}, {"level_id", "level0"}});
  const FloorPlan plan = archive.read();
  EXPECT_EQ(plan.cells.size(), 2U);
  EXPECT_EQ(cellOf(plan, "O0").category, "office");
  EXPECT_THAT(remarkWith(plan, "earlier feature"), HasSubstr("\"O0\""));
}

TEST(ImdfUnits, WithoutTheirFileAreAnError) {
  TestArchive archive;
  archive.add("level", "level0", boxOf({0, 0}, {1, 1}), {{"ordinal", 0}});
  EXPECT_THAT(archive.errorOfReading(), HasSubstr("unit.geojson: found no file, expected units"));
}

TEST(ImdfFixtures, AreWallsUnlessTheyCanBeMoved) {
  TestArchive archive = smallArchive();
  archive.add("fixture", "desk", boxOf({4, 0}, {5, 1}),
              {{"category", "desk"}, {"level_id", "level0"}});
  archive.add("fixture", "chair", boxOf({5, 0}, {6, 1}),
              {{"category", "furniture"}, {"level_id", "level0"}});
  const FloorPlan plan = archive.read();
  ASSERT_EQ(plan.walls.size(), 1U);
  EXPECT_EQ(plan.walls[0].source, "desk");
  EXPECT_EQ(plan.walls[0].positions.size(), 5U);
  EXPECT_EQ(plan.walls[0].levels, KorvaniTools::PlanLevelSet{0});
}

TEST(ImdfKiosks, AreWallsAndPlacesWhenTheyHaveAName) {
  TestArchive archive = smallArchive();
  archive.add("kiosk", "news", boxOf({3, 0}, {6, 1}),
              {{"name", {{"en", "Newspapers"}}},
               {"level_id", "level0"},
               {"display_point", pointOf({4.5, 0.5})}});
  archive.add("kiosk", "nameless", boxOf({5, 0}, {6, 1}), {{"level_id", "level0"}});
  const FloorPlan plan = archive.read();
  EXPECT_EQ(plan.walls.size(), 2U);
  ASSERT_EQ(plan.places.size(), 1U);
  EXPECT_EQ(plan.places[0].name, "Newspapers");
  // In front of its south side, where people stand.
  EXPECT_NEAR(plan.places[0].coordinate.longitude, positionOf({4.5, -0.5})[0].get<double>(), 1e-8);
  EXPECT_NEAR(plan.places[0].coordinate.latitude, positionOf({4.5, -0.5})[1].get<double>(), 1e-8);
}

}  // namespace
}  // namespace KorvaniTest
