#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "Simulation/GroundOffset.hpp"
#include "Simulation/LevelGlitches.hpp"
#include "Simulation/PositionNoise.hpp"
#include "Simulation/RandomSource.hpp"
#include "Tools/BuildingText.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::Coordinate;
using KorvaniTools::distanceToLine;
using KorvaniTools::GroundOffset;
using KorvaniTools::LevelGlitches;
using KorvaniTools::movedBy;
using KorvaniTools::offsetBetween;
using KorvaniTools::PositionNoise;
using KorvaniTools::RandomSource;

// The expected numbers were computed from the definitions of seed sequence and generator.

TEST(RandomSource, GivesTheUniformNumbersOfItsSeedOnEveryMachine) {
  RandomSource random(42, 0);
  EXPECT_EQ(random.uniform(), 0.37768467889436386);
  EXPECT_EQ(random.uniform(), 0.5022759436520959);
  EXPECT_EQ(random.uniform(), 0.5339841615175657);
  RandomSource other(0xfedcba9876543210U, 2);
  EXPECT_EQ(other.uniform(), 0.6635508131173887);
  EXPECT_EQ(other.uniform(), 0.3519186419418928);
}

TEST(RandomSource, GivesTheGaussianNumbersOfItsSeedOnEveryMachine) {
  RandomSource random(42, 0);
  EXPECT_EQ(random.gaussian(), 0.010337842004544186);
  EXPECT_EQ(random.gaussian(), -0.8138518112533606);
  EXPECT_EQ(random.gaussian(), -0.10975948051593981);
  EXPECT_EQ(random.gaussian(), 0.6750098071965857);
}

TEST(RandomSource, GaussianNumbersAreNormallyDistributed) {
  RandomSource random(7, 0);
  constexpr int kCount = 100000;
  double sum = 0;
  double squares = 0;
  double within[3] = {};
  for (int i = 0; i < kCount; ++i) {
    const double number = random.gaussian();
    sum += number;
    squares += number * number;
    for (int k = 0; k < 3; ++k) within[k] += std::abs(number) < k + 1 ? 1 : 0;
  }
  // Four standard errors each.
  EXPECT_NEAR(sum / kCount, 0, 0.013);
  EXPECT_NEAR(squares / kCount, 1, 0.018);
  EXPECT_NEAR(within[0] / kCount, 0.6827, 0.006);
  EXPECT_NEAR(within[1] / kCount, 0.9545, 0.003);
  EXPECT_NEAR(within[2] / kCount, 0.9973, 0.0007);
}

TEST(RandomSource, ChoosesAllIndexesEquallyOften) {
  RandomSource random(3, 1);
  double counts[5] = {};
  for (int i = 0; i < 50000; ++i) ++counts[random.index(5)];
  for (const double count : counts) EXPECT_NEAR(count, 10000, 360);
  EXPECT_EQ(random.index(1), 0U);
  EXPECT_EQ(random.index(0), 0U);
}

TEST(RandomSource, OtherSeedsAndStreamsGiveOtherNumbers) {
  const double first = RandomSource(1, 0).uniform();
  EXPECT_NE(first, RandomSource(2, 0).uniform());
  EXPECT_NE(first, RandomSource(1, 1).uniform());
  EXPECT_NE(first, RandomSource(0x100000001U, 0).uniform());
}

/// Mean product of two series, the second of them `lag` later.
double correlation(const std::vector<double>& a, const std::vector<double>& b, std::size_t lag) {
  double sum = 0;
  for (std::size_t i = 0; i + lag < a.size(); ++i) sum += a[i] * b[i + lag];
  return sum / static_cast<double>(a.size() - lag);
}

TEST(PositionNoise, HasTheDeviationAndTheCorrelationInTimeThatItSays) {
  constexpr double kMetres = 2.5;
  PositionNoise noise(kMetres, 11);
  std::vector<double> east;
  std::vector<double> north;
  for (int i = 0; i < 200000; ++i) {
    const GroundOffset error = noise.next();
    east.push_back(error.east / kMetres);
    north.push_back(error.north / kMetres);
  }
  for (const auto& axis : {east, north}) {
    EXPECT_NEAR(std::sqrt(correlation(axis, axis, 0)), 1, 0.015);
    for (const std::size_t lag : {1U, 5U, 20U}) {
      const double expected = std::exp(-static_cast<double>(lag) / PositionNoise::kCorrelationTime);
      EXPECT_NEAR(correlation(axis, axis, lag), expected, 0.03) << lag;
    }
  }
  EXPECT_NEAR(correlation(east, north, 0), 0, 0.025);
}

TEST(PositionNoise, IsAsWideAtTheBeginningAsLater) {
  double squares = 0;
  for (std::uint64_t seed = 0; seed < 4000; ++seed) {
    squares += std::pow(PositionNoise(2, seed).next().east, 2);
  }
  EXPECT_NEAR(squares / 4000, 4, 0.4);
}

TEST(PositionNoise, ScalesWithTheMetres) {
  PositionNoise narrow(1, 5);
  PositionNoise wide(4, 5);
  PositionNoise none(0, 5);
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(4 * narrow.next().north, wide.next().north);
    EXPECT_EQ(none.next().length(), 0);
  }
}

TEST(GroundOffset, MovesByMetresAndBack) {
  const Coordinate from{54.32, 10.13};
  const Coordinate to = movedBy(from, {3, -4});
  EXPECT_NEAR(KorvaniPlatform::greatCircleDistance(from, to), 5, 1e-3);
  EXPECT_GT(to.longitude, from.longitude);
  EXPECT_LT(to.latitude, from.latitude);
  EXPECT_NEAR(offsetBetween(from, to).east, 3, 1e-3);
  EXPECT_NEAR(offsetBetween(from, to).north, -4, 1e-3);
}

TEST(GroundOffset, RoundsToNineDecimals) {
  const Coordinate moved = movedBy({48.12345678949, 11.98765432151}, {0, 0});
  EXPECT_EQ(moved.latitude, 48.123456789);
  EXPECT_EQ(moved.longitude, 11.987654322);
}

TEST(GroundOffset, StaysOnTheSphereAtThePoles) {
  const Coordinate moved = movedBy({90, 0}, {5, 5});
  EXPECT_EQ(moved.latitude, 90);
  EXPECT_TRUE(std::isfinite(moved.longitude));
}

TEST(GroundOffset, TellsHowFarALineIs) {
  const Coordinate start{48, 11};
  const Coordinate end = movedBy(start, {20, 0});
  EXPECT_NEAR(distanceToLine(movedBy(start, {10, 7}), start, end), 7, 1e-3);
  EXPECT_NEAR(distanceToLine(movedBy(start, {23, 4}), start, end), 5, 1e-3);
  EXPECT_NEAR(distanceToLine(movedBy(start, {-6, -8}), start, end), 10, 1e-3);
  EXPECT_NEAR(distanceToLine(end, start, start), 20, 1e-3);
}

TEST(LevelGlitches, HaveTheProbabilityAndBothDirections) {
  LevelGlitches glitches(
      parsed({nodeAt(1, -1, 11, 48), nodeAt(2, 0, 11, 48), nodeAt(3, 3, 11, 48)}), 0.1, 4);
  double below = 0;
  double above = 0;
  for (int i = 0; i < 20000; ++i) {
    const std::int64_t level = glitches.reported(0);
    below += level == -1 ? 1 : 0;
    above += level == 3 ? 1 : 0;
    EXPECT_TRUE(level == -1 || level == 0 || level == 3);
  }
  EXPECT_NEAR(below, 1000, 125);
  EXPECT_NEAR(above, 1000, 125);
}

TEST(LevelGlitches, AtTheTopAndAtTheBottomHaveOneDirection) {
  LevelGlitches glitches(parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 1, 11, 48)}), 1, 4);
  for (int i = 0; i < 20; ++i) {
    EXPECT_EQ(glitches.reported(0), 1);
    EXPECT_EQ(glitches.reported(1), 0);
  }
}

TEST(LevelGlitches, DoNotHappenOnTheOnlyLevelNorWithoutProbability) {
  LevelGlitches single(parsed({nodeAt(1, 2, 11, 48)}), 1, 4);
  LevelGlitches none(parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 1, 11, 48)}), 0, 4);
  for (int i = 0; i < 20; ++i) {
    EXPECT_EQ(single.reported(2), 2);
    EXPECT_EQ(none.reported(1), 1);
  }
}

}  // namespace
}  // namespace KorvaniTest
