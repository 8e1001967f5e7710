#pragma once

/// Internal. The text of a GeoJSON feature collection, a feature a line.

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Building/Rectangle.hpp"

namespace KorvaniTools {

/// Writes a feature collection.
///
///     FeatureText text({{"name", "Hall"}});
///     text.add({{"kind", "node"}, {"id", 1}}, "Point", positionJson({48.1, 11.5}));
///     file << std::move(text).finished();
///
/// Members and properties keep their order. Numbers are written so that they read back to the
/// same double; bytes that are no UTF-8 are replaced.
class FeatureText {
 public:
  using OrderedJson = nlohmann::ordered_json;

  /// @param members what stands between the collection's `type` and its `features`
  explicit FeatureText(const OrderedJson& members);

  /// Adds a feature with a geometry of that type.
  void add(OrderedJson properties, const char* type, OrderedJson coordinates);

  /// The whole text, which ends in a line feed. Nothing can be added after it.
  std::string finished() &&;

 private:
  std::string text_;
  const char* separator_ = "\n";
};

/// `[longitude, latitude]`.
nlohmann::ordered_json positionJson(Coordinate coordinate);

/// Positions in their order.
nlohmann::ordered_json positionsJson(const std::vector<Coordinate>& coordinates);

/// The one ring of a rectangle, counterclockwise as GeoJSON wants it.
nlohmann::ordered_json ringsJson(const Rectangle& rectangle);

}  // namespace KorvaniTools
