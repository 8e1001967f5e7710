#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Building/Building.hpp"
#include "Support/Remarks.hpp"

namespace KorvaniTools {

/// A building as the source of a map draws it: floors full of rooms, doors, walls, lines to walk
/// on and ways up and down. There is no graph yet.
///
/// An importer fills a `FloorPlan` with what its source says, in the source's order, and without
/// any geometry work; `makeBuilding` (PlanBuilding.hpp) turns it into a `Building` with a graph.
///
///     FloorPlan plan = readOsm("station.osm", ...);
///     PlanReport report;
///     Building building = makeBuilding(plan, ConnectionTable::standard(), report);
///
/// Positions are WGS 84. Levels are the source's own numbers, which may be fractions (0.5);
/// `makeBuilding` gives them whole numbers. All are values: copy, move and read them from any
/// thread.

/// Levels of the source, ascending, each once.
using PlanLevelSet = std::vector<double>;

/// Kinds of connection, which is what a `ConnectionTable` tells apart.
enum class ConnectionKind {
  path,  ///< plain floor
  door,  ///< through a door
  stairs,
  escalator,
  travelator,  ///< moving walkway
  elevator,
  ramp,
  ladder,
};

/// Whether somebody in a wheelchair gets along, as far as the source says.
enum class StepFree { unknown, yes, no };

/// A level that the source describes. Levels that only things on them mention need not be listed.
struct PlanLevel {
  double level = 0;
  std::optional<std::string> name;
  std::optional<std::string> source;  ///< its short name, "EG" or "M"; used where it has no name
};

/// What a piece of floor is to somebody who walks.
enum class CellKind {
  room,      ///< enclosed by walls, entered through doors
  corridor,  ///< floor without walls of its own, open to the floor beside it
  area,      ///< the same as a corridor
  stairs,    ///< a stairwell, enclosed like a room; leads to its other levels
  elevator,  ///< a lift shaft, enclosed like a room; leads to its other levels
  escalator,
  ramp,
  closed,  ///< cannot be walked on (a void, a machine room, solid structure)
};

/// A piece of floor on one or several levels.
struct PlanCell {
  std::string source;  ///< the source's name for it, for messages: "way/123", a unit's id
  CellKind kind = CellKind::room;
  PlanLevelSet levels;  ///< at least one
  /// Polygons; of each the first ring is the outer one, the rest are holes. Closed rings.
  std::vector<std::vector<std::vector<Coordinate>>> polygons;
  bool walled = true;  ///< whether the outline is a wall; corridors and areas have none in OSM
  StepFree stepFree = StepFree::unknown;
  std::optional<std::string> name;      ///< what people call it; makes it a place as well
  std::optional<std::string> category;  ///< "toilets", "shop", "auditorium", ...
  bool isPlace = false;                 ///< a named room, shop or amenity: a destination for people
  /// Further properties of the place.
  nlohmann::json further = nlohmann::json::object();
  std::optional<Coordinate> displayPoint;  ///< where its label belongs, if the source says
};

/// A gap in walls.
struct PlanDoor {
  std::string source;
  PlanLevelSet levels;
  std::vector<Coordinate> positions;  ///< one: a point; more: the line of the opening
  double width = 1.0;                 ///< metres; only for a door that is a point
  bool passable = true;               ///< false: there is a door, and nobody gets through
  bool entrance = false;              ///< leads into the building from outdoors
  StepFree stepFree = StepFree::unknown;
  std::int64_t node = 0;  ///< the source's node that lines may share (OSM id); 0: none
  std::optional<std::string> name;
};

/// A wall that is drawn as a line of its own.
struct PlanWall {
  std::string source;
  PlanLevelSet levels;
  std::vector<Coordinate> positions;
};

/// A corner of a line to walk on. Lines that name the same node on the same level are joined
/// there.
struct PlanVertex {
  std::int64_t node = 0;
  Coordinate coordinate;
};

/// A line to walk on. On one level it is floor, or steps and ramps within the level; on several
/// levels it leads from one to the other, and which end is where follows from what it meets. A path
/// on several levels is floor on each of them, unless it has an incline or its ends meet different
/// levels: then it is a ramp.
struct PlanLine {
  std::string source;
  ConnectionKind kind = ConnectionKind::path;
  PlanLevelSet levels;
  std::vector<PlanVertex> vertices;  ///< at least two
  bool oneway = false;               ///< entered at the first vertex only
  bool backward = false;             ///< with `oneway`: at the last vertex only
  StepFree stepFree = StepFree::unknown;
  /// Which end is higher, as far as the source says: 1 the last vertex, -1 the first, 0 unknown.
  int incline = 0;
};

/// A way up and down at one spot: a lift, or stairs of which only the room is drawn.
struct PlanShaft {
  std::string source;
  ConnectionKind kind = ConnectionKind::elevator;
  PlanLevelSet levels;  ///< where it stops
  /// The cells it stops in, by index into `FloorPlan::cells`; a cell may belong to one level of
  /// the shaft only, or to several. Empty for a shaft that is only a point.
  std::vector<std::size_t> cells;
  std::optional<PlanVertex> vertex;  ///< the point that lines share; absent: inside the cells
  bool oneway = false;               ///< only upwards, or with `backward` only downwards
  bool backward = false;
  StepFree stepFree = StepFree::unknown;
};

/// A destination for people at a point.
struct PlanPlace {
  std::string source;
  std::string name;
  PlanLevelSet levels;
  Coordinate coordinate;
  bool entrance = false;
  nlohmann::json further = nlohmann::json::object();
};

struct FloorPlan {
  std::optional<std::string> name;
  std::optional<std::string> attribution;
  std::optional<std::string> licence;
  std::vector<PlanLevel> levels;
  std::vector<PlanCell> cells;
  std::vector<PlanDoor> doors;
  std::vector<PlanWall> walls;
  std::vector<PlanLine> lines;
  std::vector<PlanShaft> shafts;
  std::vector<PlanPlace> places;
  Remarks remarks;  ///< what the importer could not use or had to guess
};

}  // namespace KorvaniTools
