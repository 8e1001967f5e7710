#pragma once

/// Internal. A route on one level's plan.

#include <cstdint>
#include <string>

#include "Drawing/DrawnRoute.hpp"
#include "Drawing/SvgWriter.hpp"

namespace KorvaniTools {

/// The line in the syntax of an SVG path, in pixels; not closed.
std::string pathData(const SceneLine& line, double pixelsPerMetre);

/// The route's line with its chevrons, below everything that is written on the plan.
void writeRoute(SvgWriter& svg, const DrawnRoute& route, std::int64_t level, double pixelsPerMetre);

/// Whether the route's start or a change of level has its mark where an arrow is, so that the arrow
/// is drawn beside it.
bool standsOnDisc(const DrawnRoute& route, const RouteArrow& arrow);

/// Whether the route changes the level where it starts, so that both marks have one spot.
bool startsWithChange(const DrawnRoute& route);

/// Arrows, level changes, start and destination.
void writeRouteMarks(SvgWriter& svg, const DrawnRoute& route, std::int64_t level,
                     double pixelsPerMetre);

}  // namespace KorvaniTools
