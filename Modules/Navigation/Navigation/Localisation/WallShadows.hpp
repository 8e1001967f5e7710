#pragma once

// Internal. What some walls hide from one place, so that what lies behind them need not be compared
// with walls at all.
//
//   WallShadows shadows(mapPoint);
//   shadows.add(*walls.firstMet(mapPoint, node));
//   if (shadows.hides(otherNode)) ...       // segmentsMeet(...) is true for one of the walls added
//
// A wall hides what lies in the directions between its ends and beyond its line. `hides` answers
// for the formula of `segmentsMeet` as it rounds, not for ideal geometry, so it says yes only where
// the formula cannot lose its way: beyond the line by kClear, and not within kSliver of the
// direction of a wall's end. There the fractions r and s keep from 0 and 1 by more than their
// rounding, which is at most 16 * 2^-53 times the ratio of the lengths that go into them; walls
// that are seen so that this ratio gets large are not taken in, or not up to their ends.
//
// Walls that share a corner hide what is behind both, but for the sliver in the direction of the
// corner. An area is taken as hidden in spite of slivers, and of wider gaps between walls, if the
// caller sees to the nodes in them: `hidesButForGaps` names these, most of them only once in the
// life of the object. Most end at another wall not far behind the corner, their lid.
//
// A few comparisons a question; a wall that is added takes its place among those it overlaps. One
// thread at a time.

#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

#include "Navigation/Localisation/Wedge.hpp"
#include "Navigation/Obstacles/WallGrid.hpp"
#include "Platform/MapPoint.hpp"

namespace KorvaniNavigation {

class WallShadows {
 public:
  // Of the distance of a wall's line, or of a length.
  static constexpr double kClear = 1e-6;
  // Half the width of a sliver, in the measure of directions.
  static constexpr double kSliver = 1e-8;
  static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

  // What a wall hides. Directions grow with the angle: from 0 for that of x to 1 for that of y, and
  // on to 4; by half the angle at least and by the angle at most, in radians. Within those of the
  // wall, a point is hidden where its cross product with `along` is `limit` or more.
  struct Shadow {
    double start = 0;
    double end = 0;  // less than `start` when the direction of x lies between
    MKMapPoint along;
    double limit = 0;
    double namedEnd = -1;  // up to where the gap from its end on was named
  };

  // Directions that no shadow covers, or in slivers.
  struct Gap {
    double start = 0;
    double end = 0;
    // How far the wall before it ends, as the sum of the distances in x and in y.
    double near = 0;
    std::size_t before = kNone;  // the place of that wall's shadow
  };

  explicit WallShadows(MKMapPoint viewpoint) : viewpoint_(viewpoint) {}

  // From now on `wall` is among those that hide.
  void add(const WallGrid::Piece& wall);

  // Whether a point is sure to be hidden.
  bool hides(MKMapPoint point) const;

  // Whether all points of a rectangle are sure to be hidden but for those in gaps, each of which is
  // `widest` at most. If so, `gaps` holds those of them that no earlier call has named.
  bool hidesButForGaps(MKMapPoint low, MKMapPoint high, double widest, std::vector<Gap>& gaps);

  // All of a gap, or what is nearer than `length`.
  Wedge wedgeOf(const Gap& gap, double length = std::numeric_limits<double>::infinity()) const {
    return {viewpoint_, towards(gap.start), towards(gap.end), length};
  }

  // A gap up to where that wall hides all points in it; absent if it does not.
  std::optional<Wedge> wedgeUpTo(const WallGrid::Piece& wall, const Gap& gap) const;

 private:
  // A rectangle as seen from the viewpoint: corners relative to it, and the directions it covers.
  struct View {
    MKMapPoint low;
    MKMapPoint high;
    double start = 0;
    double end = 0;  // less than `start` when the direction of x lies between
  };

  static double directionOf(MKMapPoint vector);
  static MKMapPoint towards(double direction);
  static bool isBehind(const Shadow& shadow, const View& view);
  static bool isNearer(const Shadow& a, const Shadow& b, double direction);

  bool standsOn(const WallGrid::Piece& wall) const;
  std::optional<Shadow> shadowOf(const WallGrid::Piece& wall) const;
  void insert(const Shadow& shadow);
  View viewOf(MKMapPoint low, MKMapPoint high) const;
  bool isBesideOwnWall(const View& view) const;
  // Whether the viewpoint is within the rectangle, or on its border.
  static bool isWithin(const View& view);

  // Calls `visit(start, end, before)` for the directions of a view that are not sure to be hidden,
  // with the place of the shadow before them, until it returns false.
  template <class Visit>
  bool eachGap(const View& view, Visit visit) const;
  template <class Visit>
  bool eachGap(double start, double end, const View& view, Visit visit) const;
  std::size_t firstAfter(double direction) const;
  Gap gapAt(double start, double end, std::size_t before, double widest) const;

  MKMapPoint viewpoint_;
  std::vector<Shadow> shadows_;  // by direction; they do not overlap
  std::vector<Shadow> replacement_;
  MKMapPoint ownWall_;  // along the wall that the viewpoint is on
  bool isOnWall_ = false;
};

}  // namespace KorvaniNavigation
