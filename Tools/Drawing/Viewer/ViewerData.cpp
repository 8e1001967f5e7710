#include "Drawing/Viewer/ViewerData.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

#include "Drawing/RouteSvg.hpp"
#include "Drawing/Viewer/DrawnWalk.hpp"
#include "Drawing/Viewer/LevelHome.hpp"

namespace KorvaniTools {
namespace {

double rounded(double number) { return std::round(number * 100) / 100; }

/// Writes positions in the units of the drawing.
class Plotter {
 public:
  Plotter(const SceneFrame& frame, double pixelsPerMetre)
      : frame_(frame), pixelsPerMetre_(pixelsPerMetre) {}

  double length(double metres) const { return rounded(metres * pixelsPerMetre_); }
  OrderedJson at(ScenePoint point, std::int64_t level) const {
    return {length(point.x), length(point.y), level};
  }
  OrderedJson at(const TimelinePoint& point) const {
    return at(frame_.at(point.coordinate), point.level);
  }
  OrderedJson at(const std::vector<TimelinePoint>& points) const {
    OrderedJson json = OrderedJson::array();
    for (const TimelinePoint& point : points) json.push_back(at(point));
    return json;
  }
  const SceneFrame& frame() const { return frame_; }

 private:
  const SceneFrame& frame_;
  const double pixelsPerMetre_;
};

OrderedJson homeJson(const SceneLevel& level, const Plotter& plot) {
  const std::optional<SceneWindow> home = homeOf(level);
  if (!home) return nullptr;
  return {plot.length(home->left), plot.length(home->top), plot.length(home->left + home->width),
          plot.length(home->top + home->height)};
}

OrderedJson levelsJson(const Scene& scene, const Plotter& plot) {
  OrderedJson levels = OrderedJson::array();
  for (const SceneLevel& level : scene.levels) {
    levels.push_back({{"level", level.level},
                      {"number", level.number},
                      {"name", level.name},
                      {"title", level.title},
                      {"home", homeJson(level, plot)}});
  }
  return levels;
}

OrderedJson placesJson(const Scene& scene, const Plotter& plot) {
  OrderedJson places = OrderedJson::array();
  for (const SceneLevel& level : scene.levels) {
    for (const ScenePlace& place : level.places) {
      places.push_back({{"name", place.name},
                        {"at", plot.at(place.at, level.level)},
                        {"kind", place.entrance ? "entrance" : nameOf(place.kind)}});
    }
  }
  return places;
}

OrderedJson legsJson(const DrawnRoute& route, const Plotter& plot) {
  OrderedJson points = OrderedJson::array();
  for (const RouteLeg& leg : route.legs) {
    for (const ScenePoint& point : leg.line) points.push_back(plot.at(point, leg.level));
  }
  return points;
}

/// The levels on which the route is to be seen; without a step on it one may still leave it.
OrderedJson touchedLevelsJson(const DrawnRoute& route, const Scene& scene) {
  OrderedJson levels = OrderedJson::array();
  for (const SceneLevel& level : scene.levels) {
    if (route.touches(level.level)) levels.push_back(level.level);
  }
  return levels;
}

OrderedJson routeJson(const DrawnRoute& route, const Plotter& plot) {
  OrderedJson instructions = OrderedJson::array();
  const std::size_t count = std::min(route.instructions.size(), route.instructionSpots.size());
  for (std::size_t i = 0; i < count; ++i) {
    const RouteSpot& spot = route.instructionSpots[i];
    instructions.push_back({{"text", route.instructions[i]}, {"at", plot.at(spot.at, spot.level)}});
  }
  return {{"start", route.start.name},
          {"destination", route.destination.name},
          {"distance", rounded(route.distance)},
          {"time", rounded(route.travelTime)},
          {"direct", route.direct},
          {"from", plot.at(route.start.at, route.start.level)},
          {"points", legsJson(route, plot)},
          {"instructions", std::move(instructions)}};
}

OrderedJson arrowsJson(const DrawnRoute& route, const Plotter& plot) {
  OrderedJson arrows = OrderedJson::array();
  for (const RouteArrow& arrow : route.arrows) {
    OrderedJson json{{"at", plot.at(arrow.at, arrow.level)},
                     {"heading", rounded(arrow.heading)},
                     {"kind", arrow.kind},
                     {"text", arrow.text}};
    if (arrow.changesLevel()) json["symbol"] = nameOf(arrow.symbol);
    if (standsOnDisc(route, arrow)) json["beside"] = true;
    arrows.push_back(std::move(json));
  }
  return arrows;
}

OrderedJson changesJson(const DrawnRoute& route, const Plotter& plot) {
  OrderedJson changes = OrderedJson::array();
  for (const RouteChange& change : route.changes) {
    changes.push_back({{"leaves", plot.at(change.leaves, change.from)},
                       {"arrives", plot.at(change.arrives, change.to)},
                       {"symbol", nameOf(change.symbol)},
                       {"words", change.toName}});
  }
  return changes;
}

/// A route of a walk, with the marks that the page draws as long as they are ahead.
OrderedJson routeJson(const TimelineRoute& route, const LevelNames& levels, const Plotter& plot) {
  const DrawnRoute drawn = drawnRoute(route, levels, plot.frame());
  OrderedJson json = routeJson(drawn, plot);
  json["points"] = plot.at(route.points);
  json["arrows"] = arrowsJson(drawn, plot);
  json["changes"] = changesJson(drawn, plot);
  return json;
}

/// The index of the whole route's point that `ahead` leads to next, if it goes on along the route
/// to its end.
std::optional<std::size_t> nextPoint(const TimelineRoute& route,
                                     const std::vector<TimelinePoint>& ahead) {
  const std::size_t shared = ahead.size() - 1;
  if (shared > route.points.size()) return {};
  const std::size_t next = route.points.size() - shared;
  const bool same = std::equal(ahead.begin() + 1, ahead.end(),
                               route.points.end() - static_cast<std::ptrdiff_t>(shared));
  return same ? std::optional(next) : std::nullopt;
}

void addWay(const Moment& moment, const std::vector<TimelineRoute>& routes, const Plotter& plot,
            OrderedJson& json) {
  if (!moment.route || moment.ahead.empty()) return;
  json["route"] = *moment.route;
  if (const auto next = nextPoint(routes[*moment.route], moment.ahead)) {
    json["here"] = plot.at(moment.ahead.front());
    json["next"] = *next;
  } else {
    json["ahead"] = plot.at(moment.ahead);
  }
  json["remaining"] = rounded(moment.remaining);
  if (moment.instruction) json["instruction"] = *moment.instruction;
}

OrderedJson momentJson(const Moment& moment, const std::vector<TimelineRoute>& routes,
                       const Plotter& plot) {
  OrderedJson json{
      {"second", moment.second}, {"line", moment.line}, {"operation", moment.operation}};
  if (moment.raw) json["raw"] = plot.at(*moment.raw);
  if (moment.snapped) json["snapped"] = plot.at(*moment.snapped);
  if (moment.checked) json["checked"] = plot.at(*moment.checked);
  if (moment.denied) json["denied"] = true;
  addWay(moment, routes, plot, json);
  if (!moment.told.empty()) json["told"] = moment.told;
  if (moment.rerouted) json["rerouted"] = true;
  if (moment.arrived) json["arrived"] = true;
  if (!moment.error.empty()) json["error"] = moment.error;
  return json;
}

OrderedJson walkJson(const Timeline& timeline, const Plotter& plot) {
  OrderedJson routes = OrderedJson::array();
  for (const TimelineRoute& route : timeline.routes) {
    routes.push_back(routeJson(route, timeline.levels, plot));
  }
  OrderedJson moments = OrderedJson::array();
  for (const Moment& moment : timeline.moments) {
    moments.push_back(momentJson(moment, timeline.routes, plot));
  }
  return {{"routes", std::move(routes)}, {"moments", std::move(moments)}};
}

}  // namespace

OrderedJson viewerData(const Scene& scene, const std::optional<Timeline>& timeline,
                       double pixelsPerMetre, bool graph) {
  const Plotter plot(scene.frame, pixelsPerMetre);
  OrderedJson data{{"width", rounded(scene.frame.width() * pixelsPerMetre)},
                   {"height", rounded(scene.frame.height() * pixelsPerMetre)},
                   {"pixelsPerMetre", pixelsPerMetre},
                   {"graph", graph},
                   {"levels", levelsJson(scene, plot)},
                   {"places", placesJson(scene, plot)},
                   {"route", nullptr},
                   {"walk", nullptr}};
  if (timeline) {
    data["walk"] = walkJson(*timeline, plot);
  } else if (scene.route) {
    data["route"] = routeJson(*scene.route, plot);
    data["route"]["levels"] = touchedLevelsJson(*scene.route, scene);
  }
  return data;
}

}  // namespace KorvaniTools
