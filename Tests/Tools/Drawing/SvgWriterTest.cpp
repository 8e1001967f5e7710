#include "Drawing/SvgWriter.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "Tools/Drawing/XmlTree.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::pixels;
using KorvaniTools::SvgWriter;
using KorvaniTools::xmlText;

/// What a parser reads of `text` written as contents and as an attribute.
void expectReadBack(const std::string& text, const std::string& expected) {
  SvgWriter svg;
  svg.textElement("text", {{"data-name", "-" + text}}, text);
  const XmlElement element = parsedXml(svg.take());
  EXPECT_EQ(element.text, expected);
  EXPECT_EQ(element.attribute("data-name"), "-" + expected);
  EXPECT_TRUE(element.children.empty());
}

TEST(SvgWriter, EscapesMarkup) {
  expectReadBack("</text><script>alert('x')</script>&amp;\"",
                 "</text><script>alert('x')</script>&amp;\"");
  expectReadBack("]]>", "]]>");
  expectReadBack("<!-- --><![CDATA[", "<!-- --><![CDATA[");
}

TEST(SvgWriter, KeepsLettersOfAllScripts) {
  const std::string text = "Caf\u00e9 \u041c\u043e\u0441\u043a\u0432\u0430 \u6771\u4eac \U0001F6BB";
  expectReadBack(text, text);
}

TEST(SvgWriter, ReplacesWhatIsNotUtf8) {
  const std::string replacement = "\uFFFD";
  expectReadBack("a\xFFz", "a" + replacement + "z");
  expectReadBack("a\xC3", "a" + replacement);
  expectReadBack("\xC0\xAF", replacement + replacement);
  expectReadBack("\xED\xA0\x80", replacement + replacement + replacement);
  expectReadBack("\xF5\x80\x80\x80", replacement + replacement + replacement + replacement);
}

TEST(SvgWriter, ReplacesCharactersThatXmlForbids) {
  expectReadBack(std::string("a\0b\x1B", 4), "a b ");
  expectReadBack("line\r\nbreak\ttab", "line  break tab");
  expectReadBack("\uFFFE", "\uFFFD");
}

TEST(SvgWriter, LeavesOutEmptyAttributes) {
  SvgWriter svg;
  svg.element("g", {{"a", ""}, {"b", "1"}});
  EXPECT_EQ(svg.take(), "<g b=\"1\"/>\n");
}

TEST(SvgWriter, ClosesElementsInTheirOrder) {
  SvgWriter svg;
  svg.open("svg");
  svg.open("g");
  svg.element("path", {});
  svg.close();
  svg.close();
  const XmlElement root = parsedXml(svg.take());
  EXPECT_EQ(root.name, "svg");
  ASSERT_EQ(root.children.size(), 1U);
  EXPECT_EQ(root.children.front().children.front().name, "path");
}

TEST(SvgWriter, DiesWhenAnElementIsLeftOpen) {
  EXPECT_DEATH(
      {
        SvgWriter svg;
        svg.open("g");
        svg.take();
      },
      "");
}

TEST(Pixels, HaveTwoDecimalsAtMost) {
  EXPECT_EQ(pixels(12), "12");
  EXPECT_EQ(pixels(12.5), "12.5");
  EXPECT_EQ(pixels(1.0 / 3), "0.33");
  EXPECT_EQ(pixels(-0.001), "0");
  EXPECT_EQ(pixels(-1.5), "-1.5");
  EXPECT_EQ(pixels(100), "100");
}

TEST(Pixels, AreZeroWithoutANumber) {
  EXPECT_EQ(pixels(std::nan("")), "0");
  EXPECT_EQ(pixels(std::numeric_limits<double>::infinity()), "0");
}

TEST(Pixels, HoldTheLargestNumbers) {
  EXPECT_EQ(std::stod(pixels(std::numeric_limits<double>::max())),
            std::numeric_limits<double>::max());
}

}  // namespace
}  // namespace KorvaniTest
