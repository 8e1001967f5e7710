#pragma once

/// Internal. Picks out of an OpenStreetMap file what a floor plan needs.

#include <filesystem>

#include "Import/Osm/OsmData.hpp"
#include "Import/Osm/OsmReader.hpp"

namespace KorvaniTools {

/// What `readOsm` says that is kept, in the file's order, ways outdoors behind the others.
/// @throws InputError
OsmExtract extractOsm(const std::filesystem::path& file, const OsmOptions& options);

}  // namespace KorvaniTools
