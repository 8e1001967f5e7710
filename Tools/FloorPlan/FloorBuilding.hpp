#pragma once

/// Internal. Turns one level of a plan into graph and walls.

#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "FloorPlan/DoorSides.hpp"
#include "FloorPlan/Floor.hpp"
#include "FloorPlan/FloorSight.hpp"
#include "FloorPlan/FloorSpaces.hpp"
#include "FloorPlan/FloorWalls.hpp"
#include "FloorPlan/LevelLines.hpp"
#include "FloorPlan/LineParts.hpp"
#include "FloorPlan/PlanBuilding.hpp"
#include "FloorPlan/PlanGraph.hpp"
#include "FloorPlan/Shafts.hpp"

namespace KorvaniTools {

/// What a level's graph is made from beside the floor.
struct FloorInput {
  const FloorPlan& plan;
  const PlanLevels& levels;
  const LocalFrame& frame;
  const Geos& geos;
  const PlanOptions& options;
  const std::vector<std::string>& drawnSources;  ///< of each drawn piece of the graph
  const std::vector<ShaftStop>& stops;
};

/// Makes the walls of a level and joins its cells, doors, lines and shafts.
///
///     FloorBuilding level(input, 0, graph, report);
///     level.build();
///     write(level.walls());
class FloorBuilding {
 public:
  FloorBuilding(const FloorInput& input, std::int64_t level, PlanGraph& graph, PlanReport& report);

  void build();

  const Floor& floor() const { return floor_; }
  const std::vector<GroundLine>& walls() const { return wallLines_; }

  /// The node in the middle of a cell, by index into the plan's cells; absent when it has none.
  std::optional<std::size_t> middleOf(std::size_t cell) const;
  /// Cells with walls that nobody can enter here, by index into the plan's cells.
  const std::set<std::size_t>& shutCells() const { return shut_; }
  /// Shafts that meet nothing to walk on here, by index into the plan's shafts.
  const std::set<std::size_t>& lonelyShafts() const { return lonelyShafts_; }

 private:
  /// A door with floor on one side only.
  struct Outdoor {
    std::size_t node = 0;
    const FloorDoor* drawn = nullptr;
    double reach = 0;  ///< metres to a line in front of it
    bool joined = false;
  };

  struct Assumed {
    std::size_t cell = 0;  ///< of the plan
    FloorDoor door;
  };

  /// The way through a wall that is drawn with its thickness.
  struct Entry {
    std::size_t door = 0;  ///< node
    std::size_t node = 0;  ///< on the floor
    std::size_t space = 0;
    const FloorDoor* drawn = nullptr;
  };

  void openWalls();
  std::vector<DoorSide> open(FloorDoor& door);
  void attachDoors();
  bool inside(const FloorDoor& door, std::size_t space) const;
  void attach(const FloorDoor& door, const std::vector<DoorSide>& sides, double reach);
  void attach(const FloorDoor& door, std::size_t node, const DoorSide& side);
  void joinEntries(const FloorSight& sight);
  std::size_t nodeOf(const FloorDoor& door, bool& onLine);
  std::optional<std::size_t> nodeOnSpot(GroundPoint at) const;
  void assumeDoors();
  void noteAssumedDoors();
  bool mayAssumeDoor(const FloorSpace& space) const;
  Shape surroundings(const FloorSpace& space) const;
  std::optional<FloorDoor> assumedDoor(const FloorSpace& space) const;
  void addStops();
  void addMiddles();
  void addRoomMiddle(std::size_t space);
  void addAreaMiddle(const FloorCell& cell);
  void addMiddle(std::size_t space, std::size_t cell, const Shape& within);
  std::optional<GroundPoint> middleWithin(const PlanCell& cell, const Shape& within) const;
  /// A node that the space's graph has to reach. One that is there already serves as well.
  std::size_t nodeInside(std::size_t space, GroundPoint at);
  /// On a line that runs no farther than `distance` from there, else a new one.
  std::size_t nodeNear(GroundPoint at, double distance);
  void addPlaces(const FloorSight& sight);
  bool isSeen(GroundPoint at, const FloorSpace& space, const FloorSight& sight) const;
  bool needsMiddle(const FloorSpace& space) const;
  void joinOutdoors(const FloorSight& sight);
  void joinLonelyStops(const FloorSight& sight);
  std::optional<std::size_t> nearestWay(std::size_t lonely, const std::set<std::size_t>& nodes,
                                        const FloorSight& sight);
  void noteShutCells();
  const PlanCell& cellOf(const FloorSpace& space) const;
  static bool entered(const FloorSpace& space);

  const FloorInput& input_;
  const Geos& geos_;
  PlanGraph& graph_;
  PlanReport& report_;
  Floor floor_;
  FloorWalls walls_;
  std::vector<FloorSpace> spaces_;
  LevelLines lines_;
  LineParts parts_;
  std::optional<SpaceFinder> finder_;
  std::optional<DoorSides> doorSides_;
  std::vector<std::vector<DoorSide>> sides_;  ///< of each of the floor's doors
  BoxIndex earlier_;                          ///< nodes of lines and shafts on the level
  std::vector<std::size_t> doorNodes_;
  std::vector<Outdoor> outdoors_;
  std::vector<Entry> entries_;
  std::deque<Assumed> assumed_;
  std::map<std::size_t, std::size_t> middles_;  ///< plan's cell -> node
  std::set<std::size_t> shut_;
  std::set<std::size_t> lonelyShafts_;
  std::vector<GroundLine> wallLines_;
};

}  // namespace KorvaniTools
