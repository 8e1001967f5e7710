#pragma once

#include <memory>

#include "Peers/PlaneLines.hpp"

namespace KorvaniBenchmarks {

/// Boost.Geometry: an R-tree of all wall segments, packed when it is made.
class BoostWalls {
 public:
  explicit BoostWalls(const PlaneLines& walls);
  ~BoostWalls();
  BoostWalls(const BoostWalls&) = delete;
  BoostWalls& operator=(const BoostWalls&) = delete;

  /// Whether a wall has a point in common with the line.
  bool meet(const PlaneSegment& line) const;

 private:
  struct Tree;
  std::unique_ptr<Tree> tree_;
};

}  // namespace KorvaniBenchmarks
