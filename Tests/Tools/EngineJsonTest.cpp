#include "Json/EngineJson.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "Navigation/Directions/Directions.hpp"
#include "Support/Points.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::Directions;
using KorvaniNavigation::DirectionsType;
using KorvaniNavigation::Route;
using KorvaniNavigation::Step;
using KorvaniPlatform::Dictionary;
using KorvaniPlatform::Number;
using KorvaniTools::jsonText;
using KorvaniTools::numberJson;
using KorvaniTools::OrderedJson;
using KorvaniTools::pointJson;
using KorvaniTools::routeJson;
using KorvaniTools::valueJson;

TEST(EngineJson, NumbersKeepTheirKind) {
  EXPECT_EQ(jsonText(valueJson(Number::boolean(true))), "true");
  EXPECT_EQ(jsonText(valueJson(Number::integer(-7))), "-7");
  EXPECT_EQ(jsonText(valueJson(Number::real(5.0))), "5.0");
  EXPECT_EQ(jsonText(valueJson(Number::single(1.5F))), "1.5");
}

TEST(EngineJson, NumbersReadBackToTheSameDouble) {
  for (const double number : {0.1, 1.0 / 3.0, 53.56188268623288, 5e-324, 1.7976931348623157e308,
                              -123456789.12345678, static_cast<double>(0.1F)}) {
    EXPECT_EQ(OrderedJson::parse(jsonText(numberJson(number))).get<double>(), number);
  }
}

TEST(EngineJson, WhatIsNotFiniteIsNull) {
  for (const double number : {std::nan(""), std::numeric_limits<double>::infinity(),
                              -std::numeric_limits<double>::infinity()}) {
    EXPECT_TRUE(numberJson(number).is_null());
    EXPECT_TRUE(valueJson(Number::real(number)).is_null());
  }
}

TEST(EngineJson, DictionariesKeepTheirOrder) {
  const Dictionary dictionary{{"z", 1}, {"a", Dictionary{{"s", "text"}, {"b", false}}}};
  EXPECT_EQ(jsonText(valueJson(dictionary)), R"({"z":1,"a":{"s":"text","b":false}})");
}

TEST(EngineJson, APointHasAnIdOrMinusOne) {
  EXPECT_EQ(jsonText(pointJson(*at(48.5, 11.25, -2, 17))),
            R"({"lat":48.5,"lon":11.25,"level":-2,"id":17})");
  EXPECT_EQ(pointJson(*at(48.5, 11.25, 0))["id"], -1);
  EXPECT_EQ(pointJson(*at(48.5, 11.25, 0, -3))["id"], -1);
}

TEST(EngineJson, ARouteHasAllItsParts) {
  const auto start = at(48, 11, 0, 1);
  const auto middle = at(48, 11, 1, 2);
  const auto end = at(48.001, 11, 1);
  Route route({Step(start, middle, 3, false, 2.5, "stairs"), Step(middle, end, 111.5)});
  route.setDirections({Directions(DirectionsType::destination, 114.5, nullptr, {}, {})});
  const OrderedJson json = routeJson(route);

  std::vector<std::string> members;
  for (const auto& entry : json.items()) members.push_back(entry.key());
  EXPECT_EQ(members, (std::vector<std::string>{"steps", "points", "totalDistance", "travelTime",
                                               "directions"}));
  EXPECT_EQ(jsonText(json["steps"][0]),
            R"({"start":{"lat":48.0,"lon":11.0,"level":0,"id":1},)"
            R"("end":{"lat":48.0,"lon":11.0,"level":1,"id":2},"distance":3.0,)"
            R"("timeMultiplicator":2.5,"barrierFree":false,"levelChange":true,"heading":0.0,)"
            R"("neighborType":"stairs"})");
  EXPECT_EQ(json["steps"][1]["neighborType"], "");
  EXPECT_EQ(json["points"].size(), 3U);
  EXPECT_EQ(json["points"][2]["id"], -1);
  EXPECT_EQ(json["totalDistance"], 114.5);
  EXPECT_EQ(json["travelTime"], (3 * 2.5 + 111.5) / 1.5);
  EXPECT_EQ(json["directions"][0]["RouteDirection"], 9);
  EXPECT_EQ(json["directions"][0].size(), 7U);
}

TEST(EngineJson, NoRouteIsNull) { EXPECT_TRUE(routeJson(std::optional<Route>()).is_null()); }

TEST(EngineJson, TextThatIsNotUtf8IsStillWritten) {
  EXPECT_EQ(jsonText("a\xff"
                     "b"),
            "\"a\xef\xbf\xbd"
            "b\"");
}

}  // namespace
}  // namespace KorvaniTest
