#pragma once

/// Internal. On which levels the features of an extract are.

#include <functional>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "Import/Osm/OsmData.hpp"

namespace KorvaniTools {

class OsmLevels {
 public:
  /// Refers to `extract` and adds remarks to it: about levels that cannot be read, and things
  /// indoors without any. A level may be written as an outline with `indoor=level` calls it.
  explicit OsmLevels(OsmExtract& extract);

  /// Where floor, a wall or an outline is: on all its levels, `repeat_on` among them. Without
  /// any it is on level 0.
  PlanLevelSet ofArea(const std::string& source, const OsmTags& tags) const;

  /// The levels that a line joins. A line that is repeated on other levels gives a set for each.
  /// Steps without a level join the levels of what they meet; another line without one is on the
  /// level that what it meets at both ends has in common, or else on level 0.
  std::vector<PlanLevelSet> ofLine(const OsmWay& way) const;

  /// Where a node is: on its own levels, else those of the ways through it, else on level 0.
  PlanLevelSet ofNode(const OsmNode& node) const;

  /// Where a lift stops: its own levels, and when it lists one at most, those of the ways
  /// through it as well.
  PlanLevelSet ofLift(const OsmNode& node) const;

 private:
  PlanLevelSet stated(const std::string& source, const OsmTags& tags, const char* key) const;
  PlanLevelSet ownLevels(const std::string& source, const OsmTags& tags) const;
  PlanLevelSet ofUses(std::int64_t node) const;
  PlanLevelSet groundFor(const std::string& source, const OsmTags& tags) const;
  void noteUse(std::int64_t node, const PlanLevelSet& levels);
  void noteUses();
  void noteNames();
  static bool mustInfer(const OsmWay& way);

  OsmExtract& extract_;
  std::map<std::string, double, std::less<>> named_;     ///< levels by what they are called
  std::unordered_map<std::int64_t, PlanLevelSet> uses_;  ///< of the nodes that are asked for
};

}  // namespace KorvaniTools
