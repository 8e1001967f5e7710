#include "Navigation/Directions/StraightSegment.hpp"

#include <gtest/gtest.h>

#include <vector>

#include "Navigation/Directions/TurnByTurnDirectionCalculator.hpp"
#include "Walk.hpp"

using namespace KorvaniNavigation;
using KorvaniTest::walk;

namespace {

const TurnByTurnDirectionCalculator kCalculator;

std::vector<std::size_t> segmentSizes(const std::vector<Step>& steps) {
  std::vector<std::size_t> sizes;
  for (const StraightSegment& segment : kCalculator.findAllStraightSegments(steps)) {
    sizes.push_back(segment.intermediateSteps.size());
  }
  return sizes;
}

using Sizes = std::vector<std::size_t>;

}  // namespace

TEST(StraightSegments, AHeadingChangeOfExactly15DegreesContinuesTheSegment) {
  EXPECT_EQ(segmentSizes(walk({{.distance = 5, .heading = 10}, {.distance = 5, .heading = 25}})),
            Sizes{2});
  EXPECT_EQ(segmentSizes(walk({{.distance = 5, .heading = 25}, {.distance = 5, .heading = 10}})),
            Sizes{2});
}

TEST(StraightSegments, AHeadingChangeOf15Point01DegreesEndsTheSegment) {
  EXPECT_EQ(segmentSizes(walk({{.distance = 5, .heading = 10}, {.distance = 5, .heading = 25.01}})),
            (Sizes{1, 1}));
  EXPECT_EQ(segmentSizes(walk({{.distance = 5, .heading = 25.01}, {.distance = 5, .heading = 10}})),
            (Sizes{1, 1}));
}

TEST(StraightSegments, HeadingsAreComparedAcrossNorth) {
  EXPECT_EQ(segmentSizes(walk({{.distance = 5, .heading = 353}, {.distance = 5, .heading = 7}})),
            Sizes{2});
}

TEST(StraightSegments, HeadingsAreComparedWithTheFirstOfTheSegmentNotWithThePreviousOne) {
  const auto steps = walk({{.distance = 5, .heading = 0},
                           {.distance = 5, .heading = 10},
                           {.distance = 5, .heading = 20}});
  EXPECT_EQ(segmentSizes(steps), (Sizes{2, 1}));
}

TEST(StraightSegments, AStepThatEndsOnAnotherLevelEndsTheSegment) {
  const auto segments =
      kCalculator.findAllStraightSegments(walk({{.distance = 5},
                                                {.distance = 3, .level = 1, .type = "stairs"},
                                                {.distance = 6, .level = 1}}));
  ASSERT_EQ(segments.size(), 2U);
  EXPECT_EQ(segments[0].levelChangeDirection, DirectionsType::levelUp);
  EXPECT_EQ(segments[0].neighbourType, "stairs");
  EXPECT_EQ(segments[1].intermediateSteps.size(), 2U);
  EXPECT_EQ(segments[1].levelChangeDirection, DirectionsType::unknown);
}

TEST(StraightSegments, GoingToALowerLevelIsLevelDown) {
  const auto segments =
      kCalculator.findAllStraightSegments(walk({{.distance = 5}, {.distance = 3, .level = -1}}));
  ASSERT_EQ(segments.size(), 2U);
  EXPECT_EQ(segments[0].levelChangeDirection, DirectionsType::levelDown);
}

TEST(StraightSegments, ATurnThatAlsoChangesTheLevelIsALevelChange) {
  const auto segments = kCalculator.findAllStraightSegments(
      walk({{.distance = 5}, {.distance = 3, .heading = 90, .level = 1}}));
  ASSERT_EQ(segments.size(), 2U);
  EXPECT_EQ(segments[0].levelChangeDirection, DirectionsType::levelUp);
}

TEST(StraightSegments, AFirstStepThatChangesTheLevelBelongsToTheLevelItEndsOn) {
  const auto segments = kCalculator.findAllStraightSegments(
      walk({{.distance = 3, .level = 1}, {.distance = 5, .level = 1}}));
  ASSERT_EQ(segments.size(), 1U);
  EXPECT_EQ(segments[0].distance, 8);
}

TEST(StraightSegments, CarryEverythingAboutTheirSteps) {
  const auto steps = walk({{.distance = 5, .heading = 10, .type = "hall"},
                           {.distance = 2, .heading = 12},
                           {.distance = 4, .heading = 90, .type = "door"},
                           {.distance = 7, .heading = 91}});
  const auto segments = kCalculator.findAllStraightSegments(steps);
  ASSERT_EQ(segments.size(), 2U);

  EXPECT_EQ(segments[0].startIndex, 0U);
  EXPECT_EQ(segments[0].bearing, 10);
  EXPECT_EQ(segments[0].distance, 7);
  ASSERT_EQ(segments[0].intermediateSteps.size(), 2U);
  EXPECT_EQ(segments[0].intermediateSteps[1].start(), steps[1].start());
  ASSERT_TRUE(segments[0].nextStep);
  EXPECT_EQ(segments[0].nextStep->start(), steps[2].start());
  EXPECT_EQ(segments[0].neighbourType, "door");

  EXPECT_EQ(segments[1].startIndex, 2U);
  EXPECT_EQ(segments[1].bearing, 90);
  EXPECT_EQ(segments[1].distance, 11);
  EXPECT_FALSE(segments[1].nextStep);
  EXPECT_FALSE(segments[1].neighbourType);
}

TEST(StraightSegments, AShortRunIsASegmentOfItsOwn) {
  EXPECT_EQ(segmentSizes(walk({{.distance = 0.5}, {.distance = 0.5, .heading = 90}})),
            (Sizes{1, 1}));
}

TEST(StraightSegments, OfNoStepsAreNone) {
  EXPECT_TRUE(kCalculator.findAllStraightSegments({}).empty());
}

TEST(ExtendLongestStraightSegment, PastTheStepsGivesNeitherBearingNorDistance) {
  const auto steps = walk({{.distance = 5}});
  const auto extent = kCalculator.extendLongestStraightSegment(steps, 1, true);
  EXPECT_FALSE(extent.referenceBearing);
  EXPECT_FALSE(extent.segmentDistance);
  EXPECT_EQ(extent.nextStartIndex, 1U);
  EXPECT_EQ(extent.levelChangeDirection, DirectionsType::unknown);
  EXPECT_FALSE(extent.neighbourType);
  EXPECT_EQ(kCalculator.extendLongestStraightSegment(steps, 7, true).nextStartIndex, 7U);
}

TEST(ExtendLongestStraightSegment, UpToTheRoutesEndCountsHoweverShort) {
  const auto extent = kCalculator.extendLongestStraightSegment(
      walk({{.distance = 1, .heading = 30}, {.distance = 1, .heading = 30}}), 0, false);
  EXPECT_EQ(extent.referenceBearing, 30);
  EXPECT_EQ(extent.segmentDistance, 2);
  EXPECT_EQ(extent.nextStartIndex, 2U);
  EXPECT_FALSE(extent.neighbourType);
}

TEST(ExtendLongestStraightSegment, StartsInTheMiddleOfARoute) {
  const auto extent = kCalculator.extendLongestStraightSegment(
      walk({{.distance = 9},
            {.distance = 5, .heading = 90},
            {.distance = 6, .heading = 180, .type = "door"}}),
      1, true);
  EXPECT_EQ(extent.referenceBearing, 90);
  EXPECT_EQ(extent.segmentDistance, 5);
  EXPECT_EQ(extent.nextStartIndex, 2U);
  EXPECT_EQ(extent.neighbourType, "door");
}

TEST(ExtendLongestStraightSegment, ThatIsShortHasABearingOnlyWhenShortOnesAreNotWanted) {
  const auto steps =
      walk({{.distance = 1, .heading = 5}, {.distance = 2, .heading = 90, .type = "door"}});
  const auto extent = kCalculator.extendLongestStraightSegment(steps, 0, false);
  EXPECT_EQ(extent.referenceBearing, 5);
  EXPECT_FALSE(extent.segmentDistance);
  EXPECT_EQ(extent.nextStartIndex, 0U);
  EXPECT_EQ(extent.levelChangeDirection, DirectionsType::unknown);
  EXPECT_FALSE(extent.neighbourType);
}

TEST(ExtendLongestStraightSegment, LengthLimitIncludesTheStepThatEndedTheRun) {
  const auto extent = kCalculator.extendLongestStraightSegment(
      walk({{.distance = 1}, {.distance = 4, .heading = 90}}), 0, false);
  EXPECT_EQ(extent.segmentDistance, 1);
  EXPECT_EQ(extent.nextStartIndex, 1U);
}

TEST(ExtendLongestStraightSegment, OfExactlyTheMinimumLengthIsTooShort) {
  const auto extent = kCalculator.extendLongestStraightSegment(
      walk({{.distance = 1}, {.distance = 3, .heading = 90}}), 0, false);
  EXPECT_FALSE(extent.segmentDistance);
}
