#pragma once

/// Internal. What the passes over an OpenStreetMap file have kept of it.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "FloorPlan/FloorPlan.hpp"
#include "Import/Osm/OsmTags.hpp"

namespace KorvaniTools {

struct OsmNode {
  std::int64_t id = 0;
  Coordinate coordinate;
  OsmTags tags;

  std::string source() const { return "node/" + std::to_string(id); }
};

/// A way, or a piece of one that has lost corners.
struct OsmWay {
  std::int64_t id = 0;
  std::vector<PlanVertex> corners;
  bool closed = false;  ///< the first corner is the last one as well
  OsmTags tags;

  std::string source() const { return "way/" + std::to_string(id); }
};

/// A multipolygon relation, put together of its ways.
struct OsmArea {
  std::int64_t id = 0;
  std::vector<std::int64_t> nodes;                             ///< of all its ways
  std::vector<std::vector<std::vector<Coordinate>>> polygons;  ///< as `PlanCell::polygons`
  OsmTags tags;

  std::string source() const { return "relation/" + std::to_string(id); }
};

struct OsmExtract {
  std::vector<OsmNode> nodes;
  std::vector<OsmWay> ways;
  std::vector<OsmArea> areas;
  std::optional<std::string> buildingName;
  Remarks remarks;
};

}  // namespace KorvaniTools
