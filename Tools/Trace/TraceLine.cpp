#include "Trace/TraceLine.hpp"

#include <utility>

#include "Building/BuildingError.hpp"
#include "Building/FeatureFields.hpp"
#include "Building/JsonText.hpp"
#include "Trace/TraceError.hpp"

namespace KorvaniTools {
namespace {

using KorvaniPlatform::Number;

double requiredNumber(const Fields& fields, const char* key) {
  constexpr auto kExpected = "a number";
  const Json* value = fields.find(key);
  if (value == nullptr) fields.fail(key, "nothing", kExpected);
  if (!value->is_number()) fields.fail(key, brief(*value), kExpected);
  return value->get<double>();
}

TracePoint pointOf(const Json& value, const std::string& name, const ErrorPlace& place) {
  if (!value.is_object()) place.fail(name, brief(value), "a point with lat, lon and level");
  const Fields fields(value, name, place);
  return {requiredNumber(fields, "lat"), requiredNumber(fields, "lon"),
          fields.requiredInteger("level")};
}

TracePoint requiredPoint(const Fields& line, const char* key) {
  static const Json kNothing;
  const Json* value = line.find(key);
  return pointOf(value == nullptr ? kNothing : *value, key, line.place());
}

std::vector<TracePoint> requiredPoints(const Fields& line, const char* key) {
  constexpr auto kExpected = "an array of points";
  const Json* list = line.find(key);
  if (list == nullptr) line.fail(key, "nothing", kExpected);
  if (!list->is_array()) line.fail(key, brief(*list), kExpected);
  std::vector<TracePoint> points;
  points.reserve(list->size());
  for (std::size_t i = 0; i < list->size(); ++i) {
    const std::string name = std::string(key) + '[' + std::to_string(i) + ']';
    points.push_back(pointOf((*list)[i], name, line.place()));
  }
  return points;
}

std::optional<Number> numberOf(const Json& value) {
  if (value.is_boolean()) return Number::boolean(value.get<bool>());
  if (value.is_number_float()) return Number::real(value.get<double>());
  if (!value.is_number()) return {};
  const auto whole = wholeNumber(value);
  return whole ? Number::integer(*whole) : Number::real(value.get<double>());
}

ConfigOperation::Settings settingsOf(const Fields& line, const char* key) {
  ConfigOperation::Settings settings;
  const Json* object = line.find(key);
  if (object == nullptr) return settings;
  if (!object->is_object()) line.fail(key, brief(*object), "an object");
  for (const auto& [name, value] : object->items()) {
    if (value.is_null()) continue;
    const auto number = numberOf(value);
    if (!number) {
      line.place().fail(inQuotes(name) + " of " + key, brief(value), "a number, true or false");
    }
    settings.emplace_back(name, *number);
  }
  return settings;
}

std::optional<bool> optionalBoolean(const Fields& line, const char* key) {
  if (line.find(key) == nullptr) return {};
  return line.booleanOr(key, false);
}

TraceDenier denierOf(const Fields& line) {
  constexpr auto kKey = "denier";
  const Json* value = line.find(kKey);
  if (value == nullptr || *value == "strength") return TraceDenier::strength;
  if (*value != "default") line.fail(kKey, brief(*value), "\"strength\" or \"default\"");
  return TraceDenier::byCredit;
}

TraceOperation configOperation(const Fields& line) {
  return ConfigOperation{line.optionalString("config"), settingsOf(line, "set"),
                         settingsOf(line, "fields")};
}

TraceOperation intersectOperation(const Fields& line) {
  return IntersectOperation{requiredPoint(line, "at"), line.booleanOr("onOriginalGraph", true)};
}

TraceOperation routeOperation(const Fields& line) {
  return RouteOperation{requiredPoint(line, "from"), requiredPoints(line, "to"),
                        line.optionalString("config"), optionalBoolean(line, "barrierFree"),
                        line.booleanOr("directions", true)};
}

TraceOperation positionOperation(const Fields& line) {
  return PositionOperation{requiredPoint(line, "at")};
}

TraceOperation destinationsOperation(const Fields& line) {
  return DestinationsOperation{requiredPoints(line, "to")};
}

TraceOperation snapOperation(const Fields& line) {
  return SnapOperation{requiredPoint(line, "at"), line.optionalString("config")};
}

TraceOperation checkOperation(const Fields& line) {
  return CheckOperation{requiredPoint(line, "at"), line.optionalString("config"), denierOf(line)};
}

TraceOperation cancelOperation(const Fields&) { return CancelOperation{}; }

/// The operations by the name that `op` gives them.
constexpr std::pair<std::string_view, TraceOperation (*)(const Fields&)> kOperations[] = {
    {"config", configOperation},
    {"intersect", intersectOperation},
    {"route", routeOperation},
    {"position", positionOperation},
    {"destinations", destinationsOperation},
    {"snap", snapOperation},
    {"check", checkOperation},
    {"cancel", cancelOperation},
};

TraceOperation operationOf(std::string_view text, const std::string& file) {
  const Json value = parseJsonText(text, file);
  const ErrorPlace place{file, {}};
  if (!value.is_object()) place.fail("", brief(value), "an object");
  const Fields named(value, "the line", place);
  const std::string op = named.requiredString("op");
  for (const auto& [name, read] : kOperations) {
    if (op == name) return read(Fields(value, op, place));
  }
  std::string expected;
  for (const auto& [name, read] : kOperations) {
    expected += (expected.empty() ? "one of " : ", ") + std::string(name);
  }
  place.fail("op", inQuotes(op), expected);
}

/// The parser counts lines within its text, which is one line here.
std::string withoutLineNumber(std::string text) {
  constexpr std::string_view kFirst = "line 1, ";
  if (const auto start = text.find(kFirst); start != std::string::npos) {
    text.erase(start, kFirst.size());
  }
  return text;
}

}  // namespace

TraceLine parseTraceLine(std::string_view text, const std::string& file, std::size_t number) {
  try {
    return {number, operationOf(text, file)};
  } catch (const BuildingError& error) {
    // Members are read as those of a building's features are; only the place is another.
    throw TraceError(file, number, error.subject(), withoutLineNumber(error.found()),
                     error.expected());
  }
}

}  // namespace KorvaniTools
