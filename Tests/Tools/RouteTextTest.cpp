#include "Support/RouteText.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Navigation/Directions/TurnByTurnDirectionCalculator.hpp"
#include "Support/Points.hpp"
#include "Tools/BuildingText.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::CLLocationCoordinate2D;
using KorvaniNavigation::Route;
using KorvaniNavigation::Step;
using KorvaniNavigation::TurnByTurnDirectionCalculator;
using KorvaniTools::Instruction;
using KorvaniTools::LevelNames;
using KorvaniTools::routeInstructions;
using KorvaniTools::setOffDirection;
using testing::ElementsAre;
using testing::IsEmpty;

/// A walk drawn leg by leg, with the instructions that the engine gives for it.
class Walk {
 public:
  explicit Walk(std::int64_t level = 0) : last_(at(kOrigin, level)) {}

  Walk& north(double metres, const std::string& type = "") { return go(metres, 0, metres, type); }
  Walk& south(double metres, const std::string& type = "") { return go(-metres, 0, metres, type); }
  Walk& east(double metres, const std::string& type = "") { return go(0, metres, metres, type); }
  Walk& west(double metres, const std::string& type = "") { return go(0, -metres, metres, type); }
  Walk& northEast(double metres) { return go(metres * 0.8, metres * 0.6, metres, ""); }

  /// Changes the level while going that far to the north.
  Walk& change(std::int64_t level, double distance, const std::string& type, double metres = 0) {
    return step(at(moved(last_->coordinate(), metres, 0), level), distance, type);
  }

  Route route() const {
    Route route(steps_);
    route.setDirections(TurnByTurnDirectionCalculator().directionsForRoute(steps_, false));
    return route;
  }

  std::vector<std::string> text(const LevelNames& levels = {}) const {
    std::vector<std::string> lines;
    for (const Instruction& each : routeInstructions(route(), levels, "the Library")) {
      lines.push_back(each.text);
    }
    return lines;
  }

 private:
  Walk& go(double north, double east, double distance, const std::string& type) {
    return step(at(moved(last_->coordinate(), north, east), last_->level()), distance, type);
  }

  Walk& step(const PointPtr& end, double distance, const std::string& type) {
    steps_.emplace_back(last_, end, distance, true, 1.0, type);
    last_ = end;
    return *this;
  }

  PointPtr last_;
  std::vector<Step> steps_;
};

TEST(RouteText, AShortWalkIsOneLine) {
  EXPECT_THAT(Walk().north(8).text(), ElementsAre("in 8 m you reach the Library"));
}

TEST(RouteText, ATurnAfterAShortStretchCarriesTheWayUntilIt) {
  EXPECT_THAT(Walk().north(8).west(5).text(),
              ElementsAre("in 8 m turn left", "in 5 m you reach the Library"));
}

TEST(RouteText, ATurnAfterGoingStraightCarriesTheStretchAfterIt) {
  EXPECT_THAT(Walk().north(25).west(12).text(),
              ElementsAre("go straight on for 25 m", "turn left, then 12 m",
                          "after these 12 m you reach the Library"));
}

TEST(RouteText, AStretchThatTheTurnAnnouncedIsNotANewOne) {
  EXPECT_THAT(Walk().north(25).east(30).south(6).text(),
              ElementsAre("go straight on for 25 m", "turn right, then 30 m",
                          "go straight on for these 30 m", "turn right, then 6 m",
                          "after these 6 m you reach the Library"));
}

TEST(RouteText, SlightTurnsAreBears) {
  EXPECT_THAT(Walk().north(8).northEast(9).text(),
              ElementsAre("in 8 m bear right", "in 9 m you reach the Library"));
}

TEST(RouteText, ALevelChangeHasItsKindLevelAndLength) {
  EXPECT_THAT(
      Walk().north(9).change(1, 8, "stairs", 5).north(7).text(),
      ElementsAre("in 9 m take the stairs up to level 1 (8 m)", "in 7 m you reach the Library"));
  EXPECT_THAT(Walk(1).north(9).change(-2, 8, "Escalator", 5).north(7).text(),
              ElementsAre("in 9 m take the escalator down to level -2 (8 m)",
                          "in 7 m you reach the Library"));
}

TEST(RouteText, LevelsAreCalledByTheirNames) {
  const LevelNames levels(parsed({}, R"("levels":[{"level":1,"name":"Departures"}])"));
  EXPECT_EQ(Walk().north(9).change(1, 8, "stairs", 5).north(7).text(levels).front(),
            "in 9 m take the stairs up to level 1, Departures (8 m)");
}

TEST(RouteText, EveryKindOfConnectionReadsWell) {
  const struct {
    const char* type;
    const char* words;
  } cases[] = {{"", "go up to level 1"},
               {"steps", "take the steps up to level 1"},
               {"ramp", "take the ramp up to level 1"},
               {"elevator", "take the lift up to level 1"},
               {"lift", "take the lift up to level 1"},
               {"ladder", "climb the ladder up to level 1"},
               {"entrance", "go through the entrance up to level 1"},
               {"travelator", "take the moving walkway up to level 1"},
               {"paternoster", "take the paternoster up to level 1"}};
  for (const auto& each : cases) {
    EXPECT_EQ(Walk().north(9).change(1, 3, each.type).north(7).text().front(),
              "in 9 m " + std::string(each.words) + " (3 m)");
  }
}

TEST(RouteText, ALevelChangeInTheFirstStepIsToldFromTheSteps) {
  EXPECT_THAT(Walk().change(1, 3, "lift").north(8).text(),
              ElementsAre("take the lift up to level 1 (3 m)",
                          "leave the lift, in 8 m you reach the Library"));
  EXPECT_THAT(Walk(2).change(0, 9, "stairs", 6).north(8).text(),
              ElementsAre("take the stairs down to level 0 (9 m)", "in 8 m you reach the Library"));
}

TEST(RouteText, ARouteThatIsOnlyALevelChangeIsToldToo) {
  EXPECT_THAT(Walk().change(1, 6, "lift").text(),
              ElementsAre("take the lift up to level 1 (6 m)", "you have reached the Library"));
}

TEST(RouteText, ALiftRidePastSeveralLevelsIsOneInstruction) {
  EXPECT_THAT(
      Walk().north(9).change(1, 3, "lift").change(2, 3, "lift").change(4, 6, "lift").east(7).text(),
      ElementsAre("in 9 m take the lift up to level 4 (12 m)", "leave the lift, then 7 m",
                  "after these 7 m you reach the Library"));
}

TEST(RouteText, ALiftRideFromTheStartPastSeveralLevelsIsOneInstruction) {
  EXPECT_THAT(Walk().change(1, 3, "lift").change(2, 3, "lift").east(20).north(5).text(),
              ElementsAre("take the lift up to level 2 (6 m)", "leave the lift, then 20 m",
                          "go straight on for these 20 m", "turn left, then 5 m",
                          "after these 5 m you reach the Library"));
}

TEST(RouteText, LevelChangesByOtherConnectionsAreInstructionsOfTheirOwn) {
  EXPECT_THAT(Walk().north(9).change(1, 3, "lift").change(2, 8, "stairs", 5).north(7).text(),
              ElementsAre("in 9 m take the lift up to level 1 (3 m)",
                          "take the stairs up to level 2 (8 m)", "in 7 m you reach the Library"));
}

TEST(RouteText, UpAndDownAgainAreTwoInstructions) {
  EXPECT_THAT(Walk().north(9).change(1, 3, "lift").change(0, 3, "lift").text(),
              ElementsAre("in 9 m take the lift up to level 1 (3 m)",
                          "take the lift down to level 0 (3 m)", "you have reached the Library"));
}

TEST(RouteText, StairsWithAWalkBetweenThemAreTwoInstructions) {
  EXPECT_THAT(
      Walk().north(9).change(1, 8, "stairs", 5).north(4).change(2, 8, "stairs", 5).text(),
      ElementsAre("in 9 m take the stairs up to level 1 (8 m)",
                  "in 4 m take the stairs up to level 2 (8 m)", "you have reached the Library"));
}

TEST(RouteText, TheWayAfterALevelChangeDoesNotIncludeIt) {
  // The engine's stretch is 10 m of lift and 14 m to the north.
  EXPECT_THAT(Walk().north(9).change(1, 10, "lift").north(14).west(6).text(),
              ElementsAre("in 9 m take the lift up to level 1 (10 m)",
                          "leave the lift and go straight on for 14 m", "turn left, then 6 m",
                          "after these 6 m you reach the Library"));
}

TEST(RouteText, ATurnOutOfALiftIsNotToldSinceTheDoorMayBeAnywhere) {
  EXPECT_THAT(Walk().north(9).change(1, 3, "lift").west(7).text(),
              ElementsAre("in 9 m take the lift up to level 1 (3 m)", "leave the lift, then 7 m",
                          "after these 7 m you reach the Library"));
}

TEST(RouteText, ATurnAtTheEndOfStairsIsTold) {
  EXPECT_THAT(Walk().north(9).change(1, 13, "stairs", 10).west(7).text(),
              ElementsAre("in 9 m take the stairs up to level 1 (13 m)", "turn left, then 7 m",
                          "after these 7 m you reach the Library"));
}

TEST(RouteText, WhatIsPassedOnALevelIsSaid) {
  EXPECT_THAT(
      Walk().north(4).north(4, "steps").west(20, "ramp").text(),
      ElementsAre("in 8 m, over steps, turn left", "in 20 m, over a ramp, you reach the Library"));
  EXPECT_EQ(Walk().north(9, "door").north(9, "gate").north(9, "door").west(3).text().front(),
            "go straight on for 27 m, through a door and through a gate");
}

TEST(RouteText, StairsThatBeginBeforeTheLevelChangeAreSaidOnce) {
  EXPECT_EQ(Walk().north(4).north(4, "stairs").change(1, 8, "stairs", 5).north(7).text().front(),
            "in 8 m take the stairs up to level 1 (8 m)");
}

TEST(RouteText, DistancesOfALevelAddUpToTheRoute) {
  const Route route = Walk().north(9).change(1, 3, "lift").change(2, 3, "lift").north(8).route();
  EXPECT_EQ(route.totalDistance(), 9 + 6 + 8);
  EXPECT_THAT(Walk().north(9).change(1, 3, "lift").change(2, 3, "lift").north(8).text(),
              ElementsAre("in 9 m take the lift up to level 2 (6 m)",
                          "leave the lift, in 8 m you reach the Library"));
}

TEST(RouteText, SaysWhereEachInstructionApplies) {
  const Route route = Walk().north(20).west(5).change(1, 3, "lift").west(7).route();
  const auto told = routeInstructions(route, {}, "x");
  ASSERT_EQ(told.size(), 5U);
  const auto& steps = route.steps();
  EXPECT_EQ(told[0].at, steps[0].start()->coordinate());
  EXPECT_EQ(told[1].at, steps[1].start()->coordinate());
  EXPECT_EQ(told[2].at, steps[2].start()->coordinate());
  EXPECT_EQ(told[2].level, 0);
  EXPECT_EQ(told[4].at, steps[3].end()->coordinate());
  EXPECT_EQ(told[4].level, 1);
}

TEST(RouteText, AStepThatHasJustBeenWalkedIsNotTold) {
  // What is left of the escalator at its top: no way, 3 m of level height, and no direction.
  EXPECT_EQ(Walk(1).north(0, "escalator").east(30).text(), Walk(1).east(30).text());
}

TEST(RouteText, ARouteThatIsNothingButAWalkedStepIsStillTold) {
  EXPECT_FALSE(Walk().north(0).text().empty());
}

TEST(RouteText, ARouteWithoutStepsOrInstructionsHasNoText) {
  EXPECT_THAT(routeInstructions(Route(), {}, "x"), IsEmpty());
  Route silent = Walk().north(5).route();
  silent.setDirections({});
  EXPECT_THAT(routeInstructions(silent, {}, "x"), IsEmpty());
}

TEST(RouteText, InstructionsOfOtherStepsAreToldAsTheyAre) {
  Route shortened = Walk().north(9).change(1, 8, "stairs", 5).west(7).route();
  shortened.setSteps({shortened.steps().front()});
  std::vector<std::string> lines;
  for (const auto& each : routeInstructions(shortened, {}, "x")) lines.push_back(each.text);
  EXPECT_EQ(lines.front(), "in 9 m take the stairs up to level 1");
}

TEST(RouteText, SetsOffInTheDirectionOfTheFirstStep) {
  EXPECT_EQ(setOffDirection(Walk().west(5).route()), "west");
  EXPECT_EQ(setOffDirection(Walk().change(1, 8, "stairs", 5).route()), "north");
  EXPECT_EQ(setOffDirection(Walk().change(1, 3, "lift").route()), "");
  EXPECT_EQ(setOffDirection(Route()), "");
}

}  // namespace
}  // namespace KorvaniTest
