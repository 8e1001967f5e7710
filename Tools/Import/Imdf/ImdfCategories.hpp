#pragma once

/// Internal. What the format's categories mean for somebody on foot.

#include <optional>
#include <string>

#include "FloorPlan/FloorPlan.hpp"

namespace KorvaniTools {

/// What a unit of that category is. Those that people have no name for yet are rooms.
CellKind cellKindOf(const std::string& category);

/// Whether a unit of that category is a restroom of any kind.
bool isRestroom(const std::string& category);

/// Whether nobody in a wheelchair gets along it, unless the unit says otherwise.
bool isSteps(const std::string& category);

/// The way up and down that units of that category are part of, or a relationship of that
/// category makes.
std::optional<ConnectionKind> connectionOf(const std::string& category);

/// Whether the fixture stands where it is; furniture is moved about.
bool isFixed(const std::string& fixtureCategory);

/// Whether people may use an opening of that category every day.
bool isPassable(const std::string& openingCategory);

/// Whether visitors come in through an opening of that category when it leads outdoors.
bool isForVisitors(const std::string& openingCategory);

/// Whether somebody in a wheelchair cannot get through a door of that type.
bool isNarrow(const std::string& doorType);

/// Whether people look for an amenity of that category. Ways up and down are found by routes.
bool isDestination(const std::string& amenityCategory);

}  // namespace KorvaniTools
