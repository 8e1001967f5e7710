#pragma once

/// Internal. What is written on a level's plan, and where.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Drawing/LabelPlacement.hpp"
#include "Drawing/LevelSvg.hpp"
#include "Drawing/Scene.hpp"

namespace KorvaniTools {

enum class LabelKind {
  place,
  room,
  end,    ///< the route's start or destination
  badge,  ///< where a change of level leads to or comes from
};

/// A text that found room.
struct LevelLabel {
  LabelKind kind = LabelKind::place;
  std::vector<std::string> lines;
  ScenePoint at;  ///< what is named, pixels
  LabelSide side = LabelSide::right;
  PixelBox box;  ///< of the text, seen from `at`
  double zoom = 1;
};

/// The labels of a level's rooms, places and route, in pixels; none overlaps another or covers a
/// mark. Names of places and rooms that lie in each other are written once.
std::vector<LevelLabel> levelLabels(const Scene& scene, const SceneLevel& level,
                                    const LevelSvgOptions& options);

/// The font's size in pixels.
double fontSizeOf(LabelKind kind);

/// The distance of two lines of text in pixels.
double lineHeightOf(LabelKind kind);

/// Whether the route's start or destination is that place, so that it is marked already.
bool isEndOfRoute(const Scene& scene, const SceneLevel& level, const ScenePlace& place);

/// The connections that are marked: those that the route's marks and other connections leave room
/// for. The second value is
/// the magnification from which on they do not.
std::vector<std::pair<const SceneConnection*, double>> markedConnections(
    const Scene& scene, const SceneLevel& level, const LevelSvgOptions& options);

}  // namespace KorvaniTools
