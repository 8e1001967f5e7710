#include "Navigation/Obstacles/WallGrid.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace KorvaniNavigation {

namespace {

// Outside these bounds, products of differences might leave the range of numbers.
constexpr double kShortest = 1e-100;
constexpr double kFarthest = 1e100;
// So many edges a cell the cells are sized for, found by measurement, and so many cells along an
// edge: more would take more than a hundred bytes an edge.
constexpr double kEdgesPerCell = 0.2;
constexpr double kCellsAnEdge = 3.5;
// A line whose margin is wider than so many cells is compared with all edges.
constexpr double kWidestMargin = 8.0;

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

bool isWithoutLength(const WallGrid::Piece& piece) { return piece.from == piece.to; }

// The exact answer for a line between coordinates. Rarely needed, so it shall not be in the way.
[[gnu::noinline]] bool meetsExactly(CLLocationCoordinate2D a, CLLocationCoordinate2D b,
                                    const WallGrid::Piece& piece) {
  return segmentsMeet(KorvaniPlatform::MKMapPointForCoordinate(a),
                      KorvaniPlatform::MKMapPointForCoordinate(b), piece.from, piece.to);
}

}  // namespace

WallGrid::WallGrid(const std::vector<WallEdge>& edges) {
  measure(edges);
  sortByCell(edges);
  layOut();
  if (ordinaryCount_ > 0) prepareEstimates();
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
                    length / (kCellsAnEdge * static_cast<double>(ordinaryCount_))});
  cellsAUnit_ = 1.0 / cell_;
  columnCount_ = static_cast<std::int64_t>(width * cellsAUnit_) + 1;
  rowCount_ = static_cast<std::int64_t>(height * cellsAUnit_) + 1;
  columnEnd_ = std::nextafter(static_cast<double>(columnCount_), 0.0);
  rowEnd_ = std::nextafter(static_cast<double>(rowCount_), 0.0);
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

// Lines mostly begin in the building or beside it, so the rectangle to be known roughly is that of
// the edges and as much again on each side. Worlds that are too large or too small to be known
// well enough go without, and so do those with edges that are looked at each time; but edges
// without length are never met.
//
// By how much the area in `clearance` may be wrong: the ends of the line lie within two thirds of
// `reach_` of every corner of a piece, pieces are at most a third of it long, and the ends are
// wrong by e in x and y. So 2 A - C is wrong by 16 e times that third at most, and C by 4 e times
// it: by less than 7 e reach_ together. The roundings come to some forty times 2^-53 of its square.
// Both are taken half as large again and three times as large.
void WallGrid::prepareEstimates() {
  const double extent = extentWith(low_, low_);
  reach_ = 3 * extent;
  lines_ = WallLines(pieces_, ordinaryCount_, low_, reach_);
  const auto unusual = pieces_.begin() + static_cast<std::ptrdiff_t>(ordinaryCount_);
  if (!std::all_of(unusual, pieces_.end(), isWithoutLength)) return;
  estimate_ =
      PlaneEstimate({low_.x - extent, low_.y - extent}, {high_.x + extent, high_.y + extent});
  const double error = estimate_.error();
  marginOfEstimate_ = (kMargin * reach_ + 2 * error) * cellsAUnit_;
  leastLength_ = WallLines::kLeastLength * error;
  clearArea_ = 10 * error * reach_ + 0x1p-46 * reach_ * reach_;
  if (marginOfEstimate_ > kWidestMargin) estimate_ = PlaneEstimate();
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
bool WallGrid::inCells(MKMapPoint a, MKMapPoint b, double margin, Visit visit) const {
  const auto inRun = [&](std::size_t first, std::size_t last) {
    const std::uint32_t start = cells_[first];
    const std::uint32_t end = cells_[last + 1];
    for (std::uint32_t i = start; i < end; ++i) {
      if (visit(inCells_[a.x <= b.x ? i : start + (end - 1 - i)])) return true;
    }
    return false;
  };
  return walk(placeOf(a), placeOf(b), margin, inRun);
}

template <class Visit>
bool WallGrid::onLine(MKMapPoint a, MKMapPoint b, double extent, Visit visit) const {
  if (extent <= reach_ && !lines_.mayHold(a, b)) return false;
  const auto pieces = lines_.piecesOn(a, b, extent, pieces_);
  return std::any_of(pieces.begin(), pieces.end(), visit);
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
  return inCells(a, b, margin, visit) || onLine(a, b, extent, visit);
}

// How clearly a line passes a piece, as an area: positive when it passes, negative when it meets.
//
// The ends of the line make triangles with the piece, and those of the piece with the line. Let A
// and B be twice the areas of the first two, positive to one side and negative to the other. A - B
// is the cross product of line and piece, so |A + B| - |A - B| is twice the lesser one of |A| and
// |B|, and negative when the ends lie on two sides. The same goes for the other two, with the same
// difference. The greater one of both is what tells.
inline double WallGrid::clearance(MKMapPoint a, MKMapPoint line, const Piece& piece) {
  const double wallX = piece.to.x - piece.from.x;
  const double wallY = piece.to.y - piece.from.y;
  const double x = piece.from.x - a.x;
  const double y = piece.from.y - a.y;
  const double cross = line.x * wallY - line.y * wallX;
  const double ofLine = x * wallY - y * wallX;
  const double ofPiece = x * line.y - y * line.x;
  return std::max(std::abs(ofLine + ofLine - cross), std::abs(ofPiece + ofPiece - cross)) -
         std::abs(cross);
}

// Whatever may go either way is a choice between two numbers and not a branch: half of the branches
// would be foreseen wrongly, and cost more than all the rest. What lies outside is brought to the
// border, where pieces are looked at in vain.
template <class Visit>
bool WallGrid::walkUpwards(Place a, Place b, double margin, Visit visit) const {
  // Whatever is flatter takes in all of a row, as it should.
  constexpr double kFlattest = 1e-9;
  const double lowX = std::min(a.x, b.x) - margin;
  const double highX = std::max(a.x, b.x) + margin;
  const double lowY = std::min(a.y, b.y) - margin;
  const double highY = std::max(a.y, b.y) + margin;
  if ((highX < 0) | (lowX > columnEnd_) | (highY < 0) | (lowY > rowEnd_)) return false;
  const double way = a.y <= b.y ? b.x - a.x : a.x - b.x;
  const double slope = way / std::max(std::abs(b.y - a.y), kFlattest);
  // Of a row, with a margin on each side: how far the line moves in it, and where it enters row 0.
  const double step = (1 + 2 * margin) * slope;
  const double width = std::abs(step) + 2 * margin;
  const double entry = (a.y <= b.y ? a.x : b.x) - (lowY + 2 * margin) * slope;
  const double leftOfRow0 = entry + std::min(step, 0.0) - margin;
  const auto column = [this](double x) {
    return static_cast<std::int64_t>(std::min(std::max(x, 0.0), columnEnd_));
  };
  auto row = static_cast<std::int64_t>(std::max(lowY, 0.0));
  const auto last = static_cast<std::int64_t>(std::min(highY, rowEnd_));
  for (; row <= last; ++row) {
    const double left = leftOfRow0 + static_cast<double>(row) * slope;
    const double right = left + width;
    if (visit(cellAt(column(std::max(left, lowX)), row),
              cellAt(column(std::min(right, highX)), row))) {
      return true;
    }
  }
  return false;
}

bool WallGrid::meetsAnyInRun(const RoughLine& line, std::size_t first, std::size_t last) const {
  const std::uint32_t end = cells_[last + 1];
  for (std::uint32_t i = cells_[first]; i < end; ++i) {
    const Piece& piece = pieces_[inCells_[i]];
    const double clear = clearance(line.from, line.way, piece);
    if (clear > clearArea_) continue;
    if (clear < -clearArea_ || meetsExactly(line.a, line.b, piece)) return true;
  }
  return false;
}

bool WallGrid::meetsAnyBetween(CLLocationCoordinate2D a, CLLocationCoordinate2D b) const {
  using KorvaniPlatform::MKMapPointForCoordinate;
  if (estimate_.covers(a) && estimate_.covers(b)) {
    const MKMapPoint from = estimate_.at(a);
    const MKMapPoint to = estimate_.at(b);
    if (longerSide(from, to) > leastLength_) {
      const RoughLine line{a, b, from, {to.x - from.x, to.y - from.y}};
      const auto meets = [&](std::size_t first, std::size_t last) {
        return meetsAnyInRun(line, first, last);
      };
      if (walkUpwards(placeOf(from), placeOf(to), marginOfEstimate_, meets)) return true;
      if (!lines_.mayHold(from, to)) return false;
    }
  }
  return meetsAny(MKMapPointForCoordinate(a), MKMapPointForCoordinate(b));
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
         lines_.bytes();
}

}  // namespace KorvaniNavigation
