#include "Trace/TraceReader.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <sstream>

#include "Support/InputError.hpp"
#include "Trace/TraceError.hpp"
#include "Trace/TraceWriter.hpp"

namespace KorvaniTest {
namespace {

using KorvaniPlatform::Number;
using KorvaniTools::CancelOperation;
using KorvaniTools::CheckOperation;
using KorvaniTools::ConfigOperation;
using KorvaniTools::DestinationsOperation;
using KorvaniTools::InputError;
using KorvaniTools::IntersectOperation;
using KorvaniTools::openTrace;
using KorvaniTools::parseTraceLine;
using KorvaniTools::PositionOperation;
using KorvaniTools::RouteOperation;
using KorvaniTools::SnapOperation;
using KorvaniTools::TraceDenier;
using KorvaniTools::TraceError;
using KorvaniTools::TraceOperation;
using KorvaniTools::TraceReader;
using testing::HasSubstr;

TraceOperation operationOf(const std::string& text) {
  return parseTraceLine(text, "test.trace.ndjson", 1).operation;
}

template <class Operation>
Operation read(const std::string& text) {
  return std::get<Operation>(operationOf(text));
}

/// What is said about a malformed line.
std::string complaintAbout(const std::string& text) {
  try {
    static_cast<void>(parseTraceLine(text, "test.trace.ndjson", 7));
  } catch (const TraceError& error) {
    EXPECT_EQ(error.line(), 7U);
    return error.what();
  }
  return "none";
}

std::vector<std::size_t> lineNumbers(const std::string& text) {
  std::istringstream stream(text);
  TraceReader reader(stream, "test.trace.ndjson");
  std::vector<std::size_t> numbers;
  while (const auto line = reader.next()) numbers.push_back(line->number);
  return numbers;
}

constexpr auto kPoint = R"({"lat":48.5,"lon":-11.25,"level":-2})";

std::string withPoint(const std::string& before, const std::string& after) {
  return before + kPoint + after;
}

TEST(TraceReader, ReadsAPosition) {
  const auto operation = read<PositionOperation>(withPoint(R"({"op":"position","at":)", "}"));
  EXPECT_EQ(operation.at.latitude, 48.5);
  EXPECT_EQ(operation.at.longitude, -11.25);
  EXPECT_EQ(operation.at.level, -2);
}

TEST(TraceReader, ReadsSettingsWithTheKindsOfTheirValues) {
  const auto operation = read<ConfigOperation>(
      R"({"op":"config","config":"calm","set":{"a":true,"b":5,"c":5.0},"fields":{"d":1.5}})");
  EXPECT_EQ(operation.config, "calm");
  const ConfigOperation::Settings set{
      {"a", Number::boolean(true)}, {"b", Number::integer(5)}, {"c", Number::real(5)}};
  EXPECT_EQ(operation.set, set);
  EXPECT_EQ(operation.fields, (ConfigOperation::Settings{{"d", Number::real(1.5)}}));
}

TEST(TraceReader, TakesAnIntegerBeyond64BitsForADouble) {
  const auto operation =
      read<ConfigOperation>(R"({"op":"config","set":{"a":18446744073709551615}})");
  EXPECT_EQ(operation.set, (ConfigOperation::Settings{{"a", Number::real(0x1p64)}}));
}

TEST(TraceReader, ReadsAConfigurationThatSetsNothing) {
  const auto operation = read<ConfigOperation>(R"({"op":"config"})");
  EXPECT_FALSE(operation.config);
  EXPECT_TRUE(operation.set.empty());
  EXPECT_TRUE(operation.fields.empty());
}

TEST(TraceReader, ReadsARouteWithItsDefaults) {
  const auto operation = read<RouteOperation>(withPoint(R"({"op":"route","to":[],"from":)", "}"));
  EXPECT_EQ(operation.from.latitude, 48.5);
  EXPECT_TRUE(operation.to.empty());
  EXPECT_FALSE(operation.config);
  EXPECT_FALSE(operation.barrierFree);
  EXPECT_TRUE(operation.directions);
}

TEST(TraceReader, ReadsARouteWithAllMembers) {
  const auto operation = read<RouteOperation>(
      R"({"op":"route","from":{"lat":1,"lon":2,"level":3},"to":[{"lat":4,"lon":5,"level":6},)"
      R"({"lat":7,"lon":8,"level":9}],"config":"calm","barrierFree":false,"directions":false})");
  ASSERT_EQ(operation.to.size(), 2U);
  EXPECT_EQ(operation.to[1].longitude, 8);
  EXPECT_EQ(operation.to[1].level, 9);
  EXPECT_EQ(operation.config, "calm");
  EXPECT_EQ(operation.barrierFree, false);
  EXPECT_FALSE(operation.directions);
}

TEST(TraceReader, ReadsTheOtherOperations) {
  EXPECT_TRUE(
      read<IntersectOperation>(withPoint(R"({"op":"intersect","at":)", "}")).onOriginalGraph);
  EXPECT_FALSE(
      read<IntersectOperation>(withPoint(R"({"op":"intersect","onOriginalGraph":false,"at":)", "}"))
          .onOriginalGraph);
  EXPECT_EQ(
      read<DestinationsOperation>(withPoint(R"({"op":"destinations","to":[)", "]}")).to.size(), 1U);
  EXPECT_EQ(read<SnapOperation>(withPoint(R"({"op":"snap","config":"calm","at":)", "}")).config,
            "calm");
  EXPECT_TRUE(std::holds_alternative<CancelOperation>(operationOf(R"({"op":"cancel"})")));
}

TEST(TraceReader, KnowsTwoDeniers) {
  const auto denier = [](const std::string& more) {
    return read<CheckOperation>(withPoint(R"({"op":"check")" + more + R"(,"at":)", "}")).denier;
  };
  EXPECT_EQ(denier(""), TraceDenier::strength);
  EXPECT_EQ(denier(R"(,"denier":"strength")"), TraceDenier::strength);
  EXPECT_EQ(denier(R"(,"denier":"default")"), TraceDenier::byCredit);
}

TEST(TraceReader, TakesNullForAbsent) {
  const auto operation = read<RouteOperation>(withPoint(
      R"({"op":"route","to":[],"config":null,"barrierFree":null,"directions":null,"from":)", "}"));
  EXPECT_FALSE(operation.config);
  EXPECT_FALSE(operation.barrierFree);
  EXPECT_TRUE(operation.directions);
  EXPECT_TRUE(
      read<ConfigOperation>(R"({"op":"config","set":{"a":null},"fields":null})").set.empty());
  EXPECT_THAT(complaintAbout(R"({"op":"position","at":null})"), HasSubstr("at: found nothing"));
}

TEST(TraceReader, TakesAWholeNumberForAnInteger) {
  EXPECT_EQ(
      read<PositionOperation>(R"({"op":"position","at":{"lat":1,"lon":2,"level":-3.0}})").at.level,
      -3);
}

TEST(TraceReader, DoesNotCheckTheRangesOfPoints) {
  const auto at = read<PositionOperation>(R"({"op":"position","at":{"lat":1e308,"lon":-720,)"
                                          R"("level":9223372036854775807}})")
                      .at;
  EXPECT_EQ(at.latitude, 1e308);
  EXPECT_EQ(at.longitude, -720);
  EXPECT_EQ(at.level, std::numeric_limits<std::int64_t>::max());
}

TEST(TraceReader, IgnoresMembersThatAnOperationDoesNotHave) {
  EXPECT_NO_THROW(operationOf(R"({"op":"cancel","at":17,"to":"nowhere","remark":{}})"));
}

TEST(TraceReader, ReadsBackWhatTheWriterWrites) {
  const std::vector<std::string> lines{
      R"({"op":"config","config":"calm","set":{"a":true,"b":5},"fields":{"levelHeight":3.5}})",
      withPoint(R"({"op":"intersect","at":)", R"(,"onOriginalGraph":false})"),
      withPoint(
          R"({"op":"route","from":)",
          withPoint(R"(,"to":[)", R"(],"config":"calm","barrierFree":true,"directions":false})")),
      withPoint(R"({"op":"position","at":)", "}"),
      withPoint(R"({"op":"destinations","to":[)", "]}"),
      withPoint(R"({"op":"snap","at":)", R"(,"config":"calm"})"),
      withPoint(R"({"op":"check","at":)", R"(,"denier":"default"})"),
      R"({"op":"cancel"})"};
  for (const std::string& line : lines) EXPECT_EQ(traceLine(operationOf(line)), line);
}

TEST(TraceReader, SkipsAndCountsLinesThatSayNothing) {
  EXPECT_THAT(
      lineNumbers("# a trace\n\n{\"op\":\"cancel\"}\r\n \t \r\n\r\n#{\n{\"op\":\"cancel\"}"),
      testing::ElementsAre(3U, 7U));
  EXPECT_THAT(lineNumbers(""), testing::IsEmpty());
}

TEST(TraceReader, ReadsNoFurtherThanItIsAsked) {
  std::istringstream stream("{\"op\":\"cancel\"}\n# next\n{\"op\":\"fly\"}\n");
  TraceReader reader(stream, "hall.trace.ndjson");
  EXPECT_TRUE(reader.next());
  EXPECT_THROW(reader.next(), TraceError);
}

TEST(TraceReader, NamesFileLineAndWhatWouldBeRight) {
  EXPECT_EQ(complaintAbout(R"({"op":"position","at":{"lat":1,"lon":2,"level":"two"}})"),
            "test.trace.ndjson: line 7: level of at: found \"two\", expected an integer");
  EXPECT_EQ(complaintAbout(R"({"op":"fly"})"),
            "test.trace.ndjson: line 7: op: found \"fly\", expected one of config, intersect, "
            "route, position, destinations, snap, check, cancel");
  EXPECT_EQ(complaintAbout("[]"), "test.trace.ndjson: line 7: found [], expected an object");
}

TEST(TraceReader, SaysWhereInTheLineTheJsonEnds) {
  EXPECT_THAT(complaintAbout(R"({"op":"cancel")"),
              testing::AllOf(HasSubstr("line 7: found parse error at column 15"),
                             HasSubstr(", expected JSON")));
  EXPECT_THAT(complaintAbout(R"({"op":"position","at":{"lat":1e999,"lon":0,"level":0}})"),
              HasSubstr("expected finite numbers"));
}

TEST(TraceReader, RefusesMembersThatAreMissingOrOfAnotherType) {
  const std::vector<std::pair<std::string, std::string>> complaints{
      {R"({})", "op of the line: found nothing, expected a string"},
      {R"({"op":3})", "op of the line: found 3, expected a string"},
      {R"({"op":"position"})", "at: found nothing, expected a point with lat, lon and level"},
      {R"({"op":"position","at":[1,2,3]})", "at: found [1,2,3], expected a point"},
      {R"({"op":"position","at":{"lon":2,"level":0}})",
       "lat of at: found nothing, expected a number"},
      {R"({"op":"position","at":{"lat":"1","lon":2,"level":0}})", "lat of at: found \"1\""},
      {R"({"op":"position","at":{"lat":1,"lon":true,"level":0}})", "lon of at: found true"},
      {R"({"op":"position","at":{"lat":1,"lon":2,"level":0.5}})", "level of at: found 0.5"},
      {R"({"op":"position","at":{"lat":1,"lon":2,"level":9223372036854775808}})",
       "level of at: found 9223372036854775808, expected an integer"},
      {withPoint(R"({"op":"route","from":)", "}"), "to of route: found nothing"},
      {withPoint(R"({"op":"route","from":)", R"(,"to":{}})"),
       "to of route: found an object, expected an array of points"},
      {withPoint(R"({"op":"route","to":[],"directions":1,"from":)", "}"),
       "directions of route: found 1, expected true or false"},
      {withPoint(R"({"op":"route","to":[],"barrierFree":"no","from":)", "}"),
       "barrierFree of route: found \"no\""},
      {withPoint(R"({"op":"route","to":[],"config":1,"from":)", "}"), "config of route: found 1"},
      {withPoint(R"({"op":"destinations","to":[)", ",null]}"), "to[1]: found nothing"},
      {R"({"op":"config","set":[]})", "set of config: found []"},
      {R"({"op":"config","set":{"a":"1"}})", "\"a\" of set: found \"1\""},
      {R"({"op":"config","fields":{"levelHeight":[]}})", "\"levelHeight\" of fields: found []"},
      {withPoint(R"({"op":"check","denier":"stern","at":)", "}"),
       "denier of check: found \"stern\", expected \"strength\" or \"default\""},
      {withPoint(R"({"op":"check","denier":1,"at":)", "}"), "denier of check: found 1"},
      {withPoint(R"({"op":"intersect","onOriginalGraph":0,"at":)", "}"),
       "onOriginalGraph of intersect: found 0"}};
  for (const auto& [line, complaint] : complaints) {
    EXPECT_THAT(complaintAbout(line), HasSubstr(": line 7: " + complaint)) << line;
  }
}

TEST(TraceReader, StandsDeepNesting) {
  const std::string deep(200000, '[');
  const std::string end(200000, ']');
  EXPECT_THAT(complaintAbout(R"({"op":"position","at":)" + deep + end + "}"),
              HasSubstr("at: found an array, expected a point"));
}

TEST(OpenTrace, RefusesWhatIsNoFile) {
  EXPECT_THROW(openTrace(KORVANI_SOURCE_DIR "/no-such.trace.ndjson"), InputError);
  EXPECT_THROW(openTrace(KORVANI_SOURCE_DIR), InputError);
}

}  // namespace
}  // namespace KorvaniTest
