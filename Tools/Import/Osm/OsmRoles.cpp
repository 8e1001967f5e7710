#include "Import/Osm/OsmRoles.hpp"

namespace KorvaniTools {
namespace {

bool isWalkable(const OsmTags& tags) {
  return tags.is("highway",
                 {"footway", "corridor", "pedestrian", "path", "steps", "elevator", "ladder"});
}

bool isBarrierLine(const OsmTags& tags) {
  return tags.is("barrier", {"wall", "fence", "hedge", "retaining_wall", "city_wall", "guard_rail",
                             "handrail", "railing", "jersey_barrier", "ticket_barrier"});
}

/// Part of a building, not the outline of a whole one.
bool isPart(const OsmTags& tags) {
  return isIndoor(tags) || (hasLevel(tags) && !tags.has("building"));
}

bool isLiftShaft(const OsmTags& tags) {
  return tags["highway"] == "elevator" || tags["room"] == "elevator" ||
         tags["indoor"] == "elevator" || (tags["building:part"] == "elevator" && isIndoor(tags));
}

bool isStairArea(const OsmTags& tags) {
  return tags.affirms("stairs") || tags.is("room", {"stairs", "stairwell", "staircase"}) ||
         tags["highway"] == "steps" || tags.is("indoor", {"stairs", "staircase"}) ||
         tags["stairwell"] == "flight_of_stairs" ||
         (tags["stairwell"] == "yes" && tags["indoor"] != "corridor");
}

/// Whether a closed outline means the floor inside it, not the line around.
bool isFloor(const OsmTags& tags) {
  if (tags["area"] == "no") return false;
  const bool area = tags["area"] == "yes";
  if (isWalkable(tags) && tags["highway"] != "elevator")
    return area || tags.is("indoor", {"room", "area"});
  if (isLiftShaft(tags)) return true;
  if (tags.is("indoor", {"room", "area", "corridor", "stairs", "staircase"}) || tags.has("room")) {
    return true;
  }
  if (!isPart(tags)) return false;
  return isAmenity(tags) || isPlatform(tags) || isStairArea(tags) ||
         (area && isIndoor(tags) && !tags.has("highway"));
}

/// The line of a platform is where people wait; its outline is not.
bool isWalkingLine(const OsmTags& tags, bool closed) {
  return isWalkable(tags) || tags.is("indoor", {"pathway", "corridor"}) ||
         (!closed && isPlatform(tags));
}

}  // namespace

bool isIndoor(const OsmTags& tags) { return tags.affirms("indoor"); }

bool hasLevel(const OsmTags& tags) { return tags.has("level") || tags.has("repeat_on"); }

bool passesOverOrUnder(const OsmTags& tags) {
  // A passage through a building is on its ground floor, whatever the layer.
  if (isIndoor(tags) || hasLevel(tags) || tags["tunnel"] == "building_passage") return false;
  return tags.affirms("tunnel") || tags.affirms("bridge") ||
         (tags.has("layer") && tags["layer"] != "0");
}

bool isPlatform(const OsmTags& tags) {
  return tags["railway"] == "platform" || tags["public_transport"] == "platform";
}

bool isConveying(const OsmTags& tags) { return tags.affirms("conveying"); }

bool isLift(const OsmTags& tags) { return tags["highway"] == "elevator"; }

bool isClosedToPeople(const OsmTags& tags) {
  if (tags.has("foot")) return tags.is("foot", {"no", "private"});
  return tags.is("access", {"no", "private"});
}

bool isAmenity(const OsmTags& tags) {
  if (tags.is("amenity", {"bench", "waste_basket", "clock", "grit_bin", "waste_disposal", "lounger",
                          "bicycle_parking", "parking", "parking_space", "parking_entrance",
                          "university", "school", "recycling", "smoking_area", "fountain"})) {
    return false;
  }
  if (tags["amenity"] == "vending_machine") {
    return tags["vending"].find("ticket") != std::string_view::npos;
  }
  for (const char* key : {"amenity", "shop", "office", "healthcare", "craft", "leisure"}) {
    if (tags.affirms(key)) return true;
  }
  return tags.is("tourism", {"information", "museum", "gallery", "hotel"}) &&
         !tags.is("information", {"guidepost", "route_marker"});
}

bool isDoor(const OsmTags& tags) {
  return tags.has("door") || tags["indoor"] == "door" || tags.affirms("entrance") ||
         tags["railway"] == "subway_entrance" || tags["railway"] == "train_station_entrance" ||
         tags.is("barrier", {"door", "gate", "swing_gate", "sliding_gate", "kissing_gate",
                             "turnstile", "full-height_turnstile", "entrance", "lift_gate",
                             "wicket_gate", "ticket_barrier", "hampshire_gate", "sally_port"});
}

bool isEntrance(const OsmTags& tags) {
  if (tags.is("railway", {"subway_entrance", "train_station_entrance"})) return true;
  return tags.affirms("entrance") && !tags.is("entrance", {"emergency", "exit", "fire_exit"});
}

WayRole roleOf(const OsmTags& tags, bool closed) {
  if (tags["indoor"] == "wall") return WayRole::wall;
  if (tags["indoor"] == "level") return WayRole::levelOutline;
  if (closed && isFloor(tags)) return WayRole::cell;
  if (isWalkingLine(tags, closed)) return tags["foot"] == "no" ? WayRole::none : WayRole::line;
  if (isBarrierLine(tags) && isPart(tags)) return WayRole::wall;
  if (!closed && isDoor(tags)) return WayRole::door;
  if (isPart(tags) && tags.has("name") && tags.is("tourism", {"artwork", "attraction"})) {
    return WayRole::site;
  }
  return WayRole::none;
}

bool isUnfinished(const OsmTags& tags, bool closed) {
  return !closed && tags.is("indoor", {"room", "area"}) && roleOf(tags, false) == WayRole::none;
}

Interest wayInterest(const OsmTags& tags, bool closed) {
  if (isUnfinished(tags, closed)) return Interest::indoors;
  if (roleOf(tags, closed) == WayRole::none) return Interest::none;
  const bool inside = isIndoor(tags) || hasLevel(tags) || isLiftShaft(tags) || tags.has("room") ||
                      tags["highway"] == "corridor";
  return inside ? Interest::indoors : Interest::nearby;
}

Interest nodeInterest(const OsmTags& tags) {
  if (!nodeMatters(tags)) return Interest::none;
  if (isLift(tags) || isIndoor(tags)) return Interest::indoors;
  if (isDoor(tags) && !tags.has("entrance") && hasLevel(tags)) return Interest::indoors;
  const bool counts = isDoor(tags) ? tags.has("entrance") || tags.has("railway") : hasLevel(tags);
  return counts ? Interest::nearby : Interest::none;
}

bool nodeMatters(const OsmTags& tags) { return isDoor(tags) || isLift(tags) || isAmenity(tags); }

CellKind cellKindOf(const OsmTags& tags) {
  if (isLiftShaft(tags)) return CellKind::elevator;
  if (isStairArea(tags)) return isConveying(tags) ? CellKind::escalator : CellKind::stairs;
  if (tags.is("room", {"shaft", "void"})) return CellKind::closed;
  if (tags["indoor"] == "corridor") return CellKind::corridor;
  if (tags["indoor"] == "room") return CellKind::room;
  if (tags["indoor"] == "area" || tags.has("highway") || isPlatform(tags)) {
    return tags.affirms("ramp") ? CellKind::ramp : CellKind::area;
  }
  return tags.has("room") || isAmenity(tags) ? CellKind::room : CellKind::area;
}

bool isWalled(const OsmTags& tags, CellKind kind) {
  switch (kind) {
    case CellKind::room:
    case CellKind::elevator:
    case CellKind::closed:
      return tags["wall"] != "no";
    case CellKind::stairs:
      return tags["indoor"] == "room" || tags.has("room");
    default:
      return false;
  }
}

}  // namespace KorvaniTools
