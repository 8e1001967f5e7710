#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Building/Building.hpp"
#include "Drawing/DrawnRoute.hpp"
#include "Drawing/RoomKind.hpp"
#include "Drawing/SceneFrame.hpp"

namespace KorvaniTools {

/// What a drawing of a building shows, level by level, in metres; nothing in it knows of colours
/// or pixels.
///
///     Scene scene = makeScene(building);
///     scene.route = drawnRoute(*answer.route, start, destination, levels, scene.frame);
///     const std::string picture = sceneSvg(scene, SceneSvgOptions{});
///
/// All are values: copy, move and read them from any thread. Texts are as the building file has
/// them; whoever writes them escapes them.

/// A room's outline.
struct SceneRoom {
  std::vector<SceneLine> rings;  ///< closed; the first is the outer one, the rest are holes
  RoomKind kind = RoomKind::other;
  std::string name;      ///< may be empty
  std::string category;  ///< as the file says; may be empty
};

/// A wall, a line of at least two points.
struct SceneWall {
  SceneLine line;
};

struct SceneNode {
  std::int64_t id = 0;
  ScenePoint at;
};

/// An edge with both ends on the level.
struct SceneEdge {
  std::int64_t from = 0;  ///< a node's id
  std::int64_t to = 0;
  ScenePoint start;
  ScenePoint end;
  double distance = 0;  ///< metres: the file's, or between the drawn points
  bool oneway = false;
  bool barrierFree = true;
  std::string type;  ///< may be empty
};

/// Where the level can be left for others.
struct SceneConnection {
  std::int64_t node = 0;
  ScenePoint at;
  ConnectionSymbol symbol = ConnectionSymbol::path;
  std::string type;                  ///< as the file calls it; may be empty
  std::vector<std::int64_t> levels;  ///< that it leads to at once, ascending, each once
  bool barrierFree = true;           ///< whether at least one of its edges is
};

struct ScenePlace {
  std::string name;
  ScenePoint at;
  RoomKind kind = RoomKind::other;
  std::string category;  ///< may be empty
  bool entrance = false;
};

struct SceneLevel {
  std::int64_t level = 0;
  std::string name;    ///< what people call it; may be empty
  std::string number;  ///< the one that is on the doors, see `LevelNames`
  std::string title;   ///< "Level 2 · Upper deck", "Level 2"
  std::vector<SceneRoom> rooms;
  /// What the walls enclose, closed outlines; only of a level without rooms.
  std::vector<SceneLine> floors;
  std::vector<SceneWall> walls;
  std::vector<SceneNode> nodes;
  std::vector<SceneEdge> edges;
  std::vector<SceneConnection> connections;
  std::vector<ScenePlace> places;
};

/// A position that an obstacle check did not believe.
struct SceneJump {
  ScenePoint came;
  std::optional<ScenePoint> held;  ///< where the check let the person be, on the same level
};

/// Where somebody was, as measured and as shown.
struct SceneTrack {
  std::int64_t level = 0;
  std::vector<ScenePoint> measured;
  std::vector<ScenePoint> snapped;
  std::vector<SceneJump> denied;
};

struct Scene {
  std::string name;         ///< the building's; may be empty
  std::string attribution;  ///< to be shown with every picture; may be empty
  std::string licence;      ///< may be empty
  SceneFrame frame;
  std::vector<SceneLevel> levels;  ///< ascending, each once; empty for an empty building
  std::optional<DrawnRoute> route;
  std::vector<SceneTrack> tracks;

  /// The level of that number; null when there is none.
  const SceneLevel* find(std::int64_t level) const;
};

/// The building's levels: those on which there is anything to draw. Cost: near linear in the
/// building's size.
Scene makeScene(const Building& building);

}  // namespace KorvaniTools
