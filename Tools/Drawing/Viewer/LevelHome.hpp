#pragma once

/// Internal. What of a level is worth seeing first.

#include <optional>

#include "Drawing/LevelSvg.hpp"
#include "Drawing/Scene.hpp"

namespace KorvaniTools {

/// The part of the level in which most of its rooms are, or most of its places where no rooms are
/// drawn; a few that lie far away do not count. None for a level with next to nothing on it.
/// Cost: n log n in the rooms.
std::optional<SceneWindow> homeOf(const SceneLevel& level);

}  // namespace KorvaniTools
