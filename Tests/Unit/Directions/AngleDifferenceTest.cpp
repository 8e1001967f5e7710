#include "Navigation/Directions/AngleDifference.hpp"

#include <gtest/gtest.h>

using KorvaniNavigation::absoluteAngleDifference;
using KorvaniNavigation::signedAngleDifference;

TEST(AngleDifference, IsPositiveWhenTheBearingLiesToTheLeft) {
  EXPECT_EQ(signedAngleDifference(90, 60), 30);
}

TEST(AngleDifference, IsNegativeWhenTheBearingLiesToTheRight) {
  EXPECT_EQ(signedAngleDifference(60, 90), -30);
}

TEST(AngleDifference, GoesTheShortWayAcrossNorth) {
  EXPECT_EQ(signedAngleDifference(350, 10), -20);
  EXPECT_EQ(signedAngleDifference(10, 350), 20);
}

TEST(AngleDifference, OfOppositeHeadingsIsPlusHalfATurnInBothOrders) {
  EXPECT_EQ(signedAngleDifference(0, 180), 180);
  EXPECT_EQ(signedAngleDifference(180, 0), 180);
  EXPECT_EQ(signedAngleDifference(270, 90), 180);
}

TEST(AngleDifference, JustBeyondHalfATurnChangesSide) {
  EXPECT_EQ(signedAngleDifference(179.5, 0), 179.5);
  EXPECT_EQ(signedAngleDifference(0, 179.5), -179.5);
  EXPECT_EQ(signedAngleDifference(181, 0), -179);
  EXPECT_EQ(signedAngleDifference(0, 181), 179);
}

TEST(AngleDifference, OfEqualHeadingsIsZero) { EXPECT_EQ(signedAngleDifference(123.5, 123.5), 0); }

TEST(AngleDifference, SizeIgnoresTheSide) {
  EXPECT_EQ(absoluteAngleDifference(359, 1), 2);
  EXPECT_EQ(absoluteAngleDifference(1, 359), 2);
  EXPECT_EQ(absoluteAngleDifference(180, 0), 180);
}
