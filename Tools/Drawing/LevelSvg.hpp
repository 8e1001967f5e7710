#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Drawing/Scene.hpp"

namespace KorvaniTools {

/// A part of a scene's frame, in metres.
struct SceneWindow {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;
};

/// The part that a level's contents and the scene's route on it take, with a margin; the whole
/// frame for a level without contents.
SceneWindow windowOf(const Scene& scene, const SceneLevel& level);

/// The part that a level's rooms take, with a margin; `windowOf` for a level without rooms.
SceneWindow roomWindowOf(const Scene& scene, const SceneLevel& level);

/// How a level is drawn.
struct LevelSvgOptions {
  /// Pixels for a metre; `fittingScale` gives one. Above 0.
  double pixelsPerMetre = 10;
  bool graph = false;  ///< nodes and edges as well
  /// The scene's route and tracks as well.
  bool route = true;
  /// What labels stay within; absent: the scene's frame.
  std::optional<SceneWindow> window = {};
  /// Magnifications for which labels are chosen, ascending, the first is 1. A label that only
  /// finds room when magnified is there too, with `data-zoom`.
  std::vector<double> labelZooms{1};
};

/// Pixels for a metre at which the longer side of the scene's frame takes about `pixels`,
/// without making a small building larger than life: at most 60 pixels for a metre.
double fittingScale(const Scene& scene, double pixels);

/// The level's floors, or its walls where it has none, as `path` elements without a class: a
/// shadow to lay below other levels.
std::string silhouetteSvg(const SceneLevel& level, double pixelsPerMetre);

/// The level as the elements of an SVG picture, below one `<g class="level" data-level="1">`.
///
/// User units are pixels: metres of the scene's frame times `pixelsPerMetre`, x to the right
/// and y down. The look comes from `drawingStyle` (DrawingStyle.hpp). Below the level's group,
/// from back to front:
///
/// | class | elements | data |
/// |---|---|---|
/// | `way casing`, `way` | `path`, what is walked on beside the rooms | |
/// | `floor` | `g` of outlines below the rooms, or of what walls without rooms enclose | |
/// | `room KIND` | `path` | `data-name`, `data-category` |
/// | `wall` | one `path` of all walls | |
/// | `edge` | `line` | `data-edge="3-4"`, `data-distance="5.2"`, `data-kind` (type), `data-oneway`,
/// `data-barrier-free` | | `node` | `circle` | `data-node="12"` | | `connection SYMBOL` | `g` with
/// a symbol | `data-node`, `data-kind`, `data-levels="0,2"` | | `track measured`, `track snapped` |
/// circles | | | `route casing`, `route line`, `chevron` | `path` | | | `place KIND` or `place
/// entrance` | `g` with a dot | `data-place`, `data-kind` | | `label` | `g` with a `text` |
/// `data-zoom` when above 1 | | `arrow KIND` | `g`, an instruction | `data-text` | | `change
/// SYMBOL` | `g`, a badge | `data-to="2"` | | `start`, `destination` | `g`, marks | `data-place` |
///
/// Marks and labels are a `<g transform="translate(X Y)">` around a `<g class="fixed">`, whose
/// origin is the place they mark: a viewer that magnifies the picture by `z` and sets the style
/// property `--k` to 1/z on an ancestor keeps them at their size (with
/// `drawingStyle(DrawingTheme::variables)`), and labels that did not overlap before do not
/// then. Lines keep their width by themselves.
///
/// The text is well-formed XML on its own, and the same scene gives the same text. Cost: near
/// linear in what is drawn.
std::string levelSvg(const Scene& scene, const SceneLevel& level, const LevelSvgOptions& options);

}  // namespace KorvaniTools
