#include "Import/Osm/LengthText.hpp"

#include <gtest/gtest.h>

namespace KorvaniTest {
namespace {

using KorvaniTools::parseLength;

TEST(LengthText, ReadsMetres) {
  EXPECT_EQ(parseLength("0.9"), 0.9);
  EXPECT_EQ(parseLength(" 2 "), 2.0);
  EXPECT_EQ(parseLength("1.2 m"), 1.2);
  EXPECT_EQ(parseLength("3m"), 3.0);
}

TEST(LengthText, ReadsADecimalComma) { EXPECT_EQ(parseLength("1,2 m"), 1.2); }

TEST(LengthText, ReadsCentimetresAndMillimetres) {
  EXPECT_DOUBLE_EQ(parseLength("90 cm").value_or(0), 0.9);
  EXPECT_DOUBLE_EQ(parseLength("985mm").value_or(0), 0.985);
}

TEST(LengthText, ReadsNothingElse) {
  for (const char* text : {"", "m", "wide", "-1", "0", "1e2", "3 ft", "3'", "1,2,3", "1;2", "nan",
                           "inf", "1000", "cm", "0.0 cm", "1 2"}) {
    EXPECT_FALSE(parseLength(text).has_value()) << text;
  }
}

}  // namespace
}  // namespace KorvaniTest
