#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "Buildings/PlainBuilding.hpp"
#include "Peers/BoostLevel.hpp"
#include "Peers/PlaneLines.hpp"

namespace KorvaniBenchmarks {

/// A place in a building.
struct LevelPlace {
  Coordinate coordinate;
  std::int64_t level = 0;
};

/// Where a position was put: on a node, or on the edge between two. `distance` in metres.
struct MappedPlace {
  double distance = 0;
  Coordinate coordinate;
  std::uint32_t node = 0;
  std::optional<std::uint32_t> other;  ///< the edge's other end; absent on a node
};

/// Maps positions onto a building's graph as the engine does, with R-trees of Boost.Geometry.
class BoostMapping {
 public:
  explicit BoostMapping(const PlainBuilding& building);
  ~BoostMapping();
  BoostMapping(const BoostMapping&) = delete;
  BoostMapping& operator=(const BoostMapping&) = delete;

  struct Way {
    std::uint32_t to;
    double distance;
    double multiplicator;
  };

  /// A node's ways.
  struct Ways {
    const Way* first;
    const Way* last;
    const Way* begin() const { return first; }
    const Way* end() const { return last; }
  };
  Ways waysOf(std::uint32_t node) const {
    return {&ways_[firstWay_[node]], &ways_[firstWay_[node + 1]]};
  }

  const LevelPlace& placeOf(std::uint32_t node) const { return places_[node]; }
  const BoostLevel& level(std::int64_t number) const {
    return *levels_[static_cast<std::size_t>(number)];
  }

  /// The nearest place of the graph; absent when no node is in sight.
  std::optional<MappedPlace> map(const LevelPlace& position) const;

  /// The nearest place on that node or its edges, as far as in sight: the node through the walls of
  /// one level, the edges through those of the position's level. `usedOwnWalls` is set when the
  /// latter were asked.
  std::optional<MappedPlace> mapOnto(std::uint32_t node, const LevelPlace& position,
                                     const BoostWalls& nodeWalls, bool& usedOwnWalls) const;

  /// The nodes that stand for a destination.
  std::vector<std::uint32_t> nodesNear(const LevelPlace& destination, std::size_t most) const;

 private:
  std::optional<MappedPlace> project(const LevelPlace& position, PlanePoint onPlane,
                                     std::uint32_t node, std::uint32_t other,
                                     bool& askedWalls) const;
  bool isWorthLookingAt(Coordinate position, const VisibleNode& candidate, const Way& way) const;

  std::vector<LevelPlace> places_;
  std::vector<PlanePoint> planePlaces_;
  std::vector<std::size_t> firstWay_;
  std::vector<Way> ways_;
  std::vector<std::unique_ptr<BoostLevel>> levels_;
};

}  // namespace KorvaniBenchmarks
