#pragma once

#include <vector>

#include "Building/Building.hpp"
#include "Json/EngineJson.hpp"
#include "Support/LevelNames.hpp"
#include "Support/PlaceFinder.hpp"
#include "Support/RouteSearch.hpp"

namespace KorvaniTools {

/// A route as a GeoJSON FeatureCollection to look at in a GIS program.
///
/// `properties.kind` of its features is "start", "destination" (points), "route" (a line for
/// each stretch on one level), "levelChange" (a line, with `toLevel` and `type`) and
/// "instruction" (a point with its `text`). All have a `level`. The collection carries the
/// building's attribution and licence, the route's totals, and whether it is a direct line.
OrderedJson routeGeoJson(const RouteAnswer& answer, const Spot& start,
                         const std::vector<Spot>& destinations, const Building& building,
                         const LevelNames& levels);

}  // namespace KorvaniTools
