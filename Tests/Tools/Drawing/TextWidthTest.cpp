#include "Drawing/TextWidth.hpp"

#include <gtest/gtest.h>

#include <string>

namespace KorvaniTest {
namespace {

using KorvaniTools::shortened;
using KorvaniTools::textWidth;
using KorvaniTools::wrapped;
using Lines = std::vector<std::string>;

constexpr double kWide = 1000;

TEST(TextWidth, GrowsWithTextAndFont) {
  EXPECT_EQ(textWidth("", 12, false), 0);
  EXPECT_GT(textWidth("Gate B4", 12, false), textWidth("Gate", 12, false));
  EXPECT_DOUBLE_EQ(textWidth("Gate", 24, false), 2 * textWidth("Gate", 12, false));
  EXPECT_GT(textWidth("Gate", 12, true), textWidth("Gate", 12, false));
}

TEST(TextWidth, KnowsNarrowAndWideLetters) {
  EXPECT_LT(textWidth("iiii", 12, false), textWidth("mmmm", 12, false) / 2);
  EXPECT_GE(textWidth("\u6771\u4eac", 12, false), 24);
  EXPECT_DOUBLE_EQ(textWidth("e\u0301", 12, false), textWidth("e", 12, false));
}

TEST(TextWidth, TakesBrokenTextForWide) { EXPECT_GE(textWidth("\xFF\xFE", 10, false), 20); }

TEST(Shortened, KeepsWhatFits) { EXPECT_EQ(shortened("Lobby", 12, false, kWide), "Lobby"); }

TEST(Shortened, EndsWithAnEllipsisWithinTheWidth) {
  const std::string text = shortened("Conference room Fjord", 12, false, 60);
  EXPECT_LE(textWidth(text, 12, false), 60);
  EXPECT_EQ(text.substr(text.size() - 3), "\u2026");
  EXPECT_EQ(text.rfind("Conf", 0), 0U);
}

TEST(Shortened, NeverCutsThroughACharacter) {
  for (double width = 5; width < 50; ++width) {
    const std::string text = shortened("\u041c\u043e\u0441\u043a\u0432\u0430", 12, false, width);
    EXPECT_EQ(text.size() % 2, 1U) << text;  // letters of two bytes, and three for the ellipsis
  }
}

TEST(Wrapped, BreaksAtBlanks) {
  const double width = textWidth("Underground service", 12, false);
  EXPECT_EQ(wrapped("Underground service centre", 12, false, width),
            (Lines{"Underground service", "centre"}));
  EXPECT_EQ(wrapped("Lobby", 12, false, width), Lines{"Lobby"});
}

TEST(Wrapped, GivesOneLineForNoText) { EXPECT_EQ(wrapped("", 12, false, 100), Lines{""}); }

TEST(Wrapped, CutsWordsThatAreTooLong) {
  const Lines lines = wrapped("Donaudampfschifffahrt office", 12, false, 60);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_LE(textWidth(lines[0], 12, false), 60);
  EXPECT_EQ(lines[1], "office");
}

}  // namespace
}  // namespace KorvaniTest
