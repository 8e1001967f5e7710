#include "Platform/Number.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <type_traits>

namespace KorvaniPlatform {
namespace {

constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kGreatest = std::numeric_limits<std::int64_t>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

TEST(Number, FactoriesKeepTheirKind) {
  EXPECT_EQ(Number::boolean(true).kind(), Number::Kind::boolean);
  EXPECT_EQ(Number::integer(3).kind(), Number::Kind::integer);
  EXPECT_EQ(Number::single(3).kind(), Number::Kind::floating);
  EXPECT_EQ(Number::real(3).kind(), Number::Kind::real);
}

TEST(Number, ConversionsTakeTheKindOfTheType) {
  EXPECT_EQ(Number(false).kind(), Number::Kind::boolean);
  EXPECT_EQ(Number(3).kind(), Number::Kind::integer);
  EXPECT_EQ(Number(3u).kind(), Number::Kind::integer);
  EXPECT_EQ(Number(std::size_t{3}).kind(), Number::Kind::integer);
  EXPECT_EQ(Number(std::int8_t{3}).kind(), Number::Kind::integer);
  EXPECT_EQ(Number(3LL).kind(), Number::Kind::integer);
  EXPECT_EQ(Number(3.0f).kind(), Number::Kind::floating);
  EXPECT_EQ(Number(3.0).kind(), Number::Kind::real);
}

TEST(Number, PointersAndStringsAreNoNumbers) {
  EXPECT_FALSE((std::is_constructible_v<Number, const char*>));
  EXPECT_FALSE((std::is_constructible_v<Number, int*>));
  EXPECT_FALSE((std::is_constructible_v<Number, std::nullptr_t>));
}

TEST(Number, DefaultIsTheIntegerZero) { EXPECT_EQ(Number(), Number::integer(0)); }

TEST(Number, TruthValuesAreZeroOrOneInEveryOtherForm) {
  EXPECT_TRUE(Number(true).boolValue());
  EXPECT_EQ(Number(true).integerValue(), 1);
  EXPECT_EQ(Number(true).doubleValue(), 1.0);
  EXPECT_EQ(Number(true).floatValue(), 1.0f);
  EXPECT_FALSE(Number(false).boolValue());
  EXPECT_EQ(Number(false).integerValue(), 0);
  EXPECT_EQ(Number(false).doubleValue(), 0.0);
}

TEST(Number, EverythingButZeroAndNotANumberIsTrue) {
  EXPECT_TRUE(Number(-1).boolValue());
  EXPECT_TRUE(Number(0.25).boolValue());
  EXPECT_TRUE(Number(-0.25f).boolValue());
  EXPECT_TRUE(Number(kInfinity).boolValue());
  EXPECT_FALSE(Number(0).boolValue());
  EXPECT_FALSE(Number(0.0).boolValue());
  EXPECT_FALSE(Number(-0.0).boolValue());
  EXPECT_FALSE(Number(kNotANumber).boolValue());
}

TEST(Number, IntegersKeepAllTheirBits) {
  for (const std::int64_t value : {kLeast, kLeast + 1, std::int64_t{-1},
                                   (std::int64_t{1} << 53) + 1, kGreatest - 1, kGreatest}) {
    EXPECT_EQ(Number(value).integerValue(), value);
  }
}

TEST(Number, UnsignedIntegersBeyondTheRangeBecomeTheGreatest) {
  EXPECT_EQ(Number(std::numeric_limits<std::uint64_t>::max()).integerValue(), kGreatest);
  EXPECT_EQ(Number(std::uint64_t{1} << 63).integerValue(), kGreatest);
  EXPECT_EQ(Number((std::uint64_t{1} << 63) - 1).integerValue(), kGreatest);
  EXPECT_EQ(Number(std::uint64_t{12}).integerValue(), 12);
}

TEST(Number, FractionsAreCutOffTowardsZero) {
  EXPECT_EQ(Number(2.99).integerValue(), 2);
  EXPECT_EQ(Number(-2.99).integerValue(), -2);
  EXPECT_EQ(Number(0.5f).integerValue(), 0);
}

TEST(Number, RealsBeyondTheIntegersSaturate) {
  EXPECT_EQ(Number(1e300).integerValue(), kGreatest);
  EXPECT_EQ(Number(-1e300).integerValue(), kLeast);
  EXPECT_EQ(Number(kInfinity).integerValue(), kGreatest);
  EXPECT_EQ(Number(-kInfinity).integerValue(), kLeast);
  EXPECT_EQ(Number(9223372036854775808.0).integerValue(), kGreatest);
  EXPECT_EQ(Number(-9223372036854775808.0).integerValue(), kLeast);
  EXPECT_EQ(Number(9223372036854774784.0).integerValue(), 9223372036854774784);
  EXPECT_EQ(Number(std::numeric_limits<float>::max()).integerValue(), kGreatest);
}

TEST(Number, NotANumberIsTheIntegerZero) {
  EXPECT_EQ(Number(kNotANumber).integerValue(), 0);
  EXPECT_EQ(Number(std::numeric_limits<float>::quiet_NaN()).integerValue(), 0);
  EXPECT_TRUE(std::isnan(Number(kNotANumber).doubleValue()));
  EXPECT_TRUE(std::isnan(Number(kNotANumber).floatValue()));
}

TEST(Number, SinglePrecisionIsKeptExactlyAndNotWidenedToItsDecimalText) {
  const Number tenth(0.1f);
  EXPECT_EQ(tenth.floatValue(), 0.1f);
  EXPECT_EQ(tenth.doubleValue(), static_cast<double>(0.1f));
  EXPECT_NE(tenth.doubleValue(), 0.1);
}

TEST(Number, DoublesAreRoundedToSinglePrecision) {
  EXPECT_EQ(Number(0.1).floatValue(), 0.1f);
  EXPECT_EQ(Number(1e300).floatValue(), std::numeric_limits<float>::infinity());
  EXPECT_EQ(Number(-1e300).floatValue(), -std::numeric_limits<float>::infinity());
  EXPECT_EQ(Number(16777217).floatValue(), 16777216.0f);
}

TEST(Number, EqualityComparesKindAndValue) {
  EXPECT_EQ(Number(1), Number(1LL));
  EXPECT_EQ(Number(2.5), Number(2.5));
  EXPECT_EQ(Number(0.0), Number(-0.0));
  EXPECT_NE(Number(1), Number(2));
  EXPECT_NE(Number(1), Number(1.0));
  EXPECT_NE(Number(1), Number(true));
  EXPECT_NE(Number(1.0f), Number(1.0));
  EXPECT_NE(Number(kNotANumber), Number(kNotANumber));
}

}  // namespace
}  // namespace KorvaniPlatform
