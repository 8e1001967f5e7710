#include "Drawing/MarkSvg.hpp"

#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

struct Glyph {
  std::string_view lines;  ///< a path to stroke
  std::string_view solid;  ///< a path to fill; may be empty
};

/// In the order of `ConnectionSymbol`.
constexpr std::array<Glyph, 6> kGlyphs{{
    {"M-3 5V-4M-5.5 -1.5L-3 -4.5L-.5 -1.5M3 -5V4M.5 1.5L3 4.5L5.5 1.5", ""},
    {"M-6 5H-2.5V1.5H1V-2H4.5V-5.5H6", ""},
    {"M-6.2 4.2H-3.2L3.2 -2.6H6.2M-4.4 .6L1.6 -5.8", "M3 4.6L6.6 4.6L4.8 1.4Z"},
    {"M-5 -6H5V6H-5Z", "M-2.8 -1L0 -4.4L2.8 -1ZM-2.8 1.2L0 4.6L2.8 1.2Z"},
    {"M-6.5 4.5H6.5V-3.5Z", ""},
    {"M-3 -6V6M3 -6V6M-3 -3.5H3M-3 0H3M-3 3.5H3", ""},
}};

constexpr double kArrivalRadius = 9;
constexpr double kDartBesideDisc = kDiscRadius + 18;  // from the disc's middle to the dart's point

std::string translation(ScenePoint at) {
  return "translate(" + pixels(at.x) + ' ' + pixels(at.y) + ')';
}

std::string joined(const std::vector<std::int64_t>& levels) {
  std::string text;
  for (const std::int64_t level : levels) {
    text += (text.empty() ? "" : ",") + std::to_string(level);
  }
  return text;
}

void writeDisc(SvgWriter& svg, ConnectionSymbol symbol, double radius) {
  svg.element("circle", {{"class", "disc"}, {"r", pixels(radius)}});
  writeGlyph(svg, symbol);
}

}  // namespace

void openMark(SvgWriter& svg, ScenePoint at, std::string_view classes, SvgWriter::Attributes data,
              double zoom) {
  SvgWriter::Attributes attributes{{"class", std::string(classes)}, {"transform", translation(at)}};
  attributes.insert(attributes.end(), data.begin(), data.end());
  if (zoom > 1) attributes.emplace_back("data-zoom", pixels(zoom));
  svg.open("g", attributes);
  svg.open("g", {{"class", "fixed"}});
}

void closeMark(SvgWriter& svg) {
  svg.close();
  svg.close();
}

void writeGlyph(SvgWriter& svg, ConnectionSymbol symbol) {
  const Glyph& glyph = kGlyphs[static_cast<std::size_t>(symbol)];
  svg.element("path", {{"class", "glyph"}, {"d", std::string(glyph.lines)}});
  if (glyph.solid.empty()) return;
  svg.element("path", {{"class", "glyph solid"}, {"d", std::string(glyph.solid)}});
}

void writeConnection(SvgWriter& svg, const SceneConnection& connection, ScenePoint at,
                     double zoom) {
  const std::string side = pixels(2 * kConnectionHalf);
  const std::string corner = pixels(-kConnectionHalf);
  openMark(svg, at, "connection " + std::string(nameOf(connection.symbol)),
           {{"data-node", std::to_string(connection.node)},
            {"data-kind", connection.type},
            {"data-levels", joined(connection.levels)}},
           zoom);
  svg.element("rect",
              {{"x", corner}, {"y", corner}, {"width", side}, {"height", side}, {"rx", "4"}});
  writeGlyph(svg, connection.symbol);
  closeMark(svg);
}

void writePlace(SvgWriter& svg, const ScenePlace& place, ScenePoint at) {
  const std::string kind = place.entrance ? "entrance" : std::string(nameOf(place.kind));
  openMark(
      svg, at, "place " + kind,
      {{"data-place", place.name}, {"data-kind", place.entrance ? "entrance" : place.category}});
  if (place.entrance) {
    svg.element("path", {{"class", "dot"}, {"d", "M-6 4.5L0 -6L6 4.5Z"}});
  } else {
    svg.element("circle", {{"class", "dot"}, {"r", pixels(kDotRadius)}});
  }
  closeMark(svg);
}

void writeArrow(SvgWriter& svg, const RouteArrow& arrow, ScenePoint at, bool besideDisc) {
  std::string classes = "arrow " + arrow.kind;
  if (arrow.changesLevel()) classes.append(" ").append(nameOf(arrow.symbol));
  openMark(svg, at, classes,
           {{"data-text", arrow.text}, {"data-heading", decimals(arrow.heading)}});
  if (arrow.changesLevel()) {
    writeDisc(svg, arrow.symbol, kArrivalRadius);
  } else {
    const std::string away =
        besideDisc ? " translate(0 " + pixels(-kDartBesideDisc) + ')' : std::string();
    svg.element("path", {{"class", "dart"},
                         {"d", "M0 0L8 16L0 12L-8 16Z"},
                         {"transform", "rotate(" + pixels(arrow.heading) + ')' + away}});
  }
  closeMark(svg);
}

void writeChange(SvgWriter& svg, const RouteChange& change, ScenePoint at, bool arriving) {
  openMark(svg, at, (arriving ? "change arrival " : "change ") + std::string(nameOf(change.symbol)),
           {{"data-kind", change.type},
            {"data-from", std::to_string(change.from)},
            {"data-to", std::to_string(change.to)}});
  writeDisc(svg, change.symbol, arriving ? kArrivalRadius : kDiscRadius);
  closeMark(svg);
}

void writeStart(SvgWriter& svg, const RouteEnd& end, ScenePoint at, bool aroundDisc) {
  const double beside = aroundDisc ? kStartRadiusAroundDisc - kStartRadius : 0;
  openMark(svg, at, "start", {{"data-place", end.name}});
  svg.element("circle", {{"class", "ring"}, {"r", pixels(7 + beside)}});
  svg.element("circle", {{"r", pixels(6.5 + beside)}});
  closeMark(svg);
}

void writeDestination(SvgWriter& svg, const RouteEnd& end, ScenePoint at) {
  openMark(svg, at, "destination", {{"data-place", end.name}});
  svg.element("path",
              {{"d", "M0 0C-2.5 -7 -11 -11 -11 -19A11 11 0 1 1 11 -19C11 -11 2.5 -7 0 0Z"}});
  svg.element("circle", {{"cy", "-19"}, {"r", "4.2"}});
  closeMark(svg);
}

}  // namespace KorvaniTools
