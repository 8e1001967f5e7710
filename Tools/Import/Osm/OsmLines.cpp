#include "Import/Osm/OsmLines.hpp"

#include <cstdlib>
#include <string>

#include "Import/Osm/OsmRoles.hpp"

namespace KorvaniTools {
namespace {

ConnectionKind kindOf(const OsmTags& tags) {
  if (tags["highway"] == "elevator") return ConnectionKind::elevator;
  if (tags["highway"] == "ladder" || tags["ladder"] == "yes") return ConnectionKind::ladder;
  if (tags["highway"] == "steps") {
    return isConveying(tags) ? ConnectionKind::escalator : ConnectionKind::stairs;
  }
  if (isConveying(tags)) return ConnectionKind::travelator;
  return tags.affirms("ramp") || tags.affirms("ramp:wheelchair") ? ConnectionKind::ramp
                                                                 : ConnectionKind::path;
}

bool isYes(const OsmTags& tags, const char* key) { return tags.is(key, {"yes", "1", "true"}); }

bool isReverse(const OsmTags& tags, const char* key) { return tags.is(key, {"-1", "reverse"}); }

/// The key that says in which direction people on foot may go. On paths and in pedestrian zones
/// a plain `oneway` is for vehicles.
const char* onewayKey(const OsmTags& tags) {
  if (tags.has("oneway:foot")) return "oneway:foot";
  return tags.is("highway", {"path", "pedestrian"}) ? nullptr : "oneway";
}

void setDirection(PlanLine& line, const OsmTags& tags) {
  if (isConveying(tags)) {
    line.backward = tags["conveying"] == "backward";
    line.oneway = line.backward || tags["conveying"] == "forward";
    if (line.oneway) return;
  }
  const char* const key = onewayKey(tags);
  if (key == nullptr) return;
  line.backward = isReverse(tags, key);
  line.oneway = line.backward || isYes(tags, key);
}

/// 1 when it goes up in the way's direction, -1 when it goes down.
int inclineOf(const OsmTags& tags) {
  if (tags["incline"] == "up") return 1;
  if (tags["incline"] == "down") return -1;
  const double slope = std::strtod(std::string(tags["incline"]).c_str(), nullptr);
  return slope > 0 ? 1 : (slope < 0 ? -1 : 0);
}

}  // namespace

StepFree stepFreeOf(const OsmTags& tags) {
  if (tags.is("wheelchair", {"yes", "designated"})) return StepFree::yes;
  return tags["wheelchair"] == "no" ? StepFree::no : StepFree::unknown;
}

PlanLine lineOf(const OsmTags& tags) {
  PlanLine line;
  line.kind = kindOf(tags);
  setDirection(line, tags);
  line.incline = inclineOf(tags);
  line.stepFree = stepFreeOf(tags);
  if (line.stepFree == StepFree::unknown && tags.affirms("ramp:wheelchair")) {
    line.stepFree = StepFree::yes;
  }
  return line;
}

}  // namespace KorvaniTools
