#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/Import/Osm/OsmDrawing.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::FloorPlan;
using KorvaniTools::PlanDoor;
using KorvaniTools::PlanLevelSet;
using KorvaniTools::PlanPlace;
using KorvaniTools::StepFree;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A room with the node 'e' on its outline and 'm' inside; 'z' is far away.
FloorPlan planWithNode(char letter, const TagList& tags) {
  OsmDrawing map({"a--e--b", "|  m  |", "d-----c"});
  map.place('z', 0.1, 0.1);
  map.way("aebcda", {{"indoor", "room"}, {"level", "1"}});
  map.node(letter, tags);
  return planOf(map);
}

PlanDoor doorWith(const TagList& tags) {
  const FloorPlan plan = planWithNode('e', tags);
  EXPECT_THAT(plan.doors, SizeIs(1)) << testing::PrintToString(tags);
  return plan.doors.empty() ? PlanDoor() : plan.doors.front();
}

TEST(OsmDoors, AreNodesOnOutlines) {
  const PlanDoor door = doorWith({{"door", "hinged"}, {"level", "0"}, {"repeat_on", "1-2"}});
  EXPECT_EQ(door.source, "node/101");
  EXPECT_EQ(door.node, 'e');
  EXPECT_EQ(door.levels, PlanLevelSet({0, 1, 2}));
  EXPECT_THAT(door.positions, SizeIs(1));
  EXPECT_EQ(door.width, 1.0);
  EXPECT_TRUE(door.passable);
  EXPECT_FALSE(door.entrance);
}

TEST(OsmDoors, WithoutALevelAreOnThoseOfTheirWays) {
  EXPECT_EQ(doorWith({{"door", "yes"}}).levels, PlanLevelSet{1});
}

TEST(OsmDoors, AreDoorsGatesAndEntrances) {
  for (const TagList& tags :
       {TagList{{"door", "no"}}, TagList{{"indoor", "door"}}, TagList{{"entrance", "yes"}},
        TagList{{"barrier", "gate"}}, TagList{{"barrier", "turnstile"}},
        TagList{{"barrier", "door"}}, TagList{{"railway", "subway_entrance"}}}) {
    EXPECT_TRUE(doorWith(tags).passable) << testing::PrintToString(tags);
  }
  for (const TagList& tags :
       {TagList{{"barrier", "bollard"}}, TagList{{"barrier", "wall"}}, TagList{{"barrier", "kerb"}},
        TagList{{"indoor", "wall"}}, TagList{{"entrance", "no"}}}) {
    EXPECT_THAT(planWithNode('e', tags).doors, IsEmpty()) << testing::PrintToString(tags);
  }
}

TEST(OsmDoors, HaveAWidth) {
  EXPECT_EQ(doorWith({{"door", "yes"}, {"width", "1,2 m"}}).width, 1.2);
  EXPECT_EQ(doorWith({{"door", "yes"}, {"width", "9"}, {"door:width", "90 cm"}}).width, 0.9);
}

TEST(OsmDoors, WithAWidthThatCannotBeReadHaveTheUsualOne) {
  const FloorPlan plan = planWithNode('e', {{"door", "yes"}, {"width", "wide"}});
  EXPECT_EQ(plan.doors.at(0).width, 1.0);
  EXPECT_THAT(plan.remarks.sentences(),
              ElementsAre("1 door has a width that cannot be read and got the usual "
                          "one: node/101"));
}

TEST(OsmDoors, ThatAreClosedToPeopleLetNobodyThrough) {
  EXPECT_FALSE(doorWith({{"door", "yes"}, {"access", "private"}}).passable);
  EXPECT_FALSE(doorWith({{"door", "yes"}, {"access", "no"}}).passable);
  EXPECT_FALSE(doorWith({{"door", "yes"}, {"locked", "yes"}}).passable);
  EXPECT_FALSE(doorWith({{"entrance", "emergency"}}).passable);
  EXPECT_TRUE(doorWith({{"door", "yes"}, {"access", "customers"}}).passable);
  EXPECT_TRUE(doorWith({{"door", "yes"}, {"access", "no"}, {"foot", "yes"}}).passable);
}

TEST(OsmDoors, SayWhoGetsThrough) {
  EXPECT_EQ(doorWith({{"door", "yes"}, {"wheelchair", "no"}}).stepFree, StepFree::no);
  EXPECT_EQ(doorWith({{"door", "yes"}, {"wheelchair", "limited"}}).stepFree, StepFree::unknown);
  EXPECT_EQ(doorWith({{"barrier", "turnstile"}}).stepFree, StepFree::no);
  EXPECT_EQ(doorWith({{"barrier", "turnstile"}, {"wheelchair", "yes"}}).stepFree, StepFree::yes);
}

TEST(OsmDoors, MayBeDrawnAsLines) {
  OsmDrawing map({"a--b"});
  map.way("ab", {{"indoor", "door"}, {"level", "2"}});
  const FloorPlan plan = planOf(map);
  ASSERT_THAT(plan.doors, SizeIs(1));
  EXPECT_THAT(plan.doors[0].positions, SizeIs(2));
  EXPECT_EQ(plan.doors[0].levels, PlanLevelSet{2});
  EXPECT_EQ(plan.doors[0].node, 0);
}

PlanPlace placeWith(char letter, const TagList& tags) {
  const FloorPlan plan = planWithNode(letter, tags);
  EXPECT_THAT(plan.places, SizeIs(1)) << testing::PrintToString(tags);
  return plan.places.empty() ? PlanPlace() : plan.places.front();
}

TEST(OsmEntrances, ArePlacesAsWellAsDoors) {
  const PlanPlace place = placeWith('e', {{"entrance", "yes"}, {"wheelchair", "yes"}});
  EXPECT_TRUE(place.entrance);
  EXPECT_EQ(place.source, "node/101");
  EXPECT_EQ(place.levels, PlanLevelSet{1});
  EXPECT_EQ(place.further, (nlohmann::json{{"source", "node/101"}, {"wheelchair", "yes"}}));
  EXPECT_TRUE(doorWith({{"entrance", "yes"}}).entrance);
}

TEST(OsmEntrances, HaveNames) {
  const auto name = [](const TagList& tags) { return placeWith('e', tags).name; };
  EXPECT_EQ(name({{"entrance", "yes"}}), "Entrance");
  EXPECT_EQ(name({{"entrance", "main"}}), "Main entrance");
  EXPECT_EQ(name({{"entrance", "yes"}, {"ref", "B"}}), "Entrance B");
  EXPECT_EQ(name({{"entrance", "main"}, {"entrance:name", "North"}}), "North");
  EXPECT_EQ(name({{"entrance", "main"}, {"name", "Portal"}}), "Portal");
}

TEST(OsmEntrances, AreNotWaysOutOnly) {
  for (const char* value : {"emergency", "exit"}) {
    const FloorPlan plan = planWithNode('e', {{"entrance", value}});
    EXPECT_THAT(plan.places, IsEmpty()) << value;
    ASSERT_THAT(plan.doors, SizeIs(1)) << value;
    EXPECT_FALSE(plan.doors[0].entrance) << value;
  }
}

TEST(OsmPlaces, AreAmenitiesInsideByNameOrByWhatTheyAre) {
  const auto name = [](TagList tags) {
    tags.emplace_back("level", "1");
    return placeWith('m', tags).name;
  };
  EXPECT_EQ(name({{"amenity", "atm"}}), "ATM");
  EXPECT_EQ(name({{"amenity", "toilets"}}), "Toilets");
  EXPECT_EQ(name({{"amenity", "cafe"}, {"name", "Bar"}}), "Bar");
  EXPECT_EQ(name({{"shop", "books"}}), "Books");
  EXPECT_EQ(name({{"tourism", "information"}, {"information", "map"}}), "Information");
  EXPECT_EQ(name({{"amenity", "vending_machine"}, {"vending", "public_transport_tickets"}}),
            "Ticket machine");
}

TEST(OsmPlaces, AreNotThingsThatNobodyWalksTo) {
  for (const TagList& tags : {TagList{{"amenity", "bench"}}, TagList{{"amenity", "waste_basket"}},
                              TagList{{"amenity", "clock"}}, TagList{{"amenity", "grit_bin"}},
                              TagList{{"amenity", "vending_machine"}, {"vending", "sweets"}},
                              TagList{{"shop", "vacant"}}}) {
    TagList placed = tags;
    placed.emplace_back("level", "1");
    EXPECT_THAT(planWithNode('m', placed).places, IsEmpty()) << testing::PrintToString(tags);
  }
}

TEST(OsmPlaces, NeedALevelOrToBeIndoors) {
  EXPECT_THAT(planWithNode('m', {{"amenity", "atm"}}).places, IsEmpty());
  EXPECT_THAT(planWithNode('m', {{"amenity", "atm"}, {"indoor", "yes"}}).places, SizeIs(1));
}

TEST(OsmPlaces, WithALevelOnlyAreNearSomethingIndoors) {
  EXPECT_THAT(planWithNode('z', {{"amenity", "atm"}, {"level", "0"}}).places, IsEmpty());
  EXPECT_THAT(planWithNode('z', {{"entrance", "yes"}, {"level", "0"}}).places, IsEmpty());
}

TEST(OsmPlaces, AreWorksOfArtWithAName) {
  OsmDrawing map({"a-b", "d-c"});
  map.way("abcda",
          {{"indoor", "yes"}, {"level", "0"}, {"tourism", "artwork"}, {"name", "Bubbles"}});
  const FloorPlan plan = planOf(map);
  EXPECT_THAT(plan.cells, IsEmpty());
  ASSERT_THAT(plan.places, SizeIs(1));
  EXPECT_EQ(plan.places[0].name, "Bubbles");
  EXPECT_NEAR(plan.places[0].coordinate.latitude, 48.00006, 1e-7);
}

TEST(OsmDoors, LeadToRoomsWithoutALevelOnTheGround) {
  OsmDrawing map({"a--e--b", "|     |", "d-----c"});
  map.way("aebcda", {{"indoor", "room"}});
  map.way("aebcda", {{"indoor", "room"}, {"level", "1"}});
  map.node('e', {{"door", "yes"}});
  EXPECT_EQ(planOf(map).doors.at(0).levels, KorvaniTools::PlanLevelSet({0, 1}));
}

TEST(OsmDoors, AreNotOnTheGroundForALineWithoutALevel) {
  OsmDrawing map({"a--e--b  ", "|     |  ", "d-----c-f"});
  map.way("aebcda", {{"indoor", "room"}, {"level", "1"}});
  map.way("fe", {{"highway", "footway"}});
  map.node('e', {{"door", "yes"}});
  EXPECT_EQ(planOf(map).doors.at(0).levels, KorvaniTools::PlanLevelSet{1});
}

}  // namespace
}  // namespace KorvaniTest
