#include "Navigation/Localisation/NodeCells.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <vector>

using KorvaniNavigation::CLLocationCoordinate2D;
using KorvaniNavigation::MKMapPoint;
using KorvaniNavigation::NodeCells;
using KorvaniNavigation::Wedge;
using KorvaniPlatform::MKCoordinateForMapPoint;
using KorvaniPlatform::MKMapPointForCoordinate;

namespace {

using Numbers = std::set<std::uint32_t>;

std::vector<NodeCells::Entry> entriesAt(const std::vector<CLLocationCoordinate2D>& places) {
  std::vector<NodeCells::Entry> entries;
  for (const auto place : places) {
    const auto index = static_cast<std::uint32_t>(entries.size());
    entries.push_back({place, MKMapPointForCoordinate(place), index, index});
  }
  return entries;
}

Numbers around(const NodeCells& cells, CLLocationCoordinate2D position, double reach) {
  Numbers found;
  cells.around(position, reach, [&](const NodeCells::Entry* entry, const NodeCells::Entry* last) {
    for (; entry != last; ++entry) found.insert(entry->index);
    return true;
  });
  return found;
}

Numbers along(const NodeCells& cells, MKMapPoint start, MKMapPoint direction,
              double length = std::numeric_limits<double>::infinity()) {
  const double size = std::abs(direction.x) + std::abs(direction.y);
  Numbers found;
  const MKMapPoint ahead{direction.x / size, direction.y / size};
  cells.along(Wedge(start, ahead, ahead, length * size),
              [&](const NodeCells::Entry* entry, const NodeCells::Entry* last) {
                for (; entry != last; ++entry) found.insert(entry->index);
              });
  return found;
}

bool isOnRay(MKMapPoint point, MKMapPoint start, MKMapPoint ahead) {
  const MKMapPoint way{point.x - start.x, point.y - start.y};
  const double beside = std::abs(way.x * ahead.y - way.y * ahead.x);
  const double sizes =
      (std::abs(way.x) + std::abs(way.y)) * (std::abs(ahead.x) + std::abs(ahead.y));
  return way.x * ahead.x + way.y * ahead.y >= 0 && beside <= Wedge::kSlack * sizes;
}

// Places from a corner of a level, which is as large as asked for.
class Places {
 public:
  Places(CLLocationCoordinate2D corner, double size) : corner_(corner), size_(size) {}

  CLLocationCoordinate2D any() {
    return {corner_.latitude + size_ * part(), corner_.longitude + size_ * part()};
  }
  CLLocationCoordinate2D anyNear() {
    return {corner_.latitude + size_ * (3 * part() - 1),
            corner_.longitude + size_ * (3 * part() - 1)};
  }
  double part() { return static_cast<double>(chance_()) / 4294967296.0; }

  std::vector<CLLocationCoordinate2D> several(int count) {
    std::vector<CLLocationCoordinate2D> places;
    for (int i = 0; i < count; ++i) places.push_back(any());
    return places;
  }

 private:
  std::mt19937 chance_{5};
  CLLocationCoordinate2D corner_;
  double size_;
};

std::vector<Places> someLevels() {
  return {Places({48, 11}, 1e-3), Places({-70, 179}, 0.1), Places({0, 0}, 10), Places({75, 11}, 14),
          Places({48, 11}, 1e-7)};
}

}  // namespace

TEST(NodeCells, WithoutNodesNothingIsFound) {
  const NodeCells cells(std::vector<NodeCells::Entry>{});
  EXPECT_TRUE(around(cells, {48, 11}, 100).empty());
  EXPECT_TRUE(along(cells, {0, 0}, {1, 1}).empty());
}

TEST(NodeCells, FindsAllNodesAroundAPosition) {
  for (Places places : someLevels()) {
    const auto nodes = places.several(1000);
    const NodeCells cells(entriesAt(nodes));
    for (int i = 0; i < 200; ++i) {
      const auto position = i % 4 == 0 ? places.anyNear() : places.any();
      const double reach = cells.side() * 5 * places.part();
      const Numbers found = around(cells, position, reach);
      for (std::uint32_t node = 0; node < nodes.size(); ++node) {
        const double latitude = position.latitude - nodes[node].latitude;
        const double longitude = position.longitude - nodes[node].longitude;
        if (std::hypot(latitude, longitude) > reach) continue;
        ASSERT_EQ(found.count(node), 1u);
      }
    }
  }
}

TEST(NodeCells, FindsFewBesidesThoseAroundAPosition) {
  Places places({48, 11}, 1e-3);
  const NodeCells cells(entriesAt(places.several(10000)));
  for (int i = 0; i < 200; ++i) {
    EXPECT_LT(around(cells, places.any(), 1.5 * cells.side()).size(), 50u);
  }
}

TEST(NodeCells, StopsWhenItIsToldTo) {
  Places places({48, 11}, 1e-3);
  const NodeCells cells(entriesAt(places.several(1000)));
  int calls = 0;
  cells.around({48.0005, 11.0005}, 1, [&](const NodeCells::Entry*, const NodeCells::Entry*) {
    ++calls;
    return calls < 3;
  });
  EXPECT_EQ(calls, 3);
}

TEST(NodeCells, FindsNodesThatShareAPlace) {
  const NodeCells cells(entriesAt({{48, 11}, {48, 11}, {48, 11}}));
  EXPECT_EQ(around(cells, {48, 11}, 0), (Numbers{0, 1, 2}));
  const MKMapPoint here = MKMapPointForCoordinate({48, 11});
  EXPECT_EQ(along(cells, {here.x - 3, here.y - 4}, {3, 4}), (Numbers{0, 1, 2}));
}

// Nodes are put on rays in all directions, from within the level and from outside.
TEST(NodeCells, FindsTheNodesOnARay) {
  int onRays = 0;
  for (Places places : someLevels()) {
    for (int i = 0; i < 200; ++i) {
      auto nodes = places.several(200);
      const MKMapPoint start =
          MKMapPointForCoordinate(i % 4 == 0 ? places.anyNear() : places.any());
      MKMapPoint over = MKMapPointForCoordinate(nodes[0]);
      if (i % 5 == 1) over.x = start.x;
      if (i % 5 == 2) over.y = start.y;
      const MKMapPoint ahead{over.x - start.x, over.y - start.y};
      if (ahead == MKMapPoint{0, 0}) continue;  // both too far north for the plane
      for (const double reach : {0.0, 0.5, 1.0, 1.5}) {
        nodes.push_back(
            MKCoordinateForMapPoint({start.x + reach * ahead.x, start.y + reach * ahead.y}));
      }
      const auto entries = entriesAt(nodes);
      const Numbers found = along(NodeCells(entries), start, ahead);
      for (const auto& entry : entries) {
        if (!isOnRay(entry.point, start, ahead)) continue;
        ++onRays;
        ASSERT_EQ(found.count(entry.index), 1u) << i;
      }
    }
  }
  EXPECT_GT(onRays, 2000);
}

TEST(NodeCells, FindsTheNodesInAWedge) {
  int inWedges = 0;
  for (Places places : someLevels()) {
    const auto entries = entriesAt(places.several(1000));
    const NodeCells cells(entries);
    for (int i = 0; i < 400; ++i) {
      const MKMapPoint tip = MKMapPointForCoordinate(i % 2 == 0 ? places.anyNear() : places.any());
      const double angle = i % 5 == 0 ? std::floor(4 * places.part()) * 1.5707963267948966
                                      : 6.283185307179586 * places.part();
      const double width = std::pow(10.0, -6 * places.part()) * 0.1;
      const auto towards = [](double turn) {
        const double size = std::abs(std::cos(turn)) + std::abs(std::sin(turn));
        return MKMapPoint{std::cos(turn) / size, std::sin(turn) / size};
      };
      const Wedge wedge(tip, towards(angle - width), towards(angle + width),
                        places.part() * cells.distanceToFarthest(tip));
      Numbers found;
      cells.along(wedge, [&](const NodeCells::Entry* entry, const NodeCells::Entry* last) {
        for (; entry != last; ++entry) found.insert(entry->index);
      });
      for (const auto& entry : entries) {
        const double distance = std::abs(entry.point.x - tip.x) + std::abs(entry.point.y - tip.y);
        if (distance > wedge.length() || !wedge.reaches(entry.point)) continue;
        ++inWedges;
        ASSERT_EQ(found.count(entry.index), 1u) << i;
      }
    }
  }
  EXPECT_GT(inWedges, 2000);
}

TEST(NodeCells, FindsANodeThatTheBorderOfItsCellPartsFromTheRay) {
  Places places({48, 11}, 1e-3);
  auto nodes = places.several(400);
  nodes[0] = {48, 11};
  nodes[1] = {48.001, 11.001};
  const double side = NodeCells(entriesAt(nodes)).side();
  for (int i = 2; i < 18; ++i) nodes[static_cast<std::size_t>(i)].longitude = 11 + (i - 1) * side;
  const auto entries = entriesAt(nodes);
  const NodeCells cells(entries);
  ASSERT_EQ(cells.side(), side);
  for (std::uint32_t node = 2; node < 18; ++node) {
    const MKMapPoint point = entries[node].point;
    for (const double beside : {-0.4, 0.4}) {
      const double width = beside * 2 * Wedge::kSlack * 500;
      EXPECT_EQ(along(cells, {point.x + width, point.y + 500}, {0, -1}).count(node), 1u);
      EXPECT_EQ(along(cells, {point.x + width, point.y - 500}, {0, 1}).count(node), 1u);
    }
  }
}

TEST(NodeCells, FindsNothingBehindARayAndBeyondItsLength) {
  std::vector<CLLocationCoordinate2D> row;
  for (int i = 0; i < 100; ++i) row.push_back({48 + i * 1e-5, 11 + i * 1e-5});
  const NodeCells cells(entriesAt(row));
  const MKMapPoint start = MKMapPointForCoordinate(row[40]);
  const MKMapPoint over = MKMapPointForCoordinate(row[60]);
  const Numbers found = along(cells, start, {over.x - start.x, over.y - start.y}, 1);
  EXPECT_LE(*found.begin(), 40u);
  EXPECT_GE(*found.begin(), 28u);
  EXPECT_GE(*found.rbegin(), 60u);
  EXPECT_LE(*found.rbegin(), 72u);  // a cell holds ten of them
}

TEST(NodeCells, FindsFewBesidesThoseOnARay) {
  Places places({48, 11}, 1e-3);
  const NodeCells cells(entriesAt(places.several(10000)));
  const MKMapPoint corner = MKMapPointForCoordinate({48, 11});
  EXPECT_LT(along(cells, corner, {1, -1}).size(), 400u);
  EXPECT_TRUE(along(cells, {corner.x - 1, corner.y + 1}, {-1, 1}).size() < 10u);
}

TEST(NodeCells, AreNotEvenWhereNodesCrowdInACornerOfTheLevel) {
  Places places({48, 11}, 1e-3);
  auto nodes = places.several(1000);
  EXPECT_TRUE(NodeCells(entriesAt(nodes)).isEven());
  nodes.push_back({49, 12});
  EXPECT_FALSE(NodeCells(entriesAt(nodes)).isEven());
}
