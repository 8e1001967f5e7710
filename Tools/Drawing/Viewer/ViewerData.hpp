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
///      "levels": [{"level", "name", "title", "home": [left, top, right, bottom] | null}],
///      "places": [{"name", "at", "kind"}],
///      "route": ROUTE | null,      the scene's, when there is no walk
///      "walk": {"routes": [ROUTE], "moments": [MOMENT]} | null}
///
/// A level's `home` is what `homeOf` says.
///
/// A ROUTE is `{"start", "destination", "distance", "time", "direct", "points": [at],
/// "instructions": [{"text", "at"}]}`. Those of a walk have their marks as well, which are in the
/// drawing of a scene's route: `"from": at`, `"arrows": [{"at", "heading", "kind", "text"}]`, with
/// `symbol` when the level changes, and `beside` when the arrow is drawn beside another mark, and
/// `"changes": [{"leaves": at, "arrives": at, "symbol", "words"}]`.
///
/// A MOMENT has what `Moment` has, as far as it is not empty or false: `second`, `line`,
/// `operation`, `raw`, `snapped`, `checked`, `denied`, `route`, `here` and `next` (the way left
/// leads from `here` to the route's point number `next` and on) or else `ahead`, `told`,
/// `instruction`, `remaining`, `rerouted`, `arrived`, `error`.
OrderedJson viewerData(const Scene& scene, const std::optional<Timeline>& timeline,
                       double pixelsPerMetre, bool graph);

}  // namespace KorvaniTools
