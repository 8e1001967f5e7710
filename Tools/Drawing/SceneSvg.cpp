#include "Drawing/SceneSvg.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "Drawing/Legend.hpp"
#include "Drawing/LevelSvg.hpp"
#include "Drawing/SheetPlans.hpp"
#include "Drawing/SvgWriter.hpp"
#include "Drawing/TextWidth.hpp"
#include "Support/InputError.hpp"
#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

// All in pixels.
constexpr double kPadding = 36;
constexpr double kGap = 28;
constexpr double kTitleHeight = 30;
constexpr double kHeadingHeight = 40;
constexpr double kNoteHeight = 20;
constexpr double kLeastWidth = 560;
constexpr double kRowWidth = 1400;    // of plans side by side
constexpr double kColumnWidth = 430;  // of instructions
constexpr double kScaleBarPixels = 140;

/// The levels to be drawn, the highest first.
std::vector<const SceneLevel*> chosenLevels(const Scene& scene, const SceneSvgOptions& options) {
  std::vector<const SceneLevel*> chosen;
  for (const SceneLevel& level : scene.levels) {
    if (!options.level || level.level == *options.level) chosen.push_back(&level);
  }
  std::reverse(chosen.begin(), chosen.end());
  if (!chosen.empty() || !options.level) return chosen;
  std::string known;
  for (const SceneLevel& level : scene.levels) {
    known += (known.empty() ? "" : ", ") + std::to_string(level.level);
  }
  throw InputError("there is no level " + std::to_string(*options.level) + " to draw; expected " +
                   (known.empty() ? "a building that is not empty" : "one of " + known));
}

/// The level whose silhouette lies below the others: the one with the most floor drawn.
const SceneLevel* groundOf(const Scene& scene) {
  const SceneLevel* ground = nullptr;
  const auto parts = [](const SceneLevel& level) { return level.rooms.size(); };
  const auto walls = [](const SceneLevel& level) { return level.walls.size(); };
  for (const SceneLevel& level : scene.levels) {
    if (ground == nullptr || parts(level) > parts(*ground) ||
        (parts(level) == parts(*ground) && walls(level) > walls(*ground))) {
      ground = &level;
    }
  }
  return ground;
}

/// Plans side by side.
struct PlanRow {
  std::vector<const SheetPlan*> plans;
  double width = 0;  ///< pixels
  double height = 0;
};

/// Draws the whole sheet from top to bottom.
class Sheet {
 public:
  Sheet(const Scene& scene, const SceneSvgOptions& options)
      : scene_(scene),
        options_(options),
        levels_(chosenLevels(scene, options)),
        plans_(sheetPlans(scene, levels_, options.level.has_value())),
        ground_(groundOf(scene)),
        rows_(filledRows()),
        width_(widestRow() + 2 * kPadding) {}

  std::string draw() {
    double y = drawHeader();
    y = drawLevels(y);
    y = drawInstructions(y);
    y = writeLegend(svg_, scene_, levels_, silhouette(), {kPadding, y}, width_ - 2 * kPadding);
    y = drawAttribution(y);
    return finished(svg_.take(), y + kPadding - kGap / 2);
  }

 private:
  /// Whether all plans show the same part of the building.
  bool hasOneScale() const {
    return std::all_of(plans_.begin(), plans_.end(),
                       [&](const SheetPlan& plan) { return plan.scale == plans_.front().scale; });
  }

  double widestPlan() const {
    double widest = 0;
    for (const SheetPlan& plan : plans_) widest = std::max(widest, plan.width());
    return widest;
  }

  /// As many plans side by side as are about as wide as one that is wide.
  std::vector<PlanRow> filledRows() const {
    const double room = std::max(kRowWidth + kGap, widestPlan());
    std::vector<PlanRow> rows;
    for (const SheetPlan& plan : plans_) {
      if (rows.empty() || rows.back().width + kGap + plan.width() > room) rows.emplace_back();
      PlanRow& row = rows.back();
      row.width += (row.plans.empty() ? 0 : kGap) + plan.width();
      row.height = std::max(row.height, plan.height());
      row.plans.push_back(&plan);
    }
    return rows;
  }

  double widestRow() const {
    double widest = kLeastWidth;
    for (const PlanRow& row : rows_) widest = std::max(widest, row.width);
    return widest;
  }

  void writeText(std::string_view classes, double x, double y, std::string_view text) {
    svg_.textElement("text", {{"class", std::string(classes)}, {"x", pixels(x)}, {"y", pixels(y)}},
                     text);
  }

  std::string heading() const { return scene_.name.empty() ? "Floor plan" : scene_.name; }

  std::string routeWords() const {
    if (!scene_.route) return "";
    const DrawnRoute& route = *scene_.route;
    const std::string ends = "From " + route.start.name + " to " + route.destination.name + ": ";
    if (route.direct) return ends + "no way found, " + metres(route.distance) + " straight on";
    return ends + metres(route.distance) + ", about " + duration(route.travelTime);
  }

  double drawHeader() {
    constexpr double kCorner = 200;
    const double room = width_ - 2 * kPadding - kCorner;
    double y = kPadding + 24;
    writeText("heading", kPadding, y, shortened(heading(), 24, true, room));
    y += kNoteHeight + 6;
    for (const std::string& line : wrapped(routeWords(), 13, false, room)) {
      if (!line.empty()) writeText("note", kPadding, y, line);
      y += kNoteHeight;
    }
    const double scale = plans_.empty() ? 1 : plans_.front().scale;
    if (hasOneScale()) drawScale(scale, width_ - kPadding - 40, kPadding + 26);
    svg_.open("g", {{"transform", "translate(" + pixels(width_ - kPadding - 28) + ' ' +
                                      pixels(kPadding - 6) + ')'}});
    svg_.raw(northArrowSvg());
    svg_.close();
    return std::max(y, kPadding + kHeadingHeight + kNoteHeight);
  }

  /// The scale bar, whose lower right end is there.
  void drawScale(double scale, double right, double y) {
    const ScaleBar bar = scaleBarFor(scale, kScaleBarPixels);
    const std::string left = pixels(right - bar.pixels);
    svg_.open("g", {{"class", "scale"}, {"data-metres", decimals(bar.metres)}});
    svg_.element("path", {{"d", 'M' + left + ' ' + pixels(y - 6) + 'V' + pixels(y) + 'H' +
                                    pixels(right) + 'V' + pixels(y - 6)}});
    svg_.textElement(
        "text",
        {{"x", pixels(right - bar.pixels / 2)}, {"y", pixels(y - 8)}, {"text-anchor", "middle"}},
        bar.words);
    svg_.close();
  }

  double drawLevels(double y) {
    if (levels_.empty()) {
      writeText("note", kPadding, y + kNoteHeight, "There is nothing to draw in this building.");
      return y + 2 * kNoteHeight + kGap;
    }
    for (const PlanRow& row : rows_) {
      double x = kPadding;
      for (const SheetPlan* plan : row.plans) {
        drawPlan(*plan, x, y);
        x += plan->width() + kGap;
      }
      y += kTitleHeight + row.height + kGap;
    }
    return y;
  }

  void drawPlan(const SheetPlan& plan, double x, double y) {
    const bool hasBar = !hasOneScale();
    const std::string title = plan.level->title + (plan.detail ? ", its rooms enlarged" : "");
    const double room = plan.width() - (hasBar ? kScaleBarPixels + kGap : 0);
    writeText("title", x, y + 18, shortened(title, 16, true, std::max(room, 200.0)));
    if (hasBar) drawScale(plan.scale, x + plan.width(), y + kTitleHeight - 6);
    svg_.open("g",
              {{"transform", "translate(" + pixels(x) + ' ' + pixels(y + kTitleHeight) + ')'}});
    svg_.element("rect", {{"class", "panel"},
                          {"width", pixels(plan.width())},
                          {"height", pixels(plan.height())},
                          {"rx", "10"}});
    svg_.open("svg", {{"width", pixels(plan.width())},
                      {"height", pixels(plan.height())},
                      {"viewBox", pixels(plan.window.left * plan.scale) + ' ' +
                                      pixels(plan.window.top * plan.scale) + ' ' +
                                      pixels(plan.width()) + ' ' + pixels(plan.height())}});
    drawGhost(plan);
    LevelSvgOptions drawing;
    drawing.pixelsPerMetre = plan.scale;
    drawing.graph = options_.graph;
    drawing.window = plan.window;
    svg_.raw(levelSvg(scene_, *plan.level, drawing));
    svg_.close();
    svg_.close();
  }

  /// The silhouette below a level that is not its own.
  void drawGhost(const SheetPlan& plan) {
    if (plan.level == ground_) return;
    const double magnified = plan.scale / plans_.front().scale;
    svg_.element("use",
                 {{"class", "ghost"},
                  {"href", "#ghost"},
                  {"transform", magnified == 1 ? "" : "scale(" + decimals(magnified) + ')'}});
  }

  /// The level whose silhouette is seen below others of the sheet; null when none is.
  const SceneLevel* silhouette() const {
    const bool shown = std::any_of(levels_.begin(), levels_.end(),
                                   [&](const SceneLevel* level) { return level != ground_; });
    return shown && !silhouetteSvg(*ground_, plans_.front().scale).empty() ? ground_ : nullptr;
  }

  /// The silhouette that the levels refer to.
  void defineGhost(SvgWriter& file) const {
    if (ground_ == nullptr || plans_.empty()) return;
    file.open("defs");
    file.open("g", {{"id", "ghost"}});
    file.raw(silhouetteSvg(*ground_, plans_.front().scale));
    file.close();
    file.close();
  }

  double drawInstructions(double y) {
    if (!scene_.route || scene_.route->instructions.empty()) return y;
    writeText("title", kPadding, y + 14, "The way");
    y += kTitleHeight;
    std::vector<std::string> lines;
    std::size_t number = 0;
    for (const std::string& instruction : scene_.route->instructions) {
      const std::string text = std::to_string(++number) + ". " + instruction;
      for (std::string& line : wrapped(text, 13, false, kColumnWidth)) {
        lines.push_back(std::move(line));
      }
    }
    const double room = width_ - 2 * kPadding;
    const auto columns =
        static_cast<std::size_t>(std::max(1.0, std::floor(room / (kColumnWidth + kGap))));
    const std::size_t rows = (lines.size() + columns - 1) / columns;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const std::size_t column = i / rows;
      const double x = kPadding + static_cast<double>(column) * (kColumnWidth + kGap);
      writeText("note", x, y + 10 + static_cast<double>(i % rows) * kNoteHeight, lines[i]);
    }
    return y + static_cast<double>(rows) * kNoteHeight + kGap / 2;
  }

  double drawAttribution(double y) {
    std::string text = scene_.attribution.empty() ? "" : "Map data: " + scene_.attribution;
    if (!scene_.licence.empty() && text.find(scene_.licence) == std::string::npos) {
      text += (text.empty() ? "Licence: " : " \u00b7 Licence: ") + scene_.licence;
    }
    if (text.empty()) return y;
    for (const std::string& line : wrapped(text, 13, false, width_ - 2 * kPadding)) {
      writeText("note attribution", kPadding, y + 10, line);
      y += kNoteHeight;
    }
    return y;
  }

  std::string description() const {
    std::string text;
    for (const SceneLevel* level : levels_) text += (text.empty() ? "" : ", ") + level->title;
    text = levels_.empty() ? "An empty building." : "Floor plan of " + text + '.';
    if (scene_.route) {
      text += ' ' + routeWords() + '.';
      for (const std::string& instruction : scene_.route->instructions)
        text += ' ' + instruction + '.';
    }
    return text;
  }

  std::string finished(const std::string& contents, double height) const {
    SvgWriter file;
    file.raw("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
    file.open("svg", {{"xmlns", "http://www.w3.org/2000/svg"},
                      {"class", "plan"},
                      {"width", pixels(width_)},
                      {"height", pixels(height)},
                      {"viewBox", "0 0 " + pixels(width_) + ' ' + pixels(height)},
                      {"role", "img"},
                      {"aria-labelledby", "plan-title plan-description"}});
    file.textElement("title", {{"id", "plan-title"}}, heading());
    file.textElement("desc", {{"id", "plan-description"}}, description());
    file.textElement("style", {}, drawingStyle(options_.theme));
    defineGhost(file);
    file.element("rect", {{"class", "paper"}, {"width", "100%"}, {"height", "100%"}});
    file.raw(contents);
    file.close();
    return file.take();
  }

  const Scene& scene_;
  const SceneSvgOptions& options_;
  const std::vector<const SceneLevel*> levels_;
  const std::vector<SheetPlan> plans_;
  const SceneLevel* const ground_;
  const std::vector<PlanRow> rows_;
  const double width_;
  SvgWriter svg_;
};

std::string lengthWords(double metres) {
  if (metres >= 1000) return decimals(metres / 1000) + " km";
  if (metres >= 1) return decimals(metres) + " m";
  if (metres >= 0.01) return decimals(metres * 100) + " cm";
  return decimals(metres * 1000) + " mm";
}

}  // namespace

std::string sceneSvg(const Scene& scene, const SceneSvgOptions& options) {
  return Sheet(scene, options).draw();
}

std::string northArrowSvg() {
  SvgWriter svg;
  svg.open("g", {{"class", "north"}});
  svg.element("path", {{"class", "needle"}, {"d", "M14 0L22 24L14 19L6 24Z"}});
  svg.textElement("text", {{"x", "14"}, {"y", "36"}, {"text-anchor", "middle"}}, "N");
  svg.close();
  return svg.take();
}

ScaleBar scaleBarFor(double pixelsPerMetre, double pixels) {
  const double longest = pixels / pixelsPerMetre;
  const double power = std::pow(10.0, std::floor(std::log10(longest)));
  double metres = power;
  for (const double step : {2.0, 5.0}) {
    if (step * power <= longest) metres = step * power;
  }
  return {metres, metres * pixelsPerMetre, lengthWords(metres)};
}

}  // namespace KorvaniTools
