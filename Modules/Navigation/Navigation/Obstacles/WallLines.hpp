#pragma once

// Internal. Pieces of walls by the straight lines they lie on.
//
//   const WallLines lines(pieces, count, low, extent);
//   if (lines.mayHold(a, b)) use(lines.piecesOn(a, b, extent, pieces));
//
// `piecesOn` finds every piece that forms an angle with the line from a to b whose sine is at most
// kLeastSine, and whose ends are within 2 * kLeastSine * `extent` of the same straight line,
// however far along it they are. It searches a sorted list; `mayHold` looks at two bits, and tells
// nearly always that there is no such piece.
//
// For `mayHold` directions and distances are sorted into buckets. These are wide enough for the
// lines of a question to be known roughly, and narrow enough for the walls of a building to leave
// most of them free. A piece is noted in its own bucket, and in the next where it is close to it.
//
// Immutable once made: any number of threads may ask.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Platform/MapPoint.hpp"

namespace KorvaniNavigation {

using KorvaniPlatform::MKMapPoint;

// A straight piece of a wall.
struct WallPiece {
  MKMapPoint from;
  MKMapPoint to;
};

class WallLines {
 public:
  static constexpr double kLeastSine = 1e-8;
  // How far the direction of a line may be wrong for `mayHold`: the longer side of the rectangle
  // around it has to be so many times longer than its ends may be wrong in x and y.
  static constexpr double kLeastLength = 1e7;

  WallLines() = default;

  // Of the first `count` pieces, all of some length. `extent` is the longer side of the rectangle
  // around all pieces and all lines that `mayHold` will be asked about, and `low` a corner of it or
  // of a smaller one around the pieces.
  WallLines(const std::vector<WallPiece>& pieces, std::size_t count, MKMapPoint low, double extent);

  // Whether `piecesOn` may find anything for the line through these points, or through others that
  // are a kLeastLength-th of its length away at most. True without need once in a hundred times.
  bool mayHold(MKMapPoint a, MKMapPoint b) const;

  // The ones on that line of the pieces that this was made of, and some others. `extent` is the
  // longer side of the rectangle around all pieces and the line, which has some length.
  std::vector<std::uint32_t> piecesOn(MKMapPoint a, MKMapPoint b, double extent,
                                      const std::vector<WallPiece>& pieces) const;

  std::size_t bytes() const;

 private:
  // Where a line runs: by these pieces are sorted.
  struct Course {
    std::int32_t direction;
    double offset;
  };

  Course courseOf(MKMapPoint from, MKMapPoint to) const;
  void mark(MKMapPoint from, MKMapPoint to);
  void markOffsets(MKMapPoint point, std::int32_t direction);
  MKMapPoint placeOf(MKMapPoint point) const;
  double offsetInBuckets(MKMapPoint point, std::int32_t direction) const;
  std::size_t wordOf(std::uint64_t key) const;

  std::vector<std::uint32_t> sorted_;  // by course, which is told anew: searches are rare
  std::vector<std::uint64_t> marks_;
  MKMapPoint low_;
  double extentsAUnit_ = 0;
};

}  // namespace KorvaniNavigation
