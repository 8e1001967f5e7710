#pragma once

/// Internal. Onto which nodes the engine maps a place.

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

#include "Building/Building.hpp"
#include "Lint/WalkGraph.hpp"
#include "Lint/WallIndex.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Localisation/RegionFinder.hpp"

namespace KorvaniTools {

/// What the engine makes of a position, as indexes into `Building::nodes`.
struct PlaceNodes {
  NodeIndexes arrival;    ///< the nodes that a route to it may end at; none when it sees none
  NodeIndexes departure;  ///< the nodes that a route from it may start at: one, or an edge's two
};

/// Maps positions as the engine does, with its rules of regions, sight and nearness, but with
/// walls that are found by where they lie: a position costs about as much as measuring the distance
/// to every node of its region.
///
/// A position belongs to the region that the engine's own finder gives. A route to it ends at up to
/// four nodes in sight; a route from it starts at the nearest node in sight, or at the ends of an
/// edge of one of these that is nearer.
///
/// One thread at a time. Refers to `building`.
class PlaceSight {
 public:
  explicit PlaceSight(const Building& building);
  ~PlaceSight();
  PlaceSight(const PlaceSight&) = delete;
  PlaceSight& operator=(const PlaceSight&) = delete;

  PlaceNodes nodesFor(Coordinate position, std::int64_t level);

  /// The region that a position belongs to, as index into `Building::regions`; their number when
  /// there are none.
  std::size_t regionFor(Coordinate position, std::int64_t level) const;

 private:
  struct Region;
  class Search;
  class Line;

  const Region& regionAt(std::size_t index);

  const Building& building_;
  std::shared_ptr<KorvaniNavigation::KRVNavGraph> graph_;
  std::unordered_map<std::int64_t, std::size_t> indexes_;
  std::shared_ptr<KorvaniNavigation::RegionFinder> finder_;
  std::map<std::size_t, std::unique_ptr<Region>> regions_;  // made when they are asked for
};

}  // namespace KorvaniTools
