#include "Navigation/Directions/TurnByTurnDirectionCalculator.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "Walk.hpp"

using namespace KorvaniNavigation;
using KorvaniTest::at;
using KorvaniTest::Leg;
using KorvaniTest::walk;

namespace {

const TurnByTurnDirectionCalculator kDirectionCalculator;

std::vector<Directions> instructions(const std::vector<Step>& steps) {
  return kDirectionCalculator.directionsForRoute(steps, false);
}

std::vector<std::string> descriptions(const std::vector<Step>& steps) {
  std::vector<std::string> texts;
  for (const Directions& each : instructions(steps)) texts.push_back(each.description());
  return texts;
}

using Texts = std::vector<std::string>;

// The type told for a turn between two short segments.
DirectionsType turn(double bearing, double nextBearing) {
  StraightSegment first{.bearing = bearing, .distance = 5};
  StraightSegment second{.bearing = nextBearing, .distance = 5};
  first.intermediateSteps = walk({{.distance = 5, .heading = bearing}});
  second.intermediateSteps = walk({{.distance = 5, .heading = nextBearing}});
  first.nextStep = second.intermediateSteps.front();
  return kDirectionCalculator.directions(first, &second).front().type();
}

// A level change whose place is `location`'s altitude.
std::vector<Step> stairsTo(double altitude) {
  const auto steps = walk({{.distance = 5}, {.distance = 3, .level = 1}});
  const auto& end = steps[1].end();
  end->setLocation(CLLocation(end->coordinate(), altitude, 0, 0, end->location().timestamp()));
  return steps;
}

}  // namespace

TEST(TurnByTurnDirectionCalculator, ConstantsAreThePublishedOnes) {
  EXPECT_EQ(kKRVNavigationTurnDirectionDegreesThreshold, 15.0);
  EXPECT_EQ(kKRVNavigationMinimumSegmentLength, 4.0);
  EXPECT_EQ(kKRVNavigationStraightAheadDirectionDistanceThreshold, 11.0);
}

TEST(TurnByTurnDirectionCalculator, NoStepsGiveOneEmptyInstruction) {
  const auto list = instructions({});
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list[0].type(), DirectionsType::unknown);
  EXPECT_EQ(list[0].directionsJson().size(), 2U);
}

TEST(TurnByTurnDirectionCalculator, OneStepGivesOneDestinationInstructionWithItsDistance) {
  const auto steps = walk({{.distance = 23.5}});
  EXPECT_EQ(TurnByTurnDirectionCalculator().findAllStraightSegments(steps).size(), 1U);
  const auto list = instructions(steps);
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list[0].description(), "23.5,destination");
  EXPECT_EQ(list[0].nextWaypoint(), nullptr);
  EXPECT_FALSE(list[0].arrow());
  EXPECT_FALSE(list[0].levelChangeTypeName());
}

TEST(TurnByTurnDirectionCalculator, ATurnOfExactly50DegreesIsABear) {
  EXPECT_EQ(turn(60, 10), DirectionsType::bearLeft);
  EXPECT_EQ(turn(10, 60), DirectionsType::bearRight);
}

TEST(TurnByTurnDirectionCalculator, ATurnOfMoreThan50DegreesIsATurn) {
  EXPECT_EQ(turn(60, 9.99), DirectionsType::left);
  EXPECT_EQ(turn(9.99, 60), DirectionsType::right);
}

TEST(TurnByTurnDirectionCalculator, ADifferenceOfExactly0DegreesIsBearLeft) {
  EXPECT_EQ(turn(77, 77), DirectionsType::bearLeft);
}

TEST(TurnByTurnDirectionCalculator, TurnsAreReadAcrossNorth) {
  EXPECT_EQ(turn(350, 10), DirectionsType::bearRight);
  EXPECT_EQ(turn(10, 350), DirectionsType::bearLeft);
  EXPECT_EQ(turn(330, 60), DirectionsType::right);
  EXPECT_EQ(turn(30, 300), DirectionsType::left);
}

TEST(TurnByTurnDirectionCalculator, AReversalIsLeftAndNeverTurnaround) {
  EXPECT_EQ(turn(0, 180), DirectionsType::left);
  EXPECT_EQ(turn(180, 0), DirectionsType::left);
}

TEST(TurnByTurnDirectionCalculator, ASegmentOfExactly11MetresTurnsWithItsOwnLength) {
  EXPECT_EQ(descriptions(walk({{.distance = 11}, {.distance = 3, .heading = 90}})),
            (Texts{"11.0,right", "3.0,destination"}));
}

TEST(TurnByTurnDirectionCalculator, ALongerSegmentGoesForwardAndTurnsWithTheNextLength) {
  EXPECT_EQ(descriptions(walk({{.distance = 11.5}, {.distance = 3, .heading = 90}})),
            (Texts{"11.5,forward", "3.0,right", "3.0,destination"}));
}

TEST(TurnByTurnDirectionCalculator, ALongLastSegmentIsAnnouncedByTheDestinationAlone) {
  EXPECT_EQ(descriptions(walk({{.distance = 40}})), Texts{"40.0,destination"});
}

TEST(TurnByTurnDirectionCalculator, ALevelChangeAfterALongSegmentHasNoForwardInstruction) {
  EXPECT_EQ(descriptions(walk({{.distance = 20}, {.distance = 4, .level = 1}})),
            (Texts{"20.0,levelUp", "4.0,destination"}));
  EXPECT_EQ(descriptions(walk({{.distance = 20}, {.distance = 4, .level = -3}})),
            (Texts{"20.0,levelDown", "4.0,destination"}));
}

TEST(TurnByTurnDirectionCalculator, LevelChangePointsToTheEndOfTheConnection) {
  const auto steps = walk({{.distance = 6}, {.distance = 4, .level = 2, .type = "lift"}});
  const auto up = instructions(steps)[0];
  EXPECT_EQ(up.nextWaypoint(), steps[1].end());
  ASSERT_TRUE(up.arrow());
  EXPECT_EQ(up.arrow()->peak, steps[1].end()->coordinate());
  EXPECT_EQ(up.arrow()->heading, 0);
  EXPECT_EQ(up.arrow()->level, 2);
  EXPECT_EQ(up.levelChangeTypeName(), "lift");
}

TEST(TurnByTurnDirectionCalculator, LevelChangeWithoutKindNamesTheEmptyText) {
  StraightSegment segment{.distance = 5, .levelChangeDirection = DirectionsType::levelUp};
  segment.intermediateSteps = walk({{.distance = 5}});
  const auto list = kDirectionCalculator.directions(segment, &segment);
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list[0].levelChangeTypeName(), "");
  EXPECT_EQ(list[0].nextWaypoint(), segment.intermediateSteps[0].end());
}

TEST(TurnByTurnDirectionCalculator, ForwardArrowStandsAtTheFirstStepBehindTheRunIn) {
  const auto steps = walk({{.distance = 2},
                           {.distance = 3},
                           {.distance = 5, .heading = 8},
                           {.distance = 7},
                           {.distance = 3, .heading = 90, .type = "door"}});
  const auto forward = instructions(steps)[0];
  ASSERT_EQ(forward.type(), DirectionsType::forward);
  EXPECT_EQ(forward.distance(), 17);
  ASSERT_TRUE(forward.arrow());
  EXPECT_EQ(forward.arrow()->peak, steps[2].start()->coordinate());
  EXPECT_NEAR(forward.arrow()->heading, 8, 1e-6);
  EXPECT_EQ(forward.arrow()->level, 0);
  EXPECT_EQ(forward.nextWaypoint(), steps[4].start());
  EXPECT_EQ(forward.levelChangeTypeName(), "door");
}

TEST(TurnByTurnDirectionCalculator, ForwardArrowNeedsMoreThanTheRunInBeforeIt) {
  const auto steps =
      walk({{.distance = 4}, {.distance = 1}, {.distance = 9}, {.distance = 3, .heading = 90}});
  EXPECT_EQ(instructions(steps)[0].arrow()->peak, steps[2].start()->coordinate());
}

TEST(TurnByTurnDirectionCalculator, ForwardArrowStandsAtTheLastStepWhenNoneLiesBehindTheRunIn) {
  const auto steps = walk({{.distance = 1}, {.distance = 14}, {.distance = 3, .heading = 90}});
  EXPECT_EQ(instructions(steps)[0].arrow()->peak, steps[1].start()->coordinate());
}

TEST(TurnByTurnDirectionCalculator, ForwardWithoutNextStepHasNoWaypoint) {
  StraightSegment segment{.distance = 20};
  segment.intermediateSteps = walk({{.distance = 20}});
  const auto list = kDirectionCalculator.directions(segment, &segment);
  ASSERT_EQ(list.size(), 2U);
  EXPECT_EQ(list[0].type(), DirectionsType::forward);
  EXPECT_EQ(list[0].nextWaypoint(), nullptr);
  EXPECT_FALSE(list[0].levelChangeTypeName());
}

TEST(TurnByTurnDirectionCalculator, TurnArrowStandsHalfAMetreBehindTheTurningPoint) {
  const auto steps = walk(
      {{.distance = 6, .level = 3}, {.distance = 5, .heading = 90, .level = 3, .type = "door"}});
  const auto list = instructions(steps);
  const auto& turning = list[0];
  ASSERT_EQ(turning.type(), DirectionsType::right);
  ASSERT_TRUE(turning.arrow());
  const CLLocation corner = steps[1].start()->location();
  const CLLocation peak(turning.arrow()->peak);
  EXPECT_NEAR(corner.distanceFromLocation(peak), 0.5, 1e-6);
  EXPECT_NEAR(DirectionsHelpers::bearingToLocation(peak, corner), 90, 1e-4);
  EXPECT_NEAR(turning.arrow()->heading, 90, 1e-6);
  EXPECT_EQ(turning.arrow()->level, 3);
  EXPECT_EQ(turning.levelChangeTypeName(), "door");
}

TEST(TurnByTurnDirectionCalculator, TurnWaypointIsANewPointAtTheCorner) {
  const auto steps =
      walk({{.distance = 6, .level = 3}, {.distance = 5, .heading = 90, .level = 3}});
  const auto waypoint = instructions(steps)[0].nextWaypoint();
  ASSERT_NE(waypoint, nullptr);
  EXPECT_NE(waypoint, steps[1].start());
  EXPECT_EQ(waypoint->coordinate(), steps[1].start()->coordinate());
  EXPECT_EQ(waypoint->level(), 3);
  EXPECT_EQ(waypoint->identifier(), -1);
}

TEST(TurnByTurnDirectionCalculator, ArrowHeadingIsTheBearingOfThePointsNotTheStepsOwnHeading) {
  const auto corner = at(0.001, 0);
  const std::vector<Step> steps{Step::withHeading(at(0, 0), corner, 6, 0),
                                Step::withHeading(corner, at(0.002, 0), 5, 90)};
  EXPECT_EQ(instructions(steps)[0].type(), DirectionsType::right);
  EXPECT_EQ(instructions(steps)[0].arrow()->heading, 0);
}

TEST(TurnByTurnDirectionCalculator, ALastSegmentWithFollowingTurnsAtItsLastStep) {
  StraightSegment segment{.distance = 9};
  segment.intermediateSteps = walk({{.distance = 5}, {.distance = 4}});
  const StraightSegment following{.bearing = 90, .distance = 2};
  const auto list = kDirectionCalculator.directions(segment, &following);
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list[0].nextWaypoint()->coordinate(),
            segment.intermediateSteps[1].start()->coordinate());
}

TEST(TurnByTurnDirectionCalculator, HistoryUsageChangesNothing) {
  const auto steps = walk({{.distance = 20},
                           {.distance = 6, .heading = 90},
                           {.distance = 4, .heading = 90, .level = 1, .type = "stairs"},
                           {.distance = 30, .heading = 200, .level = 1}});
  const auto with = kDirectionCalculator.directionsForRoute(steps, true);
  const auto without = kDirectionCalculator.directionsForRoute(steps, false);
  ASSERT_EQ(with.size(), without.size());
  for (std::size_t i = 0; i < with.size(); ++i) {
    EXPECT_EQ(with[i].directionsJson(), without[i].directionsJson());
  }
}

TEST(TurnByTurnDirectionCalculator, AWholeRouteIsToldInWalkingOrder) {
  const auto steps = walk({{.distance = 8},
                           {.distance = 7, .heading = 10},
                           {.distance = 6, .heading = 90},
                           {.distance = 4, .heading = 90, .level = 1, .type = "stairs"},
                           {.distance = 5, .heading = 60, .level = 1},
                           {.distance = 12, .heading = 90, .level = 1}});
  EXPECT_EQ(descriptions(steps), (Texts{"15.0,forward", "6.0,right", "6.0,levelUp", "4.0,bearLeft",
                                        "5.0,bearRight", "12.0,destination"}));
}

TEST(TurnByTurnDirectionCalculator, ATurnAfterALengthThatIsNotANumberCarriesTheNextLength) {
  auto steps = walk({{.distance = 9}, {.distance = 7, .heading = 90}});
  steps[0] = Step::withHeading(steps[0].start(), steps[0].end(),
                               std::numeric_limits<double>::quiet_NaN(), 0, true, 1.0, "");
  EXPECT_EQ(descriptions(steps), (Texts{"7.0,right", "7.0,destination"}));
}

TEST(TurnByTurnDirectionCalculator, ServesThroughTheFindersRole) {
  const DirectionsFinder& finder = kDirectionCalculator;
  EXPECT_EQ(finder.directionsForRoute(walk({{.distance = 2}}), false).size(), 1U);
}

TEST(TurnByTurnDirectionCalculator, LevelIsTheIntegerPartOfTheAltitude) {
  EXPECT_EQ(instructions(stairsTo(2.9))[0].arrow()->level, 2);
  EXPECT_EQ(instructions(stairsTo(-1.7))[0].arrow()->level, -1);
  EXPECT_EQ(instructions(stairsTo(-9223372036854775808.0))[0].arrow()->level,
            std::numeric_limits<std::int64_t>::min());
}

TEST(TurnByTurnDirectionCalculatorDeathTest, AltitudeThatIsNotFiniteIsAFatalError) {
  const char* message = "fatal error: .*altitude";
  EXPECT_DEATH(instructions(stairsTo(std::numeric_limits<double>::quiet_NaN())), message);
  EXPECT_DEATH(instructions(stairsTo(std::numeric_limits<double>::infinity())), message);
  EXPECT_DEATH(instructions(stairsTo(-std::numeric_limits<double>::infinity())), message);
}

TEST(TurnByTurnDirectionCalculatorDeathTest, AltitudeBeyond64BitsIsAFatalError) {
  const char* message = "fatal error: .*altitude";
  EXPECT_DEATH(instructions(stairsTo(9223372036854775808.0)), message);
  EXPECT_DEATH(instructions(stairsTo(-9.3e18)), message);
}

TEST(TurnByTurnDirectionCalculatorDeathTest, ALevelThatADoubleCannotHoldIsAFatalError) {
  const auto highest = std::numeric_limits<std::int64_t>::max();
  const auto steps = walk({{.distance = 5}, {.distance = 3, .level = highest}});
  EXPECT_DEATH(instructions(steps), "fatal error: .*altitude");
}

TEST(TurnByTurnDirectionCalculatorDeathTest, ASegmentWithoutStepsIsAFatalError) {
  const StraightSegment segment{.distance = 5};
  EXPECT_DEATH(kDirectionCalculator.directions(segment, &segment), "fatal error: .*without steps");
}
