#include "Navigation/Obstacles/WallLines.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

using KorvaniNavigation::MKMapPoint;
using KorvaniNavigation::WallLines;
using KorvaniNavigation::WallPiece;

namespace {

constexpr double kExtent = 1000;

class PlaceNumbers {
 public:
  double between(double low, double high) {
    return low + (high - low) * (static_cast<double>(engine_() >> 11) * 0x1p-53);
  }
  MKMapPoint place() { return {between(0, kExtent), between(0, kExtent)}; }

 private:
  std::mt19937_64 engine_{3};
};

// So far along the piece, and so far beside it.
MKMapPoint beside(const WallPiece& piece, double part, double distance) {
  const MKMapPoint way{piece.to.x - piece.from.x, piece.to.y - piece.from.y};
  const double length = std::hypot(way.x, way.y);
  return {piece.from.x + way.x * part - way.y / length * distance,
          piece.from.y + way.y * part + way.x / length * distance};
}

std::vector<WallPiece> anyPieces(PlaceNumbers& numbers, int count) {
  std::vector<WallPiece> pieces;
  for (int i = 0; i < count; ++i) pieces.push_back({numbers.place(), numbers.place()});
  return pieces;
}

WallLines linesOf(const std::vector<WallPiece>& pieces) {
  return WallLines(pieces, pieces.size(), {0, 0}, kExtent);
}

}  // namespace

TEST(WallLines, FindsAPieceOnTheSameLineHoweverFarAlong) {
  PlaceNumbers numbers;
  for (int i = 0; i < 20000; ++i) {
    const WallPiece line{numbers.place(), numbers.place()};
    const std::vector<WallPiece> pieces{
        {beside(line, numbers.between(0.5, 1), 0), beside(line, numbers.between(0.3, 0.4), 0)}};
    const MKMapPoint a = beside(line, 0, 0);
    const MKMapPoint b = beside(line, 0.2, 0);
    const WallLines lines = linesOf(pieces);
    EXPECT_TRUE(lines.mayHold(a, b)) << i;
    EXPECT_TRUE(lines.mayHold(b, a)) << i;
    EXPECT_EQ(lines.piecesOn(a, b, kExtent, pieces).size(), 1u) << i;
  }
}

TEST(WallLines, MayHoldAPieceOfALineThatIsKnownRoughly) {
  PlaceNumbers numbers;
  for (int i = 0; i < 20000; ++i) {
    const WallPiece line{numbers.place(), numbers.place()};
    const double length =
        std::max(std::abs(line.to.x - line.from.x), std::abs(line.to.y - line.from.y));
    const double error = 0.1 * length / WallLines::kLeastLength;
    const MKMapPoint a = beside(line, 0, i % 2 == 0 ? error : -error);
    const MKMapPoint b = beside(line, 0.1, i % 4 < 2 ? error : -error);
    EXPECT_TRUE(linesOf({{beside(line, 1, 0), beside(line, 0.8, 0)}}).mayHold(a, b)) << i;
  }
}

TEST(WallLines, FindsPiecesAcrossTheTurnOfTheDirections) {
  for (const double slope : {-1.0, 1.0}) {
    for (const double turn : {-1e-9, 0.0, 1e-9}) {
      const std::vector<WallPiece> pieces{{{500, 500}, {600, 500 + 100 * slope}}};
      const MKMapPoint a{400, 500 - 100 * (slope + turn)};
      const MKMapPoint b{300, 500 - 200 * (slope + turn)};
      EXPECT_TRUE(linesOf(pieces).mayHold(a, b)) << slope << " " << turn;
      EXPECT_EQ(linesOf(pieces).piecesOn(a, b, kExtent, pieces).size(), 1u) << slope << turn;
    }
  }
}

TEST(WallLines, TellsNearlyAlwaysThatThereIsNone) {
  PlaceNumbers numbers;
  const WallLines lines = linesOf(anyPieces(numbers, 1000));
  int count = 0;
  for (int i = 0; i < 10000; ++i) count += lines.mayHold(numbers.place(), numbers.place()) ? 1 : 0;
  EXPECT_LT(count, 200);
}

TEST(WallLines, TellsParallelLinesApart) {
  std::vector<WallPiece> pieces;
  for (int i = 0; i < 10; ++i) pieces.push_back({{100.0 * i, 10}, {100.0 * i, 90}});
  const WallLines lines = linesOf(pieces);
  int count = 0;
  for (int i = 0; i < 1000; ++i) count += lines.mayHold({i + 0.5, 200}, {i + 0.5, 300}) ? 1 : 0;
  EXPECT_LT(count, 20);
  EXPECT_TRUE(lines.mayHold({300, 200}, {300, 300}));
}
