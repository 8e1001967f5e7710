#include "Navigation/Localisation/NodesInWedges.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

using KorvaniNavigation::CLLocationCoordinate2D;
using KorvaniNavigation::MKMapPoint;
using KorvaniNavigation::NodesInWedges;
using KorvaniNavigation::NodeTree;
using KorvaniNavigation::Wedge;
using KorvaniPlatform::MKCoordinateForMapPoint;
using KorvaniPlatform::MKMapPointForCoordinate;

namespace {

constexpr double kEndless = std::numeric_limits<double>::infinity();

class Chance {
 public:
  double part() { return static_cast<double>(numbers_()) / 4294967296.0; }
  CLLocationCoordinate2D place(double size) { return {48 + size * part(), 11 + size * part()}; }

 private:
  std::mt19937 numbers_{3};
};

MKMapPoint directionTo(MKMapPoint from, MKMapPoint to) {
  const MKMapPoint way{to.x - from.x, to.y - from.y};
  const double size = std::abs(way.x) + std::abs(way.y);
  return {way.x / size, way.y / size};
}

MKMapPoint turned(double angle) { return directionTo({0, 0}, {std::cos(angle), std::sin(angle)}); }

double distanceOf(MKMapPoint a, MKMapPoint b) { return std::abs(a.x - b.x) + std::abs(a.y - b.y); }

// The wedges over which each of some nodes is seen exactly, and others of any width.
std::vector<Wedge> someWedges(const NodeTree& tree, MKMapPoint tip, int count, Chance& chance) {
  std::vector<Wedge> wedges;
  for (int i = 0; i < count; ++i) {
    const double length =
        i % 3 == 0 ? chance.part() * distanceOf(tip, tree.points()[0]) * 2 : kEndless;
    if (i % 2 == 0) {
      const auto node =
          static_cast<std::size_t>(chance.part() * static_cast<double>(tree.points().size()));
      if (tree.points()[node] == tip) continue;
      const MKMapPoint ahead = directionTo(tip, tree.points()[node]);
      wedges.emplace_back(tip, ahead, ahead, length);
    } else {
      const double angle = i % 5 == 0 ? 0 : 6.283185307179586 * chance.part();
      const double width = 0.01 * std::pow(10.0, -6 * chance.part());
      wedges.emplace_back(tip, turned(angle - width), turned(angle + width), length);
    }
  }
  return wedges;
}

// How many nodes there were to be found.
int expectToFindAll(const NodeTree& tree, MKMapPoint tip, const std::vector<Wedge>& wedges) {
  NodesInWedges finder(tree, tip);
  for (const Wedge& wedge : wedges) finder.add(wedge);
  auto found = finder.take(kEndless);
  std::sort(found.begin(), found.end());
  int count = 0;
  for (std::uint32_t place = 0; place < tree.countInBoxes(); ++place) {
    const MKMapPoint point = tree.points()[place];
    const bool isInOne = std::any_of(wedges.begin(), wedges.end(), [&](const Wedge& wedge) {
      return wedge.reaches(point) && distanceOf(tip, point) <= wedge.length();
    });
    if (!isInOne) continue;
    ++count;
    EXPECT_TRUE(std::binary_search(found.begin(), found.end(), place));
  }
  EXPECT_TRUE(finder.isEmpty());
  EXPECT_TRUE(finder.take(kEndless).empty());
  return count;
}

}  // namespace

TEST(NodesInWedges, WithoutNodesOrWedgesThereAreNone) {
  const NodeTree none({});
  NodesInWedges empty(none, {0, 0});
  empty.add({{0, 0}, {1, 0}, {1, 0}, kEndless});
  EXPECT_TRUE(empty.take(kEndless).empty());
  const NodeTree one({{48, 11}});
  EXPECT_TRUE(NodesInWedges(one, {0, 0}).take(kEndless).empty());
}

TEST(NodesInWedges, AreFoundInFewWedgesAndInMany) {
  Chance chance;
  int count = 0;
  for (const double size : {1e-6, 1e-3, 1.0}) {
    std::vector<CLLocationCoordinate2D> places;
    for (int i = 0; i < 3000; ++i) places.push_back(chance.place(size));
    const NodeTree tree(places);
    for (int i = 0; i < 60; ++i) {
      CLLocationCoordinate2D from = chance.place(size);
      if (i % 3 == 0) from.latitude -= 3 * size * chance.part();
      if (i % 3 == 1) from = places[static_cast<std::size_t>(i)];
      const MKMapPoint tip = MKMapPointForCoordinate(from);
      const int wedgeCount = i % 2 == 0 ? 3 : 150;
      const auto wedges = someWedges(tree, tip, wedgeCount, chance);
      count += expectToFindAll(tree, tip, wedges);
    }
  }
  EXPECT_GT(count, 5000);
}

TEST(NodesInWedges, AreFoundWhereNodesCrowdInACornerOfTheLevel) {
  Chance chance;
  std::vector<CLLocationCoordinate2D> places;
  for (int i = 0; i < 1000; ++i) places.push_back(chance.place(1e-4));
  places.push_back({49, 12});
  const NodeTree tree(places);
  ASSERT_FALSE(tree.cells().isEven());
  int count = 0;
  for (int i = 0; i < 60; ++i) {
    const MKMapPoint tip = MKMapPointForCoordinate(chance.place(2e-4));
    count += expectToFindAll(tree, tip, someWedges(tree, tip, 3, chance));
  }
  EXPECT_GT(count, 60);
}

TEST(NodesInWedges, ManyDoNotHoldMuchElse) {
  Chance chance;
  std::vector<CLLocationCoordinate2D> places;
  for (int i = 0; i < 10000; ++i) places.push_back(chance.place(1e-3));
  const NodeTree tree(places);
  const MKMapPoint tip = MKMapPointForCoordinate({48.0005, 11.0005});
  NodesInWedges finder(tree, tip);
  for (int i = 0; i < 200; ++i) {
    const MKMapPoint ahead = turned(6.283185307179586 * i / 200);
    finder.add({tip, ahead, ahead, kEndless});
  }
  EXPECT_TRUE(finder.areMany());
  EXPECT_LT(finder.take(kEndless).size(), 100u);
}

TEST(NodesInWedges, BeyondTheReachAreNotLookedFor) {
  std::vector<CLLocationCoordinate2D> field;
  for (int row = 0; row < 50; ++row) {
    for (int column = 0; column < 50; ++column)
      field.push_back({48 + row * 1e-5, 11 + column * 1e-5});
  }
  const NodeTree tree(field);
  const MKMapPoint tip = MKMapPointForCoordinate({48 + 20e-5, 11 - 1e-5});
  NodesInWedges finder(tree, tip);
  finder.add({tip, {1, 0}, {1, 0}, kEndless});
  EXPECT_FALSE(finder.areMany());
  const auto found = finder.take(10.1 * tree.cells().sideAcross());
  EXPECT_GE(found.size(), 9u);
  EXPECT_LE(found.size(), 14u);
}

// Directions are counted from the axis of x on, and those just short of a full turn end there.
TEST(NodesInWedges, FindsNodesJustShortOfAFullTurnAmongManyWedges) {
  const MKMapPoint tip{1.4e8, 9e7};
  std::vector<CLLocationCoordinate2D> places;
  const auto add = [&](double x, double y) {
    places.push_back(MKCoordinateForMapPoint({tip.x + x, tip.y + y}));
  };
  for (int i = 0; i < 400; ++i) add(10 + i % 20 * 30.0, 10 + i / 20 * 30.0);
  for (int i = 0; i < 50; ++i) add(500 + i, -5e-7 * i);
  const NodeTree tree(places);
  NodesInWedges wedges(tree, tip);
  const Wedge shortOfATurn(tip, {1, -1e-8}, {1, 0}, kEndless);
  for (int i = 0; i < 200; ++i) wedges.add({tip, {0, 1}, {0, 1}, kEndless});
  wedges.add(shortOfATurn);
  ASSERT_TRUE(wedges.areMany());
  const auto found = wedges.take(kEndless);
  int inside = 0;
  for (std::uint32_t i = 0; i < tree.countInBoxes(); ++i) {
    if (!shortOfATurn.reaches(tree.points()[i])) continue;
    ++inside;
    EXPECT_NE(std::find(found.begin(), found.end(), i), found.end()) << "node " << i;
  }
  EXPECT_GE(inside, 40);
}
