#include "Drawing/Scene.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <map>
#include <unordered_map>
#include <utility>

#include "Drawing/WallFloor.hpp"
#include "Support/LevelNames.hpp"

namespace KorvaniTools {
namespace {

/// What lies around a building, as a part of its longer side.
constexpr double kMarginPart = 0.03;
constexpr double kLeastMargin = 2;  // metres

Rectangle rectangleOf(const Building& building) {
  Rectangle rectangle;
  const auto includeAll = [&](const std::vector<Coordinate>& positions) {
    for (const Coordinate& position : positions) rectangle.include(position);
  };
  for (const Room& room : building.rooms) {
    for (const auto& ring : room.rings) includeAll(ring);
  }
  for (const BuildingObstacle& obstacle : building.obstacles) {
    for (const ObstacleLine& line : obstacle.lines) includeAll(line.positions);
  }
  for (const BuildingNode& node : building.nodes) rectangle.include(node.coordinate);
  for (const Place& place : building.places) rectangle.include(place.coordinate);
  return rectangle;
}

SceneFrame frameOf(const Building& building) {
  const Rectangle rectangle = rectangleOf(building);
  const SceneFrame bare(rectangle, 0);
  const double longer = std::max(bare.width(), bare.height());
  return SceneFrame(rectangle, std::max(kLeastMargin, longer * kMarginPart));
}

/// The string under the first of `keys` that holds one that is not empty.
std::string firstString(const nlohmann::json& object, std::initializer_list<const char*> keys) {
  for (const char* key : keys) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_string()) continue;
    const auto& text = found->get_ref<const std::string&>();
    if (!text.empty()) return text;
  }
  return "";
}

double distanceOf(ScenePoint a, ScenePoint b) { return std::hypot(a.x - b.x, a.y - b.y); }

/// Puts a building's features onto their levels.
class SceneBuilder {
 public:
  explicit SceneBuilder(const Building& building) : building_(building), names_(building) {
    scene_.name = building.name.value_or("");
    scene_.attribution = building.attribution.value_or("");
    scene_.licence = building.licence.value_or("");
    scene_.frame = frameOf(building);
  }

  Scene build() {
    for (const Room& room : building_.rooms) add(room);
    for (const BuildingObstacle& obstacle : building_.obstacles) add(obstacle);
    for (const BuildingNode& node : building_.nodes) add(node);
    for (const BuildingEdge& edge : building_.edges) add(edge);
    for (const Place& place : building_.places) add(place);
    for (auto& entry : levels_) {
      addFloor(entry.second);
      scene_.levels.push_back(std::move(entry.second));
    }
    return std::move(scene_);
  }

 private:
  SceneLevel& levelOf(std::int64_t number) {
    SceneLevel& level = levels_[number];
    if (level.title.empty()) {
      level.level = number;
      level.number = names_.number(number);
      level.name = names_.name(number);
      level.title = "Level " + level.number;
      if (names_.words(number) != "level " + level.number) level.title += " \u00b7 " + level.name;
    }
    return level;
  }

  static void addFloor(SceneLevel& level) {
    if (!level.rooms.empty()) return;
    std::vector<SceneLine> walls;
    for (const SceneWall& wall : level.walls) walls.push_back(wall.line);
    level.floors = floorWithin(walls);
  }

  void add(const Room& room) {
    SceneRoom drawn;
    for (const auto& ring : room.rings) {
      if (ring.size() >= 3) drawn.rings.push_back(scene_.frame.at(ring));
    }
    if (drawn.rings.empty()) return;
    drawn.name = room.name.value_or("");
    drawn.category = room.category.value_or("");
    drawn.kind = roomKindOf(drawn.category);
    levelOf(room.level).rooms.push_back(std::move(drawn));
  }

  void add(const BuildingObstacle& obstacle) {
    for (const ObstacleLine& line : obstacle.lines) {
      if (line.positions.size() < 2) continue;
      levelOf(obstacle.level).walls.push_back({scene_.frame.at(line.positions)});
    }
  }

  void add(const BuildingNode& node) {
    nodes_[node.id] = &node;
    levelOf(node.level).nodes.push_back({node.id, scene_.frame.at(node.coordinate)});
  }

  void add(const BuildingEdge& edge) {
    const BuildingNode& from = *nodes_.at(edge.from);
    const BuildingNode& to = *nodes_.at(edge.to);
    if (from.level != to.level) {
      connect(from, to, edge);
      connect(to, from, edge);
      return;
    }
    const ScenePoint start = scene_.frame.at(from.coordinate);
    const ScenePoint end = scene_.frame.at(to.coordinate);
    levelOf(from.level)
        .edges.push_back({edge.from, edge.to, start, end,
                          edge.distance.value_or(distanceOf(start, end)), edge.oneway,
                          edge.barrierFree, edge.type.value_or("")});
  }

  void connect(const BuildingNode& node, const BuildingNode& other, const BuildingEdge& edge) {
    const ConnectionSymbol symbol = connectionSymbolOf(edge.type.value_or(""));
    std::vector<SceneConnection>& connections = levelOf(node.level).connections;
    const auto added = connections_.emplace(std::make_pair(node.id, symbol), connections.size());
    if (added.second) {
      connections.push_back(
          {node.id, scene_.frame.at(node.coordinate), symbol, edge.type.value_or(""), {}, false});
    }
    SceneConnection& connection = connections[added.first->second];
    connection.barrierFree = connection.barrierFree || edge.barrierFree;
    std::vector<std::int64_t>& levels = connection.levels;
    const auto place = std::lower_bound(levels.begin(), levels.end(), other.level);
    if (place == levels.end() || *place != other.level) levels.insert(place, other.level);
  }

  void add(const Place& place) {
    ScenePlace drawn;
    drawn.name = place.name;
    drawn.at = scene_.frame.at(place.coordinate);
    drawn.category = firstString(place.further, {"category", "amenity", "shop", "type"});
    drawn.kind = roomKindOf(drawn.category);
    drawn.entrance = place.entrance;
    levelOf(place.level).places.push_back(std::move(drawn));
  }

  const Building& building_;
  LevelNames names_;
  Scene scene_;
  std::map<std::int64_t, SceneLevel> levels_;
  std::unordered_map<std::int64_t, const BuildingNode*> nodes_;
  /// Where a node's connection stands in its level's list.
  std::map<std::pair<std::int64_t, ConnectionSymbol>, std::size_t> connections_;
};

}  // namespace

const SceneLevel* Scene::find(std::int64_t level) const {
  const auto found = std::find_if(levels.begin(), levels.end(),
                                  [level](const SceneLevel& each) { return each.level == level; });
  return found == levels.end() ? nullptr : &*found;
}

Scene makeScene(const Building& building) { return SceneBuilder(building).build(); }

}  // namespace KorvaniTools
