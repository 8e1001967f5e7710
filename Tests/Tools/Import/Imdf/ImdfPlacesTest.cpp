#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/Import/Imdf/TestArchive.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::PlanLevelSet;
using testing::IsEmpty;
using testing::SizeIs;

double longitudeOf(Metres at) { return positionOf(at)[0].get<double>(); }

void addOccupant(TestArchive& archive, const std::string& name, const std::string& unit, Metres at,
                 const Json& further = Json::object()) {
  archive.add("anchor", "anchor of " + name, pointOf(at), {{"unit_id", unit}});
  Json properties = {{"name", {{"en", name}}}, {"anchor_id", "anchor of " + name}};
  properties.update(further);
  archive.add("occupant", name, nullptr, properties);
}

TEST(ImdfPlaces, TheOnlyOccupantNamesItsUnit) {
  TestArchive archive = smallArchive();
  addOccupant(archive, "Bakery", "O0", {1, 1},
              {{"category", "foodservice"}, {"phone", "123"}, {"hours", "Mo-Fr 08:00-18:00"}});
  const FloorPlan plan = archive.read();
  const auto& office = cellOf(plan, "O0");
  EXPECT_EQ(office.name, "Bakery");
  EXPECT_TRUE(office.isPlace);
  ASSERT_TRUE(office.displayPoint);
  EXPECT_EQ(office.displayPoint->longitude, longitudeOf({1, 1}));
  EXPECT_EQ(office.further.at("phone"), "123");
  EXPECT_EQ(office.further.at("hours"), "Mo-Fr 08:00-18:00");
  EXPECT_EQ(office.further.at("category"), "foodservice");
  EXPECT_THAT(plan.places, IsEmpty());
}

TEST(ImdfPlaces, SeveralOccupantsOfAUnitAreAtTheirAnchors) {
  TestArchive archive = smallArchive();
  addOccupant(archive, "Bakery", "O0", {1, 1});
  addOccupant(archive, "Florist", "O0", {2, 1});
  const FloorPlan plan = archive.read();
  EXPECT_FALSE(cellOf(plan, "O0").name);
  ASSERT_THAT(plan.places, SizeIs(2));
  EXPECT_EQ(plan.places[0].name, "Bakery");
  EXPECT_EQ(plan.places[1].name, "Florist");
  EXPECT_EQ(plan.places[1].coordinate.longitude, longitudeOf({2, 1}));
  EXPECT_EQ(plan.places[1].levels, PlanLevelSet{0});
}

TEST(ImdfPlaces, AnOccupantOfANamedUnitIsAPlaceBesideIt) {
  TestArchive archive = smallArchive();
  archive.properties("unit", "O0")["name"] = {{"en", "Shop 7"}};
  addOccupant(archive, "Bakery", "O0", {1, 1});
  const FloorPlan plan = archive.read();
  EXPECT_EQ(cellOf(plan, "O0").name, "Shop 7");
  ASSERT_THAT(plan.places, SizeIs(1));
  EXPECT_EQ(plan.places[0].name, "Bakery");
}

TEST(ImdfPlaces, AnOccupantCalledLikeItsUnitIsNoFurtherPlace) {
  TestArchive archive = smallArchive();
  archive.properties("unit", "O0")["name"] = {{"en", "Bakery"}};
  addOccupant(archive, "Bakery", "O0", {1, 1});
  const FloorPlan plan = archive.read();
  EXPECT_EQ(cellOf(plan, "O0").name, "Bakery");
  EXPECT_THAT(plan.places, IsEmpty());
}

TEST(ImdfPlaces, KnowTheAddressOfTheirAnchor) {
  TestArchive archive = smallArchive();
  archive.add("address", "street", nullptr,
              {{"address", "1 High Street"}, {"unit", nullptr}, {"locality", "Kiel"}});
  addOccupant(archive, "Bakery", "O0", {1, 1});
  archive.properties("anchor", "anchor of Bakery")["address_id"] = "street";
  EXPECT_EQ(cellOf(archive.read(), "O0").further.at("address"), "1 High Street, Kiel");
}

TEST(ImdfPlaces, OccupantsWithoutNameOrAnchorAreLeftOutAndNoted) {
  TestArchive archive = smallArchive();
  addOccupant(archive, "-", "O0", {1, 1});
  archive.add("occupant", "homeless", nullptr,
              {{"name", {{"en", "Bank"}}}, {"anchor_id", "nowhere"}});
  addOccupant(archive, "Gym", "attic", {1, 1});
  addOccupant(archive, "Bakery", "O0", {1, 1});
  const FloorPlan plan = archive.read();
  EXPECT_EQ(cellOf(plan, "O0").name, "Bakery");
  EXPECT_EQ(remarkWith(plan, "no name"), "occupant.geojson: no name, left out: \"-\"");
  EXPECT_EQ(remarkWith(plan, "no unit has"),
            "anchor.geojson: no unit has the unit_id, left out: \"anchor of Gym\"");
  EXPECT_EQ(remarkWith(plan, "no anchor has"),
            "occupant.geojson: no anchor has the anchor_id, left out: \"homeless\", \"Gym\"");
}

TEST(ImdfPlaces, AmenitiesAreWhereTheirUnitsAre) {
  TestArchive archive = smallArchive();
  archive.floor(1, {"TT"}, {{'T', "walkway"}});
  archive.add("amenity", "cash", pointOf({4, 1}),
              {{"category", "atm"}, {"name", nullptr}, {"unit_ids", {"H0"}}});
  archive.add(
      "amenity", "desk", pointOf({5, 1}),
      {{"category", "information"}, {"name", {{"en", "Information"}}}, {"unit_ids", {"T1", "H0"}}});
  const FloorPlan plan = archive.read();
  ASSERT_THAT(plan.places, SizeIs(2));
  EXPECT_EQ(plan.places[0].name, "Atm");
  EXPECT_EQ(plan.places[0].levels, PlanLevelSet{0});
  EXPECT_EQ(plan.places[0].coordinate.longitude, longitudeOf({4, 1}));
  EXPECT_EQ(plan.places[1].name, "Information");
  EXPECT_EQ(plan.places[1].levels, (PlanLevelSet{0, 1}));
}

TEST(ImdfPlaces, RestroomsWithoutANameAreCalledByTheirCategory) {
  TestArchive archive = smallArchive();
  archive.properties("unit", "O0")["category"] = "restroom.female.wheelchair";
  const FloorPlan plan = archive.read();
  EXPECT_EQ(cellOf(plan, "O0").name, "Restroom (female wheelchair)");
  EXPECT_TRUE(cellOf(plan, "O0").isPlace);
}

TEST(ImdfPlaces, ARestroomWithAnAmenityIsThatPlaceAndNoOther) {
  TestArchive archive = smallArchive();
  archive.properties("unit", "O0")["category"] = "restroom";
  archive.add("amenity", "toilet", pointOf({1, 1}),
              {{"category", "restroom"}, {"name", nullptr}, {"unit_ids", {"O0"}}});
  const FloorPlan plan = archive.read();
  EXPECT_FALSE(cellOf(plan, "O0").isPlace);
  ASSERT_THAT(plan.places, SizeIs(1));
  EXPECT_EQ(plan.places[0].name, "Restroom");
}

TEST(ImdfPlaces, WaysUpAndDownAreNoAmenitiesToGoTo) {
  TestArchive archive = smallArchive();
  for (const char* category : {"stairs", "elevator", "escalator"}) {
    archive.add("amenity", category, pointOf({4, 1}),
                {{"category", category}, {"name", {{"en", category}}}, {"unit_ids", {"H0"}}});
  }
  EXPECT_THAT(archive.read().places, IsEmpty());
}

TEST(ImdfPlaces, AmenitiesOnNoLevelAreLeftOutAndNoted) {
  TestArchive archive = smallArchive();
  archive.add("amenity", "lost", pointOf({4, 1}), {{"category", "atm"}, {"unit_ids", {"attic"}}});
  archive.add("amenity", "nothing", pointOf({4, 1}), {{"unit_ids", {"H0"}}});
  archive.add("amenity", "cash", pointOf({4, 1}), {{"category", "atm"}, {"unit_ids", {"H0"}}});
  const FloorPlan plan = archive.read();
  EXPECT_THAT(plan.places, SizeIs(1));
  EXPECT_EQ(remarkWith(plan, "in no unit"),
            "amenity.geojson: in no unit of the archive, left out: \"lost\"");
  EXPECT_EQ(remarkWith(plan, "neither name"),
            "amenity.geojson: neither name nor category, left out: \"nothing\"");
}

}  // namespace
}  // namespace KorvaniTest
