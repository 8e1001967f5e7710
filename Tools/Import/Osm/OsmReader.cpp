#include "Import/Osm/OsmReader.hpp"

#include <utility>

#include "Import/Osm/OsmPasses.hpp"
#include "Import/Osm/OsmPlan.hpp"

namespace KorvaniTools {

FloorPlan readOsm(const std::filesystem::path& file, const OsmOptions& options) {
  OsmExtract extract = extractOsm(file, options);
  FloorPlan plan = OsmPlan(extract).make();
  plan.name = options.name ? options.name : extract.buildingName;
  plan.attribution = "© OpenStreetMap contributors, ODbL 1.0";
  plan.licence = "ODbL-1.0";
  plan.remarks = std::move(extract.remarks);
  return plan;
}

}  // namespace KorvaniTools
