#pragma once

/// Internal. From selected ways and relations, whose corners are ids, to their shapes.

#include <functional>
#include <unordered_set>

#include "Import/Osm/OsmData.hpp"
#include "Import/Osm/OsmSelection.hpp"

namespace KorvaniTools {

class OsmAssembly {
 public:
  /// The position of a node; null when it is not in the file.
  using Find = std::function<const Coordinate*(std::int64_t)>;
  /// Whether a corner outdoors is near enough.
  using Near = std::function<bool(Coordinate)>;

  /// Adds to `extract`, which must outlive this.
  OsmAssembly(Find find, Near near, OsmExtract& extract);

  /// Adds the way, or the pieces of it that are left: between corners that are missing or, for a
  /// line outdoors, too far away.
  void addWay(const KeptWay& way) const;

  /// Adds the relation as far as its ways close rings, with what their tags say beyond its own when
  /// an outline is drawn as the same thing once more. Those ways are told by `isDrawnTwice` then.
  void addArea(const KeptRelation& relation, const KeptWays& ways);

  /// Whether the way is the outline of a relation that has been added and says the same.
  bool isDrawnTwice(const KeptWay& way) const { return outlines_.contains(way.id); }

 private:
  using Corners = std::vector<PlanVertex>;
  std::vector<Corners> pieces(const KeptWay& way, bool trim, bool& missing) const;

  void takeOutlines(const KeptRelation& relation, const KeptWays& ways, OsmArea& area);

  Find find_;
  Near near_;
  OsmExtract& extract_;
  std::unordered_set<std::int64_t> outlines_;
};

}  // namespace KorvaniTools
