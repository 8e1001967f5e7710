#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace KorvaniTools {

enum class DrawingTheme {
  light,
  dark,
  /// Colours by CSS custom properties (`--ink`, `--paper`, ...), light unless an ancestor has
  /// `data-theme="dark"`, or the system prefers dark and none has `data-theme="light"`.
  variables,
};

/// A colour of the drawing in both themes.
struct DrawingColour {
  std::string_view name;  ///< without dashes: "ink" for `--ink`
  std::string_view light;
  std::string_view dark;
};

/// All colours, for pages that go with a drawing: `paper` (behind everything), `panel`, `ink`
/// (text), `faint` (less important text), `line`, `route`, `routeText`, `start`, ...
const std::vector<DrawingColour>& drawingColours();

/// The colour of that name, as CSS writes it; empty for an unknown name. `theme` is light or dark.
std::string_view colourOf(std::string_view name, DrawingTheme theme);

/// The rules for everything that `levelSvg` and `sceneSvg` write, to be put into a `<style>`.
///
/// With a theme of its own every colour is written out, for programs that know no custom
/// properties. All rules are below the class `plan`: the `<svg>` or an ancestor must bear it.
std::string drawingStyle(DrawingTheme theme);

}  // namespace KorvaniTools
