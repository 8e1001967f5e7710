#pragma once

// Internal. Nodes by the cells of a plain grid, for who looks at the few close to a position.
//
//   const NodeCells cells(entries);
//   cells.around(position, reach, [&](const NodeCells::Entry* first, const NodeCells::Entry* last)
//   {
//     ...
//   });
//
// The cells are squares of degrees, as it is in degrees that nodes are ordered. They are as large
// as the average node takes, so where nodes crowd in a corner of their level a cell may hold most
// of them; the tree of boxes serves such levels better.
//
// Immutable once made, so it may be read from any number of threads. About 50 bytes a node.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Navigation/Localisation/Wedge.hpp"
#include "Platform/Location.hpp"
#include "Platform/MapPoint.hpp"

namespace KorvaniNavigation {

using KorvaniPlatform::CLLocationCoordinate2D;
using KorvaniPlatform::MKMapPoint;

class NodeCells {
 public:
  struct Entry {
    CLLocationCoordinate2D coordinate;  // numbers of at most 1e4
    MKMapPoint point;
    std::uint32_t index = 0;  // its place in the order of insertion
    std::uint32_t place = 0;  // its place in the tree's list
  };

  explicit NodeCells(const std::vector<Entry>& entries);

  // The side of a cell, in degrees. Positive.
  double side() const { return side_; }

  // The same in units of the map plane, from west to east.
  double sideAcross() const { return 1.0 / columnsAUnit_; }

  // The distance of the farthest corner of the bounds, as the sum of those in x and in y.
  double distanceToFarthest(MKMapPoint point) const {
    return std::max(std::abs(low_.x - point.x), std::abs(high_.x - point.x)) +
           std::max(std::abs(low_.y - point.y), std::abs(high_.y - point.y));
  }

  // The distance from one corner of the bounds to the other, as such a sum.
  double distanceAcross() const { return high_.x - low_.x + high_.y - low_.y; }

  // Calls `visit(first, last)` with runs of entries that hold every node within `reach` degrees of
  // the position, and others that are near, until it returns false. The position's numbers are at
  // most 1e4.
  template <class Visit>
  void around(CLLocationCoordinate2D position, double reach, Visit visit) const {
    if (entries_.empty()) return;
    // Far more than differences of such numbers are rounded by.
    constexpr double kRounding = 1e-11;
    const double wide = reach + kRounding;
    const std::size_t west = columnOf(position.longitude - wide);
    const std::size_t east = columnOf(position.longitude + wide);
    const std::size_t north = rowOf(position.latitude + wide);
    for (std::size_t row = rowOf(position.latitude - wide); row <= north; ++row) {
      const std::uint32_t* starts = &starts_[row * columnCount_];
      if (!visit(entries_.data() + starts[west], entries_.data() + starts[east + 1])) return;
    }
  }

  // The same for the nodes in a wedge, up to its end; all runs are visited.
  template <class Visit>
  void along(const Wedge& wedge, Visit visit) const {
    if (entries_.empty()) return;
    const MKMapPoint start = wedge.tip();
    const MKMapPoint direction = wedge.middle();
    const double reach = std::min(wedge.length(), distanceToFarthest(start) + 1.0);
    // How far beside the middle of the wedge its points are, in x and in y together. The last part
    // is far more than points of the plane are rounded by.
    const double margin = (wedge.width() + 2.0 * Wedge::kSlack) * reach + 1e-4;
    const MKMapPoint end{start.x + direction.x * reach, start.y + direction.y * reach};
    const MKMapPoint north = direction.y > 0 ? start : end;
    const MKMapPoint south = direction.y > 0 ? end : start;
    const double slope = direction.x / direction.y;
    const auto xAt = [&](double y) {
      const double x = start.x + (y - start.y) * slope;
      return std::clamp(x, std::min(north.x, south.x), std::max(north.x, south.x));
    };
    for (std::size_t row = rowAt(south.y + margin); row < rowCount_; ++row) {
      const double top = rowEdges_[row + 1] - margin;
      const double bottom = rowEdges_[row] + margin;
      if (bottom < north.y) break;
      const double one = top <= north.y ? north.x : xAt(top);
      const double other = bottom >= south.y ? south.x : xAt(bottom);
      const std::uint32_t* starts = &starts_[row * columnCount_];
      visit(entries_.data() + starts[columnAt(std::min(one, other) - margin)],
            entries_.data() + starts[columnAt(std::max(one, other) + margin) + 1]);
    }
  }

  // Whether no cell holds more than a few nodes, so that to go along a ray is cheap.
  bool isEven() const { return mostInACell_ <= kMostInEvenCell; }

  // Memory that it holds, apart from the object itself.
  std::size_t bytes() const;

 private:
  static constexpr std::uint32_t kMostInEvenCell = 32;

  void measure(const std::vector<Entry>& entries);
  void findRowEdges();
  std::size_t rowAt(double y) const;
  std::size_t columnAt(double x) const {
    return sliceOf((x - low_.x) * columnsAUnit_, columnCount_);
  }

  static std::size_t sliceOf(double place, std::size_t count) {
    return static_cast<std::size_t>(std::clamp(place, 0.0, static_cast<double>(count - 1)));
  }
  std::size_t columnOf(double longitude) const {
    return sliceOf((longitude - southWest_.longitude) * cellsADegree_, columnCount_);
  }
  std::size_t rowOf(double latitude) const {
    return sliceOf((latitude - southWest_.latitude) * cellsADegree_, rowCount_);
  }
  std::size_t cellOf(CLLocationCoordinate2D coordinate) const {
    return rowOf(coordinate.latitude) * columnCount_ + columnOf(coordinate.longitude);
  }

  std::vector<Entry> entries_;         // by cell, row by row
  std::vector<std::uint32_t> starts_;  // where the entries of a cell start, and the end
  std::vector<double> rowEdges_;  // on the map plane: the southern one of each row, and the end
  std::uint32_t mostInACell_ = 0;
  CLLocationCoordinate2D southWest_;
  MKMapPoint low_;
  MKMapPoint high_;
  double side_ = 1;
  double cellsADegree_ = 1;
  double columnsAUnit_ = 1;  // of the map plane, on which longitudes are as evenly apart
  std::size_t columnCount_ = 1;
  std::size_t rowCount_ = 1;
};

}  // namespace KorvaniNavigation
