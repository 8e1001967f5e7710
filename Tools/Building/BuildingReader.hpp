#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "Building/Building.hpp"
#include "Building/BuildingError.hpp"

namespace KorvaniTools {

/// Reads building files (`NAME.building.geojson`): GeoJSON feature collections whose features
/// are the regions, nodes, edges, obstacles, places and rooms of a building.
///
///     try {
///       const Building building = readBuilding("terminal.building.geojson");
///       navigation.provideGraph(makeGraph(building));
///     } catch (const BuildingError& error) {
///       std::cerr << error.what() << '\n';
///     }
///
/// A file is read whole or not at all: the first thing wrong with it is thrown as a
/// `BuildingError`. Features may stand in any order and name what comes later. Every node and
/// obstacle line of the result has its regions; levels without a region of their own have got
/// one. Cost: linear in the file's size, about two seconds per million features.

/// Reads the file at `path`.
/// @throws BuildingError when it cannot be read or is not a building file
Building readBuilding(const std::filesystem::path& path);

/// Reads a building from `text`; errors name it `file`.
/// @throws BuildingError when it is not a building
Building parseBuilding(std::string_view text, const std::string& file);

}  // namespace KorvaniTools
