#pragma once

#include <string>

#include "Building/Building.hpp"

namespace KorvaniTools {

/// The text of a building file (`NAME.building.geojson`): a GeoJSON feature collection, a feature
/// a line, in the order regions, nodes, edges, obstacles, places, rooms.
///
/// Read back by `parseBuilding` it is the same building, the indexes of features and the reader's
/// summary aside. Regions that a reader made (`BuildingRegion::made`) are not written; it makes
/// them again. What has its defaults is left out. An obstacle of several lines is a polygon, whose
/// rings the reader closes. Cost: linear, about two seconds per million features.
///
/// @pre every node id is unique and every edge's ends exist
std::string buildingText(const Building& building);

}  // namespace KorvaniTools
