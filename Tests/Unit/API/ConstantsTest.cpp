#include "Navigation/API/Constants.hpp"

#include <gtest/gtest.h>

namespace KorvaniNavigation {
namespace {

TEST(Constants, NotificationNamesAndUserInfoKeysHaveTheirPublishedValues) {
  EXPECT_EQ(NavigationGraphCreatedNotification, "NavigationGraphCreatedNotification");
  EXPECT_EQ(NavigationRoutingTaskDestinationReachedNotification,
            "NavigationRoutingDestinationReachedNotification");
  EXPECT_EQ(kNavigationRoutingTaskDestinationReachedLatitude,
            "kNavigationRoutingDestinationReachedLatitude");
  EXPECT_EQ(kNavigationRoutingTaskDestinationReachedLongitude,
            "kNavigationRoutingDestinationReachedLongitude");
  EXPECT_EQ(kNavigationRoutingTaskDestinationReachedLevel,
            "kNavigationRoutingDestinationReachedLevel");
}

TEST(Constants, InstructionKeysHaveTheirPublishedValues) {
  EXPECT_EQ(kKRVIndoorTurnByTurnRouteDirection, "RouteDirection");
  EXPECT_EQ(kKRVIndoorTurnByTurnDistanceUntilForNextTurnDirection,
            "DistanceUntilForNextTurnDirection");
  EXPECT_EQ(kKRVIndoorTurnByTurnLevelNumberForNextDirection, "LevelNumberForNextDirection");
  EXPECT_EQ(kKRVIndoorTurnByTurnWaypointInRouteForNextTurnDirection,
            "WaypointInRouteForNextTurnDirection");
  EXPECT_EQ(kKRVIndoorTurnByTurnDirectionsArrowDisplayLocation, "DirectionsArrowDisplayLocation");
  EXPECT_EQ(kKRVIndoorTurnByTurnHeadingForDirectionsArrow, "HeadingForDirectionsArrow");
  EXPECT_EQ(kKRVIndoorTurnByTurnNeighbourType, "NeighbourType");
  EXPECT_EQ(kKRVIndoorTurnByTurnLocationLatitude, "LocationLatitude");
  EXPECT_EQ(kKRVIndoorTurnByTurnLocationLongitude, "LocationLongitude");
  EXPECT_EQ(kKRVIndoorTurnByTurnLocationAltitude, "LocationAltitude");
}

TEST(Constants, VersionTextEndsWithALineFeedAndHasTwoBlanksBeforeTheProject) {
  EXPECT_EQ(KorvaniNavigationVersionNumber, 1.0);
  EXPECT_STREQ(KorvaniNavigationVersionString,
               "@(#)PROGRAM:KorvaniNavigation  PROJECT:Navigation-1\n");
}

TEST(Constants, TheModuleIsCalledNavigation) { EXPECT_EQ(kKRVNavigationModuleName, "Navigation"); }

}  // namespace
}  // namespace KorvaniNavigation
