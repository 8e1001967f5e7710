#pragma once

/// Internal. The walls of a level, and the gaps in them.

#include <string>
#include <vector>

#include "FloorPlan/Floor.hpp"
#include "FloorPlan/PlanGraph.hpp"

namespace KorvaniTools {

/// Outlines and wall lines of a level, opened at doors.
///
/// A door that is a point opens the nearest outline within 0.6 m of it, and those that run
/// along it there, for its width, up to the next corner of each; one that is a line opens what lies
/// within 0.3 m along it. Walls that neighbours share are written once.
class FloorWalls {
 public:
  FloorWalls(const FloorPlan& plan, const Floor& floor, const Geos& geos);

  /// Finds a door's place in the walls: sets its `at`, `along` and `gap`.
  void place(FloorDoor& door) const;

  void open(const Shape& gap);

  /// Opens walls where drawn lines of the level pass or touch them although no door is mapped, 1 m
  /// wide; not where a door is that nobody gets through. Returns how many gaps were made.
  std::size_t openForLines(const Floor& floor, const PlanGraph& graph,
                           const std::vector<std::string>& drawnSources,
                           std::vector<std::string>& remarks);

  /// The walls as they are now, in pieces as long as possible.
  std::vector<GroundLine> lines() const;

 private:
  struct Outline {
    GroundLine line;
    bool closed = false;
    const std::string* source = nullptr;
  };

  /// Where an outline comes nearest to a point.
  struct Near {
    const Outline* outline = nullptr;
    std::size_t piece = 0;
    GroundPoint at;
    double distance = 0;
  };

  /// Outlines that a door at `at` may open, the nearest first.
  std::vector<Near> outlinesAt(GroundPoint at) const;
  void add(GroundLine line, bool closed, const std::string& source);
  Shape withoutShutDoors(const Floor& floor, const Shape& crossings) const;
  void openAt(const Shape& crossing, const std::string& line, std::vector<std::string>& remarks);
  const std::string& sourceAt(GroundPoint at) const;

  const Geos& geos_;
  std::vector<Outline> outlines_;
  BoxIndex index_;
  std::vector<Shape> gaps_;
};

}  // namespace KorvaniTools
