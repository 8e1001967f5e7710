#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "Buildings/PlainBuilding.hpp"
#include "Peers/BoostWalls.hpp"
#include "Peers/VisibleNode.hpp"

namespace KorvaniBenchmarks {

/// The nodes and walls of one level in R-trees of Boost.Geometry.
class BoostLevel {
 public:
  BoostLevel(const PlainBuilding& building, std::int64_t level);
  ~BoostLevel();
  BoostLevel(const BoostLevel&) = delete;
  BoostLevel& operator=(const BoostLevel&) = delete;

  /// The nodes in sight of a position: those at most 2.5 times as far as the nearest one that is in
  /// sight, in degrees; nearest first in metres.
  std::vector<VisibleNode> inSightOf(Coordinate position) const;

  const BoostWalls& walls() const { return walls_; }

 private:
  struct Tree;
  std::unique_ptr<Tree> tree_;
  BoostWalls walls_;
};

}  // namespace KorvaniBenchmarks
