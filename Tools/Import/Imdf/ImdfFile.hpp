#pragma once

/// Internal. One feature file of an archive, and its features one by one.

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Building/FeatureFields.hpp"
#include "Import/Imdf/ImdfArchive.hpp"
#include "Import/Imdf/ImdfNames.hpp"
#include "Support/Remarks.hpp"

namespace KorvaniTools {

using Polygons = std::vector<std::vector<Positions>>;

/// One feature, for as long as its file is read. What is wrong with its shape is an error; what
/// is odd about its properties is noted, and counts as absent.
class ImdfFeature {
 public:
  /// @throws BuildingError when `feature` is no feature
  ImdfFeature(const Json& feature, std::string kind, ErrorPlace place, Remarks& remarks);

  /// The feature's id; "features[12]" for one that has none, which nothing can refer to.
  const std::string& id() const { return id_; }

  const Json* find(const char* key) const { return fields().find(key); }
  std::optional<std::string> text(const char* key) const;
  std::vector<std::string> texts(const char* key) const;  ///< of an array
  std::optional<bool> boolean(const char* key) const;
  std::optional<Coordinate> point(const char* key) const;  ///< of a Point geometry
  std::optional<ImdfLabel> label(const char* key, const ImdfLanguages& languages) const;

  /// The properties for which there must be a value. @throws BuildingError
  Fields fields() const { return {properties_, owner_, place_}; }

  /// Closed rings of at least three different positions; inner rings that are none are left out.
  Polygons polygons() const;
  Positions line() const;    ///< at least two different positions
  Coordinate point() const;  ///< of a Point

  /// Notes `what` about this feature.
  void note(const std::string& what) const;

 private:
  Geometry geometry() const { return {feature_, owner_, place_}; }
  [[noreturn]] void failGeometry(std::string found, std::string expected) const;
  void noteOdd(const char* key, const char* expected) const;
  bool close(Positions& ring) const;

  const Json& feature_;
  const Json& properties_;
  std::string kind_;
  std::string id_;
  std::string owner_;  ///< "unit \"8f2c\""
  ErrorPlace place_;
  Remarks& remarks_;
};

/// How much of a file may be broken.
enum class Broken {
  someLeftOut,  ///< broken features are noted, unless they are more than half of them
  refused,
};

/// Calls `use` for each feature of the file of that kind ("unit" for "unit.geojson"), in order.
/// Returns false when there is no such file.
/// @throws InputError when it cannot be read
/// @throws BuildingError when it is no feature collection, or for a feature from `use`
bool forEachFeature(ImdfArchive& archive, const std::string& kind, Broken broken, Remarks& remarks,
                    const std::function<void(const ImdfFeature&)>& use);

}  // namespace KorvaniTools
