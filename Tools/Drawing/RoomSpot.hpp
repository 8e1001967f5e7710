#pragma once

/// Internal. Where a room's name belongs.

#include <vector>

#include "Drawing/SceneFrame.hpp"

namespace KorvaniTools {

/// The roomiest place on a level line through a room.
struct RoomSpot {
  ScenePoint at;     ///< in the middle of the widest stretch
  double width = 0;  ///< of the stretch, metres; 0 for a room without area
  double top = 0;    ///< of the room
  double bottom = 0;
};

/// The spot in a polygon of closed rings, holes left out. Cost: linear in the corners.
RoomSpot roomSpotOf(const std::vector<SceneLine>& rings);

}  // namespace KorvaniTools
