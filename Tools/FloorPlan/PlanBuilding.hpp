#pragma once

#include <string>
#include <vector>

#include "Building/Building.hpp"
#include "FloorPlan/ConnectionTable.hpp"
#include "FloorPlan/FloorPlan.hpp"

namespace KorvaniTools {

/// What was made of a floor plan, for people to read.
struct PlanReport {
  /// Source level and the whole level it became, ascending; only the levels that are used.
  struct Level {
    double source = 0;
    std::int64_t level = 0;
  };
  std::vector<Level> levels;
  std::size_t lineNodes = 0;  ///< nodes of the line network as drawn
  std::size_t areaNodes = 0;  ///< nodes made for doors, rooms and open floor
  std::size_t edges = 0;
  std::size_t wallLines = 0;
  std::size_t doors = 0;           ///< that open a wall or join two cells, on each level
  std::size_t openedForLines = 0;  ///< gaps where a drawn line passes a wall without a door
  std::size_t assumedDoors = 0;    ///< made by `PlanOptions::assumeDoors`
  std::vector<std::string> roomsWithoutDoor;  ///< sources of walled rooms nobody can enter
  /// What could not be used or had to be guessed: one sentence each, which begins with the source,
  /// as `Remarks` takes them.
  std::vector<std::string> remarks;
};

struct PlanOptions {
  /// Gives each walled room without a door one of 1 m, amid the longest stretch of its outline
  /// that faces floor, up to 0.45 m away, or lines that people walk on, up to 5 m away. Off: nobody
  /// is sent to a door that nobody has mapped, but for lifts, which are of no use without one.
  bool assumeDoors = false;
};

/// The building that a floor plan shows, with its graph: nodes, edges, walls, places and rooms.
/// Features are in the order of the plan, and the same plan gives the same building.
///
/// - Lines are taken over as drawn, a node for each source node and level.
/// - Rooms are entered through doors, through walls of up to 0.6 m; open floor is crossed between
///   doors, around its corners. Where lines run through a floor they are its graph, and doors and
///   stairs are joined to them.
/// - Shafts and stairs join levels. Lengths of ways between levels count 3 m a level.
/// - Walls are outlines and wall lines without the gaps of doors. Where a line passes a wall and
///   no door is mapped, a gap of 1 m is made, with a remark.
/// - Faulty features are mended or left out, with a remark each. Where a source says less than is
///   needed, the likeliest is taken, with a remark as well.
///
/// Cost: near linear in the size of the plan, but for floors that many doors lead to
/// (SpaceGraph.hpp): about a second for one of 500 doors.
///
/// @param report gets what was done added to it
/// @throws InputError when the plan's geometry as a whole cannot be worked with
Building makeBuilding(const FloorPlan& plan, const ConnectionTable& table,
                      const PlanOptions& options, PlanReport& report);

}  // namespace KorvaniTools
