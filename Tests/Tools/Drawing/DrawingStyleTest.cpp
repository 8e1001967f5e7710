#include "Drawing/DrawingStyle.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <string>

namespace KorvaniTest {
namespace {

using KorvaniTools::colourOf;
using KorvaniTools::DrawingColour;
using KorvaniTools::drawingColours;
using KorvaniTools::drawingStyle;
using KorvaniTools::DrawingTheme;

/// Relative luminance of "#rrggbb", as the Web Content Accessibility Guidelines define it.
double luminance(std::string_view colour) {
  double sum = 0;
  const double weights[] = {0.2126, 0.7152, 0.0722};
  for (std::size_t i = 0; i < 3; ++i) {
    const double part = std::stoi(std::string(colour.substr(1 + 2 * i, 2)), nullptr, 16) / 255.0;
    sum += weights[i] * (part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4));
  }
  return sum;
}

double contrast(std::string_view a, std::string_view b) {
  const double first = luminance(a);
  const double second = luminance(b);
  return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

class Themes : public testing::TestWithParam<DrawingTheme> {
 protected:
  void expectContrast(std::string_view front, std::string_view back, double least) const {
    EXPECT_GE(contrast(colourOf(front, GetParam()), colourOf(back, GetParam())), least)
        << front << " on " << back;
  }
};

INSTANTIATE_TEST_SUITE_P(Both, Themes, testing::Values(DrawingTheme::light, DrawingTheme::dark));

TEST_P(Themes, ShowTextWithEnoughContrastOnEveryFill) {
  for (const std::string_view fill :
       {"paper", "panel", "ground", "ghost", "halo", "floor", "other", "corridor", "office",
        "classroom", "shop", "food", "toilet", "service", "waiting", "stairs", "elevator",
        "outdoor", "closed"}) {
    expectContrast("ink", fill, 4.5);
    expectContrast("faint", fill, 4.5);
  }
  expectContrast("badgeText", "badge", 4.5);
  expectContrast("routeText", "route", 4.5);
}

TEST_P(Themes, ShowMarksWithEnoughContrast) {
  for (const std::string_view mark : {"route", "wall", "connection", "place", "entrance", "start",
                                      "destination", "measured", "snapped", "arrow"}) {
    expectContrast(mark, "ground", 3);
    expectContrast(mark, "corridor", 3);
  }
  expectContrast("glyph", "connection", 4.5);
}

TEST_P(Themes, WriteEveryColourOut) {
  const std::string style = drawingStyle(GetParam());
  EXPECT_EQ(style.find("var("), std::string::npos);
  // Percent signs enclose the names of colours.
  EXPECT_EQ(style.find('%'), std::string::npos);
  EXPECT_NE(style.find(colourOf("route", GetParam())), std::string::npos);
}

TEST(DrawingStyle, RefersToNothingOutside) {
  for (const DrawingTheme theme :
       {DrawingTheme::light, DrawingTheme::dark, DrawingTheme::variables}) {
    const std::string style = drawingStyle(theme);
    EXPECT_EQ(style.find("url("), std::string::npos);
    EXPECT_EQ(style.find("@import"), std::string::npos);
    EXPECT_EQ(style.find('<'), std::string::npos);
  }
}

TEST(DrawingStyle, DeclaresEveryVariableItUses) {
  const std::string style = drawingStyle(DrawingTheme::variables);
  std::set<std::string> used;
  for (std::size_t at = style.find("var(--"); at != std::string::npos;
       at = style.find("var(--", at + 1)) {
    used.insert(style.substr(at + 6, style.find_first_of("),", at) - at - 6));
  }
  used.erase("k");  // the magnification, given by the page
  EXPECT_GT(used.size(), 20U);
  for (const std::string& name : used) EXPECT_NE(colourOf(name, DrawingTheme::light), "") << name;
}

TEST(DrawingStyle, NamesEachColourOnce) {
  std::set<std::string_view> names;
  for (const DrawingColour& colour : drawingColours()) {
    EXPECT_TRUE(names.insert(colour.name).second) << colour.name;
    EXPECT_EQ(colour.light.size(), 7U);
    EXPECT_EQ(colour.dark.size(), 7U);
  }
  EXPECT_EQ(colourOf("no such colour", DrawingTheme::light), "");
}

}  // namespace
}  // namespace KorvaniTest
