#pragma once

// Internal. The edges of a list of obstacles, projected once and laid into a grid, so that a line
// is compared with the few that lie near it and not with all.
//
//   const WallGrid grid(edgesOf(obstacles));
//   if (grid.meetsAny(a, b)) ...                       // the same answer as a loop over all edges
//   for (std::uint32_t obstacle : grid.met(a, b)) ...  // ascending, each once
//
// The answers are those of `segmentsMeet` for every edge, bit for bit, rounding included. What is
// left out of the comparison is what cannot meet by that formula however it rounds. Let E be the
// longer side of the rectangle around all edges and the line. Differences of coordinates are at
// most 1.5 E long, and a difference of two products of differences is wrong by 4 * 2^-53 of the
// product of the two lengths at most. Hence:
//
// - Where edge and line form an angle whose sine is at least kLeastSine, the fractions r and s of
//   the formula are wrong by so little that the point they name is wrong by
//   8 * 2^-53 * 1.5 E / kLeastSine at most, an eighth of kMargin * E. The walk along the line takes
//   in every cell within kMargin * E, so it finds such an edge.
// - Where the two are nearer to parallel the formula loses its digits, and may call pieces of one
//   straight line met that lie far apart. The numerators still have to be small, so that edge and
//   line lie on one straight line to within 2 * kLeastSine * E. These edges are kept sorted by
//   direction and offset, and are found by these (WallLines). Two bits tell at once that there are
//   none, as they nearly always do.
//
// Immutable once made, so it may be asked from any number of threads. Making one costs a few
// hundred nanoseconds an edge; memory is below 100 bytes an edge. A question costs what lies along
// its line, however many walls there are elsewhere.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Navigation/Obstacles/PlaneEstimate.hpp"
#include "Navigation/Obstacles/WallLines.hpp"
#include "Platform/MapPoint.hpp"

namespace KorvaniNavigation {

// Whether the straight lines from a to b and from p to q have a point in common: ends included,
// lines that run in parallel never. They meet at the fraction r of the way from a to b, and s of
// that from p to q.
inline bool segmentsMeet(MKMapPoint a, MKMapPoint b, MKMapPoint p, MKMapPoint q) {
  const double denominator = (b.x - a.x) * (q.y - p.y) - (b.y - a.y) * (q.x - p.x);
  if (denominator == 0) return false;
  const double r = ((p.x - a.x) * (q.y - p.y) - (p.y - a.y) * (q.x - p.x)) / denominator;
  if (!(0 <= r && r <= 1)) return false;
  const double s = ((b.y - a.y) * (p.x - a.x) - (b.x - a.x) * (p.y - a.y)) / denominator;
  return 0 <= s && s <= 1;
}

// One edge of an obstacle.
struct WallEdge {
  MKMapPoint from;
  MKMapPoint to;
  std::uint32_t obstacle = 0;  // its place in the list
};

class WallGrid {
 public:
  // The sine of the angle from which on the formula is well-conditioned.
  static constexpr double kLeastSine = WallLines::kLeastSine;
  static constexpr double kMargin = 1e-6;

  using Piece = WallPiece;

  // A place in units of cells, from the grid's corner on. Differences are exact to their last bit
  // here, however far the building is from the plane's origin.
  struct Place {
    double x;
    double y;
  };

  explicit WallGrid(const std::vector<WallEdge>& edges);

  // Whether any edge meets the line. False when a coordinate is not a number.
  bool meetsAny(MKMapPoint a, MKMapPoint b) const { return firstMet(a, b) != nullptr; }

  // The same for the places of these coordinates on the map plane, in less than half the time.
  bool meetsAnyBetween(CLLocationCoordinate2D a, CLLocationCoordinate2D b) const;

  // An edge that meets the line, one near `a` if there are several; null when there is none.
  const Piece* firstMet(MKMapPoint a, MKMapPoint b) const;

  // The obstacles that have an edge that meets the line, ascending, each once.
  std::vector<std::uint32_t> met(MKMapPoint a, MKMapPoint b) const;

  std::size_t edgeCount() const { return pieces_.size(); }

  // Memory that the grid holds.
  std::size_t bytes() const;

 private:
  void measure(const std::vector<WallEdge>& edges);
  void sortByCell(const std::vector<WallEdge>& edges);
  void layOut();
  void prepareEstimates();
  std::size_t cellAt(std::int64_t column, std::int64_t row) const;
  std::size_t cellOf(MKMapPoint point) const;
  Place placeOf(MKMapPoint point) const;
  double extentWith(MKMapPoint a, MKMapPoint b) const;

  // Calls `visit(first, last)` with runs of cells of one row, until it returns true. The runs hold
  // every cell within `margin` cells of the line, and come from the row of `a` on.
  template <class Visit>
  bool walk(Place a, Place b, double margin, Visit visit) const;

  // The same runs, the rows ascending: for who does not care where the line begins.
  template <class Visit>
  bool walkUpwards(Place a, Place b, double margin, Visit visit) const;

  // A line between coordinates, and what is known of it without projecting them.
  struct RoughLine {
    CLLocationCoordinate2D a;
    CLLocationCoordinate2D b;
    MKMapPoint from;
    MKMapPoint way;  // from one end to the other
  };

  bool meetsAnyInRun(const RoughLine& line, std::size_t first, std::size_t last) const;
  static double clearance(MKMapPoint a, MKMapPoint line, const Piece& piece);

  // Calls `visit(edge)` for every edge that may meet the line, some more than once, until it
  // returns true.
  template <class Visit>
  bool candidates(MKMapPoint a, MKMapPoint b, Visit visit) const;
  template <class Visit>
  bool inCells(MKMapPoint a, MKMapPoint b, double margin, Visit visit) const;
  template <class Visit>
  bool onLine(MKMapPoint a, MKMapPoint b, double extent, Visit visit) const;

  std::vector<Piece> pieces_;             // by cell, so that neighbours are read together
  std::vector<std::uint32_t> obstacles_;  // of each piece
  std::size_t ordinaryCount_ = 0;         // the pieces after these are compared each time
  std::vector<std::uint32_t> cells_;  // where the edges of a cell start in `inCells_`, row by row
  std::vector<std::uint32_t> inCells_;
  WallLines lines_;
  MKMapPoint low_;
  MKMapPoint high_;
  PlaneEstimate estimate_;       // of what is in and around the rectangle of edges
  double reach_ = 0;             // the longer side of that
  double marginOfEstimate_ = 0;  // cells
  double clearArea_ = 0;
  double leastLength_ = 0;
  double columnEnd_ = 0;  // the last numbers that are within the last column and row
  double rowEnd_ = 0;
  double cell_ = 1;        // side of a cell
  double cellsAUnit_ = 1;  // its inverse
  std::int64_t columnCount_ = 0;
  std::int64_t rowCount_ = 0;
};

}  // namespace KorvaniNavigation
