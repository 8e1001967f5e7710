#pragma once

/// Internal. Where somebody was, on one level's plan.

#include "Drawing/Scene.hpp"
#include "Drawing/SvgWriter.hpp"

namespace KorvaniTools {

/// A dot for each position, and a cross for each that was denied, joined to where it was held.
void writeTrack(SvgWriter& svg, const SceneTrack& track, double pixelsPerMetre);

/// The cross of a position that was denied.
void writeDenied(SvgWriter& svg, ScenePoint at);

}  // namespace KorvaniTools
