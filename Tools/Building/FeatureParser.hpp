#pragma once

/// Internal. Puts features into a `Building`, one by one, as far as each can be judged alone.

#include <cstddef>
#include <set>
#include <string>

#include "Building/Building.hpp"
#include "Building/FeatureFields.hpp"

namespace KorvaniTools {

class FeatureParser {
 public:
  /// Features are added to `building`; errors name `file`. Both must outlive the parser.
  FeatureParser(Building& building, const std::string& file);

  /// Adds the feature with that index; features of unknown kinds are counted only.
  /// @throws BuildingError
  void add(const Json& feature, std::size_t index);

 private:
  struct Kind;
  struct Feature;

  static const Kind* kindNamed(const std::string& name);
  void countUnknown(const Json& properties, const Kind& kind);

  void addRegion(const Feature& feature);
  void addNode(const Feature& feature);
  void addEdge(const Feature& feature);
  void addObstacle(const Feature& feature);
  void addPlace(const Feature& feature);
  void addRoom(const Feature& feature);

  Building& building_;
  const std::string& file_;
  std::set<std::string> regionNames_;
  std::set<std::int64_t> nodeIds_;
};

}  // namespace KorvaniTools
