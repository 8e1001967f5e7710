#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Drawing/DrawingStyle.hpp"
#include "Drawing/Scene.hpp"

namespace KorvaniTools {

struct SceneSvgOptions {
  std::optional<std::int64_t> level;  ///< only this one; absent: all
  bool graph = false;                 ///< nodes and edges as well
  DrawingTheme theme = DrawingTheme::light;
};

/// The whole picture: an SVG file with the building's name, its levels (the highest first) with
/// a title each, scale bar, north arrow, legend, the route's instructions and attribution.
///
/// It needs no fonts and no other file. A scene without levels gives a picture that says so.
/// @throws InputError when the scene does not have the level asked for
std::string sceneSvg(const Scene& scene, const SceneSvgOptions& options);

/// The text of the element `<g class="north">`: an arrow of 28 by 36 pixels that points up.
std::string northArrowSvg();

/// A scale bar's length.
struct ScaleBar {
  double metres = 1;  ///< 1, 2 or 5 times a power of ten
  double pixels = 0;
  std::string words;  ///< "20 m", "5 km", "10 cm"
};

/// The longest bar of at most `pixels`, for that scale (above 0).
ScaleBar scaleBarFor(double pixelsPerMetre, double pixels);

}  // namespace KorvaniTools
