#pragma once

/// Internal. What the marks and colours of a plan mean.

#include <string>
#include <vector>

#include "Drawing/Scene.hpp"
#include "Drawing/SvgWriter.hpp"

namespace KorvaniTools {

struct LegendEntry {
  std::string words;
  std::string mark;  ///< elements of a picture, within 20 by 18 pixels around the origin
};

/// An entry for each kind of mark and room that is on the levels.
std::vector<LegendEntry> legendEntries(const std::vector<const SceneLevel*>& levels);

/// Writes these entries, and those of the scene's tracks, in rows of at most `width` pixels from
/// `at` (left, top) on. Gives the pixels at which to go on below.
/// @param silhouette the level whose shape lies below the others; null when none does
double writeLegend(SvgWriter& svg, const Scene& scene, const std::vector<const SceneLevel*>& levels,
                   const SceneLevel* silhouette, ScenePoint at, double width);

}  // namespace KorvaniTools
