#pragma once

/// Building files for tests, put together from features:
///
///     const auto text = buildingText({nodeAt(1, 0, 11.0, 48.0), nodeAt(2, 0, 11.001, 48.0),
///                                     edgeOf(1, 2)});
///
/// Every function takes more JSON members for the feature's properties, as text.

#include <initializer_list>
#include <sstream>
#include <string>

#include "Building/BuildingReader.hpp"

namespace KorvaniTest {

/// A file with those features and further members (`"name":"Hall"`).
inline std::string buildingText(std::initializer_list<std::string> features,
                                const std::string& members = "") {
  std::string text =
      R"({"type":"FeatureCollection",)" + members + (members.empty() ? "" : ",") + "\"features\":[";
  const char* separator = "\n";
  for (const std::string& feature : features) {
    text += separator + feature;
    separator = ",\n";
  }
  return text + "\n]}\n";
}

inline KorvaniTools::Building parsed(std::initializer_list<std::string> features,
                                     const std::string& members = "") {
  return KorvaniTools::parseBuilding(buildingText(features, members), "test.building.geojson");
}

/// A feature of that kind: its geometry's type and coordinates, and its other properties.
inline std::string featureOf(const std::string& kind, const std::string& properties,
                             const std::string& type, const std::string& coordinates) {
  return R"({"type":"Feature","properties":{"kind":")" + kind + '"' +
         (properties.empty() ? "" : "," + properties) + R"(},"geometry":{"type":")" + type +
         R"(","coordinates":)" + coordinates + "}}";
}

inline std::string positionOf(double longitude, double latitude) {
  std::ostringstream text;
  text.precision(17);
  text << '[' << longitude << ',' << latitude << ']';
  return text.str();
}

inline std::string also(const std::string& more) { return more.empty() ? "" : "," + more; }

inline std::string nodeAt(int id, int level, double longitude, double latitude,
                          const std::string& more = "") {
  return featureOf(
      "node", "\"id\":" + std::to_string(id) + ",\"level\":" + std::to_string(level) + also(more),
      "Point", positionOf(longitude, latitude));
}

inline std::string edgeOf(int from, int to, const std::string& more = "") {
  return featureOf(
      "edge", "\"from\":" + std::to_string(from) + ",\"to\":" + std::to_string(to) + also(more),
      "LineString", "[[0,0],[0,0]]");
}

/// A rectangular region.
inline std::string regionOf(int level, double west, double south, double east, double north,
                            const std::string& more = "") {
  return featureOf("region", "\"level\":" + std::to_string(level) + also(more), "Polygon",
                   "[[" + positionOf(west, south) + ',' + positionOf(east, south) + ',' +
                       positionOf(east, north) + ',' + positionOf(west, north) + ',' +
                       positionOf(west, south) + "]]");
}

inline std::string wallOf(int level, const std::string& positions, const std::string& more = "") {
  return featureOf("obstacle", "\"level\":" + std::to_string(level) + also(more), "LineString",
                   positions);
}

inline std::string placeAt(const std::string& name, int level, double longitude, double latitude,
                           const std::string& more = "") {
  return featureOf("place",
                   R"("name":")" + name + R"(","level":)" + std::to_string(level) + also(more),
                   "Point", positionOf(longitude, latitude));
}

}  // namespace KorvaniTest
