#pragma once

/// Internal. The graph within one space.

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "FloorPlan/FloorSight.hpp"
#include "FloorPlan/FloorSpaces.hpp"
#include "FloorPlan/PlanGraph.hpp"
#include "FloorPlan/Spanner.hpp"

namespace KorvaniTools {

/// What is to be known of the drawn lines in a space.
struct SpaceLines {
  std::set<std::size_t> needed;  ///< nodes of lines that certainly lie in the space: to be joined
  std::set<std::size_t> amid;    ///< nodes amid stairs: nothing leads to them from the floor
  /// Nodes that hang together by the lines, with one number for all of them. Nothing is added
  /// between those. Empty where the floor gets a graph of its own.
  std::map<std::size_t, std::size_t> groups;
};

/// Joins what a space has to reach by edges across its floor.
///
/// A room of few doors gets straight edges between its middle and its doors. On open floor, and
/// in rooms that are corridors, each door leads to a point in front of it, in the middle of a
/// narrow floor, 1.5 m out on a wide one; those see each other, the corners of the floor (0.4 m
/// off, less where it is narrow) and the lines that enter. Of what they see a sparse graph is
/// kept (Spanner.hpp), and of that only what lies on shortest ways. What one polygon holds is
/// joined: where corners do not do it, the middles of a triangulation's edges do.
///
/// Cost for n doors and corners: n * n / 2 looks for up to 150 of them, 40 n beyond that.
class SpaceGraph {
 public:
  SpaceGraph(const FloorSpace& space, const SpaceSight& sight, const Geos& geos, PlanGraph& graph);

  /// Joins `items` with each other and with the drawn lines in the space.
  /// @param stepFree of the floor
  void join(const std::vector<SpaceItem>& items, StepFree stepFree, const SpaceLines& lines);

 private:
  struct Point {
    std::optional<std::size_t> node;  ///< of the graph; absent: made when it is kept
    bool door = false;
    StepFree stepFree = StepFree::unknown;
  };

  std::size_t add(GroundPoint at, std::optional<std::size_t> node);
  void addItems(const std::vector<SpaceItem>& items);
  void addLines(const SpaceLines& lines);
  std::size_t endAt(std::size_t node);
  void addPieces(const std::set<std::size_t>& inside);
  bool straight(const std::vector<SpaceItem>& items);
  void addFronts(const std::vector<SpaceItem>& items);
  void addFront(std::size_t door, const SpaceItem& item, GroundPoint direction);
  double depthFrom(GroundPoint at, GroundPoint direction) const;
  void addFrontAt(std::size_t door, GroundPoint at);
  std::optional<std::size_t> freeEndAt(GroundPoint at) const;
  void addInwardFront(std::size_t door, const SpaceItem& item);
  void addCorners(double margin);
  void addTriangles();
  bool connect();
  void emit(StepFree stepFree);
  std::size_t nodeOf(std::size_t point);
  bool sees(std::size_t a, std::size_t b) const;

  const FloorSpace& space_;
  const SpaceSight& sight_;
  const Geos& geos_;
  PlanGraph& graph_;
  Spanner spanner_;
  std::vector<Point> points_;
  std::map<std::size_t, std::size_t> ofNodes_;  ///< node of the graph -> point
  std::vector<std::size_t> ends_;               ///< that are to be reached
  std::vector<std::size_t> needed_;             ///< of those, the ones that have to be joined
  std::vector<std::size_t> free_;               ///< that candidates are made of
  std::vector<std::size_t> fronts_;
  std::set<Spanner::Pair> given_;  ///< edges that are there whatever is seen
  std::set<Spanner::Pair> drawn_;  ///< of those, the ones of drawn lines
  /// Points of drawn lines by group, with nothing to add between those of one.
  std::map<std::size_t, std::size_t> fixed_;
  std::vector<Spanner::Pair> triangle_;  ///< candidates across triangles
};

}  // namespace KorvaniTools
