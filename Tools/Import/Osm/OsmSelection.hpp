#pragma once

/// Internal. What the passes over an OpenStreetMap file hold while they run.

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "Building/Rectangle.hpp"
#include "Import/Osm/NodeTable.hpp"
#include "Import/Osm/OsmData.hpp"
#include "Import/Osm/OsmRoles.hpp"

namespace KorvaniTools {

/// A way whose corners have no positions yet.
struct KeptWay {
  std::int64_t id = 0;
  std::vector<std::int64_t> nodes;
  OsmTags tags;
  bool own = false;       ///< kept for its own sake, not only as a part of a relation
  bool outdoors = false;  ///< kept since it is near
  bool closed() const { return nodes.size() > 3 && nodes.front() == nodes.back(); }
};

struct KeptRelation {
  std::int64_t id = 0;
  OsmTags tags;
  std::vector<std::pair<std::int64_t, bool>> members;  ///< ways, and whether they are inner
  bool outdoors = false;
};

/// Ways by their ids, in the order in which they came.
class KeptWays {
 public:
  /// Adds a way, or completes the one with that id.
  void add(KeptWay way);
  const KeptWay* find(std::int64_t id) const;
  std::vector<KeptWay>& all() { return ways_; }
  const std::vector<KeptWay>& all() const { return ways_; }

 private:
  std::vector<KeptWay> ways_;
  std::unordered_map<std::int64_t, std::size_t> byId_;
};

/// A building with a name, and where as much of it lies as is near something indoors.
struct NamedBuilding {
  std::string name;
  Rectangle rectangle;
};

}  // namespace KorvaniTools
