#pragma once

/// Internal. Where the units of an archive lie towards each other.

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

#include "FloorPlan/Geos.hpp"
#include "FloorPlan/LocalFrame.hpp"
#include "Import/Imdf/ImdfModel.hpp"

namespace KorvaniTools {

/// The outlines of all units in metres. Units are named by their index in `ImdfModel::units`.
class ImdfShapes {
 public:
  /// Of the units that `model` has by now; notes those whose outline is no area.
  explicit ImdfShapes(ImdfModel& model);

  /// Units of the line's own level on whose outline it lies, ascending.
  std::vector<std::size_t> unitsAlong(const Positions& line, std::size_t level) const;

  /// Whether the middle of the line is on the outline of the level, or near it.
  bool isOnOutlineOf(const ImdfLevel& level, const Positions& line) const;

  /// Units of that ordinal that lie over or under `unit` by at least half the smaller of the two,
  /// ascending.
  std::vector<std::size_t> unitsAbove(std::size_t unit, std::int64_t ordinal) const;

  /// Whether `other` covers at least half of `unit`.
  bool covers(std::size_t other, std::size_t unit) const;

  /// A point inside the unit.
  Coordinate pointIn(std::size_t unit) const;

  /// A point inside `unit`, a quarter of a metre from the outline if there is room, as near as can
  /// be to `other`.
  Coordinate spotBeside(std::size_t unit, std::size_t other) const;

 private:
  void addUnit(std::size_t unit, ImdfModel& model);
  std::vector<std::size_t> unitsNear(const GroundLine& line, std::int64_t ordinal,
                                     double margin) const;
  double commonArea(std::size_t a, std::size_t b) const;
  Shape shapeOf(const PlanCell& cell) const;

  Geos geos_;
  const ImdfModel& model_;
  LocalFrame frame_;
  std::vector<std::vector<GroundLine>> rings_;  ///< all of a unit's, outer and inner
  std::vector<Shape> shapes_;                   ///< null for units without an area
  std::vector<double> areas_;
  std::map<std::int64_t, std::unique_ptr<BoxIndex>> floors_;  ///< by ordinal
};

}  // namespace KorvaniTools
