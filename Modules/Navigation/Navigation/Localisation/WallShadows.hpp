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

#include <cmath>
#include <limits>
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
    // Whether the sliver of an end was gathered.
    bool startIsGathered = false;
    bool endIsGathered = false;
  };

  // The direction of a wall's end, and how many times as far as `direction` that end is.
  struct Sliver {
    MKMapPoint direction;
    double reach = 0;
  };

  // The part of a sliver that may hold nodes to see to: from the viewpoint on, up to `length` times
  // as far as `direction`.
  class Ray {
   public:
    Ray(MKMapPoint viewpoint, MKMapPoint direction, double length)
        : viewpoint_(viewpoint),
          direction_(direction),
          absolute_{std::abs(direction.x), std::abs(direction.y)},
          length_(length),
          farthest_(length * (direction.x * direction.x + direction.y * direction.y)) {}

    // Whether a rectangle may hold a point of it; true for every one that does.
    bool reachesInto(MKMapPoint low, MKMapPoint high) const {
      const double x = (low.x + high.x) / 2 - viewpoint_.x;
      const double y = (low.y + high.y) / 2 - viewpoint_.y;
      const double width = (high.x - low.x) / 2;
      const double height = (high.y - low.y) / 2;
      const double beside = std::abs(x * direction_.y - y * direction_.x) -
                            (width * absolute_.y + height * absolute_.x);
      const double ahead = x * direction_.x + y * direction_.y;
      const double spread = width * absolute_.x + height * absolute_.y;
      const double size = std::abs(x) + std::abs(y) + width + height;
      return (beside <= kTolerance * size) & (ahead + spread >= 0) & (ahead - spread <= farthest_);
    }

    // The same for a point.
    bool reaches(MKMapPoint point) const {
      const double x = point.x - viewpoint_.x;
      const double y = point.y - viewpoint_.y;
      const double beside = std::abs(x * direction_.y - y * direction_.x);
      return (beside <= kTolerance * (std::abs(x) + std::abs(y))) &
             (x * direction_.x + y * direction_.y >= 0);
    }

    MKMapPoint direction() const { return direction_; }
    double length() const { return length_; }

   private:
    static constexpr double kTolerance = 4.0 * kSliver;

    MKMapPoint viewpoint_;
    MKMapPoint direction_;
    MKMapPoint absolute_;
    double length_;
    double farthest_;
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

  // The ray of a sliver, without end.
  Ray rayOf(const Sliver& sliver) const;

  // The ray of a sliver up to where that wall hides all points of it; absent if it does not.
  std::optional<Ray> rayUpTo(const WallGrid::Piece& wall, const Sliver& sliver) const;

 private:
  // A rectangle as seen from the viewpoint: corners relative to it, and the directions it covers.
  struct View {
    MKMapPoint low;
    MKMapPoint high;
    double start = 0;
    double end = 0;  // less than `start` when the direction of x lies between
  };

  // An end of a shadow whose sliver was not gathered yet.
  struct End {
    Shadow* shadow = nullptr;
    bool isStart = false;

    double direction() const { return isStart ? shadow->start : shadow->end; }
    bool& isGathered() const { return isStart ? shadow->startIsGathered : shadow->endIsGathered; }
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
  void noteEnd(Shadow& shadow, bool isStart);

  MKMapPoint viewpoint_;
  std::vector<Shadow> shadows_;  // by direction; they do not overlap
  std::vector<double> slivers_;  // directions gathered, ascending
  std::vector<End> ends_;        // those that matter to the last question
  bool hasEnds_ = false;         // whether any do, gathered ones included
  std::vector<Shadow> replacement_;
  MKMapPoint ownWall_;  // along the wall that the viewpoint is on
  bool isOnWall_ = false;
};

}  // namespace KorvaniNavigation
