#pragma once

/// Strings and numbers that hosts depend on: notification names, user-info keys, the keys of
/// an instruction's dictionary, and the version of the library.
///
/// Values never change once published, also where a value differs from its own name: hosts on
/// several platforms compare them as text. All are ready once the library is loaded and may be
/// read from any thread.

#include <string>

namespace KorvaniNavigation {

/// Posted by the host after `Navigation::provideGraph`, with any sender and no user info.
/// Starts the tasks that were run before any graph was there, and makes waiting region
/// finders read the regions.
inline const std::string NavigationGraphCreatedNotification = "NavigationGraphCreatedNotification";

/// Posted when a routing task has reached its destination, on the thread that delivers
/// (the main thread), after the task's handler was called for the last time. The object is the
/// `RoutingTask`; the user info holds the three numbers below. The value lacks the "Task" of
/// the name.
inline const std::string NavigationRoutingTaskDestinationReachedNotification =
    "NavigationRoutingDestinationReachedNotification";

/// User-info key: latitude of the reached destination, degrees, a double.
inline const std::string kNavigationRoutingTaskDestinationReachedLatitude =
    "kNavigationRoutingDestinationReachedLatitude";

/// User-info key: longitude of the reached destination, degrees, a double.
inline const std::string kNavigationRoutingTaskDestinationReachedLongitude =
    "kNavigationRoutingDestinationReachedLongitude";

/// User-info key: level of the reached destination, an integer.
inline const std::string kNavigationRoutingTaskDestinationReachedLevel =
    "kNavigationRoutingDestinationReachedLevel";

/// Instruction dictionary: the raw value of the `DirectionsType`, an integer.
inline const std::string kKRVIndoorTurnByTurnRouteDirection = "RouteDirection";

/// Instruction dictionary: metres until the instruction applies, a double.
inline const std::string kKRVIndoorTurnByTurnDistanceUntilForNextTurnDirection =
    "DistanceUntilForNextTurnDirection";

/// Instruction dictionary: the level the arrow is drawn on, an integer.
inline const std::string kKRVIndoorTurnByTurnLevelNumberForNextDirection =
    "LevelNumberForNextDirection";

/// Instruction dictionary: the waypoint, a dictionary with the three location keys below.
inline const std::string kKRVIndoorTurnByTurnWaypointInRouteForNextTurnDirection =
    "WaypointInRouteForNextTurnDirection";

/// Instruction dictionary: the arrow's place, a dictionary with the three location keys below.
inline const std::string kKRVIndoorTurnByTurnDirectionsArrowDisplayLocation =
    "DirectionsArrowDisplayLocation";

/// Instruction dictionary: where the arrow points, degrees clockwise from north, a double.
inline const std::string kKRVIndoorTurnByTurnHeadingForDirectionsArrow =
    "HeadingForDirectionsArrow";

/// Instruction dictionary: the kind of connection ("stairs", ...), a string, may be empty.
inline const std::string kKRVIndoorTurnByTurnNeighbourType = "NeighbourType";

/// Location dictionary: latitude in degrees, a double.
inline const std::string kKRVIndoorTurnByTurnLocationLatitude = "LocationLatitude";

/// Location dictionary: longitude in degrees, a double.
inline const std::string kKRVIndoorTurnByTurnLocationLongitude = "LocationLongitude";

/// Location dictionary: the level number (not a height in metres), an integer.
inline const std::string kKRVIndoorTurnByTurnLocationAltitude = "LocationAltitude";

/// Version of the library as a number.
inline constexpr double KorvaniNavigationVersionNumber = 1.0;

/// Version of the library as the text that tools find in a binary; ends with a line feed.
inline constexpr char KorvaniNavigationVersionString[] =
    "@(#)PROGRAM:KorvaniNavigation  PROJECT:Navigation-1\n";

/// The module's name, under which it logs and registers.
inline const std::string kKRVNavigationModuleName = "Navigation";

}  // namespace KorvaniNavigation
