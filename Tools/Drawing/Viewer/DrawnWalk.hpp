#pragma once

#include <optional>
#include <vector>

#include "Drawing/Scene.hpp"
#include "Drawing/Viewer/Timeline.hpp"

namespace KorvaniTools {

/// A recorded walk as a picture shows it, which cannot play it.
///
///     scene.route = firstRoute(timeline, scene.frame);
///     scene.tracks = tracksOf(timeline, scene.frame);

/// How a route of the walk is drawn in `frame`.
DrawnRoute drawnRoute(const TimelineRoute& route, const LevelNames& levels,
                      const SceneFrame& frame);

/// The route that the walk began with; none when it had none.
std::optional<DrawnRoute> firstRoute(const Timeline& timeline, const SceneFrame& frame);

/// Where the person was, by level, ascending: every position as it came in, where snapping put it
/// (or, in a walk without snapping, the place on the route, or where the obstacle check let it be),
/// and the jumps that were denied. Positions that come in again and again are there once.
std::vector<SceneTrack> tracksOf(const Timeline& timeline, const SceneFrame& frame);

}  // namespace KorvaniTools
