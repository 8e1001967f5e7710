#include "Navigation/Localisation/NodeTree.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

#include "Support/Points.hpp"

using KorvaniNavigation::CLLocationCoordinate2D;
using KorvaniNavigation::degreeDistance;
using KorvaniNavigation::NodeTree;
using KorvaniTest::fromOrigin;
using KorvaniTest::kNotANumber;

namespace {

// Places 1 m apart in rows, and some of them twice.
std::vector<CLLocationCoordinate2D> field(int rows, int columns) {
  std::vector<CLLocationCoordinate2D> places;
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      places.push_back(fromOrigin(row, column));
      if ((row + column) % 7 == 0) places.push_back(fromOrigin(row, column));
    }
  }
  return places;
}

bool encloses(const NodeTree::Box& box, CLLocationCoordinate2D place) {
  return box.southWest.latitude <= place.latitude && place.latitude <= box.northEast.latitude &&
         box.southWest.longitude <= place.longitude && place.longitude <= box.northEast.longitude;
}

bool encloses(const NodeTree::Box& box, KorvaniPlatform::MKMapPoint point) {
  return box.low.x <= point.x && point.x <= box.high.x && box.low.y <= point.y &&
         point.y <= box.high.y;
}

// Counts how often each node is found below a box, and expects every box above to enclose it.
void countNodes(const NodeTree& tree, std::uint32_t box, std::vector<NodeTree::Box> above,
                std::vector<int>& found) {
  above.push_back(tree.boxes()[box]);
  const NodeTree::Box here = above.back();
  EXPECT_GE(here.count, 1u);
  EXPECT_LE(here.count, NodeTree::kFanOut);
  for (std::uint32_t i = here.first; i < here.first + here.count; ++i) {
    if (!tree.isLeaf(box)) {
      countNodes(tree, i, above, found);
      continue;
    }
    const NodeTree::Node& node = tree.nodes()[i];
    ++found[node.index];
    for (const NodeTree::Box& outer : above) {
      EXPECT_TRUE(encloses(outer, node.coordinate));
      EXPECT_TRUE(encloses(outer, tree.points()[i]));
    }
  }
}

}  // namespace

TEST(NodeTree, WithoutNodesThereIsNoBox) {
  const NodeTree tree(std::vector<CLLocationCoordinate2D>{});
  EXPECT_TRUE(tree.boxes().empty());
  EXPECT_TRUE(tree.nodes().empty());
}

TEST(NodeTree, EveryNodeIsInOneLeafAndWithinAllBoxesAboveIt) {
  for (const int rows : {1, 2, 3, 9, 40}) {
    const auto places = field(rows, 23);
    const NodeTree tree(places);
    std::vector<int> found(places.size());
    countNodes(tree, static_cast<std::uint32_t>(tree.boxes().size() - 1), {}, found);
    EXPECT_EQ(found, std::vector<int>(places.size(), 1)) << rows;
  }
}

TEST(NodeTree, NodesKeepTheirPlaceInTheOrderOfInsertion) {
  const auto places = field(5, 5);
  const NodeTree tree(places);
  ASSERT_EQ(tree.nodes().size(), places.size());
  ASSERT_EQ(tree.points().size(), places.size());
  for (std::size_t i = 0; i < places.size(); ++i) {
    const CLLocationCoordinate2D place = places[tree.nodes()[i].index];
    EXPECT_EQ(tree.nodes()[i].coordinate, place);
    EXPECT_EQ(tree.points()[i], KorvaniPlatform::MKMapPointForCoordinate(place));
  }
}

TEST(NodeTree, DistanceOfABoxIsNotAboveThatOfItsNodes) {
  const NodeTree tree(field(30, 30));
  for (const auto position : {fromOrigin(-4, 3.3), fromOrigin(12.7, 9.1), fromOrigin(50, 61)}) {
    for (std::uint32_t box = 0; tree.isLeaf(box); ++box) {
      const NodeTree::Box& leaf = tree.boxes()[box];
      for (std::uint32_t i = leaf.first; i < leaf.first + leaf.count; ++i) {
        EXPECT_LE(leaf.distanceFrom(position),
                  degreeDistance(position, tree.nodes()[i].coordinate));
      }
    }
  }
}

TEST(NodeTree, DistanceOfABoxIsNothingWithinItAndThatOfTheNearestCornerOutside) {
  const NodeTree tree({{0, 0}, {2, 4}});
  const NodeTree::Box& box = tree.boxes().back();
  EXPECT_EQ(box.distanceFrom({1, 1}), 0);
  EXPECT_EQ(box.distanceFrom({2, 4}), 0);
  EXPECT_EQ(box.distanceFrom({5, 8}), 5);
  EXPECT_EQ(box.distanceFrom({-3, 2}), 3);
}

TEST(NodeTree, CoordinatesThatAreNoneAreInNoBox) {
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  const NodeTree tree({{kNotANumber, 11}, {48, 11}, {48, kInfinite}, {1e5, 11}, {48, -1e5}});
  ASSERT_EQ(tree.countInBoxes(), 1u);
  ASSERT_EQ(tree.boxes().size(), 1u);
  EXPECT_EQ(tree.boxes()[0].count, 1u);
  std::vector<std::uint32_t> order;
  for (const NodeTree::Node& node : tree.nodes()) order.push_back(node.index);
  EXPECT_EQ(order, (std::vector<std::uint32_t>{1, 0, 2, 3, 4}));
}

TEST(NodeTree, WithoutOrdinaryCoordinatesThereIsNoBox) {
  const NodeTree tree({{kNotANumber, 11}, {48, kNotANumber}});
  EXPECT_TRUE(tree.boxes().empty());
  EXPECT_EQ(tree.nodes().size(), 2u);
}

TEST(NodeTree, ManyNodesMayShareAPlace) {
  const std::vector<CLLocationCoordinate2D> places(1000, CLLocationCoordinate2D{48, 11});
  const NodeTree tree(places);
  EXPECT_EQ(tree.countInBoxes(), 1000u);
  EXPECT_EQ(tree.boxes().back().distanceFrom({48, 11}), 0);
}

TEST(NodeTree, KeepsTheNodesOfItsBoxesByCellsAsWell) {
  const NodeTree tree({{kNotANumber, 11}, {48, 11}, {48.00001, 11.00001}});
  std::vector<std::uint32_t> found;
  tree.cells().around({48, 11}, 1, [&](const auto* entry, const auto* last) {
    for (; entry != last; ++entry) {
      found.push_back(entry->index);
      EXPECT_EQ(tree.nodes()[entry->place].index, entry->index);
      EXPECT_EQ(tree.points()[entry->place], entry->point);
    }
    return true;
  });
  std::sort(found.begin(), found.end());
  EXPECT_EQ(found, (std::vector<std::uint32_t>{1, 2}));
}

TEST(NodeTree, HoldsLessThanAHundredBytesANode) {
  const auto places = field(100, 100);
  EXPECT_LT(NodeTree(places).bytes(), 100 * places.size());
}
