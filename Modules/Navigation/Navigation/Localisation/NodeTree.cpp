#include "Navigation/Localisation/NodeTree.hpp"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace KorvaniNavigation {

namespace {

// Far outside of what degrees mean, and far inside of what numbers hold.
constexpr double kFarthestDegrees = 1e4;

constexpr double kUnbounded = std::numeric_limits<double>::infinity();
constexpr NodeTree::Box kNothing{{kUnbounded, kUnbounded},
                                 {-kUnbounded, -kUnbounded},
                                 {kUnbounded, kUnbounded},
                                 {-kUnbounded, -kUnbounded},
                                 0,
                                 0};

// How far a value lies outside of a range, computed as the difference to any value in it would be.
double outside(double value, double low, double high) {
  if (value < low) return value - low;
  return value > high ? value - high : 0;
}

void include(NodeTree::Box& box, CLLocationCoordinate2D southWest, CLLocationCoordinate2D northEast,
             MKMapPoint low, MKMapPoint high) {
  box.southWest = {std::min(box.southWest.latitude, southWest.latitude),
                   std::min(box.southWest.longitude, southWest.longitude)};
  box.northEast = {std::max(box.northEast.latitude, northEast.latitude),
                   std::max(box.northEast.longitude, northEast.longitude)};
  box.low = {std::min(box.low.x, low.x), std::min(box.low.y, low.y)};
  box.high = {std::max(box.high.x, high.x), std::max(box.high.y, high.y)};
}

bool isHigherThanWide(const NodeTree::Node* nodes, std::size_t count) {
  CLLocationCoordinate2D southWest = nodes->coordinate;
  CLLocationCoordinate2D northEast = southWest;
  for (const NodeTree::Node* node = nodes; node != nodes + count; ++node) {
    const CLLocationCoordinate2D& place = node->coordinate;
    southWest.latitude = std::min(southWest.latitude, place.latitude);
    southWest.longitude = std::min(southWest.longitude, place.longitude);
    northEast.latitude = std::max(northEast.latitude, place.latitude);
    northEast.longitude = std::max(northEast.longitude, place.longitude);
  }
  return northEast.latitude - southWest.latitude > northEast.longitude - southWest.longitude;
}

// Where to part so many nodes: the left part fills a whole number of boxes of some kind.
std::uint32_t leftPartOf(std::uint32_t count) {
  std::uint32_t part = NodeTree::kFanOut;
  while (2 * part < count) part *= 2;
  return part;
}

}  // namespace

double NodeTree::Box::distanceFrom(CLLocationCoordinate2D position) const {
  const double latitude = outside(position.latitude, southWest.latitude, northEast.latitude);
  const double longitude = outside(position.longitude, southWest.longitude, northEast.longitude);
  return std::sqrt(latitude * latitude + longitude * longitude);
}

bool NodeTree::isOrdinary(CLLocationCoordinate2D coordinate) {
  return std::abs(coordinate.latitude) <= kFarthestDegrees &&
         std::abs(coordinate.longitude) <= kFarthestDegrees;
}

NodeTree::NodeTree(const std::vector<CLLocationCoordinate2D>& coordinates)
    : cells_(std::vector<NodeCells::Entry>()) {
  nodes_.reserve(coordinates.size());
  for (const CLLocationCoordinate2D coordinate : coordinates) {
    const auto index = static_cast<std::uint32_t>(nodes_.size());
    nodes_.push_back({coordinate, index});
  }
  const auto others = std::stable_partition(
      nodes_.begin(), nodes_.end(), [](const Node& node) { return isOrdinary(node.coordinate); });
  countInBoxes_ = static_cast<std::uint32_t>(others - nodes_.begin());
  sortIntoBoxes(0, countInBoxes_);
  points_.reserve(nodes_.size());
  for (const Node& node : nodes_) {
    points_.push_back(KorvaniPlatform::MKMapPointForCoordinate(node.coordinate));
  }
  makeLeaves();
  std::vector<NodeCells::Entry> entries;
  entries.reserve(countInBoxes_);
  for (std::uint32_t i = 0; i < countInBoxes_; ++i) {
    entries.push_back({nodes_[i].coordinate, points_[i], nodes_[i].index, i});
  }
  cells_ = NodeCells(entries);
}

// Parts the nodes at the middle of their longer side, again and again. A box of any kind is then a
// stretch of the list.
void NodeTree::sortIntoBoxes(std::uint32_t first, std::uint32_t last) {
  if (last - first <= kFanOut) return;
  const bool byLatitude = isHigherThanWide(&nodes_[first], last - first);
  const std::uint32_t middle = first + leftPartOf(last - first);
  std::nth_element(nodes_.begin() + first, nodes_.begin() + middle, nodes_.begin() + last,
                   [byLatitude](const Node& a, const Node& b) {
                     return byLatitude ? a.coordinate.latitude < b.coordinate.latitude
                                       : a.coordinate.longitude < b.coordinate.longitude;
                   });
  sortIntoBoxes(first, middle);
  sortIntoBoxes(middle, last);
}

NodeTree::Box NodeTree::boxAround(std::uint32_t first, std::uint32_t last) const {
  Box box = kNothing;
  for (std::uint32_t i = first; i < last; ++i) {
    include(box, nodes_[i].coordinate, nodes_[i].coordinate, points_[i], points_[i]);
  }
  box.first = first;
  box.count = last - first;
  return box;
}

void NodeTree::makeLeaves() {
  boxes_.reserve(countInBoxes_ / (kFanOut - 1) + 8);
  for (std::uint32_t first = 0; first < countInBoxes_; first += kFanOut) {
    boxes_.push_back(boxAround(first, std::min(first + kFanOut, countInBoxes_)));
  }
  leafCount_ = static_cast<std::uint32_t>(boxes_.size());
  std::uint32_t first = 0;
  auto last = leafCount_;
  while (last - first > 1) {
    makeBoxesAbove(first, last);
    first = last;
    last = static_cast<std::uint32_t>(boxes_.size());
  }
  boxes_.shrink_to_fit();
}

void NodeTree::makeBoxesAbove(std::uint32_t first, std::uint32_t last) {
  for (; first < last; first += kFanOut) {
    Box box = kNothing;
    box.first = first;
    box.count = std::min(kFanOut, last - first);
    for (std::uint32_t i = first; i < first + box.count; ++i) {
      const Box& part = boxes_[i];
      include(box, part.southWest, part.northEast, part.low, part.high);
    }
    boxes_.push_back(box);
  }
}

std::size_t NodeTree::bytes() const {
  return sizeof *this + nodes_.capacity() * sizeof(Node) + points_.capacity() * sizeof(MKMapPoint) +
         boxes_.capacity() * sizeof(Box) + cells_.bytes();
}

}  // namespace KorvaniNavigation
