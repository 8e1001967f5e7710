#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "Peers/BoostMapping.hpp"
#include "Peers/LemonPaths.hpp"

namespace KorvaniBenchmarks {

/// A stretch of a route; `heading` in degrees, `distance` in metres.
struct AssembledStep {
  LevelPlace start;
  LevelPlace end;
  double distance = 0;
  double multiplicator = 1;
  double heading = 0;
};

/// Where to turn, by how many degrees, and how far to walk before.
struct AssembledTurn {
  LevelPlace place;
  double distance = 0;
  double turn = 0;
  std::int64_t levels = 0;
};

struct AssembledRoute {
  std::vector<AssembledStep> steps;
  std::vector<AssembledTurn> turns;
  double distance = 0;  ///< metres
  double time = 0;      ///< seconds
};

/// What a routing task does for one position, built from Boost.Geometry's R-trees and LEMON: map
/// the position and the destinations, search, walk from the position to the graph and from the
/// graph to the destination, cut corners, make steps and turns. Beside that it makes no objects for
/// a host to keep, and no graph of the route.
class AssembledRoutes {
 public:
  explicit AssembledRoutes(const PlainBuilding& building);

  /// Absent when the position or all of the destinations see no node, or there is no way.
  std::optional<AssembledRoute> find(const LevelPlace& position,
                                     const std::vector<LevelPlace>& destinations);

 private:
  std::vector<AssembledStep> stretchesAlong(const std::vector<std::uint32_t>& nodes) const;
  /// Adds the way to the destination, and says which level's walls were asked last.
  std::int64_t addEnd(std::vector<AssembledStep>& stretches, std::uint32_t last,
                      std::int64_t startLevel, const std::vector<LevelPlace>& destinations) const;

  BoostMapping mapping_;
  LemonPaths paths_;
};

}  // namespace KorvaniBenchmarks
