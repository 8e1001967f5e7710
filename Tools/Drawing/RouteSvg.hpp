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

/// Arrows, level changes, start and destination.
void writeRouteMarks(SvgWriter& svg, const DrawnRoute& route, std::int64_t level,
                     double pixelsPerMetre);

}  // namespace KorvaniTools
