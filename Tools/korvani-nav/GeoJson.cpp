#include "korvani-nav/GeoJson.hpp"

#include <string>
#include <utility>

#include "Support/RouteText.hpp"

namespace KorvaniTools {
namespace {

using KorvaniNavigation::Route;
using KorvaniNavigation::Step;

OrderedJson position(Coordinate coordinate) {
  return OrderedJson::array({numberJson(coordinate.longitude), numberJson(coordinate.latitude)});
}

OrderedJson feature(OrderedJson properties, const char* type, OrderedJson coordinates) {
  return {{"type", "Feature"},
          {"properties", std::move(properties)},
          {"geometry", {{"type", type}, {"coordinates", std::move(coordinates)}}}};
}

OrderedJson spotFeature(const char* kind, const Spot& spot) {
  return feature({{"kind", kind}, {"level", spot.level}, {"name", spot.name}}, "Point",
                 position(spot.coordinate));
}

/// The steps from `first` on that stay on one level, as one line; moves `first` behind them.
OrderedJson levelFeature(const std::vector<Step>& steps, std::size_t& first) {
  OrderedJson line = OrderedJson::array({position(steps[first].start()->coordinate())});
  const std::int64_t level = steps[first].start()->level();
  double distance = 0;
  bool barrierFree = true;
  for (; first < steps.size() && !steps[first].levelChange(); ++first) {
    line.push_back(position(steps[first].end()->coordinate()));
    distance += steps[first].distance();
    barrierFree = barrierFree && steps[first].barrierFree();
  }
  return feature({{"kind", "route"},
                  {"level", level},
                  {"distance", numberJson(distance)},
                  {"barrierFree", barrierFree}},
                 "LineString", std::move(line));
}

OrderedJson changeFeature(const Step& step) {
  return feature({{"kind", "levelChange"},
                  {"level", step.start()->level()},
                  {"toLevel", step.end()->level()},
                  {"type", step.neighborType()},
                  {"distance", numberJson(step.distance())},
                  {"barrierFree", step.barrierFree()}},
                 "LineString",
                 OrderedJson::array(
                     {position(step.start()->coordinate()), position(step.end()->coordinate())}));
}

void addRoute(const Route& route, const LevelNames& levels, const std::string& destination,
              OrderedJson& features) {
  const std::vector<Step>& steps = route.steps();
  for (std::size_t next = 0; next < steps.size();) {
    if (steps[next].levelChange()) {
      features.push_back(changeFeature(steps[next++]));
    } else {
      features.push_back(levelFeature(steps, next));
    }
  }
  for (const Instruction& instruction : routeInstructions(route, levels, destination)) {
    features.push_back(
        feature({{"kind", "instruction"}, {"level", instruction.level}, {"text", instruction.text}},
                "Point", position(instruction.at)));
  }
}

}  // namespace

OrderedJson routeGeoJson(const RouteAnswer& answer, const Spot& start,
                         const std::vector<Spot>& destinations, const Building& building,
                         const LevelNames& levels) {
  const Spot& destination = destinations[answer.destination];
  OrderedJson features = OrderedJson::array({spotFeature("start", start)});
  if (answer.route) addRoute(*answer.route, levels, destination.name, features);
  features.push_back(spotFeature("destination", destination));

  OrderedJson collection{{"type", "FeatureCollection"}};
  if (building.name) collection["name"] = *building.name;
  if (building.attribution) collection["attribution"] = *building.attribution;
  if (building.licence) collection["licence"] = *building.licence;
  collection["direct"] = answer.isDirectRoute();
  collection["arrived"] = answer.arrived;
  if (answer.route) {
    collection["totalDistance"] = numberJson(answer.route->totalDistance());
    collection["travelTime"] = numberJson(answer.route->travelTime());
  }
  collection["features"] = std::move(features);
  return collection;
}

}  // namespace KorvaniTools
