#pragma once

/// Internal. Routes read back from what a replay tells about them.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Drawing/Viewer/Timeline.hpp"
#include "Json/EngineJson.hpp"
#include "Navigation/Routing/Route.hpp"
#include "Support/PlaceFinder.hpp"
#include "Trace/TraceOperation.hpp"

namespace KorvaniTools {

/// The point, when it is somewhere on earth. Traces may say any number.
std::optional<TimelinePoint> timelinePoint(double latitude, double longitude, std::int64_t level);

/// The route of a `route` event, with its steps as they are at that moment and with instructions,
/// whether the trace wants any or not. None for null, for a route without steps, and for one that
/// leads anywhere but over the earth.
std::optional<KorvaniNavigation::Route> replayedRoute(const OrderedJson& route);

/// The start of every step, and the end of the last.
std::vector<TimelinePoint> pointsAlong(const KorvaniNavigation::Route& route);

/// The point with the name of the place that is there, or `otherwise`.
Spot namedSpot(const TracePoint& point, const std::string& otherwise, const Building& building);

/// `destinations` with the names of the places that are there, or "the destination".
std::vector<Spot> namedDestinations(const std::vector<TracePoint>& destinations,
                                    const Building& building);

/// Which of a route's `instructions`, as they were when it was found, applies when `left` are those
/// that are left. There must be at least one of each.
std::size_t instructionReached(const std::vector<Instruction>& instructions,
                               const std::vector<Instruction>& left);

}  // namespace KorvaniTools
