#pragma once

/// Internal. Where doors lead.

#include <optional>
#include <vector>

#include "FloorPlan/FloorSpaces.hpp"

namespace KorvaniTools {

/// Metres of wall that a door leads through at most.
inline constexpr double kThickestWall = 0.6;

/// A space that a door leads into.
struct DoorSide {
  std::size_t space = 0;
  /// The first spot on the space's floor, where a wall that is drawn with its thickness keeps the
  /// door from it; absent: the door is on the space's outline.
  std::optional<GroundPoint> entry;
};

/// The spaces on both sides of a door, straight through the wall: rooms up to 0.6 m from it, open
/// floor up to 1 m. A door in no wall leads to the spaces around it, up to 0.6 m.
class DoorSides {
 public:
  DoorSides(const std::vector<FloorSpace>& spaces, const SpaceFinder& finder, const Geos& geos);

  /// By index of their spaces, each space once.
  std::vector<DoorSide> of(const FloorDoor& door) const;

  /// Lengthens the door's gap to the entries of its sides, up to 0.6 m.
  void deepen(FloorDoor& door, const std::vector<DoorSide>& sides) const;

 private:
  std::optional<DoorSide> straight(const FloorDoor& door, GroundPoint direction) const;
  DoorSide beside(GroundPoint at, std::size_t space) const;
  DoorSide enter(GroundPoint at, GroundPoint edge, std::size_t space) const;
  Shape through(const FloorDoor& door, GroundPoint entry) const;

  const std::vector<FloorSpace>& spaces_;
  const SpaceFinder& finder_;
  const Geos& geos_;
};

}  // namespace KorvaniTools
