#include "Trace/TraceWriter.hpp"

#include "Json/EngineJson.hpp"

namespace KorvaniTools {
namespace {

OrderedJson json(const TracePoint& point) {
  return {{"lat", numberJson(point.latitude)},
          {"lon", numberJson(point.longitude)},
          {"level", point.level}};
}

OrderedJson json(const std::vector<TracePoint>& points) {
  OrderedJson list = OrderedJson::array();
  for (const TracePoint& point : points) list.push_back(json(point));
  return list;
}

OrderedJson json(const ConfigOperation::Settings& settings) {
  OrderedJson object = OrderedJson::object();
  for (const auto& [key, value] : settings) object[key] = valueJson(value);
  return object;
}

void addConfig(OrderedJson& line, const std::optional<std::string>& config) {
  if (config) line["config"] = *config;
}

OrderedJson json(const ConfigOperation& operation) {
  OrderedJson line{{"op", "config"}};
  addConfig(line, operation.config);
  if (!operation.set.empty()) line["set"] = json(operation.set);
  if (!operation.fields.empty()) line["fields"] = json(operation.fields);
  return line;
}

OrderedJson json(const IntersectOperation& operation) {
  OrderedJson line{{"op", "intersect"}, {"at", json(operation.at)}};
  if (!operation.onOriginalGraph) line["onOriginalGraph"] = false;
  return line;
}

OrderedJson json(const RouteOperation& operation) {
  OrderedJson line{{"op", "route"}, {"from", json(operation.from)}, {"to", json(operation.to)}};
  addConfig(line, operation.config);
  if (operation.barrierFree) line["barrierFree"] = *operation.barrierFree;
  if (!operation.directions) line["directions"] = false;
  return line;
}

OrderedJson json(const PositionOperation& operation) {
  return {{"op", "position"}, {"at", json(operation.at)}};
}

OrderedJson json(const DestinationsOperation& operation) {
  return {{"op", "destinations"}, {"to", json(operation.to)}};
}

OrderedJson json(const SnapOperation& operation) {
  OrderedJson line{{"op", "snap"}, {"at", json(operation.at)}};
  addConfig(line, operation.config);
  return line;
}

OrderedJson json(const CheckOperation& operation) {
  OrderedJson line{{"op", "check"}, {"at", json(operation.at)}};
  addConfig(line, operation.config);
  if (operation.denier == TraceDenier::byCredit) line["denier"] = "default";
  return line;
}

OrderedJson json(const CancelOperation&) { return {{"op", "cancel"}}; }

}  // namespace

std::string traceLine(const TraceOperation& operation) {
  return std::visit([](const auto& which) { return jsonText(json(which)); }, operation);
}

}  // namespace KorvaniTools
