#include "Support/Text.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Support/LevelNames.hpp"
#include "Tools/BuildingText.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::compassPoint;
using KorvaniTools::counted;
using KorvaniTools::decimals;
using KorvaniTools::duration;
using KorvaniTools::editDistance;
using KorvaniTools::foldedCase;
using KorvaniTools::LevelNames;
using KorvaniTools::metres;
using KorvaniTools::parseNumber;
using KorvaniTools::parseWholeNumber;
using KorvaniTools::split;
using KorvaniTools::trimmed;
using KorvaniTools::width;
using testing::ElementsAre;

TEST(Text, FoldingChangesAsciiCapitalsOnly) {
  EXPECT_EQ(foldedCase("ABC \xc3\x84z"), "abc \xc3\x84z");
}

TEST(Text, TrimmingTakesBlanksFromTheEnds) {
  EXPECT_EQ(trimmed("  a b\t\n"), "a b");
  EXPECT_EQ(trimmed(" \t "), "");
}

TEST(Text, SplittingGivesAtLeastOnePiece) {
  EXPECT_THAT(split("a,,b", ','), ElementsAre("a", "", "b"));
  EXPECT_THAT(split("", ','), ElementsAre(""));
}

TEST(Text, NumbersAreDecimalAndTakeTheWholeText) {
  EXPECT_EQ(parseNumber(" -1.5e1 "), -15.0);
  EXPECT_EQ(parseNumber("1e999"), std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(parseNumber("nan").value()));
  for (const char* text : {"", " ", "1x", "0x10", "1,5", "--1", "a"}) {
    EXPECT_FALSE(parseNumber(text)) << text;
  }
}

TEST(Text, WholeNumbersMayBeWrittenWithAFraction) {
  EXPECT_EQ(parseWholeNumber("-2"), -2);
  EXPECT_EQ(parseWholeNumber("3.0"), 3);
  for (const char* text : {"0.5", "nan", "inf", "1e30", "two"}) {
    EXPECT_FALSE(parseWholeNumber(text)) << text;
  }
}

TEST(Text, EditDistanceCountsLettersWhateverTheirBytes) {
  EXPECT_EQ(editDistance("Lobby", "lobby"), 0U);
  EXPECT_EQ(editDistance("Loby", "Lobby"), 1U);
  EXPECT_EQ(editDistance("caf\xc3\xa9", "cafe"), 1U);
  EXPECT_EQ(editDistance("", "gate"), 4U);
  EXPECT_EQ(editDistance("kitten", "sitting"), 3U);
}

TEST(Text, MetresAreRounded) {
  EXPECT_EQ(metres(11.5), "12 m");
  EXPECT_EQ(metres(0.4), "0 m");
}

TEST(Text, MetresBeyondAllSenseStayShort) {
  EXPECT_EQ(metres(1e20), "1e+20 m");
  EXPECT_EQ(metres(std::numeric_limits<double>::infinity()), "an unknown number of metres");
}

TEST(Text, TimesAreSaidInTheirTwoLargestUnits) {
  EXPECT_EQ(duration(0), "0 s");
  EXPECT_EQ(duration(59.4), "59 s");
  EXPECT_EQ(duration(59.6), "1 min");
  EXPECT_EQ(duration(125), "2 min 5 s");
  EXPECT_EQ(duration(3600), "1 h");
  EXPECT_EQ(duration(3785), "1 h 3 min");
  EXPECT_EQ(duration(std::numeric_limits<double>::infinity()), "an unknown time");
}

TEST(Text, HeadingsAreEightCompassPoints) {
  EXPECT_EQ(compassPoint(0), "north");
  EXPECT_EQ(compassPoint(22.4), "north");
  EXPECT_EQ(compassPoint(22.6), "north-east");
  EXPECT_EQ(compassPoint(180), "south");
  EXPECT_EQ(compassPoint(315), "north-west");
  EXPECT_EQ(compassPoint(359), "north");
}

TEST(Text, DecimalsHaveNoZerosAtTheEnd) {
  EXPECT_EQ(decimals(53.5), "53.5");
  EXPECT_EQ(decimals(-9.98642875), "-9.98642875");
  EXPECT_EQ(decimals(90), "90");
}

TEST(Text, CountsGoWithTheirNoun) {
  EXPECT_EQ(counted(1, "node", "nodes"), "1 node");
  EXPECT_EQ(counted(0, "node", "nodes"), "0 nodes");
}

TEST(Text, WidthCountsCharacters) { EXPECT_EQ(width("Caf\xc3\xa9"), 4U); }

const std::string kLevels =
    R"("levels":[{"level":2,"name":"Departures"},{"level":1,"name":"Level 1"},)"
    R"({"level":0,"name":""},{"level":2,"name":"Second"},{"level":-1,"source":"U"}])";

TEST(LevelNames, SayNumberAndName) {
  const LevelNames levels(parsed({}, kLevels));
  EXPECT_EQ(levels.words(2), "level 2, Departures");
  EXPECT_EQ(levels.words(-1), "level -1");
  EXPECT_EQ(levels.words(0), "level 0");
  EXPECT_EQ(LevelNames().words(7), "level 7");
}

TEST(LevelNames, DoNotRepeatANameThatIsTheNumber) {
  EXPECT_EQ(LevelNames(parsed({}, kLevels)).words(1), "level 1");
}

const std::string kRenumbered =
    R"("levels":[{"level":0,"source":"0"},{"level":1,"name":"0.5","source":"0.5"},)"
    R"({"level":2,"name":"1","source":"1"},{"level":3,"name":"Roof","source":"2"}])";

TEST(LevelNames, SayTheNumberThatIsOnTheDoors) {
  const LevelNames levels(parsed({}, kRenumbered));
  EXPECT_EQ(levels.number(1), "0.5");
  EXPECT_EQ(levels.number(4), "4");
  EXPECT_EQ(levels.words(0), "level 0");
  EXPECT_EQ(levels.words(1), "level 0.5");
  EXPECT_EQ(levels.words(2), "level 1");
  EXPECT_EQ(levels.words(3), "level 2, Roof");
}

TEST(LevelNames, AreFoundByWhatIsSaidOfThem) {
  const LevelNames levels(parsed({}, kRenumbered));
  EXPECT_EQ(levels.find("0.5"), 1);
  EXPECT_EQ(levels.find("Level 1"), 2);
  EXPECT_EQ(levels.find("level 2, roof"), 3);
  EXPECT_EQ(levels.find("1"), 1);  // a whole number is the file's
}

TEST(LevelNames, AreFoundByNumberOrName) {
  const LevelNames levels(parsed({}, kLevels));
  EXPECT_EQ(levels.find("-3"), -3);
  EXPECT_EQ(levels.find("departures"), 2);
  EXPECT_FALSE(levels.find("roof"));
}

}  // namespace
}  // namespace KorvaniTest
