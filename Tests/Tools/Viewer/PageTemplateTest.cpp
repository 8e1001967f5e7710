#include "Drawing/Viewer/PageTemplate.hpp"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <stdexcept>

namespace KorvaniTest {
namespace {

using KorvaniTools::filledIn;
using KorvaniTools::scriptSafe;
using testing::HasSubstr;
using testing::Not;

TEST(PageTemplate, EveryGapIsFilled) {
  EXPECT_EQ(filledIn("<p>{{a}}</p>{{b}}{{a}}", {{"a", "x"}, {"b", ""}}), "<p>x</p>x");
}

TEST(PageTemplate, WhatIsFilledInIsNotLookedThroughAgain) {
  EXPECT_EQ(filledIn("{{a}} {{b}}", {{"a", "{{b}}"}, {"b", "{{a}}"}}), "{{b}} {{a}}");
}

TEST(PageTemplate, AGapWithoutTextOrEndIsAMistakeOfTheProgram) {
  EXPECT_THROW(filledIn("{{c}}", {{"a", "x"}}), std::logic_error);
  EXPECT_THROW(filledIn("x {{a", {{"a", "x"}}), std::logic_error);
}

TEST(ScriptSafe, NothingEndsTheScriptOrBeginsAComment) {
  const std::string safe = scriptSafe(R"({"a":"</script><script><!-- --> & "})");
  for (const char* mark : {"<", ">", "&"}) EXPECT_THAT(safe, Not(HasSubstr(mark)));
}

TEST(ScriptSafe, LineSeparatorsOfUnicodeAreWrittenAsNumbers) {
  EXPECT_EQ(scriptSafe("\"a\xE2\x80\xA8"
                       "b\xE2\x80\xA9"
                       "c\xE2\x80\xAA\""),
            "\"a\\u2028b\\u2029c\xE2\x80\xAA\"");
}

TEST(ScriptSafe, TheJsonReadsBackToTheSame) {
  const nlohmann::json json{{"<k>", "</script> \xE2\x80\xA8 & \" \\ \xF0\x9F\x9A\x89"}};
  EXPECT_EQ(nlohmann::json::parse(scriptSafe(json.dump())), json);
}

}  // namespace
}  // namespace KorvaniTest
