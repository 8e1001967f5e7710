#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "FloorPlan/FloorPlan.hpp"

namespace KorvaniTools {

/// What a text says about levels.
struct LevelText {
  PlanLevelSet levels;
  std::vector<std::string> unread;  ///< pieces that are no levels, such as "EG"
};

/// The levels that a `level` or `repeat_on` tag of OpenStreetMap lists, ascending, each once.
///
///     "0"  "-2;-1"  "-1; 0"  "-2.5"  "0,5" (0.5)  "0-3"  "-1-3" (-1 to 3)  "-3--1"  "0-2;4"
///
/// A range means both its ends and all whole levels between. A comma stands for the decimal
/// point; where one piece has several, or a blank follows, commas separate levels. Pieces that are
/// anything else are left over, and so are levels beyond -1000 and 1000 and ranges of more than 300
/// levels.
LevelText parseLevels(std::string_view text);

/// A level as people write it: "0", "-2", "0.5".
std::string levelText(double level);

/// All levels of both, ascending, each once.
PlanLevelSet united(const PlanLevelSet& a, const PlanLevelSet& b);

/// Whether the two have a level in common.
bool shareLevel(const PlanLevelSet& a, const PlanLevelSet& b);

}  // namespace KorvaniTools
