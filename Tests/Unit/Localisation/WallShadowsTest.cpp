#include "Navigation/Localisation/WallShadows.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>
#include <vector>

using KorvaniNavigation::MKMapPoint;
using KorvaniNavigation::segmentsMeet;
using KorvaniNavigation::WallGrid;
using KorvaniNavigation::WallShadows;

namespace {

using Walls = std::vector<WallGrid::Piece>;

WallShadows shadowsFrom(MKMapPoint viewpoint, const Walls& walls) {
  WallShadows shadows(viewpoint);
  for (const WallGrid::Piece& wall : walls) shadows.add(wall);
  return shadows;
}

// A wall east of the origin, from (10, -10) to (10, 10).
WallShadows eastWall() { return shadowsFrom({0, 0}, {{{10, -10}, {10, 10}}}); }

// The walls of a polygon around (0, 0), the first corner to the east.
Walls polygon(int corners, double radius) {
  Walls walls;
  const auto corner = [&](int i) {
    const double angle = 2 * 3.14159265358979 * (i % corners) / corners;
    return MKMapPoint{radius * std::cos(angle), radius * std::sin(angle)};
  };
  for (int i = 0; i < corners; ++i) walls.push_back({corner(i), corner(i + 1)});
  return walls;
}

// Narrower than any gap that these tests speak of, wider than slivers.
constexpr double kNarrow = 1e-6;

bool hidesAll(WallShadows& shadows, MKMapPoint low, MKMapPoint high) {
  std::vector<WallShadows::Gap> gaps;
  return shadows.hidesButForGaps(low, high, kNarrow, gaps) && gaps.empty();
}

bool eastWallHidesAll(MKMapPoint low, MKMapPoint high) {
  auto shadows = eastWall();
  return hidesAll(shadows, low, high);
}

// Two walls that share the corner (10, 10), seen from the origin.
WallShadows cornerWalls() {
  return shadowsFrom({0, 0}, {{{10, 0}, {10, 10}}, {{10, 10}, {0, 10}}});
}

WallShadows::Gap gapOf(WallShadows& shadows) {
  std::vector<WallShadows::Gap> gaps;
  EXPECT_TRUE(shadows.hidesButForGaps({20, 20}, {30, 30}, kNarrow, gaps));
  EXPECT_EQ(gaps.size(), 1u);
  return gaps.empty() ? WallShadows::Gap{} : gaps.front();
}

}  // namespace

TEST(WallShadows, WithoutWallsNothingIsHidden) {
  WallShadows shadows({0, 0});
  EXPECT_FALSE(hidesAll(shadows, {5, 5}, {6, 6}));
}

TEST(WallShadows, HidesWhatIsBehindAWall) {
  EXPECT_TRUE(eastWall().hides({10.1, 0}));
  EXPECT_TRUE(eastWall().hides({1e6, 5e5}));
  EXPECT_TRUE(eastWall().hides({20, -19.9}));
}

TEST(WallShadows, HidesNothingBeforeAWallOrBesideIt) {
  EXPECT_FALSE(eastWall().hides({9.9, 0}));
  EXPECT_FALSE(eastWall().hides({20, 20.1}));
  EXPECT_FALSE(eastWall().hides({-20, 0}));
  EXPECT_FALSE(eastWall().hides({0, 0}));
}

TEST(WallShadows, IsNotSureOfWhatIsOnAWallOrBehindItsEnd) {
  EXPECT_FALSE(eastWall().hides({10, 0}));
  EXPECT_FALSE(eastWall().hides({20, 20}));
}

TEST(WallShadows, HidesAnAreaThatIsWhollyBehindAWall) {
  EXPECT_TRUE(eastWallHidesAll({11, -5}, {30, 5}));
  EXPECT_FALSE(eastWallHidesAll({9, -5}, {30, 5}));
  EXPECT_FALSE(eastWallHidesAll({11, -5}, {12, 15}));
  EXPECT_FALSE(eastWallHidesAll({-1, -1}, {30, 5}));
}

TEST(WallShadows, HidesAreasInAllDirections) {
  for (double angle = 0.1; angle < 6.28; angle += 0.1) {
    const MKMapPoint ahead{std::cos(angle), std::sin(angle)};
    const auto at = [&](double along, double across) {
      return MKMapPoint{along * ahead.x - across * ahead.y, along * ahead.y + across * ahead.x};
    };
    auto shadows = shadowsFrom({0, 0}, {{at(1, -1), at(1, 1)}});
    const MKMapPoint middle = at(3, 0);
    EXPECT_TRUE(hidesAll(shadows, {middle.x - 1, middle.y - 1}, {middle.x + 1, middle.y + 1}))
        << angle;
    EXPECT_FALSE(hidesAll(shadows, {-middle.x - 1, -middle.y - 1}, {-middle.x + 1, -middle.y + 1}));
  }
}

TEST(WallShadows, TwoWallsHideWhatIsBehindTheirCornerButForASliver) {
  auto shadows = cornerWalls();
  EXPECT_FALSE(hidesAll(shadows, {20, 20}, {30, 30}));
  shadows = cornerWalls();
  const auto gap = gapOf(shadows);
  EXPECT_NEAR(gap.near, 20, 1e-4);
  const auto wedge = shadows.wedgeOf(gap);
  EXPECT_TRUE(wedge.reaches({25, 25}));
  EXPECT_FALSE(wedge.reaches({25, 25.001}));
  EXPECT_FALSE(wedge.reaches({-25, -25}));
  EXPECT_FALSE(shadows.hides({25, 25}));
  EXPECT_TRUE(shadows.hides({25, 25.001}));
}

TEST(WallShadows, AWallBehindACornerIsTheLidOfItsSliver) {
  auto shadows = cornerWalls();
  const auto wedge = shadows.wedgeUpTo({{10, 20}, {20, 10}}, gapOf(shadows));
  ASSERT_TRUE(wedge);
  EXPECT_GE(wedge->length(), 30.0);
  EXPECT_LE(wedge->length(), 30.2);
}

TEST(WallShadows, AWallThatEndsInASliverOrBesideItIsNoLid) {
  auto shadows = cornerWalls();
  const auto gap = gapOf(shadows);
  EXPECT_FALSE(shadows.wedgeUpTo({{15, 15}, {20, 10}}, gap));
  EXPECT_FALSE(shadows.wedgeUpTo({{10, 20}, {15, 15}}, gap));
  EXPECT_FALSE(shadows.wedgeUpTo({{16, 15}, {20, 10}}, gap));
  EXPECT_FALSE(shadows.wedgeUpTo({{12, 12}, {20, 20}}, gap));
  EXPECT_FALSE(shadows.wedgeUpTo({{-10, -20}, {-20, -10}}, gap));
}

TEST(WallShadows, AWallAlongASliverIsNoLid) {
  auto shadows = cornerWalls();
  const auto gap = gapOf(shadows);
  EXPECT_TRUE(shadows.wedgeUpTo({{20, 19}, {30, 31}}, gap));
  EXPECT_FALSE(shadows.wedgeUpTo({{20, 19.999}, {30, 30.001}}, gap));
}

TEST(WallShadows, ALidCoversAllOfAGap) {
  auto shadows = shadowsFrom({0, 0}, {{{10, 0}, {10, 9.9}}, {{10, 10}, {0, 10}}});
  std::vector<WallShadows::Gap> gaps;
  ASSERT_TRUE(shadows.hidesButForGaps({20, 17}, {30, 30}, 0.1, gaps));
  ASSERT_EQ(gaps.size(), 1u);
  EXPECT_FALSE(shadows.wedgeUpTo({{20, 19.85}, {20, 21}}, gaps[0]));
  EXPECT_FALSE(shadows.wedgeUpTo({{20, 19}, {20, 19.95}}, gaps[0]));
  const auto wedge = shadows.wedgeUpTo({{20, 19}, {20, 21}}, gaps[0]);
  ASSERT_TRUE(wedge);
  EXPECT_GE(wedge->length(), 40.0);
  EXPECT_LE(wedge->length(), 40.2);
}

TEST(WallShadows, NamesEachGapOnce) {
  auto shadows = cornerWalls();
  gapOf(shadows);
  EXPECT_TRUE(hidesAll(shadows, {20, 20}, {30, 30}));
  EXPECT_TRUE(hidesAll(shadows, {40, 40}, {50, 50}));
}

TEST(WallShadows, NamesAllOfAGapOfWhichAViewShowsAPart) {
  struct Part {
    MKMapPoint low;
    MKMapPoint high;
  };
  const Part lower{{20, 17}, {20, 19.9}};
  const Part upper{{20, 19.9}, {20, 25}};
  for (const auto& [first, second] : {std::pair(lower, upper), std::pair(upper, lower)}) {
    auto shadows = shadowsFrom({0, 0}, {{{10, 0}, {10, 9.9}}, {{10, 10}, {0, 10}}});
    std::vector<WallShadows::Gap> gaps;
    ASSERT_TRUE(shadows.hidesButForGaps(first.low, first.high, 0.1, gaps));
    ASSERT_EQ(gaps.size(), 1u);
    const auto wedge = shadows.wedgeOf(gaps[0]);
    EXPECT_TRUE(wedge.reaches({20, 19.81}));
    EXPECT_TRUE(wedge.reaches({20, 19.99}));
    EXPECT_FALSE(wedge.reaches({20, 19.7}));
    EXPECT_FALSE(wedge.reaches({20, 20.1}));
    EXPECT_TRUE(shadows.hidesButForGaps(second.low, second.high, 0.1, gaps));
    EXPECT_TRUE(gaps.empty());
  }
}

// A small piece far behind the gap closes most of it, but not for what lies before that piece.
TEST(WallShadows, NamesAGapAgainOfWhichANearerViewShowsMore) {
  auto shadows = shadowsFrom(
      {0, 0}, {{{10, -10}, {10, -0.001}}, {{10, 0.001}, {10, 10}}, {{100, -0.005}, {100, 0.005}}});
  std::vector<WallShadows::Gap> gaps;
  ASSERT_TRUE(shadows.hidesButForGaps({200, -1}, {210, 1}, 0.01, gaps));
  ASSERT_EQ(gaps.size(), 2U);
  const double narrow = gaps[0].end - gaps[0].start;
  ASSERT_TRUE(shadows.hidesButForGaps({50, -1}, {60, 1}, 0.01, gaps));
  ASSERT_EQ(gaps.size(), 2U);
  EXPECT_GT(gaps[0].end - gaps[0].start, 1.5 * narrow);
  EXPECT_GT(gaps[1].end - gaps[1].start, 1.5 * narrow);
}

TEST(WallShadows, WhereANearerWallEndsAnothersShadowASliverIsNamed) {
  auto shadows = cornerWalls();
  gapOf(shadows);
  shadows.add({{5, 4.9}, {5, 4.99}});
  std::vector<WallShadows::Gap> gaps;
  EXPECT_TRUE(shadows.hidesButForGaps({40, 39}, {50, 51}, kNarrow, gaps));
  const auto reach = [&](MKMapPoint point) {
    return std::any_of(gaps.begin(), gaps.end(),
                       [&](const auto& gap) { return shadows.wedgeOf(gap).reaches(point); });
  };
  EXPECT_TRUE(reach({50, 49}));
  EXPECT_TRUE(reach({50, 49.9}));
  EXPECT_FALSE(reach({50, 50}));
}

TEST(WallShadows, AGapThatIsTooWideHidesNothingBehindIt) {
  auto shadows = shadowsFrom({0, 0}, {{{10, 0}, {10, 9.99}}, {{10, 10}, {0, 10}}});
  std::vector<WallShadows::Gap> gaps;
  EXPECT_FALSE(shadows.hidesButForGaps({20, 20}, {30, 30}, kNarrow, gaps));
  EXPECT_TRUE(shadows.hidesButForGaps({20, 20}, {30, 30}, 0.001, gaps));
}

TEST(WallShadows, AClosedRoomHidesEveryAreaAroundIt) {
  for (const int corners : {3, 4, 7, 40}) {
    auto shadows = shadowsFrom({0.1, 0.2}, polygon(corners, 1));
    std::vector<WallShadows::Gap> all;
    std::vector<WallShadows::Gap> gaps;
    for (double x = -20; x < 20; x += 0.7) {
      for (double y = -20; y < 20; y += 0.7) {
        if (std::hypot(x + 0.35, y + 0.35) < 4) continue;
        EXPECT_TRUE(shadows.hidesButForGaps({x, y}, {x + 0.7, y + 0.7}, kNarrow, gaps))
            << x << "," << y << " with " << corners;
        all.insert(all.end(), gaps.begin(), gaps.end());
      }
    }
    EXPECT_EQ(all.size(), static_cast<std::size_t>(corners));
    for (const auto& wall : polygon(corners, 1)) {
      const MKMapPoint behind{0.1 + (wall.from.x - 0.1) * 5, 0.2 + (wall.from.y - 0.2) * 5};
      EXPECT_EQ(
          std::count_if(all.begin(), all.end(),
                        [&](const auto& gap) { return shadows.wedgeOf(gap).reaches(behind); }),
          1)
          << behind.x << "," << behind.y;
    }
  }
}

TEST(WallShadows, OfTwoWallsInOneDirectionTheNearerCounts) {
  const WallGrid::Piece far{{20, -30}, {20, 30}};
  const WallGrid::Piece near{{10, -2}, {10, 2}};
  for (const Walls& walls : {Walls{far, near}, Walls{near, far}}) {
    auto shadows = shadowsFrom({0, 0}, walls);
    EXPECT_TRUE(shadows.hides({12, 0}));
    EXPECT_FALSE(shadows.hides({12, 4}));
    EXPECT_TRUE(shadows.hides({22, 9}));
    EXPECT_TRUE(shadows.hides({22, -9}));
  }
}

TEST(WallShadows, AWallThatTheViewpointIsOnHidesBothItsSides) {
  for (const MKMapPoint viewpoint : {MKMapPoint{0, 0}, MKMapPoint{4, 0}, MKMapPoint{10, 0}}) {
    auto shadows = shadowsFrom(viewpoint, {{{0, 0}, {10, 0}}});
    EXPECT_TRUE(shadows.hides({3, 0.01}));
    EXPECT_TRUE(hidesAll(shadows, {3, -5}, {90, -4}));
    EXPECT_FALSE(shadows.hides({3, 0}));
    EXPECT_FALSE(shadows.hides({30, 0}));
    EXPECT_FALSE(hidesAll(shadows, {3, -5}, {90, 4}));
  }
}

TEST(WallShadows, AWallInLineWithTheViewpointHidesNothing) {
  auto shadows = shadowsFrom({0, 0}, {{{5, 5}, {10, 10}}});
  EXPECT_FALSE(shadows.hides({20, 20}));
  EXPECT_FALSE(shadows.hides({20, 20.001}));
}

// Coordinates as large as those of the map plane, viewpoints close to walls and their ends, and
// points near the bounds of what is hidden.
TEST(WallShadows, WhatIsHiddenIsBehindAWallByTheFormula) {
  std::mt19937 chance(1);
  const auto part = [&] { return static_cast<double>(chance()) / 4294967296.0; };
  const auto tiny = [&] { return std::pow(10.0, -12 * part()) * (part() - 0.5); };
  std::size_t hiddenCount = 0;
  for (int world = 0; world < 2000; ++world) {
    const auto place = [&] { return MKMapPoint{1.4e8 + 100 * part(), 9e7 + 100 * part()}; };
    Walls walls;
    for (int i = 0; i < 6; ++i) walls.push_back({i % 2 == 0 ? place() : walls.back().to, place()});
    const MKMapPoint on = part() < 0.5 ? walls[0].to : place();
    const MKMapPoint viewpoint{on.x + tiny(), on.y + tiny()};
    auto shadows = shadowsFrom(viewpoint, walls);
    for (int i = 0; i < 60; ++i) {
      MKMapPoint point = place();
      if (i % 2 == 0) {
        const MKMapPoint end = walls[chance() % walls.size()].to;
        const double reach = 1 + 3 * part();
        point = {viewpoint.x + (end.x - viewpoint.x) * reach + tiny(),
                 viewpoint.y + (end.y - viewpoint.y) * reach + tiny()};
      }
      if (!shadows.hides(point)) continue;
      ++hiddenCount;
      bool met = false;
      for (const auto& wall : walls) met |= segmentsMeet(viewpoint, point, wall.from, wall.to);
      ASSERT_TRUE(met) << world << ", " << i;
    }
  }
  EXPECT_GT(hiddenCount, 30000u);
}
