#include <gmock/gmock.h>

#include "Building/BuildingFigures.hpp"
#include "Integration/RealMaps.hpp"

namespace KorvaniTest {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

class Campus : public RealMaps {
 protected:
  Campus() : RealMaps("spb-polytech-imdf/spb.building.geojson") {}
};

TEST_F(Campus, IsReadWhole) {
  const auto figures = KorvaniTools::figuresOf(building());
  EXPECT_EQ(figures.levels.size(), 6U);
  EXPECT_EQ(building().regions.size(), 9U);
  EXPECT_EQ(building().nodes.size(), 2724U);
  EXPECT_EQ(building().edges.size(), 3155U);
  EXPECT_EQ(figures.oneway, 9U);
  EXPECT_EQ(figures.obstacles, 1139U);
  EXPECT_EQ(building().places.size(), 336U);
  EXPECT_EQ(figures.components.count, 2U);
  EXPECT_EQ(figures.components.largest, 2689U);
  EXPECT_EQ(figures.stepFree.largest, 2234U);
  EXPECT_THAT(building().summary.ignoredProperties, ElementsAre(Pair(Pair("region", "title"), 8)));
}

TEST_F(Campus, AcrossOneFloor) {
  const auto facts = route("Coffee “Leto”", {"Classroom 111"});
  expectSound(facts, "Classroom 111");
  EXPECT_THAT(facts.levels, ElementsAre(1));
  EXPECT_THAT(facts.kinds, IsEmpty());
  EXPECT_NEAR(facts.groundMetres, 52, 12);
}

TEST_F(Campus, FromOneEndOfTheMainBuildingToTheOther) {
  const auto facts = route("Study Library", {"Auditorium 122"});
  expectSound(facts, "Auditorium 122");
  EXPECT_THAT(facts.levels, ElementsAre(0));
  EXPECT_NEAR(facts.groundMetres, 282, 20);
}

TEST_F(Campus, OneLevelUpByTheStairs) {
  const auto facts = route("Classroom 110", {"60.00717377,30.38237643,2"});
  EXPECT_TRUE(facts.found);
  EXPECT_THAT(facts.levels, ElementsAre(1, 2));
  EXPECT_THAT(facts.kinds, ElementsAre("stairs"));
  EXPECT_NEAR(facts.groundMetres, 29, 12);
}

TEST_F(Campus, FourLevelsUpByTheLift) {
  const auto facts = route("Classroom 102", {"Classroom 510"});
  expectSound(facts, "Classroom 510");
  EXPECT_THAT(facts.levels, ElementsAre(1, 2, 3, 4, 5));
  EXPECT_THAT(facts.kinds, ElementsAre("elevator"));
  EXPECT_THAT(facts.text, HasSubstr("take the lift up to level 5 (12 m)"));
  EXPECT_NEAR(facts.groundMetres, 52, 12);
}

TEST_F(Campus, FromOutdoorsToTheTopWithoutBarriers) {
  const auto facts = route("Academic building №11", {"Classroom 501"}, true);
  expectSound(facts, "Classroom 501");
  EXPECT_THAT(facts.levels, ElementsAre(0, 1, 2, 3, 4, 5));
  EXPECT_THAT(facts.kinds, ElementsAre("elevator", "entrance"));
  EXPECT_TRUE(facts.barrierFree);
  EXPECT_NEAR(facts.groundMetres, 538, 20);
}

TEST_F(Campus, TheMainBuildingHasNoLift) {
  const auto facts = route("Ticket office", {"Auditorium 324"});
  expectSound(facts, "Auditorium 324");
  EXPECT_THAT(facts.levels, ElementsAre(0, 1, 2));
  EXPECT_THAT(facts.kinds, ElementsAre("stairs"));
  EXPECT_FALSE(route("Ticket office", {"Auditorium 324"}, true).found);
}

TEST_F(Campus, OutOfOneBuildingIntoTheOther) {
  const auto facts = route("60.00744275,30.37314318,0", {"Classroom 104@1"});
  expectSound(facts, "Classroom 104");
  EXPECT_THAT(facts.levels, ElementsAre(0, 1));
  EXPECT_THAT(facts.kinds, ElementsAre("entrance"));
  EXPECT_NEAR(facts.groundMetres, 673, 25);
}

TEST_F(Campus, TheNearestOfTwoRestroomsIsChosen) {
  const auto facts =
      route("Ticket office", {"60.00803751,30.37170775,0", "60.00760984,30.37142972,0"});
  EXPECT_TRUE(facts.found);
  EXPECT_EQ(facts.destination, 1U);
  EXPECT_THAT(facts.levels, ElementsAre(0));
  EXPECT_NEAR(facts.groundMetres, 105, 12);
}

}  // namespace
}  // namespace KorvaniTest
