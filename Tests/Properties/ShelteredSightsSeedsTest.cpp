// The nodes in sight of positions that see little or nothing: outside of facades with and without
// gaps, in halls of many corners, in colonnades, combs of walls, spirals, mazes and courtyards.
// They are compared with those of the plain way. All follows from seeds; a failing case names its
// own.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "Navigation/Localisation/VisibleNodes.hpp"
#include "Navigation/Localisation/VisibleNodesByBoxes.hpp"
#include "PlainSights.hpp"
#include "SeededNumbers.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::CLLocationCoordinate2D;
using KorvaniNavigation::MKMapPoint;
using KorvaniNavigation::NodeTree;
using KorvaniNavigation::visibleNodes;
using KorvaniNavigation::visibleNodesByBoxes;
using KorvaniNavigation::WallEdge;
using KorvaniNavigation::WallGrid;
using KorvaniPlatform::MKCoordinateForMapPoint;
using KorvaniPlatform::MKMapPointForCoordinate;

constexpr double kFullTurn = 6.283185307179586;

// A level of side 1 around (0, 0), placed somewhere on Earth in some size, with its nodes, walls
// and positions to look from.
class Shelter {
 public:
  explicit Shelter(std::uint64_t seed) : numbers_(seed) {
    constexpr double kSizes[] = {1e-5, 1e-3, 1e-3, 1e-2, 1, 10};
    size_ = kSizes[numbers_.below(6)];
    middle_ = {-60 + 120 * numbers_.unit(), 170 * numbers_.unit()};
    turn_ = numbers_.chance(0.3) ? 0 : kFullTurn * numbers_.unit();
  }

  SeededNumbers& numbers() { return numbers_; }
  double between(double low, double high) { return low + (high - low) * numbers_.unit(); }
  // A gap in a wall of length 1, from none to a quarter of it.
  double anyGap() { return numbers_.chance(0.4) ? 0 : std::pow(10.0, between(-9, -0.6)); }

  CLLocationCoordinate2D at(double x, double y) const {
    const double cosine = std::cos(turn_);
    const double sine = std::sin(turn_);
    return {middle_.latitude + size_ * (x * sine + y * cosine),
            middle_.longitude + size_ * (x * cosine - y * sine)};
  }
  CLLocationCoordinate2D around(double x, double y, double radius) {
    const double angle = kFullTurn * numbers_.unit();
    const double distance = radius * std::sqrt(numbers_.unit());
    return at(x + distance * std::cos(angle), y + distance * std::sin(angle));
  }

  void wall(double x, double y, double toX, double toY) {
    corners_.push_back(at(x, y));
    walls_.push_back(
        {MKMapPointForCoordinate(corners_.back()), MKMapPointForCoordinate(at(toX, toY)), 0});
  }
  // A straight wall in pieces, each of which leaves a part of its length open.
  void pieces(double x, double y, double toX, double toY, int count, double gap) {
    for (int i = 0; i < count; ++i) {
      const double from = static_cast<double>(i) / count;
      const double to = (i + 1.0 - gap) / count;
      wall(x + (toX - x) * from, y + (toY - y) * from, x + (toX - x) * to, y + (toY - y) * to);
    }
  }
  void square(double half, int count, double gap) {
    pieces(-half, -half, half, -half, count, gap);
    pieces(half, -half, half, half, count, gap);
    pieces(half, half, -half, half, count, gap);
    pieces(-half, half, -half, -half, count, gap);
  }
  void ring(double x, double y, double radius, int count, double gap) {
    for (int i = 0; i < count; ++i) {
      const double from = kFullTurn * i / count;
      const double to = kFullTurn * (i + 1 == count && gap == 0 ? 0 : i + 1 - gap) / count;
      wall(x + radius * std::cos(from), y + radius * std::sin(from), x + radius * std::cos(to),
           y + radius * std::sin(to));
    }
  }

  void lookFrom(CLLocationCoordinate2D position) { positions_.push_back(position); }

  // Anywhere on the level but near its middle, some of them exactly behind corners.
  void fill(int count, double cleared) {
    for (int i = 0; i < count; ++i) {
      if (i % 8 == 0) {
        nodes_.push_back(behindACorner());
        continue;
      }
      double x = 0;
      double y = 0;
      do {
        x = between(-0.5, 0.5);
        y = between(-0.5, 0.5);
      } while (std::hypot(x, y) < cleared);
      nodes_.push_back(at(x, y));
    }
  }

  const std::vector<CLLocationCoordinate2D>& nodes() const { return nodes_; }
  const std::vector<WallEdge>& walls() const { return walls_; }
  const std::vector<CLLocationCoordinate2D>& positions() const { return positions_; }

 private:
  CLLocationCoordinate2D behindACorner() {
    const auto position = positions_[numbers_.below(static_cast<std::uint32_t>(positions_.size()))];
    const auto corner = corners_[numbers_.below(static_cast<std::uint32_t>(corners_.size()))];
    const MKMapPoint from = MKMapPointForCoordinate(position);
    const MKMapPoint over = MKMapPointForCoordinate(corner);
    const double reach = between(1, 6);
    return MKCoordinateForMapPoint(
        {from.x + (over.x - from.x) * reach, from.y + (over.y - from.y) * reach});
  }

  SeededNumbers numbers_;
  CLLocationCoordinate2D middle_;
  double size_ = 1;
  double turn_ = 0;
  std::vector<CLLocationCoordinate2D> corners_;
  std::vector<WallEdge> walls_;
  std::vector<CLLocationCoordinate2D> positions_;
  std::vector<CLLocationCoordinate2D> nodes_;
};

constexpr int kPositionCount = 40;

void drawFacade(Shelter& shelter) {
  const double gap = shelter.anyGap();
  shelter.square(0.52, 20 + static_cast<int>(shelter.numbers().below(30)), gap);
  if (shelter.numbers().chance(0.3)) shelter.square(0.521, 20, shelter.anyGap());
  const bool hasRooms = shelter.numbers().chance(0.5);
  for (double y = -0.45; hasRooms && y < 0.5; y += 0.1) shelter.pieces(-0.5, y, 0.5, y, 6, 0.2);
  for (int i = 0; i < kPositionCount; ++i) {
    const double away = 0.53 + std::pow(10.0, shelter.between(-3, 1));
    shelter.lookFrom(shelter.at(-away, shelter.between(-1, 1)));
  }
  shelter.fill(500, 0);
}

void drawHall(Shelter& shelter) {
  const double radius = shelter.between(0.02, 0.1);
  shelter.ring(0, 0, radius, 8 << shelter.numbers().below(5), shelter.anyGap());
  if (shelter.numbers().chance(0.5)) shelter.ring(0, 0, 3 * radius, 40, shelter.anyGap());
  for (int i = 0; i < kPositionCount; ++i) shelter.lookFrom(shelter.around(0, 0, 0.95 * radius));
  shelter.fill(500, radius);
}

void drawColonnade(Shelter& shelter) {
  const int rows = 2 + static_cast<int>(shelter.numbers().below(4));
  const double half = shelter.between(0.2, 0.6);
  for (int row = 0; row < rows; ++row) {
    const double radius = 0.06 + 0.02 * row;
    for (int i = 0; i < 20; ++i) {
      const double angle = kFullTurn * (i + 0.37 * row) / 20;
      shelter.ring(radius * std::cos(angle), radius * std::sin(angle), 0.016 * half, 4, 0);
    }
  }
  for (int i = 0; i < kPositionCount; ++i) shelter.lookFrom(shelter.around(0, 0, 0.05));
  shelter.fill(500, 0.2);
}

void drawComb(Shelter& shelter) {
  const double skew = shelter.between(0.01, 0.2);
  for (int i = 0; i < 100; ++i) {
    const double angle = kFullTurn * i / 100;
    shelter.wall(0.1 * std::cos(angle), 0.1 * std::sin(angle), 0.14 * std::cos(angle + skew),
                 0.14 * std::sin(angle + skew));
  }
  for (int i = 0; i < kPositionCount; ++i) shelter.lookFrom(shelter.around(0, 0, 0.09));
  shelter.fill(500, 0.15);
}

void drawSpiral(Shelter& shelter) {
  constexpr int kCorners = 200;
  const double turns = shelter.between(3, 8);
  const auto angleOf = [&](int i) { return kFullTurn * turns * i / kCorners; };
  const auto radiusOf = [](int i) { return 0.01 + 0.2 * i / kCorners; };
  for (int i = 0; i < kCorners; ++i) {
    shelter.wall(radiusOf(i) * std::cos(angleOf(i)), radiusOf(i) * std::sin(angleOf(i)),
                 radiusOf(i + 1) * std::cos(angleOf(i + 1)),
                 radiusOf(i + 1) * std::sin(angleOf(i + 1)));
  }
  for (int i = 0; i < kPositionCount; ++i) shelter.lookFrom(shelter.around(0, 0, 0.2));
  shelter.fill(500, 0.22);
}

void drawMaze(Shelter& shelter) {
  const double open = shelter.between(0.2, 0.7);
  constexpr double kSide = 0.03;
  for (int i = -5; i < 5; ++i) {
    for (int j = -5; j < 5; ++j) {
      const double x = i * kSide;
      const double y = j * kSide;
      if (!shelter.numbers().chance(open)) shelter.wall(x, y, x + kSide, y);
      if (!shelter.numbers().chance(open)) shelter.wall(x, y, x, y + kSide);
    }
  }
  for (int i = 0; i < kPositionCount; ++i) shelter.lookFrom(shelter.around(0, 0, 0.15));
  shelter.fill(500, shelter.numbers().chance(0.5) ? 0.2 : 0);
}

void drawCourtyard(Shelter& shelter) {
  const double half = shelter.between(0.1, 0.2);
  shelter.square(half, 12, shelter.anyGap());
  shelter.square(half + 0.03, 15, shelter.anyGap());
  for (int i = 0; i < kPositionCount; ++i) shelter.lookFrom(shelter.around(0, 0, half));
  shelter.fill(500, 1.5 * half);
}

// Looks from all positions, and tells how many of them see something.
int expectSameSights(const Shelter& shelter, std::uint64_t seed) {
  const NodeTree tree(shelter.nodes());
  const WallGrid grid(shelter.walls());
  const PlainSights plain(shelter.nodes(), shelter.walls());
  int seeing = 0;
  for (const auto position : shelter.positions()) {
    const auto expected = plain.from(position);
    EXPECT_EQ(visibleNodes(tree, grid, position), expected) << "seed " << seed;
    EXPECT_EQ(visibleNodesByBoxes(tree, grid, position), expected) << "seed " << seed;
    if (!expected.empty()) ++seeing;
  }
  return seeing;
}

// Some positions see something and some nothing, or nearly nothing.
void expectSameSights(const std::function<void(Shelter&)>& draw) {
  constexpr std::uint64_t kSeeds = 80;
  int seeing = 0;
  for (std::uint64_t seed = 1; seed <= kSeeds; ++seed) {
    Shelter shelter(seed);
    draw(shelter);
    seeing += expectSameSights(shelter, seed);
    if (testing::Test::HasFailure()) return;
  }
  EXPECT_GT(seeing, 0);
}

}  // namespace

TEST(ShelteredSights, OutsideOfFacadesAreThoseOfThePlainWay) { expectSameSights(drawFacade); }
TEST(ShelteredSights, InHallsAreThoseOfThePlainWay) { expectSameSights(drawHall); }
TEST(ShelteredSights, AmidColonnadesAreThoseOfThePlainWay) { expectSameSights(drawColonnade); }
TEST(ShelteredSights, InCombsOfWallsAreThoseOfThePlainWay) { expectSameSights(drawComb); }
TEST(ShelteredSights, InSpiralsAreThoseOfThePlainWay) { expectSameSights(drawSpiral); }
TEST(ShelteredSights, InMazesAreThoseOfThePlainWay) { expectSameSights(drawMaze); }
TEST(ShelteredSights, InCourtyardsAreThoseOfThePlainWay) { expectSameSights(drawCourtyard); }

}  // namespace KorvaniTest
