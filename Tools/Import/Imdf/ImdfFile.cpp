#include "Import/Imdf/ImdfFile.hpp"

#include <algorithm>
#include <set>
#include <utility>

#include "Building/BuildingError.hpp"

namespace KorvaniTools {
namespace {

const Json& propertiesOf(const Json& feature, const ErrorPlace& place) {
  if (!feature.is_object()) place.fail("", brief(feature), "a feature");
  const auto properties = feature.find("properties");
  if (properties == feature.end()) place.fail("properties", "nothing", "an object");
  if (!properties->is_object()) place.fail("properties", brief(*properties), "an object");
  return *properties;
}

std::string idOf(const Json& feature, std::size_t index) {
  const auto id = feature.find("id");
  if (id != feature.end() && id->is_string()) return id->get<std::string>();
  if (id != feature.end() && id->is_number()) return id->dump();
  return "features[" + std::to_string(index) + "]";
}

bool equal(const Coordinate& a, const Coordinate& b) {
  return a.latitude == b.latitude && a.longitude == b.longitude;
}

std::size_t differentPositions(const Positions& positions) {
  std::set<std::pair<double, double>> different;
  for (const Coordinate& position : positions) {
    different.emplace(position.latitude, position.longitude);
  }
  return different.size();
}

std::string faultIn(std::size_t feature, const BuildingError& error) {
  const std::string subject = error.subject().empty() ? "" : error.subject() + ": ";
  return "features[" + std::to_string(feature) + "]: " + subject + "found " + error.found() +
         ", expected " + error.expected();
}

const Json& featuresOf(const Json& collection, const ErrorPlace& place) {
  constexpr auto kExpected = "a FeatureCollection";
  if (!collection.is_object()) place.fail("", brief(collection), kExpected);
  const auto features = collection.find("features");
  if (features == collection.end()) place.fail("features", "nothing", "an array");
  if (!features->is_array()) place.fail("features", brief(*features), "an array");
  return *features;
}

}  // namespace

ImdfFeature::ImdfFeature(const Json& feature, std::string kind, ErrorPlace place, Remarks& remarks)
    : feature_(feature),
      properties_(propertiesOf(feature, place)),
      kind_(std::move(kind)),
      id_(idOf(feature, place.feature.value_or(0))),
      owner_(kind_ + " " + inQuotes(id_)),
      place_(place),
      remarks_(remarks) {}

void ImdfFeature::note(const std::string& what) const {
  remarks_.note(kind_ + ".geojson: " + what, inQuotes(id_));
}

void ImdfFeature::noteOdd(const char* key, const char* expected) const {
  note(std::string(key) + " is not " + expected + ", ignored");
}

std::optional<std::string> ImdfFeature::text(const char* key) const {
  const Json* value = find(key);
  if (value == nullptr) return {};
  if (value->is_string()) return value->get<std::string>();
  noteOdd(key, "a string");
  return {};
}

std::vector<std::string> ImdfFeature::texts(const char* key) const {
  std::vector<std::string> texts;
  const Json* value = find(key);
  if (value == nullptr) return texts;
  const bool strings =
      value->is_array() && std::all_of(value->begin(), value->end(),
                                       [](const Json& entry) { return entry.is_string(); });
  if (!strings) {
    noteOdd(key, "an array of strings");
    return texts;
  }
  for (const Json& entry : *value) texts.push_back(entry.get<std::string>());
  return texts;
}

std::optional<bool> ImdfFeature::boolean(const char* key) const {
  const Json* value = find(key);
  if (value == nullptr) return {};
  if (value->is_boolean()) return value->get<bool>();
  noteOdd(key, "true or false");
  return {};
}

std::optional<Coordinate> ImdfFeature::point(const char* key) const {
  const Json* value = find(key);
  if (value == nullptr) return {};
  const Json feature = {{"geometry", *value}};
  const Geometry geometry(feature, owner_, place_);
  try {
    geometry.type({"Point"});
    return geometry.point();
  } catch (const BuildingError&) {
    noteOdd(key, "a Point");
    return {};
  }
}

std::optional<ImdfLabel> ImdfFeature::label(const char* key, const ImdfLanguages& languages) const {
  const Json* value = find(key);
  if (value == nullptr) return {};
  if (!isLabel(*value)) noteOdd(key, "an object of names by language");
  return languages.label(*value);
}

void ImdfFeature::failGeometry(std::string found, std::string expected) const {
  place_.fail("geometry of " + owner_, std::move(found), std::move(expected));
}

/// Whether `ring` has an area to close around.
bool ImdfFeature::close(Positions& ring) const {
  if (differentPositions(ring) < 3) return false;
  if (!equal(ring.front(), ring.back())) ring.push_back(ring.front());
  return true;
}

Polygons ImdfFeature::polygons() const {
  Polygons polygons;
  for (const std::vector<Positions>& rings : geometry().polygons()) {
    std::vector<Positions> closed;
    for (Positions ring : rings) {
      if (close(ring)) {
        closed.push_back(std::move(ring));
      } else if (closed.empty()) {
        failGeometry(std::to_string(differentPositions(ring)) + " different positions in a ring",
                     "at least 3");
      } else {
        note("a hole has less than 3 different positions, filled");
      }
    }
    polygons.push_back(std::move(closed));
  }
  return polygons;
}

Positions ImdfFeature::line() const {
  geometry().type({"LineString"});
  Positions positions = geometry().lineString();
  const std::size_t different = differentPositions(positions);
  if (different < 2) {
    failGeometry(std::to_string(different) + " different positions", "at least 2");
  }
  return positions;
}

Coordinate ImdfFeature::point() const {
  geometry().type({"Point"});
  return geometry().point();
}

bool forEachFeature(ImdfArchive& archive, const std::string& kind, Broken broken, Remarks& remarks,
                    const std::function<void(const ImdfFeature&)>& use) {
  const std::string name = kind + ".geojson";
  const auto text = archive.text(name);
  if (!text) return false;
  const std::string file = archive.pathOf(name);
  const Json collection = parseJsonText(*text, file);
  const Json& features = featuresOf(collection, {file, {}});
  std::optional<BuildingError> first;
  std::size_t count = 0;
  for (std::size_t i = 0; i < features.size(); ++i) {
    try {
      use(ImdfFeature(features[i], kind, {file, i}, remarks));
    } catch (const BuildingError& error) {
      if (broken == Broken::refused) throw;
      if (!first) first = error;
      ++count;
      remarks.note(name + ": broken features, left out", faultIn(i, error));
    }
  }
  if (count * 2 > features.size()) throw BuildingError(*first);
  return true;
}

}  // namespace KorvaniTools
