#include "Navigation/Obstacles/WallGrid.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <tuple>
#include <utility>

namespace KorvaniNavigation {

namespace {

// Outside these bounds, products of differences might leave the range of numbers.
constexpr double kShortest = 1e-100;
constexpr double kFarthest = 1e100;
// So many edges a cell, and entries an edge, the cells are sized for; found by measurement.
constexpr double kEdgesPerCell = 0.5;
constexpr double kEntriesPerEdge = 3.0;
// A line whose margin is wider than so many cells is compared with all edges.
constexpr double kWidestMargin = 8.0;

// Directions are told by the slope against the nearer axis: from -1 to 1 for those rather level,
// from there to 3 for those rather steep, and round again. It grows by one to two times the angle,
// so two lines within kLeastSine of each other are half a step apart at most.
constexpr std::int32_t kDirectionCount = 100'000'000;
constexpr double kStep = 4.0 / kDirectionCount;
static_assert(kStep >= 4.0 * WallGrid::kLeastSine);
// How far apart two lines of one direction may lie to be taken for one, as a part of the extent:
// three steps of direction, and single precision, make up a quarter of it.
constexpr double kLineTolerance = 1e-6;

// Whether line and piece pass each other so clearly that r or s lies outside of 0 to 1, however the
// formula rounds: the margin is far wider than a division's rounding. Most pieces near a line do,
// and to see it takes one branch that is easy to foresee, and no division.
bool passEachOther(MKMapPoint a, MKMapPoint b, const WallGrid::Piece& piece) {
  constexpr double kClear = 1e-9;
  const MKMapPoint line{b.x - a.x, b.y - a.y};
  const MKMapPoint wall{piece.to.x - piece.from.x, piece.to.y - piece.from.y};
  const MKMapPoint between{piece.from.x - a.x, piece.from.y - a.y};
  const double denominator = line.x * wall.y - line.y * wall.x;
  const double sign = std::copysign(1.0, denominator);
  const double alongLine = sign * (between.x * wall.y - between.y * wall.x);
  const double alongWall = sign * (line.y * between.x - line.x * between.y);
  const double low = -kClear * std::abs(denominator);
  const double high = (1.0 + kClear) * std::abs(denominator);
  return (alongWall < low) | (alongWall > high) | (alongLine < low) | (alongLine > high);
}

bool meets(MKMapPoint a, MKMapPoint b, const WallGrid::Piece& piece) {
  return !passEachOther(a, b, piece) && segmentsMeet(a, b, piece.from, piece.to);
}

bool isWithinReach(MKMapPoint point) {
  return std::abs(point.x) <= kFarthest && std::abs(point.y) <= kFarthest;
}

bool isUnknown(MKMapPoint point) { return std::isnan(point.x) || std::isnan(point.y); }

double longerSide(MKMapPoint from, MKMapPoint to) {
  return std::max(std::abs(to.x - from.x), std::abs(to.y - from.y));
}

bool isOrdinaryLine(MKMapPoint from, MKMapPoint to) {
  return isWithinReach(from) && isWithinReach(to) && longerSide(from, to) >= kShortest;
}

// The direction in steps, from 0 on, with a fraction.
double directionOf(MKMapPoint from, MKMapPoint to) {
  const double x = to.x - from.x;
  const double y = to.y - from.y;
  const double slope = std::abs(x) >= std::abs(y) ? y / x : 2.0 - x / y;
  return (slope + 1.0) * (kDirectionCount / 4.0);
}

// The multiplier is 2^64 over the golden ratio, which spreads neighbours; the lowest bits of a
// product depend on few others, so they are dropped.
std::uint64_t scattered(std::int32_t direction) {
  return static_cast<std::uint64_t>(direction) * 0x9E3779B97F4A7C15U >> 24U;
}

std::int32_t wrapped(std::int32_t direction) {
  return (direction + kDirectionCount) % kDirectionCount;
}

// How far beside the grid's corner the line of that direction through a place runs, up to a factor
// below 1.5 that depends on the direction alone.
double offsetOf(WallGrid::Place place, std::int32_t direction) {
  const double slope = (direction + 0.5) * kStep - 1.0;
  return slope <= 1.0 ? place.x * slope - place.y : place.x - place.y * (2.0 - slope);
}

}  // namespace

WallGrid::WallGrid(const std::vector<WallEdge>& edges) {
  measure(edges);
  sortByCell(edges);
  layOut();
  sortByLine();
}

// Bounds, and cells of a size that puts few edges into each and each edge into few.
void WallGrid::measure(const std::vector<WallEdge>& edges) {
  constexpr double kFar = std::numeric_limits<double>::infinity();
  low_ = {kFar, kFar};
  high_ = {-kFar, -kFar};
  double length = 0;
  for (const auto& [from, to, obstacle] : edges) {
    if (!isOrdinaryLine(from, to)) continue;
    ++ordinaryCount_;
    low_ = {std::min({low_.x, from.x, to.x}), std::min({low_.y, from.y, to.y})};
    high_ = {std::max({high_.x, from.x, to.x}), std::max({high_.y, from.y, to.y})};
    length += longerSide(from, to);
  }
  if (ordinaryCount_ == 0) return;
  const double count = static_cast<double>(ordinaryCount_) / kEdgesPerCell;
  const double width = high_.x - low_.x;
  const double height = high_.y - low_.y;
  cell_ = std::max({std::sqrt(width / count) * std::sqrt(height), std::max(width, height) / count,
                    length / (kEntriesPerEdge * static_cast<double>(ordinaryCount_))});
  cellsAUnit_ = 1.0 / cell_;
  columnCount_ = static_cast<std::int64_t>(width * cellsAUnit_) + 1;
  rowCount_ = static_cast<std::int64_t>(height * cellsAUnit_) + 1;
}

WallGrid::Place WallGrid::placeOf(MKMapPoint point) const {
  return {(point.x - low_.x) * cellsAUnit_, (point.y - low_.y) * cellsAUnit_};
}

std::size_t WallGrid::cellAt(std::int64_t column, std::int64_t row) const {
  return static_cast<std::size_t>(row * columnCount_ + column);
}

std::size_t WallGrid::cellOf(MKMapPoint point) const {
  const Place place = placeOf(point);
  return cellAt(std::min(static_cast<std::int64_t>(place.x), columnCount_ - 1),
                std::min(static_cast<std::int64_t>(place.y), rowCount_ - 1));
}

// The ordinary edges by the cell they begin in, then the others: neighbours are read together.
void WallGrid::sortByCell(const std::vector<WallEdge>& edges) {
  std::vector<std::pair<std::size_t, std::uint32_t>> order;
  order.reserve(edges.size());
  for (const WallEdge& edge : edges) {
    const auto place = static_cast<std::uint32_t>(order.size());
    const bool ordinary = isOrdinaryLine(edge.from, edge.to);
    order.emplace_back(ordinary ? cellOf(edge.from) : cells_.max_size(), place);
  }
  std::sort(order.begin(), order.end());
  pieces_.reserve(edges.size());
  obstacles_.reserve(edges.size());
  for (const auto& [cell, place] : order) {
    pieces_.push_back({edges[place].from, edges[place].to});
    obstacles_.push_back(edges[place].obstacle);
  }
}

// Counts the edges of each cell, then files them.
void WallGrid::layOut() {
  cells_.assign(static_cast<std::size_t>(columnCount_ * rowCount_) + 1, 0);
  const auto forEachEntry = [this](auto visit) {
    for (std::size_t i = 0; i < ordinaryCount_; ++i) {
      const auto& [from, to] = pieces_[i];
      walk(placeOf(from), placeOf(to), kMargin * extentWith(from, to) * cellsAUnit_,
           [&](std::size_t first, std::size_t last) {
             for (; first <= last; ++first) visit(first, static_cast<std::uint32_t>(i));
             return false;
           });
    }
  };
  forEachEntry([this](std::size_t cell, std::uint32_t) { ++cells_[cell + 1]; });
  for (std::size_t i = 1; i < cells_.size(); ++i) cells_[i] += cells_[i - 1];
  inCells_.resize(cells_.back());
  std::vector<std::uint32_t> next(cells_.begin(), cells_.end() - 1);
  forEachEntry([&](std::size_t cell, std::uint32_t edge) { inCells_[next[cell]++] = edge; });
}

void WallGrid::sortByLine() {
  directions_.assign(std::bit_ceil(ordinaryCount_ / 4 + 1), 0);
  lines_.reserve(ordinaryCount_);
  for (std::size_t i = 0; i < ordinaryCount_; ++i) {
    const auto& [from, to] = pieces_[i];
    const double exact = directionOf(from, to);
    const auto whole = static_cast<std::int32_t>(exact);
    markDirection(wrapped(whole));
    markDirection(wrapped(exact - whole < 0.5 ? whole - 1 : whole + 1));
    const double offset = offsetOf(placeOf(from), wrapped(whole));
    lines_.push_back({wrapped(whole), static_cast<float>(offset), static_cast<std::uint32_t>(i)});
  }
  std::sort(lines_.begin(), lines_.end(), [](const OnLine& x, const OnLine& y) {
    return std::tie(x.direction, x.offset, x.edge) < std::tie(y.direction, y.offset, y.edge);
  });
}

// Directions share bits: then a line looks for edges on it in vain.
void WallGrid::markDirection(std::int32_t direction) {
  const std::uint64_t bit = scattered(direction);
  directions_[bit / 64 & (directions_.size() - 1)] |= std::uint64_t{1} << bit % 64;
}

bool WallGrid::hasDirectionNear(std::int32_t direction) const {
  const std::uint64_t bit = scattered(direction);
  return (directions_[bit / 64 & (directions_.size() - 1)] >> bit % 64 & 1) != 0;
}

// The longer side of the rectangle around all edges and the line.
double WallGrid::extentWith(MKMapPoint a, MKMapPoint b) const {
  const double width = std::max({high_.x, a.x, b.x}) - std::min({low_.x, a.x, b.x});
  const double height = std::max({high_.y, a.y, b.y}) - std::min({low_.y, a.y, b.y});
  return std::max(width, height);
}

// Row by row. The cells of a row follow each other, and so do the edges in them: where there are
// none, a run of cells costs one comparison.
template <class Visit>
bool WallGrid::walk(Place a, Place b, double margin, Visit visit) const {
  const auto [low, high] = a.y <= b.y ? std::pair(a, b) : std::pair(b, a);
  const auto columns = static_cast<double>(columnCount_);
  const auto rows = static_cast<double>(rowCount_);
  if (std::max(a.x, b.x) + margin < 0 || std::min(a.x, b.x) - margin >= columns) return false;
  if (high.y + margin < 0 || low.y - margin >= rows) return false;
  // Where the two ends are less than the margin apart in y, each row takes in all of the line.
  const double slope = high.y > low.y ? (high.x - low.x) / (high.y - low.y) : 0;
  const auto first = static_cast<std::int64_t>(std::max(low.y - margin, 0.0));
  const auto last = static_cast<std::int64_t>(std::min(high.y + margin, rows - 1));
  for (std::int64_t i = 0; i <= last - first; ++i) {
    const std::int64_t row = a.y <= b.y ? first + i : last - i;
    const double bottom = static_cast<double>(row) - margin;
    const double top = static_cast<double>(row + 1) + margin;
    const double one = bottom <= low.y ? low.x : low.x + (bottom - low.y) * slope;
    const double other = top >= high.y ? high.x : low.x + (top - low.y) * slope;
    const double left = std::min(one, other) - margin;
    const double right = std::max(one, other) + margin;
    if (right < 0 || left >= columns) continue;
    if (visit(cellAt(static_cast<std::int64_t>(std::max(left, 0.0)), row),
              cellAt(static_cast<std::int64_t>(std::min(right, columns - 1)), row))) {
      return true;
    }
  }
  return false;
}

template <class Visit>
bool WallGrid::onLine(MKMapPoint a, MKMapPoint b, double extent, Visit visit) const {
  const std::int32_t direction = wrapped(static_cast<std::int32_t>(directionOf(a, b)));
  if (!hasDirectionNear(direction)) return false;
  const double tolerance = kLineTolerance * extent * cellsAUnit_;
  for (const std::int32_t step : {-1, 0, 1}) {
    const std::int32_t near = wrapped(direction + step);
    const double offset = offsetOf(placeOf(a), near);
    const auto before = [near](const OnLine& line, double value) {
      return line.direction < near || (line.direction == near && line.offset < value);
    };
    auto line = std::lower_bound(lines_.begin(), lines_.end(), offset - tolerance, before);
    for (; line != lines_.end() && line->direction == near && line->offset <= offset + tolerance;
         ++line) {
      if (visit(line->edge)) return true;
    }
  }
  return false;
}

template <class Visit>
bool WallGrid::candidates(MKMapPoint a, MKMapPoint b, Visit visit) const {
  if (isUnknown(a) || isUnknown(b)) return false;
  // A line of no length meets nothing: its denominator is 0 with every edge.
  if (a.x == b.x && a.y == b.y) return false;
  for (std::size_t edge = ordinaryCount_; edge < pieces_.size(); ++edge) {
    if (visit(static_cast<std::uint32_t>(edge))) return true;
  }
  if (ordinaryCount_ == 0) return false;
  const double extent = isOrdinaryLine(a, b) ? extentWith(a, b) : 0;
  const double margin = kMargin * extent * cellsAUnit_;
  if (extent == 0 || margin > kWidestMargin) {
    for (std::uint32_t edge = 0; edge < ordinaryCount_; ++edge) {
      if (visit(edge)) return true;
    }
    return false;
  }
  const auto inRun = [&](std::size_t first, std::size_t last) {
    const std::uint32_t start = cells_[first];
    const std::uint32_t end = cells_[last + 1];
    for (std::uint32_t i = start; i < end; ++i) {
      if (visit(inCells_[a.x <= b.x ? i : start + (end - 1 - i)])) return true;
    }
    return false;
  };
  return walk(placeOf(a), placeOf(b), margin, inRun) || onLine(a, b, extent, visit);
}

const WallGrid::Piece* WallGrid::firstMet(MKMapPoint a, MKMapPoint b) const {
  const Piece* found = nullptr;
  candidates(a, b, [&](std::uint32_t edge) {
    const Piece& piece = pieces_[edge];
    if (!meets(a, b, piece)) return false;
    found = &piece;
    return true;
  });
  return found;
}

std::vector<std::uint32_t> WallGrid::met(MKMapPoint a, MKMapPoint b) const {
  std::vector<std::uint32_t> obstacles;
  candidates(a, b, [&](std::uint32_t edge) {
    const Piece& piece = pieces_[edge];
    if (meets(a, b, piece)) obstacles.push_back(obstacles_[edge]);
    return false;
  });
  std::sort(obstacles.begin(), obstacles.end());
  obstacles.erase(std::unique(obstacles.begin(), obstacles.end()), obstacles.end());
  return obstacles;
}

std::size_t WallGrid::bytes() const {
  return sizeof *this + pieces_.capacity() * sizeof(Piece) +
         (obstacles_.capacity() + cells_.capacity() + inCells_.capacity()) * sizeof(std::uint32_t) +
         lines_.capacity() * sizeof(OnLine) + directions_.capacity() * sizeof(std::uint64_t);
}

}  // namespace KorvaniNavigation
