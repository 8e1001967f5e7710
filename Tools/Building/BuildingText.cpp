#include "Building/BuildingText.hpp"

#include <map>
#include <utility>

#include "Building/FeatureText.hpp"

namespace KorvaniTools {
namespace {

using OrderedJson = nlohmann::ordered_json;

void setIfPresent(OrderedJson& object, const char* key, const std::optional<std::string>& value) {
  if (value) object[key] = *value;
}

OrderedJson levelsJson(const std::vector<LevelName>& names) {
  OrderedJson levels = OrderedJson::array();
  for (const LevelName& entry : names) {
    OrderedJson level{{"level", entry.level}};
    setIfPresent(level, "name", entry.name);
    setIfPresent(level, "source", entry.source);
    levels.push_back(std::move(level));
  }
  return levels;
}

OrderedJson membersJson(const Building& building) {
  OrderedJson members = OrderedJson::object();
  setIfPresent(members, "name", building.name);
  setIfPresent(members, "attribution", building.attribution);
  setIfPresent(members, "licence", building.licence);
  members["formatVersion"] = 1;
  if (!building.levelNames.empty()) members["levels"] = levelsJson(building.levelNames);
  return members;
}

OrderedJson ringsJson(const std::vector<std::vector<Coordinate>>& rings) {
  OrderedJson json = OrderedJson::array();
  for (const auto& ring : rings) json.push_back(positionsJson(ring));
  return json;
}

class Writer {
 public:
  explicit Writer(const Building& building) : building_(building), text_(membersJson(building)) {}

  std::string write() {
    for (const BuildingRegion& region : building_.regions) addRegion(region);
    for (const BuildingNode& node : building_.nodes) addNode(node);
    for (const BuildingEdge& edge : building_.edges) addEdge(edge);
    for (const BuildingObstacle& obstacle : building_.obstacles) addObstacle(obstacle);
    for (const Place& place : building_.places) addPlace(place);
    for (const Room& room : building_.rooms) addRoom(room);
    return std::move(text_).finished();
  }

 private:
  void addRegion(const BuildingRegion& region) {
    if (region.made) return;
    OrderedJson properties{{"kind", "region"}, {"level", region.level}};
    setIfPresent(properties, "name", region.name);
    text_.add(std::move(properties), "Polygon", KorvaniTools::ringsJson(region.rectangle));
  }

  void addNode(const BuildingNode& node) {
    coordinates_[node.id] = node.coordinate;
    OrderedJson properties{{"kind", "node"}, {"id", node.id}, {"level", node.level}};
    setIfPresent(properties, "region", node.regionName);
    text_.add(std::move(properties), "Point", positionJson(node.coordinate));
  }

  void addEdge(const BuildingEdge& edge) {
    OrderedJson properties{{"kind", "edge"}, {"from", edge.from}, {"to", edge.to}};
    if (edge.oneway) properties["oneway"] = true;
    if (edge.distance) properties["distance"] = *edge.distance;
    if (edge.multiplicator != 1) properties["multiplicator"] = edge.multiplicator;
    if (!edge.barrierFree) properties["barrierFree"] = false;
    setIfPresent(properties, "type", edge.type);
    text_.add(std::move(properties), "LineString",
              positionsJson({coordinates_.at(edge.from), coordinates_.at(edge.to)}));
  }

  void addObstacle(const BuildingObstacle& obstacle) {
    if (obstacle.lines.empty()) return;
    OrderedJson properties{{"kind", "obstacle"}, {"level", obstacle.level}};
    if (obstacle.strength != 0) properties["strength"] = obstacle.strength;
    setIfPresent(properties, "region", obstacle.regionName);
    if (obstacle.lines.size() == 1) {
      text_.add(std::move(properties), "LineString",
                positionsJson(obstacle.lines.front().positions));
      return;
    }
    std::vector<std::vector<Coordinate>> rings;
    for (const ObstacleLine& line : obstacle.lines) rings.push_back(line.positions);
    text_.add(std::move(properties), "Polygon", ringsJson(rings));
  }

  void addPlace(const Place& place) {
    OrderedJson properties{{"kind", "place"}, {"name", place.name}, {"level", place.level}};
    if (place.entrance) properties["entrance"] = true;
    for (const auto& [key, value] : place.further.items()) {
      if (!properties.contains(key)) properties[key] = value;
    }
    text_.add(std::move(properties), "Point", positionJson(place.coordinate));
  }

  void addRoom(const Room& room) {
    OrderedJson properties{{"kind", "room"}, {"level", room.level}};
    setIfPresent(properties, "name", room.name);
    setIfPresent(properties, "category", room.category);
    text_.add(std::move(properties), "Polygon", ringsJson(room.rings));
  }

  const Building& building_;
  std::map<std::int64_t, Coordinate> coordinates_;  ///< by node id
  FeatureText text_;
};

}  // namespace

std::string buildingText(const Building& building) { return Writer(building).write(); }

}  // namespace KorvaniTools
