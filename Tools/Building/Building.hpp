#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "Building/Rectangle.hpp"

namespace KorvaniTools {

/// The contents of one building file as plain values.
///
/// `readBuilding` makes them, `makeGraph` turns them into the engine's graph, and what is for
/// people only (places, rooms, level names, attribution) is read from here. Everything is in
/// the order of the file. `feature` is always an index into the file's `features`, from 0.
///
/// All are values: copy, move and read them from any thread.

/// A part of one level: nodes and walls within a rectangle.
struct BuildingRegion {
  std::int64_t level = 0;
  std::optional<std::string> name;  ///< unique among the regions that have one
  Rectangle rectangle;
  bool made = false;                        ///< made for a level that has none in the file
  std::optional<std::size_t> feature = {};  ///< absent for a made one
};

/// A point that routes pass through.
struct BuildingNode {
  std::size_t feature = 0;
  std::int64_t id = 0;  ///< unique, never negative
  std::int64_t level = 0;
  Coordinate coordinate;
  std::optional<std::string> regionName;  ///< as the file says
  std::size_t region = 0;                 ///< index into `Building::regions`
};

/// A way between two nodes, entered in both directions unless `oneway`.
struct BuildingEdge {
  std::size_t feature = 0;
  std::int64_t from = 0;  ///< a node's id
  std::int64_t to = 0;    ///< a node's id
  bool oneway = false;
  std::optional<double> distance;  ///< metres; absent: the engine's own distance of the nodes
  double multiplicator = 1.0;
  bool barrierFree = true;
  std::optional<std::string> type;  ///< kind of connection, e.g. "stairs"
};

/// One polyline of an obstacle; polygon rings are closed.
struct ObstacleLine {
  std::vector<Coordinate> positions;
  std::vector<std::size_t> regions;  ///< indexes into `Building::regions`, ascending
};

/// A wall or anything else that cannot be walked through. Lines that touch no region of their
/// level are no part of the graph and stand by themselves, so `lines` may be empty.
struct BuildingObstacle {
  std::size_t feature = 0;
  std::int64_t level = 0;
  std::int64_t strength = 0;
  std::optional<std::string> regionName;  ///< as the file says
  std::vector<ObstacleLine> lines;
  std::vector<std::vector<Coordinate>> droppedLines = {};  ///< those that touch no region
};

/// A named destination for people; not part of the graph.
struct Place {
  std::string name;
  std::int64_t level = 0;
  Coordinate coordinate;
  bool entrance = false;
  nlohmann::json further = nlohmann::json::object();  ///< the feature's other properties
  std::size_t feature = 0;
};

/// A room's outline, for drawing; not part of the graph.
struct Room {
  std::int64_t level = 0;
  std::optional<std::string> name;
  std::optional<std::string> category;
  std::vector<std::vector<Coordinate>> rings;
};

/// What people call a level, and what the source of the data called it.
struct LevelName {
  std::int64_t level = 0;
  std::optional<std::string> name;
  std::optional<std::string> source;
};

/// What the reader left out or added. None of it is an error.
struct ReadSummary {
  std::map<std::string, std::size_t> ignoredKinds;  ///< features by their unknown kind
  /// Occurrences of unknown properties, by kind and property name. Further properties of
  /// places are kept and so not counted.
  std::map<std::pair<std::string, std::string>, std::size_t> ignoredProperties;
  std::size_t droppedObstacleLines = 0;   ///< lines that touch no region of their level
  std::vector<std::int64_t> madeRegions;  ///< levels that got a region, ascending

  bool empty() const {
    return ignoredKinds.empty() && ignoredProperties.empty() && droppedObstacleLines == 0 &&
           madeRegions.empty();
  }
};

struct Building {
  std::optional<std::string> name;
  std::optional<std::string> attribution;  ///< to be shown with every picture and export
  std::optional<std::string> licence;
  std::vector<LevelName> levelNames;
  std::vector<BuildingRegion> regions;  ///< in file order, made ones last by ascending level
  std::vector<BuildingNode> nodes;
  std::vector<BuildingEdge> edges;
  std::vector<BuildingObstacle> obstacles;
  std::vector<Place> places;
  std::vector<Room> rooms;
  ReadSummary summary;
};

}  // namespace KorvaniTools
