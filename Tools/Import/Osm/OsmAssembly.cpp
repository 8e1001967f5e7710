#include "Import/Osm/OsmAssembly.hpp"

#include <utility>

#include "Import/Osm/AreaAssembly.hpp"
#include "Import/Osm/OsmRoles.hpp"

namespace KorvaniTools {
namespace {

constexpr Remarks::Kind kCornersMissing{"way has corners that are not in the file",
                                        "ways have corners that are not in the file"};
constexpr Remarks::Kind kAreaIncomplete{
    "multipolygon is incomplete and was put together of the rings that close",
    "multipolygons are incomplete and were put together of the rings that close"};
constexpr Remarks::Kind kAreaLost{"multipolygon has no outline that closes and was left out",
                                  "multipolygons have no outline that closes and were left out"};

}  // namespace

OsmAssembly::OsmAssembly(Find find, Near near, OsmExtract& extract)
    : find_(std::move(find)), near_(std::move(near)), extract_(extract) {}

std::vector<OsmAssembly::Corners> OsmAssembly::pieces(const KeptWay& way, bool trim,
                                                      bool& missing) const {
  std::vector<Corners> pieces(1);
  for (const std::int64_t node : way.nodes) {
    const Coordinate* const position = find_(node);
    missing = missing || (position == nullptr && !trim);
    if (position != nullptr && (!trim || near_(*position))) {
      pieces.back().push_back({node, *position});
    } else if (!pieces.back().empty()) {
      pieces.emplace_back();
    }
  }
  if (pieces.back().empty()) pieces.pop_back();
  return pieces;
}

void OsmAssembly::addWay(const KeptWay& way) const {
  const bool trim = way.outdoors && roleOf(way.tags, way.closed()) == WayRole::line;
  bool missing = false;
  for (Corners& corners : pieces(way, trim, missing)) {
    if (corners.size() < 2) continue;
    const bool whole = corners.size() == way.nodes.size();
    extract_.ways.push_back({way.id, std::move(corners), whole && way.closed(), way.tags});
  }
  if (missing) extract_.remarks.add(kCornersMissing, "way/" + std::to_string(way.id));
}

void OsmAssembly::addArea(const KeptRelation& relation, const KeptWays& ways) const {
  OsmArea area{relation.id, {}, {}, relation.tags};
  std::vector<AreaMember> members;
  bool missing = false;
  for (const auto& [id, inner] : relation.members) {
    const KeptWay* const way = ways.find(id);
    missing = missing || way == nullptr;
    if (way == nullptr) continue;
    area.nodes.insert(area.nodes.end(), way->nodes.begin(), way->nodes.end());
    for (Corners& corners : pieces(*way, false, missing)) {
      members.push_back({std::move(corners), inner});
    }
  }
  AssembledArea assembled = assembleArea(members);
  area.polygons = std::move(assembled.polygons);
  if (area.polygons.empty()) {
    extract_.remarks.add(kAreaLost, area.source());
    return;
  }
  if (missing || assembled.incomplete) extract_.remarks.add(kAreaIncomplete, area.source());
  extract_.areas.push_back(std::move(area));
}

}  // namespace KorvaniTools
