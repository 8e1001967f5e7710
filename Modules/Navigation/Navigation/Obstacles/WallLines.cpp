#include "Navigation/Obstacles/WallLines.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <tuple>
#include <utility>

namespace KorvaniNavigation {

namespace {

// Directions are told by the slope against the nearer axis: from -1 to 1 for those rather level,
// from there to 3 for those rather steep, and round again. It grows by one to two times the angle,
// so two lines within kLeastSine of each other are half a step apart at most.
constexpr std::int32_t kDirectionCount = 100'000'000;
constexpr double kStep = 4.0 / kDirectionCount;
static_assert(kStep >= 4.0 * WallLines::kLeastSine);
// How far apart two lines of one direction may lie to be taken for one, as a part of the extent:
// three steps of direction make up a quarter of it.
constexpr double kLineTolerance = 1e-6;

// Buckets for directions, and how close to the next one a piece is noted there as well: that takes
// in kLeastSine, and what the ends of a line of kLeastLength may be wrong, which turns it by less
// than 3 / kLeastLength and changes its slope by less than twice as much.
constexpr std::int32_t kBucketCount = 1'000'000;
constexpr double kBucket = 4.0 / kBucketCount;
constexpr double kNearDirection = 0.25;
static_assert(kNearDirection * kBucket >=
              2.0 * WallLines::kLeastSine + 6.0 / WallLines::kLeastLength);
// The same for distances, in parts of the extent. Along the extent, lines of one bucket part by
// three quarters of the bucket's width of slope, and by a kLeastLength-th where they are known
// roughly.
constexpr double kOffsetBucket = 1e-4;
constexpr double kNearOffset = 0.125;
static_assert(kNearOffset * kOffsetBucket >=
              kBucket + 4.0 * WallLines::kLeastSine + 3.0 / WallLines::kLeastLength);

double slopeOf(MKMapPoint from, MKMapPoint to) {
  const double x = to.x - from.x;
  const double y = to.y - from.y;
  return std::abs(x) >= std::abs(y) ? y / x : 2.0 - x / y;
}

// The direction in steps, of which there are `count`, from 0 on and with a fraction.
double directionIn(double slope, std::int32_t count) { return (slope + 1.0) * (count / 4.0); }

// The bucket, with a fraction. The axes, along which many walls run, are in the middle of theirs.
double bucketOf(double slope) { return directionIn(slope, kBucketCount) + 0.5; }

std::int32_t wrapped(std::int32_t direction, std::int32_t count) {
  return direction < 0 ? direction + count : direction < count ? direction : direction - count;
}

// How far beside the corner the line of that slope through a place runs, up to a factor below 1.5
// that depends on the slope alone.
double offsetOf(MKMapPoint place, double slope) {
  return slope <= 1.0 ? place.x * slope - place.y : place.x - place.y * (2.0 - slope);
}

double middleOf(std::int32_t direction, double step) { return (direction + 0.5) * step - 1.0; }

// A number whose bits hang on all bits of both. The multiplier is 2^64 over the golden ratio.
std::uint64_t scattered(std::int32_t direction, double offset) {
  constexpr std::uint64_t kGolden = 0x9E3779B97F4A7C15U;
  const auto place = static_cast<std::uint64_t>(static_cast<std::int64_t>(offset));
  const std::uint64_t once = (static_cast<std::uint64_t>(direction) << 32U ^ place) * kGolden;
  return (once ^ once >> 32U) * kGolden;
}

std::uint64_t twoBits(std::uint64_t key) {
  return std::uint64_t{1} << (key >> 58U) | std::uint64_t{1} << (key >> 52U & 63U);
}

}  // namespace

WallLines::WallLines(const std::vector<WallPiece>& pieces, std::size_t count, MKMapPoint low,
                     double extent)
    : low_(low), extentsAUnit_(1.0 / extent) {
  marks_.assign(std::bit_ceil(count / 2 + 1), 0);
  std::vector<std::pair<Course, std::uint32_t>> courses;
  courses.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const auto& [from, to] = pieces[i];
    courses.emplace_back(courseOf(from, to), static_cast<std::uint32_t>(i));
    mark(from, to);
  }
  std::sort(courses.begin(), courses.end(), [](const auto& x, const auto& y) {
    return std::tie(x.first.direction, x.first.offset, x.second) <
           std::tie(y.first.direction, y.first.offset, y.second);
  });
  sorted_.reserve(count);
  for (const auto& [course, piece] : courses) sorted_.push_back(piece);
}

WallLines::Course WallLines::courseOf(MKMapPoint from, MKMapPoint to) const {
  const auto direction = wrapped(
      static_cast<std::int32_t>(directionIn(slopeOf(from, to), kDirectionCount)), kDirectionCount);
  return {direction, offsetOf(placeOf(from), middleOf(direction, kStep))};
}

std::size_t WallLines::wordOf(std::uint64_t key) const { return key >> 16U & (marks_.size() - 1); }

// In parts of the extent, so that numbers stay small.
MKMapPoint WallLines::placeOf(MKMapPoint point) const {
  return {(point.x - low_.x) * extentsAUnit_, (point.y - low_.y) * extentsAUnit_};
}

// Never negative: within the extent an offset is less than twice as long.
double WallLines::offsetInBuckets(MKMapPoint point, std::int32_t direction) const {
  constexpr double kMost = 4.0 / kOffsetBucket;
  return offsetOf(placeOf(point), direction * kBucket - 1.0) * (1.0 / kOffsetBucket) + kMost;
}

void WallLines::mark(MKMapPoint from, MKMapPoint to) {
  const double exact = bucketOf(slopeOf(from, to));
  const auto whole = static_cast<std::int32_t>(exact);
  const double part = exact - whole;
  markOffsets(from, wrapped(whole, kBucketCount));
  if (part <= kNearDirection) markOffsets(from, wrapped(whole - 1, kBucketCount));
  if (part >= 1 - kNearDirection) markOffsets(from, wrapped(whole + 1, kBucketCount));
}

void WallLines::markOffsets(MKMapPoint point, std::int32_t direction) {
  const double exact = offsetInBuckets(point, direction);
  for (const double offset : {exact - kNearOffset, exact + kNearOffset}) {
    const std::uint64_t key = scattered(direction, offset);
    marks_[wordOf(key)] |= twoBits(key);
  }
}

bool WallLines::mayHold(MKMapPoint a, MKMapPoint b) const {
  const auto direction = wrapped(static_cast<std::int32_t>(bucketOf(slopeOf(a, b))), kBucketCount);
  const std::uint64_t key = scattered(direction, offsetInBuckets(a, direction));
  const std::uint64_t bits = twoBits(key);
  return (marks_[wordOf(key)] & bits) == bits;
}

std::vector<std::uint32_t> WallLines::piecesOn(MKMapPoint a, MKMapPoint b, double extent,
                                               const std::vector<WallPiece>& pieces) const {
  std::vector<std::uint32_t> found;
  const std::int32_t direction = courseOf(a, b).direction;
  const double tolerance = kLineTolerance * extent * extentsAUnit_;
  const auto courseOfPiece = [&](std::uint32_t piece) {
    return courseOf(pieces[piece].from, pieces[piece].to);
  };
  for (const std::int32_t step : {-1, 0, 1}) {
    const std::int32_t near = wrapped(direction + step, kDirectionCount);
    const double offset = offsetOf(placeOf(a), middleOf(near, kStep));
    const auto before = [&](std::uint32_t piece, double value) {
      const Course course = courseOfPiece(piece);
      return course.direction < near || (course.direction == near && course.offset < value);
    };
    auto piece = std::lower_bound(sorted_.begin(), sorted_.end(), offset - tolerance, before);
    for (; piece != sorted_.end(); ++piece) {
      const Course course = courseOfPiece(*piece);
      if (course.direction != near || course.offset > offset + tolerance) break;
      found.push_back(*piece);
    }
  }
  return found;
}

std::size_t WallLines::bytes() const {
  return sorted_.capacity() * sizeof(std::uint32_t) + marks_.capacity() * sizeof(std::uint64_t);
}

}  // namespace KorvaniNavigation
