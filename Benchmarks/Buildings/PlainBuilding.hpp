#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Platform/Location.hpp"

namespace KorvaniBenchmarks {

using Coordinate = KorvaniPlatform::CLLocationCoordinate2D;

/// A building as plain arrays, from which the engine's graph and each peer's structures are made,
/// so that all of them work on the same data.
///
/// A node is known by its index, which is also its identifier in the engine. The order of the
/// edges is the order in which they are entered into a graph.
struct PlainBuilding {
  struct Node {
    Coordinate coordinate;
    std::int64_t level = 0;
  };

  /// One direction of a way; `distance` in metres.
  struct Edge {
    std::uint32_t from = 0;
    std::uint32_t to = 0;
    double distance = 0;
    double multiplicator = 1;
    bool barrierFree = true;

    double cost() const { return multiplicator * distance; }
  };

  /// An open polyline of at least two coordinates.
  struct Wall {
    std::int64_t level = 0;
    std::vector<Coordinate> line;
  };

  /// A level and the rectangle that holds all of it.
  struct Level {
    std::int64_t number = 0;
    Coordinate southWest;
    Coordinate northEast;
  };

  std::vector<Node> nodes;
  std::vector<Edge> edges;
  std::vector<Wall> walls;
  std::vector<Level> levels;  ///< their numbers are their indexes

  std::size_t wallSegments() const {
    std::size_t count = 0;
    for (const Wall& wall : walls) count += wall.line.size() - 1;
    return count;
  }
};

}  // namespace KorvaniBenchmarks
