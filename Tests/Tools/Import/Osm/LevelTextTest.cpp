#include "Import/Osm/LevelText.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace KorvaniTest {
namespace {

using KorvaniTools::levelText;
using KorvaniTools::parseLevels;
using KorvaniTools::PlanLevelSet;
using KorvaniTools::shareLevel;
using KorvaniTools::united;

void expectLevels(const char* text, const PlanLevelSet& expected) {
  const auto levels = parseLevels(text);
  ASSERT_TRUE(levels.has_value()) << text;
  EXPECT_EQ(*levels, expected) << text;
}

TEST(LevelText, ReadsOneLevel) {
  expectLevels("0", {0});
  expectLevels("12", {12});
  expectLevels("-3", {-3});
  expectLevels("+2", {2});
  expectLevels(" 1 ", {1});
}

TEST(LevelText, ReadsMinusZeroAsZero) {
  EXPECT_EQ(levelText(parseLevels("-0").value().front()), "0");
}

TEST(LevelText, ReadsAListInAnyOrder) {
  expectLevels("-2;-1", {-2, -1});
  expectLevels("-1;-2", {-2, -1});
  expectLevels("-1; 0", {-1, 0});
  expectLevels("-3;-2;-1;0", {-3, -2, -1, 0});
  expectLevels("1;1;0", {0, 1});
  expectLevels("0;1;", {0, 1});
}

TEST(LevelText, ReadsFractions) {
  expectLevels("0.5", {0.5});
  expectLevels("-2.5", {-2.5});
  expectLevels("0.5;1", {0.5, 1});
}

TEST(LevelText, ReadsADecimalComma) {
  expectLevels("0,5", {0.5});
  expectLevels("-0,25", {-0.25});
  expectLevels("0,5;1,5", {0.5, 1.5});
}

TEST(LevelText, ReadsSeveralCommasAsAList) { expectLevels("-1,0,1", {-1, 0, 1}); }

TEST(LevelText, ReadsARangeAsItsEndsAndAllWholeLevelsBetween) {
  expectLevels("0-3", {0, 1, 2, 3});
  expectLevels("0 - 2", {0, 1, 2});
  expectLevels("0.5-2", {0.5, 1, 2});
  expectLevels("0-1.5", {0, 1, 1.5});
  expectLevels("2-2", {2});
}

TEST(LevelText, ReadsARangeFromMinusOneToThree) { expectLevels("-1-3", {-1, 0, 1, 2, 3}); }

TEST(LevelText, ReadsARangeBetweenLevelsBelowGround) {
  expectLevels("-3--1", {-3, -2, -1});
  expectLevels("-1--3", {-3, -2, -1});
}

TEST(LevelText, ReadsRangesWithinLists) {
  expectLevels("-2;0-2;5", {-2, 0, 1, 2, 5});
  expectLevels("-1-1;1-2", {-1, 0, 1, 2});
}

TEST(LevelText, ReadsNothingElse) {
  for (const char* text :
       {"",    ";",     " ",    "G",   "EG",     "1a",   "a1",    "0-",    "-",
        "--1", "0-3-5", "0..3", "1.",  ".5",     "1e3",  "0x1",   "nan",   "inf",
        "1;b", "0;1-",  "1 2",  "-,5", "0-1000", "2000", "-1001", "1e999", "99999999999999999999",
        "0/1"}) {
    EXPECT_FALSE(parseLevels(text).has_value()) << text;
  }
}

TEST(LevelText, UnitesLevelsInOrder) {
  EXPECT_EQ(united({-1, 1}, {0, 1, 2}), PlanLevelSet({-1, 0, 1, 2}));
  EXPECT_EQ(united({}, {0}), PlanLevelSet({0}));
}

TEST(LevelText, FindsACommonLevel) {
  EXPECT_TRUE(shareLevel({-1, 0}, {0, 1}));
  EXPECT_FALSE(shareLevel({-1, 0}, {1, 2}));
  EXPECT_FALSE(shareLevel({}, {0}));
}

TEST(LevelText, WritesLevelsWithoutNeedlessDecimals) {
  EXPECT_EQ(levelText(-2), "-2");
  EXPECT_EQ(levelText(0.5), "0.5");
}

}  // namespace
}  // namespace KorvaniTest
