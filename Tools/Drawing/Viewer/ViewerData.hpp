#pragma once

/// Internal. What the page's script is told about the building and the walk.

#include <optional>

#include "Drawing/Scene.hpp"
#include "Drawing/Viewer/Timeline.hpp"
#include "Json/EngineJson.hpp"

namespace KorvaniTools {

/// One object for the page. Positions are `[x, y, level]`, in the units of the drawing
/// (`pixelsPerMetre` of them to a metre), with two decimals.
///
///     {"width", "height", "pixelsPerMetre", "graph",
///      "levels": [{"level", "name", "title"}],
///      "places": [{"name", "at", "kind"}],
///      "route": ROUTE | null,      the scene's, when there is no walk
///      "walk": {"routes": [ROUTE], "moments": [MOMENT]} | null}
///
/// A ROUTE is `{"destination", "distance", "direct", "points": [at], "instructions": [{"text",
/// "at"}]}`; the scene's has `start` and `time` as well. A MOMENT has what `Moment` has, as far as
/// it is not empty or false: `second`, `line`, `operation`, `raw`, `snapped`, `checked`, `denied`,
/// `route`, `here` and `next` (the way left leads from `here` to the route's point number `next`
/// and on) or else `ahead`, `told`, `instruction`, `remaining`, `rerouted`, `arrived`, `error`.
OrderedJson viewerData(const Scene& scene, const std::optional<Timeline>& timeline,
                       double pixelsPerMetre, bool graph);

}  // namespace KorvaniTools
