#include "Drawing/DrawingStyle.hpp"

#include <algorithm>
#include <cstddef>

namespace KorvaniTools {
namespace {

/// `%name%` stands for a colour.
constexpr std::string_view kRules = R"(
.plan { font-family: Inter, "Helvetica Neue", Helvetica, Arial, "Liberation Sans", sans-serif; }
.plan text { fill: %ink%; }
.plan .paper { fill: %paper%; }
.plan .panel { fill: %ground%; stroke: %rule%; stroke-width: 1; }
.plan .ghost { fill-rule: evenodd; fill: %ghost%; stroke: %ghost%; stroke-width: 2; stroke-linejoin: round; }
.plan .legend .ghost { stroke: %rule%; stroke-width: 1; }
.plan .way { fill: none; stroke: %corridor%; stroke-width: 5; stroke-linecap: round; }
.plan .way.casing { stroke: %floorEdge%; stroke-width: 7; }
.plan .floor { fill: %floor%; fill-rule: evenodd; stroke: %floorEdge%; stroke-width: 5; stroke-linejoin: round; }
.plan .floor .enclosed { fill: %corridor%; }
.plan .room { fill: %other%; fill-rule: evenodd; stroke: %roomEdge%; stroke-width: 0.8;
  stroke-linejoin: round; }
.plan .room.corridor { fill: %corridor%; }
.plan .room.office { fill: %office%; }
.plan .room.classroom { fill: %classroom%; }
.plan .room.shop { fill: %shop%; }
.plan .room.food { fill: %food%; }
.plan .room.toilet { fill: %toilet%; }
.plan .room.service { fill: %service%; }
.plan .room.waiting { fill: %waiting%; }
.plan .room.stairs { fill: %stairs%; }
.plan .room.elevator { fill: %elevator%; }
.plan .room.outdoor { fill: %outdoor%; }
.plan .room.closed { fill: %closed%; }
.plan .wall { fill: none; stroke: %wall%; stroke-width: 1.6; stroke-linejoin: round;
  stroke-linecap: round; }
.plan .edge { stroke: %graph%; stroke-width: 1; stroke-opacity: 0.75; }
.plan .edge[data-oneway] { stroke-dasharray: 5 2; }
.plan .edge[data-barrier-free="no"] { stroke: %barrier%; }
.plan .node { fill: %graph%; }
.plan .connection rect { fill: %connection%; stroke: %casing%; stroke-width: 1.2; }
.plan .glyph { fill: none; stroke: %glyph%; stroke-width: 1.6; stroke-linejoin: round;
  stroke-linecap: round; }
.plan .glyph.solid { fill: %glyph%; stroke: none; }
.plan .route, .plan .hop { fill: none; stroke-linejoin: round; stroke-linecap: round; }
.plan .route.casing { stroke: %casing%; stroke-width: 10; }
.plan .route.line { stroke: %route%; stroke-width: 6; }
.plan .route.direct { stroke-dasharray: 3 11; }
.plan .hop { stroke: %route%; stroke-width: 3; stroke-dasharray: 1 6; }
.plan .chevron path { fill: none; stroke: %casing%; stroke-width: 1.8; stroke-linejoin: round;
  stroke-linecap: round; }
.plan .arrow .dart { fill: %arrow%; stroke: %casing%; stroke-width: 1.8; stroke-linejoin: round; }
.plan .track circle { stroke: %casing%; stroke-width: 0.8; }
.plan .track.measured circle { fill: %measured%; }
.plan .track.snapped circle { fill: %snapped%; }
.plan .jump { fill: none; stroke: %destination%; stroke-width: 2; stroke-dasharray: 2 5;
  stroke-linecap: round; }
.plan .denied circle { fill: %panel%; stroke: %destination%; stroke-width: 2.2; }
.plan .denied path { fill: none; stroke: %destination%; stroke-width: 2.2; stroke-linecap: round; }
.plan .dot { fill: %place%; stroke: %casing%; stroke-width: 1.4; }
.plan .place.shop .dot { fill: %shopMark%; }
.plan .place.food .dot { fill: %foodMark%; }
.plan .place.toilet .dot { fill: %toiletMark%; }
.plan .place.service .dot { fill: %serviceMark%; }
.plan .place.waiting .dot { fill: %waitingMark%; }
.plan .place.entrance .dot { fill: %entrance%; stroke-width: 1.2; stroke-linejoin: round; }
.plan .change .disc, .plan .arrow .disc { fill: %route%; stroke: %casing%; stroke-width: 2; }
.plan .change .glyph, .plan .arrow .glyph { stroke: %routeText%; }
.plan .change .glyph.solid, .plan .arrow .glyph.solid { fill: %routeText%; stroke: none; }
.plan .badge rect { fill: %badge%; stroke: %casing%; stroke-width: 1.2; }
.plan .badge text { fill: %badgeText%; font-size: 12px; font-weight: 600; }
.plan .start circle { fill: %panel%; stroke: %start%; stroke-width: 5; }
.plan .start .ring { fill: none; stroke: %casing%; stroke-width: 10; }
.plan .destination path { fill: %destination%; stroke: %casing%; stroke-width: 1.8; }
.plan .destination circle { fill: %panel%; }
.plan .label text { font-size: 11.5px; paint-order: stroke; stroke: %halo%; stroke-width: 3;
  stroke-linejoin: round; stroke-opacity: 0.9; }
.plan .label.name text { font-size: 11px; fill: %faint%; stroke-width: 2.4; }
.plan .label.end text { font-size: 13px; font-weight: 700; }
.plan .heading { font-size: 24px; font-weight: 700; }
.plan .title { font-size: 16px; font-weight: 700; }
.plan .note { font-size: 13px; fill: %faint%; }
.plan .scale path, .plan .north path { fill: none; stroke: %ink%; stroke-width: 1.6; }
.plan .north .needle { fill: %ink%; stroke: none; }
.plan .north text, .plan .scale text { font-size: 12px; font-weight: 600; }
)";

/// For pages that magnify the drawing.
constexpr std::string_view kMagnified = R"(
.plan .fixed { transform: scale(var(--k, 1)); }
.plan .way, .plan .floor path, .plan .room, .plan .wall, .plan .edge, .plan .route, .plan .hop {
  vector-effect: non-scaling-stroke; }
)";

std::string replaced(std::string_view rules, DrawingTheme theme) {
  std::string text;
  for (std::size_t from = 0; from < rules.size();) {
    const std::size_t begin = rules.find('%', from);
    if (begin == std::string_view::npos) return text.append(rules.substr(from));
    const std::size_t end = rules.find('%', begin + 1);
    const std::string_view name = rules.substr(begin + 1, end - begin - 1);
    text += rules.substr(from, begin - from);
    if (theme == DrawingTheme::variables) {
      text.append("var(--").append(name).append(")");
    } else {
      text += colourOf(name, theme);
    }
    from = end + 1;
  }
  return text;
}

std::string properties(DrawingTheme theme) {
  std::string text;
  for (const DrawingColour& colour : drawingColours()) {
    text.append("  --").append(colour.name).append(": ");
    text.append(colourOf(colour.name, theme)).append(";\n");
  }
  return text;
}

std::string variables() {
  const std::string light = properties(DrawingTheme::light);
  const std::string dark = properties(DrawingTheme::dark);
  return ":root {\n" + light + "}\n@media (prefers-color-scheme: dark) {\n:root {\n" + dark +
         "}\n}\n[data-theme=\"light\"] {\n" + light + "}\n[data-theme=\"dark\"] {\n" + dark + "}";
}

}  // namespace

const std::vector<DrawingColour>& drawingColours() {
  static const std::vector<DrawingColour> kColours{
      // Around the plan.
      {"paper", "#eceff3", "#12161c"},
      {"panel", "#ffffff", "#1b212a"},
      {"ground", "#f4f6f9", "#161b22"},
      {"ghost", "#e6eaef", "#1f262f"},
      {"rule", "#d4dae2", "#323b48"},
      {"ink", "#1b2430", "#eef2f7"},
      {"faint", "#4a5666", "#bac6d4"},
      {"halo", "#ffffff", "#151a21"},
      // Floors and rooms.
      {"floor", "#f7f5f1", "#262d37"},
      {"floorEdge", "#c9ced6", "#465160"},
      {"roomEdge", "#b9bfc9", "#4d5868"},
      {"other", "#efebe4", "#333b47"},
      {"corridor", "#ffffff", "#282f39"},
      {"office", "#e2e9f4", "#2c3a50"},
      {"classroom", "#dcebf5", "#27404f"},
      {"shop", "#fce9c8", "#4d4022"},
      {"food", "#fbdccd", "#512f26"},
      {"toilet", "#e4daf3", "#40335a"},
      {"service", "#d9eedd", "#25432f"},
      {"waiting", "#f4efc9", "#45421f"},
      {"stairs", "#d8dde5", "#414b5a"},
      {"elevator", "#ccd4e0", "#434e5f"},
      {"outdoor", "#e2efd6", "#283a26"},
      {"closed", "#dcdfe3", "#20262e"},
      {"wall", "#566273", "#97a4b5"},
      {"graph", "#5b6f8c", "#8ea3c0"},
      {"barrier", "#b5501f", "#ef9a6b"},
      // Marks.
      {"connection", "#4b596c", "#c3cedb"},
      {"glyph", "#ffffff", "#161c24"},
      {"place", "#4b596c", "#c3cedb"},
      {"shopMark", "#96610a", "#f0bd5c"},
      {"foodMark", "#b04421", "#f59a7b"},
      {"toiletMark", "#6b46a8", "#bda2ee"},
      {"serviceMark", "#237a42", "#7dd39a"},
      {"waitingMark", "#75690a", "#dccf63"},
      {"entrance", "#0b7a56", "#5fd3a6"},
      // The route and who walks it.
      {"route", "#1463d8", "#5aa6ff"},
      {"routeText", "#ffffff", "#0c1521"},
      {"casing", "#ffffff", "#0e1319"},
      {"arrow", "#0b2f6b", "#d6e8ff"},
      {"badge", "#10397f", "#cfe3ff"},
      {"badgeText", "#ffffff", "#0c1b33"},
      {"start", "#0b7a3d", "#4fd08a"},
      {"destination", "#c5221f", "#ff7b72"},
      {"measured", "#8a5a00", "#f0b44c"},
      {"snapped", "#0b6e99", "#58c4ee"},
  };
  return kColours;
}

std::string_view colourOf(std::string_view name, DrawingTheme theme) {
  const std::vector<DrawingColour>& colours = drawingColours();
  const auto found = std::find_if(colours.begin(), colours.end(),
                                  [&](const DrawingColour& each) { return each.name == name; });
  if (found == colours.end()) return "";
  return theme == DrawingTheme::dark ? found->dark : found->light;
}

std::string drawingStyle(DrawingTheme theme) {
  std::string rules = replaced(kRules, theme);
  if (theme != DrawingTheme::variables) return rules;
  return variables() + rules + std::string(kMagnified);
}

}  // namespace KorvaniTools
