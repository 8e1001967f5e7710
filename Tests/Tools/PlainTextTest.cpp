#include "Support/PlainText.hpp"

#include <gtest/gtest.h>

#include <string>

#include "Building/BuildingError.hpp"
#include "Trace/TraceError.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::plainLine;
using KorvaniTools::plainLines;

TEST(PlainText, LettersOfAllScriptsStay) {
  for (const std::string text :
       {"Café 1/2", "出口", "מבוא", "\U0001F6B9\u200D\U0001F6BA", "a\\nb", ""}) {
    EXPECT_EQ(plainLine(text), text);
  }
}

TEST(PlainText, ALineStaysASingleOne) {
  EXPECT_EQ(plainLine("bad\n  error  Fake\r\tx"), "bad\\n  error  Fake\\r\\tx");
  EXPECT_EQ(plainLine("a\u2028b\u2029c"), "a\\u2028b\\u2029c");
}

TEST(PlainText, LinesKeepTheirLineFeedsOnly) {
  EXPECT_EQ(plainLines("one\ntwo\r\x1b[31m"), "one\ntwo\\r\\x1b[31m");
}

TEST(PlainText, CodesForTerminalsAreWrittenOut) {
  EXPECT_EQ(plainLine("\x1b]0;title\x07"), "\\x1b]0;title\\x07");
  EXPECT_EQ(plainLine("\u009b31m"), "\\x9b31m");
  EXPECT_EQ(plainLine(std::string("a\0b\x7f", 4)), "a\\x00b\\x7f");
}

TEST(PlainText, MarksOfWritingDirectionAreWrittenOut) {
  EXPECT_EQ(plainLine("\u202edaol\u202c \u2066x\u2069"), "\\u202edaol\\u202c \\u2066x\\u2069");
}

TEST(PlainText, BytesThatAreNotUtf8AreWrittenOut) {
  EXPECT_EQ(plainLine("a\x9bz\xff"), "a\\x9bz\\xff");
  EXPECT_EQ(plainLine("cut \xe2\x82"), "cut \\xe2\\x82");
}

TEST(PlainText, WhatIsWrongWithAFileIsASingleLine) {
  EXPECT_STREQ(KorvaniTools::BuildingError("a.json", 3, "name", "\"x\ny\"", "a\x1b").what(),
               "a.json: features[3]: name: found \"x\\ny\", expected a\\x1b");
  EXPECT_STREQ(KorvaniTools::TraceError("a\n.ndjson", 3, "op", "\"\x1b\"", "b").what(),
               "a\\n.ndjson: line 3: op: found \"\\x1b\", expected b");
}

}  // namespace
}  // namespace KorvaniTest
