#pragma once

/// Internal. Ways between buildings.

#include "Import/Imdf/ImdfModel.hpp"

namespace KorvaniTools {

/// Reads the ways outdoors of archives that have a `navPath.geojson`.
///
/// The format knows no ways between buildings. That file, an addition to it, does: its features
/// are points, with the level that each is on (none outdoors) in `level_id`, and the ids of the
/// points that one gets to from it in `neighbours`. What lies outdoors, which is ordinal 0,
/// and the way indoors up to the first point behind the wall become lines; farther in, units and
/// openings make a graph with more detail.
void readImdfWays(ImdfModel& model);

}  // namespace KorvaniTools
