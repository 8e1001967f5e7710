#pragma once

// Internal. The nodes of a region in a tree of boxes, so that those near a position are found
// without looking at all, and those of a whole area can be passed over at once.
//
//   const NodeTree tree(coordinates);     // in the order of insertion
//   for (std::uint32_t index : visibleNodes(tree, walls, position)) ...   // VisibleNodes.hpp
//
// A box holds up to kFanOut nodes, or up to kFanOut boxes of the next finer kind, and knows its
// bounds twice: in degrees, in which nodes are ordered, and on the map plane, in which walls stand.
// The bounds are those of the nodes themselves, with nothing rounded: the distance of a box is not
// above that of any of its nodes, to the last bit.
//
// Coordinates that are no numbers, or far from any on Earth, are in no box.
//
// Immutable once made, so it may be read from any number of threads. Making one costs some hundred
// nanoseconds a node; memory is below 100 bytes a node.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Navigation/Localisation/NodeCells.hpp"
#include "Platform/Location.hpp"
#include "Platform/MapPoint.hpp"

namespace KorvaniNavigation {

using KorvaniPlatform::CLLocationCoordinate2D;
using KorvaniPlatform::MKMapPoint;

// The plain distance of latitude and longitude, in degrees.
inline double degreeDistance(CLLocationCoordinate2D a, CLLocationCoordinate2D b) {
  const double latitude = a.latitude - b.latitude;
  const double longitude = a.longitude - b.longitude;
  return std::sqrt(latitude * latitude + longitude * longitude);
}

class NodeTree {
 public:
  static constexpr std::uint32_t kFanOut = 8;

  struct Node {
    CLLocationCoordinate2D coordinate;
    std::uint32_t index = 0;  // its place in the order of insertion
  };

  struct Box {
    CLLocationCoordinate2D southWest;
    CLLocationCoordinate2D northEast;
    MKMapPoint low;
    MKMapPoint high;
    std::uint32_t first = 0;  // of its nodes or boxes, which follow each other
    std::uint32_t count = 0;

    // At most the distance of any node in it, in degrees.
    double distanceFrom(CLLocationCoordinate2D position) const;
  };

  explicit NodeTree(const std::vector<CLLocationCoordinate2D>& coordinates);

  // Whether a coordinate can be in a box.
  static bool isOrdinary(CLLocationCoordinate2D coordinate);

  // All nodes: first those in boxes, in the order of the boxes, then the others.
  const std::vector<Node>& nodes() const { return nodes_; }
  std::uint32_t countInBoxes() const { return countInBoxes_; }

  // Where they are on the map plane, in the same order. Apart, as who asks for many asks for no
  // more.
  const std::vector<MKMapPoint>& points() const { return points_; }

  // Leaves come first, and the box around all comes last; empty when no node is in a box.
  const std::vector<Box>& boxes() const { return boxes_; }
  bool isLeaf(std::uint32_t box) const { return box < leafCount_; }

  // The nodes in boxes once more, by cells.
  const NodeCells& cells() const { return cells_; }

  // Memory that the tree holds.
  std::size_t bytes() const;

 private:
  void sortIntoBoxes(std::uint32_t first, std::uint32_t last);
  Box boxAround(std::uint32_t first, std::uint32_t last) const;
  void makeLeaves();
  void makeBoxesAbove(std::uint32_t first, std::uint32_t last);

  std::vector<Node> nodes_;
  std::vector<MKMapPoint> points_;
  std::vector<Box> boxes_;
  std::uint32_t countInBoxes_ = 0;
  std::uint32_t leafCount_ = 0;
  NodeCells cells_;
};

}  // namespace KorvaniNavigation
