// The grid of walls against a plain loop over all edges: 20 to 100 questions a world and 25 worlds
// a case. What a world holds follows from its seed, which a failing case prints.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <random>
#include <vector>

#include "Navigation/Obstacles/WallGrid.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::MKMapPoint;
using KorvaniNavigation::segmentsMeet;
using KorvaniNavigation::WallEdge;
using KorvaniNavigation::WallGrid;

enum class Walls {
  anywhere,
  lattice,      // on few coordinates, so that walls touch, overlap and share corners
  shortOnes,    // many cells
  upright,      // along the axes
  oneLine,      // on one straight line, but for rounding
  nearOneLine,  // on one straight line, but for a little more
};

struct WallWorld {
  std::uint32_t seed;
  Walls walls;
  int wallCount;
  int power;  // the size of the world, as a power of ten
  bool farFromOrigin;
};

std::ostream& operator<<(std::ostream& out, const WallWorld& world) {
  return out << "world " << world.seed << " kind " << static_cast<int>(world.walls) << " walls "
             << world.wallCount << " size 1e" << world.power
             << (world.farFromOrigin ? " far from the origin" : "");
}

WallWorld anyWorld() {
  WallWorld world;
  world.seed = *rc::gen::resize(rc::kNominalSize, rc::gen::arbitrary<std::uint32_t>());
  world.walls = *rc::gen::element(Walls::anywhere, Walls::lattice, Walls::shortOnes, Walls::upright,
                                  Walls::oneLine, Walls::nearOneLine);
  world.wallCount = *rc::gen::inRange(1, 120);
  world.power = *rc::gen::inRange(-6, 9);
  world.farFromOrigin = *rc::gen::arbitrary<bool>();
  return world;
}

// Draws walls and lines of a world.
class WallSource {
 public:
  explicit WallSource(const WallWorld& world)
      : world_(world), chance_(world.seed), size_(std::pow(10.0, world.power)) {
    const double angle = between(0, 3.2);
    cosine_ = std::cos(angle);
    sine_ = std::sin(angle);
  }

  WallEdge wall(int index) {
    const MKMapPoint from = point();
    MKMapPoint to = point();
    if (world_.walls == Walls::shortOnes) to = beside(from, 0.02);
    if (world_.walls == Walls::upright) {
      to = index % 2 == 0 ? MKMapPoint{from.x, to.y} : MKMapPoint{to.x, from.y};
    }
    return {from, to, static_cast<std::uint32_t>(index / 3)};
  }

  // A line, often one that touches a wall, or goes on where it ends, or reaches far out.
  std::pair<MKMapPoint, MKMapPoint> line(const std::vector<WallEdge>& walls) {
    const WallEdge& one = walls[chance_() % walls.size()];
    const WallEdge& other = walls[chance_() % walls.size()];
    switch (chance_() % 8) {
      case 0:
        return {one.from, other.to};
      case 1:
        return {one.from, point()};
      case 2:
        return {along(one, 0.5), point()};
      case 3:
        return {along(one, between(1, 3)), along(one, between(3, 6))};
      case 4:
        return {point(), beside(point(), 100)};
      case 5:
        return {along(one, between(-1, 0)), along(one, between(-6, -1))};
      default:
        return {point(), point()};
    }
  }

 private:
  double between(double low, double high) {
    return low + (high - low) * (static_cast<double>(chance_()) / 4294967296.0);
  }

  MKMapPoint moved(double x, double y) const {
    return world_.farFromOrigin ? MKMapPoint{1.4e8 + x, 9e7 + y} : MKMapPoint{x, y};
  }

  MKMapPoint beside(MKMapPoint point, double reach) {
    return {point.x + between(-reach, reach) * size_, point.y + between(-reach, reach) * size_};
  }

  static MKMapPoint along(const WallEdge& wall, double part) {
    return {wall.from.x + (wall.to.x - wall.from.x) * part,
            wall.from.y + (wall.to.y - wall.from.y) * part};
  }

  MKMapPoint point() {
    if (world_.walls == Walls::oneLine) return onTheLine(1e-15);
    if (world_.walls == Walls::nearOneLine) return onTheLine(1e-9);
    double x = between(0, size_);
    double y = between(0, size_);
    if (world_.walls == Walls::lattice) {
      x = std::round(x / size_ * 8) * size_ / 8;
      y = std::round(y / size_ * 8) * size_ / 8;
    }
    return moved(x, y);
  }

  MKMapPoint onTheLine(double deviation) {
    const double along = between(-size_, size_);
    const double across = between(-deviation, deviation) * size_;
    return moved(along * cosine_ - across * sine_, along * sine_ + across * cosine_);
  }

  const WallWorld& world_;
  std::mt19937 chance_;
  double size_;
  double cosine_;
  double sine_;
};

// What a plain loop over all edges finds. Edges of one obstacle follow each other.
std::vector<std::uint32_t> plainlyMet(const std::vector<WallEdge>& walls, MKMapPoint a,
                                      MKMapPoint b) {
  std::vector<std::uint32_t> met;
  for (const WallEdge& wall : walls) {
    if (!segmentsMeet(a, b, wall.from, wall.to)) continue;
    if (met.empty() || met.back() != wall.obstacle) met.push_back(wall.obstacle);
  }
  return met;
}

std::vector<WallEdge> wallsOf(const WallWorld& world, WallSource& source) {
  std::vector<WallEdge> walls;
  for (int i = 0; i < world.wallCount; ++i) walls.push_back(source.wall(i));
  return walls;
}

RC_GTEST_PROP(WallGridProperties, AnswersAreThoseOfAPlainLoop, ()) {
  const auto worlds = *rc::gen::resize(
      rc::kNominalSize, rc::gen::container<std::vector<WallWorld>>(25, rc::gen::exec(anyWorld)));
  std::size_t met = 0;
  for (const WallWorld& world : worlds) {
    WallSource source(world);
    const auto walls = wallsOf(world, source);
    const WallGrid grid(walls);
    for (int i = 0; i < 40; ++i) {
      const auto [a, b] = source.line(walls);
      const auto expected = plainlyMet(walls, a, b);
      if (grid.meetsAny(a, b) == expected.empty() || grid.met(a, b) != expected) {
        RC_LOG() << world << ", line " << i << "\n";
        RC_FAIL("the grid differs from the loop");
      }
      met += expected.empty() ? 0u : 1u;
    }
  }
  RC_TAG(met > 250 ? "more than a quarter met" : "fewer");
}

// So many small walls that lines cross hundreds of cells.
RC_GTEST_PROP(WallGridProperties, AnswersAreThoseOfAPlainLoopInLargeWorlds, ()) {
  WallWorld world = *rc::gen::resize(rc::kNominalSize, rc::gen::exec(anyWorld));
  world.wallCount *= 20;
  world.walls = world.seed % 2 == 0 ? Walls::shortOnes : Walls::upright;
  WallSource source(world);
  const auto walls = wallsOf(world, source);
  const WallGrid grid(walls);
  RC_LOG() << world << "\n";
  for (int i = 0; i < 20; ++i) {
    const auto [a, b] = source.line(walls);
    const auto expected = plainlyMet(walls, a, b);
    RC_ASSERT(grid.met(a, b) == expected);
    RC_ASSERT(grid.meetsAny(a, b) == !expected.empty());
  }
}

}  // namespace
}  // namespace KorvaniTest
