#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "Buildings/PlainBuilding.hpp"
#include "Peers/GeosWalls.hpp"
#include "Peers/VisibleNode.hpp"

namespace KorvaniBenchmarks {

/// The nodes of one level in sight of a position, with nanoflann's tree of the nodes, in degrees,
/// and GEOS for the walls.
class NanoflannNodes {
 public:
  explicit NanoflannNodes(const PlainBuilding& building, std::int64_t level);
  ~NanoflannNodes();
  NanoflannNodes(const NanoflannNodes&) = delete;
  NanoflannNodes& operator=(const NanoflannNodes&) = delete;

  /// Those at most 2.5 times as far as the nearest one that is in sight, in degrees; nearest first
  /// in metres.
  std::vector<VisibleNode> inSightOf(Coordinate position) const;

 private:
  struct Tree;
  std::unique_ptr<Tree> tree_;
};

}  // namespace KorvaniBenchmarks
