#include "Drawing/LevelSvg.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

#include "Drawing/LevelLabels.hpp"
#include "Drawing/MarkSvg.hpp"
#include "Drawing/RouteSvg.hpp"
#include "Drawing/SvgWriter.hpp"
#include "Drawing/TrackSvg.hpp"

namespace KorvaniTools {
namespace {

constexpr double kLargestScale = 60;

std::string ringsData(const SceneRoom& room, double scale) {
  std::string data;
  for (const SceneLine& ring : room.rings) data += pathData(ring, scale) + 'Z';
  return data;
}

/// A path for each room that lies under a roof, or for what the walls enclose.
void writeFloors(SvgWriter& svg, const SceneLevel& level, double scale) {
  for (const SceneLine& outline : level.floors) {
    svg.element("path", {{"class", "enclosed"}, {"d", pathData(outline, scale) + 'Z'}});
  }
  for (const SceneRoom& room : level.rooms) {
    if (room.kind == RoomKind::outdoor || room.kind == RoomKind::closed) continue;
    svg.element("path", {{"d", ringsData(room, scale)}});
  }
}

std::string wallData(const SceneLevel& level, double scale) {
  std::string data;
  for (const SceneWall& wall : level.walls) data += pathData(wall.line, scale);
  return data;
}

/// Grows around points.
class Extent {
 public:
  void include(ScenePoint point) {
    left_ = std::min(left_, point.x);
    top_ = std::min(top_, point.y);
    right_ = std::max(right_, point.x);
    bottom_ = std::max(bottom_, point.y);
  }
  void include(const SceneLine& line) {
    for (const ScenePoint& point : line) include(point);
  }
  bool empty() const { return left_ > right_; }
  /// With a margin, within the frame.
  SceneWindow window(const SceneFrame& frame) const {
    constexpr double kMarginPart = 0.08;
    constexpr double kLeastMargin = 2;
    const double longer = std::max(right_ - left_, bottom_ - top_);
    const double margin = std::max(kLeastMargin, longer * kMarginPart);
    const double left = std::max(0.0, left_ - margin);
    const double top = std::max(0.0, top_ - margin);
    return {left, top, std::min(frame.width(), right_ + margin) - left,
            std::min(frame.height(), bottom_ + margin) - top};
  }

 private:
  double left_ = std::numeric_limits<double>::infinity();
  double top_ = std::numeric_limits<double>::infinity();
  double right_ = -std::numeric_limits<double>::infinity();
  double bottom_ = -std::numeric_limits<double>::infinity();
};

void includeRoute(const DrawnRoute& route, std::int64_t level, Extent& extent) {
  for (const RouteLeg& leg : route.legs) {
    if (leg.level == level) extent.include(leg.line);
  }
  for (const RouteEnd* end : {&route.start, &route.destination}) {
    if (end->level == level) extent.include(end->at);
  }
}

/// Writes the parts of one level, from back to front.
class LevelDrawing {
 public:
  LevelDrawing(const Scene& scene, const SceneLevel& level, const LevelSvgOptions& options)
      : scene_(scene), level_(level), options_(options), scale_(options.pixelsPerMetre) {}

  std::string draw() {
    svg_.open("g", {{"class", "level"}, {"data-level", std::to_string(level_.level)}});
    drawWays();
    drawRooms();
    drawWalls();
    if (options_.graph) drawGraph();
    if (options_.route && scene_.route) writeRoute(svg_, *scene_.route, level_.level, scale_);
    if (options_.route) drawTracks();
    drawConnections();
    drawPlaces();
    const std::vector<LevelLabel> labels = levelLabels(scene_, level_, options_);
    for (const LevelLabel& label : labels) {
      if (label.kind != LabelKind::badge) drawLabel(label);
    }
    if (options_.route && scene_.route) writeRouteMarks(svg_, *scene_.route, level_.level, scale_);
    for (const LevelLabel& label : labels) {
      if (label.kind == LabelKind::badge) drawBadge(label);
    }
    svg_.close();
    return svg_.take();
  }

 private:
  ScenePoint scaled(ScenePoint point) const { return {point.x * scale_, point.y * scale_}; }

  /// What is walked on; it shows where no floor is drawn upon it.
  void drawWays() {
    std::string data;
    for (const SceneEdge& edge : level_.edges) data += pathData({edge.start, edge.end}, scale_);
    if (data.empty()) return;
    svg_.element("path", {{"class", "way casing"}, {"d", data}});
    svg_.element("path", {{"class", "way"}, {"d", data}});
  }

  void drawRooms() {
    svg_.open("g", {{"class", "floor"}});
    writeFloors(svg_, level_, scale_);
    svg_.close();
    // Halls first, so that rooms drawn upon them show.
    for (const bool halls : {true, false}) {
      for (const SceneRoom& room : level_.rooms) {
        const bool hall = room.kind == RoomKind::corridor || room.kind == RoomKind::outdoor;
        if (hall == halls) drawRoom(room);
      }
    }
  }

  void drawRoom(const SceneRoom& room) {
    svg_.element("path", {{"class", "room " + std::string(nameOf(room.kind))},
                          {"d", ringsData(room, scale_)},
                          {"data-name", room.name},
                          {"data-category", room.category}});
  }

  void drawWalls() {
    const std::string data = wallData(level_, scale_);
    if (!data.empty()) svg_.element("path", {{"class", "wall"}, {"d", data}});
  }

  void drawGraph() {
    for (const SceneEdge& edge : level_.edges) {
      const ScenePoint start = scaled(edge.start);
      const ScenePoint end = scaled(edge.end);
      svg_.element("line",
                   {{"class", "edge"},
                    {"x1", pixels(start.x)},
                    {"y1", pixels(start.y)},
                    {"x2", pixels(end.x)},
                    {"y2", pixels(end.y)},
                    {"data-edge", std::to_string(edge.from) + '-' + std::to_string(edge.to)},
                    {"data-distance", pixels(edge.distance)},
                    {"data-kind", edge.type},
                    {"data-oneway", edge.oneway ? "yes" : ""},
                    {"data-barrier-free", edge.barrierFree ? "yes" : "no"}});
    }
    for (const SceneNode& node : level_.nodes) {
      openMark(svg_, scaled(node.at), "node", {{"data-node", std::to_string(node.id)}});
      svg_.element("circle", {{"r", "2"}});
      closeMark(svg_);
    }
  }

  void drawTracks() {
    for (const SceneTrack& track : scene_.tracks) {
      if (track.level == level_.level) writeTrack(svg_, track, scale_);
    }
  }

  void drawConnections() {
    for (const auto& marked : markedConnections(scene_, level_, options_)) {
      writeConnection(svg_, *marked.first, scaled(marked.first->at), marked.second);
    }
  }

  void drawPlaces() {
    for (const ScenePlace& place : level_.places) {
      if (options_.route && isEndOfRoute(scene_, level_, place)) continue;
      writePlace(svg_, place, scaled(place.at));
    }
  }

  static std::string_view classesOf(LabelKind kind) {
    switch (kind) {
      case LabelKind::room:
        return "label name";
      case LabelKind::end:
        return "label end";
      default:
        return "label";
    }
  }

  static std::string_view anchorOf(LabelSide side) {
    switch (side) {
      case LabelSide::right:
      case LabelSide::aboveRight:
      case LabelSide::belowRight:
        return "start";
      case LabelSide::left:
      case LabelSide::aboveLeft:
      case LabelSide::belowLeft:
        return "end";
      default:
        return "middle";
    }
  }

  void drawLabel(const LevelLabel& label) {
    openMark(svg_, label.at, classesOf(label.kind), {}, label.zoom);
    const std::string_view anchor = anchorOf(label.side);
    double x = (label.box.left + label.box.right) / 2;
    if (anchor == "start") x = label.box.left;
    if (anchor == "end") x = label.box.right;
    double baseline = label.box.top + fontSizeOf(label.kind) * 0.88 + 1;
    for (const std::string& line : label.lines) {
      svg_.textElement("text",
                       {{"x", pixels(x)},
                        {"y", pixels(baseline)},
                        {"text-anchor", anchor == "start" ? "" : std::string(anchor)}},
                       line);
      baseline += lineHeightOf(label.kind);
    }
    closeMark(svg_);
  }

  void drawBadge(const LevelLabel& label) {
    openMark(svg_, label.at, "badge", {}, label.zoom);
    svg_.element("rect", {{"x", pixels(label.box.left)},
                          {"y", pixels(label.box.top)},
                          {"width", pixels(label.box.width())},
                          {"height", pixels(label.box.height())},
                          {"rx", pixels(label.box.height() / 2)}});
    const double baseline = (label.box.top + label.box.bottom) / 2 + fontSizeOf(label.kind) * 0.36;
    svg_.textElement("text",
                     {{"x", pixels((label.box.left + label.box.right) / 2)},
                      {"y", pixels(baseline)},
                      {"text-anchor", "middle"}},
                     label.lines.front());
    closeMark(svg_);
  }

  const Scene& scene_;
  const SceneLevel& level_;
  const LevelSvgOptions& options_;
  const double scale_;
  SvgWriter svg_;
};

}  // namespace

double fittingScale(const Scene& scene, double pixels) {
  const double longer = std::max(scene.frame.width(), scene.frame.height());
  return longer > 0 ? std::min(kLargestScale, pixels / longer) : kLargestScale;
}

std::string silhouetteSvg(const SceneLevel& level, double pixelsPerMetre) {
  SvgWriter svg;
  writeFloors(svg, level, pixelsPerMetre);
  std::string floors = svg.take();
  if (!floors.empty() || level.walls.empty()) return floors;
  svg.element("path", {{"d", wallData(level, pixelsPerMetre)}, {"fill", "none"}});
  return svg.take();
}

SceneWindow roomWindowOf(const Scene& scene, const SceneLevel& level) {
  Extent extent;
  for (const SceneRoom& room : level.rooms) extent.include(room.rings.front());
  if (extent.empty()) return windowOf(scene, level);
  return extent.window(scene.frame);
}

SceneWindow windowOf(const Scene& scene, const SceneLevel& level) {
  Extent extent;
  for (const SceneRoom& room : level.rooms) extent.include(room.rings.front());
  for (const SceneWall& wall : level.walls) extent.include(wall.line);
  for (const SceneNode& node : level.nodes) extent.include(node.at);
  for (const ScenePlace& place : level.places) extent.include(place.at);
  if (scene.route) includeRoute(*scene.route, level.level, extent);
  if (extent.empty()) return {0, 0, scene.frame.width(), scene.frame.height()};
  return extent.window(scene.frame);
}

std::string levelSvg(const Scene& scene, const SceneLevel& level, const LevelSvgOptions& options) {
  return LevelDrawing(scene, level, options).draw();
}

}  // namespace KorvaniTools
