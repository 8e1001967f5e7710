#include "Navigation/Obstacles/WallGrid.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <utility>
#include <vector>

using KorvaniNavigation::CLLocationCoordinate2D;
using KorvaniNavigation::MKMapPoint;
using KorvaniNavigation::segmentsMeet;
using KorvaniNavigation::WallEdge;
using KorvaniNavigation::WallGrid;
using KorvaniPlatform::MKCoordinateForMapPoint;
using KorvaniPlatform::MKMapPointForCoordinate;

namespace {

using Numbers = std::vector<std::uint32_t>;

// A wall from (0, 0) to (0, 10).
WallGrid singleWall() { return WallGrid({{{0, 0}, {0, 10}, 0}}); }

// The walls x = 0, 1, ... 49, each from y = 0 to y = 50 in pieces of length 1; all pieces of a wall
// belong to one obstacle. No cell holds more than a few.
WallGrid fiftyWalls() {
  std::vector<WallEdge> edges;
  for (std::uint32_t wall = 0; wall < 50; ++wall) {
    for (int y = 0; y < 50; ++y) {
      edges.push_back({{1.0 * wall, 1.0 * y}, {1.0 * wall, y + 1.0}, wall});
    }
  }
  return WallGrid(edges);
}

WallEdge edgeBetween(CLLocationCoordinate2D from, CLLocationCoordinate2D to) {
  return {MKMapPointForCoordinate(from), MKMapPointForCoordinate(to), 0};
}

constexpr MKMapPoint kLatticeOrigin{142000000, 93000000};
constexpr double kLatticeUnit = 0x1p-25;

// The number from which `project` makes exactly `target`; some next to it when there is none.
template <class Project>
double inverse(double guess, double target, Project project) {
  for (int i = 0; i < 100 && project(guess) != target; ++i) {
    const bool isRising = project(guess + 1) > project(guess);
    guess = std::nextafter(guess, (project(guess) < target) == isRising ? 1000 : -1000);
  }
  return guess;
}

CLLocationCoordinate2D coordinateOf(std::int64_t x, std::int64_t y) {
  const MKMapPoint place{kLatticeOrigin.x + static_cast<double>(x) * kLatticeUnit,
                         kLatticeOrigin.y + static_cast<double>(y) * kLatticeUnit};
  const CLLocationCoordinate2D guess = KorvaniPlatform::MKCoordinateForMapPoint(place);
  const auto xOf = [](double longitude) { return MKMapPointForCoordinate({0, longitude}).x; };
  const auto yOf = [](double latitude) { return MKMapPointForCoordinate({latitude, 0}).y; };
  return {inverse(guess.latitude, place.y, yOf), inverse(guess.longitude, place.x, xOf)};
}

// A wall of a tenth of a unit, in a row beside the lattice's origin.
WallEdge shortEdge(int place) {
  const MKMapPoint from{kLatticeOrigin.x - 10, kLatticeOrigin.y + 0.1 * place};
  return {from, {from.x, from.y + 0.1}, 1};
}

struct Vectors {
  std::int64_t x;
  std::int64_t y;
  std::int64_t otherX;
  std::int64_t otherY;
};

// Two vectors with x * otherY - y * otherX = 1, the first as given but for a common divisor: the
// extended algorithm of Euclid.
Vectors unimodular(std::int64_t x, std::int64_t y) {
  std::int64_t a = x;
  std::int64_t b = y;
  std::int64_t ofX = 1;
  std::int64_t ofY = 0;
  std::int64_t nextOfX = 0;
  std::int64_t nextOfY = 1;
  while (b != 0) {
    const std::int64_t times = a / b;
    a = std::exchange(b, a - times * b);
    ofX = std::exchange(nextOfX, ofX - times * nextOfX);
    ofY = std::exchange(nextOfY, ofY - times * nextOfY);
  }
  return {x / a, y / a, -ofY, ofX};
}

}  // namespace

TEST(WallGrid, WithoutEdgesNothingIsMet) {
  const WallGrid grid(std::vector<WallEdge>{});
  EXPECT_FALSE(grid.meetsAny({0, 0}, {1, 1}));
  EXPECT_TRUE(grid.met({0, 0}, {1, 1}).empty());
  EXPECT_EQ(grid.edgeCount(), 0u);
}

TEST(WallGrid, FindsAWallThatTheLineCrosses) {
  EXPECT_TRUE(singleWall().meetsAny({-1, 5}, {1, 6}));
  EXPECT_TRUE(singleWall().meetsAny({1, 6}, {-1, 5}));
}

TEST(WallGrid, FindsAWallThatTheLineTouchesAtItsEnd) {
  EXPECT_TRUE(singleWall().meetsAny({-1, 5}, {0, 5}));
  EXPECT_TRUE(singleWall().meetsAny({0, 5}, {-1, 5}));
  EXPECT_FALSE(singleWall().meetsAny({-1, 5}, {-0.001, 5}));
}

TEST(WallGrid, FindsAWallWhoseEndTheLineTouches) {
  EXPECT_TRUE(singleWall().meetsAny({-1, 10}, {1, 10}));
  EXPECT_TRUE(singleWall().meetsAny({-1, 0}, {1, 0}));
  EXPECT_FALSE(singleWall().meetsAny({-1, 10.001}, {1, 10.001}));
}

TEST(WallGrid, FindsBothWallsOfACornerThatTheLineTouches) {
  const WallGrid grid({{{0, 0}, {4, 0}, 0}, {{4, 0}, {4, 4}, 1}});
  EXPECT_EQ(grid.met({3, -1}, {5, 1}), (Numbers{0, 1}));
  EXPECT_EQ(grid.met({4, 0}, {5, 1}), (Numbers{0, 1}));
}

TEST(WallGrid, ALineAlongAWallMeetsItNot) {
  EXPECT_FALSE(singleWall().meetsAny({0, 2}, {0, 8}));
  EXPECT_FALSE(singleWall().meetsAny({0, -5}, {0, 15}));
  EXPECT_FALSE(singleWall().meetsAny({1, 0}, {1, 10}));
}

TEST(WallGrid, ALineWithoutLengthMeetsNothing) {
  EXPECT_FALSE(singleWall().meetsAny({0, 5}, {0, 5}));
  EXPECT_FALSE(singleWall().meetsAny({0, 0}, {0, 0}));
}

TEST(WallGrid, AWallWithoutLengthIsNeverMet) {
  const WallGrid grid({{{0, 0}, {0, 0}, 0}, {{2, 2}, {2, 2}, 1}, {{5, 0}, {5, 1}, 2}});
  EXPECT_TRUE(grid.met({-1, -1}, {3, 3}).empty());
}

TEST(WallGrid, NamesEachObstacleOnceAndInAscendingOrder) {
  const WallGrid grid({{{3, 0}, {3, 9}, 2}, {{1, 0}, {1, 9}, 0}, {{2, 0}, {2, 9}, 2}});
  EXPECT_EQ(grid.met({0, 5}, {4, 5}), (Numbers{0, 2}));
  EXPECT_EQ(grid.met({4, 5}, {0, 5}), (Numbers{0, 2}));
  EXPECT_EQ(grid.met({1.5, 5}, {4, 5}), (Numbers{2}));
}

TEST(WallGrid, FindsAllWallsOfALineAcrossManyCells) {
  const WallGrid grid = fiftyWalls();
  Numbers all(50);
  for (std::uint32_t wall = 0; wall < 50; ++wall) all[wall] = wall;
  EXPECT_EQ(grid.met({-3, 1.5}, {52, 48.5}), all);
  EXPECT_EQ(grid.met({52, 48.5}, {-3, 1.5}), all);
  EXPECT_EQ(grid.met({20.5, 3}, {22.5, 47}), (Numbers{21, 22}));
}

TEST(WallGrid, FindsNothingBetweenTwoOfManyWalls) {
  const WallGrid grid = fiftyWalls();
  for (int wall = 0; wall < 49; ++wall) {
    EXPECT_FALSE(grid.meetsAny({wall + 0.25, -10}, {wall + 0.75, 60})) << wall;
  }
}

TEST(WallGrid, FindsWallsOnTheBordersOfCells) {
  const WallGrid grid = fiftyWalls();
  for (std::uint32_t wall = 0; wall < 50; ++wall) {
    EXPECT_EQ(grid.met({wall - 0.5, 25}, {wall + 0.5, 25}), (Numbers{wall}));
    EXPECT_EQ(grid.met({wall - 0.5, 0}, {1.0 * wall, 0}), (Numbers{wall}));
  }
}

TEST(WallGrid, FindsAnEdgeNearTheBeginningOfALine) {
  const WallGrid grid = fiftyWalls();
  ASSERT_NE(grid.firstMet({10.5, 20.5}, {40.5, 20.6}), nullptr);
  EXPECT_EQ(grid.firstMet({10.5, 20.5}, {40.5, 20.6})->from, (MKMapPoint{11, 20}));
  EXPECT_EQ(grid.firstMet({40.5, 20.6}, {10.5, 20.5})->from, (MKMapPoint{40, 20}));
  EXPECT_EQ(grid.firstMet({40.25, 20.6}, {40.5, 20.5}), nullptr);
}

TEST(WallGrid, ALineFarOutsideMeetsNothing) {
  const WallGrid grid = fiftyWalls();
  EXPECT_FALSE(grid.meetsAny({-5, -5}, {-5, 100}));
  EXPECT_FALSE(grid.meetsAny({1e9, 1e9}, {2e9, 1.5e9}));
}

TEST(WallGrid, FindsWallsOfALineThatBeginsFarOutside) {
  const WallGrid grid = fiftyWalls();
  EXPECT_EQ(grid.met({-1e6, 25.25}, {0.5, 25.25}), (Numbers{0}));
  EXPECT_EQ(grid.met({-1e12, 25.25}, {0.5, 25.25}), (Numbers{0}));
}

TEST(WallGrid, ServesWorldsOfAnySize) {
  for (const double size : {1e-120, 1e-90, 1e-9, 1.0, 1e9, 1e90, 1e120}) {
    const WallGrid grid({{{0, 0}, {0, size}, 0}, {{size, 0}, {size, size}, 1}});
    EXPECT_EQ(grid.met({-size, size / 2}, {size / 2, size / 2}), (Numbers{0})) << size;
    EXPECT_EQ(grid.met({-size, size / 2}, {2 * size, size / 2}), (Numbers{0, 1})) << size;
    EXPECT_FALSE(grid.meetsAny({size / 4, 0}, {size / 2, size})) << size;
  }
}

TEST(WallGrid, FindsSmallWallsInALargeWorld) {
  const WallGrid grid({{{0, 0}, {1e-9, 1e-9}, 0}, {{1e6, 1e6}, {2e6, 1e6}, 1}});
  EXPECT_EQ(grid.met({0, 1e-9}, {1e-9, 0}), (Numbers{0}));
  EXPECT_FALSE(grid.meetsAny({0, 1e-9}, {0, 2e-9}));
}

// The formula itself calls some of them met: the last digits of its denominator decide.
TEST(WallGrid, AgreesWithTheFormulaOnPiecesOfOneStraightLineThatLieApart) {
  std::size_t metCount = 0;
  for (int i = 1; i <= 2000; ++i) {
    const auto at = [slope = i / 2003.0](double x) { return MKMapPoint{x, x * slope}; };
    std::vector<WallEdge> walls{{at(5), at(5.9), 0}};
    for (double y = 10; y < 15; y += 0.1) walls.push_back({{0, y}, {0.1, y}, 1});
    const bool met = segmentsMeet(at(1), at(1.7), walls[0].from, walls[0].to);
    metCount += met ? 1 : 0;
    EXPECT_EQ(WallGrid(walls).meetsAny(at(1), at(1.7)), met) << i;
  }
  EXPECT_GT(metCount, 10u);
}

TEST(WallGrid, LooksAtWallsWithoutEndBetweenCoordinates) {
  const CLLocationCoordinate2D here{48, 11};
  const WallGrid grid({edgeBetween(here, {48.001, 11.001}), edgeBetween(here, {48, 1e300})});
  EXPECT_TRUE(grid.meetsAnyBetween({47.9999, 11.0005}, {48.0001, 11.0006}));
  EXPECT_FALSE(grid.meetsAnyBetween({47.9998, 11.0005}, {47.9999, 11.0006}));
}

TEST(WallGrid, FindsWallsBetweenCoordinatesBesideWallsWithoutLength) {
  const WallGrid grid({edgeBetween({48, 11}, {48.001, 11}), edgeBetween({48, 11}, {48, 11})});
  EXPECT_TRUE(grid.meetsAnyBetween({48.0005, 10.999}, {48.0005, 11.001}));
  EXPECT_FALSE(grid.meetsAnyBetween({48.0015, 10.999}, {48.0015, 11.001}));
}

// Lines and pieces so nearly parallel that the formula has no digits left. Their coordinates are
// those of a lattice as fine as the numbers, where line and piece span an area of one square.
TEST(WallGrid, AgreesWithTheFormulaOnPiecesOfOneStraightLineBetweenCoordinates) {
  std::mt19937_64 chance(11);
  std::size_t metCount = 0;
  for (int i = 0; i < 4000; ++i) {
    const auto [x, y, otherX, otherY] = unimodular(static_cast<std::int64_t>(chance() >> 31),
                                                   static_cast<std::int64_t>(chance() >> 31));
    const auto at = [&, x = x, y = y, otherX = otherX, otherY = otherY](int part, int otherPart) {
      return coordinateOf(x * part + otherX * otherPart, y * part + otherY * otherPart);
    };
    const auto a = at(0, 0);
    const auto b = at(1, 0);
    std::vector<WallEdge> walls{edgeBetween(at(1, 3), at(1, 4))};
    for (int j = 0; j < 50; ++j) walls.push_back(shortEdge(j));
    const bool met = segmentsMeet(MKMapPointForCoordinate(a), MKMapPointForCoordinate(b),
                                  walls[0].from, walls[0].to);
    metCount += met ? 1 : 0;
    EXPECT_EQ(WallGrid(walls).meetsAnyBetween(a, b), met) << i;
  }
  EXPECT_GT(metCount, 10u);
}

TEST(WallGrid, CoordinatesThatAreNotNumbersMeetNothing) {
  constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
  const WallGrid grid(
      {{{0, 0}, {0, 10}, 0}, {{kUnknown, 0}, {5, 5}, 1}, {{5, 5}, {9, kUnknown}, 2}});
  EXPECT_FALSE(grid.meetsAny({kUnknown, 5}, {1, 5}));
  EXPECT_FALSE(grid.meetsAny({-1, 5}, {1, kUnknown}));
  EXPECT_EQ(grid.met({-1, 5}, {20, 5}), (Numbers{0}));
}

TEST(WallGrid, AgreesWithTheFormulaOnInfiniteCoordinates) {
  constexpr double kFar = std::numeric_limits<double>::infinity();
  std::vector<MKMapPoint> points;
  for (const double x : {-kFar, -1.0, 0.0, 1.0, kFar}) {
    for (const double y : {-kFar, 0.0, 1.0, kFar}) points.push_back({x, y});
  }
  for (const MKMapPoint p : points) {
    for (const MKMapPoint q : points) {
      const WallGrid grid({{p, q, 0}});
      for (const MKMapPoint a : points) {
        for (const MKMapPoint b : points) {
          ASSERT_EQ(grid.meetsAny(a, b), segmentsMeet(a, b, p, q))
              << a.x << "," << a.y << " " << b.x << "," << b.y << " and " << p.x << "," << p.y
              << " " << q.x << "," << q.y;
        }
      }
    }
  }
}

TEST(WallGrid, HoldsLessThanAHundredBytesAnEdge) {
  EXPECT_LT(fiftyWalls().bytes(), 100u * fiftyWalls().edgeCount());
}

// Long walls that lie aslant pass through most cells.
TEST(WallGrid, HoldsLessThanAHundredBytesAnEdgeOfWallsAllOverTheLevel) {
  for (const double length : {10.0, 25.0, 60.0, 200.0}) {
    std::vector<WallEdge> edges;
    for (std::uint32_t i = 0; i < 1022; ++i) {
      const MKMapPoint from{1.4e8 + i * 367 % 1000, 9e7 + i * 593 % 1000};
      edges.push_back({from, {from.x + length, from.y + (i % 2 == 0 ? length : -length)}, i});
    }
    const WallGrid grid(edges);
    EXPECT_LT(grid.bytes(), 100u * grid.edgeCount()) << length;
  }
}

// A line a little aslant goes over from one row of cells to the next far from both of its ends.
TEST(WallGrid, FindsTheWallWhereALineThatIsNearlyLevelCrossesIntoAnotherRow) {
  std::vector<WallEdge> edges;
  const auto at = [](double x, double y) { return MKMapPoint{1.4e8 + x, 9e7 + y}; };
  for (std::uint32_t i = 0; i <= 400; ++i) {
    const double x = i % 20 * 5.0;
    const double y = i / 20 * 5.0;
    edges.push_back({at(x, y), at(x + 0.5, y + 0.25), i});
  }
  const WallGrid grid(edges);
  std::size_t metCount = 0;
  for (const double fall : {1e-2, 1e-3, 1e-4, 1e-5}) {
    for (double y = 0.01; y < 100; y += 0.07) {
      const auto a = MKCoordinateForMapPoint(at(-2, y));
      const auto b = MKCoordinateForMapPoint(at(98, y - fall));
      const MKMapPoint from = MKMapPointForCoordinate(a);
      const MKMapPoint to = MKMapPointForCoordinate(b);
      const bool isMet = std::any_of(edges.begin(), edges.end(), [&](const WallEdge& edge) {
        return segmentsMeet(from, to, edge.from, edge.to);
      });
      ASSERT_EQ(grid.meetsAnyBetween(a, b), isMet) << fall << ' ' << y;
      metCount += isMet ? 1 : 0;
    }
  }
  EXPECT_GT(metCount, 100U);
}
