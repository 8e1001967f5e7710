#pragma once

/// Internal. The fourth step of the import: ways from level to level.

#include "Import/Imdf/ImdfModel.hpp"
#include "Import/Imdf/ImdfShapes.hpp"

namespace KorvaniTools {

/// Joins stairs, escalators, ramps and elevators of several levels.
///
/// Units of one kind that lie above each other, by at least half of the smaller one, are one
/// shaft. Elevators may pass levels by; others only levels that have no floor there. A relationship
/// joins the units that it names, whether they lie above each other or not; a directed one makes
/// a one-way shaft of its own. When it names units of one level only, those that lie above or below
/// them on the levels of its ends belong to it too. Where there are none, it is a line from its
/// origin to its destination.
void joinImdfLevels(ImdfModel& model, const ImdfShapes& shapes);

}  // namespace KorvaniTools
