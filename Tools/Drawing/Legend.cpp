#include "Drawing/Legend.hpp"

#include <algorithm>
#include <functional>
#include <set>

#include "Drawing/MarkSvg.hpp"
#include "Drawing/TextWidth.hpp"
#include "Drawing/TrackSvg.hpp"

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

  void add(const LegendEntry& entry) {
    const double needed = kMarkWidth + textWidth(entry.words, kFontSize, false);
    if (x_ > left_ && x_ + needed > right_) {
      x_ = left_;
      y_ += kRowHeight;
    }
    svg_.open("g", {{"transform", "translate(" + pixels(x_ + 10) + ' ' + pixels(y_ + 10) + ')'}});
    svg_.raw(entry.mark);
    svg_.close();
    svg_.textElement("text",
                     {{"class", "note"}, {"x", pixels(x_ + kMarkWidth)}, {"y", pixels(y_ + 14.5)}},
                     entry.words);
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

/// @param draw draws the mark around the origin
LegendEntry entry(std::string words, const std::function<void(SvgWriter&)>& draw) {
  SvgWriter svg;
  draw(svg);
  return {std::move(words), svg.take()};
}

LegendEntry swatch(std::string words, const std::string& classes) {
  return entry(std::move(words), [&](SvgWriter& svg) {
    svg.element("rect", {{"class", classes},
                         {"x", "-9"},
                         {"y", "-7"},
                         {"width", "18"},
                         {"height", "14"},
                         {"rx", "3"}});
  });
}

LegendEntry dot(std::string words, std::string_view classes) {
  return entry(std::move(words), [&](SvgWriter& svg) {
    openMark(svg, {0, 0}, classes);
    svg.element("circle", {{"r", "4"}});
    closeMark(svg);
  });
}

LegendEntry symbolEntry(ConnectionSymbol symbol) {
  return entry(std::string(wordsFor(symbol)), [&](SvgWriter& svg) {
    openMark(svg, {0, 0}, "connection " + std::string(nameOf(symbol)));
    svg.element("rect",
                {{"x", "-8.5"}, {"y", "-8.5"}, {"width", "17"}, {"height", "17"}, {"rx", "4"}});
    writeGlyph(svg, symbol);
    closeMark(svg);
  });
}

LegendEntry entranceEntry() {
  return entry("Entrance", [](SvgWriter& svg) {
    openMark(svg, {0, 0}, "place entrance");
    svg.element("path", {{"class", "dot"}, {"d", "M-6 4.5L0 -6L6 4.5Z"}});
    closeMark(svg);
  });
}

bool hasJumps(const SceneTrack& track) { return !track.denied.empty(); }

void addTracks(const Scene& scene, LegendRows& rows) {
  if (scene.tracks.empty()) return;
  rows.add(dot("Position as measured", "track measured"));
  rows.add(dot("Position on the map", "track snapped"));
  if (!std::any_of(scene.tracks.begin(), scene.tracks.end(), hasJumps)) return;
  rows.add(entry("Jump that was denied", [](SvgWriter& svg) { writeDenied(svg, {0, 0}); }));
}

}  // namespace

std::vector<LegendEntry> legendEntries(const std::vector<const SceneLevel*>& levels) {
  const Kinds kinds(levels);
  std::vector<LegendEntry> entries;
  for (const ConnectionSymbol symbol : kinds.symbols) entries.push_back(symbolEntry(symbol));
  if (kinds.entrance) entries.push_back(entranceEntry());
  for (const RoomKind kind : kinds.rooms) {
    entries.push_back(swatch(std::string(wordsFor(kind)), "room " + std::string(nameOf(kind))));
  }
  return entries;
}

double writeLegend(SvgWriter& svg, const Scene& scene, const std::vector<const SceneLevel*>& levels,
                   const SceneLevel* silhouette, ScenePoint at, double width) {
  LegendRows rows(svg, at, width);
  svg.open("g", {{"class", "legend"}});
  for (const LegendEntry& each : legendEntries(levels)) rows.add(each);
  if (silhouette != nullptr) {
    rows.add(swatch("Where level " + silhouette->number + " lies", "ghost"));
  }
  addTracks(scene, rows);
  svg.close();
  return rows.end();
}

}  // namespace KorvaniTools
