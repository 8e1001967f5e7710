#include "Navigation/Localisation/NodeCells.hpp"

namespace KorvaniNavigation {

namespace {

constexpr double kNodesPerCell = 1.0;
// A tenth of a millimetre: nodes that stand in one place share a cell.
constexpr double kSmallestCell = 1e-9;

}  // namespace

NodeCells::NodeCells(const std::vector<Entry>& entries) {
  if (!entries.empty()) measure(entries);
  starts_.assign(columnCount_ * rowCount_ + 1, 0);
  for (const Entry& entry : entries) {
    mostInACell_ = std::max(mostInACell_, ++starts_[cellOf(entry.coordinate) + 1]);
  }
  for (std::size_t i = 1; i < starts_.size(); ++i) starts_[i] += starts_[i - 1];
  entries_.resize(entries.size());
  std::vector<std::uint32_t> next(starts_.begin(), starts_.end() - 1);
  for (const Entry& entry : entries) entries_[next[cellOf(entry.coordinate)]++] = entry;
  findRowEdges();
}

void NodeCells::measure(const std::vector<Entry>& entries) {
  southWest_ = entries.front().coordinate;
  CLLocationCoordinate2D northEast = southWest_;
  low_ = entries.front().point;
  high_ = low_;
  for (const Entry& entry : entries) {
    const CLLocationCoordinate2D& coordinate = entry.coordinate;
    southWest_ = {std::min(southWest_.latitude, coordinate.latitude),
                  std::min(southWest_.longitude, coordinate.longitude)};
    northEast = {std::max(northEast.latitude, coordinate.latitude),
                 std::max(northEast.longitude, coordinate.longitude)};
    low_ = {std::min(low_.x, entry.point.x), std::min(low_.y, entry.point.y)};
    high_ = {std::max(high_.x, entry.point.x), std::max(high_.y, entry.point.y)};
  }
  const double count = static_cast<double>(entries.size()) / kNodesPerCell;
  const double height = northEast.latitude - southWest_.latitude;
  const double width = northEast.longitude - southWest_.longitude;
  side_ =
      std::max({std::sqrt(width * height / count), std::max(width, height) / count, kSmallestCell});
  cellsADegree_ = 1.0 / side_;
  columnsAUnit_ = cellsADegree_ * (360.0 / KorvaniPlatform::kMKMapWorldSize);
  columnCount_ = static_cast<std::size_t>(width * cellsADegree_) + 1;
  rowCount_ = static_cast<std::size_t>(height * cellsADegree_) + 1;
}

void NodeCells::findRowEdges() {
  rowEdges_.reserve(rowCount_ + 1);
  for (std::size_t row = 0; row <= rowCount_; ++row) {
    const double latitude = southWest_.latitude + static_cast<double>(row) * side_;
    rowEdges_.push_back(
        KorvaniPlatform::MKMapPointForCoordinate({latitude, southWest_.longitude}).y);
  }
}

// The southernmost row that is not wholly south of y; the last one if all are.
std::size_t NodeCells::rowAt(double y) const {
  const auto edge = std::partition_point(rowEdges_.begin() + 1, rowEdges_.end() - 1,
                                         [y](double northern) { return northern > y; });
  return static_cast<std::size_t>(edge - rowEdges_.begin()) - 1;
}

std::size_t NodeCells::bytes() const {
  return entries_.capacity() * sizeof(Entry) + starts_.capacity() * sizeof(std::uint32_t) +
         rowEdges_.capacity() * sizeof(double);
}

}  // namespace KorvaniNavigation
