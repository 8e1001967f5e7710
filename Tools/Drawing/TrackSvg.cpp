#include "Drawing/TrackSvg.hpp"

#include <string_view>
#include <vector>

#include "Drawing/MarkSvg.hpp"
#include "Drawing/RouteSvg.hpp"

namespace KorvaniTools {
namespace {

void writeDots(SvgWriter& svg, const std::vector<ScenePoint>& points, std::string_view classes,
               double scale) {
  for (const ScenePoint& point : points) {
    openMark(svg, {point.x * scale, point.y * scale}, classes);
    svg.element("circle", {{"r", "3"}});
    closeMark(svg);
  }
}

}  // namespace

void writeTrack(SvgWriter& svg, const SceneTrack& track, double pixelsPerMetre) {
  writeDots(svg, track.measured, "track measured", pixelsPerMetre);
  writeDots(svg, track.snapped, "track snapped", pixelsPerMetre);
  for (const SceneJump& jump : track.denied) {
    if (!jump.held) continue;
    svg.element("path",
                {{"class", "jump"}, {"d", pathData({*jump.held, jump.came}, pixelsPerMetre)}});
  }
  for (const SceneJump& jump : track.denied) {
    writeDenied(svg, {jump.came.x * pixelsPerMetre, jump.came.y * pixelsPerMetre});
  }
}

void writeDenied(SvgWriter& svg, ScenePoint at) {
  openMark(svg, at, "track denied");
  svg.element("circle", {{"r", "8"}});
  svg.element("path", {{"d", "M-3.5 -3.5L3.5 3.5M3.5 -3.5L-3.5 3.5"}});
  closeMark(svg);
}

}  // namespace KorvaniTools
