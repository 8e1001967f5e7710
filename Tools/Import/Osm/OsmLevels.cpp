#include "Import/Osm/OsmLevels.hpp"

#include <algorithm>
#include <iterator>

#include "Import/Osm/LevelText.hpp"
#include "Import/Osm/OsmRoles.hpp"

namespace KorvaniTools {
namespace {

constexpr Remarks::Kind kUnreadable{"feature has a level that cannot be read",
                                    "features have levels that cannot be read"};
constexpr Remarks::Kind kNoLevel{"feature indoors has no level and was put on level 0",
                                 "features indoors have no level and were put on level 0"};

const PlanLevelSet kGround{0};

PlanLevelSet commonLevels(const PlanLevelSet& a, const PlanLevelSet& b) {
  PlanLevelSet common;
  std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(common));
  return common;
}

}  // namespace

OsmLevels::OsmLevels(OsmExtract& extract) : extract_(extract) {
  noteNames();
  for (const OsmNode& node : extract.nodes) uses_[node.id];
  for (const OsmWay& way : extract.ways) {
    if (hasLevel(way.tags) || way.closed) continue;
    uses_[way.corners.front().node];
    uses_[way.corners.back().node];
  }
  noteUses();
}

bool OsmLevels::mustInfer(const OsmWay& way) {
  return !hasLevel(way.tags) && !way.closed && way.tags.is("highway", {"steps", "elevator"});
}

void OsmLevels::noteUse(std::int64_t node, const PlanLevelSet& levels) {
  const auto entry = uses_.find(node);
  if (entry != uses_.end()) entry->second = united(entry->second, levels);
}

void OsmLevels::noteNames() {
  const auto note = [this](const OsmTags& tags) {
    const PlanLevelSet levels = parseLevels(tags["level"]).levels;
    if (tags["indoor"] != "level" || levels.size() != 1) return;
    for (const char* key : {"level:ref", "name"}) {
      if (tags.has(key)) named_.emplace(tags[key], levels.front());
    }
  };
  for (const OsmWay& way : extract_.ways) note(way.tags);
  for (const OsmArea& area : extract_.areas) note(area.tags);
}

void OsmLevels::noteUses() {
  for (const OsmWay& way : extract_.ways) {
    const WayRole role = roleOf(way.tags, way.closed);
    if (role == WayRole::levelOutline || role == WayRole::site) continue;
    PlanLevelSet levels = ownLevels(way.source(), way.tags);
    if (role == WayRole::line) {
      // Steps and lifts pass through levels; where their ends are, they do not tell. Lines without
      // a level are where the others are.
      if (levels.size() > 1) continue;
    } else if (levels.empty() && wayInterest(way.tags, way.closed) == Interest::indoors) {
      levels = kGround;
    }
    for (const PlanVertex& corner : way.corners) noteUse(corner.node, levels);
  }
  for (const OsmArea& area : extract_.areas) {
    PlanLevelSet levels = ownLevels(area.source(), area.tags);
    if (levels.empty() && wayInterest(area.tags, true) == Interest::indoors) levels = kGround;
    for (const std::int64_t node : area.nodes) noteUse(node, levels);
  }
}

PlanLevelSet OsmLevels::stated(const std::string& source, const OsmTags& tags,
                               const char* key) const {
  LevelText text = parseLevels(tags[key]);
  for (const std::string& piece : text.unread) {
    const auto named = named_.find(piece);
    if (named == named_.end()) {
      extract_.remarks.add(kUnreadable, source);
    } else {
      text.levels = united(text.levels, {named->second});
    }
  }
  return text.levels;
}

PlanLevelSet OsmLevels::ownLevels(const std::string& source, const OsmTags& tags) const {
  return united(stated(source, tags, "level"), stated(source, tags, "repeat_on"));
}

PlanLevelSet OsmLevels::ofUses(std::int64_t node) const {
  const auto entry = uses_.find(node);
  return entry == uses_.end() ? PlanLevelSet() : entry->second;
}

PlanLevelSet OsmLevels::groundFor(const std::string& source, const OsmTags& tags) const {
  if (isIndoor(tags)) extract_.remarks.add(kNoLevel, source);
  return kGround;
}

PlanLevelSet OsmLevels::ofArea(const std::string& source, const OsmTags& tags) const {
  PlanLevelSet levels = ownLevels(source, tags);
  return levels.empty() ? groundFor(source, tags) : levels;
}

std::vector<PlanLevelSet> OsmLevels::ofLine(const OsmWay& way) const {
  if (mustInfer(way)) {
    const PlanLevelSet first = ofUses(way.corners.front().node);
    const PlanLevelSet last = ofUses(way.corners.back().node);
    return {united(first.empty() ? kGround : first, last.empty() ? kGround : last)};
  }
  const PlanLevelSet levels = stated(way.source(), way.tags, "level");
  const PlanLevelSet repeated = stated(way.source(), way.tags, "repeat_on");
  if (levels.empty() && repeated.empty()) {
    const PlanLevelSet common =
        commonLevels(ofUses(way.corners.front().node), ofUses(way.corners.back().node));
    return {common.size() == 1 ? common : groundFor(way.source(), way.tags)};
  }
  std::vector<PlanLevelSet> sets;
  if (!levels.empty()) sets.push_back(levels);
  for (const double level : repeated) {
    PlanLevelSet moved{level};
    // What joins 0 and 1 and is repeated on 2 joins 2 and 3 there.
    for (std::size_t i = 1; i < levels.size(); ++i) {
      moved.push_back(level + levels[i] - levels.front());
    }
    if (std::find(sets.begin(), sets.end(), moved) == sets.end()) sets.push_back(moved);
  }
  return sets;
}

PlanLevelSet OsmLevels::ofNode(const OsmNode& node) const {
  PlanLevelSet levels = ownLevels(node.source(), node.tags);
  if (levels.empty()) levels = ofUses(node.id);
  return levels.empty() ? groundFor(node.source(), node.tags) : levels;
}

PlanLevelSet OsmLevels::ofLift(const OsmNode& node) const {
  PlanLevelSet levels = ownLevels(node.source(), node.tags);
  if (levels.size() > 1) return levels;
  const PlanLevelSet all = united(levels, ofUses(node.id));
  return all.empty() ? groundFor(node.source(), node.tags) : all;
}

}  // namespace KorvaniTools
