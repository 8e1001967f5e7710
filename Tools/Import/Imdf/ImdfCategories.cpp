#include "Import/Imdf/ImdfCategories.hpp"

#include <map>
#include <set>

namespace KorvaniTools {
namespace {

using Categories = std::set<std::string>;

}  // namespace

CellKind cellKindOf(const std::string& category) {
  static const std::map<std::string, CellKind> kinds = {
      // Solid, or a hole in the floor.
      {"brick", CellKind::closed},
      {"column", CellKind::closed},
      {"concrete", CellKind::closed},
      {"drywall", CellKind::closed},
      {"glass", CellKind::closed},
      {"opentobelow", CellKind::closed},
      {"structure", CellKind::closed},
      {"vegetation", CellKind::closed},
      {"wood", CellKind::closed},
      // Routes must not cut through what visitors may not enter.
      {"nonpublic", CellKind::closed},
      {"elevator", CellKind::elevator},
      {"escalator", CellKind::escalator},
      {"ramp", CellKind::ramp},
      {"stairs", CellKind::stairs},
      {"steps", CellKind::stairs},
      {"footbridge", CellKind::corridor},
      {"lobby", CellKind::corridor},
      {"movingwalkway", CellKind::corridor},
      {"walkway", CellKind::corridor},
      {"walkway.island", CellKind::corridor},
      {"fieldofplay", CellKind::area},
      {"parking", CellKind::area},
      {"platform", CellKind::area},
      {"road", CellKind::area},
      {"terrace", CellKind::area},
      {"unenclosedarea", CellKind::area},
  };
  const auto found = kinds.find(category);
  return found == kinds.end() ? CellKind::room : found->second;
}

bool isRestroom(const std::string& category) {
  return category == "restroom" || category.rfind("restroom.", 0) == 0;
}

bool isSteps(const std::string& category) {
  static const Categories steps = {"escalator", "stairs", "steps"};
  return steps.contains(category);
}

std::optional<ConnectionKind> connectionOf(const std::string& category) {
  static const std::map<std::string, ConnectionKind> kinds = {
      {"elevator", ConnectionKind::elevator},
      {"escalator", ConnectionKind::escalator},
      {"movingwalkway", ConnectionKind::travelator},
      {"ramp", ConnectionKind::ramp},
      {"stairs", ConnectionKind::stairs},
      {"steps", ConnectionKind::stairs},
  };
  const auto found = kinds.find(category);
  return found == kinds.end() ? std::nullopt : std::optional(found->second);
}

bool isFixed(const std::string& fixtureCategory) { return fixtureCategory != "furniture"; }

bool isPassable(const std::string& openingCategory) { return openingCategory != "emergencyexit"; }

bool isForVisitors(const std::string& openingCategory) {
  static const Categories others = {"automobile", "bicycle", "emergencyexit", "service"};
  return !others.contains(openingCategory);
}

bool isNarrow(const std::string& doorType) {
  static const Categories narrow = {"revolving", "turnstile", "turnstile.fullheight",
                                    "turnstile.waistheight"};
  return narrow.contains(doorType);
}

bool isDestination(const std::string& amenityCategory) {
  static const Categories ways = {"elevator", "escalator", "movingwalkway", "ramp",
                                  "stairs",   "stairlift", "steps"};
  return !ways.contains(amenityCategory);
}

}  // namespace KorvaniTools
