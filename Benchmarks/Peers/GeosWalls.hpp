#pragma once

#include <memory>

#include "Peers/PlaneLines.hpp"

namespace KorvaniBenchmarks {

/// GEOS: all walls as one prepared geometry, whose index is made before the first question.
class GeosWalls {
 public:
  explicit GeosWalls(const PlaneLines& walls);
  ~GeosWalls();
  GeosWalls(const GeosWalls&) = delete;
  GeosWalls& operator=(const GeosWalls&) = delete;

  /// Whether a wall has a point in common with the line.
  bool meet(const PlaneSegment& line) const;

 private:
  struct Prepared;
  std::unique_ptr<Prepared> prepared_;
};

}  // namespace KorvaniBenchmarks
