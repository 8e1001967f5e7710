#pragma once

/// Internal. What tags say about a line to walk on.

#include "FloorPlan/FloorPlan.hpp"
#include "Import/Osm/OsmTags.hpp"

namespace KorvaniTools {

/// The line without its corners and levels: kind, direction, incline, and whether it is free of
/// steps.
PlanLine lineOf(const OsmTags& tags);

/// The `wheelchair` tag.
StepFree stepFreeOf(const OsmTags& tags);

}  // namespace KorvaniTools
