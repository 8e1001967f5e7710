#pragma once

// Internal. What lies between two directions, seen from one place of the map plane, up to some
// distance: where nodes have to be looked at that shadows leave open.
//
// A wedge is much longer than wide, or has no width at all. It takes in what is a little beside, so
// that no rounding loses a point.
//
// Directions are vectors whose numbers add up to 1 but for their signs, and the distance of a point
// is the sum of its distances in x and in y: these are then the multiples of directions. Immutable.

#include <algorithm>
#include <cmath>

#include "Platform/MapPoint.hpp"

namespace KorvaniNavigation {

using KorvaniPlatform::MKMapPoint;

class Wedge {
 public:
  // The sides by direction: `to` is less than half a turn on from `from`.
  Wedge(MKMapPoint tip, MKMapPoint from, MKMapPoint to, double length)
      : tip_(tip), from_(from), to_(to), length_(length) {}

  MKMapPoint tip() const { return tip_; }
  MKMapPoint from() const { return from_; }
  MKMapPoint to() const { return to_; }
  double length() const { return length_; }

  // The same, but not longer than that.
  Wedge upTo(double length) const { return {tip_, from_, to_, std::min(length_, length)}; }

  // A direction in it.
  MKMapPoint middle() const { return {(from_.x + to_.x) / 2, (from_.y + to_.y) / 2}; }
  // At least the distance of its directions from that one.
  double width() const { return std::abs(from_.x - to_.x) + std::abs(from_.y - to_.y); }

  // Whether a point is in it, however far. Not false for any that is.
  bool reaches(MKMapPoint point) const {
    const MKMapPoint way{point.x - tip_.x, point.y - tip_.y};
    const double slack = kSlack * (std::abs(way.x) + std::abs(way.y));
    return (crossProduct(from_, way) >= -slack) && (crossProduct(to_, way) <= slack) &&
           (way.x * from_.x + way.y * from_.y >= 0);
  }

  // Whether a rectangle has a point in it. Not false for any that has.
  bool reachesInto(MKMapPoint low, MKMapPoint high) const {
    const MKMapPoint middle{(low.x + high.x) / 2 - tip_.x, (low.y + high.y) / 2 - tip_.y};
    const MKMapPoint half{(high.x - low.x) / 2, (high.y - low.y) / 2};
    const MKMapPoint away{std::abs(middle.x), std::abs(middle.y)};
    const double slack = kSlack * (away.x + away.y + half.x + half.y);
    const double near = std::max(away.x - half.x, 0.0) + std::max(away.y - half.y, 0.0);
    const double ahead = middle.x * from_.x + middle.y * from_.y + half.x * std::abs(from_.x) +
                         half.y * std::abs(from_.y);
    return (crossProduct(from_, middle) + spread(half, from_) >= -slack) &&
           (crossProduct(to_, middle) - spread(half, to_) <= slack) && (near <= length_ + slack) &&
           (ahead >= 0);
  }

  // What is as little beside, as a part of the distance, is in it.
  static constexpr double kSlack = 4e-8;

 private:
  static double crossProduct(MKMapPoint side, MKMapPoint way) {
    return side.x * way.y - side.y * way.x;
  }
  // By how much cross products with points of a rectangle differ from that of its middle, at most.
  static double spread(MKMapPoint half, MKMapPoint side) {
    return half.x * std::abs(side.y) + half.y * std::abs(side.x);
  }

  MKMapPoint tip_;
  MKMapPoint from_;
  MKMapPoint to_;
  double length_;
};

}  // namespace KorvaniNavigation
