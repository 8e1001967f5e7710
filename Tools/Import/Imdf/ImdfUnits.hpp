#pragma once

/// Internal. The second step of the import: units are cells, fixtures are walls.

#include "Import/Imdf/ImdfModel.hpp"

namespace KorvaniTools {

/// Reads units into `model`, whose levels are known.
/// @throws InputError when there is no unit file
void readImdfUnits(ImdfModel& model);

/// Reads fixtures and kiosks; people walk around both.
void readImdfFixtures(ImdfModel& model);

/// What people want to know of a feature beside its name: names in other languages, category,
/// telephone number and so on.
nlohmann::json furtherOf(const ImdfFeature& feature, const ImdfModel& model);

}  // namespace KorvaniTools
