#pragma once

/// Internal. Platforms that are drawn as lines.

#include <cstddef>
#include <optional>
#include <vector>

#include "FloorPlan/FloorPlan.hpp"
#include "Import/Osm/OsmData.hpp"

namespace KorvaniTools {

/// A line to walk on that is a platform.
struct PlatformLine {
  std::size_t line = 0;  ///< index into `FloorPlan::lines`
  /// What people call it, without a coordinate; absent when it has neither name nor number.
  std::optional<PlanPlace> place;
};

/// The platform that the plan's line with that index is; absent for a way that is none.
std::optional<PlatformLine> platformOf(const OsmWay& way, const FloorPlan& plan, std::size_t line);

/// Adds what platforms are beside lines: places halfway, and corners for the ends of lines that no
/// other line uses and that come within a metre of one on a level of both. Lines with both ends
/// there are left alone: of stairs along a platform nobody knows which end is on it. The place gets
/// a corner as well, so that people are led to it and not to an end.
void addPlatforms(const std::vector<PlatformLine>& platforms, FloorPlan& plan);

}  // namespace KorvaniTools
