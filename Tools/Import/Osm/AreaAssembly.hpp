#pragma once

#include <cstdint>
#include <vector>

#include "FloorPlan/FloorPlan.hpp"

namespace KorvaniTools {

/// A way of a multipolygon relation.
struct AreaMember {
  std::vector<PlanVertex> corners;
  bool inner = false;  ///< by its role; any other role may be an outline
};

struct AssembledArea {
  /// As `PlanCell::polygons`; empty when no outline closes.
  std::vector<std::vector<std::vector<Coordinate>>> polygons;
  /// Whether ways had to be left out since they close no ring.
  bool incomplete = false;
};

/// Puts the polygons of a multipolygon together of its ways, in whatever order and direction they
/// are. Which rings are holes follows from where they lie. Ways that close no ring are left out,
/// and so are rings of inner ways that lie in no outline.
AssembledArea assembleArea(const std::vector<AreaMember>& members);

}  // namespace KorvaniTools
