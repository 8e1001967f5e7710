#pragma once

/// Internal. What tags make of a feature.

#include <string_view>

#include "FloorPlan/FloorPlan.hpp"
#include "Import/Osm/OsmTags.hpp"

namespace KorvaniTools {

/// What a way or a multipolygon is in a floor plan.
enum class WayRole {
  none,
  line,  ///< to walk along
  cell,  ///< a piece of floor
  wall,
  door,          ///< a door drawn as a line
  levelOutline,  ///< tells about a level
  site,          ///< something to go to that is not floor of its own, such as a work of art
};

/// Whether something is there for this feature to be kept.
enum class Interest {
  none,
  nearby,   ///< it counts near something indoors only
  indoors,  ///< it counts by itself
};

/// @param closed for a way whose last corner is its first, and for multipolygons
WayRole roleOf(const OsmTags& tags, bool closed);

/// Whether it is the outline of a room or an area, but for not being closed.
bool isUnfinished(const OsmTags& tags, bool closed);

/// Whether a way counts; one that is unfinished does, so that it can be told.
Interest wayInterest(const OsmTags& tags, bool closed);

Interest nodeInterest(const OsmTags& tags);

/// Whether a node's tags say anything to a floor plan when it is part of a way that counts.
bool nodeMatters(const OsmTags& tags);

/// What kind of floor a way or multipolygon is whose role is `cell`.
CellKind cellKindOf(const OsmTags& tags);

/// Whether the floor is enclosed by walls.
bool isWalled(const OsmTags& tags, CellKind kind);

/// Whether there is somebody or something to go to: a shop, an office, toilets.
bool isAmenity(const OsmTags& tags);

/// Whether the tags describe a door, a gate or another gap to go through; also a locked one.
bool isDoor(const OsmTags& tags);

/// Whether people come into a building there.
bool isEntrance(const OsmTags& tags);

bool isLift(const OsmTags& tags);

/// Whether people on foot are kept out.
bool isClosedToPeople(const OsmTags& tags);

/// Whether the feature says that it is indoors.
bool isIndoor(const OsmTags& tags);

bool hasLevel(const OsmTags& tags);

/// Whether a way outdoors runs through a tunnel or over a bridge, on a level that is not told.
bool passesOverOrUnder(const OsmTags& tags);

/// Where people get on trains and the like.
bool isPlatform(const OsmTags& tags);

/// Whether a moving walkway or escalator runs there, in whatever direction.
bool isConveying(const OsmTags& tags);

}  // namespace KorvaniTools
