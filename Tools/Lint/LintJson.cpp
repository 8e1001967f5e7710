#include "Lint/LintJson.hpp"

#include <utility>

#include "Lint/Lint.hpp"

namespace KorvaniTools {
namespace {

OrderedJson position(Coordinate coordinate) {
  return OrderedJson::array({numberJson(coordinate.longitude), numberJson(coordinate.latitude)});
}

OrderedJson positions(const std::vector<Coordinate>& coordinates) {
  OrderedJson list = OrderedJson::array();
  for (const Coordinate coordinate : coordinates) list.push_back(position(coordinate));
  return list;
}

OrderedJson geometry(const char* type, OrderedJson coordinates) {
  return {{"type", type}, {"coordinates", std::move(coordinates)}};
}

OrderedJson linesGeometry(const std::vector<std::vector<Coordinate>>& lines) {
  if (lines.size() == 1) return geometry("LineString", positions(lines.front()));
  OrderedJson list = OrderedJson::array();
  for (const auto& line : lines) list.push_back(positions(line));
  return geometry("MultiLineString", std::move(list));
}

/// What has no width or no height is no polygon.
OrderedJson areaGeometry(const Rectangle& area) {
  const Coordinate southWest = area.southWest;
  const Coordinate northEast = area.northEast;
  if (southWest == northEast) return geometry("Point", position(southWest));
  if (southWest.latitude == northEast.latitude || southWest.longitude == northEast.longitude) {
    return geometry("LineString", positions({southWest, northEast}));
  }
  return geometry("Polygon",
                  OrderedJson::array({positions({southWest,
                                                 {southWest.latitude, northEast.longitude},
                                                 northEast,
                                                 {northEast.latitude, southWest.longitude},
                                                 southWest})}));
}

OrderedJson geometryOf(const LintFinding& finding) {
  if (!finding.lines.empty()) return linesGeometry(finding.lines);
  if (finding.area) return areaGeometry(*finding.area);
  if (finding.at.empty()) return nullptr;
  if (finding.at.size() == 1) return geometry("Point", position(finding.at.front()));
  return geometry("MultiPoint", positions(finding.at));
}

OrderedJson membersOf(const LintFinding& finding) {
  OrderedJson at = OrderedJson::array();
  for (const Coordinate coordinate : finding.at) {
    at.push_back(
        {{"lat", numberJson(coordinate.latitude)}, {"lon", numberJson(coordinate.longitude)}});
  }
  OrderedJson edges = OrderedJson::array();
  for (const LintEdge& edge : finding.edges) {
    edges.push_back({{"from", edge.from}, {"to", edge.to}});
  }
  OrderedJson members{{"rule", finding.rule}, {"severity", severityName(finding.severity)}};
  members["level"] =
      finding.levels.empty() ? OrderedJson(nullptr) : OrderedJson(finding.levels.front());
  members["levels"] = finding.levels;
  members["message"] = finding.message;
  members["at"] = std::move(at);
  members["nodes"] = finding.nodes;
  members["edges"] = std::move(edges);
  members["features"] = finding.features;
  members["names"] = finding.names;
  members["sources"] = finding.sources;
  return members;
}

void addSource(const std::vector<LintFinding>& findings, const Building& building,
               OrderedJson& json) {
  if (building.name) json["name"] = *building.name;
  if (building.attribution) json["attribution"] = *building.attribution;
  if (building.licence) json["licence"] = *building.licence;
  const LintCounts counts = countFindings(findings);
  json["summary"] = {
      {"errors", counts.errors}, {"warnings", counts.warnings}, {"notes", counts.notes}};
}

}  // namespace

OrderedJson lintJson(const std::vector<LintFinding>& findings, const Building& building) {
  OrderedJson json = OrderedJson::object();
  addSource(findings, building, json);
  OrderedJson list = OrderedJson::array();
  for (const LintFinding& finding : findings) list.push_back(membersOf(finding));
  json["findings"] = std::move(list);
  return json;
}

OrderedJson lintGeoJson(const std::vector<LintFinding>& findings, const Building& building) {
  OrderedJson json{{"type", "FeatureCollection"}};
  addSource(findings, building, json);
  OrderedJson features = OrderedJson::array();
  for (const LintFinding& finding : findings) {
    OrderedJson properties{{"kind", "finding"}};
    properties.update(membersOf(finding));
    features.push_back({{"type", "Feature"},
                        {"properties", std::move(properties)},
                        {"geometry", geometryOf(finding)}});
  }
  json["features"] = std::move(features);
  return json;
}

}  // namespace KorvaniTools
