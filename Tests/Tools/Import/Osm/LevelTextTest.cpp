#include "Import/Osm/LevelText.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace KorvaniTest {
namespace {

using KorvaniTools::LevelText;
using KorvaniTools::levelText;
using KorvaniTools::parseLevels;
using KorvaniTools::PlanLevelSet;
using KorvaniTools::shareLevel;
using KorvaniTools::united;
using testing::ElementsAre;
using testing::IsEmpty;

void expectLevels(const char* text, const PlanLevelSet& expected) {
  const LevelText read = parseLevels(text);
  EXPECT_EQ(read.levels, expected) << text;
  EXPECT_THAT(read.unread, IsEmpty()) << text;
}

TEST(LevelTexts, ReadsOneLevel) {
  expectLevels("0", {0});
  expectLevels("12", {12});
  expectLevels("-3", {-3});
  expectLevels("+2", {2});
  expectLevels(" 1 ", {1});
}

TEST(LevelTexts, ReadsMinusZeroAsZero) {
  EXPECT_EQ(levelText(parseLevels("-0").levels.at(0)), "0");
}

TEST(LevelTexts, ReadsAListInAnyOrder) {
  expectLevels("-2;-1", {-2, -1});
  expectLevels("-1;-2", {-2, -1});
  expectLevels("-1; 0", {-1, 0});
  expectLevels("-3;-2;-1;0", {-3, -2, -1, 0});
  expectLevels("1;1;0", {0, 1});
  expectLevels("0;1;", {0, 1});
}

TEST(LevelTexts, ReadsFractions) {
  expectLevels("0.5", {0.5});
  expectLevels("-2.5", {-2.5});
  expectLevels("0.5;1", {0.5, 1});
}

TEST(LevelTexts, ReadsADecimalComma) {
  expectLevels("0,5", {0.5});
  expectLevels("-0,25", {-0.25});
  expectLevels("0,5;1,5", {0.5, 1.5});
}

TEST(LevelTexts, ReadsSeveralCommasAsAList) { expectLevels("-1,0,1", {-1, 0, 1}); }

TEST(LevelTexts, ReadsACommaBeforeABlankAsAList) {
  expectLevels("0, 1", {0, 1});
  expectLevels("-1, 0, 1", {-1, 0, 1});
}

TEST(LevelTexts, ReadsARangeAsItsEndsAndAllWholeLevelsBetween) {
  expectLevels("0-3", {0, 1, 2, 3});
  expectLevels("0 - 2", {0, 1, 2});
  expectLevels("0.5-2", {0.5, 1, 2});
  expectLevels("0-1.5", {0, 1, 1.5});
  expectLevels("2-2", {2});
}

TEST(LevelTexts, ReadsARangeFromMinusOneToThree) { expectLevels("-1-3", {-1, 0, 1, 2, 3}); }

TEST(LevelTexts, ReadsARangeBetweenLevelsBelowGround) {
  expectLevels("-3--1", {-3, -2, -1});
  expectLevels("-1--3", {-3, -2, -1});
}

TEST(LevelTexts, ReadsRangesWithinLists) {
  expectLevels("-2;0-2;5", {-2, 0, 1, 2, 5});
  expectLevels("-1-1;1-2", {-1, 0, 1, 2});
}

TEST(LevelTexts, ReadsNothingElse) {
  for (const char* text :
       {"G",    "EG",     "1a",   "a1",    "0-",    "-",   "--1",   "0-3-5",
        "0..3", "1.",     ".5",   "1e3",   "0x1",   "nan", "inf",   "1 2",
        "-,5",  "0-1000", "2000", "-1001", "1e999", "0/1", "1. OG", "99999999999999999999"}) {
    EXPECT_THAT(parseLevels(text).levels, IsEmpty()) << text;
    EXPECT_THAT(parseLevels(text).unread, ElementsAre(text));
  }
}

TEST(LevelTexts, FindsNothingInNothing) {
  for (const char* text : {"", ";", " ", " ; "}) expectLevels(text, {});
}

TEST(LevelTexts, ReadsThePiecesThatItCan) {
  const LevelText read = parseLevels("0; OG ;2-3;1-");
  EXPECT_EQ(read.levels, PlanLevelSet({0, 2, 3}));
  EXPECT_THAT(read.unread, ElementsAre("OG", "1-"));
}

TEST(LevelTexts, UnitesLevelsInOrder) {
  EXPECT_EQ(united({-1, 1}, {0, 1, 2}), PlanLevelSet({-1, 0, 1, 2}));
  EXPECT_EQ(united({}, {0}), PlanLevelSet({0}));
}

TEST(LevelTexts, FindsACommonLevel) {
  EXPECT_TRUE(shareLevel({-1, 0}, {0, 1}));
  EXPECT_FALSE(shareLevel({-1, 0}, {1, 2}));
  EXPECT_FALSE(shareLevel({}, {0}));
}

TEST(LevelTexts, WritesLevelsWithoutNeedlessDecimals) {
  EXPECT_EQ(levelText(-2), "-2");
  EXPECT_EQ(levelText(0.5), "0.5");
}

}  // namespace
}  // namespace KorvaniTest
