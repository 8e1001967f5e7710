#include "Building/FeatureFields.hpp"

#include <algorithm>
#include <cmath>

#include "Building/BuildingError.hpp"

namespace KorvaniTools {

void ErrorPlace::fail(std::string subject, std::string found, std::string expected) const {
  throw BuildingError(file, feature, std::move(subject), std::move(found), std::move(expected));
}

Fields::Fields(const Json& object, std::string owner, ErrorPlace place)
    : object_(object), owner_(std::move(owner)), place_(place) {}

const Json* Fields::find(const char* key) const {
  const auto found = object_.find(key);
  return found == object_.end() || found->is_null() ? nullptr : &*found;
}

void Fields::fail(const char* key, std::string found, std::string expected) const {
  place_.fail(std::string(key) + " of " + owner_, std::move(found), std::move(expected));
}

const Json& Fields::required(const char* key, const char* expected) const {
  const Json* value = find(key);
  if (value == nullptr) fail(key, "nothing", expected);
  return *value;
}

std::int64_t Fields::requiredInteger(const char* key) const {
  const Json& value = required(key, "an integer");
  const auto number = wholeNumber(value);
  if (!number) fail(key, brief(value), "an integer");
  return *number;
}

std::int64_t Fields::requiredLevel() const {
  constexpr auto kExpected = "an integer from -1000 to 1000";
  const Json& value = required("level", kExpected);
  const auto level = wholeNumber(value);
  if (!level || *level < kLowestLevel || *level > kHighestLevel) {
    fail("level", brief(value), kExpected);
  }
  return *level;
}

std::string Fields::requiredString(const char* key) const {
  required(key, "a string");
  return *optionalString(key);
}

std::optional<std::string> Fields::optionalString(const char* key) const {
  const Json* value = find(key);
  if (value == nullptr) return {};
  if (!value->is_string()) fail(key, brief(*value), "a string");
  return value->get<std::string>();
}

std::int64_t Fields::integerOr(const char* key, std::int64_t absent) const {
  return find(key) == nullptr ? absent : requiredInteger(key);
}

bool Fields::booleanOr(const char* key, bool absent) const {
  const Json* value = find(key);
  if (value == nullptr) return absent;
  if (!value->is_boolean()) fail(key, brief(*value), "true or false");
  return value->get<bool>();
}

std::optional<double> Fields::optionalPositive(const char* key, const char* expected) const {
  const Json* value = find(key);
  if (value == nullptr) return {};
  if (!value->is_number()) fail(key, brief(*value), expected);
  const double number = value->get<double>();
  if (!(number > 0) || !std::isfinite(number)) fail(key, brief(*value), expected);
  return number;
}

Geometry::Geometry(const Json& feature, std::string owner, ErrorPlace place)
    : owner_(std::move(owner)), place_(place) {
  const auto found = feature.find("geometry");
  if (found != feature.end() && found->is_object()) geometry_ = &*found;
}

void Geometry::fail(std::string found, std::string expected) const {
  place_.fail("geometry of " + owner_, std::move(found), std::move(expected));
}

std::string Geometry::type(std::initializer_list<const char*> allowed) const {
  std::string expected;
  for (const char* name : allowed) {
    expected += (expected.empty() ? "a " : " or a ") + std::string(name);
  }
  if (geometry_ == nullptr) fail("nothing", expected);
  const auto found = geometry_->find("type");
  if (found == geometry_->end() || !found->is_string()) {
    fail("a geometry without a type", expected);
  }
  const auto& name = found->get_ref<const std::string&>();
  const bool fits = std::any_of(allowed.begin(), allowed.end(),
                                [&](const char* candidate) { return name == candidate; });
  if (!fits) fail(inQuotes(name), expected);
  return name;
}

const Json& Geometry::coordinates() const {
  const auto found = geometry_->find("coordinates");
  if (found == geometry_->end()) fail("nothing", "coordinates");
  return *found;
}

Coordinate Geometry::position(const Json& value) const {
  const bool numbers =
      value.is_array() && value.size() >= 2 && value[0].is_number() && value[1].is_number();
  if (!numbers) fail(brief(value), "a position [longitude, latitude]");
  const Coordinate coordinate{value[1].get<double>(), value[0].get<double>()};
  const bool inRange = std::abs(coordinate.latitude) <= 90 && std::abs(coordinate.longitude) <= 180;
  if (!inRange) {
    fail(brief(value), "a longitude from -180 to 180 and a latitude from -90 to 90");
  }
  return coordinate;
}

Positions Geometry::positions(const Json& value) const {
  if (!value.is_array()) fail(brief(value), "an array of positions");
  if (value.empty()) fail("no positions", "at least one position");
  Positions positions;
  positions.reserve(value.size());
  for (const Json& entry : value) positions.push_back(position(entry));
  return positions;
}

Coordinate Geometry::point() const { return position(coordinates()); }

Positions Geometry::lineString() const { return positions(coordinates()); }

std::vector<Positions> Geometry::rings(const Json& value) const {
  if (!value.is_array()) fail(brief(value), "an array of rings");
  if (value.empty()) fail("no positions", "at least one ring of positions");
  std::vector<Positions> rings;
  rings.reserve(value.size());
  for (const Json& ring : value) rings.push_back(positions(ring));
  return rings;
}

std::vector<Positions> Geometry::polygon() const { return rings(coordinates()); }

std::vector<std::vector<Positions>> Geometry::polygons() const {
  if (type({"Polygon", "MultiPolygon"}) == "Polygon") return {polygon()};
  const Json& parts = coordinates();
  if (!parts.is_array()) fail(brief(parts), "an array of polygons");
  if (parts.empty()) fail("no polygons", "at least one polygon");
  std::vector<std::vector<Positions>> polygons;
  polygons.reserve(parts.size());
  for (const Json& part : parts) polygons.push_back(rings(part));
  return polygons;
}

}  // namespace KorvaniTools
