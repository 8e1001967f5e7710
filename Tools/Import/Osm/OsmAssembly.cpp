#include "Import/Osm/OsmAssembly.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include "Import/Osm/AreaAssembly.hpp"
#include "Import/Osm/OsmRoles.hpp"

namespace KorvaniTools {
namespace {

/// Rooms that differ in one of these are two.
constexpr std::array<const char*, 5> kTelling{"name", "ref", "level", "repeat_on", "room"};

constexpr Remarks::Kind kCornersMissing{"way has corners that are not in the file",
                                        "ways have corners that are not in the file"};
constexpr Remarks::Kind kAreaIncomplete{
    "multipolygon is incomplete and was put together of the rings that close",
    "multipolygons are incomplete and were put together of the rings that close"};
constexpr Remarks::Kind kAreaLost{"multipolygon has no outline that closes and was left out",
                                  "multipolygons have no outline that closes and were left out"};

/// Whether a way with these tags is the same piece of floor as a relation with those.
bool saysTheSame(const OsmTags& way, const OsmTags& relation) {
  if (roleOf(way, true) != WayRole::cell || way["indoor"] != relation["indoor"]) return false;
  return std::all_of(kTelling.begin(), kTelling.end(), [&](const char* key) {
    return !way.has(key) || !relation.has(key) || way[key] == relation[key];
  });
}

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

void OsmAssembly::takeOutlines(const KeptRelation& relation, const KeptWays& ways, OsmArea& area) {
  if (roleOf(relation.tags, true) != WayRole::cell) return;
  for (const auto& [id, inner] : relation.members) {
    const KeptWay* const way = inner ? nullptr : ways.find(id);
    if (way == nullptr || !way->closed() || !saysTheSame(way->tags, relation.tags)) continue;
    outlines_.insert(id);
    area.tags.addMissing(way->tags);
  }
}

void OsmAssembly::addArea(const KeptRelation& relation, const KeptWays& ways) {
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
  takeOutlines(relation, ways, area);
  extract_.areas.push_back(std::move(area));
}

}  // namespace KorvaniTools
