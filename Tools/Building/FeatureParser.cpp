#include "Building/FeatureParser.hpp"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace KorvaniTools {

/// One feature while it is read.
struct FeatureParser::Feature {
  std::size_t index = 0;
  const Json& properties;
  Fields fields;
  Geometry geometry;
};

/// A kind of feature: its name, how errors speak of it, the properties it knows beside "kind",
/// and what adds it.
struct FeatureParser::Kind {
  std::string_view name;
  const char* owner;
  std::vector<std::string_view> properties;
  bool keepsFurther;
  void (FeatureParser::*add)(const Feature&);

  bool knows(std::string_view property) const {
    return property == "kind" ||
           std::find(properties.begin(), properties.end(), property) != properties.end();
  }
};

FeatureParser::FeatureParser(Building& building, const std::string& file)
    : building_(building), file_(file) {}

const FeatureParser::Kind* FeatureParser::kindNamed(const std::string& name) {
  static const std::array<Kind, 6> kinds{{
      {"region", "a region", {"level", "name"}, false, &FeatureParser::addRegion},
      {"node", "a node", {"id", "level", "region"}, false, &FeatureParser::addNode},
      {"edge",
       "an edge",
       {"from", "to", "oneway", "distance", "multiplicator", "barrierFree", "type"},
       false,
       &FeatureParser::addEdge},
      {"obstacle",
       "an obstacle",
       {"level", "strength", "region"},
       false,
       &FeatureParser::addObstacle},
      {"place", "a place", {"name", "level", "entrance"}, true, &FeatureParser::addPlace},
      {"room", "a room", {"level", "name", "category"}, false, &FeatureParser::addRoom},
  }};
  const auto found =
      std::find_if(kinds.begin(), kinds.end(), [&](const Kind& kind) { return kind.name == name; });
  return found == kinds.end() ? nullptr : &*found;
}

void FeatureParser::add(const Json& feature, std::size_t index) {
  const ErrorPlace place{file_, index};
  if (!feature.is_object()) place.fail("", brief(feature), "a Feature");
  const auto type = feature.find("type");
  if (type == feature.end() || *type != "Feature") {
    place.fail("type", type == feature.end() ? "nothing" : brief(*type), "\"Feature\"");
  }
  static const Json kNoProperties = Json::object();
  const auto found = feature.find("properties");
  const bool absent = found == feature.end() || found->is_null();
  const Json& properties = absent ? kNoProperties : *found;
  if (!properties.is_object()) place.fail("properties", brief(properties), "an object");

  const std::string name = Fields(properties, "a feature", place).requiredString("kind");
  const Kind* kind = kindNamed(name);
  if (kind == nullptr) {
    ++building_.summary.ignoredKinds[name];
    return;
  }
  (this->*kind->add)({index, properties, Fields(properties, kind->owner, place),
                      Geometry(feature, kind->owner, place)});
  if (!kind->keepsFurther) countUnknown(properties, *kind);
}

void FeatureParser::countUnknown(const Json& properties, const Kind& kind) {
  for (const auto& [key, value] : properties.items()) {
    if (value.is_null() || kind.knows(key)) continue;
    ++building_.summary.ignoredProperties[{std::string(kind.name), key}];
  }
}

void FeatureParser::addRegion(const Feature& feature) {
  BuildingRegion region;
  feature.geometry.type({"Polygon"});
  for (const Positions& ring : feature.geometry.polygon()) {
    for (const Coordinate& position : ring) region.rectangle.include(position);
  }
  region.level = feature.fields.requiredLevel();
  region.name = feature.fields.optionalString("name");
  if (region.name && !regionNames_.insert(*region.name).second) {
    feature.fields.fail("name", inQuotes(*region.name) + " a second time", "a name of its own");
  }
  region.feature = feature.index;
  building_.regions.push_back(std::move(region));
}

void FeatureParser::addNode(const Feature& feature) {
  BuildingNode node;
  feature.geometry.type({"Point"});
  node.feature = feature.index;
  node.coordinate = feature.geometry.point();
  node.id = feature.fields.requiredInteger("id");
  if (node.id < 0) feature.fields.fail("id", std::to_string(node.id), "an integer from 0 on");
  if (!nodeIds_.insert(node.id).second) {
    feature.fields.fail("id", std::to_string(node.id) + " a second time", "an id of its own");
  }
  node.level = feature.fields.requiredLevel();
  node.regionName = feature.fields.optionalString("region");
  building_.nodes.push_back(std::move(node));
}

void FeatureParser::addEdge(const Feature& feature) {
  BuildingEdge edge;
  feature.geometry.type({"LineString"});
  const std::size_t positions = feature.geometry.lineString().size();
  if (positions != 2) {
    feature.fields.place().fail(
        "geometry of an edge",
        std::to_string(positions) + (positions == 1 ? " position" : " positions"),
        "exactly two positions");
  }
  const Fields& fields = feature.fields;
  edge.feature = feature.index;
  edge.from = fields.requiredInteger("from");
  edge.to = fields.requiredInteger("to");
  edge.oneway = fields.booleanOr("oneway", false);
  edge.distance = fields.optionalPositive("distance", "a number of metres above 0");
  edge.multiplicator = fields.optionalPositive("multiplicator", "a number above 0").value_or(1.0);
  edge.barrierFree = fields.booleanOr("barrierFree", true);
  edge.type = fields.optionalString("type");
  building_.edges.push_back(std::move(edge));
}

void FeatureParser::addObstacle(const Feature& feature) {
  BuildingObstacle obstacle;
  const bool polygon = feature.geometry.type({"LineString", "Polygon"}) == "Polygon";
  std::vector<Positions> lines;
  if (polygon) {
    lines = feature.geometry.polygon();
  } else {
    lines.push_back(feature.geometry.lineString());
  }
  for (Positions& line : lines) {
    if (polygon && line.front() != line.back()) line.push_back(Coordinate(line.front()));
    obstacle.lines.push_back({std::move(line), {}});
  }
  obstacle.feature = feature.index;
  obstacle.level = feature.fields.requiredLevel();
  obstacle.strength = feature.fields.integerOr("strength", 0);
  obstacle.regionName = feature.fields.optionalString("region");
  building_.obstacles.push_back(std::move(obstacle));
}

void FeatureParser::addPlace(const Feature& feature) {
  Place place;
  feature.geometry.type({"Point"});
  place.coordinate = feature.geometry.point();
  place.name = feature.fields.requiredString("name");
  place.level = feature.fields.requiredLevel();
  place.entrance = feature.fields.booleanOr("entrance", false);
  const Kind& kind = *kindNamed("place");
  for (const auto& [key, value] : feature.properties.items()) {
    if (!value.is_null() && !kind.knows(key)) place.further[key] = value;
  }
  place.feature = feature.index;
  building_.places.push_back(std::move(place));
}

void FeatureParser::addRoom(const Feature& feature) {
  Room room;
  feature.geometry.type({"Polygon"});
  room.rings = feature.geometry.polygon();
  room.level = feature.fields.requiredLevel();
  room.name = feature.fields.optionalString("name");
  room.category = feature.fields.optionalString("category");
  building_.rooms.push_back(std::move(room));
}

}  // namespace KorvaniTools
