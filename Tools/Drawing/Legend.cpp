#include "Drawing/Legend.hpp"

#include <functional>
#include <set>
#include <string>

#include "Drawing/MarkSvg.hpp"
#include "Drawing/TextWidth.hpp"

namespace KorvaniTools {
namespace {

constexpr double kFontSize = 13;
constexpr double kRowHeight = 26;
constexpr double kMarkWidth = 24;
constexpr double kApart = 18;

/// Writes entries side by side, as many a row as there is room for.
class LegendRows {
 public:
  LegendRows(SvgWriter& svg, ScenePoint at, double width)
      : svg_(svg), left_(at.x), right_(at.x + width), x_(at.x), y_(at.y) {}

  /// @param mark draws the mark around a place
  void add(std::string_view words, const std::function<void(ScenePoint)>& mark) {
    const double needed = kMarkWidth + textWidth(words, kFontSize, false);
    if (x_ > left_ && x_ + needed > right_) {
      x_ = left_;
      y_ += kRowHeight;
    }
    mark({x_ + 10, y_ + 10});
    svg_.textElement("text",
                     {{"class", "note"}, {"x", pixels(x_ + kMarkWidth)}, {"y", pixels(y_ + 14.5)}},
                     words);
    x_ += needed + kApart;
    empty_ = false;
  }

  double end() const { return empty_ ? y_ : y_ + kRowHeight + 8; }

 private:
  SvgWriter& svg_;
  const double left_;
  const double right_;
  double x_;
  double y_;
  bool empty_ = true;
};

/// What occurs on the levels.
struct Kinds {
  std::set<RoomKind> rooms;
  std::set<ConnectionSymbol> symbols;
  bool entrance = false;

  explicit Kinds(const std::vector<const SceneLevel*>& levels) {
    for (const SceneLevel* level : levels) {
      for (const SceneRoom& room : level->rooms) rooms.insert(room.kind);
      for (const SceneConnection& each : level->connections) symbols.insert(each.symbol);
      for (const ScenePlace& place : level->places) entrance = entrance || place.entrance;
    }
  }
};

void addTracks(SvgWriter& svg, LegendRows& rows) {
  for (const bool snapped : {false, true}) {
    rows.add(snapped ? "Position on the map" : "Position as measured", [&](ScenePoint at) {
      openMark(svg, at, snapped ? "track snapped" : "track measured");
      svg.element("circle", {{"r", "4"}});
      closeMark(svg);
    });
  }
}

}  // namespace

double writeLegend(SvgWriter& svg, const Scene& scene, const std::vector<const SceneLevel*>& levels,
                   ScenePoint at, double width) {
  const Kinds kinds(levels);
  LegendRows rows(svg, at, width);
  svg.open("g", {{"class", "legend"}});
  for (const ConnectionSymbol symbol : kinds.symbols) {
    rows.add(wordsFor(symbol), [&](ScenePoint place) {
      openMark(svg, place, "connection " + std::string(nameOf(symbol)));
      svg.element("rect",
                  {{"x", "-8.5"}, {"y", "-8.5"}, {"width", "17"}, {"height", "17"}, {"rx", "4"}});
      writeGlyph(svg, symbol);
      closeMark(svg);
    });
  }
  if (kinds.entrance) {
    rows.add("Entrance", [&](ScenePoint place) {
      openMark(svg, place, "place entrance");
      svg.element("path", {{"class", "dot"}, {"d", "M-6 4.5L0 -6L6 4.5Z"}});
      closeMark(svg);
    });
  }
  for (const RoomKind kind : kinds.rooms) {
    rows.add(wordsFor(kind), [&](ScenePoint place) {
      svg.element("rect", {{"class", "room " + std::string(nameOf(kind))},
                           {"x", pixels(place.x - 9)},
                           {"y", pixels(place.y - 7)},
                           {"width", "18"},
                           {"height", "14"},
                           {"rx", "3"}});
    });
  }
  if (!scene.tracks.empty()) addTracks(svg, rows);
  svg.close();
  return rows.end();
}

}  // namespace KorvaniTools
