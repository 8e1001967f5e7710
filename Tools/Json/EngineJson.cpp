#include "Json/EngineJson.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace KorvaniTools {

using KorvaniNavigation::Directions;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::Route;
using KorvaniNavigation::Step;
using KorvaniPlatform::Dictionary;
using KorvaniPlatform::Number;
using KorvaniPlatform::Value;

OrderedJson numberJson(double number) {
  return std::isfinite(number) ? OrderedJson(number) : OrderedJson(nullptr);
}

OrderedJson valueJson(const Number& number) {
  switch (number.kind()) {
    case Number::Kind::boolean:
      return number.boolValue();
    case Number::Kind::integer:
      return number.integerValue();
    case Number::Kind::floating:
    case Number::Kind::real:
      break;
  }
  return numberJson(number.doubleValue());
}

OrderedJson valueJson(const Value& value) {
  if (const Number* number = value.number()) return valueJson(*number);
  if (const std::string* string = value.string()) return *string;
  return valueJson(*value.dictionary());
}

OrderedJson valueJson(const Dictionary& dictionary) {
  OrderedJson object = OrderedJson::object();
  for (const auto& [key, value] : dictionary) object[key] = valueJson(value);
  return object;
}

OrderedJson pointJson(const KRVNavPoint& point) {
  return {{"lat", numberJson(point.coordinate().latitude)},
          {"lon", numberJson(point.coordinate().longitude)},
          {"level", point.level()},
          {"id", std::max<std::int64_t>(point.identifier(), -1)}};
}

OrderedJson stepJson(const Step& step) {
  return {{"start", pointJson(*step.start())},
          {"end", pointJson(*step.end())},
          {"distance", numberJson(step.distance())},
          {"timeMultiplicator", numberJson(step.timeMultiplicator())},
          {"barrierFree", step.barrierFree()},
          {"levelChange", step.levelChange()},
          {"heading", numberJson(step.heading())},
          {"neighborType", step.neighborType()}};
}

OrderedJson routeJson(const Route& route) {
  OrderedJson steps = OrderedJson::array();
  for (const Step& step : route.steps()) steps.push_back(stepJson(step));
  OrderedJson points = OrderedJson::array();
  for (const auto& point : route.points()) points.push_back(pointJson(*point));
  OrderedJson directions = OrderedJson::array();
  for (const Directions& instruction : route.directions()) {
    directions.push_back(valueJson(instruction.directionsJson()));
  }
  return {{"steps", std::move(steps)},
          {"points", std::move(points)},
          {"totalDistance", numberJson(route.totalDistance())},
          {"travelTime", numberJson(route.travelTime())},
          {"directions", std::move(directions)}};
}

OrderedJson routeJson(const std::optional<Route>& route) {
  return route ? routeJson(*route) : OrderedJson(nullptr);
}

std::string jsonText(const OrderedJson& json) {
  constexpr int kOneLine = -1;
  return json.dump(kOneLine, ' ', false, OrderedJson::error_handler_t::replace);
}

}  // namespace KorvaniTools
