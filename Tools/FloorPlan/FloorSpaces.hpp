#pragma once

/// Internal. The pieces of a level within which people walk freely.

#include <optional>
#include <vector>

#include "FloorPlan/Floor.hpp"
#include "FloorPlan/PlanGraph.hpp"

namespace KorvaniTools {

/// Something that the graph of a space has to reach.
struct SpaceItem {
  std::size_t node = 0;
  GroundPoint at;
  bool door = false;                 ///< on the outline; entered straight from the space
  std::optional<GroundPoint> along;  ///< of a door: the wall's direction, of length 1
  StepFree stepFree = StepFree::unknown;
};

/// The part of a drawn piece that lies in a space.
struct SpacePiece {
  std::size_t drawn = 0;
  GroundPoint a;
  GroundPoint b;
};

/// One room, or one stretch of open floor.
struct FloorSpace {
  Shape shape;                      ///< one polygon
  std::optional<std::size_t> cell;  ///< of a room: index into the floor's cells
  std::vector<SpaceItem> items;
  std::vector<SpacePiece> pieces;
  std::vector<std::size_t> lineNodes;  ///< nodes of drawn lines that lie in it, ascending
};

/// Rooms first, in the order of their cells, then open floor.
///
/// A walled cell is a space without the smaller walled and closed cells inside it. Open floor is
/// the union of all cells without walls, gaps of 0.1 m between them closed, without walled and
/// closed cells.
std::vector<FloorSpace> makeSpaces(const FloorPlan& plan, const Floor& floor, const Geos& geos);

/// Finds the drawn pieces and nodes of the level that lie in each space.
void findLines(std::vector<FloorSpace>& spaces, const Floor& floor, const PlanGraph& graph,
               const Geos& geos);

/// Which space lies where.
class SpaceFinder {
 public:
  SpaceFinder(const std::vector<FloorSpace>& spaces, const Geos& geos);

  /// The first space that `at` lies in; absent when there is none.
  std::optional<std::size_t> spaceAt(GroundPoint at) const;

  /// Spaces no farther than `distance` from `at`; ascending.
  std::vector<std::size_t> near(GroundPoint at, double distance) const;

 private:
  const std::vector<FloorSpace>& spaces_;
  const Geos& geos_;
  BoxIndex index_;
};

}  // namespace KorvaniTools
