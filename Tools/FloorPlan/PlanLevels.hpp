#pragma once

/// Internal. Whole levels for the source's levels.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "FloorPlan/FloorPlan.hpp"

namespace KorvaniTools {

/// Which whole level each level of a floor plan becomes.
///
/// Used are the levels of cells, walls, lines and shafts. Whole levels keep their number as long
/// as there are no fractions between them and 0. A fraction takes the next whole level, and what
/// lies beyond it moves one further away from 0: 0, 0.5, 1, 3 become 0, 1, 2, 4; -0.5 and -1
/// become -1 and -2.
class PlanLevels {
 public:
  /// Levels that a building file cannot hold are left out, with a remark each.
  PlanLevels(const FloorPlan& plan, std::vector<std::string>& remarks);

  /// The whole level; absent for a level that is not used.
  std::optional<std::int64_t> of(double source) const;

  /// Those of `sources` that are used, ascending.
  std::vector<std::int64_t> of(const PlanLevelSet& sources) const;

  /// The source's number of a whole level that is used.
  double source(std::int64_t level) const { return sources_.at(level); }

  /// Source level and whole level, ascending.
  const std::map<double, std::int64_t>& all() const { return levels_; }

  /// Name of every used level, or else its short name, and its number in the source, ascending.
  /// A level that has neither and another number than in the source is called by the source's.
  std::vector<LevelName> names(const FloorPlan& plan) const;

 private:
  void number(const std::vector<double>& outwards, int direction,
              std::vector<std::string>& remarks);

  std::map<double, std::int64_t> levels_;
  std::map<std::int64_t, double> sources_;
};

}  // namespace KorvaniTools
