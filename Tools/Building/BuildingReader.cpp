#include "Building/BuildingReader.hpp"

#include <cerrno>
#include <fstream>
#include <set>
#include <sstream>
#include <system_error>

#include "Building/FeatureFields.hpp"
#include "Building/FeatureParser.hpp"
#include "Building/JsonText.hpp"
#include "Building/RegionAssignment.hpp"

namespace KorvaniTools {
namespace {

std::string readWholeFile(const std::filesystem::path& path) {
  const std::string name = path.string();
  constexpr auto kExpected = "a building file";
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) {
    throw BuildingError(name, {}, "", "a folder", kExpected);
  }
  errno = 0;
  std::ifstream stream(path, std::ios::binary);
  if (!stream) {
    const std::string reason = std::generic_category().message(errno);
    throw BuildingError(name, {}, "", "no readable file (" + reason + ")", kExpected);
  }
  std::ostringstream text;
  text << stream.rdbuf();
  if (stream.bad()) throw BuildingError(name, {}, "", "an unreadable file", kExpected);
  return std::move(text).str();
}

const Json& featuresOf(const Json& collection, const ErrorPlace& place) {
  constexpr auto kExpected = "a FeatureCollection";
  if (!collection.is_object()) place.fail("", brief(collection), kExpected);
  const auto type = collection.find("type");
  if (type == collection.end()) place.fail("", "an object without a type", kExpected);
  if (*type != "FeatureCollection") place.fail("type", brief(*type), "\"FeatureCollection\"");
  const auto features = collection.find("features");
  if (features == collection.end()) place.fail("features", "nothing", "an array");
  if (!features->is_array()) place.fail("features", brief(*features), "an array");
  return *features;
}

void checkFormatVersion(const Fields& fields, const ErrorPlace& place) {
  const Json* version = fields.find("formatVersion");
  if (version != nullptr && wholeNumber(*version) != 1) {
    place.fail("formatVersion", brief(*version), "1");
  }
}

std::vector<LevelName> readLevelNames(const Fields& fields, const ErrorPlace& place) {
  std::vector<LevelName> names;
  const Json* levels = fields.find("levels");
  if (levels == nullptr) return names;
  if (!levels->is_array()) place.fail("levels", brief(*levels), "an array");
  for (std::size_t i = 0; i < levels->size(); ++i) {
    const std::string owner = "levels[" + std::to_string(i) + "]";
    const Json& entry = (*levels)[i];
    if (!entry.is_object()) place.fail(owner, brief(entry), "an object");
    const Fields level(entry, owner, place);
    names.push_back(
        {level.requiredLevel(), level.optionalString("name"), level.optionalString("source")});
  }
  return names;
}

void checkEdges(const Building& building, const std::string& file) {
  std::set<std::int64_t> ids;
  for (const BuildingNode& node : building.nodes) ids.insert(node.id);
  for (const BuildingEdge& edge : building.edges) {
    const bool fromKnown = ids.contains(edge.from);
    if (fromKnown && ids.contains(edge.to)) continue;
    throw BuildingError(file, edge.feature, fromKnown ? "to of an edge" : "from of an edge",
                        std::to_string(fromKnown ? edge.to : edge.from), "the id of a node");
  }
}

}  // namespace

Building parseBuilding(std::string_view text, const std::string& file) {
  const Json collection = parseJsonText(text, file);
  const ErrorPlace place{file, {}};
  const Json& features = featuresOf(collection, place);
  const Fields fields(collection, "the building", place);
  checkFormatVersion(fields, place);

  Building building;
  building.name = fields.optionalString("name");
  building.attribution = fields.optionalString("attribution");
  building.licence = fields.optionalString("licence");
  building.levelNames = readLevelNames(fields, place);
  FeatureParser parser(building, file);
  for (std::size_t i = 0; i < features.size(); ++i) parser.add(features[i], i);
  checkEdges(building, file);
  assignRegions(building, file);
  return building;
}

Building readBuilding(const std::filesystem::path& path) {
  return parseBuilding(readWholeFile(path), path.string());
}

}  // namespace KorvaniTools
