#include "Import/Imdf/ImdfLevels.hpp"

#include <algorithm>
#include <set>

#include "Building/BuildingError.hpp"
#include "Support/InputError.hpp"

namespace KorvaniTools {
namespace {

using BuildingNames = std::map<std::string, std::string>;

std::optional<std::string> readVenueName(ImdfModel& model) {
  std::optional<std::string> name;
  forEachFeature(model.archive, "venue", Broken::someLeftOut, model.remarks,
                 [&](const ImdfFeature& venue) {
                   const auto label = venue.label("name", model.languages);
                   if (label && !name) name = label->text;
                 });
  return name;
}

/// Also takes the first building's name for the plan when the venue has none.
BuildingNames readBuildingNames(ImdfModel& model) {
  BuildingNames names;
  forEachFeature(model.archive, "building", Broken::someLeftOut, model.remarks,
                 [&](const ImdfFeature& building) {
                   const auto label = building.label("name", model.languages);
                   if (!label) return;
                   names.emplace(building.id(), label->text);
                   if (!model.plan.name) model.plan.name = label->text;
                 });
  return names;
}

std::int64_t ordinalOf(const Fields& fields) {
  const std::int64_t ordinal = fields.requiredInteger("ordinal");
  if (ordinal < kLowestLevel || ordinal > kHighestLevel) {
    fields.fail("ordinal", std::to_string(ordinal), "an integer from -1000 to 1000");
  }
  return ordinal;
}

/// Only entrances are looked for with it, so that a level without one is not lost.
Polygons outlineOf(const ImdfFeature& level) {
  try {
    return level.polygons();
  } catch (const BuildingError&) {
    level.note("no polygon as its geometry, ignored");
    return {};
  }
}

void addLevel(ImdfModel& model, const ImdfFeature& feature) {
  ImdfLevel level;
  level.id = feature.id();
  level.ordinal = ordinalOf(feature.fields());
  level.outdoor = feature.boolean("outdoor").value_or(false);
  level.buildings = feature.texts("building_ids");
  level.name = feature.label("name", model.languages);
  if (!level.name) level.name = feature.label("short_name", model.languages);
  level.outline = outlineOf(feature);
  if (!model.levelIds.emplace(level.id, model.levels.size()).second) {
    feature.fields().place().fail("id of a level", inQuotes(level.id), "an id of its own");
  }
  model.levels.push_back(std::move(level));
}

/// "Level 1 (North wing)" for a level of a building that has a name.
std::string longNameOf(const ImdfLevel& level, const BuildingNames& buildings) {
  std::string owners;
  for (const std::string& id : level.buildings) {
    const auto found = buildings.find(id);
    if (found != buildings.end()) owners += (owners.empty() ? "" : ", ") + found->second;
  }
  return owners.empty() ? level.name->text : level.name->text + " (" + owners + ")";
}

/// Buildings that count their floors alike share a name; others each add theirs.
std::optional<std::string> commonName(const std::vector<const ImdfLevel*>& levels,
                                      const BuildingNames& buildings) {
  std::set<std::string> names;
  std::vector<std::string> longNames;
  for (const ImdfLevel* level : levels) {
    if (!level->name) continue;
    names.insert(level->name->text);
    const std::string name = longNameOf(*level, buildings);
    if (std::find(longNames.begin(), longNames.end(), name) != longNames.end()) continue;
    longNames.push_back(name);
  }
  if (names.empty()) return {};
  if (names.size() == 1) return *names.begin();
  std::string all;
  for (const std::string& name : longNames) all += (all.empty() ? "" : ", ") + name;
  return all;
}

void describeLevels(ImdfModel& model, const BuildingNames& buildings) {
  std::map<std::int64_t, std::vector<const ImdfLevel*>> byOrdinal;
  for (const ImdfLevel& level : model.levels) byOrdinal[level.ordinal].push_back(&level);
  for (const auto& [ordinal, levels] : byOrdinal) {
    model.plan.levels.push_back(
        {static_cast<double>(ordinal), commonName(levels, buildings), std::nullopt});
  }
}

}  // namespace

void readImdfLevels(ImdfModel& model) {
  model.plan.name = readVenueName(model);
  const BuildingNames buildings = readBuildingNames(model);
  const bool present =
      forEachFeature(model.archive, "level", Broken::refused, model.remarks,
                     [&](const ImdfFeature& feature) { addLevel(model, feature); });
  if (!present) {
    throw InputError(model.archive.pathOf("level.geojson") + ": found no file, expected levels");
  }
  if (model.levels.empty()) {
    throw InputError(model.archive.pathOf("level.geojson") +
                     ": found no levels, expected at least one");
  }
  describeLevels(model, buildings);
}

}  // namespace KorvaniTools
