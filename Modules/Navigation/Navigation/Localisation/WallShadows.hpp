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
// corner. An area is taken as hidden in spite of such slivers if the caller sees to the nodes in
// them: `hidesButForSlivers` gathers their directions, each once in the life of the object. Most
// end at another wall not far behind the corner, their lid.
//
// A few comparisons a question; a wall that is added takes its place among those it overlaps. One
// thread at a time.

#include <optional>
#include <vector>

#include "Navigation/Obstacles/WallGrid.hpp"
#include "Platform/MapPoint.hpp"

namespace KorvaniNavigation {

class WallShadows {
 public:
  // Of the distance of a wall's line, or of a length.
  static constexpr double kClear = 1e-6;
  // Half the width of a sliver, in the measure of directions.
  static constexpr double kSliver = 1e-8;

  // What a wall hides. Directions grow with the angle: from 0 for that of x to 1 for that of y, and
  // on to 4; by half the angle at least and by the angle at most, in radians. Within those of the
  // wall, a point is hidden where its cross product with `along` is `limit` or more.
  struct Shadow {
    double start = 0;
    double end = 0;  // less than `start` when the direction of x lies between
    MKMapPoint along;
    double limit = 0;
  };

  // The direction of a wall's end, and how many times as far as `direction` that end is.
  struct Sliver {
    MKMapPoint direction;
    double reach = 0;
  };

  explicit WallShadows(MKMapPoint viewpoint) : viewpoint_(viewpoint) {}

  // From now on `wall` is among those that hide.
  void add(const WallGrid::Piece& wall);

  // Whether a point is sure to be hidden.
  bool hides(MKMapPoint point);

  // Whether all points of a rectangle are sure to be hidden.
  bool hides(MKMapPoint low, MKMapPoint high);

  // Whether all points of a rectangle are sure to be hidden, but for those in slivers. The slivers
  // that it reaches into are added to `slivers`, unless an earlier call has done so.
  bool hidesButForSlivers(MKMapPoint low, MKMapPoint high, std::vector<Sliver>& slivers);

  // Whether a rectangle may hold a point of a sliver; true for every one that does.
  bool reachesInto(const Sliver& sliver, MKMapPoint low, MKMapPoint high) const;

  // The shadow of a wall that hides all points of a sliver beyond it; absent if it does not.
  std::optional<Shadow> lidOf(const Sliver& sliver, const WallGrid::Piece& wall) const;

  // Whether a rectangle is so far behind a wall's line that the wall hides what is in its
  // directions.
  bool isBehind(const Shadow& shadow, MKMapPoint low, MKMapPoint high) const;

 private:
  // A rectangle as seen from the viewpoint: corners relative to it, and the directions it covers.
  struct View {
    MKMapPoint low;
    MKMapPoint high;
    double start = 0;
    double end = 0;  // less than `start` when the direction of x lies between
  };

  // An end of a shadow.
  struct End {
    double direction = 0;
    const Shadow* shadow = nullptr;
  };

  static double directionOf(MKMapPoint vector);
  static MKMapPoint towards(double direction);
  static bool isBehind(const Shadow& shadow, const View& view);
  static Sliver sliverOf(const End& end);
  static bool isNearer(const Shadow& a, const Shadow& b, double direction);

  bool standsOn(const WallGrid::Piece& wall) const;
  std::optional<Shadow> shadowOf(const WallGrid::Piece& wall) const;
  void insert(const Shadow& shadow);
  View viewOf(MKMapPoint low, MKMapPoint high) const;
  bool isHidden(MKMapPoint low, MKMapPoint high);
  bool isBesideOwnWall(const View& view) const;
  bool covers(double start, double end, const View& view);

  MKMapPoint viewpoint_;
  std::vector<Shadow> shadows_;  // by direction; they do not overlap
  std::vector<double> slivers_;  // directions gathered, ascending
  std::vector<End> ends_;        // those of walls that matter to the last question
  std::vector<Shadow> replacement_;
  MKMapPoint ownWall_;  // along the wall that the viewpoint is on
  bool isOnWall_ = false;
};

}  // namespace KorvaniNavigation
