#include "Import/Imdf/ImdfUnits.hpp"

#include <algorithm>
#include <utility>

#include "FloorPlan/LocalFrame.hpp"
#include "Import/Imdf/ImdfCategories.hpp"
#include "Support/InputError.hpp"

namespace KorvaniTools {
namespace {

bool isWayUp(CellKind kind) {
  return kind == CellKind::stairs || kind == CellKind::elevator || kind == CellKind::escalator ||
         kind == CellKind::ramp;
}

StepFree stepFreeOf(const ImdfFeature& unit, const std::string& category) {
  if (isForWheelchairs(unit)) return StepFree::yes;
  return category == "steps" ? StepFree::no : StepFree::unknown;
}

void addUnit(ImdfModel& model, const ImdfFeature& feature) {
  const auto level = model.levelOf(feature);
  if (!level) return;
  PlanCell cell;
  cell.source = feature.id();
  cell.polygons = feature.polygons();
  if (!enroll(model.unitIds, feature, model.units.size())) return;
  cell.category = feature.text("category");
  if (!cell.category) feature.note("no category, taken as rooms");
  const std::string category = cell.category.value_or("");
  cell.kind = cellKindOf(category);
  cell.levels = model.ordinalsOf(*level);
  cell.stepFree = stepFreeOf(feature, category);
  if (const auto name = feature.label("name", model.languages)) {
    cell.name = name->text;
    cell.isPlace = cell.kind != CellKind::closed && !isWayUp(cell.kind);
    cell.further = furtherOf(feature, model);
  }
  cell.displayPoint = feature.point("display_point");
  model.units.push_back({feature.id(), category, *level, model.plan.cells.size()});
  model.plan.cells.push_back(std::move(cell));
}

void addWalls(ImdfModel& model, const ImdfFeature& feature) {
  const auto level = model.levelOf(feature);
  if (!level) return;
  for (std::vector<Positions>& rings : feature.polygons()) {
    for (Positions& ring : rings) {
      model.plan.walls.push_back({feature.id(), model.ordinalsOf(*level), std::move(ring)});
    }
  }
}

void addFixture(ImdfModel& model, const ImdfFeature& feature) {
  if (isFixed(feature.text("category").value_or(""))) addWalls(model, feature);
}

/// Where people stand who have come to a kiosk: in front of the middle of its longest side.
Coordinate spotBefore(const Positions& ring) {
  constexpr double kInFront = 0.5;  // metres
  const LocalFrame frame(ring.front());
  const GroundLine line = frame.metres(ring);
  std::size_t longest = 0;
  double area = 0;  // twice; positive counterclockwise
  for (std::size_t i = 0; i + 1 < line.size(); ++i) {
    area += line[i].x * line[i + 1].y - line[i + 1].x * line[i].y;
    const double length = groundDistance(line[i], line[i + 1]);
    if (length > groundDistance(line[longest], line[longest + 1])) longest = i;
  }
  const GroundPoint a = line[longest];
  const GroundPoint b = line[longest + 1];
  const double step = (area < 0 ? -kInFront : kInFront) / groundDistance(a, b);
  const GroundPoint middle = between(a, b, 0.5);
  return frame.coordinate({middle.x + (b.y - a.y) * step, middle.y - (b.x - a.x) * step});
}

void addKiosk(ImdfModel& model, const ImdfFeature& feature) {
  addWalls(model, feature);
  const auto name = feature.label("name", model.languages);
  const auto level = model.levelOf(feature);
  if (!name || !level) return;
  PlanPlace place;
  place.source = feature.id();
  place.name = name->text;
  place.levels = model.ordinalsOf(*level);
  // Not its display point: that is behind the walls.
  place.coordinate = spotBefore(feature.polygons().front().front());
  place.further = furtherOf(feature, model);
  model.plan.places.push_back(std::move(place));
}

}  // namespace

nlohmann::json furtherOf(const ImdfFeature& feature, const ImdfModel& model) {
  nlohmann::json further = nlohmann::json::object();
  if (const auto name = feature.label("name", model.languages)) {
    for (const auto& [language, text] : name->others) further["name:" + language] = text;
  }
  for (const char* key : {"alt_name", "short_name"}) {
    if (const auto name = feature.label(key, model.languages)) further[key] = name->text;
  }
  for (const char* key : {"category", "hours", "phone", "website"}) {
    if (const auto text = feature.text(key)) further[key] = *text;
  }
  return further;
}

void readImdfUnits(ImdfModel& model) {
  const bool present = forEachFeature(model.archive, "unit", Broken::someLeftOut, model.remarks,
                                      [&](const ImdfFeature& feature) { addUnit(model, feature); });
  if (!present) {
    throw InputError(model.archive.pathOf("unit.geojson") + ": found no file, expected units");
  }
  if (model.units.empty()) {
    throw InputError(model.archive.pathOf("unit.geojson") +
                     ": found no units on the archive's levels, expected at least one");
  }
}

void readImdfFixtures(ImdfModel& model) {
  forEachFeature(model.archive, "fixture", Broken::someLeftOut, model.remarks,
                 [&](const ImdfFeature& feature) { addFixture(model, feature); });
  forEachFeature(model.archive, "kiosk", Broken::someLeftOut, model.remarks,
                 [&](const ImdfFeature& feature) { addKiosk(model, feature); });
}

}  // namespace KorvaniTools
