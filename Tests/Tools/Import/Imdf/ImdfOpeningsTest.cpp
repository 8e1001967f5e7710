#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/Import/Imdf/TestArchive.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::StepFree;

TEST(ImdfOpenings, AreDoorsWithTheirLine) {
  const FloorPlan plan = smallArchive().read();
  const auto& door = doorOf(plan, "door");
  EXPECT_EQ(door.levels, KorvaniTools::PlanLevelSet{0});
  ASSERT_EQ(door.positions.size(), 2U);
  EXPECT_EQ(door.positions[0].longitude, positionOf({3, 0.5})[0].get<double>());
  EXPECT_EQ(door.positions[1].latitude, positionOf({3, 1.5})[1].get<double>());
  EXPECT_TRUE(door.passable);
  EXPECT_FALSE(door.entrance);
  EXPECT_EQ(door.stepFree, StepFree::unknown);
}

TEST(ImdfOpenings, BetweenOneUnitAndTheOutdoorsAreEntrances) {
  TestArchive archive = smallArchive();
  archive.opening("gate", 0, {7, 0.5}, {7, 1.5}, {{"name", {{"en", "North gate"}}}});
  const FloorPlan plan = archive.read();
  EXPECT_TRUE(doorOf(plan, "gate").entrance);
  EXPECT_EQ(doorOf(plan, "gate").name, "North gate");
  ASSERT_EQ(plan.places.size(), 1U);
  EXPECT_TRUE(plan.places[0].entrance);
  EXPECT_EQ(plan.places[0].name, "North gate");
  EXPECT_EQ(plan.places[0].levels, KorvaniTools::PlanLevelSet{0});
  EXPECT_NEAR(plan.places[0].coordinate.latitude, positionOf({7, 1})[1].get<double>(), 1e-9);
}

TEST(ImdfOpenings, OfOneUnitInsideTheLevelAreNoEntrances) {
  TestArchive archive;
  archive.floor(0,
                {"OOO    H",  //
                 "OOO    H",  //
                 "OOO    H",  //
                 "OOO    H",  //
                 "OOO    H"},
                {{'O', "office"}, {'H', "lobby"}});
  archive.opening("inner", 0, {3, 2}, {3, 3});
  EXPECT_FALSE(doorOf(archive.read(), "inner").entrance);
}

TEST(ImdfOpenings, OnAnOutdoorLevelAreNoEntrances) {
  TestArchive archive = smallArchive();
  archive.opening("gate", 0, {7, 0.5}, {7, 1.5});
  archive.properties("level", "level0")["outdoor"] = true;
  EXPECT_FALSE(doorOf(archive.read(), "gate").entrance);
}

TEST(ImdfOpenings, ThatAreABuildingsPrincipalOnesAreEntrances) {
  TestArchive archive = smallArchive();
  archive.properties("opening", "door")["category"] = "pedestrian.principal";
  EXPECT_TRUE(doorOf(archive.read(), "door").entrance);
}

TEST(ImdfOpenings, ForCarsAndDeliveriesArePassableButNoEntrances) {
  for (const char* category : {"automobile", "bicycle", "service"}) {
    TestArchive archive = smallArchive();
    archive.opening("gate", 0, {7, 0.5}, {7, 1.5}, {{"category", category}});
    const FloorPlan plan = archive.read();
    EXPECT_TRUE(doorOf(plan, "gate").passable) << category;
    EXPECT_FALSE(doorOf(plan, "gate").entrance) << category;
  }
}

TEST(ImdfOpenings, ForEmergenciesLetNobodyThrough) {
  TestArchive archive = smallArchive();
  archive.opening("gate", 0, {7, 0.5}, {7, 1.5}, {{"category", "emergencyexit"}});
  const FloorPlan plan = archive.read();
  EXPECT_FALSE(doorOf(plan, "gate").passable);
  EXPECT_FALSE(doorOf(plan, "gate").entrance);
}

TEST(ImdfOpenings, ThatTurnAreNotStepFreeUnlessTheySaySo) {
  TestArchive archive = smallArchive();
  Json& door = archive.properties("opening", "door");
  door["door"] = {{"type", "revolving"}, {"automatic", true}, {"material", "glass"}};
  EXPECT_EQ(doorOf(archive.read(), "door").stepFree, StepFree::no);
  door["accessibility"] = Json::array({"wheelchair"});
  EXPECT_EQ(doorOf(archive.read(), "door").stepFree, StepFree::yes);
}

TEST(ImdfOpenings, WithAnOddDoorAreKeptAndNoted) {
  for (const Json& odd : {Json("open"), Json({{"type", 3}}), Json::array({1})}) {
    TestArchive archive = smallArchive();
    archive.properties("opening", "door")["door"] = odd;
    const FloorPlan plan = archive.read();
    EXPECT_EQ(plan.doors.size(), 1U);
    EXPECT_EQ(remarkWith(plan, "opening.geojson"),
              "opening.geojson: door is not an object with a type, ignored: \"door\"");
  }
}

TEST(ImdfOpenings, AwayFromEveryOutlineAreNoted) {
  TestArchive archive = smallArchive();
  archive.opening("lost", 0, {5, 0.5}, {5, 1.5});
  const FloorPlan plan = archive.read();
  EXPECT_EQ(remarkWith(plan, "outline"),
            "opening.geojson: on no unit's outline, opens nothing: \"lost\"");
}

TEST(ImdfOpenings, OfOnePositionAreLeftOutAndNoted) {
  TestArchive archive = smallArchive();
  archive.opening("point", 0, {3, 1}, {3, 1});
  const FloorPlan plan = archive.read();
  EXPECT_EQ(plan.doors.size(), 1U);
  EXPECT_EQ(remarkWith(plan, "broken"),
            "opening.geojson: broken features, left out: features[1]: geometry of opening "
            "\"point\": found 1 different positions, expected at least 2");
}

TEST(ImdfOpenings, MayBeMissing) {
  TestArchive archive;
  archive.floor(0, {"A"}, {{'A', "room"}});
  const FloorPlan plan = archive.read();
  EXPECT_EQ(plan.cells.size(), 1U);
  EXPECT_TRUE(plan.doors.empty());
}

}  // namespace
}  // namespace KorvaniTest
