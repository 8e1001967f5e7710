#pragma once

/// Internal. What of which levels a sheet shows, and how large.

#include <vector>

#include "Drawing/LevelSvg.hpp"
#include "Drawing/Scene.hpp"

namespace KorvaniTools {

/// One plan of a sheet.
struct SheetPlan {
  const SceneLevel* level = nullptr;
  SceneWindow window;
  double scale = 1;     ///< pixels for a metre
  bool detail = false;  ///< a part of the plan before, enlarged

  double width() const { return window.width * scale; }    ///< pixels
  double height() const { return window.height * scale; }  ///< pixels
};

/// The plans of these levels, in their order.
///
/// Levels share one window and one scale, so that they lie on top of each other, as long as a page
/// shows them large enough to read. On a campus they do not: there each level has a window and a
/// scale of its own, and where its rooms take only a part of it a second plan of these. So it is
/// when `apart` says that the levels are not to be compared.
std::vector<SheetPlan> sheetPlans(const Scene& scene, const std::vector<const SceneLevel*>& levels,
                                  bool apart);

}  // namespace KorvaniTools
