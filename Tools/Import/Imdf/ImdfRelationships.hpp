#pragma once

/// Internal. What an archive's relationships say about ways between its features.

#include <optional>
#include <string>
#include <vector>

#include "FloorPlan/FloorPlan.hpp"
#include "Import/Imdf/ImdfModel.hpp"
#include "Import/Imdf/ImdfShapes.hpp"

namespace KorvaniTools {

/// One end of a relationship, as far as it is a unit or an opening.
struct RelationshipEnd {
  std::size_t level = 0;  ///< index into `ImdfModel::levels`
  Coordinate coordinate;
  std::optional<std::size_t> unit;  ///< index into `ImdfModel::units`; absent for an opening
};

struct ImdfRelationship {
  std::string id;
  ConnectionKind kind = ConnectionKind::path;
  bool directed = false;
  std::optional<RelationshipEnd> origin;
  std::optional<RelationshipEnd> destination;
  /// Stairs, escalators, ramps and elevators that it names, in its order.
  std::vector<std::size_t> units;
};

/// Reads relationships; notes the features they name and the archive does not have.
std::vector<ImdfRelationship> readImdfRelationships(ImdfModel& model, const ImdfShapes& shapes);

}  // namespace KorvaniTools
