#pragma once

/// Internal. Where the floor of a level is that has walls but no rooms.

#include <vector>

#include "Drawing/SceneFrame.hpp"

namespace KorvaniTools {

/// The outlines of what the walls enclose, closed; courtyards are enclosed as well. Gaps as wide
/// as doors (2.5 m) count as walls. Empty when the walls enclose nothing, or are such that it
/// cannot be said.
///
/// Coordinates are metres. Cost: near linear in the number of walls.
std::vector<SceneLine> floorWithin(const std::vector<SceneLine>& walls);

}  // namespace KorvaniTools
