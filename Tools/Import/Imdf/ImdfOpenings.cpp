#include "Import/Imdf/ImdfOpenings.hpp"

#include <utility>

#include "Import/Imdf/ImdfCategories.hpp"

namespace KorvaniTools {
namespace {

/// The type in the `door` object: "swinging", "revolving", ...
std::string doorTypeOf(const ImdfFeature& opening) {
  const Json* door = opening.find("door");
  if (door == nullptr) return "";
  if (door->is_object() && door->value("type", Json()).is_null()) return "";
  if (door->is_object() && door->at("type").is_string()) return door->at("type").get<std::string>();
  opening.note("door is not an object with a type, ignored");
  return "";
}

StepFree stepFreeOf(const ImdfFeature& opening) {
  if (isForWheelchairs(opening)) return StepFree::yes;
  return isNarrow(doorTypeOf(opening)) ? StepFree::no : StepFree::unknown;
}

/// @param along the units that the opening lies on
bool leadsOutdoors(const ImdfModel& model, const ImdfShapes& shapes, const ImdfOpening& opening,
                   const std::vector<std::size_t>& along) {
  const ImdfLevel& level = model.levels[opening.level];
  return !level.outdoor && along.size() == 1 &&
         shapes.isOnOutlineOf(level, model.plan.doors[opening.door].positions);
}

/// Places are where routes begin and end, also those from and to the street.
void addEntrance(FloorPlan& plan, const PlanDoor& door) {
  PlanPlace place;
  place.source = door.source;
  place.name = door.name.value_or("Entrance");
  place.levels = door.levels;
  place.coordinate = middleOf(door.positions);
  place.entrance = true;
  plan.places.push_back(std::move(place));
}

void addOpening(ImdfModel& model, const ImdfShapes& shapes, const ImdfFeature& feature) {
  const auto level = model.levelOf(feature);
  if (!level) return;
  PlanDoor door;
  door.source = feature.id();
  door.positions = feature.line();
  if (!enroll(model.openingIds, feature, model.openings.size())) return;
  door.levels = model.ordinalsOf(*level);
  door.stepFree = stepFreeOf(feature);
  if (const auto name = feature.label("name", model.languages)) door.name = name->text;
  const std::string category = feature.text("category").value_or("");
  door.passable = isPassable(category);
  const ImdfOpening opening{feature.id(), *level, model.plan.doors.size()};
  model.openings.push_back(opening);
  model.plan.doors.push_back(std::move(door));

  PlanDoor& added = model.plan.doors.back();
  const std::vector<std::size_t> along = shapes.unitsAlong(added.positions, *level);
  if (along.empty()) feature.note("on no unit's outline, opens nothing");
  added.entrance = isForVisitors(category) && (category == "pedestrian.principal" ||
                                               leadsOutdoors(model, shapes, opening, along));
  if (added.entrance) addEntrance(model.plan, added);
}

}  // namespace

void readImdfOpenings(ImdfModel& model, const ImdfShapes& shapes) {
  forEachFeature(model.archive, "opening", Broken::someLeftOut, model.remarks,
                 [&](const ImdfFeature& feature) { addOpening(model, shapes, feature); });
}

}  // namespace KorvaniTools
