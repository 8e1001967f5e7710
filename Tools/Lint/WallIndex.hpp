#pragma once

/// Internal. Straight walls, found by where they lie.

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "Building/Building.hpp"
#include "Platform/MapPoint.hpp"

namespace KorvaniTools {

using MapPoint = KorvaniPlatform::MKMapPoint;

/// A straight piece of an obstacle, on the engine's map plane.
struct WallPiece {
  std::size_t obstacle = 0;  ///< index into `Building::obstacles`
  MapPoint start;
  MapPoint end;
};

/// Where a line from `a` to `b` meets a wall: the fraction of the way from `a`, from 0 to 1. None
/// when it does not. This is the engine's own test, to the last bit: touching counts, and parallel
/// lines never meet.
std::optional<double> whereLineMeets(MapPoint a, MapPoint b, const WallPiece& wall);

/// Where a line from `a` to `b` runs along a wall, within `apart` units of it and for more than
/// that: the fraction of the way from `a` at which it has got to the middle of what they share.
/// None when it does not. The engine takes no notice of such a wall.
std::optional<double> whereLineRunsAlong(MapPoint a, MapPoint b, const WallPiece& wall,
                                         double apart);

/// The pieces of all obstacles of `building` that `wanted` says yes to, in the order of the file.
template <class Wanted>
std::vector<WallPiece> wallPieces(const Building& building, Wanted wanted) {
  std::vector<WallPiece> pieces;
  for (std::size_t i = 0; i < building.obstacles.size(); ++i) {
    for (const ObstacleLine& line : building.obstacles[i].lines) {
      if (!wanted(building.obstacles[i], line)) continue;
      for (std::size_t k = 1; k < line.positions.size(); ++k) {
        pieces.push_back({i, KorvaniPlatform::MKMapPointForCoordinate(line.positions[k - 1]),
                          KorvaniPlatform::MKMapPointForCoordinate(line.positions[k])});
      }
    }
  }
  return pieces;
}

/// Walls, and which of them a line meets.
///
/// Answers as testing every wall would. Cost of a line: the walls whose boxes its own touches, and
/// the logarithm of all. One thread at a time.
class WallIndex {
 public:
  explicit WallIndex(std::vector<WallPiece> pieces);
  ~WallIndex();
  WallIndex(WallIndex&& other) noexcept;
  WallIndex& operator=(WallIndex&& other) noexcept;

  /// The walls, in the order in which they were given.
  const std::vector<WallPiece>& pieces() const;

  /// Indexes of the walls that the line meets, ascending.
  std::vector<std::size_t> met(MapPoint a, MapPoint b) const;

  /// Indexes of the walls that lie near the line, ascending: all that come within a hundredth of a
  /// metre of it, and some that do not.
  std::vector<std::size_t> near(MapPoint a, MapPoint b) const;

  /// Index of one of the walls that the line meets, whichever; none when it meets none.
  std::optional<std::size_t> anyMet(MapPoint a, MapPoint b) const;

 private:
  class Tree;
  std::unique_ptr<Tree> tree_;
};

}  // namespace KorvaniTools
