#include "Drawing/RouteSvg.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "Drawing/MarkSvg.hpp"

namespace KorvaniTools {
namespace {

constexpr double kDegrees = 180.0 / 3.14159265358979323846;
constexpr double kChevronsApart = 56;    // pixels
constexpr double kMostChevrons = 500;    // of a leg; one that needs more leads off the paper
constexpr double kLeastForChevron = 22;  // pixels of a leg
constexpr double kClear = 20;            // pixels around marks without chevrons
constexpr double kLeastHop = 8;          // pixels of a level change on the plan

double lengthOf(const SceneLine& line) {
  double length = 0;
  for (std::size_t i = 0; i + 1 < line.size(); ++i) {
    length += std::hypot(line[i + 1].x - line[i].x, line[i + 1].y - line[i].y);
  }
  return length;
}

void writeChevron(SvgWriter& svg, ScenePoint at, double degrees) {
  openMark(svg, at, "chevron");
  svg.element("path", {{"d", "M-1.4 -2.6L1.4 0L-1.4 2.6"},
                       {"transform", "rotate(" + pixels(degrees) + ')'}});
  closeMark(svg);
}

/// Whether one of the route's marks stands there, in pixels.
bool isMarked(const DrawnRoute& route, std::int64_t level, ScenePoint at, double scale) {
  const auto near = [&](std::int64_t other, ScenePoint point) {
    return other == level && std::hypot(point.x * scale - at.x, point.y * scale - at.y) < kClear;
  };
  return near(route.start.level, route.start.at) ||
         near(route.destination.level, route.destination.at) ||
         std::any_of(route.arrows.begin(), route.arrows.end(),
                     [&](const RouteArrow& arrow) { return near(arrow.level, arrow.at); }) ||
         std::any_of(route.changes.begin(), route.changes.end(), [&](const RouteChange& change) {
           return near(change.from, change.leaves) || near(change.to, change.arrives);
         });
}

/// Chevrons along a leg, which show its direction, evenly from end to end.
void writeChevrons(SvgWriter& svg, const DrawnRoute& route, const RouteLeg& leg, double scale) {
  const SceneLine& line = leg.line;
  const double length = lengthOf(line) * scale;
  if (length < kLeastForChevron) return;
  const double count = std::clamp(std::floor(length / kChevronsApart), 1.0, kMostChevrons);
  const double apart = length / count;
  double next = apart / 2;
  double walked = 0;
  for (std::size_t i = 0; i + 1 < line.size(); ++i) {
    const double dx = (line[i + 1].x - line[i].x) * scale;
    const double dy = (line[i + 1].y - line[i].y) * scale;
    const double piece = std::hypot(dx, dy);
    while (piece > 0 && next < walked + piece) {
      const double part = (next - walked) / piece;
      const ScenePoint at{line[i].x * scale + dx * part, line[i].y * scale + dy * part};
      if (!isMarked(route, leg.level, at, scale)) {
        writeChevron(svg, at, std::atan2(dy, dx) * kDegrees);
      }
      next += apart;
    }
    walked += piece;
  }
}

void writeHop(SvgWriter& svg, ScenePoint from, ScenePoint to, double scale) {
  const SceneLine line{from, to};
  if (lengthOf(line) * scale < kLeastHop) return;
  svg.element("path", {{"class", "hop"}, {"d", pathData(line, scale)}});
}

/// Level changes that lead along, and what is left between the ways of the map and both ends.
void writeHops(SvgWriter& svg, const DrawnRoute& route, std::int64_t level, double scale) {
  for (const RouteChange& change : route.changes) {
    if (change.from != level && change.to != level) continue;
    writeHop(svg, change.leaves, change.arrives, scale);
  }
  if (route.legs.empty()) return;
  const RouteLeg& first = route.legs.front();
  const RouteLeg& last = route.legs.back();
  if (first.level == level && route.start.level == level) {
    writeHop(svg, route.start.at, first.line.front(), scale);
  }
  if (last.level == level && route.destination.level == level) {
    writeHop(svg, last.line.back(), route.destination.at, scale);
  }
}

bool isSamePlace(ScenePoint a, ScenePoint b) { return std::hypot(a.x - b.x, a.y - b.y) < 0.5; }

/// Whether an instruction's arrow already marks where a change arrives.
bool hasArrow(const DrawnRoute& route, const RouteChange& change) {
  return std::any_of(route.arrows.begin(), route.arrows.end(), [&](const RouteArrow& arrow) {
    return arrow.level == change.to && arrow.changesLevel() &&
           isSamePlace(arrow.at, change.arrives);
  });
}

}  // namespace

bool standsOnDisc(const DrawnRoute& route, const RouteArrow& arrow) {
  const auto on = [&](std::int64_t level, ScenePoint at) {
    return arrow.level == level && isSamePlace(arrow.at, at);
  };
  return on(route.start.level, route.start.at) ||
         std::any_of(route.changes.begin(), route.changes.end(), [&](const RouteChange& change) {
           return on(change.from, change.leaves) || on(change.to, change.arrives);
         });
}

bool startsWithChange(const DrawnRoute& route) {
  return std::any_of(route.changes.begin(), route.changes.end(), [&](const RouteChange& change) {
    return change.from == route.start.level && isSamePlace(change.leaves, route.start.at);
  });
}

std::string pathData(const SceneLine& line, double pixelsPerMetre) {
  std::string data;
  for (const ScenePoint& point : line) {
    data += data.empty() ? 'M' : 'L';
    data += pixels(point.x * pixelsPerMetre) + ' ' + pixels(point.y * pixelsPerMetre);
  }
  return data;
}

void writeRoute(SvgWriter& svg, const DrawnRoute& route, std::int64_t level,
                double pixelsPerMetre) {
  for (const std::string part : {"casing", "line"}) {
    for (const RouteLeg& leg : route.legs) {
      if (leg.level != level) continue;
      svg.element("path", {{"class", "route " + part + (route.direct ? " direct" : "")},
                           {"d", pathData(leg.line, pixelsPerMetre)}});
    }
  }
  writeHops(svg, route, level, pixelsPerMetre);
  if (route.direct) return;
  for (const RouteLeg& leg : route.legs) {
    if (leg.level == level) writeChevrons(svg, route, leg, pixelsPerMetre);
  }
}

void writeRouteMarks(SvgWriter& svg, const DrawnRoute& route, std::int64_t level,
                     double pixelsPerMetre) {
  const auto scaled = [&](ScenePoint point) {
    return ScenePoint{point.x * pixelsPerMetre, point.y * pixelsPerMetre};
  };
  if (route.start.level == level) {
    writeStart(svg, route.start, scaled(route.start.at), startsWithChange(route));
  }
  for (const RouteArrow& arrow : route.arrows) {
    if (arrow.level != level) continue;
    writeArrow(svg, arrow, scaled(arrow.at), standsOnDisc(route, arrow));
  }
  for (const RouteChange& change : route.changes) {
    if (change.from == level) writeChange(svg, change, scaled(change.leaves), false);
    if (change.to == level && !hasArrow(route, change)) {
      writeChange(svg, change, scaled(change.arrives), true);
    }
  }
  if (route.destination.level == level) {
    writeDestination(svg, route.destination, scaled(route.destination.at));
  }
}

}  // namespace KorvaniTools
