#pragma once

/// Internal. The first step of the import: names of the venue and its buildings, and levels.

#include "Import/Imdf/ImdfModel.hpp"

namespace KorvaniTools {

/// Reads venue, buildings and levels into `model`.
/// @throws InputError when there is no level file
/// @throws BuildingError for whatever is wrong with a level
void readImdfLevels(ImdfModel& model);

}  // namespace KorvaniTools
