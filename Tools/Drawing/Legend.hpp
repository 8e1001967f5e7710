#pragma once

/// Internal. What the marks and colours on a sheet mean.

#include <vector>

#include "Drawing/Scene.hpp"
#include "Drawing/SvgWriter.hpp"

namespace KorvaniTools {

/// Writes an entry for each kind of mark and room that is on the levels, in rows of at most
/// `width` pixels from `at` (left, top) on. Gives the pixels at which to go on below.
double writeLegend(SvgWriter& svg, const Scene& scene, const std::vector<const SceneLevel*>& levels,
                   ScenePoint at, double width);

}  // namespace KorvaniTools
