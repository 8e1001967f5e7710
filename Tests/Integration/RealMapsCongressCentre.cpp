#include <gmock/gmock.h>

#include "Building/BuildingFigures.hpp"
#include "Integration/RealMaps.hpp"

namespace KorvaniTest {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class CongressCentre : public RealMaps {
 protected:
  CongressCentre() : RealMaps("cch-32c3-graph/cch.building.geojson") {}
};

TEST_F(CongressCentre, IsReadWhole) {
  const auto figures = KorvaniTools::figuresOf(building());
  EXPECT_EQ(figures.levels.size(), 5U);
  EXPECT_EQ(building().nodes.size(), 733U);
  EXPECT_EQ(building().edges.size(), 1059U);
  EXPECT_EQ(figures.oneway, 18U);
  EXPECT_EQ(figures.obstacles, 625U);
  EXPECT_EQ(building().places.size(), 285U);
  EXPECT_EQ(figures.components.count, 1U);
  EXPECT_EQ(figures.stepFree.largest, 705U);
  EXPECT_TRUE(building().summary.empty());
}

TEST_F(CongressCentre, TheWayInLeadsThroughTheOneWayDoors) {
  const auto in = route("Forecourt", {"Cloakroom"});
  expectSound(in, "Cloakroom");
  EXPECT_THAT(in.levels, ElementsAre(0));
  EXPECT_THAT(in.kinds, ElementsAre("steps"));
  EXPECT_NEAR(in.groundMetres, 122, 12);
  const auto out = route("Cloakroom", {"Forecourt"});
  EXPECT_THAT(out.levels, ElementsAre(0));
  EXPECT_THAT(out.kinds, ElementsAre("steps"));
  EXPECT_NEAR(out.groundMetres, 70, 12);
}

TEST_F(CongressCentre, TheEscalatorOnlyGoesUp) {
  const auto up = route("Lounge", {"Hall A.1 A.2"});
  expectSound(up, "Hall A.1 A.2");
  EXPECT_THAT(up.levels, ElementsAre(0, 1));
  EXPECT_THAT(up.kinds, ElementsAre("escalator"));
  EXPECT_THAT(up.text, HasSubstr("take the escalator up to level 1"));
  const auto down = route("Hall A.1 A.2", {"Lounge"});
  EXPECT_THAT(down.levels, ElementsAre(1, 0));
  EXPECT_THAT(down.kinds, ElementsAre("stairs"));
  EXPECT_THAT(down.text, HasSubstr("take the stairs down to level 0"));
}

TEST_F(CongressCentre, FourLevelsUpByStairsAndLift) {
  const auto facts = route("Hall 4", {"Subtitles"});
  expectSound(facts, "Subtitles");
  EXPECT_THAT(facts.levels, ElementsAre(0, 1, 2, 3, 4));
  EXPECT_THAT(facts.kinds, ElementsAre("elevator", "stairs", "steps"));
  EXPECT_NEAR(facts.groundMetres, 131, 15);
  EXPECT_FALSE(facts.barrierFree);
}

TEST_F(CongressCentre, FourLevelsUpWithoutBarriersByLiftAlone) {
  const auto facts = route("Hall 4", {"Subtitles"}, true);
  expectSound(facts, "Subtitles");
  EXPECT_THAT(facts.levels, ElementsAre(0, 1, 2, 3, 4));
  EXPECT_THAT(facts.kinds, ElementsAre("elevator"));
  EXPECT_NEAR(facts.groundMetres, 156, 15);
  EXPECT_TRUE(facts.barrierFree);
  EXPECT_THAT(facts.text, HasSubstr("take the lift up to level 3 (9 m)\nleave the lift"));
}

TEST_F(CongressCentre, TheStageHasStepsOnly) {
  const auto facts = route("Lobby", {"Hall 1 Stage"});
  expectSound(facts, "Hall 1 Stage");
  EXPECT_THAT(facts.levels, ElementsAre(0, 1, 2));
  EXPECT_THAT(facts.kinds, ElementsAre("elevator", "steps"));
  EXPECT_FALSE(route("Lobby", {"Hall 1 Stage"}, true).found);
}

TEST_F(CongressCentre, TheNearestOfThreeToiletsIsChosen) {
  const auto facts =
      route("Hall 3", {"Toilet, Lobby", "Toilet, Ground Level Foyer", "Toilet, Hall 4 Foyer"});
  expectSound(facts, "Toilet, Ground Level Foyer");
  EXPECT_EQ(facts.destination, 1U);
  EXPECT_THAT(facts.levels, ElementsAre(0));
  EXPECT_NEAR(facts.groundMetres, 60, 10);
}

}  // namespace
}  // namespace KorvaniTest
