#include "Navigation/Localisation/WallShadows.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace KorvaniNavigation {

namespace {

// Full turn, in the measure of directions.
constexpr double kTurn = 4.0;
// Lengths between these keep products and their roundings within the range of numbers.
constexpr double kShortestReach = 1e-6;
constexpr double kLongestReach = 1e12;
// The nearer end of a wall may be so much nearer than the other.
constexpr double kLeastRatio = 1e-6;
// For a viewpoint on a wall between its ends: the same.
constexpr double kLeastRatioOnWall = 1e-3;
// Sums of a few products are exact to this part of the products of the lengths, and far more.
constexpr double kRounding = 1e-12;

MKMapPoint minus(MKMapPoint a, MKMapPoint b) { return {a.x - b.x, a.y - b.y}; }

double crossProduct(MKMapPoint a, MKMapPoint b) { return a.x * b.y - a.y * b.x; }

double lengthOf(MKMapPoint a) { return std::sqrt(a.x * a.x + a.y * a.y); }

// How far it is from one direction on to the other.
double turnBetween(double from, double to) {
  const double width = to - from;
  if (width < 0) return width + kTurn;
  return width < kTurn ? width : width - kTurn;
}

// A rectangle as its middle and half its sides.
struct Extent {
  MKMapPoint middle;
  MKMapPoint half;

  Extent(MKMapPoint low, MKMapPoint high)
      : middle{(low.x + high.x) / 2, (low.y + high.y) / 2},
        half{(high.x - low.x) / 2, (high.y - low.y) / 2} {}

  // At least the length of any of its points.
  double reach() const { return std::abs(middle.x) + std::abs(middle.y) + half.x + half.y; }

  // By how much the cross product with a vector differs from that of the middle, at most.
  double spread(MKMapPoint vector) const {
    return half.x * std::abs(vector.y) + half.y * std::abs(vector.x);
  }
};

}  // namespace

double WallShadows::directionOf(MKMapPoint vector) {
  const double part = vector.y / (std::abs(vector.x) + std::abs(vector.y));
  if (vector.x < 0) return 2.0 - part;
  return vector.y >= 0 ? part : kTurn + part;
}

MKMapPoint WallShadows::towards(double direction) {
  const double x = direction < 2 ? 1.0 - direction : direction - 3.0;
  if (direction <= 1) return {x, direction};
  return {x, direction < 3 ? 2.0 - direction : direction - kTurn};
}

bool WallShadows::isBehind(const Shadow& shadow, const View& view) {
  const Extent extent(view.low, view.high);
  const double size = std::abs(shadow.along.x) + std::abs(shadow.along.y);
  const double least = crossProduct(extent.middle, shadow.along) - extent.spread(shadow.along);
  return least - kRounding * extent.reach() * size >= shadow.limit;
}

bool WallShadows::isNearer(const Shadow& a, const Shadow& b, double direction) {
  const MKMapPoint ray = towards(direction);
  return a.limit * crossProduct(ray, b.along) < b.limit * crossProduct(ray, a.along);
}

// Where the viewpoint is a wall's end, or on it to the last bit, the fraction r is nothing whatever
// the line; s is then that of the viewpoint, for every line that is not along the wall.
bool WallShadows::standsOn(const WallGrid::Piece& wall) const {
  const MKMapPoint from = minus(wall.from, viewpoint_);
  const MKMapPoint to = minus(wall.to, viewpoint_);
  const auto [near, far] = std::minmax({lengthOf(from), lengthOf(to)});
  if (!(far >= kShortestReach && far <= kLongestReach)) return false;
  if (wall.from == viewpoint_ || wall.to == viewpoint_) return true;
  return crossProduct(from, minus(wall.to, wall.from)) == 0 && from.x * to.x + from.y * to.y < 0 &&
         near >= kLeastRatioOnWall * far;
}

// Nothing for walls that are seen so that rounding counts.
std::optional<WallShadows::Shadow> WallShadows::shadowOf(const WallGrid::Piece& wall) const {
  const MKMapPoint from = minus(wall.from, viewpoint_);
  const MKMapPoint to = minus(wall.to, viewpoint_);
  const MKMapPoint along = minus(wall.to, wall.from);
  const auto [near, far] = std::minmax({lengthOf(from), lengthOf(to)});
  const double turn = crossProduct(from, along);
  if (turn == 0 || near < std::max(kShortestReach, kLeastRatio * far)) return std::nullopt;
  if (!(far <= kLongestReach)) return std::nullopt;
  Shadow shadow{directionOf(from), directionOf(to), along, std::abs(turn) * (1.0 + kClear)};
  if (turn < 0) {
    std::swap(shadow.start, shadow.end);
    shadow.along = {-along.x, -along.y};
  }
  const bool isSeenAlong = std::abs(turn) < 2.0 * kClear * far * lengthOf(along);
  const double inset = isSeenAlong ? 4.0 * kClear : 0.0;
  const double width = turnBetween(shadow.start, shadow.end);
  // A wall takes half a turn at most; more is what is left when one of almost nothing is rounded.
  if (width > 2.0 + kClear || width - 2.0 * inset < 4.0 * kSliver) return std::nullopt;
  shadow.start = turnBetween(0, shadow.start + inset);
  shadow.end = turnBetween(0, shadow.end - inset);
  return shadow;
}

void WallShadows::add(const WallGrid::Piece& wall) {
  if (standsOn(wall)) {
    ownWall_ = minus(wall.to, wall.from);
    isOnWall_ = true;
    return;
  }
  const auto whole = shadowOf(wall);
  if (!whole) return;
  if (whole->start < whole->end) {
    insert(*whole);
    return;
  }
  // Two parts, each a little longer than up to the direction of x, so that this is an end of none.
  constexpr double kOverlap = 8.0 * kSliver;
  Shadow before = *whole;
  Shadow after = *whole;
  before.end = kTurn + std::min(whole->end, kOverlap);
  after.start = std::max(whole->start - kTurn, -kOverlap);
  insert(before);
  insert(after);
}

// Where shadows overlap, the nearer one stays.
void WallShadows::insert(const Shadow& shadow) {
  const auto first = std::partition_point(
      shadows_.begin(), shadows_.end(), [&](const Shadow& old) { return old.end <= shadow.start; });
  auto last = first;
  replacement_.clear();
  const auto put = [this](const Shadow& whole, double start, double end) {
    if (end - start <= kSliver) return;
    Shadow part = whole;
    if (end != whole.end) part.namedEnd = -1;
    part.start = start;
    part.end = end;
    replacement_.push_back(part);
  };
  double start = shadow.start;
  Shadow tail = shadow;
  tail.start = tail.end;
  for (; last != shadows_.end() && last->start < shadow.end; ++last) {
    const double low = std::max(last->start, shadow.start);
    const double high = std::min(last->end, shadow.end);
    if (!isNearer(shadow, *last, (low + high) / 2)) {
      put(shadow, start, last->start);
      put(*last, last->start, last->end);
      start = last->end;
      continue;
    }
    put(*last, last->start, shadow.start);
    tail = *last;
    tail.start = std::min(shadow.end, tail.end);
  }
  put(shadow, start, shadow.end);
  put(tail, tail.start, tail.end);
  const auto place = shadows_.erase(first, last);
  shadows_.insert(place, replacement_.begin(), replacement_.end());
}

// The corners that are outermost to the right and to the left, seen from the viewpoint.
WallShadows::View WallShadows::viewOf(MKMapPoint low, MKMapPoint high) const {
  View view{minus(low, viewpoint_), minus(high, viewpoint_), 0, 0};
  const MKMapPoint a = view.low;
  const MKMapPoint b = view.high;
  const MKMapPoint near{a.x > 0 ? a.x : b.x, a.y > 0 ? a.y : b.y};
  MKMapPoint right = near;
  MKMapPoint left = near;
  if (a.y > 0) {
    right.x = b.x;
    left.x = a.x;
  } else if (b.y < 0) {
    right.x = a.x;
    left.x = b.x;
  }
  if (a.x > 0) {
    right.y = a.y;
    left.y = b.y;
  } else if (b.x < 0) {
    right.y = b.y;
    left.y = a.y;
  }
  view.start = directionOf(right);
  view.end = directionOf(left);
  return view;
}

bool WallShadows::isBesideOwnWall(const View& view) const {
  const Extent extent(view.low, view.high);
  const double size = std::abs(ownWall_.x) + std::abs(ownWall_.y);
  return std::abs(crossProduct(extent.middle, ownWall_)) - extent.spread(ownWall_) >
         4.0 * kClear * extent.reach() * size;
}

// The place of the first shadow that starts after a direction.
std::size_t WallShadows::firstAfter(double direction) const {
  const auto after =
      std::upper_bound(shadows_.begin(), shadows_.end(), direction,
                       [](double value, const Shadow& other) { return value < other.start; });
  return static_cast<std::size_t>(after - shadows_.begin());
}

// Shadows before a view are passed by only to name the gap that it starts in.
template <class Visit>
bool WallShadows::eachGap(double start, double end, const View& view, Visit visit) const {
  std::size_t i = firstAfter(start);
  i -= std::min<std::size_t>(i, 2);
  std::size_t before = kNone;
  double seen = start;
  for (; i < shadows_.size() && shadows_[i].start < end; ++i) {
    const Shadow& shadow = shadows_[i];
    const double last = shadow.end - 2.0 * kSliver;
    if (last > seen) {
      if (!isBehind(shadow, view)) continue;
      const double first = shadow.start + 2.0 * kSliver;
      if (first > seen && !visit(seen, std::min(first, end), before)) return false;
      if (last >= end) return true;
      seen = last;
    }
    before = i;
  }
  return visit(seen, end, before);
}

template <class Visit>
bool WallShadows::eachGap(const View& view, Visit visit) const {
  if (view.start <= view.end) return eachGap(view.start, view.end, view, visit);
  return eachGap(view.start, kTurn, view, visit) && eachGap(0, view.end, view, visit);
}

bool WallShadows::isWithin(const View& view) {
  return view.low.x <= 0 && view.high.x >= 0 && view.low.y <= 0 && view.high.y >= 0;
}

bool WallShadows::hides(MKMapPoint point) const {
  if (shadows_.empty() && !isOnWall_) return false;
  const MKMapPoint way = minus(point, viewpoint_);
  if (way.x == 0 && way.y == 0) return false;
  if (isOnWall_ && isBesideOwnWall({way, way})) return true;
  const double direction = directionOf(way);
  const std::size_t after = firstAfter(direction);
  if (after == 0) return false;
  const Shadow& shadow = shadows_[after - 1];
  return direction - shadow.start >= 2.0 * kSliver && shadow.end - direction >= 2.0 * kSliver &&
         isBehind(shadow, {way, way});
}

bool WallShadows::hidesButForGaps(MKMapPoint low, MKMapPoint high, double widest,
                                  std::vector<Gap>& gaps) {
  gaps.clear();
  if (shadows_.empty() && !isOnWall_) return false;
  const View view = viewOf(low, high);
  if (isWithin(view)) return false;
  if (isOnWall_ && isBesideOwnWall(view)) return true;
  const bool isHidden = eachGap(view, [&](double start, double end, std::size_t before) {
    if (end - start > widest) return false;
    if (before == kNone || end > shadows_[before].namedEnd) {
      gaps.push_back(gapAt(start, end, before, widest));
    }
    return true;
  });
  if (!isHidden) return false;
  for (const Gap& gap : gaps) {
    if (gap.before != kNone) shadows_[gap.before].namedEnd = gap.end;
  }
  return true;
}

// A view may show a part of a gap, and the next one another part, so all of it is named.
WallShadows::Gap WallShadows::gapAt(double start, double end, std::size_t before,
                                    double widest) const {
  if (before == kNone) return {start, end, 0, kNone};
  const Shadow& shadow = shadows_[before];
  Gap gap{shadow.end - 2.0 * kSliver, end, 0, before};
  const double turn = crossProduct(towards(gap.start), shadow.along);
  gap.near = turn > 0 ? shadow.limit / turn : 0;
  if (before + 1 < shadows_.size()) {
    gap.end = std::max(end, shadows_[before + 1].start + 2.0 * kSliver);
  }
  if (gap.end - gap.start <= widest) return gap;
  return {start, end, gap.near, kNone};
}

std::optional<Wedge> WallShadows::wedgeUpTo(const WallGrid::Piece& wall, const Gap& gap) const {
  constexpr double kInside = 16.0 * kSliver;
  // Beyond a wall that is met so steeply, this much farther is well out of reach of rounding.
  constexpr double kLeastSine = 1e-3;
  constexpr double kBeyond = 1.001;
  const auto lid = shadowOf(wall);
  if (!lid) return std::nullopt;
  const double place = turnBetween(lid->start, gap.start);
  const double width = turnBetween(lid->start, lid->end);
  if (place < kInside || width - place < gap.end - gap.start + kInside) return std::nullopt;
  const double turn = std::min(crossProduct(towards(gap.start), lid->along),
                               crossProduct(towards(gap.end), lid->along));
  if (turn < kLeastSine * lengthOf(lid->along)) return std::nullopt;
  return wedgeOf(gap, kBeyond * lid->limit / turn);
}

}  // namespace KorvaniNavigation
