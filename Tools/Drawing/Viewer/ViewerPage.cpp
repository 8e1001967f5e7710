#include "Drawing/Viewer/ViewerPage.hpp"

#include <map>
#include <string>
#include <vector>

#include "Drawing/DrawingStyle.hpp"
#include "Drawing/Legend.hpp"
#include "Drawing/LevelSvg.hpp"
#include "Drawing/MarkSvg.hpp"
#include "Drawing/SceneSvg.hpp"
#include "Drawing/SvgWriter.hpp"
#include "Drawing/Viewer/PageTemplate.hpp"
#include "Drawing/Viewer/ViewerData.hpp"
#include "Drawing/Viewer/ViewerSources.hpp"
#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

/// The longer side of the drawing when it is not magnified: a narrow phone's, so that labels that
/// find room in it never overlap anywhere.
constexpr double kPixels = 320;

std::string levelsSvg(const Scene& scene, bool route, double pixelsPerMetre) {
  LevelSvgOptions options;
  options.pixelsPerMetre = pixelsPerMetre;
  options.graph = true;
  options.route = route;
  options.labelZooms = {1, 1.5, 2, 3, 4, 6, 8, 12, 16, 24, 32, 48};
  std::string svg;
  for (const SceneLevel& level : scene.levels) svg += levelSvg(scene, level, options) + '\n';
  return svg;
}

std::string titleOf(const Scene& scene) { return scene.name.empty() ? "Floor plan" : scene.name; }

std::string summaryOf(const Scene& scene) {
  std::size_t places = 0;
  for (const SceneLevel& level : scene.levels) places += level.places.size();
  return counted(scene.levels.size(), "level", "levels") + " · " +
         counted(places, "place", "places");
}

/// The glyphs, for the script to copy.
std::string glyphsSvg() {
  SvgWriter svg;
  for (const ConnectionSymbol symbol :
       {ConnectionSymbol::path, ConnectionSymbol::stairs, ConnectionSymbol::escalator,
        ConnectionSymbol::elevator, ConnectionSymbol::ramp, ConnectionSymbol::ladder}) {
    svg.open("g", {{"id", "glyph-" + std::string(nameOf(symbol))}});
    writeGlyph(svg, symbol);
    svg.close();
  }
  return svg.take();
}

/// What symbols and colours mean, as the items of a list.
std::string legendHtml(const Scene& scene) {
  std::vector<const SceneLevel*> levels;
  for (const SceneLevel& level : scene.levels) levels.push_back(&level);
  std::string html;
  for (const LegendEntry& entry : legendEntries(levels)) {
    html += R"(<li><svg class="plan" width="32" height="24" viewBox="-16 -12 32 24" )"
            R"(aria-hidden="true">)" +
            entry.mark + "</svg>" + xmlText(entry.words) + "</li>\n";
  }
  return html;
}

/// Who must be named with the map; never empty, so that the page always has its line.
std::string attributionOf(const Scene& scene) {
  std::string text = scene.attribution;
  if (!scene.licence.empty()) text += (text.empty() ? "" : " · ") + scene.licence;
  return text.empty() ? "Source of the map not named" : "Map data: " + text;
}

}  // namespace

std::string viewerPage(const Scene& scene, const std::optional<Timeline>& timeline,
                       const ViewerOptions& options) {
  const double pixelsPerMetre = fittingScale(scene, kPixels);
  const OrderedJson data = viewerData(scene, timeline, pixelsPerMetre, options.graph);
  return filledIn(viewerHtml(), {{"title", xmlText(titleOf(scene))},
                                 {"summary", xmlText(summaryOf(scene))},
                                 {"attribution", xmlText(attributionOf(scene))},
                                 {"drawingStyle", drawingStyle(DrawingTheme::variables)},
                                 {"style", std::string(viewerStyle())},
                                 {"glyphs", glyphsSvg()},
                                 {"legend", legendHtml(scene)},
                                 {"levels", levelsSvg(scene, !timeline, pixelsPerMetre)},
                                 {"north", northArrowSvg()},
                                 {"data", scriptSafe(jsonText(data))},
                                 {"scriptHash", std::string(viewerScriptHash())},
                                 {"script", std::string(viewerScript())}});
}

}  // namespace KorvaniTools
